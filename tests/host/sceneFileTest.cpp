// Scenes opened, edited and saved: what an edit changes in the file, and what stays byte for byte.

#include "host/sceneFixture.h"
#include "scene/statement.h"

namespace scenetest {
namespace {

/// A square whose corner a target moves, driven by a node of a type that no host of ours has.
constexpr const char* kSquare = R"(//Maya ASCII 2024 scene
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
	setAttr ".pt[3].py" 0.125;
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
)";

std::string withLineEnds(std::string text, const std::string& lineEnd) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += lineEnd.size())
        text.replace(at, 1, lineEnd);
    return text;
}

// --- Nothing changes

TEST(SceneFile, CutsLongStatementsWhereverTheirPartsStand) {
    for (std::size_t length = 4000; length < 4200; ++length) {
        const std::string numbers(length, '7');
        const std::string first = "setAttr \".a\" " + numbers + " / \"b;\\\"//\" // c;\"\n" + numbers + ';';
        const std::string second = "setAttr \".d\" // e;\n \"" + numbers + ";\" ;";
        const host::scene::CutText cut = host::scene::cutStatements(first + second + "\n// f;\n");
        ASSERT_FALSE(cut.fault) << length;
        ASSERT_EQ(cut.statements.size(), 2U) << length;
        EXPECT_EQ(cut.statements[0].end, first.size()) << length;
        EXPECT_EQ(cut.statements[1].begin, first.size()) << length;
        EXPECT_EQ(cut.statements[1].end, first.size() + second.size()) << length;
    }
}

TEST(SceneFile, KeepsEveryByteWhetherValuesWereReadOrNot) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        const std::string text = withLineEnds(kSquare, lineEnd);
        SceneHost host;
        host.open(text);
        EXPECT_EQ(host.saved(), text);
        host.dump();
        EXPECT_EQ(host.saved(), text);
        host.touchEverything();
        EXPECT_EQ(host.saved(), text);
        EXPECT_EQ(host.saved(), text);
    }
}

TEST(SceneFile, KeepsEveryByteAfterAnEditIsUndone) {
    SceneHost host;
    host.open(kSquare);
    host.ok(
        "setAttr square.tx 7; setAttr square.rx 5; setAttr \"faces.it[0].itg[0].tw[2]\" 0.75; rename square "
        "box; delete reader; "
        "aliasAttr up faces.lift; addAttr -ln \"extra\" box;"
        "undo; undo; undo; undo; undo; undo; undo;");
    EXPECT_EQ(host.saved(), kSquare);
}

TEST(SceneFile, ReadsWhatAnAddedAttributeIsFor) {
    SceneHost host;
    host.open(
        "requires maya \"2025\";\n"
        "createNode transform -n \"a\";\n"
        "\taddAttr -uap true -ci true -ct \"rig\" -ct \"face\" -sn \"p\" -ln \"p\" -at \"double\";\n"
        "connectAttr \"a.tx\" \"a.p\";\n");
    EXPECT_EQ(host.ok("addAttr -q -category a.p"), "rig face");
    host.ok("setAttr a.p 3");
    EXPECT_EQ(host.ok("getAttr a.tx"), "3");
}

/// Old releases set one plug several times. The last statement counts.
TEST(SceneFile, StatementsAboutPlugsThatAreSetAgainStay) {
    const std::string text = R"(requires maya "2024";
createNode transform -n "a";
	setAttr ".t" -type "double3" 1 2 3 ;
	setAttr ".tx" 5;
	setAttr ".tx" 6;
	setAttr ".odd" -type "oddData" 1;
	setAttr ".odd" -type "oddData" 2;
createNode blendShape -n "b";
	setAttr -s 3 ".w[0:2]"  0 0 0;
	setAttr ".w[1]" 0.5;
	setAttr -s 2 ".w[1:2]"  0.5 1;
createNode skinCluster -n "c";
	setAttr -s 2 ".wl[0:1].w"  1 0 1 1 0 1;
	setAttr ".wl[1].w[3]" 0.25;
	setAttr ".wl[1].w[0]" 0.75;
)";
    SceneHost host;
    host.open(text);
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
    host.ok("setAttr a.tx 7; setAttr a.tx 6; setAttr b.w[1] 0; setAttr b.w[1] 0.5");
    host.ok("setAttr c.wl[1].w[0] 0; setAttr c.wl[1].w[0] 0.75");
    EXPECT_EQ(host.saved(), text);

    host.ok("setAttr a.tx 7; setAttr c.wl[1].w[0] 1");
    const std::vector<std::string> lines{"\tsetAttr \".tx\" 7;", "\tsetAttr \".wl[1].w[0]\" 1;"};
    EXPECT_EQ(missingLines(host.saved(), text), lines);
    host.ok("removeMultiInstance b.w[1]; removeMultiInstance c.wl[1].w[0]");
    const std::string before = host.dump();
    host.saved();
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.dump(), before);
}

