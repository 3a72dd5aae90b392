#include <gtest/gtest.h>

#include "fixtures.h"
#include "support/meshZoo.h"

namespace {

using Strings = std::vector<std::string>;

/// Target 4 of addBlendShape has the items 5500, which moves vertex 5 by 0.25, and 6000.
class SetInbetweenPosition : public ::testing::Test {
  protected:
    SetInbetweenPosition() { addBlendShape(scene_); }

    std::vector<int> items(int target) {
        return scene_.mel("getAttr -multiIndices bs.it[0].itg[" + std::to_string(target) + "].iti")
            .toIntArray();
    }

    Scene scene_;
};

TEST_F(SetInbetweenPosition, MovesTheDeltasAsTheyAre) {
    scene_.mel(
        "setAttr bs.it[0].itg[4].iti[5500].ict -type componentList 3 vtx[9] vtx[2] vtx[9];"
        "setAttr bs.it[0].itg[4].iti[5500].ipt -type pointArray 3 1 2 3 1 4 5 6 1 7 8 9 1; flushUndo");
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 -tp 5300 bs");
    EXPECT_EQ(items(4), (std::vector<int>{5300, 6000}));
    EXPECT_EQ(deltas(scene_, 4, 5300), "9 1 2 3\n2 4 5 6\n9 7 8 9\n");
    scene_.mel("undo");
    EXPECT_EQ(items(4), (std::vector<int>{5500, 6000}));
    EXPECT_EQ(deltas(scene_, 4, 5500), "9 1 2 3\n2 4 5 6\n9 7 8 9\n");
}

TEST_F(SetInbetweenPosition, TheShapeIsReachedAtTheNewWeight) {
    const double rest = scene_.mel("pointPosition -local baseShapeOrig.vtx[5]").toFloatArray()[1];
    const auto height = [&](const std::string& weight) {
        scene_.mel("setAttr bs.blink " + weight);
        return scene_.mel("pointPosition -local base.vtx[5]").toFloatArray()[1] - rest;
    };
    EXPECT_EQ(height("0.5"), 0.25);
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 -tp 5250 bs");
    EXPECT_EQ(height("0.25"), 0.25);
    EXPECT_EQ(height("0.625"), 0.625) << "half way to the full target";
}

TEST_F(SetInbetweenPosition, OverwritesWhatIsThere) {
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 bs");
    EXPECT_EQ(items(4), std::vector<int>{6000});
    EXPECT_EQ(deltas(scene_, 4, 6000), "5 0 0.25 0\n");
    scene_.mel("undo");
    EXPECT_EQ(items(4), std::vector<int>{5500}) << "what was overwritten is not restored";
}

TEST_F(SetInbetweenPosition, AnItemWithoutDeltasBecomesAnItemWithoutDeltas) {
    scene_.mel("setAttr bs.w[2] 0; dv_blendShapeSetInbetweenPosition -i 2 -tp 5800 bs");
    EXPECT_EQ(items(2), std::vector<int>{5800});
    EXPECT_EQ(deltas(scene_, 2, 5800), "");
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[2].iti[5800].ipt").size(), 0U);
}

/// The connection of a target mesh goes with its item; the deltas that it gave stay.
TEST_F(SetInbetweenPosition, AllThatBelongsToAnInBetweenMovesAlong) {
    scene_.mel(
        "duplicate -name other base; move -r 0 3 0 other.vtx[1];"
        "blendShape -edit -inBetween -target base 4 other 0.75 bs;"
        "setAttr bs.ibig[4].ibi[5750].ibtn -type \"string\" \"half\"; setAttr bs.ibig[4].ibi[5750].itp 1;"
        "setAttr bs.ibig[4].ibi[5750].itc[1].itcp 0.25; setAttr bs.ibig[4].ibi[5750].itc[1].itcfv 0.5;"
        "setAttr bs.ibig[4].ibi[5750].itc[3].itcp 0.75; setAttr bs.ibig[4].ibi[5750].itc[3].itcfv 1;"
        "setAttr bs.ibig[4].ibi[5750].ibvs 0;"
        "setAttr bs.it[0].itg[4].iti[5750].irc -type componentList 1 vtx[2];"
        "setAttr bs.it[0].itg[4].iti[5750].irp -type pointArray 1 1 2 3 1; flushUndo");
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5750 -tp 5700 bs");
    EXPECT_EQ(scene_.mel("listConnections bs.it[0].itg[4].iti[5700].igt").toStringArray(),
              std::vector<std::string>{"other"});
    EXPECT_EQ(deltas(scene_, 4, 5700), "1 0 3 0\n");
    EXPECT_EQ(scene_.mel("getAttr bs.ibig[4].ibi[5700].ibtn").toString(), "half");
    EXPECT_EQ(scene_.mel("getAttr bs.ibig[4].ibi[5700].itp").toInt(), 1);
    EXPECT_EQ(scene_.mel("getAttr bs.ibig[4].ibi[5700].ibvs").toInt(), 0);
    EXPECT_EQ(scene_.mel("getAttr -multiIndices bs.ibig[4].ibi[5700].itc").toIntArray(),
              (std::vector<int>{1, 3}));
    const auto curve = [&](const std::string& part) {
        return scene_.mel("getAttr bs.ibig[4].ibi[5700].itc" + part).toFloat();
    };
    EXPECT_EQ(curve("[1].itcp"), 0.25);
    EXPECT_EQ(curve("[1].itcfv"), 0.5);
    EXPECT_EQ(curve("[3].itcp"), 0.75);
    EXPECT_EQ(curve("[3].itcfv"), 1.0);
    EXPECT_EQ(scene_.mel("getAttr -multiIndices bs.ibig[4].ibi").toIntArray(), std::vector<int>{5700});
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[4].iti[5700].irc").toStringArray(),
              std::vector<std::string>{"vtx[2]"});
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[4].iti[5700].irp").toFloatArray(),
              (std::vector<double>{1, 2, 3, 1}));
}

