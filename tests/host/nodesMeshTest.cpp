#include <gtest/gtest.h>

#include "host/nodesFixture.h"

namespace {

using namespace nodestest;

constexpr double kHalfTurn = 3.14159265358979323846;

// --- transforms --------------------------------------------------------------------------------------------

TEST(Transform, multipliesWithItsParents) {
    Scene scene;
    const NodeRef shape = scene.row("thing", 2);
    const NodeRef thing = scene.node("thing");
    const NodeRef group = scene.make("transform", "group");
    scene.reparent(*thing, group.get());
    nodes::setTranslation(scene, thing, vec(1, 0, 0));
    nodes::setScale(scene, thing, vec(2, 2, 2));
    nodes::setRotation(scene, group, vec(0, 0, kHalfTurn / 2));
    // Vertex 1 at (1 0 0): scaled to 2, moved to 3, turned onto y.
    const auto world = geometry::transformPoint(scene.point(shape, 1), nodes::worldMatrix(scene, shape));
    EXPECT_NEAR(world.x, 0.0, 1e-12);
    EXPECT_NEAR(world.y, 3.0, 1e-12);
    EXPECT_EQ(nodes::localMatrix(scene, shape), geometry::Matrix4());
    nodes::setTranslation(scene, group, vec(0, 0, 5));
    EXPECT_EQ(nodes::worldMatrix(scene, shape).m[3][2], 5.0) << "a change above is seen below";
    scene.set("thing.inheritsTransform", 0);
    EXPECT_EQ(nodes::worldMatrix(scene, shape).row(3), vec(1, 0, 0));
    EXPECT_EQ(nodes::matrixOf(scene.data(scene.at("group.wim[0]"))).m[3][2], -5.0);
    EXPECT_EQ(nodes::matrixOf(scene.data(scene.at("thing.pm[0]"))).m[3][2], 5.0);
}

TEST(Transform, reparentingChangesTheWorldMatrix) {
    Scene scene;
    const NodeRef a = scene.make("transform", "a");
    const NodeRef b = scene.make("transform", "b");
    nodes::setTranslation(scene, a, vec(7, 0, 0));
    nodes::setTranslation(scene, b, vec(0, 1, 0));
    EXPECT_EQ(nodes::worldMatrix(scene, b).row(3), vec(0, 1, 0));
    scene.reparent(*b, a.get());
    EXPECT_EQ(nodes::worldMatrix(scene, b).row(3), vec(7, 1, 0));
    scene.reparent(*b, nullptr);
    EXPECT_EQ(nodes::worldMatrix(scene, b).row(3), vec(0, 1, 0));
}

TEST(Transform, takesALocalMatrixAroundItsPivots) {
    Scene scene;
    const NodeRef source = scene.make("transform", "source");
    nodes::setTranslation(scene, source, vec(1, 2, 3));
    nodes::setRotation(scene, source, vec(0.3, -0.4, 0.5));
    nodes::setScale(scene, source, vec(2, 3, 4));
    nodes::setShear(scene, source, vec(0.1, 0.2, 0.3));
    const NodeRef target = scene.make("transform", "target");
    nodes::setRotateOrder(scene, target, geometry::RotateOrder::Zxy);
    nodes::setTripleAt(scene, scene.at("target.rotatePivot"), vec(5, 0, 1));
    nodes::setTripleAt(scene, scene.at("target.scalePivot"), vec(0, 6, 0));
    nodes::setTripleAt(scene, scene.at("target.rotateAxis"), vec(0.2, 0, 0.1));
    nodes::setLocalMatrix(scene, target, nodes::localMatrix(scene, source));
    EXPECT_TRUE(
        geometry::isEquivalent(nodes::localMatrix(scene, target), nodes::localMatrix(scene, source), 1e-9));
    EXPECT_EQ(nodes::tripleAt(scene, scene.at("target.rotatePivot")), vec(5, 0, 1));
}

// --- meshes ------------------------------------------------------------------------------------------------

TEST(ChildPlug, isFoundByNameWhateverTheOrder) {
    Scene scene;
    const auto pair = [](const char* first, const char* second) {
        return graph::compound(
            "pair", "pr",
            {graph::number(first, std::string(1, *first)), graph::number(second, std::string(1, *second))});
    };
    scene.types().add({"forwards", "node", {pair("left", "right")}});
    scene.types().add({"backwards", "node", {pair("right", "left")}});
    for (const char* type : {"forwards", "backwards"}) {
        const Plug compound = scene.createNode(*scene.types().find(type))->plug("pair");
        EXPECT_EQ(nodes::childPlug(compound, "left").attribute().longName(), "left") << type;
        EXPECT_EQ(nodes::childPlug(compound, "r").attribute().longName(), "right") << type;
    }
}

TEST(Mesh, addsItsPntsToWhatComesIn) {
    Scene scene;
    const NodeRef shape = scene.row("thing", 3);
    EXPECT_EQ(shape->name(), "thingShape");
    scene.set("thingShape.pnts[1].pnty", 2);
    scene.set("thingShape.pnts[9].pnty", 2);
    EXPECT_EQ(scene.points(shape), (std::vector<float>{0, 0, 0, 1, 2, 0, 2, 0, 0}))
        << "vertex 9 does not exist";
    nodes::setMeshPoints(scene, shape, {5, 5, 5, 6, 6, 6, 7, 7, 7});
    EXPECT_EQ(scene.points(shape), (std::vector<float>{5, 5, 5, 6, 6, 6, 7, 7, 7}));
    EXPECT_EQ(scene.elementCount(shape->plug("pnts")), 0);
    EXPECT_EQ(scene.get("thingShape.boundingBoxMaxX"), 7.0);
    EXPECT_EQ(scene.get("thingShape.bbsz"), 2.0);
}

TEST(Mesh, withHistoryKeepsNewPointsAsPnts) {
    Scene scene;
    const NodeRef creator = scene.make("polyPlane");
    scene.set("polyPlane1.subdivisionsWidth", 1);
    scene.set("polyPlane1.subdivisionsHeight", 1);
    const NodeRef shape = nodes::createMesh(scene, geometry::Mesh(), "pPlane1", nullptr);
    EXPECT_EQ(shape->name(), "pPlaneShape1");
    scene.join("polyPlane1.output", "pPlaneShape1.inMesh");
    ASSERT_EQ(nodes::meshOf(scene, shape)->mesh.vertexCount(), 4);
    const geometry::Vec3 old = scene.point(shape, 2);
    scene.move(shape, 2, vec(0, 3, 0));
    EXPECT_EQ(scene.elements(shape->plug("pnts")), (std::vector<int>{2}));
    EXPECT_EQ(scene.point(shape, 2), old + vec(0, 3, 0));
    scene.set("polyPlane1.width", 2);
    EXPECT_EQ(scene.point(shape, 2), vec(2 * old.x, 3, old.z)) << "history goes on below the edit";
    scene.deleteNodes({creator});
    EXPECT_EQ(scene.point(shape, 2), vec(2 * old.x, 3, old.z)) << "the last incoming mesh stays";
}

TEST(Mesh, keepsItsAddressWhileItDoesNotChange) {
    Scene scene;
    const NodeRef shape = scene.row("thing", 3);
    scene.set("thingShape.pnts[1].pnty", 2);
    const nodes::MeshPtr before = nodes::meshOf(scene, shape);
    nodes::setTranslation(scene, scene.node("thing"), vec(1, 1, 1));
    scene.set("thingShape.pnts[1].pnty", 2);
    EXPECT_EQ(nodes::meshOf(scene, shape), before);
    EXPECT_EQ(graph::dataAs<nodes::MeshData>(scene.data(shape->plug("worldMesh").element(0))), before);
    scene.set("thingShape.pnts[1].pnty", 3);
    EXPECT_NE(nodes::meshOf(scene, shape), before);
}

TEST(Mesh, copiesBakeAndCountUp) {
    Scene scene;
    const NodeRef shape = nodes::createMesh(scene, zoo::cube(), "pSphere1", nullptr);
    nodes::createMesh(scene, zoo::cube(), "pSphere3", nullptr);
    scene.set("pSphereShape1.pnts[1].pnty", 2);
    nodes::setTranslation(scene, scene.node("pSphere1"), vec(4, 0, 0));
    nodes::setIntermediate(scene, shape, true);
    const NodeRef copy = nodes::copyMesh(scene, shape, nullptr);
    EXPECT_EQ(scene.fullPath(*copy), "|pSphere2|pSphereShape2");
    EXPECT_EQ(scene.points(copy), scene.points(shape));
    EXPECT_EQ(scene.elementCount(copy->plug("pnts")), 0);
    EXPECT_FALSE(nodes::isIntermediate(scene, *copy));
    EXPECT_EQ(nodes::worldMatrix(scene, copy), geometry::Matrix4());
    EXPECT_EQ(nodes::copyMesh(scene, shape, nullptr)->parent()->name(), "pSphere4");
    const NodeRef below = nodes::copyMesh(scene, shape, scene.node("pSphere3").get());
    EXPECT_EQ(below->parent()->name(), "pSphere3");
    EXPECT_EQ(nodes::createMesh(scene, zoo::fan(), "", nullptr)->name(), "polySurfaceShape1");
}

TEST(Mesh, standsForItsTransformWhenItIsTheOnlyVisibleShape) {
    Scene scene;
    const NodeRef shape = nodes::createMesh(scene, zoo::cube(), "box", nullptr);
    const NodeRef hidden = nodes::createMeshShape(scene, zoo::fan(), "other", *scene.node("box"));
    EXPECT_EQ(scene.shapeOf(scene.node("box")), nullptr);
    nodes::setIntermediate(scene, hidden, true);
    EXPECT_EQ(scene.shapeOf(scene.node("box")), shape);
    EXPECT_EQ(scene.shapeOf(hidden), hidden);
    EXPECT_EQ(scene.shapeOf(scene.node("lambert1")), nullptr);
    const graph::NameMatches all = graph::findAll(scene, "box.f[*]");
    ASSERT_EQ(all.items.size(), 1U);
    EXPECT_EQ(all.items[0].component->count(), 6);
    EXPECT_EQ(graph::findAll(scene, "box.vtx[6:20]").items[0].component->elements(),
              (std::vector<int>{6, 7}));
    EXPECT_TRUE(graph::findAll(scene, "box.e[12]").items.empty());
}

class Creators : public testing::TestWithParam<std::pair<const char*, std::array<int, 3>>> {};

TEST_P(Creators, makeTheirMeshOnDemand) {
    const auto& [type, counts] = GetParam();
    Scene scene;
    scene.make(type, "maker");
    const NodeRef shape = nodes::createMesh(scene, geometry::Mesh(), "made", nullptr);
    scene.join("maker.out", "madeShape.i");
    const nodes::MeshPtr first = nodes::meshOf(scene, shape);
    EXPECT_EQ(first->mesh.vertexCount(), counts[0]);
    EXPECT_EQ(first->mesh.edgeCount(), counts[1]);
    EXPECT_EQ(first->mesh.faceCount(), counts[2]);
    scene.set("maker.caching", 1);
    EXPECT_EQ(nodes::meshOf(scene, shape), first) << "what does not matter does not make a new mesh";
    scene.set("maker.subdivisionsHeight", 5);
    EXPECT_NE(nodes::meshOf(scene, shape)->mesh.faceCount(), counts[2]);
}

INSTANTIATE_TEST_SUITE_P(All, Creators,
                         testing::Values(std::pair("polyCube", std::array{8, 12, 6}),
                                         std::pair("polySphere", std::array{382, 780, 400}),
                                         std::pair("polyPlane", std::array{121, 220, 100}),
                                         std::pair("polyTorus", std::array{400, 800, 400})));

TEST(PolyUnite, putsItsPartsWhereTheirMatricesSay) {
    Scene scene;
    scene.row("a", 2);
    scene.row("b", 1);
    nodes::setTranslation(scene, scene.node("b"), vec(0, 9, 0));
    scene.make("polyUnite");
    const NodeRef shape = nodes::createMesh(scene, geometry::Mesh(), "", nullptr);
    scene.join("aShape.outMesh", "polyUnite1.inputPoly[0]");
    scene.join("bShape.outMesh", "polyUnite1.inputPoly[1]");
    scene.join("bShape.worldMatrix[0]", "polyUnite1.inputMat[1]");
    scene.join("polyUnite1.output", "polySurfaceShape1.inMesh");
    EXPECT_EQ(scene.points(shape), (std::vector<float>{0, 0, 0, 1, 0, 0, 0, 9, 0}));
    nodes::setTranslation(scene, scene.node("b"), vec(0, 8, 0));
    EXPECT_EQ(scene.point(shape, 2), vec(0, 8, 0));
}

// --- colour sets -------------------------------------------------------------------------------------------

TEST(Colors, goIntoTheCurrentSetAndComeBackByUndo) {
    using nodes::Color;
    using nodes::kUnsetColor;
    Scene scene;
    const NodeRef shape = scene.row("thing", 3);
    EXPECT_TRUE(nodes::vertexColors(scene, shape).empty());
    EXPECT_EQ(nodes::currentColorSet(scene, shape), "");
    const Color red{1, 0, 0, 1};
    EXPECT_EQ(scene.undoRedoFault([&] {
        nodes::setVertexColors(scene, shape, {2, 7, -1}, {red, red, red});
    }),
              "");
    EXPECT_EQ(nodes::currentColorSet(scene, shape), "colorSet1");
    EXPECT_EQ(nodes::vertexColors(scene, shape), (std::vector<Color>{kUnsetColor, kUnsetColor, red}));
    EXPECT_EQ(nodes::createColorSet(scene, shape, "colorSet1"), "colorSet2");
    EXPECT_EQ(nodes::currentColorSet(scene, shape), "colorSet1") << "a further set is not current";
    EXPECT_TRUE(nodes::setCurrentColorSet(scene, shape, "colorSet2"));
    EXPECT_FALSE(nodes::setCurrentColorSet(scene, shape, "none"));
    EXPECT_EQ(nodes::vertexColors(scene, shape), std::vector<Color>(3, kUnsetColor));
    EXPECT_FALSE(nodes::renameColorSet(scene, shape, "colorSet2", "colorSet1"));
    EXPECT_TRUE(nodes::renameColorSet(scene, shape, "colorSet2", "map"));
    EXPECT_EQ(nodes::currentColorSet(scene, shape), "map");
    EXPECT_TRUE(nodes::deleteColorSet(scene, shape, "map"));
    EXPECT_EQ(nodes::currentColorSet(scene, shape), "colorSet1");
    nodes::removeVertexColors(scene, shape, {0, 2});
    EXPECT_EQ(nodes::vertexColors(scene, shape), std::vector<Color>(3, kUnsetColor));
    EXPECT_EQ(nodes::colorSetNames(scene, shape), (std::vector<std::string>{"colorSet1"}));
}

// --- sets --------------------------------------------------------------------------------------------------

class Sets : public testing::Test {
  protected:
    Sets()
        : box(nodes::createMesh(scene, zoo::cube(), "box", nullptr)),
          first(scene.node("initialShadingGroup")) {
        second = scene.make("shadingEngine", "second");
        nodes::addToPartition(scene, scene.node("renderPartition"), second);
    }
    graph::SelectionItem faces(int from, int to) const {
        return {box, {}, graph::Component(graph::ComponentKind::Face, {from, to})};
    }
    static std::vector<int> elementsOf(const std::vector<graph::SelectionItem>& items) {
        return items.size() == 1 && items[0].component ? items[0].component->elements()
                                                       : std::vector<int>{-1};
    }

