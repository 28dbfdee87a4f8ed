// What the machine takes from the ground: red is 1 where the sun reaches it, green where nothing stands close above.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 1}
#include "pose.inc"
#include "light.inc"
#declare T_Plain=texture{pigment{rgb 1}}
#declare T_Steel=T_Plain #declare T_Chrome=T_Plain #declare T_Dark=T_Plain #declare T_Black=T_Plain
  #declare T_Rubber=T_Plain #declare T_Burnt=T_Plain #declare T_Gun=T_Plain
#declare T_White=T_Plain #declare T_Paint=T_Plain #declare T_Paint2=T_Plain #declare T_JointP=T_Plain
  #declare T_Accent=T_Plain #declare T_Edge=T_Plain #declare T_Rivet=T_Plain
#declare T_MudDry=T_Plain #declare T_LegTop=T_Plain #declare T_LegLow=T_Plain #declare T_EdgeMud=T_Plain
  #declare T_Visor=T_Plain #declare T_Headlight=T_Plain #declare T_Lamp2=T_Plain
#include "brontar.inc"
camera{location CamAt right x*4/3 look_at CamTo angle CamAngle}
background{rgb 1}
#declare S=vnormalize(<F_Sun.x,max(F_Sun.y,.03),F_Sun.z>);
light_source{S*900 rgb<1,0,0>/S.y}
light_source{<0,22,0>+Place rgb<0,1,0> area_light x*26,z*26,4,4 adaptive 1 jitter parallel point_at Place}
plane{y,-.02 pigment{rgb 1} finish{ambient 0 diffuse 1}}
object{Brontar(Phase,Walk,Bob,GY,GP,HY,"07") rotate y*Turn translate Place no_image}
