// What scenes hold besides nodes, values and connections, and scenes that hold a part of another.

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "commands/progressLine.h"
#include "host/sceneFixture.h"
#include "scene/sceneSession.h"

namespace scenetest {
namespace {

/// A locked node of each form, an expression, a relationship, and a namespace.
const std::string kRig = R"(//Maya ASCII 2024 scene
//Name: rig.ma
requires maya "2024";
currentUnit -l centimeter -a degree -t pal;
createNode transform -n "rig:root";
createNode transform -n "arm" -p "rig:root";
	setAttr ".t" -type "double3" 1 2 3 ;
	lockNode -l 1 ;
	setAttr ".ry" 45;
createNode mesh -n "armShape" -p "arm";
	setAttr -s 3 ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr ".fc[0]" -type "polyFaces" 
		f 3 0 1 2
		mu 0 3 0 1 2;
createNode transform -n "leg";
createNode expression -n "swing";
	setAttr ".ixp" -type "string" ".O[0] = leg.ty + legacy;";
createNode shadingEngine -n "skin";
	setAttr ".ro" yes;
createNode lambert -n "paint";
lockNode -l 1 "leg";
connectAttr "leg.tx" "arm.sx";
connectAttr "armShape.iog" "skin.dsm" -na;
connectAttr "paint.oc" "skin.ss";
relationship "link" ":lightLinker1" "skin.message" ":defaultLightSet.message";
// End of rig.ma
)";

TEST(SceneStatement, LockedNodesAreKeptFromHarm) {
    SceneHost host;
    host.open(kRig);
    EXPECT_EQ(host.ok("lockNode -q -lock arm leg \"rig:root\""), "1 1 0");
    EXPECT_EQ(host.ok("getAttr arm.ry"), "45") << "behind the lock in the file";
    EXPECT_EQ(host.ok("file -q -modified"), "0");
    for (const std::string command :
         {"delete arm", "rename arm hand", "parent -w arm", "addAttr -ln x arm", "setAttr -lock on arm.tx"}) {
        EXPECT_EQ(host.fails(command), command.substr(0, command.find(' ')) +
                                           ": arm is a locked node. Unlock it with lockNode -lock off.");
    }
    host.ok("setAttr arm.tx 7; setAttr arm.tx 1");
    EXPECT_EQ(host.saved(), kRig);
    host.ok("lockNode -lock off arm leg; lockNode swing");
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kRig, text), (std::vector<std::string>{"lockNode -l 1 \"leg\";"}));
    EXPECT_EQ(missingLines(text, kRig), std::vector<std::string>()) << "the statement is another node's now";
    EXPECT_GT(text.find("lockNode"), text.find("swing"));
    host.ok("undo; undo");
    EXPECT_EQ(host.saved(), kRig);
    host.ok("lockNode -l off arm; rename arm hand; delete hand");
    EXPECT_EQ(host.saved().find("\tlockNode"), std::string::npos) << "the lock would be another node's";
}

TEST(SceneStatement, AStatementAboutSeveralLocksLosesTheNodesThatItIsWrongAbout) {
    std::string text = kRig;
    text.replace(text.find("lockNode -l 1 \"leg\""), 19, "lockNode -l 1 \"leg\" \"paint\"");
    SceneHost host;
    host.open(text);
    host.ok("lockNode -l off leg");
    EXPECT_EQ(missingLines(host.saved(), text), (std::vector<std::string>{"lockNode -l 1 \"paint\";"}));
    host.ok("file -open \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("lockNode -q -lock leg paint"), "0 1");
    host.ok("lockNode leg; lockNode -l off paint; delete paint");
    EXPECT_EQ(host.saved().find("\"paint\""), std::string::npos);
}

/// Names in a file begin in the root, whatever namespace scripts work in.
TEST(SceneStatement, TheCurrentNamespaceChangesNoNameOfTheFile) {
    SceneHost host;
    host.open(kRig);
    host.ok("namespace -set rig; createNode transform -n leg; createNode transform -n arm; select -cl");
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kRig, text), std::vector<std::string>());
    host.ok("file -open \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("listConnections -plugs true \"arm.sx\""), "leg.translateX");
    EXPECT_EQ(host.saved(), text);
}

