#include <gtest/gtest.h>

#include <ostream>

#include "commandTable.h"
#include "support/meshZoo.h"
#include "support/variants.h"

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
    EXPECT_EQ(intermediate("stray"), "|plain|plainShape");
    scene_.mel(
        "connectAttr baseShapeOrig.outMesh stray.inMesh; createNode mesh -name fed; connectAttr "
        "stray.outMesh fed.inMesh");
    EXPECT_EQ(intermediate("plain"), "|plain|plainShape");
}

TEST_F(MeshEvaluate, AMeshWithoutAVisibleShapeIsItsOwnOriginal) {
    scene_.addMesh("hidden", zoo::cube());
    scene_.mel("setAttr hiddenShape.intermediateObject 1");
    EXPECT_EQ(intermediate("hidden"), "|hidden|hiddenShape");
}

TEST_F(MeshEvaluate, OnlyTheIntermediateThatFeedsTheChainCounts) {
    scene_.mel(
        "createNode mesh -name stray -parent base; setAttr stray.intermediateObject 1;"
        "connectAttr bs.originalGeometry[0] stray.inMesh");
    EXPECT_EQ(intermediate("base"), "|base|baseShapeOrig");
}

TEST_F(MeshEvaluate, AnOriginalThatFeedsOneInputOnlyCounts) {
    const Strings fed = scene_.mel("listConnections -plugs 1 -source 0 baseShapeOrig").toStringArray();
    const Strings from =
        scene_.mel("listConnections -plugs 1 -connections 1 -source 0 baseShapeOrig").toStringArray();
    for (std::size_t k = 0; k + 1 < fed.size(); ++k)
        scene_.mel("disconnectAttr " + from[2 * k] + ' ' + fed[k]);
    ASSERT_EQ(scene_.mel("listConnections -plugs 1 baseShapeOrig").toStringArray(), Strings{fed.back()});
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

struct Chain {
    const char* name;
    const char* script;  // what makes it from the blend shape of addBlendShape; null for addLegacyChain
};

void PrintTo(const Chain& chain, std::ostream* out) {
    *out << chain.name;
}

class MeshEvaluateInChain : public MeshEvaluate, public ::testing::WithParamInterface<Chain> {};

TEST_P(MeshEvaluateInChain, AnOriginalBelowAnotherTransformComesBack) {
    if (GetParam().script != nullptr) {
        scene_.mel(GetParam().script);
    } else {
        addLegacyChain(scene_);
    }
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

INSTANTIATE_TEST_SUITE_P(Chains, MeshEvaluateInChain,
                         ::testing::Values(Chain{"Legacy", nullptr}, Chain{"Today", ""},
                                           Chain{"TodayWithTweak", "deformableShape -createTweakNode base"},
                                           Chain{"TwoDeformers", "blendShape -name second base"},
                                           // The mesh is not the first of those that its deformer has.
                                           Chain{"SecondMesh",
                                                 "duplicate -name other base; delete |other|baseShapeOrig; "
                                                 "delete bs; blendShape -name bs other base;"
                                                 "aliasAttr smile bs.w[0]"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

/// Without a tweak node, what does not lead to an original leaves the shape, and the scene, as it is.
TEST_F(MeshEvaluate, AChainThatBeginsElsewhereHasNoOriginal) {
    if (variant().hasLegacyChains) GTEST_SKIP() << "each legacy chain has a tweak node";
    takeAway();
    for (const char* start : {"setAttr baseShapeOrig.intermediateObject 0",
                              "connectAttr -force bs.outputGeometry[0] bs.input[0].inputGeometry",
                              "disconnectAttr bs.outputGeometry[0] bs.input[0].inputGeometry",
                              "setAttr baseShapeOrig.intermediateObject 1;"
                              "connectAttr -force baseShapeOrig.outMesh baseShape.inMesh"}) {
        scene_.mel(start);
        const std::string before = scene_.dump();
        EXPECT_EQ(intermediate("base"), "|base|baseShape") << start;
        EXPECT_EQ(scene_.changes(before), "") << start;
    }
}

/// A second mesh on the same chain does not take the original from the first.
TEST_F(MeshEvaluate, AnOriginalStaysBesideItsOwnShape) {
    scene_.mel("createNode mesh -name second; connectAttr bs.outputGeometry[0] second.inMesh");
    const std::string before = scene_.dump();
    EXPECT_EQ(intermediate("second"), "|polySurface1|second");
    EXPECT_EQ(scene_.changes(before), "");
    // Beside a mesh that is not made from it, it is in the wrong place.
    scene_.addMesh("plain", zoo::cube());
    scene_.mel("delete second; parent -shape baseShapeOrig plain");
    EXPECT_EQ(scene_.run("dv_meshEvaluate -i base").value, Value("|base|baseShapeOrig"));
}

}  // namespace
