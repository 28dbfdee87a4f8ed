// The empty ground of a shot. Declare=Shot=0..3 Declare=Pass=0..2: 0 as it is, 1 where the water lies (white on black),
// 2 lit by the muzzle flash alone. pose.inc gives the camera.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#include "pose.inc"
#include "light.inc"
#if(Pass=1) #declare F_Mask=1; #end
#if(Pass=2)
 #declare F_Flash=1; #declare F_SunLight=srgb 0; #declare F_Fill=0; #declare F_Glow=0;
  #declare F_Horizon=<0,0,0>; #declare F_Low=<0,0,0>; #declare F_Mid=<0,0,0>; #declare F_High=<0,0,0>;
 #declare F_Zenith=<0,0,0>; #declare F_Cloud1=<0,0,0>; #declare F_Cloud2=<0,0,0>;
  #declare F_Fog=srgbt<0,0,0,.6>; #declare F_Air=srgbt<0,0,0,.9>;
#end
#include "field.inc"
#if(Pass=2) light_source{Muzzle srgb<1,.68,.32>*9 fade_distance 7 fade_power 2} #end
camera{location CamAt right x*4/3 look_at CamTo angle CamAngle}
#if(Shot=3) #if(Pass=0)
  object{Brontar(.55,1,0,10,-3,10,"03") rotate y*(180-35) translate <-3.6,-.2,62>} #end #end // as in scenes/menu.pov
#if(Shot=0) #if(Pass=0) object{Brontar(.1,0,-1.6,-5,6,0,"03") rotate y*(180-50) translate <-25,-.2,62>}
  object{Brontar(.1,0,-1.7,-5,6,0,"05") rotate y*(180+20) translate <30,-.2,88>} #end #end
