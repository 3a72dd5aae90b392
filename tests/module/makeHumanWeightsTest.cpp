// Weights of one side of a symmetric target, flipped, mirrored and taken through a file.

#include <map>

#include "makeHumanFixture.h"
#include "scratchFiles.h"

namespace {

using Weights = std::map<int, double>;

class MakeHumanWeights : public MakeHuman {
  protected:
    void SetUp() override {
        MakeHuman::SetUp();
        if (IsSkipped()) return;
        import("base.obj", "base");
        import("mouth-corner-puller.obj", "corners");
        scene_.mel("blendShape -name bs corners base; delete corners");
        positions_ = scene_.points("baseShapeOrig");
    }

    void edit(const std::string& arguments) {
        EXPECT_EQ(scene_.mel("dv_blendShapeEditWeights -om baseShapeOrig " + arguments + " bs").toInt(), 1);
    }

    void split(const std::string& side) {
        EXPECT_EQ(scene_.mel("dv_blendShapeSplitTarget -om baseShapeOrig -iv " + side + " bs").toInt(), 1);
    }

    /// The stored weights but those of 1, which count like none.
    Weights weights() {
        const std::vector<int> vertices = scene_.mel("dv_blendShapeEditWeights -gi bs").toIntArray();
        const std::vector<double> values = scene_.mel("dv_blendShapeEditWeights -gw bs").toFloatArray();
        Weights read;
        for (std::size_t k = 0; k < vertices.size(); ++k) {
            if (values[k] != 1.0) read[vertices[k]] = values[k];
        }
        return read;
    }

    std::vector<double> positions_;
};

TEST_F(MakeHumanWeights, OneSideBecomesTheOther) {
    split("1");
    const Weights left = weights();
    ASSERT_GT(left.size(), 100U);
    const std::string file = scratchFile("left.json");
    edit("-ex -fn \"" + file + "\"");
    split("-1");
    const Weights right = weights();
    EXPECT_NE(right, left);
    edit("-flp");
    EXPECT_EQ(weights(), left);
    edit("-flp");
    EXPECT_EQ(weights(), right);
    edit("-im -fn \"" + file + "\"");
    EXPECT_EQ(weights(), left);
}

/// With 1 on the source side and nothing stored there, all that mirroring leaves is the middle.
TEST_F(MakeHumanWeights, MirroringTheKeptSideLeavesTheMiddle) {
    split("1");
    edit("-flp");
    edit("-flp");
    edit("-m");
    for (const auto& [vertex, weight] : weights()) {
        EXPECT_EQ(weight, 0.5) << vertex;
        EXPECT_NEAR(positions_[3 * static_cast<std::size_t>(vertex)], 0.0, 0.001) << vertex;
    }
    EXPECT_FALSE(weights().empty());
    edit("-m -dir 0");
    EXPECT_FALSE(weights().empty()) << "the middle counts for both sides";
}

}  // namespace