TEST(SceneStatement, TheKindOfARelationshipIsNoName) {
    SceneHost host;
    std::string text = kRig;
    text.replace(text.find("\"leg\";"), 7, "\"link\";");
    for (std::size_t at = 0; (at = text.find("leg", at)) != std::string::npos;)
        text.replace(at, 3, "link");
    host.open(text);
    host.ok("lockNode -l off link; rename link limb");
    EXPECT_NE(host.saved().find("relationship \"link\" \":lightLinker1\" \"skin.message\""),
              std::string::npos);
    host.ok("relationship link persp skin.message; file -save; undo");
    EXPECT_EQ(host.ok("file -q -modified"), "1");
}

TEST(SceneStatement, RelationshipsFollowTheirNodes) {
    SceneHost host;
    host.open(kRig);
    EXPECT_EQ(host.fails("relationship link \":lightLinker1\" \"skin.message\""),
              "No object matches name: :lightLinker1");
    host.ok("relationship link \":initialShadingGroup\" \"skin.message\"; instanceable -a off \"paint\"");
    EXPECT_EQ(host.ok("file -q -modified"), "1");
    host.ok("rename skin \"a b\"");
    EXPECT_EQ(
        missingLines(host.saved(), kRig),
        (std::vector<std::string>{
            "createNode shadingEngine -n \"a_b\";", "connectAttr \"armShape.iog\" \"a_b.dsm\" -na;",
            "connectAttr \"paint.oc\" \"a_b.ss\";",
            "relationship \"link\" \":initialShadingGroup\" \"a_b.message\";", "instanceable -a 0 \"paint\";",
            "relationship \"link\" \":lightLinker1\" \"a_b.message\" \":defaultLightSet.message\";"}));
    host.ok("undo; undo; undo");
    EXPECT_EQ(host.saved(), kRig);
    EXPECT_EQ(host.fails("relationship link"),
              "relationship: A kind, a node and at least one member are needed.");
    EXPECT_EQ(host.fails("instanceable paint"), "instanceable: -allow and a node are needed.");
}

TEST(SceneStatement, TextsWithOldNamesAreReported) {
    SceneHost host;
    host.open(kRig);
    host.ok("lockNode -l off leg; rename leg limb; lockNode limb; file -save");
    EXPECT_EQ(host.shown.warnings,
              (std::vector<std::string>{
                  "The text of swing (expression) has the old name 'leg'. It was saved as it is."}));
    const std::string text = host.read("scene.ma");
    EXPECT_NE(text.find("leg.ty + legacy;"), std::string::npos);
    EXPECT_NE(text.find("lockNode -l 1 \"limb\";"), std::string::npos);
    host.ok("rename \"rig:root\" top2; file -save");
    EXPECT_EQ(host.shown.warnings.size(), 1U) << "no text has the name of the root";
}

