#include "common.h"

#include <gtest/gtest.h>
#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

#include <vector>

#include "fixtures.h"

namespace {

MIntArray ints(const std::vector<int>& values) {
    MIntArray result;
    for (const int value : values)
        result.append(value);
    return result;
}

std::vector<int> list(const MIntArray& values) {
    std::vector<int> result;
    for (unsigned int k = 0; k < values.length(); ++k)
        result.push_back(values[k]);
    return result;
}

MObject node(const char* name) {
    MSelectionList found;
    found.add(name);
    MObject object;
    found.getDependNode(0, object);
    return object;
}

MDagPath path(const char* name) {
    MSelectionList found;
    found.add(name);
    MDagPath result;
    found.getDagPath(0, result);
    return result;
}

/// Direct calls of the helpers, on the scene of addBlendShape.
class Common : public ::testing::Test {
  protected:
    Common() : scene_(Scene::Plugin::NotLoaded) {
        addBlendShape(scene_);
        blendShape_ = node("bs");
        mesh_ = node("baseShape");
    }

    Scene scene_;
    MObject blendShape_;
    MObject mesh_;
};

TEST_F(Common, PlugsAreNamedByTargetAndItem) {
    EXPECT_STREQ(getTargetGroupPlug(blendShape_, 7).name().asChar(), "bs.inputTarget[0].inputTargetGroup[7]");
    MPlug plug;
    ASSERT_EQ(getComponentsTargetPlug(blendShape_, 4, 5500, plug), MS::kSuccess);
    EXPECT_STREQ(plug.name().asChar(),
                 "bs.inputTarget[0].inputTargetGroup[4].inputTargetItem[5500].inputComponentsTarget");
    ASSERT_EQ(getPointsTargetPlug(blendShape_, 4, 5500, plug), MS::kSuccess);
    EXPECT_STREQ(plug.name().asChar(),
                 "bs.inputTarget[0].inputTargetGroup[4].inputTargetItem[5500].inputPointsTarget");
    EXPECT_STREQ(getWeightsPlug(blendShape_, 3).name().asChar(),
                 "bs.inputTarget[0].inputTargetGroup[3].targetWeights");
    EXPECT_STREQ(getWeightsPlug(blendShape_, kBaseWeights).name().asChar(), "bs.inputTarget[0].baseWeights");
}

TEST_F(Common, LookUpsOnAnotherKindOfNodeFailAndReadAsEmpty) {
    MPlug plug;
    EXPECT_NE(getComponentsTargetPlug(mesh_, 0, kFullItem, plug), MS::kSuccess);
    EXPECT_NE(setTargetComponents(mesh_, 0, kFullItem, ints({1})), MS::kSuccess);
    EXPECT_NE(setTargetPoints(mesh_, 0, kFullItem, MPointArray()), MS::kSuccess);
    EXPECT_EQ(getTargetComponents(mesh_, 0, kFullItem).length(), 0U);
    EXPECT_EQ(getTargetPoints(mesh_, 0, kFullItem).length(), 0U);
    EXPECT_EQ(getTargetItemIndices(mesh_, 0).length(), 0U);
}

TEST_F(Common, ItemsAscendAndAnUneditedItemIsEmpty) {
    EXPECT_EQ(list(getTargetItemIndices(blendShape_, 4)), std::vector<int>({5500, 6000}));
    EXPECT_EQ(getTargetItemIndices(blendShape_, 9).length(), 0U);
    const std::string before = scene_.dump();
    EXPECT_EQ(getTargetComponents(blendShape_, 4, 5250).length(), 0U);
    EXPECT_EQ(getTargetPoints(blendShape_, 4, 5250).length(), 0U);
    EXPECT_EQ(scene_.changes(before), "") << "reading must not make elements";
}

TEST_F(Common, ComponentsKeepOrderAndDuplicatesAndStayAlignedWithPoints) {
    const std::vector<int> vertices{17, 3, 3, 4, 5, 0};
    ASSERT_EQ(setTargetComponents(blendShape_, 1, 5300, ints(vertices)), MS::kSuccess);
    MPointArray points;
    for (const int vertex : vertices)
        points.append(MPoint(vertex, 0.5, -vertex));
    ASSERT_EQ(setTargetPoints(blendShape_, 1, 5300, points), MS::kSuccess);
    EXPECT_EQ(list(getTargetComponents(blendShape_, 1, 5300)), vertices);
    const MPointArray stored = getTargetPoints(blendShape_, 1, 5300);
    ASSERT_EQ(stored.length(), vertices.size());
    for (unsigned int k = 0; k < stored.length(); ++k) {
        EXPECT_EQ(stored[k], MPoint(vertices[k], 0.5, -vertices[k])) << k;
    }
    EXPECT_EQ(scene_.mel("getAttr bs.it[0].itg[1].iti[5300].ict"),
              std::vector<std::string>({"vtx[17]", "vtx[3]", "vtx[3]", "vtx[4]", "vtx[5]", "vtx[0]"}));
}

TEST_F(Common, RangesInAStoredListAreExpanded) {
    scene_.mel("setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 3 vtx[9] vtx[2:5] vtx[0]");
    EXPECT_EQ(list(getTargetComponents(blendShape_, 0, kFullItem)), std::vector<int>({9, 2, 3, 4, 5, 0}));
}

TEST_F(Common, AnEmptyListClearsTheComponents) {
    ASSERT_EQ(setTargetComponents(blendShape_, 0, kFullItem, MIntArray()), MS::kSuccess);
    EXPECT_EQ(getTargetComponents(blendShape_, 0, kFullItem).length(), 0U);
    EXPECT_EQ(getTargetPoints(blendShape_, 0, kFullItem).length(), 3U);
}

TEST_F(Common, WritingComponentsLeavesNothingOnTheUndoQueue) {
    scene_.mel("flushUndo");
    setTargetComponents(blendShape_, 0, kFullItem, ints({1, 2}));
    scene_.run("undo");
    EXPECT_EQ(list(getTargetComponents(blendShape_, 0, kFullItem)), std::vector<int>({1, 2}));
}

TEST_F(Common, WeightsReplaceTheWholeListInSinglePrecision) {
    for (const int target : {0, kBaseWeights}) {
        MPlug plug = getWeightsPlug(blendShape_, target);
        MDoubleArray values;
        for (const double value : {0.1, 0.5, 1.0})
            values.append(value);
        EXPECT_EQ(setWeightValues(blendShape_, target, ints({12, 3, 7}), values), MS::kSuccess);
        MIntArray indices;
        plug.getExistingArrayAttributeIndices(indices);
        EXPECT_EQ(list(indices), std::vector<int>({3, 7, 12}));
        EXPECT_EQ(plug.elementByLogicalIndex(12).asDouble(), static_cast<double>(0.1F));
        EXPECT_EQ(plug.elementByPhysicalIndex(0).asDouble(), 0.5);
        EXPECT_EQ(plug.elementByLogicalIndex(8).asDouble(), 1.0) << "a missing weight counts as 1";

        EXPECT_EQ(setWeightValues(blendShape_, target, ints({1}), MDoubleArray(1, 0.25)), MS::kSuccess);
        plug.getExistingArrayAttributeIndices(indices);
        EXPECT_EQ(list(indices), std::vector<int>({1}));
        EXPECT_EQ(setWeightValues(blendShape_, target, MIntArray(), MDoubleArray()), MS::kSuccess);
        EXPECT_EQ(plug.numElements(), 0U);
    }
}

TEST_F(Common, VertexOrderMapTranslatesIndices) {
    scene_.mel(
        "addAttr -ln dvVertexOrderMap -sn dvvom -h 1 -dt Int32Array |base|baseShape;"
        "setAttr baseShape.dvVertexOrderMap -type Int32Array 4 3 -1 2 0");
    // Vertices outside the map have no partner.
    EXPECT_EQ(list(mapIndicesByVertexOrder(path("baseShape"), ints({3, 2, 1, 3, 4, -1}))),
              std::vector<int>({0, 2, -1, 0, -1, -1}));
}

TEST_F(Common, TweaksAreAppendedAndWritten) {
    MPointArray points(1, MPoint(9, 9, 9));
    EXPECT_EQ(setTweakPoints(mesh_, ints({5, 2}),
                             [] {
                                 MPointArray values;
                                 values.append(MPoint(0.5, 1.0, -2.0));
                                 values.append(MPoint(0.0, 0.25, 0.0));
                                 return values;
                             }()),
              MS::kSuccess);
    EXPECT_EQ(getTweakPoints(mesh_, ints({2, 5, 6}), points), MS::kSuccess);
    ASSERT_EQ(points.length(), 4U);
    EXPECT_EQ(points[0], MPoint(9, 9, 9));
    EXPECT_EQ(points[1], MPoint(0, 0.25, 0));
    EXPECT_EQ(points[2], MPoint(0.5, 1, -2));
    EXPECT_EQ(points[3], MPoint(0, 0, 0));
    EXPECT_EQ(scene_.mel("getAttr baseShape.pnts[5]"), std::vector<double>({0.5, 1.0, -2.0}));
}

TEST_F(Common, TweaksOfANodeWithoutThemFail) {
    MPointArray points;
    EXPECT_NE(getTweakPoints(blendShape_, ints({0}), points), MS::kSuccess);
    EXPECT_NE(setTweakPoints(blendShape_, ints({0}), MPointArray(1)), MS::kSuccess);
    EXPECT_EQ(points.length(), 0U);
}

struct NameCase {
    std::vector<const char*> names;
    std::vector<int> vertices;
};

class VertexNames : public ::testing::TestWithParam<NameCase> {};

TEST_P(VertexNames, Expand) {
    MStringArray names;
    for (const char* name : GetParam().names)
        names.append(name);
    EXPECT_EQ(list(parseVertexComponents(names)), GetParam().vertices);
}

INSTANTIATE_TEST_SUITE_P(Forms, VertexNames,
                         ::testing::Values(NameCase{{"pSphere1.vtx[12]"}, {12}},
                                           NameCase{{"a.vtx[3:7]", "|g|b.vtx[0]", "a.vtx[5]"},
                                                    {3, 4, 5, 6, 7, 0, 5}},
                                           NameCase{{"a.vtx[5:5]"}, {5}},  //
                                           NameCase{{"a.vtx[7:5]"}, {}},   //
                                           NameCase{{"a.vtx[-2147483648:1]"}, {0, 1}},
                                           NameCase{{"vtx[4]", "a.vtx[2]"}, {2}}, NameCase{{}, {}}));

MPlug plugOf(const char* name) {
    MSelectionList found;
    found.add(name);
    MPlug plug;
    found.getPlug(0, plug);
    return plug;
}

/// The composed script fails, because the name of the node has become ambiguous; the data does not go by
/// names.
TEST_F(Common, AComponentListGoesInAsDataWhereTheScriptFails) {
    scene_.mel(
        "createNode network -name other; addAttr -ln list -dt componentList other; group -empty -name a;"
        "group -empty -name b; createNode transform -name x -parent a; addAttr -ln list -dt componentList "
        "a|x");
    const MPlug plug = plugOf("a|x.list");
    scene_.mel("createNode transform -name x -parent b");
    const Outcome outcome = scene_.during([&] { setComponentList(plug, ints({7, 3, 4, 4})); });
    EXPECT_TRUE(outcome.warnings.empty());
    EXPECT_EQ(list(componentListToIndices(plug)), (std::vector<int>{7, 3, 4, 4})) << "in stored order";
}

TEST_F(Common, AListThatCannotBeWrittenAtAllIsToldWithItsName) {
    scene_.mel("setAttr -lock 1 bs.it[0].itg[0].iti[6000].ict");
    const Outcome outcome = scene_.during([] {
        EXPECT_TRUE(setTargetComponents(node("bs"), 0, 6000, ints({1})))
            << "the status is that of the look-up";
    });
    ASSERT_EQ(outcome.warnings.size(), 1U);
    EXPECT_EQ(outcome.warnings[0].substr(0, 69),
              "The vertex list bs.inputTarget[0].inputTargetGroup[0].inputTargetItem");
    EXPECT_EQ(list(getTargetComponents(node("bs"), 0, 6000)), (std::vector<int>{3, 7, 12}));
}

}  // namespace
