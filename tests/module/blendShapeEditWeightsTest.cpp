#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "fixtures.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

/// The grid of addBlendShape: x = -2 to 2 in its columns, row r begins with vertex 5 r; so 1 and 3 are
/// partners, 0 and 4, 5 and 9; 2 and 7 lie on the plane.
class EditWeights : public ::testing::Test {
  protected:
    EditWeights() { addBlendShape(scene_); }

    /// Stores weights, given as "vertex weight" pairs.
    void store(const std::vector<std::pair<int, double>>& weights, const std::string& plug = "itg[0].tw") {
        for (const auto& [vertex, weight] : weights) {
            scene_.mel("setAttr bs.it[0]." + plug + "[" + std::to_string(vertex) + "] " +
                       host::mel::Value(weight).toString());
        }
        scene_.mel("flushUndo");
    }

    /// The stored weights as "vertex weight" pairs.
    std::string weights(const std::string& plug = "itg[0].tw") {
        std::string text;
        for (const int vertex : scene_.mel("getAttr -multiIndices bs.it[0]." + plug).toIntArray()) {
            const std::string element = plug + "[" + std::to_string(vertex) + "]";
            // Weights are kept in single precision.
            const double weight = std::round(scene_.mel("getAttr bs.it[0]." + element).toFloat() * 1e7) / 1e7;
            text += std::to_string(vertex) + ' ' + host::mel::Value(weight).toString() + ' ';
        }
        return text;
    }

    Outcome call(const std::string& arguments) {
        return scene_.run("dv_blendShapeEditWeights -om |base|baseShapeOrig " + arguments + " bs");
    }

    /// A call that does its work without a message.
    void edit(const std::string& arguments) {
        EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -om |base|baseShapeOrig " + arguments + " bs").toInt(),
                  1);
    }

    Scene scene_;
};

struct Edit {
    const char* name;
    const char* arguments;
    const char* weights;  // afterwards; before, 0 has 0.125, 2 has 0.75, 3 has 0.25, 7 has 0.3, 9 has 1
};

void PrintTo(const Edit& edit, std::ostream* out) {
    *out << edit.name;
}

class EditWeightsBy : public EditWeights, public ::testing::WithParamInterface<Edit> {};