TEST(SceneStatement, ImportsKeepLocksAndRelationshipsInTheirNamespace) {
    SceneHost host;
    const std::string file = host.write("rig.ma", kRig);
    host.ok("file -new -force; file -import -namespace \"a\" \"" + file + "\"");
    host.ok("file -import -namespace \"a\" \"" + file + "\"");
    host.ok("file -import -namespace \"a\" -mergeNamespacesOnClash true \"" + file + "\"");
    EXPECT_EQ(host.ok("ls \"*:leg\" \"*:leg?\""), "a1:leg a:leg a:leg1");
    EXPECT_EQ(host.ok("ls \"*:*:root\""), "a1:rig:root a:rig:root");
    EXPECT_EQ(host.ok("lockNode -q -lock \"a1:leg\""), "1");
    EXPECT_EQ(host.ok("namespaceInfo -lon -recurse"), "UI a a1 a1:rig a:rig shared");
    host.ok("file -rename \"" + host.path("scene.ma") + "\"");
    const std::string text = host.saved();
    for (const char* line : {"lockNode -l 1 ;",
                             "relationship \"link\" \":lightLinker1\" \"a1:skin.message\" "
                             "\":defaultLightSet.message\";"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
    host.ok("undo; undo; undo");
    EXPECT_EQ(host.ok("namespaceInfo -lon -recurse"), "UI shared");
    EXPECT_EQ(host.saved().find("relationship"), std::string::npos);
    EXPECT_EQ(host.fails("file -import -namespace \"?\" \"" + file + "\""),
              "file: '?' is no name of a namespace.");
}

TEST(SceneStatement, AnExportOfSelectedNodesHasWhatBelongsToThem) {
    SceneHost host;
    host.open(kRig);
    const std::string part = host.path("part.ma");
    EXPECT_EQ(host.fails("file -exportSelected -type \"mayaAscii\" \"" + part + "\""),
              "Nothing is currently selected.");
    host.ok("select arm; setAttr \"arm.tx\" 9; file -exportSelected -type \"mayaAscii\" \"" + part + "\"");
    const std::string text = host.read("part.ma");
    std::vector<std::string> added = missingLines(text, kRig);
    const auto isId = [](const std::string& line) { return line.rfind("\trename -uid", 0) == 0; };
    added.erase(std::remove_if(added.begin(), added.end(), isId), added.end());
    EXPECT_EQ(added,
              (std::vector<std::string>{"//Name: part.ma", "\tsetAttr \".t\" -type \"double3\" 9 2 3 ;",
                                        "\tlockNode -l 1 ;", "// End of part.ma"}));
    EXPECT_EQ(missingLines(kRig, text),
              (std::vector<std::string>{"//Name: rig.ma", "\tsetAttr \".t\" -type \"double3\" 1 2 3 ;",
                                        "createNode expression -n \"swing\";",
                                        "\tsetAttr \".ixp\" -type \"string\" \".O[0] = leg.ty + legacy;\";",
                                        "lockNode -l 1 \"leg\";", "// End of rig.ma"}));
    EXPECT_EQ(host.ok("file -q -sceneName"), host.path("scene.ma"));
    EXPECT_EQ(host.ok("file -q -modified"), "1");
    EXPECT_EQ(host.fails("file -exportSelected \"" + part + "\""),
              "file: " + part + " exists; -force replaces it.");
    host.ok("select persp");
    EXPECT_EQ(host.fails("file -force -exportSelected \"" + part + "\""),
              "There is nothing to export: every scene has these nodes.");
    EXPECT_EQ(host.read("part.ma"), text);
    host.ok("file -open -force \"" + part + "\"");
    EXPECT_EQ(host.ok("sets -q skin"), "armShape");
    EXPECT_EQ(host.ok("ls -type transform"), "arm front leg persp rig:root side top");
}

TEST(SceneStatement, TheUnitOfTimeIsThatOfTheScene) {
    SceneHost host;
    host.open(kRig);
    EXPECT_EQ(host.ok("currentUnit -q -time"), "pal");
    host.ok("currentTime 50");
    EXPECT_EQ(host.ok("currentTime -q"), "50");
    EXPECT_EQ(host.ok("currentUnit -time pal"), "");
    EXPECT_EQ(
        host.fails("currentUnit -time ntsc"),
        "currentUnit: The times of an opened scene are in its own unit. Only that of a new scene can be "
        "changed by this host.");
    host.ok("file -new -force");
    EXPECT_EQ(host.ok("currentUnit -q -time"), "film");
    host.ok("currentTime 24; currentUnit -time \"120fps\"");
    EXPECT_EQ(host.ok("currentTime -q"), "120");
    host.ok("undo");
    EXPECT_EQ(host.ok("currentTime -q"), "24");
    host.ok("redo; file -rename \"" + host.path("scene.ma") + "\"");
    const std::string text = host.saved();
    EXPECT_NE(text.find("currentUnit -l centimeter -a degree -t 120fps;"), std::string::npos) << text;
    EXPECT_NE(text.find("\tsetAttr \".o\" 120;"), std::string::npos) << text;
    EXPECT_EQ(host.fails("currentUnit -time often"),
              "currentUnit: The unit 'often' is not covered by this host.");
}

/// In a double-byte code page the second byte of a character may be a backslash or a quotation mark.
TEST(SceneStatement, TextsInACodePageAreKeptAndOthersRefused) {
    const std::string kana = "\x83\x5C\x95\x5C";
    const std::string scene =
        "//Maya ASCII 2016 scene\n//Codeset: 932\nrequires maya \"2016\";\n"
        "fileInfo \"note\" \"" +
        kana +
        "\";\ncreateNode network -n \"n\";\n"
        "\taddAttr -ci true -sn \"t\" -ln \"t\" -dt \"string\";\n"
        "\tsetAttr \".t\" -type \"string\" \"" +
        kana + "\\\"" + kana + "\";\n";
    SceneHost host;
    host.open(scene);
    EXPECT_EQ(host.ok("getAttr n.t"), kana + '"' + kana);
    EXPECT_EQ(host.ok("fileInfo -q note"), kana);
    host.ok("duplicate -n m n; fileInfo other free");
    const std::string text = host.saved();
    host.ok("file -open \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.ok("getAttr m.t"), kana + '"' + kana);
    EXPECT_EQ(host.saved(), text);
    host.ok("setAttr -type \"string\" m.t \"\xE3\x82\xBD\"");
    EXPECT_EQ(host.fails("file -save"),
              "The scene is in code page 932, and new text with other letters than ASCII would not fit it: "
              "setAttr \".t\" -type \"string\" \"\xE3\x82\xBD\"; Nothing was saved. Use plain letters, or "
              "save the "
              "scene in UTF-8 in Maya first.");
    EXPECT_EQ(host.read("scene.ma"), text);
    EXPECT_EQ(host.ok("file -q -modified"), "1");
    host.ok("setAttr -type \"string\" m.t so; file -save");
}

TEST(SceneStatement, TagsOutliveTheHistoryThatTheyComeFrom) {
    SceneHost host;
    host.ok("polyCube -ch 0 -n box; blendShape -n bs box; select -cl");
    host.ok(
        "setAttr -type \"string\" boxShapeOrig.gtag[3].gtagnm top;"
        "setAttr -type \"componentList\" boxShapeOrig.gtag[3].gtagcmp 1 \"f[1]\"");
    host.ok("delete -ch box");
    EXPECT_EQ(host.ok("getAttr boxShape.gtag[0].gtagnm"), "top");
    EXPECT_EQ(host.ok("getAttr boxShape.gtag[0].gtagcmp"), "f[1]");
    host.ok("undo");
    EXPECT_EQ(host.ok("getAttr -mi boxShape.gtag"), "");
}

// --- Colours

/// Two squares side by side, vertices 0 1 2 / 3 4 5. The right one has no colour in the second set, and the
/// corners at vertex 1 differ in the first one.
constexpr const char* kColors = R"(requires maya "2024";
createNode transform -n "strip";
createNode mesh -n "stripShape" -p "strip";
	setAttr ".dcol" yes;
	setAttr ".ccls" -type "string" "first";
	setAttr ".clst[0].clsn" -type "string" "first";
	setAttr -s 3 ".clst[0].clsp[0:2]"  1 0 0 1 0 1 0 1 0.5 0.25
		 0.125 1;
	setAttr ".clst[4].clsn" -type "string" "second";
	setAttr ".clst[4].clsp[0]"  0 0 1 0.5;
	setAttr -s 6 ".vt[0:5]"  0 0 0 1 0 0 2 0 0 0 0 1 1 0 1 2 0 1;
	setAttr -s 7 ".ed[0:6]"  0 1 0 1 4 0 4 3 0 3 0 0 1 2 0 2 5 0 5 4 0;
	setAttr -s 2 -ch 8 ".fc[0:1]" -type "polyFaces" 
		f 4 0 1 2 3
		mu 0 4 0 1 2 3
		mc 0 4 0 0 1 0
		mc 4 4 0 0 0 0
		f 4 4 5 6 -2
		mc 0 4 1 2 2 1
		mu 0 4 3 2 1 0;
)";

struct ColorEdit {
    std::string name;
    std::string script;
    std::vector<std::string> removed;
    std::vector<std::string> added;
};

void PrintTo(const ColorEdit& edit, std::ostream* stream) {
    *stream << edit.name;
}

/// A dump without sets in which no vertex has a colour: files do not tell them from sets that never had one.
std::string withoutEmptySets(const std::string& dump) {
    return std::regex_replace(dump, std::regex("[^\n]*vertexColors( -1)*\n"), "");
}

class SceneColors : public testing::TestWithParam<ColorEdit> {};

TEST_P(SceneColors, ChangeOnlyWhatTheyAreAbout) {
    SceneHost host;
    host.open(kColors);
    host.ok(GetParam().script);
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kColors, text), GetParam().removed) << text;
    EXPECT_EQ(missingLines(text, kColors), GetParam().added) << text;
    const std::string before = withoutEmptySets(host.dump());
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(withoutEmptySets(host.dump()), before);
    EXPECT_TRUE(host.shown.warnings.empty());
}

