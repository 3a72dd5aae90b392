#include <maya/MDoubleArray.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>

#include <vector>

#include "apiFixture.h"
#include "nodes/skinClusterNode.h"

using namespace apitest;

namespace {

using Doubles = std::vector<double>;

Doubles doubles(const MDoubleArray& array) {
    Doubles list(array.length());
    if (!list.empty()) array.get(list.data());
    return list;
}

/// A cube bound to three joints; vertex 0 belongs to the first, vertex 1 half to each of the first two.
class SkinClusterTest : public ApiTest {
  protected:
    SkinClusterTest() {
        addMesh("arm");
        std::vector<host::graph::NodeRef> joints;
        for (const char* name : {"a", "b", "c"})
            joints.push_back(graph.createNode(*graph.types().find("joint"), name));
        host::nodes::createSkinCluster(graph, graph.nodesNamed("armShape").front(), joints,
                                       host::nodes::SkinOptions(), "skin");
        skin.setObject(object("skin"));
        set({0, 1}, {0, 1, 2}, {1, 0, 0, 0.5, 0.5, 0}, false);
    }

    static MObject vertices(const std::vector<int>& elements) {
        MFnSingleIndexedComponent component;
        const MObject result = component.create(MFn::kMeshVertComponent);
        MIntArray list(elements.data(), static_cast<unsigned int>(elements.size()));
        component.addElements(list);
        return result;
    }
    MStatus set(const std::vector<int>& elements, const std::vector<int>& influences, const Doubles& values,
                bool normalize = true, MDoubleArray* oldValues = nullptr) {
        MIntArray places(influences.data(), static_cast<unsigned int>(influences.size()));
        MDoubleArray weights(values.data(), static_cast<unsigned int>(values.size()));
        return skin.setWeights(path("armShape"), vertices(elements), places, weights, normalize, oldValues);
    }
    Doubles get(const std::vector<int>& elements) {
        MDoubleArray weights;
        unsigned int count = 0;
        EXPECT_TRUE(skin.getWeights(path("arm"), vertices(elements), weights, count));
        EXPECT_EQ(weights.length(), count * elements.size());
        return doubles(weights);
    }

