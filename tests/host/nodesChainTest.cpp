// How deformers of a mesh are chained, what comes beside them, and what goes with them.
#include <gtest/gtest.h>

#include "host/nodesFixture.h"
#include "nodes/blendShapeTargets.h"
#include "nodes/skinClusterNode.h"

namespace {

using namespace nodestest;

std::vector<std::string> namesOf(const std::vector<NodeRef>& nodes) {
    std::vector<std::string> names;
    for (const NodeRef& node : nodes)
        names.push_back(node->name());
    return names;
}

class Chain : public testing::Test {
  protected:
    Chain() : shape(scene.row("head", 4)) {}
    bool isFedBy(const std::string& destination, const std::string& source) const {
        return scene.source(scene.at(destination)) == scene.at(source);
    }

    Scene scene;
    NodeRef shape;
};

TEST_F(Chain, theFirstDeformerGetsAnOriginalShape) {
    scene.set("headShape.pnts[2].pntz", 5);
    const std::vector<float> before = scene.points(shape);
    const NodeRef blend = nodes::createDeformer(scene, "blendShape", {shape});
    EXPECT_EQ(blend->name(), "blendShape1");
    EXPECT_TRUE(isFedBy("blendShape1.ip[0].ig", "headShapeOrig.w[0]"));
    EXPECT_TRUE(isFedBy("blendShape1.orggeom[0]", "headShapeOrig.o"));
    EXPECT_TRUE(isFedBy("headShape.i", "blendShape1.og[0]"));
    const NodeRef original = scene.node("headShapeOrig");
    EXPECT_TRUE(nodes::isIntermediate(scene, *original));
    EXPECT_EQ(shape->parent()->children()[1], original.get());
    EXPECT_EQ(scene.points(shape), before);
    EXPECT_EQ(scene.points(original), before);
    EXPECT_EQ(scene.elementCount(shape->plug("pnts")), 0);
    EXPECT_EQ(scene.shapeOf(scene.node("head")), shape);
    EXPECT_EQ(nodes::baseShapes(scene, blend), (std::vector<NodeRef>{shape}));
}

TEST_F(Chain, aFurtherDeformerStandsNextToTheShape) {
    nodes::createDeformer(scene, "blendShape", {shape});
    nodes::createDeformer(scene, "blendShape", {shape}, "corrective");
    EXPECT_TRUE(isFedBy("corrective.ip[0].ig", "blendShape1.og[0]"));
    EXPECT_TRUE(isFedBy("corrective.orggeom[0]", "headShapeOrig.o"));
    EXPECT_TRUE(isFedBy("headShape.i", "corrective.og[0]"));
    EXPECT_EQ(namesOf(nodes::deformersOf(scene, shape)),
              (std::vector<std::string>{"corrective", "blendShape1"}));
    EXPECT_EQ(nodes::deformedShape(scene, scene.node("blendShape1"), 0), shape);
    EXPECT_EQ(nodes::originalShape(scene, shape)->name(), "headShapeOrig");
    EXPECT_EQ(scene.node("headShapeOrig1"), nullptr);
}

TEST_F(Chain, constructionHistoryMovesToTheOriginal) {
    scene.make("polyCube");
    const NodeRef box = nodes::createMesh(scene, geometry::Mesh(), "box", nullptr);
    scene.join("polyCube1.out", "boxShape.i");
    nodes::createDeformer(scene, "blendShape", {box, shape});
    EXPECT_TRUE(isFedBy("boxShapeOrig.i", "polyCube1.out"));
    EXPECT_TRUE(isFedBy("blendShape1.ip[0].ig", "boxShapeOrig.w[0]"));
    EXPECT_TRUE(isFedBy("blendShape1.ip[1].ig", "headShapeOrig.w[0]"));
    EXPECT_EQ(nodes::geometryIndexOf(scene, scene.node("blendShape1"), shape), 1);
    scene.set("polyCube1.width", 4);
    EXPECT_EQ(std::abs(scene.point(box, 0).x), 2.0);
    scene.move(scene.node("headShapeOrig"), 1, vec(0, 0, 7));
    EXPECT_EQ(scene.point(shape, 1), vec(1, 0, 7)) << "an edit upstream is seen downstream";
}

TEST_F(Chain, aTweakNodeStandsFirstAndTakesEdits) {
    scene.set("headShape.pnts[2].pntz", 5);
    const std::vector<float> before = scene.points(shape);
    nodes::createDeformer(scene, "blendShape", {shape});
    scene.set("headShape.pnts[3].pntx", 1);
    const NodeRef tweak = nodes::createTweakNode(scene, shape);
    EXPECT_EQ(nodes::createTweakNode(scene, shape), tweak);
    EXPECT_TRUE(isFedBy("tweak1.ip[0].ig", "headShapeOrig.w[0]"));
    EXPECT_TRUE(isFedBy("blendShape1.ip[0].ig", "tweak1.og[0]"));
    EXPECT_TRUE(isFedBy("headShape.twl", "tweak1.vl[0].vt[0]"));
    EXPECT_EQ(scene.get("tweak1.vl[0].vt[3].vx"), 1.0);
    EXPECT_EQ(scene.elementCount(shape->plug("pnts")), 0);
    nodes::offsetVertices(scene, shape, {1, 99}, {vec(0, 2, 0), vec(1, 1, 1)});
    EXPECT_EQ(scene.get("tweak1.vl[0].vt[1].vy"), 2.0);
    std::vector<float> expected = before;
    expected[3 * 3] += 1;
    expected[3 * 1 + 1] += 2;
    EXPECT_EQ(scene.points(shape), expected);
}

TEST_F(Chain, tweaksAreRelativeOrAbsoluteAndScaledByTheEnvelope) {
    nodes::createTweakNode(scene, shape);
    scene.set("tweak1.vl[0].vt[2].vx", 10);
    scene.set("tweak1.vl[0].vt[50].vx", 10);
    EXPECT_EQ(scene.point(shape, 2), vec(12, 0, 0));
    scene.set("tweak1.envelope", 0.5);
    EXPECT_EQ(scene.point(shape, 2), vec(7, 0, 0));
    scene.set("tweak1.relativeTweak", 0);
    EXPECT_EQ(scene.point(shape, 2), vec(6, 0, 0)) << "half way from 2 to 10";
    EXPECT_EQ(scene.point(shape, 3), vec(3, 0, 0));
    scene.set("tweak1.nodeState", 1);
    EXPECT_EQ(scene.point(shape, 2), vec(2, 0, 0));
}

TEST_F(Chain, aGroupRestrictsItsDeformer) {
    const NodeRef blend = nodes::createDeformer(scene, "blendShape", {shape});
    scene.setData(scene.at("blendShape1.it[0].itg[0].iti[6000].ipt"),
                  pointList({{0, 1, 0, 1}, {0, 2, 0, 1}, {0, 3, 0, 1}, {0, 4, 0, 1}}));
    scene.setData(scene.at("blendShape1.it[0].itg[0].iti[6000].ict"), vertexList({{0, 3}}));
    scene.set("blendShape1.w[0]", 1);
    scene.make("groupParts");
    scene.make("groupId");
    scene.join("headShapeOrig.w[0]", "groupParts1.ig");
    scene.join("groupParts1.og", "blendShape1.ip[0].ig");
    scene.join("groupId1.id", "groupParts1.gi");
    scene.join("groupId1.id", "blendShape1.ip[0].gi");
    scene.setData(scene.at("groupParts1.ic"), vertexList({{1, 1}, {3, 9}}));
    EXPECT_EQ(scene.points(shape), (std::vector<float>{0, 0, 0, 1, 2, 0, 2, 0, 0, 3, 4, 0}));
    scene.setData(scene.at("groupParts1.ic"), vertexList({{0, -1}}));
    EXPECT_EQ(scene.point(shape, 2), vec(2, 3, 0)) << "a run that ends before it starts names all";
    EXPECT_EQ(nodes::originalShape(scene, shape)->name(), "headShapeOrig");
    scene.deleteNodes({scene.node("head")});
    for (const char* name : {"blendShape1", "groupParts1", "groupId1", "headShapeOrig"})
        EXPECT_EQ(scene.node(name), nullptr) << name;
    EXPECT_FALSE(blend->isAlive());
}

class LegacyChain : public Chain {
  protected:
    LegacyChain() {
        graph::Variants variants;
        variants.hasLegacyChains = true;
        scene.setVariants(variants);
    }
    std::vector<std::string> helpers() {
        std::vector<NodeRef> found;
        for (const char* type : {"geometryFilter", "groupParts", "groupId", "objectSet"}) {
            for (const NodeRef& node : scene.nodesOfType(type)) {
                if (!node->isA("shadingEngine")) found.push_back(node);
            }
        }
        return namesOf(found);
    }
};

TEST_F(LegacyChain, hasGroupsATweakNodeAndSets) {
    scene.set("headShape.pnts[2].pntz", 5);
    const std::vector<float> before = scene.points(shape);
    const NodeRef blend = nodes::createDeformer(scene, "blendShape", {shape}, "bs");
    const std::pair<const char*, const char*> connections[] = {{"groupParts1.ig", "headShapeOrig.w[0]"},
                                                               {"tweak1.ip[0].ig", "groupParts1.og"},
                                                               {"tweak1.ip[0].gi", "groupId1.id"},
                                                               {"groupParts1.gi", "groupId1.id"},
                                                               {"bsGroupParts.ig", "tweak1.og[0]"},
                                                               {"bs.ip[0].ig", "bsGroupParts.og"},
                                                               {"bs.ip[0].gi", "bsGroupId.id"},
                                                               {"bsGroupParts.gi", "bsGroupId.id"},
                                                               {"headShape.i", "bs.og[0]"},
                                                               {"headShape.twl", "tweak1.vl[0].vt[0]"},
                                                               {"tweakSet1.dsm[0]", "headShape.iog[0].og[0]"},
                                                               {"bsSet.dsm[0]", "headShape.iog[0].og[1]"},
                                                               {"bsSet.ub[0]", "bs.msg"},
                                                               {"bsSet.gn[0]", "bsGroupId.msg"}};
    for (const auto& [destination, source] : connections)
        EXPECT_TRUE(isFedBy(destination, source)) << destination;
    EXPECT_FALSE(scene.source(scene.at("bs.orggeom[0]")));
    EXPECT_EQ(scene.points(shape), before);
    EXPECT_EQ(scene.get("tweak1.vl[0].vt[2].vz"), 5.0);
    EXPECT_EQ(nodes::originalShape(scene, shape)->name(), "headShapeOrig");
    EXPECT_EQ(nodes::deformedShape(scene, blend, 0), shape);
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    scene.set("bs.smile", 1);
    EXPECT_EQ(scene.point(shape, 1), vec(1, 2, 0));
    EXPECT_EQ(scene.point(shape, 2), vec(2, 0, 5));
}

TEST_F(LegacyChain, lendsASkinClusterTheGeometryToBind) {
    nodes::createSkinCluster(scene, shape, {scene.make("joint", "low")}, {}, "skin");
    for (const char* vertex : {"0", "3"})
        EXPECT_EQ(scene.get(std::string("skin.wl[") + vertex + "].w[0]"), 1.0) << vertex;
    scene.set("low.ty", 2);
    EXPECT_EQ(scene.point(shape, 3), vec(3, 2, 0));
}

TEST_F(LegacyChain, goesWithItsShapeAndADeformerTakesItsOwnHelpersAlong) {
    const std::vector<std::string> none = helpers();
    EXPECT_EQ(scene.undoRedoFault([&] { nodes::createTweakNode(scene, shape); }), "");
    const std::vector<std::string> tweakOnly = helpers();
    EXPECT_EQ(tweakOnly.size(), 4U);
    EXPECT_EQ(scene.undoRedoFault([&] { nodes::createDeformer(scene, "blendShape", {shape}, "bs"); }), "");
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("bs")}); }), "");
    EXPECT_EQ(helpers(), tweakOnly);
    EXPECT_TRUE(isFedBy("headShape.i", "tweak1.og[0]"));
    nodes::createDeformer(scene, "blendShape", {shape}, "again");
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("head")}); }), "");
    EXPECT_EQ(helpers(), none);
}

