// Loading picture: close, low, in deep mud under an overcast sky; the sun stands at the side.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare F_Sun=vnormalize(<.80,.26,.62>);
#declare F_SunLight=srgb<1.0,.70,.40>*4.4;
#declare F_Glow=.9; #declare F_Disc=0; #declare F_GlowTint=<.9,.66,.40>;
#declare F_Horizon=<.58,.52,.42>; #declare F_Low=<.50,.49,.44>; #declare F_Mid=<.33,.35,.36>;
#declare F_High=<.19,.22,.25>; #declare F_Zenith=<.10,.12,.14>;
#declare F_Cloud1=<.42,.40,.36>; #declare F_Cloud2=<.17,.18,.19>; #declare F_CloudTurn=75;
#declare F_Dry=-.40; #declare F_MudTint=.62; #declare F_Fill=.62;
#declare F_Fog=srgbt<.44,.42,.37,.12>; #declare F_FogFar=60;
#include "field.inc"
camera{location <3.4,1.25,-12.6> right x*4/3 look_at <-.6,4.4,0> angle 70}
object{Brontar(.40,1,-.15,-6,-7,-14,"12") rotate y*(180-30) translate <0,-.45,1.2>}
object{Brontar(.75,1,0,4,-4,10,"09") rotate y*(180-40) translate <22,-.4,36>}
object{Brontar(.15,1,0,-8,-3,4,"04") rotate y*(180-25) translate <-24,-.4,44>}
