//Maya ASCII 2025 scene
//Name: mask.ma
//Codeset: UTF-8
requires maya "2025";
currentUnit -l centimeter -a degree -t film;
fileInfo "application" "maya";
fileInfo "product" "Maya 2025";
fileInfo "version" "2025";
createNode transform -n "mask";
	rename -uid "CE85649A-9021-D648-925F-B63024A73664";
createNode mesh -n "maskShape" -p "mask";
	rename -uid "0A489316-CF50-3895-0478-103995601EE2";
createNode polyPlane -n "polyPlane1";
	rename -uid "B91825E2-51A1-BED2-11E8-6E05D155E794";
	setAttr ".w" 6;
	setAttr ".h" 4;
	setAttr ".sw" 6;
	setAttr ".sh" 4;
createNode blendShape -n "shapes";
	rename -uid "A5F96050-87F5-A9B4-CF9D-1BDDF98B05E2";
	addAttr -ci true -h true -sn "aal" -ln "attributeAliasList" -dt "attributeAlias";
	setAttr -s 5 ".w[0:4]"  0 0 0 0 0;
	setAttr ".it[0].itg[0].iti[6000].ipt" -type "pointArray" 3 0.25 0 0.5 1 0.25 0 0.5 1 0.25 0 0.5 1 ;
	setAttr ".it[0].itg[0].iti[6000].ict" -type "componentList" 1 "vtx[11:13]" ;
	setAttr ".it[0].itg[0].tw[12]" 0.5;
	setAttr ".it[0].itg[1].iti[5500].ipt" -type "pointArray" 4 0 -0.25 0.25 1 0 -0.25 0.25 1 0 -0.25 0.25 1 0 -0.25 0.25 1 ;
	setAttr ".it[0].itg[1].iti[5500].ict" -type "componentList" 1 "vtx[23:26]" ;
	setAttr ".it[0].itg[1].iti[6000].ipt" -type "pointArray" 4 0 -0.5 0 1 0 -0.5 0 1 0 -0.5 0 1 0 -0.5 0 1 ;
	setAttr ".it[0].itg[1].iti[6000].ict" -type "componentList" 1 "vtx[23:26]" ;
	setAttr ".it[0].itg[2].iti[6000].ipt" -type "pointArray" 3 0 0 -1 1 0 0 -1 1 0 0 -1 1 ;
	setAttr ".it[0].itg[2].iti[6000].ict" -type "componentList" 1 "vtx[2:4]" ;
	setAttr ".it[0].itg[3].iti[6000].ipt" -type "pointArray" 3 0 0.5 0 1 0 0.5 0 1 0 0.5 0 1 ;
	setAttr ".it[0].itg[3].iti[6000].ict" -type "componentList" 1 "vtx[32:34]" ;
	setAttr ".it[0].itg[4].iti[6000].ipt" -type "pointArray" 3 0 0.75 0 1 0 0.75 0 1 0 0.75 0 1 ;
	setAttr ".it[0].itg[4].iti[6000].ict" -type "componentList" 1 "vtx[28:30]" ;
	setAttr ".ibig[1].ibi[5500].ibtn" -type "string" "L_blinkHalf" ;
	setAttr ".aal" -type "attributeAlias" {"smile_L","weight[0]","L_blink","weight[1]","jawOpen","weight[2]","browLeft","weight[3]","browRight","weight[4]"} ;
createNode mesh -n "maskShapeOrig" -p "mask";
	rename -uid "9A8BF2D2-B2AE-252D-8F04-1B36F8C0090D";
	setAttr ".io" yes;
connectAttr "maskShape.iog[0]" ":initialShadingGroup.dsm" -na;
connectAttr "shapes.og[0]" "maskShape.i";
connectAttr "maskShapeOrig.w[0]" "shapes.ip[0].ig";
connectAttr "maskShapeOrig.o" "shapes.orggeom[0]";
connectAttr "polyPlane1.out" "maskShapeOrig.i";
// End of mask.ma
