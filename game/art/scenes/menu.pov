// The menu's picture: the machine at sunrise. Its left side stays calm for the menu, its top for the title.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare LampGlow=.62; #declare F_Shine=0;
#include "field.inc"
camera{location <-2.2,1.6,-17.6> right x*4/3 look_at <-2.9,5.2,0> angle 60}
object{Brontar(.12,1,0,4,-9,12,"07") rotate y*(180+30) translate <1.0,-.12,1.0>}
object{Brontar(.55,1,0,10,-3,10,"03") rotate y*(180-35) translate <-3.6,-.2,62>}
