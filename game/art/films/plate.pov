// The empty ground of a shot. Declare=Shot=1..3 Declare=Water=0|1: 1 draws only where the water lies, white on black.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare T=0; #include "shots.inc"
#switch(Shot)
 #case(1) #declare F_Sun=vnormalize(<.38,.17,1>); #declare F_Disc=1; #declare F_Dry=-.43; #break
 #case(2) #declare F_Sun=vnormalize(<.0,.09,1>); #declare F_Glow=.42; #declare F_CloudTurn=260; #break
 #case(3) #declare F_Sun=vnormalize(<-.22,.13,1>); #declare F_CloudTurn=140; #declare F_Dry=-.42; #break
#end
#if(Water) #declare F_Mask=1; #end
#include "field.inc"
camera{location #if(Shot=2) <-2.2,1.6,-17.6> right x*4/3 look_at <-2.2,5.0,0> angle 40 #else CamAt right x*4/3 look_at CamTo angle CamAngle #end}
