// Loading picture: close, low, in deep mud under an overcast sky; the sun stands at the side.
#version 3.7;
#declare F_Sun=vnormalize(<.9,.42,.25>);
#declare F_SunLight=srgb<1.0,.78,.52>*3.2;
#declare F_Glow=.9; #declare F_Disc=0; #declare F_GlowTint=<.9,.66,.40>;
#declare F_Horizon=<.58,.52,.42>; #declare F_Low=<.50,.49,.44>; #declare F_Mid=<.33,.35,.36>; #declare F_High=<.19,.22,.25>; #declare F_Zenith=<.10,.12,.14>;
#declare F_Cloud1=<.42,.40,.36>; #declare F_Cloud2=<.17,.18,.19>; #declare F_CloudTurn=75;
#declare F_Dry=-.27; #declare F_ShiftX=3.3; #declare F_MudTint=.85; #declare F_Fill=.75;
#declare F_Fog=srgbt<.44,.42,.37,.12>; #declare F_FogFar=60;
#include "field.inc"
camera{location <3.4,1.25,-12.6> right x*4/3 look_at <-.6,4.4,0> angle 70}
object{Brontar(.40,1,-.15,-10,-14,-16,"12") rotate y*(180-30) translate <0,-.45,1.2>}
object{Brontar(.75,1,0,4,-4,10,"09") rotate y*(180-40) translate <22,-.4,36>}
object{Brontar(.15,1,0,-8,-3,4,"04") rotate y*(180-25) translate <-24,-.4,44>}
