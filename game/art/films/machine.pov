// The machine alone on a clear ground. Declare=Shot=0..3 Declare=Pass=0..3 Declare=Mirror=0|1 (1: its image in water).
// Pass 0 is in the light of the shot, lamps as pose.inc says; 1 by the visor alone, 2 by the head lamps, 3 by the
// flash.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 2}
#include "pose.inc"
#include "light.inc"
#declare Marks=1;
#if(Shot=3) #declare F_Shine=0; #end // as in scenes/menu.pov
#include "tex.inc"
#if(Pass>0) #declare Lit_V=(Pass=1); #declare Lit_L=(Pass=2); #end
#declare T_Visor=texture{pigment{srgb<1,.62,.16>} finish{ambient 0 diffuse .1 emission 1.6*Lit_V}}
#declare T_Headlight=texture{pigment{cylindrical color_map{[0 srgb<.42,.16,.03>][.2 srgb<1,.52,.14>]
  [.4 srgb<1,.86,.56>][.6 srgb<1,.98,.92>]} rotate x*90 scale .10}
 finish{ambient 0 diffuse .1 emission 2*Lit_L}}
#declare T_Lamp2=texture{pigment{srgb<1,.2,.1>} finish{ambient 0 diffuse .1 emission 2*Lit_L}}
#include "brontar.inc"
camera{location CamAt right x*4/3 look_at CamTo angle CamAngle}
background{rgbt 1}
#if(Pass=0)
 #if(Shot<2)
  sphere{0,4000 hollow no_image no_shadow pigment{gradient y color_map{[0 srgb<.06,.06,.07>][.5 srgb<.30,.19,.15>]
  [.56 srgb<.22,.17,.19>][.7 srgb<.09,.12,.2>][1 srgb<.02,.03,.07>]} translate y*-.5 scale 8000}
  finish{ambient 0 diffuse 0 emission 1}}
 #else
  sphere{0,4000 hollow no_image no_shadow pigment{gradient y color_map{[0 srgb<.40,.32,.26>][.5 srgb<.62,.47,.36>]
  [.56 srgb<.45,.44,.46>][.7 srgb<.18,.24,.35>][1 srgb<.06,.09,.16>]} translate y*-.5 scale 8000}
  finish{ambient 0 diffuse 0 emission 1}}
 #end
 light_source{vnormalize(<F_Sun.x,max(F_Sun.y,.03),F_Sun.z>)*900 F_SunLight}
 light_source{<-60,70,-60> srgb<.58,.68,.86>*1.7*F_Fill}
 light_source{<-40,12,-50> srgb<.70,.76,.88>*1.15*F_Fill shadowless}
 light_source{<10,40,-5> srgb<.40,.48,.62>*.35*F_Fill shadowless}
#else
 sphere{0,4000 hollow no_image no_shadow pigment{rgb 0}
  finish{ambient 0 diffuse 0}} // what mirrors nothing must not become clear
#end
#if(Lit_V>0 & Shot<2) light_source{VisorAt srgb<1,.55,.14>*.8*Lit_V fade_distance .8 fade_power 2 shadowless} #end
#if(Lit_L>0 & Shot<2) #local k=0; #while(k<2)
  light_source{LampAt[k] srgb<1,.90,.70>*.9*Lit_L fade_distance .6 fade_power 2 shadowless} #local k=k+1; #end #end
#if(Pass=3) light_source{Muzzle srgb<1,.68,.32>*9 fade_distance 7 fade_power 2} #end
object{Brontar(Phase,Walk,Bob,GY,GP,HY,"07") rotate y*Turn translate Place #if(Mirror) scale <1,-1,1> #end}