    MFnSkinCluster skin;
};

TEST_F(SkinClusterTest, InfluencesAreCountedWithoutGaps) {
    MDagPathArray paths;
    EXPECT_EQ(skin.influenceObjects(paths), 3U);
    EXPECT_TRUE(paths[1] == path("b"));
    EXPECT_EQ(skin.indexForInfluenceObject(path("b")), 1U);
    host::nodes::removeInfluence(graph, graph.nodesNamed("skin").front(), 0);
    EXPECT_EQ(skin.influenceObjects(paths), 2U);
    EXPECT_TRUE(paths[0] == path("b"));
    EXPECT_EQ(skin.indexForInfluenceObject(path("b")), 1U) << "the index in the multi";
    EXPECT_EQ(get({1}), (Doubles{1, 0}));
    MDoubleArray weights;
    EXPECT_TRUE(skin.getWeights(path("arm"), vertices({1}), 0U, weights));
    EXPECT_EQ(doubles(weights), Doubles{1});
    EXPECT_EQ(skin.getWeights(path("arm"), vertices({1}), 2U, weights), MStatus::kInvalidParameter);
    MStatus status;
    skin.indexForInfluenceObject(path("a"), &status);
    EXPECT_FALSE(status);
    skin.indexForInfluenceObject(MDagPath(), &status);
    EXPECT_FALSE(status);
}

TEST_F(SkinClusterTest, WeightsLieVertexByVertex) {
    EXPECT_EQ(get({0, 1}), (Doubles{1, 0, 0, 0.5, 0.5, 0}));
    MDoubleArray weights;
    MIntArray second(1, 1);
    EXPECT_TRUE(skin.getWeights(path("armShape"), vertices({0, 1}), second, weights));
    EXPECT_EQ(doubles(weights), (Doubles{0, 0.5}));
    const int places[] = {2, 0};
    MIntArray lastAndFirst(places, 2);
    EXPECT_TRUE(skin.getWeights(path("armShape"), vertices({0, 1}), lastAndFirst, weights));
    EXPECT_EQ(doubles(weights), (Doubles{0, 1, 0, 0.5}));
    MSelectionList affected;
    set({2, 3, 4, 5, 6, 7}, {0, 1, 2}, Doubles(18, 0), false);
    EXPECT_TRUE(skin.getPointsAffectedByInfluence(path("b"), affected, weights));
    EXPECT_EQ(names(affected), std::vector<std::string>{"arm.vtx[1]"});
    EXPECT_EQ(doubles(weights), Doubles{0.5});
}

TEST_F(SkinClusterTest, AllInfluencesGivenAreDividedByTheirSum) {
    MDoubleArray old;
    EXPECT_TRUE(set({0, 1}, {0, 1, 2}, {1, 1, 2, 0, 0, 0}, true, &old));
    EXPECT_EQ(get({0, 1}), (Doubles{0.25, 0.25, 0.5, 0, 0, 0})) << "a sum of 0 stays";
    EXPECT_EQ(doubles(old), (Doubles{1, 0, 0, 0.5, 0.5, 0}));
    EXPECT_TRUE(set({0, 1}, {0, 1, 2}, doubles(old)));
    EXPECT_EQ(get({0, 1}), doubles(old));
    EXPECT_TRUE(set({0}, {2, 1, 0}, {1, 2, 3}, false));
    EXPECT_EQ(get({0}), (Doubles{3, 2, 1}));
    graph.setNumber(graph.nodesNamed("skin").front()->plug("normalizeWeights"), 0);
    EXPECT_TRUE(set({0}, {0, 1, 2}, {1, 1, 0}));
    EXPECT_EQ(get({0}), (Doubles{1, 1, 0}));
}

TEST_F(SkinClusterTest, TheOthersMakeRoomForSomeGiven) {
    MDoubleArray old;
    EXPECT_TRUE(skin.setWeights(path("armShape"), vertices({0, 1}), 2U, 0.5, true, &old));
    EXPECT_EQ(get({0, 1}), (Doubles{0.5, 0, 0.5, 0.25, 0.25, 0.5}));
    EXPECT_EQ(doubles(old), (Doubles{1, 0, 0, 0.5, 0.5, 0}));
    plug("a.liw").setBool(true);
    EXPECT_TRUE(skin.setWeights(path("armShape"), vertices({1}), 2U, 0.25));
    EXPECT_EQ(get({1}), (Doubles{0.25, 0.5, 0.25}));
    EXPECT_TRUE(skin.setWeights(path("armShape"), vertices({1}), 0U, 1.0, false));
    EXPECT_EQ(get({1}), (Doubles{1, 0.5, 0.25})) << "a lock holds nobody who names the influence";
}

TEST_F(SkinClusterTest, WeightsOfAnInfluenceThatIsGoneStay) {
    MObject joint = object("b");
    ASSERT_TRUE(MGlobal::deleteNode(joint));
    EXPECT_EQ(get({1}), (Doubles{0.5, 0}));
    EXPECT_TRUE(set({1}, {0, 1}, {0.75, 0.25}));
    EXPECT_EQ(plug("skin.weightList[1].weights[1]").asDouble(), 0.5);
    EXPECT_EQ(get({1}), (Doubles{0.75, 0.25}));
}

TEST_F(SkinClusterTest, WhatDoesNotFitFails) {
    addMesh("other");
    MDoubleArray weights;
    unsigned int count = 0;
    EXPECT_FALSE(skin.getWeights(path("otherShape"), vertices({0}), weights, count));
    EXPECT_FALSE(skin.getWeights(path("armShape"), MObject::kNullObj, weights, count));
    EXPECT_FALSE(skin.getWeights(path("armShape"), vertices({8}), weights, count));
    EXPECT_FALSE(set({0}, {0, 3}, {1, 0}));
    EXPECT_FALSE(set({0}, {-1}, {1}));
    EXPECT_FALSE(set({0}, {1, 1}, {1, 0}));
    EXPECT_FALSE(set({0}, {0, 1}, {1}));
    EXPECT_EQ(get({0}), (Doubles{1, 0, 0}));
    MStatus status;
    MObject shape = object("armShape");
    const MFnSkinCluster wrong(shape, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(object("skin").hasFn(MFn::kGeometryFilt));
    EXPECT_TRUE(object("a").hasFn(MFn::kJoint));
    EXPECT_TRUE(skin.outputShapeAtIndex(0) == object("armShape"));
}

}  // namespace