TEST_P(EditWeightsBy, GivesTheWeights) {
    store({{0, 0.125}, {2, 0.75}, {3, 0.25}, {7, 0.3}, {9, 1.0}});
    edit(GetParam().arguments);
    EXPECT_EQ(weights(), GetParam().weights);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, EditWeightsBy,
    ::testing::Values(
        Edit{"Invert", "-iv",
             "0 0.875 1 0 2 0.25 3 0.75 4 0 5 0 6 0 7 0.7 8 0 9 0 10 0 11 0 12 0 13 0 14 0 15 0 16 0 17 0 18 "
             "0 19 0 "},
        // What sits on the plane stays and passes its weight to itself only where it is on the target side.
        Edit{"Mirror", "-m", "1 0.25 2 0.75 3 0.25 7 0.3 "},
        Edit{"MirrorToPositive", "-m -dir 0", "0 0.125 2 0.75 4 0.125 7 0.3 "},
        Edit{"Flip", "-flp", "1 0.25 2 0.75 4 0.125 7 0.3 "},
        // On the plane one half, or 1 where it is less; the rest of the side beside it.
        Edit{"Trim", "-t", "0 0.125 2 0.5 "}, Edit{"TrimOtherSide", "-t -dir 0", "2 0.5 3 0.25 "},
        Edit{"TrimWideTolerance", "-t -tol 2.5", "2 0.5 "}, Edit{"TrimOtherAxis", "-t -ax y", "2 0.5 "},
        Edit{"Set", "-sw -wi 4 -w 0.5 -wi 1 -w 0.999995 -wi 2 -w 1", "4 0.5 "},
        Edit{"SetNearlyOne", "-sw -wi 4 -w 0.99995 -wi 1 -w 0.5", "1 0.5 4 0.99995 "},
        Edit{"SetAllOnes", "-sw -wi 4 -w 1.5 -wi 1 -w 0.5", ""}, Edit{"FlushOne", "-fl 1", ""},
        Edit{"FlushMinusOne", "-fl -1", ""}, Edit{"Delete", "-del", ""}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(EditWeights, OfCornersAtOnePlaceTheFirstOfTheFaceIsThePartner) {
    // 2 and 6 are at one place, the mirror image of 0.
    const std::vector<float> points{-1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1, 0, 0, 1, 1, 0, 1, 1, 0, 0};
    const std::vector<int> counts{4, 5};
    for (const std::vector<int>& corners : {std::vector<int>{0, 3, 4, 1, 1, 4, 5, 2, 6},
                                            {0, 3, 4, 1, 1, 4, 5, 6, 2},
                                            {0, 3, 4, 1, 6, 1, 4, 5, 2}}) {
        edit("-del");
        store({{0, 0.125}});
        scene_.addMesh("other", host::geometry::createMesh(points, counts, corners).mesh);
        EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -flp -om otherShape bs").toInt(), 1);
        const bool isTwoFirst = corners[7] == 2;
        EXPECT_EQ(weights(), isTwoFirst ? "2 0.125 " : "6 0.125 ") << corners[4] << ' ' << corners[7];
        scene_.mel("delete other");
    }
}

TEST_F(EditWeights, TrimRoundsToFiveDecimalsBeforeItComparesWithAHalf) {
    store({{2, 0.499997}, {7, 0.499994}});
    edit("-t");
    EXPECT_EQ(weights(), "2 0.5 ");
}

TEST_F(EditWeights, InvertKeepsValuesOfOneWhenAsked) {
    store({{3, 0.0}});
    edit("-iv");
    EXPECT_EQ(weights().find(" 3 "), std::string::npos);
    scene_.mel("undo");
    edit("-iv -av");
    EXPECT_NE(weights().find(" 3 1 "), std::string::npos);
}

TEST_F(EditWeights, InvertWithoutAMeshClears) {
    store({{3, 0.25}});
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -iv bs").toInt(), 1);
    EXPECT_EQ(weights(), "");
}

TEST_F(EditWeights, BaseWeightsKeepOnes) {
    edit("-i -1 -sw -wi 4 -w 0.5 -wi 1 -w 1");
    EXPECT_EQ(weights("bw"), "1 1 4 0.5 ");
    edit("-i -1 -sw -wi 4 -w 1 -wi 1 -w 1");
    EXPECT_EQ(weights("bw"), "");
}

TEST_F(EditWeights, TheMapDecidesAndTellsWhatItSkips) {
    store({{0, 0.125}, {3, 0.25}, {7, 0.5}});
    scene_.mel(
        "addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array |base|baseShapeOrig;"
        "setAttr -type Int32Array |base|baseShapeOrig.dvVertexOrderMap 20 8 3 2 1 0 9 8 -1 6 5 "
        "14 13 12 11 10 19 18 17 16 15");
    const Outcome outcome = call("-flp -ob \"\"");
    EXPECT_EQ(outcome.value.toInt(), 1);
    EXPECT_EQ(outcome.infos, Strings{"Skipped 1 asymmetrical components."});
    EXPECT_EQ(weights(), "1 0.25 8 0.125 ");
}

TEST_F(EditWeights, WithoutANameTheMapIsTheOriginalMeshsAlsoBesideASkin) {
    store({{0, 0.125}});
    scene_.mel(
        "duplicate -name other base; joint -n low; skinCluster -n skin low other;"
        "addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array |base|baseShapeOrig;"
        "setAttr -type Int32Array |base|baseShapeOrig.dvVertexOrderMap 20 8 3 2 1 0 9 8 -1 6 5 "
        "14 13 12 11 10 19 18 17 16 15");
    edit("-flp -ob \"\" -sc skin -sm other");
    EXPECT_EQ(weights(), "8 0.125 ");
}

TEST_F(EditWeights, FlushSetsASelectionAndClearsNothing) {
    store({{3, 0.25}});
    scene_.mel("select base.vtx[1:2]; flushUndo");
    edit("-fl 0.5");
    EXPECT_EQ(weights(), "1 0.5 2 0.5 3 0.25 ");
    scene_.mel("undo");
    EXPECT_EQ(weights(), "3 0.25 ");
    // The selection of the call counts, whatever is selected at the time of the redo.
    scene_.mel("undoInfo -stateWithoutFlush off; select -clear; undoInfo -stateWithoutFlush on; redo");
    EXPECT_EQ(weights(), "1 0.5 2 0.5 3 0.25 ");
}

TEST_F(EditWeights, FreezeKeepsTheShapeOfEveryItem) {
    store({{5, 0.5}, {6, 0.25}}, "itg[4].tw");
    scene_.mel("setAttr bs.blink 1");
    const std::vector<double> before = scene_.points("base");
    const std::string unfrozen = scene_.dump();
    edit("-f -i 4");
    EXPECT_EQ(scene_.points("base"), before);
    EXPECT_EQ(deltas(scene_, 4, 6000), "5 0 0.5 0\n6 0 0.25 0\n19 1 1 1\n");
    EXPECT_EQ(deltas(scene_, 4, 5500), "5 0 0.125 0\n");
    EXPECT_EQ(weights("itg[4].tw"), "");
    // Undo knows the one item that was asked for.
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 4, 6000), "5 0 1 0\n6 0 1 0\n19 1 1 1\n");
    EXPECT_EQ(deltas(scene_, 4, 5500), "5 0 0.125 0\n");
    EXPECT_EQ(weights("itg[4].tw"), "5 0.5 6 0.25 ");
    edit("-f -i 4 -ti 5777");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 4, 5777), "") << "an item that is not there is not made by undo";
}