TEST_F(Chain, anUnknownTagExpressionMovesNothingAndSaysSo) {
    struct : graph::MessageSink {
        void print(const std::string&) override {}
        void info(const std::string&) override {}
        void warning(const std::string&) override {}
        void error(const std::string& text) override { errors.push_back(text); }
        std::vector<std::string> errors;
    } sink;
    scene.setMessages(sink);
    nodes::createTweakNode(scene, shape);
    scene.set("tweak1.vl[0].vt[2].vx", 10);
    scene.setData(scene.at("tweak1.ip[0].gtg"), std::make_shared<graph::StringData>("left"));
    EXPECT_EQ(scene.point(shape, 2), vec(2, 0, 0));
    ASSERT_EQ(sink.errors.size(), 1U);
    EXPECT_NE(sink.errors[0].find("left"), std::string::npos);
}

TEST_F(Chain, aTagRestrictsItsDeformer) {
    // Two squares side by side; vertices 0 1 2 / 3 4 5 along x.
    const NodeRef strip =
        nodes::createMesh(scene,
                          geometry::createMesh({0, 0, 0, 1, 0, 0, 2, 0, 0, 0, 0, 1, 1, 0, 1, 2, 0, 1}, {4, 4},
                                               {0, 1, 4, 3, 1, 2, 5, 4})
                              .mesh,
                          "strip", nullptr);
    nodes::createTweakNode(scene, strip);
    for (const char* vertex : {"0", "1", "2", "3", "4", "5"})
        scene.set(std::string("tweak1.vl[0].vt[") + vertex + "].vy", 1);
    scene.setData(scene.at("tweak1.ip[0].gtg"), std::make_shared<graph::StringData>("left"));
    scene.setData(scene.at("stripShapeOrig.gtag[4].gtagnm"), std::make_shared<graph::StringData>("left"));
    const auto moved = [&](graph::ComponentKind kind, const graph::Run& run) {
        auto list = std::make_shared<graph::ComponentListData>();
        list->appendRun(kind, run.first, run.last);
        scene.setData(scene.at("stripShapeOrig.gtag[4].gtagcmp"), list);
        std::vector<int> vertices;
        for (int vertex = 0; vertex < 6; ++vertex) {
            if (scene.point(strip, vertex).y == 1.0) vertices.push_back(vertex);
        }
        return vertices;
    };
    using Vertices = std::vector<int>;
    EXPECT_EQ(moved(graph::ComponentKind::Vertex, {2, 9}), (Vertices{2, 3, 4, 5}));
    EXPECT_EQ(moved(graph::ComponentKind::Face, {0, 0}), (Vertices{0, 1, 3, 4}));
    EXPECT_EQ(moved(graph::ComponentKind::Face, {1, 2000000000}), (Vertices{1, 2, 4, 5}));
    EXPECT_EQ(moved(graph::ComponentKind::Edge, {0, 0}), (Vertices{0, 1}));
    EXPECT_EQ(moved(graph::ComponentKind::Edge, {0, -1}), (Vertices{0, 1, 2, 3, 4, 5}));
    // The tag goes with the geometry, and a tag of the visible shape comes too late.
    scene.setData(scene.at("stripShape.gtag[0].gtagnm"), std::make_shared<graph::StringData>("left"));
    EXPECT_EQ(moved(graph::ComponentKind::Face, {0, 0}), (Vertices{0, 1, 3, 4}));
    EXPECT_EQ(nodes::meshOf(scene, strip), nodes::meshOf(scene, strip));
}

