// Targets whose mesh is connected: their deltas are made by the deformer, and come from the mesh again when
// it changes.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commandTable.h"
#include "scratchFiles.h"
#include "support/meshZoo.h"

namespace {

const std::string kWarning =
    "A mesh is connected to item 6000 of target 6 of bs. The new deltas last until that mesh changes, and "
    "are not saved "
    "with the scene. Delete the target mesh first to keep them.";

class LiveTarget : public ::testing::Test {
  protected:
    LiveTarget() {
        addBlendShape(scene_);
        scene_.addMesh("live", zoo::openGrid());
        scene_.mel("move -r 0 3 0 live.vtx[8]; blendShape -edit -target base 6 live 1 bs; flushUndo");
    }

    Scene scene_;
};

TEST_F(LiveTarget, IsReadAlthoughNobodyHasEvaluatedTheDeformer) {
    const std::string file = scratchFile("live.json");
    scene_.mel("dv_blendShapeExportData -d -i 6 -cn live -fn \"" + file + "\" bs");
    EXPECT_NE(fileBytes(file).find("\"8\": [0, 3, 0]"), std::string::npos) << fileBytes(file);
}

TEST_F(LiveTarget, IsMirroredAlthoughNobodyHasEvaluatedTheDeformer) {
    scene_.mel("dv_blendShapeMirrorTarget -t 2 -om |base|baseShapeOrig -si 6 -ti 0 bs");
    EXPECT_EQ(deltas(scene_, 0, 6000), "6 0 3 0\n");
}

TEST_F(LiveTarget, IsSplitAlthoughNobodyHasEvaluatedTheDeformer) {
    scene_.mel("dv_blendShapeSplitTarget -i 6 -iv -1 -om |base|baseShapeOrig bs");
    EXPECT_EQ(scene_.mel("getAttr -multiIndices bs.it[0].itg[6].tw").toIntArray(), std::vector<int>{8});
}

class WriteToALiveTarget : public LiveTarget, public ::testing::WithParamInterface<const char*> {};

TEST_P(WriteToALiveTarget, WarnsOnceAndIsUndoneInSilence) {
    writeScratchFile("two.json",
                     "{\n\t\"6\": {\n\t\t\"name\": \"live\",\n\t\t\"data\": {\n\t\t\t\"6000\": "
                     "{\n\t\t\t\t\"3\": [0, 1, 0]\n\t\t\t},"
                     "\n\t\t\t\"6000\": {\n\t\t\t\t\"4\": [0, 1, 0]\n\t\t\t}\n\t\t}\n\t}\n}");
    scene_.mel("duplicate -name sculpt base; delete sculpt|baseShapeOrig; move -r 0 5 0 sculpt.vtx[2];");
    scene_.mel("setAttr bs.it[0].itg[6].tw[8] 0.5; flushUndo");
    std::string text = GetParam();
    const std::size_t file = text.find("FILE");
    if (file != std::string::npos) text.replace(file, 4, '"' + scratchFile("two.json") + '"');
    EXPECT_EQ(scene_.run(text).warnings, Strings{kWarning});
    EXPECT_EQ(scene_.run("undo").warnings.size(), text.find("Import") == std::string::npos ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Module, WriteToALiveTarget,
    ::testing::Values("dv_blendShapeReplaceTarget -i 6 -m sculptShape -om |base|baseShapeOrig bs",
                      "dv_blendShapeRemoveDeltas -i 6 bs",
                      "dv_blendShapeMirrorTarget -si 6 -ti 6 -om |base|baseShapeOrig bs",
                      "dv_blendShapeMirrorTarget -t 2 -si 0 -ti 6 -om |base|baseShapeOrig bs",
                      "dv_blendShapeEditWeights -f -i 6 bs", "dv_blendShapeImportData -d -fn FILE bs"),
    [](const auto& tested) {
        const std::string text = tested.param;
        return text.substr(3, text.find(' ') - 3) + std::to_string(tested.index);
    });

TEST_F(LiveTarget, MovesWithItsMeshAndWithoutAWarning) {
    const std::string before = scene_.dump();
    EXPECT_EQ(scene_.run("dv_blendShapeSetInbetweenPosition -i 6 -tp 5500 bs").warnings, Strings());
    EXPECT_EQ(deltas(scene_, 6, 5500), "8 0 3 0\n");
    scene_.mel("move -r 0 1 0 live.vtx[8]; undo; undo");
    scene_.points("baseShape");
    EXPECT_EQ(scene_.mel("listConnections bs.it[0].itg[6].iti[6000].igt").toStringArray(), Strings{"live"});
    EXPECT_EQ(deltas(scene_, 6, 6000), "8 0 3 0\n");
}

}  // namespace
