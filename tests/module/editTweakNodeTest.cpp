#include <gtest/gtest.h>

#include "fixtures.h"

namespace {

/// The blend shape of addBlendShape with a tweak node before it, in the two ways in which scenes have one.
class EditTweakNode : public ::testing::TestWithParam<bool> {
  protected:
    EditTweakNode() {
        addBlendShape(scene_);
        if (GetParam()) {
            addLegacyChain(scene_);
        } else {
            scene_.mel("deformableShape -createTweakNode base");
        }
        scene_.mel("setAttr bs.smile 1; move -r 0.5 0 0 base.vtx[3]; move -r 0 2 -1 base.vtx[0]; flushUndo");
    }

    void edit(const std::string& flags) {
        EXPECT_EQ(scene_.mel("dv_editTweakNode " + flags + " -om baseShapeOrig tweak1"), host::mel::Value(1));
    }

    Scene scene_;
};

TEST_P(EditTweakNode, BakingMovesTheEditsIntoTheOriginal) {
    const std::vector<double> deformed = scene_.points("baseShape");
    std::vector<double> expected = scene_.points("baseShapeOrig");
    expected[1] += 2;
    expected[2] -= 1;
    expected[9] += 0.5;
    edit("-b 1");
    EXPECT_EQ(scene_.points("baseShapeOrig"), expected);
    EXPECT_EQ(scene_.points("baseShape"), deformed);
    edit("-b 1");
    EXPECT_EQ(scene_.points("baseShapeOrig"), expected) << "nothing is left to be added";
}

TEST_P(EditTweakNode, WithoutBakingTheEditsAreThrownAway) {
    const std::vector<double> original = scene_.points("baseShapeOrig");
    std::vector<double> expected = scene_.points("baseShape");
    expected[1] -= 2;
    expected[2] += 1;
    expected[9] -= 0.5;
    edit("");
    EXPECT_EQ(scene_.points("baseShapeOrig"), original);
    EXPECT_EQ(scene_.points("baseShape"), expected);
    EXPECT_EQ(scene_.run("undo").ok, true);
    EXPECT_EQ(scene_.points("baseShape"), expected) << "there is no undo";
}

/// The mesh still knows where its edits go.
TEST_P(EditTweakNode, FurtherEditsStartFromZero) {
    edit("-b 1");
    scene_.mel("move -r 0 0.25 0 base.vtx[3]");
    EXPECT_EQ(scene_.mel("getAttr tweak1.vlist[0].vertex[3]").toFloatArray(),
              (std::vector<double>{0, 0.25, 0}));
    edit("-b 0");
    EXPECT_EQ(scene_.mel("getAttr tweak1.vlist[0].vertex[3]").toFloatArray(), (std::vector<double>{0, 0, 0}));
}

TEST_P(EditTweakNode, EditsBeyondTheMeshAreThrownAwayButNotBaked) {
    scene_.mel("setAttr tweak1.vlist[0].vertex[4000000] 1 1 1");
    const std::vector<double> original = scene_.points("baseShapeOrig");
    EXPECT_FALSE(scene_.run("dv_editTweakNode -b 1 -om baseShapeOrig tweak1").ok);
    EXPECT_EQ(scene_.points("baseShapeOrig"), original);
    EXPECT_EQ(scene_.mel("getAttr tweak1.vlist[0].vertex[4000000]").toFloatArray(),
              (std::vector<double>{1, 1, 1}));
    edit("");
    EXPECT_EQ(scene_.mel("getAttr tweak1.vlist[0].vertex[4000000]").toFloatArray(),
              (std::vector<double>{0, 0, 0}));
}

INSTANTIATE_TEST_SUITE_P(Chains, EditTweakNode, ::testing::Bool(),
                         [](const auto& tested) { return std::string(tested.param ? "Legacy" : "Today"); });

}  // namespace
