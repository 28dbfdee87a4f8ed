// Background of the headquarters: a dark command room, the machine as a projection over the map table. It stands at
// the right: the left half is for the module's panel.
#version 3.7;
global_settings{assumed_gamma 1.0 max_trace_level 12}
#include "tex.inc"
#include "brontar.inc"
camera{location <-2.6,2.5,-7.9> right x*4/3 look_at <-2.55,1.75,0> angle 62}
background{rgb 0}
#declare T_Room=texture{pigment{granite color_map{[0 srgb<.30,.34,.38>][1 srgb<.22,.24,.27>]} scale 2} finish{ambient 0
  diffuse .6 specular .2 roughness .03 reflection .02}}
// room: floor plates, walls with ribs, ceiling with cable trays
plane{y,0 texture{pigment{granite color_map{[0 srgb<.20,.21,.22>][1 srgb<.13,.135,.14>]} scale 2} normal{granite .04}
  finish{ambient 0 diffuse .5 specular .5 roughness .02 reflection{.04,.3 falloff 3}}}}
#declare i=-6; #while(i<7) box{<-9,-.01,i*1.5-.015>,<9,.003,i*1.5+.015> pigment{rgb .01}}
  box{<i*1.5-.015,-.01,-9>,<i*1.5+.015,.003,9> pigment{rgb .01}} #declare i=i+1; #end
box{<-8,0,5.4>,<8,5,5.6> texture{T_Room}} box{<-7.2,0,-9>,<-7,5,6> texture{T_Room}}
box{<7,0,-9>,<7.2,5,6> texture{T_Room}} box{<-8,4.6,-9>,<8,4.8,6> texture{T_Room}}
#declare i=-3; #while(i<4) object{BBox(<i*2.3-.16,0,5.1>,<i*2.3+.16,4.6,5.45>,.03,T_Paint2,T_Edge)}
  object{BBox(<-7,4.25,i*2-.14>,<7,4.6,i*2+.14>,.03,T_Dark,T_Steel)} #declare i=i+1; #end
#declare i=0; #while(i<5) cylinder{<-5.4+i*.14,4.2,-9>,<-5.4+i*.14,4.2,6>,.05 texture{T_Rubber}} #declare i=i+1; #end
// wall of screens: maps, curves, lists, all of plain shapes
#declare Sc=<.16,.62,.95>; #declare Sa=<1,.58,.12>;
#macro Glow(c,e) pigment{rgb c} finish{ambient 0 diffuse 0 emission e} no_shadow #end
#macro Screen(w,h,kind,sd) #local R=seed(sd); union{
 object{BBox(<-w/2-.1,-h/2-.1,-.02>,<w/2+.1,h/2+.1,.14>,.03,T_Dark,T_Steel)}
 box{<-w/2,-h/2,-.03>,<w/2,h/2,-.021> pigment{gradient y color_map{[0 rgb Sc*.09][1 rgb Sc*.03]}
   scale h translate -y*h/2} finish{ambient 0 diffuse 0 emission 1}}
 #local k=1; #while(k<8) box{<-w/2,-h/2+k*h/8-.004,-.034>,<w/2,-h/2+k*h/8+.004,-.03> Glow(Sc,.16)}
   box{<-w/2+k*w/8-.004,-h/2,-.034>,<-w/2+k*w/8+.004,h/2,-.03> Glow(Sc,.16)} #local k=k+1; #end
 #if(kind=0) #local k=0; #local p=<-w*.46,0,-.04>;
   #while(k<30) #local q=<-w*.46+(k+1)*w*.92/30,h*.30*sin(k*.45+sd)*(.4+.6*rand(R)),-.04>;
   cylinder{p,q,.009 Glow(Sc,1.1)} #local p=q; #local k=k+1; #end #end
 #if(kind=1) #local k=0; #while(k<9) #if(mod(k,4)=1) #local lc=Sa; #else #local lc=Sc; #end
   box{<-w*.44,h*.40-k*h*.095,-.04>,<-w*.44+w*(.25+.6*rand(R)),h*.40-k*h*.095+h*.035,-.036> Glow(lc,.75)}
   #local k=k+1; #end #end
 #if(kind=2) #local k=0; #while(k<4) torus{h*(.1+.1*k),.006 rotate x*90 translate -z*.04 Glow(Sc,.8)} #local k=k+1; #end
  #local k=0; #while(k<7) sphere{<(rand(R)-.5)*w*.8,(rand(R)-.5)*h*.8,-.04>,.026 Glow(Sa,1.3)} #local k=k+1; #end
  cone{0,.0,<h*.38,h*.18,0>,.09 scale <1,1,.02> translate -z*.045 Glow(Sc,.5)} #end } #end
