// Loading picture: a column of machines crosses the flats before the rising sun.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare F_Sun=vnormalize(<-.26,.10,1>);
#declare F_Glow=.56; #declare F_CloudTurn=205;
#declare F_SunLight=srgb<1,.62,.32>*5;
#declare F_ShiftX=1.7; #declare F_ShiftZ=.6; #declare F_Dry=-.36; #declare F_Fill=.8;
#include "field.inc"
camera{location <2,2.2,-16> right x*4/3 look_at <.5,5.4,10> angle 64}
object{Brontar(.22,1,0,-4,-7,-10,"03") rotate y*(90+22) translate <3.4,-.2,5.5>}
object{Brontar(.70,1,0,3,-4,0,"05") rotate y*(90+15) translate <-9.5,-.2,22>}
object{Brontar(.05,1,0,8,-4,6,"11") rotate y*(90+15) translate <-34,-.2,48>}
