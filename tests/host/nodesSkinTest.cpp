#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/nodesFixture.h"
#include "nodes/skinClusterNode.h"
#include "nodes/skinWeights.h"

namespace {

using namespace nodestest;
using geometry::Matrix4;
using geometry::Vec3;
using nodes::WeightRole;

constexpr double kHalfPi = geometry::kPi / 2;

void expectNear(const Vec3& value, const Vec3& wanted, double tolerance = 1e-6) {
    EXPECT_LT(geometry::length(value - wanted), tolerance)
        << testing::PrintToString(value) << " is not " << testing::PrintToString(wanted);
}

// --- arithmetic --------------------------------------------------------------------------------------------

struct Normalization {
    const char* name;
    std::string roles;  // a letter each: Free, Given, Locked
    std::vector<double> before;
    std::vector<double> after;
    bool isKept = true;
};

void PrintTo(const Normalization& value, std::ostream* stream) {
    *stream << value.name;
}

class Normalize : public testing::TestWithParam<Normalization> {};

TEST_P(Normalize, BringsTheSumToOneAsTheRolesAllow) {
    std::vector<WeightRole> roles;
    for (const char role : GetParam().roles)
        roles.push_back(role == 'F'   ? WeightRole::Free
                        : role == 'G' ? WeightRole::Given
                                      : WeightRole::Locked);
    std::vector<double> weights = GetParam().before;
    // Distances of 1, 2, 3, ...: shares of 1, 1/16, 1/81, ... where they count.
    const auto distances = [&] {
        std::vector<double> result;
        for (std::size_t k = 0; k < weights.size(); ++k)
            result.push_back(static_cast<double>(k + 1));
        return result;
    };
    EXPECT_EQ(nodes::normalizeWeights(weights, roles, distances), GetParam().isKept);
    for (std::size_t k = 0; k < weights.size(); ++k)
        EXPECT_NEAR(weights[k], GetParam().after[k], 1e-12) << k;
}

INSTANTIATE_TEST_SUITE_P(
    Weights, Normalize,
    testing::Values(Normalization{"freeOnesFillTheRest", "GFF", {0.5, 0.2, 0.8}, {0.5, 0.1, 0.4}},
                    Normalization{"lockedOnesStay", "GFL", {0.5, 0.9, 0.25}, {0.5, 0.25, 0.25}},
                    Normalization{"tooMuchGivenIsCut", "GGF", {1, 3, 0.5}, {0.25, 0.75, 0}, false},
                    Normalization{"tooMuchGivenBesideALock", "GLF", {1, 0.25, 0.5}, {0.75, 0.25, 0}, false},
                    Normalization{"lockedPastOneLeavesNothing", "GL", {0.5, 1.5}, {0, 1.5}, false},
                    Normalization{"emptyFreeOnesShareByDistance",
                                  "GFF",
                                  {0.5, 0, 0},
                                  {0.5, 0.5 * 81 / 97, 0.5 * 16 / 97}},
                    Normalization{"oneFreeOneTakesTheRest", "GLF", {0.25, 0.5, 0}, {0.25, 0.5, 0.25}},
                    Normalization{"nobodyCanTakeTheRest", "GL", {0.25, 0.25}, {0.75, 0.25}, false},
                    Normalization{"givenZeroesWithNobodyElse", "GG", {0, 0}, {0.5, 0.5}, false},
                    Normalization{"nothingGivenIsScaled", "FFL", {1, 2, 0.25}, {0.25, 0.5, 0.25}},
                    Normalization{"nothingGivenAndNothingThere", "FF", {0, 0}, {0, 0}},
                    Normalization{"aFullGivenEmptiesTheRest", "GFF", {1, 0.5, 0.5}, {1, 0, 0}}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(ClosestWeights, FallWithDistanceAndTakeTheNearestFew) {
    const std::vector<double> weights = nodes::closestWeights({2, 1, 4}, 2.0, 2);
    EXPECT_NEAR(weights[0], 0.2, 1e-12) << "a quarter of the nearest one";
    EXPECT_NEAR(weights[1], 0.8, 1e-12);
    EXPECT_EQ(weights[2], 0.0);
    EXPECT_EQ(nodes::closestWeights({3, 0, 0, 1}, 4.0, 4), (std::vector<double>{0, 0.5, 0.5, 0}));
    EXPECT_EQ(nodes::closestWeights({1e-200, 1e200}, 4.0, 9), (std::vector<double>{1, 0}));
    EXPECT_TRUE(nodes::closestWeights({}, 4.0, 1).empty());
}

// --- joints ------------------------------------------------------------------------------------------------

class Joints : public testing::Test {
  protected:
    NodeRef joint(const std::string& name, const NodeRef& parent, const Vec3& place) {
        const NodeRef node = scene.createNode(*scene.types().find("joint"), name, parent.get());
        nodes::compensateParentScale(scene, node);
        nodes::setTranslation(scene, node, place);
        return node;
    }
    Vec3 image(const NodeRef& node, const Vec3& point) {
        return geometry::transformPoint(point, nodes::worldMatrix(scene, node));
    }

    Scene scene;
    NodeRef upper = joint("upper", nullptr, vec(0, 1, 0));
    NodeRef lower = joint("lower", upper, vec(2, 0, 0));
};

TEST_F(Joints, OrientTurnsAfterTheRotation) {
    nodes::setRotation(scene, upper, {kHalfPi, 0, 0});
    scene.set("upper.jointOrientZ", kHalfPi);
    // x: y becomes z. Then z: x becomes y.
    expectNear(image(upper, vec(0, 1, 0)), vec(0, 1, 1));
    expectNear(image(upper, vec(1, 0, 0)), vec(0, 2, 0));
    expectNear(image(lower, vec(0, 0, 0)), vec(0, 3, 0));
}

TEST_F(Joints, AParentJointsScaleMovesItsChildrenButDoesNotScaleThem) {
    nodes::setScale(scene, upper, {3, 1, 2});
    expectNear(image(lower, vec(0, 0, 0)), vec(6, 1, 0));
    expectNear(image(lower, vec(1, 1, 1)), vec(7, 2, 1));
    scene.set("lower.segmentScaleCompensate", 0);
    expectNear(image(lower, vec(1, 1, 1)), vec(9, 2, 2));
    scene.set("lower.segmentScaleCompensate", 1);
    nodes::setScale(scene, upper, {0, 1, 1});
    expectNear(image(lower, vec(0, 1, 0)), vec(0, 2, 0));
}

TEST_F(Joints, AMatrixThatIsSetComesBackFromItsParts) {
    nodes::setScale(scene, upper, {3, 1, 2});
    scene.set("lower.jointOrientY", 0.4);
    scene.set("lower.rotateAxisX", 0.7);
    geometry::TransformParts parts;
    parts.translate = {1, 2, 3};
    parts.rotate = {0.3, -0.2, 0.9};
    parts.scale = {1, 2, 0.5};
    const Matrix4 wanted = geometry::composeTransform(parts);
    nodes::setLocalMatrix(scene, lower, wanted);
    EXPECT_TRUE(geometry::isEquivalent(nodes::localMatrix(scene, lower), wanted, 1e-12));
    EXPECT_EQ(scene.get("lower.jointOrientY"), 0.4);
}

// --- deformation -------------------------------------------------------------------------------------------

class Skin : public Joints {
  protected:
    Skin() : shape(scene.row("arm", 4)) {}

    NodeRef bind() {
        return nodes::createSkinCluster(scene, shape, {upper, lower}, nodes::SkinOptions(), {});
    }
    void weigh(const NodeRef& skin, int vertex, double ofUpper, double ofLower) {
        nodes::WeightRows row;
        row.influences = {0, 1};
        row.weights = {ofUpper, ofLower};
        row.endRow(vertex);
        nodes::setWeightRows(scene, skin, row);
    }

    NodeRef shape;
};

TEST_F(Skin, BlendsTheMotionsOfRotatedJoints) {
    const NodeRef skin = bind();
    expectNear(scene.point(shape, 3), vec(3, 0, 0));
    weigh(skin, 0, 1, 0);
    weigh(skin, 3, 0.25, 0.75);
    nodes::setRotation(scene, lower, {0, 0, kHalfPi});
    // About lower at (2, 1, 0): (3, 0) goes by (1, -1) -> (1, 1) to (3, 2).
    expectNear(scene.point(shape, 3), vec(3, 1.5, 0));
    expectNear(scene.point(shape, 0), vec(0, 0, 0));
    nodes::setTranslation(scene, upper, {0, 1, 4});
    expectNear(scene.point(shape, 3), vec(3, 1.5, 4));
    expectNear(scene.point(shape, 0), vec(0, 0, 4));
}

TEST_F(Skin, WorksInTheWorldOfTheBoundMesh) {
    const NodeRef transform = shape->parent()->ref();
    nodes::setTranslation(scene, transform, {0, 5, 0});
    nodes::setScale(scene, transform, {2, 1, 1});
    const NodeRef skin = bind();
    weigh(skin, 1, 0, 1);
    expectNear(scene.point(shape, 1), vec(1, 0, 0));
    nodes::setRotation(scene, lower, {0, 0, kHalfPi});
    // In the world (2, 5, 0), about (2, 1, 0) to (-2, 1, 0); back in the mesh's space.
    expectNear(scene.point(shape, 1), vec(-1, -4, 0));
}

TEST_F(Skin, ComesAfterABlendShapeUpstream) {
    nodes::createDeformer(scene, "blendShape", {shape});
    const NodeRef target = scene.moved(shape, "target", {{2, vec(0, 1, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, scene.node("blendShape1"), 0, 0, target, 1.0, false).ok);
    const NodeRef skin = bind();
    EXPECT_EQ(scene.source(scene.at("skinCluster1.ip[0].ig")), scene.at("blendShape1.og[0]"));
    EXPECT_EQ(scene.source(scene.at("skinCluster1.orggeom[0]")), scene.at("armShapeOrig.o"));
    EXPECT_EQ(scene.source(scene.at("armShape.i")), scene.at("skinCluster1.og[0]"));
    weigh(skin, 2, 0, 1);
    nodes::setRotation(scene, lower, {0, 0, kHalfPi});
    expectNear(scene.point(shape, 2), vec(3, 1, 0));
    scene.set("blendShape1.w[0]", 1);
    expectNear(scene.point(shape, 2), vec(2, 1, 0));
    scene.move(scene.node("armShapeOrig"), 2, vec(0, 0, 2));
    EXPECT_NEAR(scene.point(shape, 2).z, 2, 1e-6) << "an edit upstream is seen downstream";
}

TEST_F(Skin, TakesWeightsAsTheyAreUnlessItNormalizesThem) {
    const NodeRef skin = bind();
    nodes::setTranslation(scene, upper, {0, 3, 0});
    weigh(skin, 1, 1, 3);
    expectNear(scene.point(shape, 1), vec(4, 8, 0));
    scene.set("skinCluster1.normalizeWeights", 2);
    expectNear(scene.point(shape, 1), vec(1, 2, 0));
    weigh(skin, 1, 0, 0);
    expectNear(scene.point(shape, 1), vec(1, 0, 0));
    EXPECT_TRUE(nodes::weightRows(skin, {1}).influences.empty()) << "weights of 0 are left out";
    scene.set("skinCluster1.weightList[1].weights[7]", 1);
    expectNear(scene.point(shape, 1), vec(1, 0, 0));
    scene.set("skinCluster1.weightList[99].weights[0]", 1);
    EXPECT_EQ(scene.points(shape).size(), 12U);
}

TEST_F(Skin, AgreesWithTheProductOfMatrices) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    const auto anyVector = [&] { return vec(number(random), number(random), number(random)); };
    const auto pose = [&](const NodeRef& node) {
        nodes::setRotation(scene, node, anyVector());
        nodes::setTranslation(scene, node, anyVector());
        nodes::setScale(scene, node, vec(2, 1, 1) + anyVector() * 0.5);
    };
    for (const NodeRef& node : {upper, lower, shape->parent()->ref()})
        pose(node);
    const Matrix4 geometryMatrix = nodes::worldMatrix(scene, shape);
    const Matrix4 bindUpper = nodes::worldMatrix(scene, upper).inverse().matrix;
    const Matrix4 bindLower = nodes::worldMatrix(scene, lower).inverse().matrix;
    const NodeRef skin = bind();
    for (int round = 0; round < 20; ++round) {
        pose(upper);
        pose(lower);
        const double weight = 0.5 + 0.5 * number(random);
        weigh(skin, 2, weight, 1 - weight);
        const Vec3 point = geometry::transformPoint(vec(2, 0, 0), geometryMatrix);
        const Vec3 byUpper = geometry::transformPoint(point, bindUpper * nodes::worldMatrix(scene, upper));
        const Vec3 byLower = geometry::transformPoint(point, bindLower * nodes::worldMatrix(scene, lower));
        expectNear(scene.point(shape, 2),
                   geometry::transformPoint(byUpper * weight + byLower * (1 - weight),
                                            geometryMatrix.inverse().matrix),
                   1e-5);
    }
}

// --- dual quaternions --------------------------------------------------------------------------------------

/// A quarter turn of the lower joint about x, the axis of both joints, which is 1 away from the vertices.
class Twisted : public Skin {
  protected:
    Twisted() {
        nodes::setRotation(scene, lower, {kHalfPi, 0, 0});
        weigh(skin, 3, 0.5, 0.5);
        weigh(skin, 2, 0, 1);
    }
    void useMethod(int method) { scene.set("skinCluster1.skinningMethod", method); }

    NodeRef skin = bind();
};

TEST_F(Twisted, KeepsItsDistanceFromTheAxisByDualQuaternions) {
    const double half = std::sqrt(0.5);
    expectNear(scene.point(shape, 3), vec(3, 0.5, -0.5));
    useMethod(1);
    expectNear(scene.point(shape, 3), vec(3, 1 - half, -half));
    weigh(skin, 3, 2, 2);
    expectNear(scene.point(shape, 3), vec(3, 1 - half, -half));
    useMethod(2);
    weigh(skin, 3, 0.5, 0.5);
    expectNear(scene.point(shape, 3), vec(3, 0.5, -0.5));
    scene.set("skinCluster1.blendWeights[3]", 0.25);
    expectNear(scene.point(shape, 3), vec(3, 0.75 * 0.5 + 0.25 * (1 - half), -0.75 * 0.5 - 0.25 * half));
}

TEST_F(Twisted, GoesTheShorterWayBetweenOppositeQuaternions) {
    // By 200 degrees one quaternion is on the other side: halfway are -80 degrees.
    nodes::setRotation(scene, lower, {geometry::kPi * 200 / 180, 0, 0});
    useMethod(1);
    const double angle = -geometry::kPi * 80 / 180;
    expectNear(scene.point(shape, 3), vec(3, 1 - std::cos(angle), -std::sin(angle)));
}

TEST_F(Twisted, FollowsOneInfluenceLikeClassicSkinning) {
    const NodeRef transform = shape->parent()->ref();
    nodes::setScale(scene, transform, {2, 1, 1});
    scene.setData(scene.at("skinCluster1.gm"), nodes::matrixData(nodes::worldMatrix(scene, shape)));
    nodes::setTranslation(scene, upper, {4, 5, 6});
    nodes::setRotation(scene, upper, {1, 2, 3});
    const Vec3 classic = scene.point(shape, 2);
    useMethod(1);
    expectNear(scene.point(shape, 2), classic);
}

TEST_F(Twisted, ScalesOnlyAsItIsTold) {
    weigh(skin, 2, 1, 0);
    useMethod(1);
    nodes::setScale(scene, upper, {3, 1, 2});
    expectNear(scene.point(shape, 2), vec(2, 0, 0));
    scene.set("skinCluster1.dqsSupportNonRigid", 1);
    expectNear(scene.point(shape, 2), vec(6, 0, 0));
    scene.set("skinCluster1.dqsSupportNonRigid", 0);
    nodes::setTripleAt(scene, scene.at("skinCluster1.dqsScale"), {5, 5, 5});
    // About the joint at (0, 1, 0).
    expectNear(scene.point(shape, 2), vec(10, -4, 0));
}

// --- binding and undo --------------------------------------------------------------------------------------

TEST_F(Skin, BindingAddingAndRemovingAreUndoneExactly) {
    NodeRef skin;
    const NodeRef extra = scene.make("transform", "extra");
    EXPECT_EQ(scene.undoRedoFault([&] { skin = bind(); }), "");
    ASSERT_EQ(nodes::weightRows(skin).vertices.size(), 4U);
    EXPECT_EQ(nodes::skinClusterOf(scene, shape), skin);
    EXPECT_EQ(nodes::skinnedShape(scene, skin), shape);
    EXPECT_TRUE(scene.at("arm.tx").node()->state(scene.at("arm.tx").key()).isLocked);
    EXPECT_EQ(scene.undoRedoFault([&] { nodes::addInfluence(scene, skin, extra); }), "");
    EXPECT_EQ(nodes::influenceIndex(skin, extra), 2);
    scene.set("extra.liw", 1);
    EXPECT_TRUE(nodes::isInfluenceLocked(scene, skin, 2));
    weigh(skin, 1, 0.5, 0.25);
    scene.set("skinCluster1.wl[1].w[2]", 0.25);
    EXPECT_EQ(scene.undoRedoFault([&] { nodes::removeInfluence(scene, skin, 0); }), "");
    const nodes::WeightRows row = nodes::weightRows(skin, {1});
    EXPECT_EQ(row.influences, (std::vector<int>{1, 2}));
    EXPECT_EQ(row.weights, (std::vector<double>{0.75, 0.25})) << "the locked one stays";
    EXPECT_EQ(scene.undoRedoFault([&] { weigh(skin, 3, 0.5, 0.5); }), "");
    EXPECT_EQ(scene.undoRedoFault([&] { weigh(skin, 50, 0, 1); }), "") << "a row that was not there";
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({upper}); }), "");
    EXPECT_EQ(nodes::influencesOf(skin).size(), 1U);
}

}  // namespace