TEST_F(EditWeights, FilesAreByteForByteAndComeBack) {
    store({{0, 0.333333333}, {12, 1.23e-7}, {19, 0.5}});
    const std::string json = scratchFile("weights.json");
    const std::string plain = scratchFile("weights.JSON");
    edit("-ex -fn \"" + json + "\"");
    EXPECT_EQ(fileBytes(json), "{\n\t\"0\": 0.333333,\n\t\"12\": 1.23e-07,\n\t\"19\": 0.5\n}");
    edit("-ex -fn \"" + plain + "\"");
    EXPECT_EQ(fileBytes(plain), "0 0.333333\n12 1.23e-07\n19 0.5");
    for (const std::string& file : {json, plain}) {
        edit("-del");
        edit("-im -fn \"" + file + "\"");
        EXPECT_EQ(weights(), "0 0.333333 12 1e-07 19 0.5 ");
    }
    scene_.mel("undo");
    EXPECT_EQ(weights(), "0 0.333333 12 1e-07 19 0.5 ") << "an import of a file is not undone";
}

TEST_F(EditWeights, FilesWithFaultsGiveWhatCanBeRead) {
    const struct {
        const char* name;
        const char* text;
        const char* weights;
    } rows[] = {
        {"a.json", "{\n\"1\": 0.5,\n\"x\": 0.25,\n\"-3\": 0.25,\n\"2\": {\n\"3\" : 0.125 }",
         "1 0.5 3 0.125 "},
        {"b.json", "{\"1\": half,\"2\":\n\"4\": 0.75", "1 0 2 0 4 0.75 "},
        {"c.json", "\"1\"", ""},
        {"d.json",
         "\xEF\xBB\xBF{\n\"1\": 0.5,\n\"2\": 3.5e38,\n\"3\": -1e999,\n\"2147483648\": 0.5,\n\"4\": 1e-999\n}",
         "1 0.5 4 0 "},
        {"a.txt",
         "\xEF\xBB\xBF"
         "1 0.5\n\n  2   0.25\r\nx 3\n3\n-4 0.5\n5 0.75 6\n6 0.5,\n7\t0.5 \n8.5\n9-0.5\n10 0.5x",
         "1 0.5 2 0.25 7 0.5 "},
        {"b.txt", "1 3.5e38\n2 -1e999\n2147483648 0.5\n3 0.5", "3 0.5 "},
    };
    for (const auto& row : rows) {
        edit("-del");
        call("-im -fn \"" + writeScratchFile(row.name, row.text) + "\"");
        EXPECT_EQ(weights(), row.weights) << row.name;
    }
}

TEST_F(EditWeights, AddingAndSubtractingStayBetweenZeroAndOne) {
    const std::string file = writeScratchFile("change.txt", "0 0.5\n1 0.5\n2 0.000004\n40 0.5");
    store({{0, 0.25}, {1, 0.75}, {2, 0.5}, {3, 0.125}});
    edit("-aw -fn \"" + file + "\"");
    EXPECT_EQ(weights(), "0 0.75 2 0.500004 3 0.125 ");
    scene_.mel("undo");
    EXPECT_EQ(weights(), "0 0.75 2 0.500004 3 0.125 ") << "not undone";
    edit("-sub -fn \"" + writeScratchFile("change.txt", "0 1\n1 0.25\n3 0.0625") + "\"");
    EXPECT_EQ(weights(), "0 0 1 0.75 2 0.500004 3 0.0625 ");
    edit("-sub -fn \"" + writeScratchFile("change.txt", "1 0.750004\n3 0.0626") + "\"");
    EXPECT_NEAR(scene_.mel("getAttr bs.it[0].itg[0].tw[1]").toFloat(), -0.000004, 1e-7)
        << "0 when it is rounded, and so not clamped";
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[0].tw[3]").toFloat(), 0.0);
}