TEST(SceneFile, UnknownTypesAreKeptLikeKnownOnes) {
    std::string text = kSquare;
    for (const auto& [known, unknown] : std::vector<std::pair<std::string, std::string>>{
             {"createNode mesh", "createNode hsem"}, {"createNode blendShape", "createNode epahSdnelb"}}) {
        for (std::size_t at = 0; (at = text.find(known, at)) != std::string::npos;)
            text.replace(at, known.size(), unknown);
    }
    SceneHost host;
    host.open(text);
    host.dump();
    host.touchEverything();
    EXPECT_EQ(host.saved(), text);
    EXPECT_EQ(host.ok("nodeType faces"), "epahSdnelb");
}

// --- One thing changes

struct EditCase {
    std::string name;
    std::string script;
    std::vector<std::string> removed;
    std::vector<std::string> added;

    friend void PrintTo(const EditCase& edit, std::ostream* stream) { *stream << edit.script; }
};

const std::vector<EditCase> kEdits{
    {"numberOfATriple",
     "setAttr square.ty 3",
     {"\tsetAttr \".t\" -type \"double3\" 1.5 -2 0.25 ;"},
     {"\tsetAttr \".t\" -type \"double3\" 1.5 3 0.25 ;"}},
    {"valueThatWasNotInTheFile",
     "setAttr square.s 1 1 2",
     {},
     {"\tsetAttr \".s\" -type \"double3\" 1 1 2 ;"}},
    {"stateOnly", "setAttr -lock off square.v", {"\tsetAttr -l on \".v\";"}, {}},
    {"newState", "setAttr -lock on square.rx", {}, {"\tsetAttr -l on \".rx\";"}},
    {"dynamicAttribute",
     "setAttr square.mood 4",
     {"\tsetAttr -k on \".mood\" 0.30000000000000004;"},
     {"\tsetAttr -k on \".mood\" 4;"}},
    {"newDynamicAttribute",
     "addAttr -ln tag -dt \"string\" square; setAttr -type \"string\" square.tag \"\\\"; system(\\\"x\\\"); "
     "//\"",
     {},
     {"\taddAttr -ci true -sn \"tag\" -ln \"tag\" -dt \"string\";",
      "\tsetAttr \".tag\" -type \"string\" \"\\\"; system(\\\"x\\\"); //\";"}},
    {"newProxy",
     "addAttr -ln tag -category \"rig\" -proxy \"square.mood\" square",
     {},
     {"\taddAttr -ci true -uap true -ct \"rig\" -sn \"tag\" -ln \"tag\" -min 0 -max 10 -at \"double\";",
      "connectAttr \"square.mood\" \"square.tag\";"}},
    {"removedDynamicAttribute",
     "deleteAttr square.mood",
     {"\taddAttr -ci true -sn \"mood\" -ln \"mood\" -min 0 -max 10 -at \"double\";",
      "\tsetAttr -k on \".mood\" 0.30000000000000004;"},
     {}},
    {"weightOfATarget",
     "setAttr faces.lift 1",
     {"\tsetAttr -s 2 \".w[0:1]\"  0.25 0;"},
     {"\tsetAttr -s 2 \".w[0:1]\"  1 0;"}},
    {"paintedWeight",
     "setAttr \"faces.it[0].itg[0].tw[2]\" 0.75",
     {"\tsetAttr -s 4 \".it[0].itg[0].tw[0:3]\"  1 0.5 0.25 1;"},
     {"\tsetAttr -s 4 \".it[0].itg[0].tw[0:3]\"  1 0.5 0.75 1;"}},
    {"gapInAList",
     "removeMultiInstance \"faces.it[0].itg[0].tw[1]\"",
     {"\tsetAttr -s 4 \".it[0].itg[0].tw[0:3]\"  1 0.5 0.25 1;"},
     {"\tsetAttr \".it[0].itg[0].tw[0]\"  1;", "\tsetAttr -s 2 \".it[0].itg[0].tw[2:3]\"  0.25 1;"}},
    {"otherPartOfAnOffset", "setAttr squareShape.pt[3].pz 0.5", {}, {"\tsetAttr \".pt[3].pz\" 0.5;"}},
    {"otherTargetGetsWeights",
     "setAttr \"faces.it[0].itg[1].tw[3:4]\" 0.5 0.125",
     {},
     {"\tsetAttr -s 2 \".it[0].itg[1].tw[3:4]\"  0.5 0.125;"}},
    {"deltas",
     "setAttr \"faces.it[0].itg[0].iti[6000].ipt\" -type \"pointArray\" 1 0 2 0 1",
     {"\tsetAttr \".it[0].itg[0].iti[6000].ipt\" -type \"pointArray\" 1 0 1.0000000000000002 0 1 ;"},
     {"\tsetAttr \".it[0].itg[0].iti[6000].ipt\" -type \"pointArray\" 1 0 2 0 1 ;"}},
    {"alias",
     "aliasAttr up faces.lift",
     {"\tsetAttr \".aal\" -type \"attributeAlias\" {\"lift\",\"weight[0]\",\"flat\",\"weight[1]\"} ;"},
     {"\tsetAttr \".aal\" -type \"attributeAlias\" {\"up\",\"weight[0]\",\"flat\",\"weight[1]\"} ;"}},
    {"nodeThatIsNotEvaluated",
     "setAttr reader.gain 0.75",
     {"\tsetAttr \".gain\" 0.5;"},
     {"\tsetAttr \".gain\" 0.75;"}},
    {"renamedNode",
     "rename reader poser",
     {"createNode poseReader -n \"reader\";", "connectAttr \"reader.out[0]\" \"faces.w[1]\";"},
     {"createNode poseReader -n \"poser\";", "connectAttr \"poser.out[0]\" \"faces.w[1]\";"}},
    {"renamedParent",
     "rename square box",
     {"createNode transform -n \"square\";", "createNode mesh -n \"squareShape\" -p \"square\";",
      "createNode mesh -n \"squareShapeOrig\" -p \"square\";",
      "connectAttr \"faces.og[0]\" \"squareShape.i\";",
      "connectAttr \"squareShape.iog\" \":initialShadingGroup.dsm\" -na;"},
     {"createNode transform -n \"box\";", "createNode mesh -n \"boxShape\" -p \"box\";",
      "createNode mesh -n \"squareShapeOrig\" -p \"box\";", "connectAttr \"faces.og[0]\" \"boxShape.i\";",
      "connectAttr \"boxShape.iog\" \":initialShadingGroup.dsm\" -na;"}},
    {"namesakeElsewhere",
     "createNode transform -n other; createNode transform -n reader2 -p other; select -cl;",
     {},
     {"createNode transform -n \"other\";", "createNode transform -n \"reader2\" -p \"other\";"}},
    {"deletedNode",
     "delete reader",
     {"createNode poseReader -n \"reader\";", "\tsetAttr -s 3 \".pose\";",
      "\tsetAttr -s 2 \".pose[0:1].angle\"  10 20;", "\tsetAttr \".gain\" 0.5;",
      "\tsetAttr \".note\" -type \"string\" \"line one\\nline two\";",
      "connectAttr \"reader.out[0]\" \"faces.w[1]\";"},
     {}},
    {"brokenConnection",
     "disconnectAttr reader.out[0] faces.w[1]",
     {"connectAttr \"reader.out[0]\" \"faces.w[1]\";"},
     {}},
    {"newConnection", "connectAttr square.tx faces.w[0]", {}, {"connectAttr \"square.tx\" \"faces.w[0]\";"}},
    {"defaultNodeThatTheFileNames", "currentTime 7", {"\tsetAttr \".o\" 12;"}, {"\tsetAttr \".o\" 7;"}},
    {"defaultNodeThatTheFileDoesNotName",
     "setAttr lambert1.diffuse 0.25",
     {},
     {"select -ne :lambert1;", "\tsetAttr \".dc\" 0.25;"}},
    {"cameraThatTheFileDoesNotName",
     "setAttr persp.tx 5",
     {},
     {"select -ne :persp;", "\tsetAttr \".t\" -type \"double3\" 5 21 28 ;"}},
};

