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

// --- chains ------------------------------------------------------------------------------------------------

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

// --- blend shapes ------------------------------------------------------------------------------------------

TEST(ItemShares, areLinearBetweenNeighbours) {
    const auto shares = [](const std::vector<int>& items, double weight) {
        std::vector<std::pair<int, double>> result;
        for (const nodes::ItemShare& share : nodes::itemShares(items, weight))
            result.emplace_back(share.item, share.share);
        return result;
    };
    using List = std::vector<std::pair<int, double>>;
    EXPECT_EQ(shares({6000}, 0.25), (List{{6000, 0.25}}));
    EXPECT_EQ(shares({6000}, 3.0), (List{{6000, 3.0}})) << "beyond 1 as it went";
    EXPECT_EQ(shares({6000}, -2.0), (List{{6000, -2.0}}));
    EXPECT_EQ(shares({6000}, 0.0), List{});
    EXPECT_EQ(shares({5500, 6000}, 0.25), (List{{5500, 0.5}}));
    EXPECT_EQ(shares({5500, 6000}, 0.5), (List{{5500, 1.0}}));
    EXPECT_EQ(shares({5500, 6000}, 0.75), (List{{5500, 0.5}, {6000, 0.5}}));
    EXPECT_EQ(shares({5500, 6000}, 1.5), (List{{5500, -1.0}, {6000, 2.0}})) << "the last segment goes on";
    EXPECT_EQ(shares({4000, 6000}, -0.5), (List{{4000, 0.5}})) << "items below 5000 are negative weights";
    EXPECT_EQ(shares({4000, 6000}, 0.5), (List{{6000, 0.5}}));
    EXPECT_EQ(shares({7000}, 1.0), (List{{7000, 0.5}}));
    EXPECT_EQ(shares({}, 1.0), List{});
}

class Blend : public testing::Test {
  protected:
    Blend() : shape(scene.row("head", 4)), blend(nodes::createDeformer(scene, "blendShape", {shape})) {}
    Plug part(int target, int index, const char* name) const {
        return nodes::childPlug(nodes::targetItemPlug(blend, 0, target, index), name);
    }
    void item(int target, int index, const graph::DataPtr& points, const graph::DataPtr& components) {
        scene.setData(part(target, index, nodes::kPointsTarget), points);
        scene.setData(part(target, index, nodes::kComponentsTarget), components);
    }
    std::vector<double> heights() {
        std::vector<double> result;
        for (int vertex = 0; vertex < 4; ++vertex)
            result.push_back(scene.point(shape, vertex).y);
        return result;
    }
    std::vector<graph::Point4> deltas(int target, int index) {
        const auto data =
            graph::dataAs<graph::PointArrayData>(scene.data(part(target, index, nodes::kPointsTarget)));
        return data != nullptr ? data->value : std::vector<graph::Point4>{{-1, -1, -1, -1}};
    }
    std::vector<int> deltaVertices(int target, int index) {
        const auto data = graph::dataAs<graph::ComponentListData>(
            scene.data(part(target, index, nodes::kComponentsTarget)));
        return data != nullptr ? data->flattened() : std::vector<int>{-1};
    }

    using Heights = std::vector<double>;
    Scene scene;
    NodeRef shape;
    NodeRef blend;
};

TEST_F(Blend, multipliesEveryWeight) {
    item(0, 6000, pointList({{0, 8, 0, 1}, {0, 4, 0, 1}}), vertexList({{1, 2}}));
    item(1, 6000, pointList({{0, 16, 0, 1}}), vertexList({{2, 2}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0})) << "weights begin at 0";
    scene.set("blendShape1.w[0]", 0.5);
    EXPECT_EQ(heights(), (Heights{0, 4, 2, 0}));
    scene.set("blendShape1.w[1]", 1);
    EXPECT_EQ(heights(), (Heights{0, 4, 18, 0}));
    scene.set("blendShape1.it[0].itg[0].tw[1]", 0.25);
    EXPECT_EQ(heights(), (Heights{0, 1, 18, 0})) << "vertex 2 has no target weight, which counts as 1";
    scene.set("blendShape1.it[0].bw[2]", 0.5);
    EXPECT_EQ(heights(), (Heights{0, 1, 9, 0}));
    scene.set("blendShape1.en", 2);
    EXPECT_EQ(heights(), (Heights{0, 2, 18, 0}));
    scene.set("blendShape1.en", -1);
    EXPECT_EQ(heights(), (Heights{0, -1, -9, 0}));
    scene.set("blendShape1.en", 0);
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
}

