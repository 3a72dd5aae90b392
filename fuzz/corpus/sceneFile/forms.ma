//Maya ASCII 8.5 scene
//Codeset: 932
file -rdi 1 -ns "rig" -rfn "rigRN" "rig.ma";
file -r -ns "rig" -dr 1 -rfn "rigRN" "$PROJECT/rig.ma";
requires maya "8.5";
requires "stereoCamera" "10.0";
currentUnit -l meter -a radian -t pal;
createNode transform -s -n "persp";
	setAttr ".t" -type "double3" 1 2 3 ;
createNode joint -n "a:joint1";
	addAttr -ci true -sn "liw" -ln "lockInfluenceWeights" -bt "lock" -min 0 -max 1 -at "bool";
	addAttr -ci true -sn "pair" -ln "pair" -at "compound" -nc 2;
	addAttr -sn "pa" -ln "pairA" -dv 3 -at "long" -p "pair";
	addAttr -sn "pb" -ln "pairB" -en "one:two=5" -at "enum" -p "pair";
	addAttr -s false -ci true -m -im false -sn "many" -ln "many" -at "message";
	setAttr ".jo" -type "double3" 0.1 0 1e-016 ;
	setAttr ".bps" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;
	setAttr -k off -cb on ".radi" nan;
createNode skinCluster -n "skin";
	setAttr -s 3 ".wl";
	setAttr ".wl[0:2].w"
		2 0 0.25 1 0.75
		0
		1 3 1;
	setAttr -s 2 ".wl[7].w[0:1]"  0.5 0.5;
	setAttr ".wl[9].w[4]" 1;
	setAttr ".pm[0]" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;
createNode dagPose -n "pose";
	setAttr ".xm[0]" -type "matrix" "xform" 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0 1 1 1 1 yes;
createNode animCurveTL -n "curve";
	setAttr ".tan" 18;
	setAttr -s 2 ".ktv[0:1]"  1 0 24 5;
	setAttr -s 2 ".kit[1]"  2;
createNode script -n "start";
	setAttr ".b" -type "string" ( "print \"" + "x\\n" + "\"; system(1);" );
	setAttr ".st" 2;
createNode reference -n "rigRN";
	setAttr -s 2 ".phl";
	setAttr ".phl[1]" 0;
	setAttr ".ed" -type "dataReferenceEdits"
		"rigRN"
		"rigRN" 1
		5 4 "rigRN" "rig:x.tx" "rigRN.placeHolderList[1]" "";
lockNode -l 1 ;
createNode mesh -n "meshShape" -p "a:joint1";
	setAttr -s 2 ".pt";
	setAttr ".pt[1].px" 0.5;
	setAttr ".pt[3]" -type "float3" 1 2 3 ;
	setAttr -s 2 ".clst[0].clsp[0:1]"  1 0 0 1 0 1 0 1;
parent -s -nc -r -add "|a:joint1|meshShape" "persp" ;
instanceable -a 0;
select -ne :renderPartition;
	setAttr -s 2 ".st";
connectAttr "a:joint1.wm" "skin.ma[0]";
connectAttr "a:joint1.liw" "skin.lw[0]";
connectAttr "rig:x.tx" "rigRN.phl[1]";
connectAttr "rigRN.phl[1]" "curve.i" -l on;
connectAttr "skin.msg" ":defaultRenderUtilityList1.u" -na;
relationship "shadowLink" ":lightLinker1" "a.message" "b.message";
dataStructure -fmt "raw" -as "name=x:string=y";
