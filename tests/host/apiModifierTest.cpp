#include <maya/MDGModifier.h>
#include <maya/MDagModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MPoint.h>

#include "apiFixture.h"

using namespace apitest;

namespace {

class ModifierTest : public ApiTest {
  protected:
    ModifierTest() {
        addNode("transform", "left");
        addNode("transform", "right");
    }
};

TEST_F(ModifierTest, ChangesWaitForDoItAndGoWithUndoIt) {
    MDGModifier modifier;
    modifier.newPlugValueDouble(plug("left.tx"), 4.0);
    modifier.connect(plug("left.tx"), plug("right.ty"));
    modifier.renameNode(object("left"), "port");
    EXPECT_EQ(plug("left.tx").asDouble(), 0.0);
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(plug("right.ty").asDouble(), 4.0);
    EXPECT_EQ(text(plug("right.ty").source().name()), "port.translateX");
    ASSERT_TRUE(modifier.undoIt());
    EXPECT_EQ(plug("left.tx").asDouble(), 0.0);
    EXPECT_FALSE(plug("right.ty").isConnected());
    EXPECT_EQ(plug("right.ty").asDouble(), 0.0);
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(plug("right.ty").asDouble(), 4.0);
    modifier.newPlugValueDouble(plug("port.tx"), 6.0);
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(plug("right.ty").asDouble(), 6.0);
    modifier.undoIt();
    EXPECT_EQ(plug("left.tx").asDouble(), 0.0);
    EXPECT_FALSE(graph.undoQueue().canUndo());
}

TEST_F(ModifierTest, AFailingChangeTakesTheOthersBack) {
    MDGModifier modifier;
    modifier.newPlugValueInt(plug("left.tx"), 4);
    modifier.disconnect(plug("left.tx"), plug("right.ty"));
    EXPECT_FALSE(modifier.doIt());
    EXPECT_EQ(plug("left.tx").asDouble(), 0.0);
    modifier.connect(plug("left.tx"), plug("right.ty"));
    ASSERT_TRUE(modifier.doIt());
    modifier.connect(plug("left.tz"), plug("right.ty"));
    EXPECT_FALSE(modifier.doIt());
    EXPECT_EQ(text(plug("right.ty").source().name()), "left.translateX");
    EXPECT_FALSE(modifier.connect(MPlug(), plug("right.ty")));
    EXPECT_FALSE(modifier.renameNode(object("left"), "not legal"));
    EXPECT_FALSE(modifier.deleteNode(MObject::kNullObj));
}

TEST_F(ModifierTest, MadeAndDeletedNodesComeAndGo) {
    MDagModifier modifier;
    const MObject made = modifier.createNode("transform", object("left"));
    ASSERT_TRUE(made.hasFn(MFn::kTransform));
    EXPECT_TRUE(MFnDagNode(made).parent(0) == object("left"));
    modifier.deleteNode(object("right"));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_TRUE(object("right").isNull());
    ASSERT_TRUE(modifier.undoIt());
    EXPECT_FALSE(made.hasFn(MFn::kTransform));
    EXPECT_FALSE(object("right").isNull());
    MStatus status;
    EXPECT_TRUE(modifier.createNode("transform", MObject::kNullObj, &status).isNull());
    EXPECT_FALSE(status);
    ASSERT_TRUE(modifier.doIt());
    EXPECT_TRUE(made.hasFn(MFn::kTransform));
    EXPECT_TRUE(object("right").isNull());
    MDGModifier plain;
    EXPECT_TRUE(plain.createNode("network").hasFn(MFn::kDependencyNode));
    EXPECT_TRUE(plain.createNode("transform", &status).isNull());
    EXPECT_TRUE(modifier.createNode("mesh", MObject::kNullObj, &status).isNull());
}

TEST_F(ModifierTest, DeletingTheOnlyShapeTakesTheTransformUnlessToldNotTo) {
    for (const bool includeParents : {true, false}) {
        addMesh("pCube1");
        MDGModifier modifier;
        modifier.deleteNode(object("pCubeShape1"), includeParents);
        ASSERT_TRUE(modifier.doIt());
        EXPECT_EQ(object("pCube1").isNull(), includeParents);
    }
}

TEST_F(ModifierTest, ReparentingKeepsTheLocalTransformation) {
    const MObject shape = addMesh("pCube1");
    plug("left.tx").setDouble(10.0);
    plug("right.tx").setDouble(5.0);
    MDagModifier modifier;
    modifier.reparentNode(object("right"), object("left"));
    modifier.reparentNode(shape, object("right"));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(text(MFnDagNode(shape).fullPathName()), "|left|right|pCubeShape1");
    EXPECT_EQ(plug("right.tx").asDouble(), 5.0);
    MPoint place;
    MFnMesh(path("pCubeShape1")).getPoint(0, place, MSpace::kWorld);
    EXPECT_DOUBLE_EQ(place.x, 14.5);
    modifier.reparentNode(object("right"));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(text(MFnDagNode(shape).fullPathName()), "|right|pCubeShape1");
    modifier.undoIt();
    EXPECT_EQ(text(MFnDagNode(shape).fullPathName()), "|pCube1|pCubeShape1");
}

TEST_F(ModifierTest, ImpossibleParentsAreRefused) {
    const MObject shape = addMesh("pCube1");
    graph.reparent(*graph.nodesNamed("right").front(), graph.nodesNamed("left").front().get());
    const std::pair<MObject, MObject> refused[] = {
        {shape, MObject::kNullObj},       {shape, shape},
        {object("right"), shape},         {object("left"), object("right")},
        {object("left"), object("left")}, {object("initialShadingGroup"), object("left")}};
    for (const auto& [node, parent] : refused) {
        MDagModifier modifier;
        modifier.reparentNode(node, parent);
        EXPECT_FALSE(modifier.doIt()) << text(MFnDependencyNode(node).name());
    }
    EXPECT_EQ(text(MFnDagNode(shape).fullPathName()), "|pCube1|pCubeShape1");
}

}  // namespace