class SceneEdit : public testing::TestWithParam<EditCase> {};

TEST_P(SceneEdit, ChangesOnlyTheStatementsThatNameIt) {
    SceneHost host;
    host.open(kSquare);
    host.ok(GetParam().script);
    const std::string text = host.saved();
    std::vector<std::string> added = missingLines(text, kSquare);
    const auto isId = [](const std::string& line) { return line.rfind("\trename -uid", 0) == 0; };
    added.erase(std::remove_if(added.begin(), added.end(), isId), added.end());
    EXPECT_EQ(missingLines(kSquare, text), GetParam().removed);
    EXPECT_EQ(added, GetParam().added);
    // What was written is read as the same scene.
    const std::string before = host.dump();
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.dump(), before);
    EXPECT_EQ(host.saved(), text);
}

INSTANTIATE_TEST_SUITE_P(Scripts, SceneEdit, testing::ValuesIn(kEdits),
                         [](const auto& parameter) { return parameter.param.name; });

TEST(SceneFile, MovedPointsChangeOnlyTheirStatement) {
    SceneHost host;
    host.open(kSquare);
    host.ok("disconnectAttr squareShapeOrig.w faces.ip[0].ig");
    host.ok("setAttr squareShapeOrig.io 0; move -r 0 1 0 squareShapeOrig.vtx[0]");
    const std::string text = host.saved();
    EXPECT_NE(text.find("\tsetAttr \".pt[0]\" -type \"float3\" 0 1 0 ;"), std::string::npos) << text;
    EXPECT_NE(text.find("\tsetAttr -s 4 \".vt[0:3]\"  -0.5 0 0.5 0.5 0 0.5 0.5 0 -0.5 -0.5 0 -0.50000001;"),
              std::string::npos);
}

