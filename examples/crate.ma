//Maya ASCII 2016 scene
//Name: crate.ma
//Last modified: Sun, Nov 22, 2026 08:00:00 PM
//Codeset: 1252
requires maya "2016";
currentUnit -l centimeter -a degree -t film;
fileInfo "application" "maya";
fileInfo "product" "Maya 2016";
fileInfo "version" "2016";
fileInfo "cutIdentifier" "201511301000-979500";
fileInfo "osv" "Microsoft Windows 7 Enterprise Edition, 64-bit Windows 7 Service Pack 1 (Build 7601)\n";
createNode transform -s -n "persp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C01";
	setAttr ".v" no;
	setAttr ".t" -type "double3" 180.5 135.2 180.5 ;
	setAttr ".r" -type "double3" -27.938352729602379 45 0 ;
createNode camera -s -n "perspShape" -p "persp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C02";
	setAttr -k off ".v" no;
	setAttr ".fl" 34.999999999999993;
	setAttr ".coi" 291.2;
	setAttr ".imn" -type "string" "persp";
	setAttr ".den" -type "string" "persp_depth";
	setAttr ".man" -type "string" "persp_mask";
	setAttr ".hc" -type "string" "viewSet -p %camera";
createNode transform -n "crate_grp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C10";
	addAttr -ci true -sn "vQM_lod1" -ln "vQM_lod1" -at "double";
	setAttr ".t" -type "double3" 0 0 -40 ;
	setAttr -k on ".vQM_lod1" 2500;
createNode transform -n "crate" -p "crate_grp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C11";
	setAttr ".t" -type "double3" 0 25 0 ;
	setAttr ".r" -type "double3" 0 30 0 ;
createNode mesh -n "crateShape" -p "crate";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C12";
	setAttr -k off ".v";
	setAttr ".vir" yes;
	setAttr ".vif" yes;
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 14 ".uvst[0].uvsp[0:13]" -type "float2" 0.375 0 0.625 0 0.375
		 0.25 0.625 0.25 0.375 0.5 0.625 0.5 0.375 0.75 0.625 0.75 0.375 1 0.625 1 0.875
		 0 0.875 0.25 0.125 0 0.125 0.25;
	setAttr ".cuvs" -type "string" "map1";
	setAttr ".dcc" -type "string" "Ambient+Diffuse";
	setAttr ".covm[0]"  0 1 1;
	setAttr ".cdvm[0]"  0 1 1;
	setAttr -s 8 ".vt[0:7]"  -25 -25 25 25 -25 25 -25 25 25 25 25 25 -25 25 -25
		 25 25 -25 -25 -25 -25 25 -25 -25;
	setAttr -s 12 ".ed[0:11]"  0 1 0 2 3 0 4 5 0 6 7 0 0 2 0 1 3 0 2 4 0
		 3 5 0 4 6 0 5 7 0 6 0 0 7 1 0;
	setAttr -s 6 -ch 24 ".fc[0:5]" -type "polyFaces" 
		f 4 0 5 -2 -5
		mu 0 4 0 1 3 2
		f 4 1 7 -3 -7
		mu 0 4 2 3 5 4
		f 4 2 9 -4 -9
		mu 0 4 4 5 7 6
		f 4 3 11 -1 -11
		mu 0 4 6 7 9 8
		f 4 -12 -10 -8 -6
		mu 0 4 1 10 11 3
		f 4 10 4 6 8
		mu 0 4 12 0 2 13;
	setAttr ".cd" -type "dataPolyComponent" Index_Data Edge 0 ;
	setAttr ".cvd" -type "dataPolyComponent" Index_Data Vertex 0 ;
	setAttr ".pd[0]" -type "dataPolyComponent" Index_Data UV 0 ;
	setAttr ".hfd" -type "dataPolyComponent" Index_Data Face 0 ;
createNode transform -n "lamp" -p "crate_grp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C20";
	setAttr ".t" -type "double3" 0 120 0 ;
	setAttr ".r" -type "double3" -90 0 0 ;
createNode spotLight -n "lampShape" -p "lamp";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C21";
	setAttr -k off ".v";
	setAttr ".in" 1.5;
	setAttr ".ca" 50;
