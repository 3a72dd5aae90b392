//Maya ASCII 2024 scene
//Name: square.ma
//Last modified: Mon, Jan 01, 2024 10:00:00 AM
//Codeset: UTF-8
requires maya "2024";
requires -nodeType "poseReader" "posePlugin" "1.0";
currentUnit -l centimeter -a degree -t ntsc;
fileInfo "license" "a \"quoted\" \\ text; with a semicolon";
createNode transform -n "square";
	rename -uid "11111111-2222-3333-4444-555555555555";
	addAttr -ci true -sn "mood" -ln "mood" -min 0 -max 10 -at "double";
	setAttr -l on ".v";
	setAttr ".t" -type "double3" 1.5 -2 0.25 ;
	setAttr ".ry" 45.000000000000007;
	setAttr -k on ".mood" 0.30000000000000004;
createNode mesh -n "squareShape" -p "square";
	setAttr -k off ".v";
	setAttr ".unheardOf" -type "oddData" 3 "a;b" 1e-016 ;
	setAttr ".vir" yes;
createNode mesh -n "squareShapeOrig" -p "square";
	setAttr -k off ".v";
	setAttr ".io" yes;
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 4 ".uvst[0].uvsp[0:3]" -type "float2" 0 0 1 0 1 1 0 1;
	setAttr -s 4 ".vt[0:3]"  -0.5 0 0.5 0.5 0 0.5 0.5 0 -0.5 -0.5 0 -0.50000001;
	setAttr -s 4 ".ed[0:3]"  0 1 0 1 2 0 2 3 0 3 0 0;
	setAttr ".fc[0]" -type "polyFaces" 
		f 4 0 1 2 3
		mu 0 4 0 1 2 3;
	setAttr ".cd" -type "dataPolyComponent" Index_Data Edge 0 ;
createNode blendShape -n "faces";
	addAttr -ci true -h true -sn "aal" -ln "attributeAliasList" -dt "attributeAlias";
	setAttr -s 2 ".w[0:1]"  0.25 0;
	setAttr -s 2 ".it[0].itg";
	setAttr ".it[0].itg[0].iti[6000].ipt" -type "pointArray" 1 0 1.0000000000000002 0 1 ;
	setAttr ".it[0].itg[0].iti[6000].ict" -type "componentList" 1 "vtx[2]";
	setAttr -s 4 ".it[0].itg[0].tw[0:3]"  1 0.5 0.25 1;
	setAttr ".it[0].itg[1].iti[6000].ipt" -type "pointArray" 0 ;
	setAttr ".it[0].itg[1].iti[6000].ict" -type "componentList";
	setAttr ".aal" -type "attributeAlias" {"lift","weight[0]","flat","weight[1]"} ;
createNode poseReader -n "reader";
	setAttr -s 3 ".pose";
	setAttr -s 2 ".pose[0:1].angle"  10 20;
	setAttr ".gain" 0.5;
	setAttr ".note" -type "string" "line one\nline two";
// A comment of somebody's own.
select -ne :time1;
	setAttr ".o" 12;
	setAttr ".unw" 12;
select -ne :defaultShaderList1;
	setAttr -s 2 ".s";
connectAttr "squareShapeOrig.w" "faces.ip[0].ig";
connectAttr "squareShapeOrig.o" "faces.orggeom[0]";
connectAttr "faces.og[0]" "squareShape.i";
connectAttr "reader.out[0]" "faces.w[1]";
connectAttr "squareShape.iog" ":initialShadingGroup.dsm" -na;
relationship "link" ":lightLinker1" ":initialShadingGroup.message" ":defaultLightSet.message";
connectAttr "faces.msg" ":defaultShaderList1.s" -na;
// End of square.ma
