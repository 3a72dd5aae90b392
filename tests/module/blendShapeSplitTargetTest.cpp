#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "fixtures.h"

namespace {

/// The grid of addBlendShape has x = -2 to 2 in its columns; row r begins with vertex 5 r.
class SplitTarget : public ::testing::Test {
  protected:
    SplitTarget() {
        addBlendShape(scene_);
        scene_.mel(
            "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 1 vtx[0:4];"
            "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 5 1 2 3 1 4 5 6 1 7 8 9 1 1 1 1 1 2 2 2 "
            "1;"
            "flushUndo");
    }

    void split(const std::string& arguments) {
        EXPECT_EQ(scene_.mel("dv_blendShapeSplitTarget -om baseShapeOrig " + arguments + " bs").toInt(), 1);
    }

    /// The stored weights as "vertex weight" pairs.
    std::string weights(const std::string& plug) {
        std::string text;
        for (const int vertex : scene_.mel("getAttr -multiIndices bs.it[0]." + plug).toIntArray()) {
            const std::string element = plug + "[" + std::to_string(vertex) + "]";
            // Weights are kept in single precision.
            const double weight = std::round(scene_.mel("getAttr bs.it[0]." + element).toFloat() * 1e7) / 1e7;
            text += std::to_string(vertex) + ' ' + host::mel::Value(weight).toString() + ' ';
        }
        return text;
    }