TEST_F(Blend, negativeWeightsCountWhereTheyAreAllowed) {
    item(0, 6000, pointList({{0, 8, 0, 1}}), vertexList({{1, 1}}));
    scene.set("blendShape1.w[0]", -0.5);
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
    scene.set("blendShape1.supportNegativeWeights", 1);
    EXPECT_EQ(heights(), (Heights{0, -4, 0, 0}));
}

TEST_F(Blend, goesThroughItsInBetweens) {
    item(0, 5500, pointList({{0, 10, 0, 1}}), vertexList({{0, 0}}));
    item(0, 6000, pointList({{0, 4, 0, 1}, {0, 2, 0, 1}}), vertexList({{0, 1}}));
    scene.set("blendShape1.w[0]", 0.25);
    EXPECT_EQ(heights(), (Heights{5, 0, 0, 0}));
    scene.set("blendShape1.w[0]", 0.75);
    EXPECT_EQ(heights(), (Heights{7, 1, 0, 0}));
    scene.set("blendShape1.w[0]", 1.5);
    EXPECT_EQ(heights(), (Heights{-2, 4, 0, 0}));
}

TEST_F(Blend, weightsMayBeConnected) {
    item(0, 6000, pointList({{0, 8, 0, 1}}), vertexList({{1, 1}}));
    scene.make("transform", "driver");
    scene.join("driver.tx", "blendShape1.w[0]");
    scene.set("driver.tx", 0.5);
    EXPECT_EQ(heights(), (Heights{0, 4, 0, 0}));
    scene.set("driver.tx", 1);
    EXPECT_EQ(heights(), (Heights{0, 8, 0, 0}));
}

TEST_F(Blend, survivesListsThatDoNotFit) {
    scene.set("blendShape1.w[0]", 1);
    item(0, 6000, pointList({{0, 1, 0, 1}, {0, 2, 0, 1}, {0, 3, 0, 1}}), vertexList({{3, 4}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 1})) << "vertex 4 does not exist, the third point has no vertex";
    item(0, 6000, pointList({{0, 1, 0, 1}}), vertexList({{0, 3}}));
    EXPECT_EQ(heights(), (Heights{1, 0, 0, 0}));
    item(0, 6000, pointList({{0, 1, 0, 1}, {0, 2, 0, 1}}), vertexList({{3, 3}, {0, 0}}));
    EXPECT_EQ(heights(), (Heights{2, 0, 0, 1})) << "the order of the entries counts";
    item(0, 6000, pointList({{0, 1, 0, 1}, {0, 1, 0, 1}}), vertexList({{1, 1}, {1, 1}}));
    EXPECT_EQ(heights(), (Heights{0, 2, 0, 0}));
    item(0, 6000, pointList({{0, 1, 0, 1}, {0, 2, 0, 1}}), vertexList({{-3, -2}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
    item(0, 6000, pointList({{0, 1, 0, 1}, {0, 2, 0, 1}}), vertexList({{2147483647, 2147483647}, {0, 0}}));
    EXPECT_EQ(heights(), (Heights{2, 0, 0, 0}));
    item(0, 6000, pointList({}), vertexList({}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
    item(0, 6000, pointList({{0, 0, 0, 1}}), vertexList({{0, 0}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
    item(0, 6000, pointList({{0, 5, 0, 1}}), nullptr);
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0}));
}

TEST_F(Blend, aTargetIsNamedAfterItsTransform) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 2, target, 1.0, false).ok);
    EXPECT_EQ(scene.at("blendShape1.smile"), scene.at("blendShape1.weight[2]"));
    EXPECT_EQ(nodes::weightIndices(scene, blend), (std::vector<int>{2}));
    EXPECT_EQ(scene.source(scene.at("blendShape1.it[0].itg[2].iti[6000].igt")), scene.at("smileShape.w[0]"));
    EXPECT_EQ(scene.get("blendShape1.smile"), 0.0);
    const NodeRef half = scene.moved(shape, "half", {{1, vec(0, 5, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 2, half, 0.5, true).ok);
    EXPECT_FALSE(graph::findPlug(scene, "blendShape1.half").ok) << "an in-between has no alias";
    EXPECT_EQ(nodes::targetItems(scene, blend, 0, 2), (std::vector<int>{5500, 6000}));
    const NodeRef group = scene.make("transform", "group");
    const NodeRef same = nodes::createMesh(scene, nodes::meshOf(scene, target)->mesh, "smile", group.get());
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 5, same, 1.0, false).ok);
    EXPECT_EQ(blend->alias(scene.at("blendShape1.w[5]").key()), "smile1");
    const NodeRef taken = scene.moved(shape, "weight", {});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 6, taken, 1.0, false).ok);
    EXPECT_EQ(blend->alias(scene.at("blendShape1.w[6]").key()), "weight1");
}

