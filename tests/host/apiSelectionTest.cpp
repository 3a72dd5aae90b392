#include <maya/MFnComponentListData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>

#include <string>
#include <vector>

#include "apiFixture.h"

using namespace apitest;

namespace {

using Names = std::vector<std::string>;

class SelectionTest : public ApiTest {
  protected:
    SelectionTest() {
        addMesh("pCube1");
        addMesh("pCube2");
    }

    static MObject component(std::vector<int> elements, MFn::Type type = MFn::kMeshVertComponent) {
        MFnSingleIndexedComponent set;
        const MObject object = set.create(type);
        MIntArray array(elements.data(), static_cast<unsigned int>(elements.size()));
        set.addElements(array);
        return object;
    }
};

TEST_F(SelectionTest, AddByNameTakesNodesPlugsComponentsAndPatterns) {
    MSelectionList list;
    for (const char* name : {"pCube1", "|pCube2|pCubeShape2", "pCube1.tx", "pCube1.vtx[1:2]", "pCubeShape*"})
        EXPECT_TRUE(list.add(name)) << name;
    EXPECT_EQ(names(list), (Names{"pCube1", "pCubeShape2", "pCube1.translateX", "pCube1.vtx[1:2]",
                                  "pCubeShape1", "pCubeShape2"}));
}

class FailingName : public SelectionTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FailingName, FailsAndChangesNothing) {
    MSelectionList list;
    list.add("pCube1");
    EXPECT_EQ(list.add(GetParam()), MS::kInvalidParameter);
    EXPECT_EQ(names(list), Names{"pCube1"});
}

INSTANTIATE_TEST_SUITE_P(Names, FailingName,
                         ::testing::Values("nothing", "no*", "pCube1.nothing", "pCubeShape1.dvVertexOrderMap",
                                           "pCube1.vtx[100]", "", "nothing.tx"));

TEST_F(SelectionTest, AnAmbiguousNameFailsWithoutAWildcardOnly) {
    addNode("transform", "group");
    graph.createNode(*graph.types().find("transform"), "pCube1", graph.nodesNamed("group").front().get());
    MSelectionList list;
    EXPECT_FALSE(list.add("pCube1"));
    EXPECT_TRUE(list.add("group|pCube1"));
    EXPECT_TRUE(list.add("pCube1*"));
    EXPECT_EQ(list.length(), 3U);
}

TEST_F(SelectionTest, ItemsComeBackAsWhatTheyAre) {
    MSelectionList list;
    for (const char* name : {"pCube1.vtx[1:2]", "pCube1.tx", "initialShadingGroup"})
        ASSERT_TRUE(list.add(name));
    MObject node;
    MDagPath dag;
    MObject elements;
    MPlug found;
    ASSERT_TRUE(list.getDagPath(0, dag, elements));
    EXPECT_EQ(text(dag.partialPathName()), "pCubeShape1");
    EXPECT_EQ(MFnSingleIndexedComponent(elements).elementCount(), 2);
    EXPECT_EQ(elements.apiType(), MFn::kMeshVertComponent);
    ASSERT_TRUE(list.getDependNode(0, node));
    EXPECT_TRUE(node == object("pCubeShape1"));
    EXPECT_FALSE(list.getPlug(0, found));
    ASSERT_TRUE(list.getPlug(1, found));
    EXPECT_EQ(text(found.name()), "pCube1.translateX");
    ASSERT_TRUE(list.getDependNode(1, node));
    EXPECT_TRUE(node == object("pCube1"));
    EXPECT_EQ(list.getDagPath(2, dag), MS::kInvalidParameter);
    EXPECT_EQ(list.getDependNode(3, node), MS::kInvalidParameter);
    EXPECT_EQ(list.getPlug(3, found), MS::kInvalidParameter);
    list.add("pCube2");
    ASSERT_TRUE(list.getDagPath(3, dag, elements));
    EXPECT_TRUE(elements.isNull());
}