// --- What is read

TEST(SceneFile, ValuesAreThoseOfTheFile) {
    SceneHost host;
    host.open(kSquare);
    const std::vector<std::pair<std::string, std::string>> values{
        {"getAttr square.ty", "-2"},
        {"getAttr square.ry", "45"},
        {"getAttr -lock square.v", "1"},
        {"getAttr square.mood", "0.3"},
        {"getAttr faces.lift", "0.25"},
        {"getAttr \"faces.it[0].itg[0].tw[2]\"", "0.25"},
        {"getAttr reader.gain", "0.5"},
        {"getAttr reader.note", "line one\nline two"},
        {"nodeType reader", "poseReader"},
        {"polyEvaluate -vertex squareShapeOrig", "4"},
        {"listConnections -plugs true -source true -destination false faces.w[1]", "reader.out[0]"},
        {"getAttr -time 3 square.ty", "-2"},
        {"file -q -modified", "0"},
        {"undoInfo -q -undoQueueEmpty", "1"},
        {"ls -type poseReader", "reader"}};
    for (const auto& [command, value] : values)
        EXPECT_EQ(host.ok(command), value) << command;
}

TEST(SceneFile, OpeningReplacesTheSceneAndFailingToOpenDoesNot) {
    SceneHost host;
    host.ok("createNode transform -n mine");
    const std::string before = host.dump();
    for (const auto& [text, error] : std::vector<std::pair<std::string, std::string>>{
             {"createNode transform -n \"a\";\nsystem(\"touch x\");\n",
              "bad.ma, line 2, column 1: 'system' is not a statement of a scene file. Nothing was opened."},
             {"createNode transform -n \"a\";\n\tsetAttr \".t\" \"open;\n",
              "bad.ma, line 2, column 15: The string that begins here has no quotation mark at its end."},
             {"createNode transform -n \"a\"",
              "bad.ma, line 1, column 1: The statement that begins here has no semicolon at its end."},
             {"createNode transform -n \"a\" -p \"none\";",
              "bad.ma, line 1, column 1: The parent 'none' is not in the scene, or there are several."},
             {"\n  setAttr \".t\" 1;",
              "bad.ma, line 2, column 3: This statement belongs to no node: no createNode or "
              "select comes before it."},
             {"createNode transform -n \"a b\";",
              "bad.ma, line 1, column 1: This is not a createNode statement of a scene file."},
             {"connectAttr \"a.b\";", "bad.ma, line 1, column 1: A connection needs two plugs."},
             {"print \"x\";",
              "bad.ma, line 1, column 1: 'print' is not a statement of a scene file. Nothing was opened."},
             {"// one\r// two\r\n// three\n print \"x\";",
              "bad.ma, line 4, column 2: 'print' is not a statement of a scene file. Nothing was opened."}}) {
        const std::string file = host.write("bad.ma", text);
        EXPECT_EQ(host.fails("file -open -force \"" + file + "\""), error);
        EXPECT_EQ(host.dump(), before) << text;
    }
    EXPECT_EQ(host.fails("file -open \"" + host.write("good.MA", kSquare) + "\""), "Unsaved changes.");
    host.ok("file -open -force \"" + host.path("good.MA") + "\"");
    EXPECT_EQ(host.ok("objExists mine"), "0");
    EXPECT_EQ(host.ok("file -q -sceneName"), host.path("good.MA"));
}

