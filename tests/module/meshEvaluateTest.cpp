#include <gtest/gtest.h>

#include "commandTable.h"
#include "support/meshZoo.h"

namespace {

class MeshEvaluate : public ::testing::Test {
  protected:
    MeshEvaluate() { addBlendShape(scene_); }

    /// Moves the original shape below another transform, or to where it was.
    void takeAway() { scene_.mel("createNode transform -name away; parent -shape baseShapeOrig away"); }

    std::string intermediate(const std::string& mesh) {
        return scene_.mel("dv_meshEvaluate -i " + mesh).toString();
    }

    Scene scene_;
};

TEST_F(MeshEvaluate, AMeshWithoutDeformersIsItsOwnOriginal) {
    scene_.addMesh("plain", zoo::cube());
    EXPECT_EQ(intermediate("plain"), "|plain|plainShape");
    // A stray intermediate shape that feeds nothing, or one with other vertices, is none of its own.
    scene_.mel("createNode mesh -name stray -parent plain; setAttr stray.intermediateObject 1");
    EXPECT_EQ(intermediate("plain"), "|plain|plainShape");
    scene_.mel(
        "connectAttr baseShapeOrig.outMesh stray.inMesh; createNode mesh -name fed; connectAttr "
        "stray.outMesh fed.inMesh");
    EXPECT_EQ(intermediate("plain"), "|plain|plainShape");
}

TEST_F(MeshEvaluate, OnlyTheIntermediateThatFeedsTheChainCounts) {
    scene_.mel(
        "createNode mesh -name stray -parent base; setAttr stray.intermediateObject 1;"
        "connectAttr bs.originalGeometry[0] stray.inMesh");
    EXPECT_EQ(intermediate("base"), "|base|baseShapeOrig");
}

TEST_F(MeshEvaluate, EverySuspectIsListedInTheOrderOfTheChildren) {
    scene_.mel(
        "createNode mesh -name spare -parent base; setAttr spare.intermediateObject 1;"
        "connectAttr baseShapeOrig.outMesh spare.inMesh; createNode mesh -name fed;"
        "connectAttr spare.outMesh fed.inMesh");
    const Outcome outcome = scene_.run("dv_meshEvaluate -i baseShape");
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(
        outcome.infos,
        (Strings{"Possible excessive intermediate: :baseShapeOrig", "Possible excessive intermediate: :spare",
                 "Please remove all unnecessary shape nodes.\nA deformed mesh usually has only two "
                 "shape nodes; the deformed shape and the original shape."}));
}

TEST_F(MeshEvaluate, AnOriginalBelowAnotherTransformComesBack) {
    addLegacyChain(scene_);
    EXPECT_EQ(intermediate("base"), "|base|baseShapeOrig");
    scene_.mel("setAttr bs.smile 1; group -name all base");
    const std::vector<double> deformed = scene_.points("baseShape");
    takeAway();
    scene_.mel("flushUndo");
    const Outcome outcome = scene_.run("dv_meshEvaluate -i baseShape");
    EXPECT_EQ(outcome.value, Value("|all|base|baseShapeOrig"));
    EXPECT_EQ(outcome.warnings,
              Strings{"The intermediate shape |away|baseShapeOrig is not a child of |all|base "
                      "and has been re-parented."});
    EXPECT_EQ(scene_.points("baseShape"), deformed);
    const std::string after = scene_.dump();
    scene_.run("undo");
    EXPECT_EQ(scene_.changes(after), "") << "there is no undo";
    EXPECT_EQ(intermediate("base"), "|all|base|baseShapeOrig") << "and nothing to be said any more";
}

/// The way back leads through tweak and groupParts nodes only.
TEST_F(MeshEvaluate, InTodaysChainTheOriginalIsFoundBesideItsShapeOnly) {
    takeAway();
    const std::string before = scene_.dump();
    EXPECT_EQ(intermediate("base"), "|base|baseShape");
    EXPECT_EQ(scene_.changes(before), "");
    scene_.mel("parent -shape baseShapeOrig base; deformableShape -createTweakNode base");
    EXPECT_EQ(intermediate("base"), "|base|baseShapeOrig");
}

}  // namespace