TEST_F(SelectionTest, OnlyMergingKeepsAnObjectSingle) {
    MSelectionList list;
    const MDagPath cube = path("pCube1");
    list.add(cube);
    list.add(cube);
    EXPECT_EQ(list.length(), 2U);
    list.add(cube, MObject::kNullObj, true);
    EXPECT_EQ(list.length(), 2U);
    list.clear();
    list.add(cube, component({5, 1}));
    list.add(cube, component({2}), true);
    list.add(cube, component({7}, MFn::kMeshEdgeComponent), true);
    EXPECT_EQ(names(list), (Names{"pCube1.vtx[1:2]", "pCube1.vtx[5]", "pCube1.e[7]"}));
    list.add(cube, component({6}));
    EXPECT_EQ(list.length(), 3U);
}

TEST_F(SelectionTest, ListsMergeToggleAndSubtract) {
    MSelectionList left;
    MSelectionList right;
    left.add("pCube1");
    left.add("pCube1.f[0:3]");
    right.add("pCube1.f[2:5]");
    right.add("pCube2");
    const auto merged = [&](MSelectionList::MergeStrategy strategy) {
        MSelectionList list(left);
        EXPECT_TRUE(list.merge(right, strategy));
        return names(list);
    };
    EXPECT_EQ(merged(MSelectionList::kMergeNormal), (Names{"pCube1", "pCube1.f[0:5]", "pCube2"}));
    EXPECT_EQ(merged(MSelectionList::kXORWithList),
              (Names{"pCube1", "pCube1.f[0:1]", "pCube1.f[4:5]", "pCube2"}));
    EXPECT_EQ(merged(MSelectionList::kRemoveFromList), (Names{"pCube1", "pCube1.f[0:1]"}));
    EXPECT_TRUE(left.merge(left, MSelectionList::kXORWithList));
    EXPECT_TRUE(left.isEmpty());
}

TEST_F(SelectionTest, ItemsAreFoundReplacedAndRemoved) {
    MSelectionList list;
    list.add("pCube1");
    list.add("pCube1.vtx[0:3]");
    EXPECT_TRUE(list.hasItem(object("pCube1")));
    EXPECT_FALSE(list.hasItem(object("pCube2")));
    EXPECT_TRUE(list.hasItem(path("pCube1"), component({1, 3})));
    EXPECT_FALSE(list.hasItem(path("pCube1"), component({1, 4})));
    ASSERT_TRUE(list.replace(0, object("pCube2")));
    EXPECT_TRUE(list.hasItem(object("pCube2")));
    ASSERT_TRUE(list.replace(0, plug("pCube2.ty")));
    ASSERT_TRUE(list.replace(1, path("pCube2"), component({4})));
    EXPECT_EQ(names(list), (Names{"pCube2.translateY", "pCube2.vtx[4]"}));
    ASSERT_TRUE(list.remove(0));
    EXPECT_FALSE(list.remove(1));
    EXPECT_EQ(list.length(), 1U);
    EXPECT_FALSE(list.add(MObject::kNullObj));
    EXPECT_FALSE(list.add(MPlug()));
}

TEST_F(SelectionTest, ItemsOfADeletedNodeFail) {
    MSelectionList list;
    list.add("pCube1.tx");
    MObject cube = object("pCube1");
    MGlobal::deleteNode(cube);
    MPlug found;
    MObject node;
    EXPECT_FALSE(list.getPlug(0, found));
    EXPECT_FALSE(list.getDependNode(0, node));
    EXPECT_TRUE(names(list).empty());
}