const std::string kRightCorners = "\t\tmc 0 4 1 2 2 1";

INSTANTIATE_TEST_SUITE_P(
    Scripts, SceneColors,
    testing::Values(ColorEdit{"none", "polyColorPerVertex -q -r strip.vtx[0]", {}, {}},
                    ColorEdit{"sameColor", "polyColorPerVertex -rgb 1 0 0 strip.vtx[0]", {}, {}},
                    ColorEdit{"corner",
                              "polyColorPerVertex -rgb 0.5 0.5 0.5 strip.vtx[5]",
                              {kRightCorners},
                              {"\t\tmc 0 4 1 2 3 1", "\tsetAttr -s 4 \".clst[0].clsp\";",
                               "\tsetAttr \".clst[0].clsp[3]\"  0.5 0.5 0.5 1;"}},
                    ColorEdit{"unset",
                              "polyColorPerVertex -remove strip.vtx[2] strip.vtx[5]",
                              {kRightCorners},
                              {"\t\tmc 0 4 1 -1 -1 1"}},
                    ColorEdit{"allOfAFace",
                              "polyColorSet -currentColorSet -colorSet second strip;"
                              "polyColorPerVertex -remove strip.vtx[0:5]",
                              {"\tsetAttr \".ccls\" -type \"string\" \"first\";",
                               "\tsetAttr \".clst[4].clsp[0]\"  0 0 1 0.5;", "\t\tmc 4 4 0 0 0 0"},
                              {"\tsetAttr \".ccls\" -type \"string\" \"second\";"}},
                    ColorEdit{"set",
                              "polyColorSet -delete -colorSet second strip",
                              {"\tsetAttr \".clst[4].clsn\" -type \"string\" \"second\";",
                               "\tsetAttr \".clst[4].clsp[0]\"  0 0 1 0.5;", "\t\tmc 4 4 0 0 0 0"},
                              {}}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(SceneStatement, ColorsOfVerticesAreTheMeansOfTheirCorners) {
    SceneHost host;
    host.open(kColors);
    EXPECT_EQ(host.ok("polyColorPerVertex -q -r -g -b -a strip.vtx[0]"), "1 0 0 1");
    EXPECT_EQ(host.ok("polyColorPerVertex -q -r -g -b -a strip.vtx[1]"), "0.5 0.5 0 1");
    EXPECT_EQ(host.ok("polyColorPerVertex -q -r -g -b -a strip.vtx[5]"), "0.5 0.25 0.125 1");
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), kColors);
    // Two lists of colours that no corner takes, one of them without a name.
    std::string unused = kColors;
    unused.insert(unused.find("\tsetAttr -s 6 \".vt"),
                  "\tsetAttr \".clst[5].clsp[0]\"  1 1 1 1;\n"
                  "\tsetAttr \".clst[6].clsn\" -type \"string\" \"six\";\n"
                  "\tsetAttr \".clst[6].clsp[0]\"  1 1 1 1;\n");
    host.open(unused);
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), unused);
    // An index without a colour, and a list of another length than its face.
    std::string text = kColors;
    text.replace(text.find(kRightCorners), kRightCorners.size(), "\t\tmc 0 4 1 2 7 1");
    text.replace(text.find("mc 0 4 0 0 1 0"), 14, "mc 0 3 0 0 1");
    host.open(text);
    EXPECT_EQ(host.ok("polyColorPerVertex -q -r -g -b strip.vtx[5]"), "-1 -1 -1");
    EXPECT_EQ(host.ok("polyColorPerVertex -q -r -g -b strip.vtx[1]"), "0 1 0");
    host.touchOwnNodes();
    EXPECT_EQ(host.saved(), text);
}

