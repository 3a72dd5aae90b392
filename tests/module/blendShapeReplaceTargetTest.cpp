#include <gtest/gtest.h>

#include <cmath>

#include "fixtures.h"
#include "support/meshZoo.h"

namespace {

class ReplaceTarget : public ::testing::Test {
  protected:
    ReplaceTarget() {
        addBlendShape(scene_);
        makeSculpt();
    }

    /// A copy of the base with a shape of its own alone.
    void makeSculpt() { scene_.mel("duplicate -name sculpt base; delete |sculpt|baseShapeOrig"); }

    void replace(const std::string& arguments) {
        EXPECT_EQ(
            scene_.mel("dv_blendShapeReplaceTarget -m sculptShape -om baseShapeOrig " + arguments + " bs"),
            host::mel::Value(1));
    }

    Scene scene_;
};

TEST_F(ReplaceTarget, StoresWhatDiffersInVertexOrder) {
    scene_.mel("move -r 0.5 0 -2 sculpt.vtx[11]; move -r 0 0.25 0 sculpt.vtx[4]");
    replace("");
    EXPECT_EQ(deltas(scene_, 0, 6000), "4 0 0.25 0\n11 0.5 0 -2\n");
    scene_.mel("setAttr bs.smile 1");
    EXPECT_EQ(scene_.points("baseShape"), scene_.points("sculptShape"));
}

TEST_F(ReplaceTarget, TheSmallestDifferenceCounts) {
    scene_.mel("move -r 0 1e-45 0 sculpt.vtx[9]");
    replace("");
    EXPECT_EQ(deltas(scene_, 0, 6000), "9 0 " + host::mel::Value(1.401298464e-45).toString() + " 0\n");
}

TEST_F(ReplaceTarget, AnEqualMeshLeavesNoDeltas) {
    replace("-i 4");
    EXPECT_EQ(deltas(scene_, 4, 6000), "");
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[4].iti[6000].ipt").size(), 0U);
    EXPECT_EQ(deltas(scene_, 4, 5500), "5 0 0.25 0\n") << "other items stay";
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 4, 6000), "5 0 1 0\n6 0 1 0\n19 1 1 1\n");
}

TEST_F(ReplaceTarget, FurtherVerticesOfTheNewMeshAreIgnored) {
    // The grid and a row of quads more: the first 20 vertices are the same.
    scene_.addMesh("longer", zoo::openGrid(4, 4));
    scene_.mel("dv_blendShapeReplaceTarget -m longerShape -om baseShapeOrig bs");
    EXPECT_EQ(deltas(scene_, 0, 6000).find("20 "), std::string::npos);
    scene_.mel("setAttr bs.smile 1");
    std::vector<double> first = scene_.points("longerShape");
    first.resize(60);
    EXPECT_EQ(scene_.points("baseShape"), first);
}

/// The points that are read are those of the evaluated meshes, without their transforms.
TEST_F(ReplaceTarget, TransformsDoNotMatterButDeformersDo) {
    scene_.mel(
        "move 5 6 7 sculpt; scale 2 2 2 base; blendShape -name other sculpt;"
        "setAttr other.it[0].itg[0].iti[6000].ict -type componentList 1 vtx[1];"
        "setAttr other.it[0].itg[0].iti[6000].ipt -type pointArray 1 0 4 0 1; setAttr other.w[0] 0.5");
    replace("");
    EXPECT_EQ(deltas(scene_, 0, 6000), "1 0 2 0\n");
}

TEST_F(ReplaceTarget, RedoReadsTheMeshesAgain) {
    scene_.mel("move -r 0 1 0 sculpt.vtx[2]");
    replace("");
    scene_.mel("undo; undoInfo -stateWithoutFlush off; move -r 0 1 0 sculpt.vtx[6]");
    scene_.mel("undoInfo -stateWithoutFlush on; redo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "2 0 1 0\n6 0 1 0\n");
}

TEST_F(ReplaceTarget, NodesDeletedByHandDoNoHarm) {
    const auto byHand = [&](const std::string& text) {
        scene_.mel("undoInfo -stateWithoutFlush off;" + text + "; undoInfo -stateWithoutFlush on");
    };
    replace("");
    byHand("delete sculpt");
    scene_.mel("undo");
    EXPECT_EQ(deltas(scene_, 0, 6000), "3 0 1 0\n7 0.5 0 0\n12 0 0 -2\n") << "undo needs no mesh";
    const std::string gone = "The blend shape node or one of the meshes is not in the scene any more.";
    EXPECT_EQ(scene_.run("redo").errors.front(), gone);
    makeSculpt();
    replace("");
    byHand("delete bs");
    EXPECT_EQ(scene_.run("undo").errors, std::vector<std::string>());
    EXPECT_EQ(scene_.run("redo").errors.front(), gone);
}

class ReplaceTargetOn : public ::testing::TestWithParam<zoo::NamedMesh> {};

TEST_P(ReplaceTargetOn, GivesTheSculptAndTakesItBack) {
    Scene scene;
    scene.addMesh("base", GetParam().mesh);
    scene.mel("duplicate -name sculpt base; blendShape -name bs base; setAttr bs.w[0] 0");
    const std::vector<double> original = scene.points("baseShape");
    for (std::size_t vertex = 0; 3 * vertex < original.size(); vertex += 3)
        scene.mel("move -r 0.3 -0.1 0.7 sculpt.vtx[" + std::to_string(vertex) + "]");
    scene.mel("dv_blendShapeReplaceTarget -m sculptShape -om baseShapeOrig bs; setAttr bs.w[0] 1; flushUndo");
    const std::vector<double> deformed = scene.points("baseShape");
    const std::vector<double> sculpt = scene.points("sculptShape");
    ASSERT_EQ(deformed.size(), sculpt.size());
    for (std::size_t k = 0; k < sculpt.size(); ++k)
        EXPECT_NEAR(deformed[k], sculpt[k], 1e-6);
    const std::string before = scene.dump();
    scene.mel("dv_blendShapeReplaceTarget -m baseShapeOrig -om baseShapeOrig bs");
    EXPECT_EQ(scene.points("baseShape"), original);
    scene.mel("undo");
    EXPECT_EQ(scene.changes(before), "");
}

std::vector<zoo::NamedMesh> meshesWithVertices() {
    std::vector<zoo::NamedMesh> meshes;
    for (zoo::NamedMesh& named : zoo::allMeshes()) {
        if (named.mesh.vertexCount() > 0) meshes.push_back(std::move(named));
    }
    return meshes;
}

INSTANTIATE_TEST_SUITE_P(Zoo, ReplaceTargetOn, ::testing::ValuesIn(meshesWithVertices()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
