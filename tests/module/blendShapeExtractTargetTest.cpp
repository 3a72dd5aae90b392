#include <gtest/gtest.h>

#include "fixtures.h"
#include "support/meshZoo.h"

namespace {

using Strings = std::vector<std::string>;

class ExtractTarget : public ::testing::Test {
  protected:
    ExtractTarget() { addBlendShape(scene_); }

    /// Points of "base" before any deformation, plus the deltas given per vertex.
    std::vector<double> basePlus(const std::vector<std::pair<int, std::vector<double>>>& deltas) {
        std::vector<double> points = scene_.points("|base|baseShapeOrig");
        for (const auto& [vertex, delta] : deltas) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                points[3 * static_cast<std::size_t>(vertex) + axis] += delta[axis];
        }
        return points;
    }

    Scene scene_;
};

TEST_F(ExtractTarget, MakesAMeshOfOriginalPlusDeltas) {
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(name, extractedName(6000));
    EXPECT_EQ(scene_.points(name), basePlus({{3, {0, 1, 0}}, {7, {0.5, 0, 0}}, {12, {0, 0, -2}}}));
}

TEST_F(ExtractTarget, TakesAnInBetweenAtFullStrength) {
    const std::string name =
        scene_.mel("dv_blendShapeExtractTarget -index 4 -targetItem 5500 -originalMesh baseShapeOrig bs")
            .toString();
    EXPECT_EQ(name, extractedName(5500));
    EXPECT_EQ(scene_.points(name), basePlus({{5, {0, 0.25, 0}}}));
}

TEST_F(ExtractTarget, IgnoresWeightsEnvelopeAndDeformationOfTheUsersNode) {
    scene_.mel(
        "setAttr bs.envelope 0.25; setAttr bs.weight[4] 1;"
        "setAttr bs.it[0].itg[0].tw[3] 0; setAttr bs.it[0].bw[7] 0; move -r 0 5 0 base.vtx[1]");
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(scene_.points(name), basePlus({{3, {0, 1, 0}}, {7, {0.5, 0, 0}}, {12, {0, 0, -2}}}));
}

TEST_F(ExtractTarget, LeavesOneShadedTransformAndNothingElse) {
    const Strings before = scene_.mel("ls").toStringArray();
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    Strings added;
    for (const std::string& node : scene_.mel("ls").toStringArray()) {
        if (std::find(before.begin(), before.end(), node) == before.end()) added.push_back(node);
    }
    ASSERT_EQ(added.size(), 2U) << ::testing::PrintToString(added);
    EXPECT_EQ(scene_.mel("listRelatives -children " + name).size(), 1U);
    EXPECT_EQ(scene_.mel("sets -isMember initialShadingGroup " + name), host::mel::Value(1));
    EXPECT_EQ(scene_.mel("listConnections -type blendShape " + name).size(), 0U);
}

