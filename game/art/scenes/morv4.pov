// Loading picture: night and rain, the machine searches with its headlamps. The rain itself is drawn over the picture
// afterwards.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 6}
#declare F_Sun=vnormalize(<.55,.45,.8>);
#declare F_SunLight=srgb<.55,.68,1>*3.4;
#declare F_Glow=1.6; #declare F_Disc=0; #declare F_GlowTint=<.12,.17,.25>;
#declare F_Horizon=<.14,.17,.21>; #declare F_Low=<.12,.15,.20>; #declare F_Mid=<.07,.095,.14>;
#declare F_High=<.04,.055,.085>; #declare F_Zenith=<.015,.02,.035>;
#declare F_Cloud1=<.13,.16,.20>; #declare F_Cloud2=<.035,.045,.06>; #declare F_CloudTurn=130;
#declare F_Fill=.55; #declare F_Dry=-.42; #declare F_Ripple=.09;
#declare F_Fog=srgbt<.10,.125,.16,.15>; #declare F_FogFar=55; #declare F_Air=srgbt<.09,.12,.16,.7>;
#include "field.inc"
camera{location <2.6,1.5,-17> right x*4/3 look_at <1.6,5.0,0> angle 60}
#macro Beam(p,d,l,w)
 cone{0,.1,z*l,w open hollow no_shadow no_reflection
  texture{pigment{aoi pigment_map{[.5 rgbt 1][.8 gradient z color_map{[0 rgbt<1,.9,.7,.86>][.5 rgbt<1,.9,.7,.97>]
    [1 rgbt<1,.9,.7,1>]} scale l]
   [1 gradient z color_map{[0 rgbt<1,.92,.75,.55>][.3 rgbt<1,.9,.7,.84>][.7 rgbt<1,.9,.7,.96>][1 rgbt<1,.9,.7,1>]}
     scale l]}} finish{ambient 0 diffuse 0 emission 1}}
  rotate x*d translate p}
 light_source{p srgb<1,.88,.66>*7 spotlight point_at p+vrotate(z*l,x*d) radius 9 falloff 15 fade_distance 9
   fade_power 1.6}
#end
union{object{Brontar(.62,1,0,-8,-12,-14,"07")}
 union{Beam(<1.1,0,1.22>,9,11,.80) Beam(<-1.1,0,1.22>,9,11,.80) rotate y*-14 translate <0,4.83,4.55>}
 rotate y*(180-38) translate <-1.6,-.12,1.4>}
union{object{Brontar(.2,1,0,5,-3,8,"02")} union{Beam(<1.1,0,1.22>,8,14,1.1) Beam(<-1.1,0,1.22>,8,14,1.1)
  translate <0,4.83,4.55>} rotate y*(180-30) translate <21,-.2,38>}