TEST_F(SelectionTest, TheActiveSelectionIsCopiedAndReplaced) {
    MSelectionList list;
    list.add("pCube2.vtx[0]");
    list.add("pCube1");
    list.add("pCube2.vtx[5]");
    ASSERT_TRUE(MGlobal::setActiveSelectionList(list));
    MSelectionList active;
    ASSERT_TRUE(MGlobal::getActiveSelectionList(active));
    EXPECT_EQ(active.length(), 2U);
    EXPECT_EQ(names(active), (Names{"pCube2.vtx[0]", "pCube2.vtx[5]", "pCube1"}));
    MGlobal::clearSelectionList();
    EXPECT_EQ(active.length(), 2U);
    ASSERT_TRUE(MGlobal::selectByName("pCube1"));
    ASSERT_TRUE(MGlobal::selectByName("pCube2", MGlobal::kAddToHeadOfList));
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(names(active), (Names{"pCube2", "pCube1"}));
    MGlobal::selectByName("pCube*", MGlobal::kXORWithList);
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(names(active), (Names{"pCubeShape1", "pCubeShape2"}));
    MGlobal::selectByName("pCubeShape1", MGlobal::kRemoveFromList);
    MGlobal::getActiveSelectionList(active);
    EXPECT_EQ(names(active), Names{"pCubeShape2"});
    EXPECT_FALSE(MGlobal::selectByName("nothing"));
}

TEST_F(SelectionTest, ElementsOfAComponentAreSortedAndUnique) {
    MFnSingleIndexedComponent set;
    ASSERT_FALSE(set.create(MFn::kMeshVertComponent).isNull());
    MIntArray added;
    for (const int element : {9, 2, 2, 7})
        added.append(element);
    EXPECT_TRUE(set.isEmpty());
    ASSERT_TRUE(set.addElements(added));
    ASSERT_TRUE(set.addElement(3));
    ASSERT_TRUE(set.addElement(3));
    MIntArray elements;
    ASSERT_TRUE(set.getElements(elements));
    EXPECT_EQ(ints(elements), (std::vector<int>{2, 3, 7, 9}));
    EXPECT_EQ(set.elementCount(), 4);
    EXPECT_EQ(set.element(2), 7);
    MStatus status;
    set.element(4, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_FALSE(set.addElement(-1));
    int count = 0;
    EXPECT_FALSE(set.isComplete() || set.getCompleteData(count));
    ASSERT_TRUE(set.setCompleteData(5));
    EXPECT_TRUE(set.isComplete() && set.getCompleteData(count));
    EXPECT_EQ(count, 5);
    EXPECT_EQ(set.element(4), 4);
    EXPECT_TRUE(set.create(MFn::kMesh, &status).isNull());
    EXPECT_FALSE(status);
}

TEST_F(SelectionTest, AComponentListKeepsItsEntriesApart) {
    MFnComponentListData list;
    list.create();
    MObject later = component({8, 9});
    MObject earlier = component({0, 8});
    MObject faces = component({0, 8}, MFn::kMeshPolygonComponent);
    for (MObject* entry : {&later, &earlier, &faces})
        ASSERT_TRUE(list.add(*entry));
    ASSERT_EQ(list.length(), 3U);
    EXPECT_EQ(MFnSingleIndexedComponent(list[0]).element(0), 8);
    EXPECT_EQ(MFnSingleIndexedComponent(list[1]).element(0), 0);
    EXPECT_EQ(list[2].apiType(), MFn::kMeshPolygonComponent);
    EXPECT_TRUE(list[3].isNull());
    EXPECT_TRUE(list.has(component({0, 8})));
    ASSERT_TRUE(list.remove(component({0, 8})));
    EXPECT_FALSE(list.has(component({0, 8})));
    EXPECT_FALSE(list.remove(component({0, 8})));
    ASSERT_TRUE(list.remove(0U));
    EXPECT_EQ(list.length(), 1U);
    MObject wrong = object("pCube1");
    EXPECT_FALSE(list.add(wrong));
    list.clear();
    EXPECT_EQ(list.length(), 0U);
}

TEST_F(SelectionTest, AComponentListGoesThroughAPlugUnchanged) {
    addNode("blendShape", "bs");
    MFnComponentListData list;
    MObject data = list.create();
    MObject entry = component({4, 2});
    list.add(entry);
    MPlug components = plug("bs.it[0].itg[0].iti[6000].ict");
    ASSERT_TRUE(components.setValue(data));
    list.add(entry);
    EXPECT_EQ(list.length(), 2U);
    MFnComponentListData read(components.asMObject());
    EXPECT_EQ(read.length(), 1U);
    EXPECT_EQ(MFnSingleIndexedComponent(read[0]).element(0), 2);
}

}  // namespace
