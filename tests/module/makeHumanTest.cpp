// Extraction on a character of production size, where its folder is at hand.

#include <gtest/gtest.h>

#include <cmath>

#include "makeHumanFixture.h"

namespace {

TEST_F(MakeHuman, TargetsComeBackPointByPoint) {
    import("base.obj", "base");
    import("eye-left-closure.obj", "eye");
    import("mouth-corner-puller.obj", "corner");
    const std::vector<std::vector<double>> targets{scene_.points("eye"), scene_.points("corner")};
    const std::vector<double> base = scene_.points("base");
    ASSERT_EQ(base.size(), 3U * 19158U);
    scene_.mel("blendShape -name face eye corner base; delete eye corner; flushUndo");
    scene_.points("base");  // an evaluation may make the deltas that the meshes leave
    const std::string before = scene_.dump();
    for (const int index : {0, 1}) {
        const std::string name =
            scene_.mel("dv_blendShapeExtractTarget -i " + std::to_string(index) + " -om baseShapeOrig face")
                .toString();
        const std::vector<double> extracted = scene_.points(name);
        const std::vector<double>& expected = targets[static_cast<std::size_t>(index)];
        ASSERT_EQ(extracted.size(), expected.size());
        std::size_t moved = 0;
        for (std::size_t k = 0; k < expected.size(); ++k) {
            ASSERT_NEAR(extracted[k], expected[k], 1e-5) << "coordinate " << k;
            if (std::abs(expected[k] - base[k]) > 1e-4) ++moved;
        }
        EXPECT_GT(moved, 100U) << "the target is a real one";
        scene_.mel("undo");
        EXPECT_EQ(scene_.changes(before), "");
        scene_.mel("redo");
        EXPECT_EQ(scene_.points(name), extracted);
        scene_.mel("undo");
    }
}

}  // namespace
