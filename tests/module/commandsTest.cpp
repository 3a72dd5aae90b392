// Every command of the module with every way in which a call can end, and what undo and redo make of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "fixtures.h"

namespace {

using Strings = std::vector<std::string>;
using host::mel::Value;

struct Call {
    const char* name;
    std::string setup;  // run after the scene of addBlendShape was built, before the undo queue is emptied
    std::string text;
    bool ok;
    Value result;  // of a call that succeeds
    Strings errors;
    /// Script that brings a scene to where undo of this call must leave it: empty where undo restores
    /// everything.
    std::string residue;
};

void PrintTo(const Call& call, std::ostream* out) {
    *out << call.name << ": " << call.text;
}

std::vector<Call> indicesCalls() {
    const std::string none = "select -clear;";
    return {
        {"IndicesOfNothing",
         none,
         "dv_getBlendShapeIndices",
         false,
         {},
         {"No blend shape node provided."},
         ""},
        {"IndicesOfAMesh",
         "",
         "dv_getBlendShapeIndices base",
         false,
         {},
         {"The node is not a blend shape node."},
         ""},
        {"IndicesOfNoObject",
         "",
         "dv_getBlendShapeIndices ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"IndicesUnknownFlag",
         "",
         "dv_getBlendShapeIndices -x bs",
         false,
         {},
         {"Invalid flag '-x'.", "Error getting objects"},
         ""},
        {"Indices", "", "dv_getBlendShapeIndices bs", true, std::vector<int>{0, 4}, {}, ""},
    };
}

std::vector<Call> extractCalls() {
    const std::string command = "dv_blendShapeExtractTarget ";
    const std::string zero =
        "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0];"
        "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 1 0 0 0 1";
    return {
        {"ExtractOfNothing",
         "select -clear;",
         command + "-om baseShapeOrig",
         false,
         {},
         {"No blend shape node provided."},
         ""},
        {"ExtractOfAMesh",
         "",
         command + "-om baseShapeOrig base",
         false,
         {},
         {"The node is not a blend shape node."},
         ""},
        {"ExtractOfNoObject",
         "",
         command + "-om baseShapeOrig ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"ExtractUnknownFlag",
         "",
         command + "-zz bs",
         false,
         {},
         {"Invalid flag '-zz'.", "Error getting objects"},
         ""},
        {"ExtractIndexAsText",
         "",
         command + "-i abc bs",
         false,
         {},
         {"Flag '-i' must be passed an integer argument.", "Error getting objects"},
         ""},
        {"ExtractIndexTwice",
         "",
         command + "-i 0 -i 1 bs",
         false,
         {},
         {"Flag '-i' cannot be used more than once.", "Error getting objects"},
         ""},
        {"ExtractFlagWithoutArgument",
         "",
         command + "bs -om",
         false,
         {},
         {"Flag '-om' must be passed a string argument.", "Error getting objects"},
         ""},
        {"ExtractNegativeIndex",
         "",
         command + "-i -1 -om baseShapeOrig bs",
         false,
         {},
         {"Error setting components for empty target."},
         ""},
        {"ExtractNegativeItem",
         "",
         command + "-ti -5 -om baseShapeOrig bs",
         false,
         {},
         {"Error setting components for empty target."},
         ""},
        {"ExtractLockedEmptyItem",
         "setAttr -lock 1 bs.it[0].itg[2].iti[6000].ipt;",
         command + "-i 2 -om baseShapeOrig bs",
         false,
         {},
         {"Error setting points for empty target."},
         "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0]"},
        {"ExtractFromAMeshWithoutGeometry",
         "createNode mesh -name hollow;",
         command + "-om hollow bs",
         false,
         {},
         {"Error setting components."},
         ""},
        {"ExtractFromAnAmbiguousName",
         "duplicate -name other base;",
         command + "-om baseShapeOrig bs",
         true,
         "",
         {"baseShapeOrig is not a mesh object."},
         ""},
        {"ExtractFromAnEmptyName",
         "",
         command + "-om \"\" bs",
         true,
         "",
         {"The original mesh is not defined."},
         ""},
        {"ExtractWithoutOriginal", "", command + "bs", true, "", {"The original mesh is not defined."}, ""},
        {"ExtractFromATransform", "", command + "-om base bs", true, "", {"base is not a mesh object."}, ""},
        {"ExtractFromABlendShape", "", command + "-om bs bs", true, "", {"bs is not a mesh object."}, ""},
        {"ExtractFromNothing", "", command + "-om ghost bs", true, "", {"ghost is not a mesh object."}, ""},
        {"Extract", "", command + "-om baseShapeOrig bs", true, "base3_6000", {}, ""},
        {"ExtractInBetween", "", command + "-i 4 -ti 5500 -om baseShapeOrig bs", true, "base3_5500", {}, ""},
        {"ExtractEmptyItem", "", command + "-i 2 -om baseShapeOrig bs", true, "base3_6000", {}, zero},
        {"ExtractSelection",
         "select -noExpand bs;",
         command + "-om baseShapeOrig",
         true,
         "base3_6000",
         {},
         ""},
    };
}

std::vector<Call> mapVertexOrderCalls() {
    const std::string command = "dv_polyMapVertexOrder ";
    return {
        {"MapOfNothing", "select -clear;", command + "-v 1", false, {}, {"No mesh provided."}, ""},
        {"MapOfNoObject",
         "",
         command + "ghost",
         false,
         {},
         {"No object matches name: ghost", "Error getting objects"},
         ""},
        {"MapUnknownFlag",
         "",
         command + "-x base",
         false,
         {},
         {"Invalid flag '-x'.", "Error getting objects"},
         ""},
        {"MapOfABlendShape", "", command + "bs", false, {}, {"bs is not a mesh object."}, ""},
        {"MapOfAnEmptyGroup",
         "group -empty -name g;",
         command + "g",
         false,
         {},
         {"g has no shape node."},
         ""},
        {"MapOfAGroupOfMeshes",
         "group -name g base;",
         command + "g",
         false,
         {},
         {"g is not a mesh object."},
         ""},
        {"MapCheckWithoutMap", "", command + "-ck base", true, -1, {}, ""},
    };
}

std::vector<Call> allCalls() {
    std::vector<Call> calls;
    for (const auto& part : {extractCalls(), indicesCalls(), mapVertexOrderCalls()})
        calls.insert(calls.end(), part.begin(), part.end());
    return calls;
}

class EveryCall : public ::testing::TestWithParam<Call> {};

TEST_P(EveryCall, AnswersAndIsUndoneAsPromised) {
    const Call& call = GetParam();
    std::string restored;
    {
        Scene expected;
        addBlendShape(expected);
        if (!call.setup.empty()) expected.mel(call.setup);
        if (!call.residue.empty()) expected.mel(call.residue);
        restored = expected.dump();
    }
    Scene scene;
    addBlendShape(scene);
    if (!call.setup.empty()) scene.mel(call.setup);
    scene.mel("flushUndo");
    const Outcome outcome = scene.run(call.text);
    EXPECT_EQ(outcome.ok, call.ok);
    EXPECT_EQ(outcome.errors, call.errors);
    if (call.ok) {
        EXPECT_EQ(outcome.value, call.result) << outcome.value.toString();
    }
    const std::string after = scene.dump();
    if (!call.errors.empty()) {
        EXPECT_EQ(scene.changes(restored), "") << "a call that reports an error has no mesh to show for it";
    }

    // A failed call leaves nothing to undo; one that only reported an error may be queued and must undo
    // nothing.
    scene.run("undo");
    EXPECT_EQ(scene.changes(restored), "");
    EXPECT_EQ(scene.run("redo").errors, Strings());
    EXPECT_EQ(scene.changes(after), "");
    EXPECT_EQ(scene.run("undo").errors, Strings());
    EXPECT_EQ(scene.changes(restored), "");
}

INSTANTIATE_TEST_SUITE_P(Module, EveryCall, ::testing::ValuesIn(allCalls()),
                         [](const auto& tested) { return std::string(tested.param.name); });

struct Help {
    std::string command;
    Strings rows;  // with single blanks
};

void PrintTo(const Help& help, std::ostream* out) {
    *out << help.command;
}

std::vector<Help> allHelp() {
    return {
        Help{"dv_blendShapeExtractTarget",
             {"", "Description: Extracts an existing blend shape target.", "",
              "Flags: dv_blendShapeExtractTarget -h -help <n/a> this message",
              "-i -index <int> index of the source target channel",
              "-om -originalMesh <string> original shape node",
              "-ti -targetItem <int> channel item to extract, i.e. 6000",
              "Usage: Execute the command with the following arguments:",
              "Execute: dv_blendShapeExtractTarget -i <int> -ti <int> -om <string>", "Return Value: string"}},
        Help{"dv_getBlendShapeIndices",
             {"", "Description: Get all weight indices of the blend shape deformer.", "",
              "Flags: dv_getBlendShapeIndices -h -help <n/a> this message",
              "Usage: Execute the command with the following arguments:",
              "Execute: dv_getBlendShapeIndices <string>", "Return Value: int[]"}},
        Help{"dv_polyMapVertexOrder",
             {"", "Description: Creates a reversed vertex order and stores it on the given target mesh.", "",
              "Flags: dv_polyMapVertexOrder -h -help <n/a> this message",
              "-atm -addToMap <n/a> add to the map based on two selected edges",
              "-a -axis <string> symmetry axis",
              "-ck -check <n/a> check if all mapping indices are set; selects the symmetric components if "
              "vertices are selected",
              "-ct -copyTo <string> copy the vertex mapping to the given mesh",
              "-sl -select <n/a> select all found components",
              "-sm -selectMapped <n/a> select all mapped components",
              "-su -selectUnmapped <n/a> select all unmapped components",
              "-tol -tolerance <float> tolerance value (optional, default: 0.0001)",
              "-v -verbose <int> output info to the script editor (0: none, 1: simple, 2: full)",
              "Usage: Execute the command with the following arguments:",
              "Execute: dv_polyMapVertexOrder -a <string> -tol <float> polyName", "Return Value: int"}}};
}

class EveryHelp : public ::testing::TestWithParam<Help> {};

/// The lines of a text with runs of blanks folded to one.
Strings foldedLines(const std::string& text) {
    Strings lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else if (c != ' ' || (!lines.back().empty() && lines.back().back() != ' ')) {
            lines.back() += c;
        }
    }
    return lines;
}