TEST(SceneFile, AMeshThatCannotBeReadIsKept) {
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"f 4 0 1 2 3", "f 4 0 1 2 9"},
             {"f 4 0 1 2 3", "f 2147483647 0 1 2 3"},
             {"\".vt[0:3]\"", "\".vt[0:2147483647]\""},
             {"\".ed[0:3]\"  0 1 0", "\".ed[0:3]\"  0 4000000000 0"},
             {"\".fc[0]\" -type", "\".fc[7]\" -type"}}) {
        std::string text = kSquare;
        text.replace(text.find(from), from.size(), to);
        SceneHost host;
        host.open(text);
        host.run("polyEvaluate -vertex squareShapeOrig");
        EXPECT_EQ(host.shown.warnings.size(), 1U) << to;
        host.touchEverything();
        EXPECT_EQ(host.saved(), text);
    }
}

TEST(SceneFile, PointsThatDependOnWhatIsNotEvaluatedCannotBeRead) {
    SceneHost host;
    host.open(kSquare);
    host.fails("pointPosition -local squareShape.vtx[0]");
    EXPECT_EQ(host.shown.errors.front(),
              "squareShape depends on reader (poseReader), which is not evaluated.");
    EXPECT_EQ(host.ok("getAttr faces.w[1]"), "0");
    EXPECT_EQ(host.shown.warnings.size(), 1U);
    EXPECT_EQ(host.ok("getAttr faces.w[1]"), "0");
    EXPECT_EQ(host.shown.warnings.size(), 0U) << "one warning a plug";
    host.ok("disconnectAttr reader.out[0] faces.w[1]");
    EXPECT_EQ(host.ok("pointPosition -local squareShape.vtx[2]"), "0.5 0.0625 -0.5");
}

/// The editor of all blend shapes is connected with each of them. What feeds one is not what feeds the
/// others.
TEST(SceneFile, PointsDoNotDependOnWhatFeedsANeighbourOfASharedNode) {
    SceneHost host;
    host.open(kSquare);
    host.ok("polyPlane -name plane; duplicate -name moved plane; blendShape -name mine moved plane");
    host.ok("createNode shapeEditorManager -name editor");
    host.ok("connectAttr faces.w[1] editor.bspr[0]; connectAttr editor.obsv[1] mine.tgdt[0].dpvs");
    host.run("pointPosition -local planeShape.vtx[0]");
    EXPECT_EQ(host.shown.errors, std::vector<std::string>());
    // The editor passes nothing on, but its own attribute may be fed.
    host.ok("connectAttr faces.w[1] editor.obsv[1]");
    host.fails("pointPosition -local planeShape.vtx[0]");
    EXPECT_EQ(host.shown.errors.front(),
              "planeShape depends on reader (poseReader), which is not evaluated.");
}

TEST(SceneFile, IdsAreThoseOfTheFileAndNewOnesAreGivenOnce) {
    SceneHost host;
    host.open(kSquare);
    EXPECT_EQ(host.ok("ls -uuid square"), "11111111-2222-3333-4444-555555555555");
    const std::string given = host.ok("ls -uuid reader");
    EXPECT_EQ(given.size(), 36U);
    EXPECT_EQ(host.ok("ls -uuid reader"), given);
    EXPECT_EQ(host.fails("rename -uuid square abc"), "rename: 'abc' is no id of the form 8-4-4-4-12.");
    host.ok("rename -uuid square \"ABCDEF00-0000-0000-0000-000000000000\"");
    EXPECT_EQ(missingLines(host.saved(), kSquare),
              (std::vector<std::string>{"\trename -uid \"ABCDEF00-0000-0000-0000-000000000000\";"}));
}