TEST_F(Blend, aTargetThatDoesNotFitIsRefusedAndChangesNothing) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    const NodeRef other = scene.row("other", 5);
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    const std::string before = scene.dump();
    const auto refused = [&](int base, int index, const NodeRef& mesh, double weight, bool inBetween) {
        const nodes::TargetResult result =
            nodes::addTarget(scene, blend, base, index, mesh, weight, inBetween);
        return !result.ok && !result.error.empty();
    };
    EXPECT_TRUE(refused(0, 0, target, 1.0, false)) << "taken";
    EXPECT_TRUE(refused(1, 0, target, 1.0, false)) << "no such base";
    EXPECT_TRUE(refused(0, 7, target, 0.5, true)) << "an in-between of nothing";
    EXPECT_TRUE(refused(0, 1, target, 0.0, false));
    EXPECT_TRUE(refused(0, 1, other, 1.0, false)) << "other topology";
    EXPECT_TRUE(refused(0, 1, scene.node("head"), 1.0, false)) << "no shape";
    EXPECT_EQ(scene.dump(), before);
    scene.set("blendShape1.topologyCheck", 0);
    EXPECT_TRUE(nodes::addTarget(scene, blend, 0, 1, other, 1.0, false).ok);
    scene.set("blendShape1.w[1]", 1);
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 0})) << "the fifth vertex is left out";
}