TEST_F(EditWeights, PaintComesFromVertexColoursAndGoesThere) {
    scene_.mel(
        "polyColorPerVertex -rgb 0 0 0.25 base.vtx[3]; polyColorPerVertex -rgb 1 1 0.000004 base.vtx[4]; "
        "flushUndo");
    const std::string file = scratchFile("paint.txt");
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -om base -ex -fp -fn \"" + file + "\" bs").toInt(), 1);
    EXPECT_EQ(fileBytes(file), "3 0.75");
    const std::string before = scene_.dump();
    writeScratchFile("paint.txt", "3 0.5\n5 1\n40 1");
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -om base -im -fp -fn \"" + file + "\" bs").toInt(), 1);
    const std::vector<double> color = scene_.mel("polyColorPerVertex -q -rgb -a base.vtx[3]").toFloatArray();
    ASSERT_GE(color.size(), 3U);
    EXPECT_NEAR(color[0], 0.2, 1e-6);
    EXPECT_NEAR(color[1], 0.35, 1e-6);
    EXPECT_NEAR(color[2], 0.5, 1e-6);
    scene_.mel("undo");
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(EditWeights, PaintOnAMeshWithoutColoursIsUndoneWithItsSet) {
    const std::string file = writeScratchFile("paint.txt", "3 0.5");
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -om base -im -fp -fn \"" + file + "\" bs").toInt(), 1);
    EXPECT_EQ(scene_.mel("polyColorSet -q -allColorSets base").size(), 1U);
    scene_.mel("undo");
    EXPECT_EQ(scene_.mel("polyColorSet -q -allColorSets base").size(), 0U);
}

TEST_F(EditWeights, PaintNeedsAMeshToGoTo) {
    const std::string file = writeScratchFile("paint.txt", "3 0.5");
    const Outcome outcome = scene_.run("dv_blendShapeEditWeights -im -fp -fn \"" + file + "\" bs");
    EXPECT_EQ(outcome.value, host::mel::Value(0));
    EXPECT_EQ(outcome.errors, Strings{"The original mesh is not defined."});
}

TEST_F(EditWeights, TheHostsToolPaintsOnAnAttribute) {
    scene_.mel("optionVar -intValue DELVENUseMayaSculptTool 1");
    const std::string file = writeScratchFile("freeze.txt", "3 0.25\n5 0");
    EXPECT_EQ(call("-im -fp -fn \"" + file + "\"").errors,
              Strings{"The blend shape node has no attribute \"freeze\" to paint on."});
    EXPECT_EQ(call("-ex -fp -fn \"" + file + "\"").errors, Strings{"No weights to export"});
    scene_.mel("addAttr -ln freeze -at \"float\" -multi bs; setAttr bs.freeze[9] 0.5");
    edit("-im -fp -fn \"" + file + "\"");
    EXPECT_EQ(scene_.mel("getAttr -multiIndices bs.freeze"), (std::vector<int>{3, 5}));
    EXPECT_EQ(scene_.mel("getAttr bs.freeze[3]").toFloat(), 0.25);
    edit("-ex -fp -fn \"" + file + "\"");
    EXPECT_EQ(fileBytes(file), "3 0.75");
}

TEST_F(EditWeights, WeightsGoToASkinInfluenceAndComeBack) {
    scene_.mel(
        "select -clear; joint -n low; select -clear; joint -n high; skinCluster -n skin low high base;"
        "skinPercent -tv low 0.5 -tv high 0.5 skin base.vtx[*]");
    store({{3, 0.25}, {7, 0.5}});
    const auto influence = [&](int vertex) {
        return scene_.mel("skinPercent -q -v skin base.vtx[" + std::to_string(vertex) + "]").toFloatArray();
    };
    const std::string before = scene_.dump();
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -ex -sc skin -sm base -ii 1 bs").toInt(), 1);
    // The host divides by the sum, 1 and the weight.
    EXPECT_NEAR(influence(3)[1], 0.25 / 1.25, 1e-6);
    EXPECT_NEAR(influence(7)[1], 0.5 / 1.5, 1e-6);
    EXPECT_EQ(influence(4)[1], 0.0) << "without a stored weight";
    EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -im -sc skin -sm base -ii 0 bs").toInt(), 1);
    EXPECT_EQ(weights(), "3 0.8 7 0.6666667 ");
    scene_.mel("undo");
    EXPECT_EQ(weights(), "3 0.25 7 0.5 ");
    scene_.mel("undo");
    EXPECT_EQ(scene_.changes(before), "");
    scene_.mel("redo; undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_NEAR(influence(3)[1], 0.25 / 1.25, 1e-6);
    scene_.mel("undo");
    EXPECT_EQ(influence(3)[1], 0.5) << "the skin needs no blend shape to be put back";
}

TEST_F(EditWeights, NodesDeletedByHandDoNoHarm) {
    store({{3, 0.25}});
    edit("-iv");
    scene_.mel("undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("undo").errors, Strings());
    EXPECT_EQ(scene_.run("redo").errors.front(), "The blend shape node is not in the scene any more.");
}

}  // namespace
