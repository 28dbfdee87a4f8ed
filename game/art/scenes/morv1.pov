// Loading picture, and base of the options screen: the hangar with one machine in its bay.
#version 3.7;
#include "hall.inc"
camera{location <-6.5,2.6,-20> right x*4/3 look_at <-3.4,5.0,0> angle 62}
Lamp(<-2.5,13,-2>,srgb<1,.86,.64>*3.4,.8) Lamp(<6.5,13,2>,srgb<1,.86,.64>*3.0,.8)
Lamp(<-10.5,13,6>,srgb<1,.82,.58>*2.8,.8)
Lamp(<-3,13,18>,srgb<1,.82,.58>*3.2,.8) Lamp(<8,13,20>,srgb<1,.82,.58>*3.0,0)
Crate(2.6,1.5,1.8,4,<-11.6,0,-2.1>,T_Paint2) Crate(1.6,1.0,1.4,-12,<-11.7,1.5,-2.1>,T_JointP)
Crate(2.2,1.9,2.0,8,<-12.6,0,2>,T_Paint) Crate(1.2,.9,1.2,30,<-9.4,0,-.4>,T_Paint2)
Keg(<11,0,-3>,T_Accent) Keg(<12,0,-2.2>,T_Paint2) Keg(<11,0,-1.4>,T_Accent) Keg(<12.1,0,-.6>,T_JointP)
object{Brontar(.3,0,0,3,-2,16,"07") rotate y*(180+34) translate <.9,0,0>}
object{Brontar(.1,0,0,0,2,-6,"05") rotate y*(180+8) translate <-5.5,0,22>}