TEST_F(Blend, aLiveTargetIsFollowed) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}, {2, vec(0, 3, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    scene.set("blendShape1.smile", 1);
    EXPECT_EQ(heights(), (Heights{0, 2, 3, 0}));
    EXPECT_EQ(deltaVertices(0, 6000), (std::vector<int>{1, 2}));
    scene.move(target, 1, vec(0, -2, 0));
    EXPECT_EQ(heights(), (Heights{0, 0, 3, 0}));
    EXPECT_EQ(deltas(0, 6000), (std::vector<graph::Point4>{{0, 3, 0, 1}})) << "exact zeros are left out";
    EXPECT_EQ(deltaVertices(0, 6000), (std::vector<int>{2}));
    nodes::setTranslation(scene, scene.node("smile"), vec(5, 5, 5));
    EXPECT_EQ(heights(), (Heights{0, 0, 3, 0})) << "where it stands does not matter";
}

TEST_F(Blend, liveDeltasAreMadeWhenTheDeformerIsEvaluatedAndAtNoOtherTime) {
    const std::vector<graph::Point4> nothing{{-1, -1, -1, -1}};
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    EXPECT_EQ(deltas(0, 6000), nothing) << "neither connecting nor reading makes them";
    EXPECT_EQ(deltaVertices(0, 6000), (std::vector<int>{-1}));
    heights();
    EXPECT_EQ(deltas(0, 6000), (std::vector<graph::Point4>{{0, 2, 0, 1}})) << "at weight 0 too";
    scene.move(target, 1, vec(0, 1, 0));
    EXPECT_EQ(deltas(0, 6000), (std::vector<graph::Point4>{{0, 2, 0, 1}}));
    scene.set("blendShape1.en", 0);
    heights();
    EXPECT_EQ(deltas(0, 6000), (std::vector<graph::Point4>{{0, 3, 0, 1}})) << "without an effect too";
}

TEST_F(Blend, aMeshThatGoesUnseenLeavesItsDeltasAtOnceOrToTheNextEvaluation) {
    const std::vector<graph::Point4> made{{0, 6, 0, 1}};
    for (const bool isAtOnce : {true, false}) {
        const int index = isAtOnce ? 0 : 1;
        graph::Variants variants;
        variants.takesDeltasOnDisconnect = isAtOnce;
        scene.setVariants(variants);
        const NodeRef target = scene.moved(scene.node("headShapeOrig"), "frown", {{2, vec(0, 6, 0)}});
        nodes::addTarget(scene, blend, 0, index, target, 1.0, false);
        scene.set("blendShape1.w[" + std::to_string(index) + ']', 1);
        scene.deleteNodes({scene.node("frown")});
        EXPECT_EQ(deltas(index, 6000) == made, isAtOnce);
        const NodeRef other = scene.moved(scene.node("headShapeOrig"), "other", {});
        EXPECT_FALSE(nodes::addTarget(scene, blend, 0, index, other, 1.0, false).ok) << "the item is taken";
        EXPECT_EQ(heights(), (Heights{0, 0, 6.0 * (index + 1), 0}));
        EXPECT_EQ(deltas(index, 6000), made);
    }
}

TEST_F(Blend, redoOfDeletingAMeshBringsItsDeltasBack) {
    const std::vector<graph::Point4> made{{0, 6, 0, 1}};
    const NodeRef target = scene.moved(scene.node("headShapeOrig"), "frown", {{2, vec(0, 6, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    scene.set("blendShape1.w[0]", 1);
    graph::ChangeList step;
    {
        const graph::RecordingScope recorded(scene, &step);
        scene.deleteNodes({scene.node("frown")});
    }
    EXPECT_TRUE(step.undo(scene));
    EXPECT_NE(deltas(0, 6000), made);
    EXPECT_TRUE(step.redo(scene));
    EXPECT_EQ(deltas(0, 6000), made);
    EXPECT_EQ(heights(), (Heights{0, 0, 6.0, 0}));
}

TEST_F(Blend, deltasWrittenBeforeTheFirstEvaluationAreLostWhereTheHostLosesThem) {
    graph::Variants variants;
    variants.losesEarlyDeltas = true;
    scene.setVariants(variants);
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    scene.set("blendShape1.smile", 1);
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{0, 2, 0, 0}));
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 9})) << "after an evaluation they win";
}

TEST_F(Blend, deltasWrittenBeforeTheFirstEvaluationWinUntilTheMeshChanges) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    const NodeRef other = scene.moved(shape, "frown", {{2, vec(0, 6, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    nodes::addTarget(scene, blend, 0, 1, other, 1.0, false);
    scene.set("blendShape1.smile", 1);
    scene.set("blendShape1.frown", 1);
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    item(1, 6000, pointList({{0, 5, 0, 1}}), vertexList({{0, 0}}));
    scene.move(other, 2, vec(0, 1, 0));
    EXPECT_EQ(heights(), (Heights{0, 0, 7, 9}));
    scene.deleteNodes({scene.node("smile")});
    EXPECT_EQ(heights(), (Heights{0, 0, 7, 9})) << "the mesh goes unchanged";
}

TEST_F(Blend, undoForgetsWhatAnEvaluationMadeOfALiveTarget) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    scene.set("blendShape1.w[0]", 1);
    const std::string before = scene.dump();
    graph::ChangeList adding;
    {
        const graph::RecordingScope scope(scene, &adding);
        nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    }
    graph::ChangeList writing;
    {
        const graph::RecordingScope scope(scene, &writing);
        item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    }
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 9}));
    writing.undo(scene);
    EXPECT_EQ(heights(), (Heights{0, 2, 0, 0})) << "as if nothing had been written";
    writing.redo(scene);
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 9}));
    writing.undo(scene);
    const std::string live = scene.dump();
    graph::ChangeList deleting;
    {
        const graph::RecordingScope scope(scene, &deleting);
        scene.move(target, 0, vec(0, 7, 0));
        scene.deleteNodes({scene.node("smile")});
    }
    EXPECT_EQ(heights(), (Heights{7, 2, 0, 0}));
    deleting.undo(scene);
    heights();
    EXPECT_EQ(delven::test::dumpDifference(live, scene.dump()), "");
    adding.undo(scene);
    EXPECT_EQ(delven::test::dumpDifference(before, scene.dump()), "");
}

