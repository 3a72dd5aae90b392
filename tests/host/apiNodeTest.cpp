#include <maya/MBoundingBox.h>
#include <maya/MDagPathArray.h>
#include <maya/MEulerRotation.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnTransform.h>
#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include "apiFixture.h"

using namespace apitest;

namespace {

class NodeTest : public ApiTest {
  protected:
    /// A transform below another one.
    MObject addChild(const char* parent, const char* name) {
        graph.createNode(*graph.types().find("transform"), name, graph.nodesNamed(parent).front().get());
        return object(name);
    }
};

TEST_F(NodeTest, FunctionSetsFollowTheNodeType) {
    const MObject shape = addMesh("pCube1");
    const MObject transform = object("pCube1");
    const MObject blend = addNode("blendShape", "bs");
    for (const MFn::Type type : {MFn::kMesh, MFn::kShape, MFn::kDagNode, MFn::kDependencyNode})
        EXPECT_TRUE(shape.hasFn(type)) << type;
    EXPECT_FALSE(shape.hasFn(MFn::kTransform));
    EXPECT_EQ(shape.apiType(), MFn::kMesh);
    EXPECT_STREQ(shape.apiTypeStr(), "kMesh");
    EXPECT_EQ(transform.apiType(), MFn::kTransform);
    for (const MFn::Type type : {MFn::kBlendShape, MFn::kGeometryFilt, MFn::kDependencyNode})
        EXPECT_TRUE(blend.hasFn(type)) << type;
    EXPECT_FALSE(blend.hasFn(MFn::kDagNode));
    EXPECT_TRUE(object("initialShadingGroup").hasFn(MFn::kSet));
    EXPECT_FALSE(MObject().hasFn(MFn::kBase));
}

TEST_F(NodeTest, AttachingToTheWrongObjectFailsAndLeavesNone) {
    MStatus status;
    const MObject blend = addNode("blendShape", "bs");
    const MFnDagNode dag(blend, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(dag.object().isNull());
    dag.fullPathName(&status);
    EXPECT_EQ(status, MS::kFailure);
    const MFnDependencyNode null(MObject::kNullObj, &status);
    EXPECT_EQ(status, MS::kFailure);
    MFnDependencyNode node;
    EXPECT_TRUE(node.setObject(blend));
    EXPECT_TRUE(node.object() == blend);
}

TEST_F(NodeTest, AnObjectOutlivesItsNodeAndComesBackWithIt) {
    MObject shape = addMesh("pCube1");
    const MObject transform = object("pCube1");
    const MObjectHandle handle(shape);
    EXPECT_TRUE(handle.isValid() && handle.isAlive());
    host::graph::ChangeList changes;
    {
        const host::graph::RecordingScope recording(graph, &changes);
        graph.deleteNodes(graph.nodesNamed("pCube1"));
    }
    EXPECT_FALSE(shape.isNull());
    EXPECT_FALSE(shape.hasFn(MFn::kMesh));
    EXPECT_FALSE(handle.isValid());
    EXPECT_TRUE(handle.isAlive());
    EXPECT_TRUE(handle.object().isNull());
    MStatus status;
    const MFnMesh set(shape, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_EQ(MGlobal::deleteNode(shape), MS::kFailure);
    changes.undo(graph);
    EXPECT_TRUE(handle.isValid());
    EXPECT_TRUE(shape.hasFn(MFn::kMesh));
    EXPECT_TRUE(object("pCube1") == transform);
    EXPECT_EQ(MFnMesh(shape).numVertices(), 8);
}

TEST_F(NodeTest, HandlesOfOneObjectAreEqualAndHashEqually) {
    const MObject first = addNode("network", "net1");
    const MObject second = addNode("network", "net2");
    EXPECT_TRUE(MObjectHandle(first) == MObjectHandle(object("net1")));
    EXPECT_EQ(MObjectHandle(first).hashCode(), MObjectHandle::objectHashCode(object("net1")));
    EXPECT_NE(MObjectHandle(first).hashCode(), MObjectHandle(second).hashCode());
    EXPECT_TRUE(MObjectHandle(first) != second);
    EXPECT_TRUE(MObjectHandle().object().isNull());
    EXPECT_FALSE(MObjectHandle().isAlive());
}

TEST_F(NodeTest, NodesAreMadeNamedAndRenamed) {
    MFnDependencyNode node;
    MStatus status;
    const MObject made = node.create("network", "region", &status);
    EXPECT_TRUE(made == object("region"));
    EXPECT_TRUE(status);
    EXPECT_EQ(text(node.typeName()), "network");
    EXPECT_EQ(text(node.absoluteName()), ":region");
    EXPECT_TRUE(node.hasUniqueName());
    addNode("network", "taken");
    EXPECT_EQ(text(node.setName("taken")), "taken1");
    EXPECT_EQ(text(node.name()), "taken1");
    EXPECT_EQ(text(node.setName("1 odd-name")), "_1_odd_name");
    node.setName("", false, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(node.create("nothing", &status).isNull());
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(node.create("transform", &status).isNull());
    EXPECT_FALSE(status);
}

TEST_F(NodeTest, AliasesNameOnePlugEach) {
    MFnDependencyNode blend(addNode("blendShape", "bs"));
    plug("bs.w[0]").setFloat(0.5F);
    EXPECT_TRUE(blend.setAlias("smile", "w[0]", plug("bs.w[0]")));
    EXPECT_EQ(plug("bs.smile").asFloat(), 0.5F);
    EXPECT_EQ(text(blend.plugsAlias(plug("bs.w[0]"))), "smile");
    MObject attribute;
    EXPECT_TRUE(blend.findAlias("smile", attribute));
    EXPECT_TRUE(attribute == blend.attribute("weight"));
    EXPECT_FALSE(blend.findAlias("frown", attribute));
    EXPECT_EQ(text(plug("bs.w[0]").partialName(true, false, false, true)), "bs.smile");
    for (const char* refused : {"smile", "envelope", "en", "1st", "two words", ""})
        EXPECT_FALSE(blend.setAlias(refused, "w[1]", plug("bs.w[1]"))) << refused;
    MStringArray list;
    EXPECT_TRUE(blend.getAliasList(list));
    EXPECT_EQ(texts(list), (std::vector<std::string>{"smile", "weight[0]"}));
    EXPECT_TRUE(blend.setAlias("smile", "w[0]", plug("bs.w[0]"), false));
    EXPECT_FALSE(blend.getAliasList(list));
}

TEST_F(NodeTest, AttributesAreFoundByLongAndShortName) {
    const MFnDependencyNode blend(addNode("blendShape", "bs"));
    EXPECT_TRUE(blend.hasAttribute("it") && blend.hasAttribute("inputTarget") &&
                !blend.hasAttribute("freeze"));
    EXPECT_TRUE(blend.attribute("ipt") == blend.attribute("inputPointsTarget"));
    EXPECT_TRUE(blend.attribute("ipt").hasFn(MFn::kTypedAttribute));
    EXPECT_TRUE(blend.attribute("it").hasFn(MFn::kCompoundAttribute));
    EXPECT_TRUE(blend.attribute("w").hasFn(MFn::kNumericAttribute));
    EXPECT_EQ(blend.attributeClass(blend.attribute("w")), MFnDependencyNode::kNormalAttr);
    const host::graph::NodeRef node = graph.nodesNamed("bs").front();
    graph.addAttribute(*node, host::graph::typed("dvMap", "dvm", "Int32Array"));
    EXPECT_EQ(blend.attributeClass(blend.attribute("dvm")), MFnDependencyNode::kLocalDynamicAttr);
    EXPECT_TRUE(plug("bs.dvMap").isDynamic());
    MStatus status;
    EXPECT_TRUE(blend.attribute("nothing", &status).isNull());
    EXPECT_EQ(status, MS::kInvalidParameter);
}

TEST_F(NodeTest, PathsKnowTheirNeighbours) {
    addMesh("pCube1");
    addNode("transform", "group");
    graph.reparent(*graph.nodesNamed("pCube1").front(), graph.nodesNamed("group").front().get());
    MDagPath cube = path("pCube1");
    EXPECT_EQ(text(cube.fullPathName()), "|group|pCube1");
    EXPECT_EQ(text(cube.partialPathName()), "pCube1");
    EXPECT_EQ(cube.length(), 2U);
    EXPECT_EQ(cube.childCount(), 1U);
    MDagPath shape(cube);
    ASSERT_TRUE(shape.extendToShape());
    EXPECT_EQ(text(shape.fullPathName()), "|group|pCube1|pCubeShape1");
    EXPECT_TRUE(shape.extendToShape());
    EXPECT_TRUE(shape.transform() == cube.node());
    EXPECT_TRUE(cube.child(0) == shape.node());
    ASSERT_TRUE(shape.pop(2));
    EXPECT_EQ(text(shape.fullPathName()), "|group");
    EXPECT_FALSE(shape.extendToShape());
    EXPECT_FALSE(shape.pop(2));
    ASSERT_TRUE(shape.push(cube.node()));
    EXPECT_TRUE(shape == cube);
    EXPECT_FALSE(shape.push(object("group")));
    EXPECT_FALSE(MDagPath().isValid());
    EXPECT_EQ(MDagPath::getAPathTo(object("initialShadingGroup"), shape), MS::kInvalidParameter);
}

TEST_F(NodeTest, ExtendToShapePassesOverIntermediateShapes) {
    addMesh("pCube1");
    host::nodes::createMeshShape(graph, host::geometry::makeCube(), "pCubeShape1Orig",
                                 *graph.nodesNamed("pCube1").front());
    MDagPath cube = path("pCube1");
    EXPECT_FALSE(cube.extendToShape());
    MFnDagNode(object("pCubeShape1Orig")).setIntermediateObject(true);
    EXPECT_TRUE(MFnDagNode(object("pCubeShape1Orig")).isIntermediateObject());
    unsigned int shapes = 0;
    EXPECT_TRUE(cube.numberOfShapesDirectlyBelow(shapes));
    EXPECT_EQ(shapes, 2U);
    MDagPath original(cube);
    ASSERT_TRUE(original.extendToShapeDirectlyBelow(1));
    EXPECT_EQ(text(original.partialPathName()), "pCubeShape1Orig");
    EXPECT_FALSE(MDagPath(path("pCube1")).extendToShapeDirectlyBelow(2));
    ASSERT_TRUE(cube.extendToShape());
    EXPECT_EQ(text(cube.partialPathName()), "pCubeShape1");
}

TEST_F(NodeTest, DagNodesKnowParentsAndChildren) {
    const MObject top = addNode("transform", "top");
    const MObject middle = addChild("top", "middle");
    const MObject leaf = addChild("middle", "leaf");
    const MFnDagNode dag(middle);
    EXPECT_TRUE(dag.parent(0) == top);
    EXPECT_TRUE(dag.child(0) == leaf);
    EXPECT_TRUE(dag.hasParent(top) && dag.hasChild(leaf) && !dag.hasChild(top));
    EXPECT_TRUE(MFnDagNode(leaf).isChildOf(top));
    EXPECT_TRUE(MFnDagNode(top).isParentOf(leaf));
    EXPECT_FALSE(MFnDagNode(leaf).isParentOf(top));
    EXPECT_TRUE(MFnDagNode(top).parent(0).hasFn(MFn::kWorld));
    MStatus status;
    dag.child(1, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    dag.dagPath(&status);
    EXPECT_FALSE(status);
    EXPECT_EQ(text(MFnDagNode(path("leaf")).dagPath(&status).fullPathName()), "|top|middle|leaf");
    MDagPath found;
    EXPECT_TRUE(dag.getPath(found));
    EXPECT_TRUE(found == path("middle"));
}

TEST_F(NodeTest, InstancesHaveAPathEach) {
    addMesh("pCube1");
    addNode("transform", "other");
    addNode("transform", "above");
    const auto node = [&](const char* name) { return graph.nodesNamed(name).front(); };
    graph.reparent(*node("other"), node("above").get());
    graph.addInstance(*node("pCubeShape1"), node("other").get());
    graph.addInstance(*node("other"), nullptr);
    plug("above.ty").setDouble(5.0);
    plug("other.tx").setDouble(3.0);
    const MFnDagNode shape(object("pCubeShape1"));
    EXPECT_EQ(shape.parentCount(), 2U);
    EXPECT_TRUE(shape.parent(1) == object("other"));
    EXPECT_TRUE(shape.hasParent(object("other")) && MFnDagNode(object("other")).hasChild(shape.object()));
    EXPECT_TRUE(shape.isChildOf(object("above")) && MFnDagNode(object("other")).parent(0).hasFn(MFn::kWorld));
    EXPECT_TRUE(shape.isInstanced() && shape.isInstanced(false));
    EXPECT_EQ(shape.instanceCount(true), 3U);
    EXPECT_EQ(shape.instanceCount(false), 2U);
    EXPECT_DOUBLE_EQ(MFnDagNode(object("above")).boundingBox().center().x, 3.0);
    MDagPathArray paths;
    ASSERT_TRUE(shape.getAllPaths(paths));
    ASSERT_TRUE(MDagPath::getAllPathsTo(shape.object(), paths));
    const char* const names[] = {"|pCube1|pCubeShape1", "|other|pCubeShape1", "|above|other|pCubeShape1"};
    const char* const shortNames[] = {"pCubeShape1", "|other|pCubeShape1", "above|other|pCubeShape1"};
    ASSERT_EQ(paths.length(), 3U);
    for (unsigned int k = 0; k < 3; ++k) {
        EXPECT_EQ(text(paths[k].fullPathName()), names[k]);
        EXPECT_EQ(text(paths[k].partialPathName()), shortNames[k]);
        EXPECT_EQ(paths[k].instanceNumber(), k);
        EXPECT_TRUE(paths[k].isInstanced());
        EXPECT_EQ(paths[k].length(), k < 2 ? 2U : 3U);
        EXPECT_EQ(paths[k] == path("pCubeShape1"), k == 0);
        MDagPath up(paths[k]);
        EXPECT_TRUE(up.transform() == (k == 0 ? object("pCube1") : object("other")));
        ASSERT_TRUE(up.pop());
        ASSERT_TRUE(up.push(shape.object()));
        EXPECT_TRUE(up == paths[k]);
        ASSERT_TRUE(up.pop() && up.extendToShape());
        EXPECT_TRUE(up == paths[k]);
    }
    EXPECT_DOUBLE_EQ(paths[2].inclusiveMatrix()[3][0], 3.0);
    EXPECT_DOUBLE_EQ(paths[2].inclusiveMatrix()[3][1], 5.0);
    EXPECT_DOUBLE_EQ(paths[1].exclusiveMatrix()[3][1], 0.0);
    graph.removeInstance(*node("pCubeShape1"), node("other").get());
    EXPECT_EQ(text(paths[2].fullPathName()), "") << "the instance is gone";
    EXPECT_FALSE(paths[0].isInstanced());
}

TEST_F(NodeTest, AShapeIsMadeWithATransformOrBelowOne) {
    MFnDagNode dag;
    MStatus status;
    const MObject transform = dag.create("mesh", MObject::kNullObj, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(transform.hasFn(MFn::kTransform));
    EXPECT_TRUE(dag.object().hasFn(MFn::kMesh));
    EXPECT_TRUE(dag.parent(0) == transform);
    MObject parent = addNode("transform", "holder");
    const MObject shape = dag.create("mesh", "ownShape", parent, &status);
    EXPECT_TRUE(shape.hasFn(MFn::kMesh));
    EXPECT_EQ(text(dag.fullPathName()), "|holder|ownShape");
    MObject wrong = shape;
    EXPECT_TRUE(dag.create("transform", wrong, &status).isNull());
    EXPECT_FALSE(status);
}

TEST_F(NodeTest, MatricesAndBoxesAddUpAlongThePath) {
    addMesh("pCube1");
    addNode("transform", "group");
    graph.reparent(*graph.nodesNamed("pCube1").front(), graph.nodesNamed("group").front().get());
    plug("group.tx").setDouble(10.0);
    plug("pCube1.ty").setDouble(5.0);
    plug("pCube1.sx").setDouble(2.0);
    const MDagPath cube = path("pCube1");
    EXPECT_TRUE((MPoint(1, 1, 1) * cube.inclusiveMatrix()).isEquivalent(MPoint(12, 6, 1)));
    EXPECT_TRUE((MPoint(1, 1, 1) * cube.exclusiveMatrix()).isEquivalent(MPoint(11, 1, 1)));
    EXPECT_TRUE((MPoint(12, 6, 1) * cube.inclusiveMatrixInverse()).isEquivalent(MPoint(1, 1, 1)));
    EXPECT_TRUE(MFnDagNode(cube).transformationMatrix() ==
                cube.inclusiveMatrix() * cube.exclusiveMatrixInverse());
    const MBoundingBox box = MFnDagNode(object("pCube1")).boundingBox();
    EXPECT_TRUE(box.min().isEquivalent(MPoint(-1, 4.5, -0.5)));
    EXPECT_TRUE(box.max().isEquivalent(MPoint(1, 5.5, 0.5)));
    EXPECT_DOUBLE_EQ(MFnDagNode(object("group")).boundingBox().max().x, 11.0);
    EXPECT_DOUBLE_EQ(MFnDagNode(object("pCubeShape1")).boundingBox().width(), 1.0);
}

TEST_F(NodeTest, ATransformationGoesInAndComesOutWhole) {
    addNode("transform", "arm");
    MFnTransform arm(path("arm"));
    MTransformationMatrix wanted;
    const double angles[3] = {0.3, 4.0, -0.2};
    const double scale[3] = {2.0, 3.0, 4.0};
    wanted.setRotation(angles, MTransformationMatrix::kZXY);
    wanted.setScale(scale, MSpace::kTransform);
    wanted.setTranslation(MVector(1, 2, 3), MSpace::kTransform);
    ASSERT_TRUE(arm.set(wanted));
    double read[3];
    MTransformationMatrix::RotationOrder order = MTransformationMatrix::kInvalid;
    arm.transformation().getRotation(read, order);
    EXPECT_EQ(order, MTransformationMatrix::kZXY);
    EXPECT_EQ(read[1], 4.0);
    EXPECT_EQ(plug("arm.rotateOrder").asInt(), 2);
    EXPECT_TRUE(arm.transformation().asMatrix().isEquivalent(path("arm").inclusiveMatrix()));
    MEulerRotation rotation;
    ASSERT_TRUE(arm.getRotation(rotation));
    EXPECT_EQ(rotation.order, MEulerRotation::kZXY);
    ASSERT_TRUE(arm.setRotation(MEulerRotation(0.1, 0.2, 0.3)));
    EXPECT_EQ(plug("arm.rotateOrder").asInt(), 0);
    const double bigger[3] = {5.0, 6.0, 7.0};
    arm.setScale(bigger);
    double got[3];
    arm.getScale(got);
    EXPECT_EQ(got[2], 7.0);
}

TEST_F(NodeTest, WorldTranslationNeedsAPath) {
    addNode("transform", "top");
    addChild("top", "leaf");
    plug("top.tx").setDouble(10.0);
    MFnTransform leaf(path("leaf"));
    ASSERT_TRUE(leaf.setTranslation(MVector(1, 2, 3), MSpace::kWorld));
    EXPECT_DOUBLE_EQ(plug("leaf.tx").asDouble(), -9.0);
    EXPECT_DOUBLE_EQ(leaf.getTranslation(MSpace::kWorld).x, 1.0);
    EXPECT_DOUBLE_EQ(leaf.getTranslation(MSpace::kTransform).x, -9.0);
    MStatus status;
    MFnTransform(object("leaf")).getTranslation(MSpace::kWorld, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
}

}  // namespace