TEST_F(SetInbetweenPosition, NothingOfWhatWasThereBecomesAPartOfIt) {
    scene_.addMesh("live", zoo::openGrid());
    scene_.mel(
        "blendShape -edit -inBetween -target base 4 live 0.3 bs;"
        "setAttr bs.ibig[4].ibi[5300].ibtn -type \"string\" \"old\"; setAttr bs.ibig[4].ibi[5300].itp 2;"
        "setAttr bs.it[0].itg[4].iti[5300].irc -type componentList 1 vtx[9]; flushUndo");
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 -tp 5300 bs");
    EXPECT_EQ(deltas(scene_, 4, 5300), "5 0 0.25 0\n");
    EXPECT_EQ(scene_.mel("getAttr -multiIndices bs.ibig[4].ibi").size(), 0U);
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[4].iti[5300].irc").size(), 0U);
    EXPECT_EQ(scene_.mel("listConnections bs.it[0].itg[4].iti[5300].igt").size(), 0U);
}

TEST_F(SetInbetweenPosition, ATargetMeshThatCannotBeConnectedIsTold) {
    scene_.addMesh("live", zoo::openGrid());
    scene_.mel(
        "blendShape -edit -inBetween -target base 4 live 0.75 bs;"
        "setAttr -lock 1 bs.it[0].itg[4].iti[5700].igt; flushUndo");
    const Outcome outcome = scene_.run("dv_blendShapeSetInbetweenPosition -i 4 -sp 5750 -tp 5700 bs");
    ASSERT_FALSE(outcome.warnings.empty());
    EXPECT_EQ(outcome.warnings.back(),
              "The target mesh |live|liveShape could not be connected to "
              "bs.inputTarget[0].inputTargetGroup[4].inputTargetItem[5700]. Its deltas are there, "
              "but do not follow it any more.");
    EXPECT_EQ(items(4), (std::vector<int>{5500, 5700, 6000}));
}

/// A move that fails half way is queued all the same.
TEST_F(SetInbetweenPosition, UndoOfAHalfDoneMoveBringsTheDeltasBack) {
    scene_.mel("setAttr -lock 1 bs.it[0].itg[4].iti[5300].ipt; flushUndo");
    const std::string before = scene_.dump();
    for (const auto& [position, error] :
         {std::pair("5300", "Error setting points."), std::pair("-1", "Error setting components.")}) {
        const Outcome outcome = scene_.run(
            std::string("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 -tp ") + position + " bs");
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.value, host::mel::Value(0));
        EXPECT_EQ(outcome.errors, Strings{error});
        EXPECT_EQ(deltas(scene_, 4, 5500), "");
        scene_.run("undo");
        EXPECT_EQ(deltas(scene_, 4, 5500), "5 0 0.25 0\n");
        EXPECT_EQ(items(4), (std::vector<int>{5500, 6000}));
    }
}

TEST_F(SetInbetweenPosition, ANodeDeletedByHandDoesNoHarm) {
    scene_.mel("dv_blendShapeSetInbetweenPosition -i 4 -sp 5500 -tp 5300 bs");
    scene_.mel("undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("undo").errors, Strings());
    EXPECT_EQ(scene_.run("redo").errors.front(), "The blend shape node is not in the scene any more.");
}

}  // namespace