TEST(SceneFile, TextsUnderKeysAreKeptAndChanged) {
    SceneHost host;
    host.open(kSquare);
    EXPECT_EQ(host.ok("fileInfo -q license"), "a \"quoted\" \\ text; with a semicolon");
    EXPECT_EQ(host.ok("file -q -modified"), "0");
    host.ok(
        "fileInfo license \"free\"; fileInfo \"my key\" \"\\\"; print(1); //\"; requires \"somePlugin\" "
        "\"1.0\"");
    EXPECT_EQ(host.ok("file -q -modified"), "1");
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(text, kSquare),
              (std::vector<std::string>{"fileInfo \"license\" \"free\";",
                                        "fileInfo \"my key\" \"\\\"; print(1); //\";"}));
    host.ok("file -open \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("fileInfo -q \"my key\""), "\"; print(1); //");
    host.ok("fileInfo -rm license");
    EXPECT_EQ(missingLines(text, host.saved()), (std::vector<std::string>{"fileInfo \"license\" \"free\";"}));
    EXPECT_EQ(host.fails("fileInfo -rm license"), "fileInfo: There is no text of the key 'license'.");
}

TEST(SceneFile, CopiesHaveTheStatementsThatOnlyTheFileUnderstands) {
    SceneHost host;
    host.open(kSquare);
    const std::string before = host.dump();
    host.ok("duplicate -n copy square; duplicate -n reader2 reader");
    const std::string after = host.dump();
    host.ok("undo; undo");
    EXPECT_EQ(host.dump(), before);
    host.ok("redo; redo");
    EXPECT_EQ(host.dump(), after);
    EXPECT_EQ(host.ok("getAttr reader2.gain"), "0.5");
    std::string text = host.saved();
    for (const char* line :
         {"\t\tmu 0 4 0 1 2 3;", "\tsetAttr \".unheardOf\" -type \"oddData\" 3 \"a;b\" 1e-016 ;",
          "\tsetAttr \".note\" -type \"string\" \"line one\\nline two\";"}) {
        const std::size_t first = text.find(line);
        EXPECT_NE(first, std::string::npos) << line;
    }
    EXPECT_NE(text.find("mu 0 4", text.find("mu 0 4") + 1), std::string::npos) << "the copy lost its UVs:\n"
                                                                               << text;
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.saved(), text);
}

// --- New scenes and other names

TEST(SceneFile, ANewSceneIsSavedAndOpenedAgain) {
    SceneHost host;
    host.ok(
        "polyCube -n box; blendShape -n shapes box; polyCube -n target; move 0 1 0 target.vtx[2]; "
        "blendShape -e -t box 0 target 1 shapes; setAttr shapes.target 0.5; addAttr -ln tag -at long box; "
        "setAttr box.tag 3; select -cl");
    EXPECT_EQ(host.fails("file -save"),
              "A file must be given a name before saving. Use file -rename first, then try saving again.");
    const std::string path = host.path("scene.ma");
    EXPECT_EQ(host.ok("file -rename \"" + path + "\""), path);
    const std::string text = host.saved();
    EXPECT_EQ(text.rfind("//Maya ASCII 2025 scene\n//Name: scene.ma\n", 0), 0U) << text;
    EXPECT_EQ(host.saved(), text);
    EXPECT_EQ(host.ok("file -q -modified"), "0");
    const std::string moved = host.ok("pointPosition -local boxShape.vtx[2]");
    host.ok("file -open \"" + path + "\"");
    EXPECT_EQ(host.ok("pointPosition -local boxShape.vtx[2]"), moved);
    EXPECT_EQ(host.ok("getAttr box.tag"), "3");
    EXPECT_EQ(host.saved(), text);
}