TEST_F(Chain, deletingTheMeshTakesItsWholeChainAlongAndUndoBringsItBack) {
    scene.make("polyCube");
    const NodeRef box = nodes::createMesh(scene, geometry::Mesh(), "box", nullptr);
    scene.join("polyCube1.out", "boxShape.i");
    const NodeRef blend = nodes::createDeformer(scene, "blendShape", {box});
    nodes::createTweakNode(scene, box);
    const NodeRef target = scene.moved(box, "target", {{0, vec(0, 1, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    scene.set("blendShape1.w[0]", 1);
    nodes::addToSet(scene, scene.node("initialShadingGroup"), {box, {}, {}});
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("box")}); }), "");
    for (const char* name : {"boxShape", "boxShapeOrig", "blendShape1", "tweak1", "polyCube1"})
        EXPECT_EQ(scene.node(name), nullptr) << name;
    EXPECT_NE(scene.node("target"), nullptr);
    EXPECT_TRUE(target->outgoing().empty());
}

TEST_F(Chain, deletingTheVisibleShapeTakesTheOriginalAlong) {
    nodes::createDeformer(scene, "blendShape", {shape});
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({shape}); }), "");
    EXPECT_EQ(scene.node("headShapeOrig"), nullptr);
    EXPECT_EQ(scene.node("blendShape1"), nullptr);
    EXPECT_NE(scene.node("head"), nullptr);
}