TEST(SceneStatement, OddColorsArePaintedAndSavedLikeOthers) {
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"\tsetAttr \".ccls\" -type \"string\" \"first\";\n", ""},
             {"\".ccls\" -type \"string\" \"first\"", "\".ccls\" -type \"string\" \"unknown\""},
             {"\t\tf 4 0 1 2 3\n", "\t\tmc 0 4 0 0 1 0\n\t\tf 4 0 1 2 3\n"},
             {"\".clst[0].clsp[0:2]\"  1", "\".clst[0].clsp[1:3]\"  1"}}) {
        std::string text = kColors;
        text.replace(text.find(from), from.size(), to);
        SceneHost host;
        host.open(text);
        host.ok("polyColorPerVertex -rgb 0.1 0.2 0.3 strip.vtx[5]");
        host.saved();
        const std::string before = withoutEmptySets(host.dump());
        host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
        EXPECT_EQ(withoutEmptySets(host.dump()), before) << to;
        EXPECT_EQ(host.ok("polyColorPerVertex -q -r strip.vtx[5]").substr(0, 3), "0.1") << to;
    }
}

TEST(SceneStatement, PaintingAMeshThatHasAHistoryNowLosesNoColors) {
    SceneHost host;
    host.open(kColors);
    host.ok("blendShape -n bs strip; polyColorPerVertex -rgb 0.5 0.5 0.5 strip.vtx[5]");
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kColors, text), std::vector<std::string>{kRightCorners}) << text;
    EXPECT_TRUE(host.shown.warnings.empty());
}

