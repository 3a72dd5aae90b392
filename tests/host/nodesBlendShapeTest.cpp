// Blend shapes: how weights, in-betweens and target meshes move a mesh.
#include <gtest/gtest.h>

#include "host/nodesFixture.h"
#include "nodes/blendShapeTargets.h"

namespace {

using namespace nodestest;

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
    /// A mesh that lifts one vertex. Made before targets are added: copying the shape evaluates them.
    NodeRef lifted(const std::string& name, int vertex, double height) {
        return scene.moved(shape, name, {{vertex, vec(0, height, 0)}});
    }
    void addLive(int target, const NodeRef& mesh, double weight) {
        EXPECT_TRUE(nodes::addTarget(scene, blend, 0, target, mesh, 1.0, false).ok);
        scene.set("blendShape1.w[" + std::to_string(target) + "]", weight);
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
    addLive(0, lifted("smile", 1, 2), 1);
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{0, 2, 0, 0}));
    item(0, 6000, pointList({{0, 9, 0, 1}}), vertexList({{3, 3}}));
    EXPECT_EQ(heights(), (Heights{0, 0, 0, 9})) << "after an evaluation they win";
}

TEST_F(Blend, deltasWrittenBeforeTheFirstEvaluationWinUntilTheMeshChanges) {
    const NodeRef smile = lifted("smile", 1, 2);
    const NodeRef other = lifted("frown", 2, 6);
    addLive(0, smile, 1);
    addLive(1, other, 1);
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
    const NodeRef target = lifted("smile", 1, 2);
    addLive(0, target, 1);
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
    const NodeRef smile = lifted("smile", 1, 2);
    const NodeRef other = lifted("frown", 2, 6);
    addLive(0, smile, 1);
    addLive(1, other, 0.5);
    const Plug geometry = scene.at("blendShape1.it[0].itg[1].iti[6000].igt");
    EXPECT_EQ(scene.undoRedoFault([&] { scene.disconnect(geometry); }), "");
    scene.move(other, 2, vec(0, 100, 0));
    EXPECT_EQ(scene.undoRedoFault([&] { scene.deleteNodes({scene.node("smile")}); }), "");
    EXPECT_EQ(heights(), (Heights{0, 2, 3, 0}));
    EXPECT_TRUE(blend->isAlive());
}

TEST_F(Blend, aTargetThatGoesBeforeAnybodyLookedAtItsLastChangeLeavesThatToo) {
    const NodeRef target = lifted("smile", 1, 2);
    addLive(0, target, 1);
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