TEST_F(ExtractTarget, AnEmptyItemYieldsTheOriginalAndGetsAZeroDelta) {
    scene_.mel("setAttr bs.w[9] 0");
    const std::string name =
        scene_.mel("dv_blendShapeExtractTarget -i 9 -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(scene_.points(name), basePlus({}));
    EXPECT_EQ(deltas(scene_, 9, 6000), "0 0 0 0\n");
}

TEST_F(ExtractTarget, KeepsUnsortedAndRepeatedDeltasAligned) {
    scene_.mel(
        "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 3 vtx[12] vtx[3] vtx[7];"
        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 3 0 0 -2 1 0 1 0 1 0.5 0 0 1");
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(scene_.points(name), basePlus({{3, {0, 1, 0}}, {7, {0.5, 0, 0}}, {12, {0, 0, -2}}}));
}

TEST_F(ExtractTarget, DeltasBeyondTheMeshDoNoHarm) {
    scene_.mel(
        "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 2 vtx[3] vtx[4000000];"
        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 2 0 1 0 1 7 7 7 1");
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(scene_.points(name), basePlus({{3, {0, 1, 0}}}));
}

TEST_F(ExtractTarget, TheOriginalMayBeAnyMeshOfTheTopology) {
    scene_.mel("duplicate -name other base; move -r 0 0 9 other.vtx[3]");
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om otherShape bs").toString();
    std::vector<double> expected = basePlus({{3, {0, 1, 9}}, {7, {0.5, 0, 0}}, {12, {0, 0, -2}}});
    EXPECT_EQ(scene_.points(name), expected);
}

TEST_F(ExtractTarget, WorksWithALiveTarget) {
    scene_.addMesh("live", zoo::openGrid());
    scene_.mel("move -r 0 3 0 live.vtx[8]; blendShape -edit -target base 6 live 1 bs");
    const std::string name =
        scene_.mel("dv_blendShapeExtractTarget -i 6 -om |base|baseShapeOrig bs").toString();
    EXPECT_EQ(scene_.points(name), basePlus({{8, {0, 3, 0}}}));
}

TEST_F(ExtractTarget, UndoDeletesTheMeshAndRedoMakesItAgain) {
    const std::string before = scene_.dump();
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    const std::vector<double> points = scene_.points(name);
    for (int round = 0; round < 2; ++round) {
        scene_.mel("undo");
        EXPECT_EQ(scene_.changes(before), "");
        scene_.mel("redo");
        EXPECT_EQ(scene_.points(name), points);
    }
}

TEST_F(ExtractTarget, UndoAfterTheMeshWasDeletedByHandIsHarmless) {
    const std::string name = scene_.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
    scene_.mel("undoInfo -stateWithoutFlush off; delete " + name + "; undoInfo -stateWithoutFlush on");
    const std::string before = scene_.dump();
    const Outcome outcome = scene_.run("undo");
    EXPECT_TRUE(outcome.ok);
    EXPECT_TRUE(outcome.errors.empty());
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(ExtractTarget, RedoAfterTheNodeWentReportsAndMakesNothing) {
    scene_.mel(
        "dv_blendShapeExtractTarget -om baseShapeOrig bs; undo;"
        "undoInfo -stateWithoutFlush off; delete bs; undoInfo -stateWithoutFlush on");
    const std::string before = scene_.dump();
    const Outcome outcome = scene_.run("redo");
    EXPECT_EQ(outcome.errors, Strings{"The blend shape node is not in the scene any more."});
    EXPECT_EQ(scene_.changes(before), "");
    scene_.run("undo");
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(ExtractTarget, RedoAfterTheOriginalWentReportsAndMakesNothing) {
    scene_.mel(
        "duplicate -name other base; dv_blendShapeExtractTarget -om otherShape bs; undo;"
        "undoInfo -stateWithoutFlush off; delete other; undoInfo -stateWithoutFlush on");
    const std::string before = scene_.dump();
    EXPECT_EQ(scene_.run("redo").errors, Strings{"Error setting components."});
    EXPECT_EQ(scene_.changes(before), "");
}

TEST_F(ExtractTarget, WorksInObjectSpaceWhateverTheTransformsAbove) {
    scene_.mel(
        "group -name upper base; setAttr upper.scale 3 1 -2; setAttr upper.rotateZ 30; setAttr "
        "base.translateX 7");
    const std::string name =
        scene_.mel("dv_blendShapeExtractTarget -om |upper|base|baseShapeOrig bs").toString();
    std::vector<double> expected = scene_.points("|upper|base|baseShapeOrig");
    expected[3 * 3 + 1] += 1.0;
    expected[3 * 7] += 0.5;
    expected[3 * 12 + 2] -= 2.0;
    EXPECT_EQ(scene_.points(name), expected);
    EXPECT_EQ(scene_.mel("xform -query -matrix -worldSpace " + name).toFloatArray(),
              std::vector<double>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

/// Every item of every target of every mesh of the zoo comes back as the mesh it was made from.
TEST(ExtractTargetProperty, ExtractionInvertsTheTargetOnEveryMesh) {
    for (const zoo::NamedMesh& entry : zoo::allMeshes()) {
        const std::size_t count = static_cast<std::size_t>(entry.mesh.topology().vertexCount());
        if (count == 0) continue;
        SCOPED_TRACE(entry.name);
        Scene scene;
        scene.addMesh("base", entry.mesh);
        scene.addMesh("shape", entry.mesh);
        for (std::size_t vertex = 0; vertex < count; vertex += 2) {
            scene.mel("move -r -os " + host::mel::Value(0.25 * static_cast<double>(vertex + 1)).toString() +
                      " -1 0.5 shape.vtx[" + std::to_string(vertex) + "]");
        }
        const std::vector<double> shape = scene.points("shape");
        scene.mel("blendShape -name bs shape base; delete shape");
        const std::string name =
            scene.mel("dv_blendShapeExtractTarget -om |base|baseShapeOrig bs").toString();
        const std::vector<double> extracted = scene.points(name);
        ASSERT_EQ(extracted.size(), shape.size());
        for (std::size_t k = 0; k < shape.size(); ++k)
            EXPECT_NEAR(extracted[k], shape[k], 1e-5) << k;
    }
}

}  // namespace
