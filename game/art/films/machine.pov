// One picture of the walking machine alone on a clear ground, or its mirror image in the water.
// Declare=Shot=1..3 Declare=Mirror=0|1; the clock is the film time.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 3}
#declare T=clock; #declare Marks=1;
#include "tex.inc"
#include "brontar.inc"
#include "shots.inc"
camera{location CamAt right x*4/3 look_at CamTo angle CamAngle}
background{rgbt 1}
#switch(Shot) #case(1) #declare Sun=vnormalize(<.38,.17,1>); #break #case(2) #declare Sun=vnormalize(<.0,.09,1>); #break #case(3) #declare Sun=vnormalize(<-.22,.13,1>); #break #end
sphere{0,4000 hollow no_image no_shadow pigment{gradient y color_map{[0 srgb<.40,.32,.26>][.5 srgb<.62,.47,.36>][.56 srgb<.45,.44,.46>][.7 srgb<.18,.24,.35>][1 srgb<.06,.09,.16>]} translate y*-.5 scale 8000} finish{ambient 0 diffuse 0 emission 1}}
light_source{Sun*900 srgb<1.0,.66,.36>*5}
light_source{<-60,70,-60> srgb<.58,.68,.86>*(Shot=2?.5:1.5)}
light_source{<-40,12,-50> srgb<.70,.76,.88>*(Shot=2?.35:1.0) shadowless}
object{Brontar(Phase,Walk,Bob,GY,GP,HY,"07") rotate y*Turn translate Place #if(Mirror) scale <1,-1,1> #end}