TEST_F(Chain, deletingADeformerJoinsItsNeighbours) {
    const NodeRef tweak = nodes::createTweakNode(scene, shape);
    nodes::createDeformer(scene, "blendShape", {shape});
    nodes::createDeformer(scene, "blendShape", {shape}, "corrective");
    scene.set("tweak1.vl[0].vt[2].vx", 10);
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("blendShape1")}); }), "");
    EXPECT_TRUE(isFedBy("corrective.ip[0].ig", "tweak1.og[0]"));
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("corrective"), tweak}); }), "");
    EXPECT_TRUE(isFedBy("headShape.i", "headShapeOrig.w[0]"));
    EXPECT_EQ(scene.point(shape, 2), vec(2, 0, 0));
}

TEST_F(Chain, makingItIsUndone) {
    scene.set("headShape.pnts[2].pntz", 5);
    const NodeRef target = scene.moved(shape, "target", {{0, vec(0, 1, 0)}});
    EXPECT_EQ(scene.undoRedoFault([&] {
        const NodeRef blend = nodes::createDeformer(scene, "blendShape", {shape});
        nodes::createTweakNode(scene, shape);
        nodes::addTarget(scene, blend, 0, 3, target, 1.0, false);
        nodes::offsetVertices(scene, shape, {1}, {vec(1, 1, 1)});
        scene.set("blendShape1.w[3]", 0.5);
    }),
              "");
}

}  // namespace
