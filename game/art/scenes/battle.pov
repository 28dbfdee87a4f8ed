// Background of the battle: dusk, the machine fires. Flash, fire and smoke are drawn over the picture afterwards. It
// stands at the right: the left half is for the module's panel.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare F_Sun=vnormalize(<-.42,.07,1>);
#declare F_SunLight=srgb<1,.46,.22>*3.2;
#declare F_Glow=.62; #declare F_Disc=0; #declare F_GlowTint=<1,.36,.14>;
#declare F_Horizon=<.60,.28,.14>; #declare F_Low=<.44,.24,.17>; #declare F_Mid=<.20,.16,.18>;
#declare F_High=<.085,.09,.12>; #declare F_Zenith=<.03,.035,.05>;
#declare F_Cloud1=<.50,.24,.14>; #declare F_Cloud2=<.10,.085,.09>; #declare F_CloudTurn=300;
#declare F_Dry=-.415; #declare F_Fill=.5; #declare F_MudTint=.55;
#declare F_Fog=srgbt<.42,.24,.16,0>; #declare F_AirFar=1e7; #declare F_FogFar=62;
#include "field.inc"
camera{location <3.0,1.5,-26.5> right x*4/3 look_at <-5.7,7.0,0> angle 62}
#declare GY=8; #declare GP=-12;
#declare Turn=180+24; #declare At=<2.6,-.2,1.0>;
#declare Muzzle=At+vrotate(<1.72,7.5,.75>+vrotate(z*5.7,<GP,GY,0>),y*Turn);
object{Brontar(.35,0,-.1,GY,GP,10,"07") rotate y*Turn translate At}
light_source{Muzzle-z*.8 srgb<1,.72,.36>*11 fade_distance 2.0 fade_power 2}
// the other side: two machines
object{Brontar(.6,1,0,-12,-5,0,"03") rotate y*(100) translate <-17,-.3,30>}
object{Brontar(.1,1,0,0,-6,0,"09") rotate y*(180+60) translate <-75,-.3,80>}