TEST_P(EveryHelp, IsTheOnlyThingAHelpCallDoes) {
    Scene scene;
    addBlendShape(scene);
    const std::string before = scene.dump();
    // Even with flags and objects that would do, or fail at, something else.
    for (const char* arguments : {" -h", " -help bs", " -h base", " bs -h"}) {
        const Outcome outcome = scene.run(GetParam().command + arguments);
        EXPECT_TRUE(outcome.ok);
        EXPECT_TRUE(outcome.errors.empty());
        EXPECT_EQ(foldedLines(outcome.value.toString()), GetParam().rows);
        EXPECT_EQ(scene.changes(before), "");
        EXPECT_EQ(scene.run("undo").errors, Strings());
        EXPECT_EQ(scene.run("redo").errors, Strings());
        EXPECT_EQ(scene.changes(before), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Module, EveryHelp, ::testing::ValuesIn(allHelp()),
                         [](const auto& tested) { return tested.param.command; });

/// A command that comes to the module comes to these tables, too.
TEST(EveryCommand, IsInBothTables) {
    Scene scene;
    for (const std::string& name : scene.mel("pluginInfo -query -command \"DELVENTools\"").toStringArray()) {
        const std::vector<Call> calls = allCalls();
        EXPECT_TRUE(std::any_of(calls.begin(), calls.end(), [&](const Call& call) {
            return call.text.rfind(name, 0) == 0;
        })) << name;
        const std::vector<Help> help = allHelp();
        EXPECT_TRUE(std::any_of(help.begin(), help.end(), [&](const Help& entry) {
            return entry.command == name;
        })) << name;
    }
}

TEST(HelpText, AlignsTheColumnsUnderTheFirstRow) {
    Scene scene;
    const std::string text = scene.mel("dv_blendShapeExtractTarget -h").toString();
    Strings lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    ASSERT_EQ(lines.size(), 10U);
    const auto column = [&](std::size_t line, const char* word) { return lines[line].find(word); };
    EXPECT_EQ(column(3, "-h "), column(4, "-i "));
    EXPECT_EQ(column(3, "-help"), column(5, "-originalMesh"));
    EXPECT_EQ(column(3, "<n/a>"), column(6, "<int>"));
    EXPECT_EQ(column(3, "this message"), column(6, "channel item"));
}

}  // namespace
