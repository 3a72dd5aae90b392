#include <gtest/gtest.h>

#include <ostream>

#include "fixtures.h"
#include "support/meshZoo.h"

namespace {

/// The grid of addBlendShape has 5 vertices a row; target 0 moves the vertices 3, 7 and 12.
class RemoveDeltas : public ::testing::Test {
  protected:
    RemoveDeltas() { addBlendShape(scene_); }

    std::string remaining(const std::string& selection) {
        scene_.mel("select " + selection + "; dv_blendShapeRemoveDeltas bs");
        return deltas(scene_, 0, 6000);
    }

    Scene scene_;
};

struct Removal {
    const char* name;
    const char* selection;
    const char* remaining;
};

void PrintTo(const Removal& removal, std::ostream* out) {
    *out << removal.name;
}

class RemoveDeltasOf : public RemoveDeltas, public ::testing::WithParamInterface<Removal> {};

TEST_P(RemoveDeltasOf, LeavesTheOthers) {
    scene_.addMesh("other", zoo::openGrid());
    EXPECT_EQ(remaining(GetParam().selection), GetParam().remaining);
}

INSTANTIATE_TEST_SUITE_P(
    Selections, RemoveDeltasOf,
    ::testing::Values(Removal{"OneVertex", "base.vtx[7]", "3 0 1 0\n12 0 0 -2\n"},
                      Removal{"VerticesWithoutDeltas", "base.vtx[0:2]", "3 0 1 0\n7 0.5 0 0\n12 0 0 -2\n"},
                      Removal{"EveryVertex", "base.vtx[*]", ""},
                      // Corners 2, 3, 7 and 8.
                      Removal{"AFace", "base.f[2]", "12 0 0 -2\n"},  // Between the vertices 7 and 12.
                      Removal{"AnEdge", "base.e[14]", "3 0 1 0\n"}, Removal{"EveryEdge", "base.e[*]", ""},
                      Removal{"VerticesOfAnotherMesh", "other.vtx[3]", "7 0.5 0 0\n12 0 0 -2\n"},
                      Removal{"OnlyTheFirstObject", "base.vtx[3] other.vtx[7]", "7 0.5 0 0\n12 0 0 -2\n"},
                      Removal{"NoComponent", "base", "0 0 0 0\n"},
                      Removal{"AnotherObjectFirst", "other base.vtx[3]", "0 0 0 0\n"},
                      Removal{"TheNodeItself", "-noExpand bs base.vtx[3]", "0 0 0 0\n"},
                      Removal{"Nothing", "-clear", "0 0 0 0\n"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(RemoveDeltas, KeptDeltasStayInOrderAndAligned) {
    scene_.mel(
        "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 5 vtx[12] vtx[3] vtx[4000000] vtx[12] "
        "vtx[1];"
        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 5 1 0 0 1 2 0 0 1 3 0 0 1 4 0 0 1 5 0 0 1");
    EXPECT_EQ(remaining("base.vtx[3]"), "12 1 0 0\n4000000 3 0 0\n12 4 0 0\n1 5 0 0\n");
    EXPECT_EQ(remaining("base.vtx[12]"), "4000000 3 0 0\n1 5 0 0\n");
}

TEST_F(RemoveDeltas, RedoGoesByWhatIsSelectedThen) {
    EXPECT_EQ(remaining("base.vtx[3]"), "7 0.5 0 0\n12 0 0 -2\n");
    scene_.mel(
        "undo; undoInfo -stateWithoutFlush off; select base.vtx[12]; undoInfo -stateWithoutFlush on; redo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "3 0 1 0\n7 0.5 0 0\n");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "3 0 1 0\n7 0.5 0 0\n12 0 0 -2\n");
}

TEST_F(RemoveDeltas, TheVerticesReturnToTheBase) {
    scene_.mel("setAttr bs.smile 1");
    remaining("base.vtx[3] base.vtx[12]");
    EXPECT_EQ(scene_.mel("pointPosition -local base.vtx[3]"),
              scene_.mel("pointPosition -local baseShapeOrig.vtx[3]"));
    EXPECT_NE(scene_.mel("pointPosition -local base.vtx[7]"),
              scene_.mel("pointPosition -local baseShapeOrig.vtx[7]"));
}

TEST_F(RemoveDeltas, ANodeDeletedByHandDoesNoHarm) {
    remaining("base.vtx[3]");
    scene_.mel("undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene_.run("undo").errors, std::vector<std::string>());
    EXPECT_EQ(scene_.run("redo").errors.front(), "The blend shape node is not in the scene any more.");
}

}  // namespace