TEST(SceneStatement, NewMeshesAndCopiesHaveTheirColors) {
    SceneHost host;
    host.open(kColors);
    // Copies have the words of the file for UVs, and colours of their own.
    host.ok("duplicate -n copy strip; polyColorPerVertex -rgb 1 1 1 copy.vtx[3]");
    host.ok("polyPlane -n many -sx 12 -sy 12; delete -ch many; select -cl");
    for (int vertex = 0; vertex < 169; ++vertex) {
        host.ok("polyColorPerVertex -rgb " + std::to_string(vertex) + " 0 0 many.vtx[" +
                std::to_string(vertex) + "]");
    }
    const std::string text = host.saved();
    EXPECT_EQ(missingLines(kColors, text), std::vector<std::string>());
    EXPECT_NE(text.find("\tsetAttr \".clst[0].clsp[125:168]\"  "), std::string::npos);
    const std::string before = host.dump();
    host.ok("file -open -force \"" + host.path("scene.ma") + "\"");
    EXPECT_EQ(host.dump(), before);
    EXPECT_TRUE(host.shown.warnings.empty());
}

TEST(SceneStatement, ColorsOfAMeshWithHistoryAreLostWithAWarning) {
    SceneHost host;
    host.ok("polyCube -n box; polyColorPerVertex -rgb 1 0 0 box.vtx[0]; file -rename \"" +
            host.path("scene.ma") + "\"; file -save");
    EXPECT_EQ(host.shown.warnings,
              (std::vector<std::string>{"The vertex colors of boxShape are not saved: its mesh comes from "
                                        "another node. Delete its history first to keep them."}));
}