    Scene scene;
    NodeRef box;
    NodeRef first;
    NodeRef second;
};

TEST_F(Sets, aShadingGroupTakesTheShapeAndIsLeftByForce) {
    const graph::SelectionItem transform{scene.node("box"), {}, {}};
    EXPECT_EQ(nodes::addToSet(scene, first, transform), "");
    ASSERT_EQ(nodes::members(scene, first).size(), 1U);
    EXPECT_EQ(nodes::members(scene, first)[0].node, box);
    EXPECT_EQ(nodes::addToSet(scene, first, transform), "");
    EXPECT_EQ(nodes::members(scene, first).size(), 1U) << "a second time changes nothing";
    EXPECT_NE(nodes::addToSet(scene, second, transform), "") << "one set of a partition at a time";
    EXPECT_EQ(nodes::forceElement(scene, second, transform), "");
    EXPECT_TRUE(nodes::members(scene, first).empty());
    EXPECT_EQ(nodes::setsOf(scene, box), (std::vector<NodeRef>{second}));
}

TEST_F(Sets, facesLeaveTheRestOfTheShapeBehind) {
    nodes::addToSet(scene, first, {box, {}, {}});
    EXPECT_EQ(nodes::forceElement(scene, second, faces(1, 2)), "");
    EXPECT_EQ(elementsOf(nodes::members(scene, second)), (std::vector<int>{1, 2}));
    EXPECT_EQ(elementsOf(nodes::members(scene, first)), (std::vector<int>{0, 3, 4, 5}));
    EXPECT_EQ(nodes::forceElement(scene, second, faces(3, 3)), "");
    EXPECT_EQ(elementsOf(nodes::members(scene, second)), (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(nodes::isMember(scene, second, faces(2, 3)));
    EXPECT_FALSE(nodes::isMember(scene, second, faces(3, 4)));
    EXPECT_EQ(nodes::forceElement(scene, first, {box, {}, {}}), "");
    EXPECT_TRUE(nodes::members(scene, second).empty());
    ASSERT_EQ(nodes::members(scene, first).size(), 1U);
    EXPECT_FALSE(nodes::members(scene, first)[0].component);
    EXPECT_TRUE(scene.nodesOfType("groupId").empty());
}

TEST_F(Sets, takeTransformsAndOtherNodesAndAreUndone) {
    const NodeRef set = scene.make("objectSet", "set1");
    EXPECT_EQ(scene.undoRedoFault([&] {
        nodes::addToSet(scene, set, {scene.node("box"), {}, {}});
        nodes::addToSet(scene, set, {scene.node("lambert1"), {}, {}});
        nodes::addToSet(scene, set, faces(0, 1));
        nodes::removeFromSet(scene, set, faces(1, 1));
        nodes::addToSet(scene, first, {box, {}, {}});
        nodes::forceElement(scene, second, faces(4, 5));
    }),
              "");
    const std::vector<graph::SelectionItem> items = nodes::members(scene, set);
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].node->name(), "box");
    EXPECT_EQ(items[1].component->elements(), (std::vector<int>{0}));
    EXPECT_EQ(items[2].node->name(), "lambert1");
    EXPECT_TRUE(nodes::removeFromSet(scene, set, {scene.node("box"), {}, {}}));
    EXPECT_FALSE(nodes::removeFromSet(scene, set, {scene.node("box"), {}, {}}));
    EXPECT_NE(nodes::addToSet(scene, set, {box, scene.at("box.tx"), {}}), "");
}

TEST_F(Sets, forgetDeletedMembers) {
    nodes::addToSet(scene, first, {box, {}, {}});
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("box")}); }), "");
    EXPECT_TRUE(nodes::members(scene, first).empty());
}

}  // namespace