    Scene scene_;
};

struct Split {
    const char* name;
    const char* arguments;
    const char* weights;  // of the first row, x = -2, -1, 0, 1, 2
};

void PrintTo(const Split& split, std::ostream* out) {
    *out << split.name;
}

class SplitTargetInto : public SplitTarget, public ::testing::WithParamInterface<Split> {};

TEST_P(SplitTargetInto, GivesTheWeights) {
    split("-i 2 " + std::string(GetParam().arguments));
    EXPECT_EQ(weights("itg[2].tw"), GetParam().weights);
}

INSTANTIATE_TEST_SUITE_P(
    Widths, SplitTargetInto,
    ::testing::Values(Split{"HardPositive", "-iv 1", "0 0 1 0 2 0.5 3 1 4 1 "},
                      Split{"HardNegative", "-iv -1", "0 1 1 1 2 0.5 3 0 4 0 "},
                      Split{"TinyBlendIsHard", "-iv 1 -b 0.000004", "0 0 1 0 2 0.5 3 1 4 1 "},
                      // The zone goes a little beyond its upper end.
                      Split{"SmallBlendIsNot", "-iv 1 -b 0.000005", "0 0 1 0 2 0.04545 3 1 4 1 "},
                      Split{"HalfBlend", "-iv 1 -b 0.5", "0 0 1 0 2 0.49995 3 1 4 1 "},
                      Split{"WideBlend", "-iv 1 -b 2", "0 0 1 0.24999 2 0.49999 3 0.74998 4 0.99998 "},
                      Split{"BesideTheMiddle", "-iv 1 -c 1 -b 1", "0 0 1 0 2 0 3 0.49998 4 0.99995 "},
                      // All x are 0 then, in the middle of the zone.
                      Split{"NoSide", "-b 1", "0 0.49998 1 0.49998 2 0.49998 3 0.49998 4 0.49998 "},
                      Split{"WideTolerance", "-iv 1 -tol 1", "0 0 1 0.5 2 0.5 3 0.5 4 1 "},
                      // The whole grid lies on the plane y = 0.
                      Split{"OtherAxis", "-ax y -iv 1", "0 0.5 1 0.5 2 0.5 3 0.5 4 0.5 "}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(SplitTarget, CoordinatesCountWithFiveDecimals) {
    // Both lie in the zone beside the plane, which ends at 0.0001.
    scene_.mel(
        "duplicate -name other base; xform -objectSpace -translation 0.000054 0 0 other.vtx[2];"
        "xform -objectSpace -translation 0.000056 0 0 other.vtx[3]");
    EXPECT_EQ(scene_.mel("dv_blendShapeSplitTarget -om otherShape -i 2 -iv 1 -tol 0.00001 bs").toInt(), 1);
    EXPECT_EQ(weights("itg[2].tw"), "0 0 1 0 2 0.5 3 0.6 4 1 ");
}

TEST_F(SplitTarget, WeighsWhatAnyItemMovesAndForgetsOtherWeights) {
    scene_.mel("setAttr bs.it[0].itg[4].tw[8] 0.25");
    split("-i 4 -iv 1");
    EXPECT_EQ(weights("itg[4].tw"), "5 0 6 0 19 1 ");
}

TEST_F(SplitTarget, AnEmptyItemGetsTheFirstVertex) {
    scene_.mel("setAttr bs.it[0].itg[4].iti[5250].ipt -type pointArray 0");
    split("-i 4 -iv 1");
    EXPECT_EQ(weights("itg[4].tw"), "0 0 5 0 6 0 19 1 ");
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[4].iti[5250].ict").toStringArray(),
              std::vector<std::string>{"vtx[0]"});
}

/// The delta of vertex v is looked up as the v-th of the list, not as the one that belongs to v.
TEST_F(SplitTarget, AHardSplitOfTheBaseHalvesDeltasOnThePlane) {
    const auto set = [&](const std::string& vertices, const std::string& points) {
        scene_.mel("setAttr bs.it[0].itg[0].iti[6000].ict -type componentList " + vertices);
        scene_.mel("setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray " + points);
    };
    set("4 vtx[2] vtx[1] vtx[0] vtx[3]", "4 1 2 3 1 4 5 6 1 7 8 9 1 10 11 12 1");
    scene_.mel("flushUndo");
    split("-i -1 -iv 1");
    EXPECT_EQ(deltas(scene_, 0, 6000), "2 0 4 4.5\n1 4 5 6\n0 1 2 3\n3 10 11 12\n");
    EXPECT_EQ(weights("bw"), "0 0 1 0 2 1 3 1 ");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "2 1 2 3\n1 4 5 6\n0 7 8 9\n3 10 11 12\n");
    EXPECT_EQ(weights("bw"), "0 0 1 0 2 1 3 1 ") << "painted weights stay";

    set("2 vtx[7] vtx[4000000]", "2 1 2 3 1 4 5 6 1");
    split("-i -1 -iv 1");
    EXPECT_EQ(deltas(scene_, 0, 6000), "7 0 0 0\n4000000 0 0 0\n") << "zero beyond the list";
    EXPECT_EQ(weights("bw"), "7 1 ");
}

TEST_F(SplitTarget, ASoftSplitOfTheBaseLeavesTheDeltas) {
    const std::string before = deltas(scene_, 0, 6000);
    split("-i -1 -iv 1 -b 0.5");
    EXPECT_EQ(deltas(scene_, 0, 6000), before);
    EXPECT_EQ(weights("bw"), "3 1 7 0.49995 12 0.49995 ");
}

TEST_F(SplitTarget, TheDeformedMeshKeepsOneSide) {
    scene_.mel("setAttr bs.weight[2] 1");
    split("-i 2 -iv -1");
    EXPECT_EQ(scene_.mel("pointPosition -local base.vtx[0]").toFloatArray()[1], 2.0);
    EXPECT_EQ(scene_.mel("pointPosition -local base.vtx[2]").toFloatArray()[1], 4.0);
    EXPECT_EQ(scene_.mel("pointPosition -local base.vtx[4]").toFloatArray()[1], 0.0);
}

TEST_F(SplitTarget, NodesDeletedByHandDoNoHarm) {
    split("-i -1 -iv 1");
    scene_.mel("undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("undo").errors, std::vector<std::string>());
    EXPECT_EQ(scene_.run("redo").errors.front(),
              "The blend shape node or the original mesh is not in the scene any more.");
}

}  // namespace