/// While a target's mesh is connected, the file has no deltas. They are saved once it is gone.
TEST(SceneFile, DeltasOfALiveTargetAreSavedOnceItIsGone) {
    SceneHost host;
    host.ok(
        "polyCube -n box; blendShape -n shapes box; polyCube -n target; move 0 1 0 target.vtx[2]; "
        "blendShape -e -t box 0 target 1 shapes; setAttr shapes.target 1");
    host.ok("file -rename \"" + host.path("scene.ma") + "\"; file -save; file -open \"" +
            host.path("scene.ma") + "\"");
    const std::string moved = host.ok("pointPosition -local boxShape.vtx[2]");
    EXPECT_EQ(host.saved().find("ipt"), std::string::npos);
    host.ok("delete target");
    const std::string text = host.saved();
    EXPECT_NE(text.find("\tsetAttr \".it[0].itg[0].iti[6000].ict\" -type \"componentList\" 1 \"vtx[2]\";"),
              std::string::npos)
        << text;
    host.ok("file -open \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("pointPosition -local boxShape.vtx[2]"), moved);
}

TEST(SceneFile, AnotherNameChangesTwoComments) {
    SceneHost host;
    host.open(kSquare);
    host.ok("file -rename \"" + host.path("other.ma") + "\"; file -save");
    EXPECT_EQ(missingLines(kSquare, host.read("other.ma")),
              (std::vector<std::string>{"//Name: square.ma", "// End of square.ma"}));
    EXPECT_EQ(missingLines(host.read("other.ma"), kSquare),
              (std::vector<std::string>{"//Name: other.ma", "// End of other.ma"}));
}

TEST(SceneFile, AnImportIsOneStepAndKeepsWhatItBrings) {
    SceneHost host;
    host.open(kSquare);
    const std::string before = host.dump();
    const std::string file = host.write("again.ma", kSquare);
    const std::string broken = host.write("broken.ma", std::string(kSquare) + "createNode mesh -p \"none\";");
    host.fails("file -import -namespace \"two\" \"" + broken + "\"");
    EXPECT_EQ(host.dump(), before);
    host.ok("file -import -namespace \"two\" \"" + file + "\"");
    EXPECT_EQ(host.ok("getAttr \"two:faces.lift\""), "0.25");
    EXPECT_EQ(host.ok("getAttr \"two:square.mood\""), "0.3");
    EXPECT_EQ(host.ok("listRelatives -parent \"two:squareShape\""), "two:square");
    const std::string after = host.dump();
    host.ok("undo");
    EXPECT_EQ(host.dump(), before);
    host.ok("redo");
    EXPECT_EQ(host.dump(), after);
    const std::string text = host.saved();
    for (const std::string& line : linesOf(kSquare)) {
        const bool isOfTheNodes = line.rfind("\t", 0) == 0 && line.find("rename -uid") == std::string::npos;
        if (!isOfTheNodes || line.find("\".o\"") != std::string::npos ||
            line.find("\".unw\"") != std::string::npos || line.find("\".s\"") != std::string::npos)
            continue;
        EXPECT_NE(text.find(line, text.find(line) + 1), std::string::npos) << "only once: " << line;
    }
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.dump(), after);
}

/// What a file names are its own nodes, whatever the open scene calls alike.
TEST(SceneFile, AnImportOntoNamesakesKeepsItsOwnParentsAndConnections) {
    SceneHost host;
    host.open(kSquare);
    host.ok("createNode transform -n elsewhere; parent square elsewhere");
    host.ok("file -import \"" + host.write("again.ma", kSquare) + "\"");
    EXPECT_EQ(host.ok("listRelatives -fullPath \"|square\""), "|square|squareShape |square|squareShapeOrig");
    EXPECT_EQ(host.ok("listConnections -plugs true reader1.out[0]"), "faces1.weight[1]");
    EXPECT_EQ(host.ok("listRelatives -parent \"elsewhere|square\""), "elsewhere");
}

TEST(SceneFile, ANodeBelowALaterOneFollowsIt) {
    SceneHost host;
    host.open(kSquare);
    host.ok("createNode transform -n group; parent square group");
    const std::string text = host.saved();
    EXPECT_LT(text.find("createNode transform -n \"group\""),
              text.find("createNode transform -n \"square\" -p \"group\""));
    EXPECT_LT(text.find("-n \"square\" -p"), text.find("createNode mesh -n \"squareShape\" -p \"square\""));
    const std::string before = host.dump();
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("getAttr square.ty"), "-2");
    EXPECT_EQ(host.ok("listRelatives -parent -fullPath squareShape"), "|group|square");
    EXPECT_EQ(host.saved(), text);
}

}  // namespace
}  // namespace scenetest