TEST(SceneStatement, LengthsAndAnglesOfOtherUnitsAreConverted) {
    std::string text = kRig;
    text.replace(text.find("centimeter -a degree"), 20, "meter -a radian");
    SceneHost host;
    host.open(text);
    EXPECT_EQ(host.shown.infos.back(),
              "The file has other units: scripts give lengths in centimetres and angles in degrees.");
    EXPECT_EQ(host.ok("getAttr arm.t"), "100 200 300");
    host.ok("setAttr arm.tz 50; setAttr arm.rx 180");
    EXPECT_EQ(missingLines(host.saved(), text),
              (std::vector<std::string>{"\tsetAttr \".t\" -type \"double3\" 1 2 0.5 ;",
                                        "\tsetAttr \".rx\" 3.1415926535897931;"}));
}

TEST(SceneStatement, ANewSceneHasItsCameras) {
    SceneHost host;
    host.ok("file -new -force; createNode transform -n mine; setAttr lambert1.diffuse 0.5; file -rename \"" +
            host.path("scene.ma") + "\"");
    const std::string text = host.saved();
    for (const char* line :
         {"createNode transform -s -n \"persp\";", "createNode camera -s -n \"perspShape\" -p \"persp\";",
          "createNode transform -s -n \"side\";",
          "\tsetAttr \".hc\" -type \"string\" \"viewSet -t %camera\";"})
        EXPECT_NE(text.find(line), std::string::npos) << line << '\n' << text;
    EXPECT_LT(text.rfind("createNode"), text.find("select -ne"));
    host.ok("file -open \"" + host.path("scene.ma") + "\"; ls -type camera");
    EXPECT_EQ(host.ok("ls -type camera"), "frontShape perspShape sideShape topShape");
    EXPECT_EQ(host.saved(), text);
    EXPECT_EQ(host.fails("delete persp"), "delete: Cannot delete the read only node persp.");
    host.ok("select -all");
    EXPECT_EQ(host.ok("ls -sl"), "mine");
}

/// A file of four steps of progress, so that each half of the work tells of three at least.
TEST(SceneProgress, ALineShowsHowFarALongOpeningIs) {
    SceneHost host;
    std::string text = "requires maya \"2024\";\n";
    for (int k = 0; k < 4; ++k) {
        text +=
            "createNode network -n \"n" + std::to_string(k) + "\";\n\tsetAttr \".note\" -type \"string\" \"";
        text.append(host::scene::kProgressStep, 'x');
        text += "\";\n";
    }
    const std::string file = host.write("long.ma", text);
    host::scene::SceneSession session(host.graph, {});
    double now = 0.0;
    std::string shown;
    host::commands::ProgressLine line([&] { return now; }, [&](const std::string& part) { shown += part; });
    double last = 0.0;
    int calls = 0;
    session.setProgress([&](double part, std::uint64_t bytes) {
        EXPECT_GE(part, last);
        EXPECT_LE(part, 1.0);
        EXPECT_EQ(bytes, text.size());
        last = part;
        ++calls;
        now = 0.3 * calls;  // the line appears with the fourth call, after 1.2 seconds
        line.show(part, bytes);
    });
    line.begin();
    EXPECT_EQ(session.open(file), "");
    line.end();
    EXPECT_GE(calls, 6);
    EXPECT_GT(last, 0.8);
    EXPECT_EQ(shown.find("\r\x1B[KOpening: "), 0U) << shown;
    EXPECT_NE(shown.find(" of 67 MB"), std::string::npos) << shown;
    EXPECT_EQ(shown.rfind("\r\x1B[K"), shown.size() - 4) << "wiped at the end";
    shown.clear();
    line.begin();
    line.show(0.5, text.size());
    line.end();
    EXPECT_EQ(shown, "") << "within a second";
}

}  // namespace
}  // namespace scenetest