TEST_F(Blend, writtenDeltasOfALiveTargetStayUntilItsMeshChanges) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    scene.set("blendShape1.smile", 1);
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 9}));
    nodes::setTranslation(scene, scene.node("smile"), vec(5, 5, 5));
    scene.move(scene.node("headShapeOrig"), 0, vec(0, 1, 0));
    EXPECT_EQ(heights(), (Heights{1, 0, 0, 9})) << "neither a moved target nor a moved base takes them back";
    scene.move(target, 0, vec(0, 1, 0));
    EXPECT_EQ(heights(), (Heights{1, 2, 0, 0}));
    scene.move(target, 0, vec(0, 1, 0));
    item(0, 6000, pointList({{0, 4, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{1, 0, 0, 4})) << "a change from before the writing has had its turn";
}

TEST_F(Blend, aDeletedOrDisconnectedTargetLeavesItsDeltas) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    const NodeRef other = scene.moved(shape, "frown", {{2, vec(0, 6, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    nodes::addTarget(scene, blend, 0, 1, other, 1.0, false);
    scene.set("blendShape1.smile", 1);
    scene.set("blendShape1.frown", 0.5);
    const Plug geometry = scene.at("blendShape1.it[0].itg[1].iti[6000].igt");
    EXPECT_EQ(scene.undoRedoFault([&] { scene.disconnect(geometry); }), "");
    scene.move(other, 2, vec(0, 100, 0));
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("smile")}); }), "");
    EXPECT_EQ(heights(), (Heights{0, 2, 3, 0}));
    EXPECT_TRUE(blend->isAlive());
}

TEST_F(Blend, aTargetThatGoesBeforeAnybodyLookedAtItsLastChangeLeavesThatToo) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    scene.set("blendShape1.smile", 1);
    scene.move(target, 0, vec(0, 7, 0));
    scene.deleteNodes({scene.node("smile")});
    EXPECT_EQ(heights(), (Heights{7, 2, 0, 0}));
}

TEST_F(Blend, connectingATargetOverWrittenDeltasIsUndone) {
    const NodeRef target = scene.moved(shape, "smile", {{1, vec(0, 2, 0)}});
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    scene.set("blendShape1.w[0]", 1);
    const Plug geometry = scene.at("blendShape1.it[0].itg[0].iti[6000].igt");
    EXPECT_EQ(scene.undoRedoFault([&] { scene.connect(scene.at("smileShape.w[0]"), geometry); }), "");
    EXPECT_EQ(heights(), (Heights{0, 2, 0, 0}));
}

TEST_F(Blend, deltasAreDifferencesToTheUndeformedMesh) {
    nodes::createTweakNode(scene, shape);
    scene.set("tweak1.vl[0].vt[1].vy", 100);
    const NodeRef target = scene.moved(scene.node("headShapeOrig"), "smile", {{1, vec(0, 2, 0)}});
    nodes::addTarget(scene, blend, 0, 0, target, 1.0, false);
    scene.set("blendShape1.smile", 1);
    EXPECT_EQ(heights(), (Heights{0, 102, 0, 0}));
}

class BlendOverZoo : public testing::TestWithParam<zoo::NamedMesh> {};

TEST_P(BlendOverZoo, reachesTheTargetAndComesBackExactly) {
    Scene scene;
    const NodeRef base = nodes::createMesh(scene, GetParam().mesh, "base", nullptr);
    std::vector<float> goal = scene.points(base);
    for (std::size_t k = 0; k < goal.size(); k += 2)
        goal[k] = goal[k] * 1.5F + 0.1F * static_cast<float>(k % 7);
    const NodeRef target = nodes::copyMesh(scene, base, nullptr);
    nodes::setMeshPoints(scene, target, goal);
    const NodeRef blend = nodes::createDeformer(scene, "blendShape", {base});
    ASSERT_TRUE(nodes::addTarget(scene, blend, 0, 0, target, 1.0, false).ok);
    const std::vector<float> start = scene.points(base);
    scene.set("blendShape1.w[0]", 1);
    EXPECT_EQ(scene.points(base), goal);
    scene.deleteNodes({target});
    EXPECT_EQ(scene.points(base), goal);
    scene.set("blendShape1.w[0]", 0);
    EXPECT_EQ(scene.points(base), start);
}

INSTANTIATE_TEST_SUITE_P(Zoo, BlendOverZoo, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace
