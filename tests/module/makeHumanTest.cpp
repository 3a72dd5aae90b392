// Extraction on a character of production size, where its folder is at hand.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "fixtures.h"

namespace {

class MakeHuman : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(folder_ / "base.obj")) GTEST_SKIP() << "needs the meshes in " << folder_;
    }

    void import(Scene& scene, const std::string& file, const std::string& name) {
        const std::string path = (folder_ / file).lexically_normal().generic_string();
        const Outcome outcome =
            scene.run("string $new[] = `file -import -type \"OBJ\" -returnNewNodes \"" + path +
                      "\"`; string $mesh[] = `ls -type mesh $new`; string $up[] = `listRelatives -parent "
                      "$mesh[0]`; rename $up[0] " +
                      name);
        ASSERT_TRUE(outcome.ok) << ::testing::PrintToString(outcome.errors);
    }

    const std::filesystem::path folder_ =
        std::filesystem::path(DELVEN_SOURCE_DIR) / "../shared/data/makehuman";
};

TEST_F(MakeHuman, TargetsComeBackPointByPoint) {
    Scene scene;
    import(scene, "base.obj", "base");
    import(scene, "eye-left-closure.obj", "eye");
    import(scene, "mouth-corner-puller.obj", "corner");
    const std::vector<std::vector<double>> targets{scene.points("eye"), scene.points("corner")};
    const std::vector<double> base = scene.points("base");
    ASSERT_EQ(base.size(), 3U * 19158U);
    scene.mel("blendShape -name face eye corner base; delete eye corner; flushUndo");
    const std::string before = scene.dump();
    for (const int index : {0, 1}) {
        const std::string name =
            scene.mel("dv_blendShapeExtractTarget -i " + std::to_string(index) + " -om baseShapeOrig face")
                .toString();
        const std::vector<double> extracted = scene.points(name);
        const std::vector<double>& expected = targets[static_cast<std::size_t>(index)];
        ASSERT_EQ(extracted.size(), expected.size());
        std::size_t moved = 0;
        for (std::size_t k = 0; k < expected.size(); ++k) {
            ASSERT_NEAR(extracted[k], expected[k], 1e-5) << "coordinate " << k;
            if (std::abs(expected[k] - base[k]) > 1e-4) ++moved;
        }
        EXPECT_GT(moved, 100U) << "the target is a real one";
        scene.mel("undo");
        EXPECT_EQ(scene.changes(before), "");
        scene.mel("redo");
        EXPECT_EQ(scene.points(name), extracted);
        scene.mel("undo");
    }
}

}  // namespace
