#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "commandTable.h"
#include "support/meshZoo.h"
#include "targets/correctivePoints.h"

namespace {

const std::string kExtract = "dv_sculptExtractDeltaMesh -m armShape -om armShapeOrig ";

/// A sphere "arm" with the intermediate shape "armShapeOrig", and its pose duplicated and edited as "sculpt".
class SculptedArm {
  public:
    explicit SculptedArm(const std::string& deformation) {
        scene.addMesh("arm", zoo::sphereWithPoles());
        scene.mel("select -clear; joint -position -1 0 0 -name low; joint -position 0 0 0 -name high;" +
                  deformation + "; select -clear");
        scene.mel(
            "duplicate -name sculpt arm; delete sculpt|armShapeOrig; move -r 0.2 0.3 -0.1 sculpt.vtx[3:12]; "
            "move -r 0 0 0.5 "
            "sculpt.vtx[20]");
        scene.mel("move -r -0.05 0.01 0 sculpt.vtx[30:40]; select -clear; flushUndo");
    }

    Scene scene;
};

/// Two joints with blended weights on the arm, the second one rotated.
const std::string kSkin =
    "skinCluster -maximumInfluences 2 low high arm;"
    "skinPercent -transformValue low 0.25 -transformValue high 0.75 skinCluster1 arm.vtx[0:15];"
    "setAttr high.rotate 20 -35 50;";

double largestDifference(const std::vector<double>& a, const std::vector<double>& b) {
    double largest = a.size() == b.size() ? 0.0 : std::numeric_limits<double>::infinity();
    for (std::size_t k = 0; k < a.size() && k < b.size(); ++k)
        largest = std::max(largest, std::fabs(a[k] - b[k]));
    return largest;
}

struct Deformation {
    const char* name;
    std::string script;
};

void PrintTo(const Deformation& deformation, std::ostream* out) {
    *out << deformation.name;
}

class EveryDeformation : public ::testing::TestWithParam<Deformation> {};

TEST_P(EveryDeformation, TheCorrectiveBeforeItGivesTheSculpt) {
    SculptedArm arm(GetParam().script);
    Scene& scene = arm.scene;
    const std::vector<double> sculpt = scene.points("sculptShape");
    ASSERT_GT(largestDifference(scene.points("armShape"), sculpt), 0.1);
    const std::vector<double> rest = scene.points("armShapeOrig");
    const std::vector<double> posed = scene.points("armShape");
    EXPECT_EQ(scene.mel(kExtract + "sculptShape"), Value("sculpt_corrective"));
    EXPECT_EQ(scene.points("armShapeOrig"), rest);
    EXPECT_EQ(scene.points("armShape"), posed);
    scene.mel("blendShape -frontOfChain -name fix sculpt_corrective arm; setAttr fix.w[0] 1");
    EXPECT_LT(largestDifference(scene.points("armShape"), sculpt), 1e-4);
}

INSTANTIATE_TEST_SUITE_P(
    Corrective, EveryDeformation,
    ::testing::Values(
        Deformation{"None", "blendShape -name bs arm"}, Deformation{"Skin", kSkin},
        Deformation{"UnevenScale", kSkin + "setAttr low.scale 2 0.5 1; setAttr high.scale 1 0.1 3"},
        Deformation{"HalfEnvelope", kSkin + "setAttr skinCluster1.envelope 0.5"},
        Deformation{"StoredDeltasBefore",
                    kSkin +
                        "blendShape -frontOfChain -name bs arm;"
                        "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 1 vtx[5:9];"
                        "setAttr bs.it[0].itg[0].iti[6000].ipt -type pointArray 5 0 1 0 1 0 0 1 1 1 0 0 1 "
                        "0 0 -1 1 .5 .5 0 1; setAttr bs.w[0] 0.75"},
        Deformation{"TweaksBefore",
                    kSkin + "deformableShape -createTweakNode arm; move -r 0 0.5 0 arm.vtx[9]"},
        Deformation{"HistoryBefore",
                    "duplicate -name source arm; connectAttr source.outMesh armShape.inMesh;" + kSkin},
        Deformation{"FarFromTheOrigin",
                    "move -r 100 150 -80 arm.vtx[0:41]; move -r 100 150 -80 low;" + kSkin}),
    [](const auto& tested) { return std::string(tested.param.name); });

/// Along x twice as far: half the offset of the sculpt, and nothing but it.
TEST(SculptExtract, AScaleHalvesTheOffset) {
    Scene scene;
    scene.addMesh("arm", zoo::openGrid());
    scene.mel(
        "select -clear; joint -name low; skinCluster low arm; setAttr low.scaleX 2;"
        "duplicate -name sculpt arm; delete sculpt|armShapeOrig; move -r 1 1 -2 sculpt.vtx[6]");
    std::vector<double> expected = scene.points("armShapeOrig");
    expected[18] += 0.5;
    expected[19] += 1;
    expected[20] -= 2;
    scene.mel(kExtract + "sculptShape");
    EXPECT_EQ(scene.points("sculpt_corrective"), expected);
    EXPECT_EQ(scene.mel("sets -q initialShadingGroup").toStringArray().back(),
              scene.mel("listRelatives -shapes sculpt_corrective").toStringArray().front());
}

TEST(SculptExtract, AnEqualSculptGivesACopyOfTheOriginal) {
    SculptedArm arm(kSkin);
    arm.scene.mel(kExtract + "armShape");
    EXPECT_EQ(arm.scene.points("arm_corrective"), arm.scene.points("armShapeOrig"));
}

TEST(SculptExtract, VerticesThatTheSculptLacksStay) {
    Scene scene;
    scene.addMesh("arm", zoo::openGrid(4, 4));
    scene.addMesh("shorter", zoo::openGrid(4, 3));
    scene.addMesh("longer", zoo::openGrid(4, 5));
    scene.mel("blendShape arm");
    // Without a deformation the vertices go to where the sculpt has them.
    const std::vector<double> rest = scene.points("armShapeOrig");
    std::vector<double> expected = scene.points("longerShape");
    expected.resize(rest.size());
    scene.mel(kExtract + "longerShape");
    EXPECT_EQ(scene.points("longer_corrective"), expected);
    expected = scene.points("shorterShape");
    expected.insert(expected.end(), rest.begin() + static_cast<std::ptrdiff_t>(expected.size()), rest.end());
    scene.mel(kExtract + "shorterShape");
    EXPECT_EQ(scene.points("shorter_corrective"), expected);
}

class SingularDeformation : public ::testing::TestWithParam<Deformation> {};

/// What cannot be inverted is said, and no vertex is lost to it.
TEST_P(SingularDeformation, WarnsOfTheSculptedVertices) {
    SculptedArm arm(GetParam().script);
    const Outcome outcome = arm.scene.run(kExtract + "sculptShape");
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.warnings,
              Strings{"The deformation has no inverse at 22 of the sculpted vertices. Their "
                      "corrective positions mean nothing."});
    const std::vector<double> rest = arm.scene.points("armShapeOrig");
    const std::vector<double> points = arm.scene.points("sculpt_corrective");
    ASSERT_EQ(points.size(), rest.size());
    for (std::size_t k = 0; k < points.size(); ++k) {
        EXPECT_TRUE(std::isfinite(points[k]));
        if (k < 9 || k > 122) {
            EXPECT_EQ(points[k], rest[k]) << "no offset, nothing to be led back";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Corrective, SingularDeformation,
    ::testing::Values(
        Deformation{"FlatScale", "skinCluster low high arm; setAttr low.scale 1 0 1"},
        // Half of each vertex is turned half round.
        Deformation{
            "WeightsThatCancelOut",
            "skinCluster low high arm; skinPercent -tv low 0.5 -tv high 0.5 skinCluster1 arm.vtx[0:41];"
            "setAttr high.rotateX 180"},
        Deformation{"UnrelatedMesh",
                    "blendShape arm; string $fed[] = `listConnections -plugs 1 armShapeOrig.worldMesh[0]`;"
                    "disconnectAttr armShapeOrig.worldMesh[0] $fed[0]"}),
    [](const auto& tested) { return std::string(tested.param.name); });

/// Nearly flat: whether it has an inverse cannot be told from single-precision points, but the host finds
/// one.
TEST(SculptExtract, WhatMayHaveNoInverseIsLedBackByTheHost) {
    ProbedDeformation deformation;
    deformation.deformed = MFloatPointArray(1, MFloatPoint(1, 2, 0));
    deformation.moved[0] = MFloatPointArray(1, MFloatPoint(3, 2, 0));
    deformation.moved[1] = MFloatPointArray(1, MFloatPoint(1, 3, 0));
    deformation.moved[2] = MFloatPointArray(1, MFloatPoint(1, 2, 1e-7F));
    const MFloatPointArray sculpt(1, MFloatPoint(7, 5, 4e-7F));
    MFloatPointArray points(1, MFloatPoint(10, 20, 30));
    EXPECT_EQ(solveCorrective(deformation, sculpt, points), 1U);
    EXPECT_NEAR(points[0].x, 13, 1e-5);
    EXPECT_NEAR(points[0].y, 23, 1e-5);
    EXPECT_NEAR(points[0].z, 34, 1e-5);
}

TEST(SculptExtract, PointsThatAreNoNumbersStay) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float huge = std::numeric_limits<float>::max();
    ProbedDeformation deformation;
    deformation.deformed = MFloatPointArray(4, MFloatPoint(1, 1, 1));
    deformation.moved[0] = MFloatPointArray(4, MFloatPoint(1.0078125F, 1, 1));
    deformation.moved[1] = MFloatPointArray(4, MFloatPoint(1, 2, 1));
    deformation.moved[2] = MFloatPointArray(4, MFloatPoint(1, 1, 2));
    deformation.moved[1][3].y = nan;
    MFloatPointArray sculpt(4, MFloatPoint(2, 1, 1));
    sculpt[0].x = nan;
    sculpt[1].x = huge;
    MFloatPointArray points(4, MFloatPoint(5, 5, 5));
    EXPECT_EQ(solveCorrective(deformation, sculpt, points), 3U);
    EXPECT_EQ(points[0], MFloatPoint(5, 5, 5));
    EXPECT_EQ(points[1], MFloatPoint(5, 5, 5));
    EXPECT_EQ(points[2], MFloatPoint(133, 5, 5));
    EXPECT_TRUE(std::isfinite(points[3].x) && std::isfinite(points[3].y) && std::isfinite(points[3].z));
}

TEST(SculptExtract, RedoReadsTheMeshesAgain) {
    SculptedArm arm("blendShape arm");
    Scene& scene = arm.scene;
    scene.mel(kExtract + "sculptShape");
    scene.mel("undo; undoInfo -stateWithoutFlush off; move -r 0 1 0 sculpt.vtx[2]");
    scene.mel("undoInfo -stateWithoutFlush on; redo");
    EXPECT_EQ(scene.points("sculpt_corrective"), scene.points("sculptShape"));
}

TEST(SculptExtract, AMeshDeletedByHandAfterARedoIsMadeAnew) {
    SculptedArm arm("blendShape arm");
    Scene& scene = arm.scene;
    scene.mel(kExtract + "sculptShape");
    const std::string after = scene.dump();
    scene.mel("undo; redo");
    EXPECT_EQ(scene.changes(after), "");
    scene.mel("undoInfo -stateWithoutFlush off; delete sculpt_corrective; undoInfo -stateWithoutFlush on");
    EXPECT_EQ(scene.run("undo").errors, Strings());
    EXPECT_EQ(scene.run("redo").errors, Strings());
    EXPECT_EQ(scene.changes(after), "");
}

TEST(SculptExtract, NodesDeletedByHandDoNoHarm) {
    SculptedArm arm(kSkin);
    Scene& scene = arm.scene;
    const auto byHand = [&](const std::string& text) {
        scene.mel("undoInfo -stateWithoutFlush off;" + text + "; undoInfo -stateWithoutFlush on");
    };
    const std::string before = scene.dump();
    scene.mel(kExtract + "sculptShape");
    byHand("delete sculpt_corrective");
    scene.mel("undo");
    EXPECT_EQ(scene.changes(before), "");
    byHand("delete sculpt");
    EXPECT_EQ(scene.run("redo").errors.front(), "One of the meshes is not in the scene any more.");
}

}  // namespace