object{Screen(2.6,1.5,2,3) translate <0,2.75,5.05>} object{Screen(1.9,1.2,0,7) translate <-2.7,2.75,5.05>}
object{Screen(1.9,1.2,1,12) translate <2.7,2.75,5.05>}
object{Screen(1.6,.9,1,21) translate <-4.9,2.6,5.0>} object{Screen(1.6,.9,0,25) translate <4.9,2.6,5.0>}
object{Screen(1.8,1.1,1,31) rotate y*90 translate <6.8,2.5,2.6>}
object{Screen(1.8,1.1,0,35) rotate y*90 translate <6.8,2.5,.2>}
object{Screen(1.8,1.1,2,41) rotate y*-90 translate <-6.8,2.5,2.4>}
// consoles before the wall
#declare i=-2; #while(i<3) union{object{BBox(<-.85,0,-.35>,<.85,.78,.35>,.04,T_Paint2,T_Edge)}
  object{BBox(<-.85,0,0>,<.85,.06,.55>,.02,T_Dark,T_Steel) rotate x*24 translate <0,.82,-.35>}
 #declare R=seed(i+9); #declare k=0;
 #while(k<16) box{<-.75+mod(k,8)*.2,.0,.1+.2*floor(k/8)>,<-.64+mod(k,8)*.2,.075,.2+.2*floor(k/8)>
   #if(rand(R)<.3) Glow(Sa,1) #else
   #if(rand(R)<.5) Glow(Sc,.6) #else texture{T_Black} #end #end rotate x*24 translate <0,.82,-.35>} #declare k=k+1; #end
 translate <i*2.1,0,4.1>} #declare i=i+1; #end
// the table
#declare N=8; #declare k=0;
intersection{ #while(k<N) plane{z,2.05 rotate y*k*360/N} #declare k=k+1; #end plane{-y,0} plane{y,.95}
  texture{T_Paint2}}
#declare k=0; #while(k<N) union{object{BBox(<-.72,.15,1.96>,<.72,.80,2.12>,.04,T_Paint,T_Edge)}
  box{<-.6,.86,2.04>,<.6,.89,2.07> Glow(Sa,1.1)} Rivets(<-.62,.72,2.13>,<.62,.72,2.13>,8,.022)
  object{BBox(<-.86,.90,1.78>,<.86,1.0,2.16>,.03,T_Dark,T_Steel)} rotate y*k*360/N} #declare k=k+1; #end
cylinder{y*.95,y*.96,1.82 pigment{rgb<.01,.02,.03>} finish{ambient 0 diffuse .2 reflection .12}}
torus{1.82,.02 translate y*.97 Glow(Sc,1.5)} torus{1.3,.006 translate y*.97 Glow(Sc,.8)} torus{.8,.006 translate y*.97
  Glow(Sc,.8)}
#declare k=0; #while(k<36) box{<-.006,.96,1.70>,<.006,.968,1.80> rotate y*k*10 Glow(Sc,1)} #declare k=k+1; #end
// projection: a piece of land as a net, the machine over it
#declare fh=function(x,z){.16*sin(x*2.1+.6)*cos(z*2.6)+.10*sin(x*4.3+z*3.1)}
#declare k=-12; #while(k<13) #declare j=-12; #while(j<12)
 #declare x0=k*.13; #declare z0=j*.13; #declare z1=(j+1)*.13;
 #if(x0*x0+z1*z1<2.5 & x0*x0+z0*z0<2.5) cylinder{<x0,1.14+fh(x0,z0)*.55,z0>,<x0,1.14+fh(x0,z1)*.55,z1>,.0035
   Glow(Sc,.55)} cylinder{<z0,1.14+fh(z0,x0)*.55,x0>,<z1,1.14+fh(z1,x0)*.55,x0>,.0035 Glow(Sc,.55)} #end
 #declare j=j+1; #end #declare k=k+1; #end
#include "holo.inc"
union{object{Brontar(.15,1,0,6,-6,12,"07") scale .185 rotate y*(180+38) translate <0,1.22,0>} no_shadow}
cone{y*.97,1.75,y*3.1,2.2 open hollow no_shadow no_reflection pigment{gradient y color_map{[0 rgbt<.2,.7,1,.86>]
  [.6 rgbt<.2,.7,1,.985>][1 rgbt<.2,.7,1,1>]} scale 2.2 translate y*.97} finish{ambient 0 diffuse 0 emission .8}}
light_source{<0,2.0,0> rgb<.22,.62,1>*3.0 fade_distance 2.0 fade_power 2 shadowless}
light_source{<0,1.2,-3.2> rgb<1,.55,.15>*.45 fade_distance 1.2 fade_power 2 shadowless}
light_source{<0,3.6,3.6> rgb<.25,.6,1>*2.4 fade_distance 2 fade_power 2 shadowless}
light_source{<5,4.2,-4> rgb<1,.72,.42>*2.2 spotlight point_at <3,0,0> radius 18 falloff 42 fade_distance 3.5
  fade_power 1.5}
light_source{<-6,4.2,1> rgb<1,.72,.42>*2.2 spotlight point_at <-5.5,0,2> radius 14 falloff 42 fade_distance 3.5
  fade_power 1.5}
light_source{<-3,3.2,-8> rgb<.45,.55,.75>*.5 shadowless}