createNode transform -n "shotCam";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C30";
	setAttr ".t" -type "double3" 0 60 250 ;
createNode camera -n "shotCamShape" -p "shotCam";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C31";
	setAttr -k off ".v";
	setAttr ".fl" 50;
	setAttr ".coi" 250;
createNode lightLinker -s -n "lightLinker1";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C40";
	setAttr -s 3 ".lnk";
	setAttr -s 3 ".slnk";
createNode displayLayerManager -n "layerManager";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C41";
createNode displayLayer -n "defaultLayer";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C42";
createNode renderLayerManager -n "renderLayerManager";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C43";
createNode renderLayer -n "defaultRenderLayer";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C44";
	setAttr ".g" yes;
createNode lambert -n "crateMat";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C50";
	setAttr ".c" -type "float3" 0.55 0.38 0.2 ;
createNode shadingEngine -n "crateMatSG";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C51";
	setAttr ".ihi" 0;
	setAttr ".ro" yes;
createNode materialInfo -n "materialInfo1";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C52";
createNode file -n "crateFile";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C53";
	setAttr ".ftn" -type "string" "crate_diffuse.png";
	setAttr ".cs" -type "string" "sRGB";
createNode place2dTexture -n "place2dTexture1";
	rename -uid "3C2F5A10-4B1E-8F2A-11D0-6A2F0E3B7C54";
select -ne :time1;
	setAttr ".o" 1;
	setAttr ".unw" 1;
select -ne :renderPartition;
	setAttr -s 3 ".st";
select -ne :renderGlobalsList1;
select -ne :defaultShaderList1;
	setAttr -s 5 ".s";
select -ne :postProcessList1;
	setAttr -s 2 ".p";
select -ne :defaultRenderingList1;
select -ne :initialShadingGroup;
	setAttr ".ro" yes;
select -ne :initialParticleSE;
	setAttr ".ro" yes;
select -ne :defaultResolution;
	setAttr ".pa" 1;
select -ne :hardwareRenderGlobals;
	setAttr ".ctrs" 256;
	setAttr ".btrs" 512;
connectAttr "crateFile.oc" "crateMat.c" -f;
connectAttr "place2dTexture1.o" "crateFile.uv";
connectAttr "place2dTexture1.ofs" "crateFile.fs";
relationship "link" ":lightLinker1" ":initialShadingGroup.message" ":defaultLightSet.message";
relationship "link" ":lightLinker1" ":initialParticleSE.message" ":defaultLightSet.message";
relationship "link" ":lightLinker1" "crateMatSG.message" ":defaultLightSet.message";
relationship "shadowLink" ":lightLinker1" ":initialShadingGroup.message" ":defaultLightSet.message";
relationship "shadowLink" ":lightLinker1" ":initialParticleSE.message" ":defaultLightSet.message";
relationship "shadowLink" ":lightLinker1" "crateMatSG.message" ":defaultLightSet.message";
connectAttr "layerManager.dli[0]" "defaultLayer.id";
connectAttr "renderLayerManager.rlmi[0]" "defaultRenderLayer.rlid";
connectAttr "crateMat.oc" "crateMatSG.ss";
connectAttr "crateShape.iog" "crateMatSG.dsm" -na;
connectAttr "crateMatSG.msg" "materialInfo1.sg";
connectAttr "crateMat.msg" "materialInfo1.m";
connectAttr "crateFile.msg" "materialInfo1.t" -na;
connectAttr "crateMatSG.pa" ":renderPartition.st" -na;
connectAttr "crateMat.msg" ":defaultShaderList1.s" -na;
connectAttr "place2dTexture1.msg" ":defaultRenderUtilityList1.u" -na;
connectAttr "defaultRenderLayer.msg" ":defaultRenderingList1.r" -na;
connectAttr "lampShape.ltd" ":lightList1.l" -na;
connectAttr "crateFile.msg" ":defaultTextureList1.tx" -na;
connectAttr "lamp.iog" ":defaultLightSet.dsm" -na;
// End of crate.ma
