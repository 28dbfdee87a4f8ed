// Background of the factory: a hull hangs on chains, two legs are mounted, two wait in jigs; somebody welds. It hangs
// at the right: the left half is for the module's panel.
#version 3.7;
#include "hall.inc"
camera{location <-4.6,2.0,-15.3> right x*4/3 look_at <-4.0,4.9,0> angle 67}
Lamp(<-4.5,13,-3>,srgb<1,.86,.64>*3.0,.6) Lamp(<5.5,13,3>,srgb<1,.86,.64>*3.0,.7)
Lamp(<-10.5,13,10>,srgb<1,.82,.58>*2.6,.7) Lamp(<2,13,20>,srgb<1,.82,.58>*3.0,.7)
#declare H=5.75;
union{
 object{Body(-4,6,0,"12") translate y*H}
 #declare s=-1; #while(s<2) Leg(<s*2.55,H,-2.25>,<s*3.35,.85,-3.05>,<s*.55,.55,-1>,s,180-s*16) #declare s=s+2; #end
 // chains and crane beam
 #declare s=-1; #while(s<2) #declare q=0; #while(q<2) #declare k=0; #while(k<26)
   torus{.13,.04 rotate x*90 scale <1,1.35,1> rotate y*90*mod(k,2) translate <s*1.1,H+1.0+k*.24,q*4.2-1.8>
     texture{T_Steel}} #declare k=k+1; #end #declare q=q+1; #end #declare s=s+2; #end
 #declare q=0; #while(q<2) object{BBox(<-2.2,H+6.6,q*4.2-2.2>,<2.2,H+7.2,q*4.2-1.4>,.06,T_Accent,T_Edge)}
   #declare q=q+1; #end
 rotate y*(180+38) translate <1.2,0,1.2>}
// the front legs in their jigs
#macro Jig(at,turn) union{
 union{Leg(<0,5.6,0>,<.3,.85,.9>,<.1,.3,1>,1,0)}
 object{BBox(<-1.5,0,-1.3>,<-1.2,6.6,-1.0>,.04,T_Accent,T_Edge)}
 object{BBox(<1.2,0,-1.3>,<1.5,6.6,-1.0>,.04,T_Accent,T_Edge)}
 object{BBox(<-1.6,6.0,-1.35>,<1.6,6.4,-.2>,.04,T_Paint2,T_Edge)}
 object{BBox(<-1.5,3.0,-1.25>,<1.5,3.2,-.95>,.03,T_Dark,T_Steel)} rotate y*turn translate at} #end
Jig(<-9.2,0,5>,200) Jig(<-12.6,0,9>,190)
// welding light under the nose, scaffold and tools
#declare W=<-3.3,3.95,-3.4>;
light_source{W-<.3,.2,.5> srgb<.62,.80,1>*5 fade_distance 1.1 fade_power 2}
sphere{W,.11 pigment{rgb 1} finish{ambient 0 diffuse 0 emission 6} no_shadow}
sphere{W,1.3 hollow no_shadow pigment{aoi color_map{[.5 srgbt<.45,.66,1,1>][.7 srgbt<.5,.70,1,.97>]
  [.86 srgbt<.6,.78,1,.86>][.95 srgbt<.8,.9,1,.6>][1 srgbt<1,1,1,.1>]}} finish{ambient 0 diffuse 0 emission 1.1}}
#declare R=seed(11); #declare k=0; #while(k<150) // sparks: thin, hot where they start, red where they die
 #declare d=vnormalize(<rand(R)-.5,rand(R)*.8-.35,rand(R)-.7>); #declare l=.25+rand(R)*rand(R)*2.6;
 #declare p=W+d*l-y*l*l*.28;
 cone{p,.0065,p+d*(.04+.11*l)-y*l*.055,.002 pigment{rgb<1.2,1.05-.28*l+.1*rand(R),.75-.28*l>} finish{ambient 0 diffuse 0
   emission 3.0} no_shadow} #declare k=k+1; #end
union{ object{BBox(<-1.8,2.0,-.9>,<1.8,2.15,.9>,.03,T_Dark,T_Steel)}
 #declare s=-1; #while(s<2) cylinder{<s*1.7,0,-.8>,<s*1.7,3.2,-.8>,.06 texture{T_Accent}}
   cylinder{<s*1.7,0,.8>,<s*1.7,2.1,.8>,.06 texture{T_Accent}} cylinder{<s*1.7,.2,-.8>,<s*-1.7,2.0,-.8>,.035
   texture{T_Steel}} #declare s=s+2; #end
 cylinder{<-1.7,3.1,-.8>,<1.7,3.1,-.8>,.05 texture{T_Accent}} rotate y*-38 translate <-4.6,0,-4.4>}
Crate(1.5,1.0,1.1,-14,<2.6,0,-6.6>,T_Paint2) Crate(1.0,.7,.9,22,<2.5,1.0,-6.6>,T_JointP)
Crate(1.9,1.2,1.4,9,<5.0,0,-5.2>,T_Paint)
Keg(<4.0,0,-7.3>,T_Accent) Keg(<-8.2,0,-3>,T_Accent) Keg(<-9.1,0,-2.4>,T_Paint2)
