#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MFnComponentListData.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>

#include <vector>

#include "apiFixture.h"

using namespace apitest;

namespace {

class DeformerTest : public ApiTest {
  protected:
    DeformerTest() {
        addMesh("base");
        addMesh("target");
        addMesh("half");
        move("targetShape", 3, MPoint(0, 2, 0));
        move("halfShape", 3, MPoint(0, 0, 4));
    }

    static void move(const char* shape, unsigned int vertex, const MPoint& offset) {
        MFnMesh mesh(object(shape));
        MPointArray points;
        mesh.getPoints(points);
        points[vertex] += MVector(offset);
        mesh.setPoints(points);
    }
    /// How far vertex 3 of the base is from where it was.
    static MVector offset() {
        MPoint deformed;
        MPoint original;
        MFnMesh(object("baseShape")).getPoint(3, deformed);
        MFnMesh(object("baseShapeOrig")).getPoint(3, original);
        return deformed - original;
    }
    static MObject firstBase(const MFnBlendShapeDeformer& blend) {
        MObjectArray bases;
        EXPECT_TRUE(blend.getBaseObjects(bases));
        return bases.length() > 0 ? bases[0] : MObject();
    }
};

TEST_F(DeformerTest, CreatedOnATransformItDeformsTheShape) {
    MFnBlendShapeDeformer blend;
    MStatus status;
    MObject node = blend.create(object("base"), MFnBlendShapeDeformer::kLocalOrigin, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(node.hasFn(MFn::kBlendShape));
    EXPECT_TRUE(firstBase(blend) == object("baseShape"));
    EXPECT_EQ(blend.origin(), MFnBlendShapeDeformer::kLocalOrigin);
    MFnGeometryFilter filter(node);
    EXPECT_TRUE(filter.inputShapeAtIndex(0) == object("baseShapeOrig"));
    EXPECT_TRUE(filter.outputShapeAtIndex(0) == object("baseShape"));
    EXPECT_EQ(filter.indexForOutputShape(object("baseShape")), 0U);
    EXPECT_EQ(filter.numOutputConnections(), 1U);
    EXPECT_TRUE(MFnDagNode(object("base")).child(0) == object("baseShape"));
    EXPECT_TRUE(MFnDagNode(object("baseShapeOrig")).isIntermediateObject());
    MDagPath output;
    EXPECT_TRUE(filter.getPathAtIndex(0, output));
    EXPECT_TRUE(output == path("baseShape"));
    EXPECT_FALSE(filter.getPathAtIndex(1, output));
    blend.create(object("initialShadingGroup"), MFnBlendShapeDeformer::kLocalOrigin, &status);
    EXPECT_FALSE(status);
}

TEST_F(DeformerTest, TargetsDeformByTheirWeight) {
    MFnBlendShapeDeformer blend;
    MObject node = blend.create(object("base"));
    ASSERT_TRUE(blend.addTarget(firstBase(blend), 0, object("target"), 1.0));
    EXPECT_EQ(blend.weight(0), 0.0F);
    EXPECT_EQ(offset(), MVector(0, 0, 0));
    ASSERT_TRUE(blend.setWeight(0, 0.5F));
    EXPECT_TRUE(offset().isEquivalent(MVector(0, 1, 0), 1e-6));
    MFnGeometryFilter filter(node);
    ASSERT_TRUE(filter.setEnvelope(2.0F));
    EXPECT_EQ(filter.envelope(), 2.0F);
    EXPECT_TRUE(offset().isEquivalent(MVector(0, 2, 0), 1e-6));
    EXPECT_FALSE(blend.setWeight(5, 1.0F));
    MStatus status;
    blend.weight(5, &status);
    EXPECT_FALSE(status);
}

TEST_F(DeformerTest, ASecondTargetOfAnIndexIsAnInBetween) {
    MFnBlendShapeDeformer blend;
    blend.create(object("base"));
    const MObject base = firstBase(blend);
    ASSERT_TRUE(blend.addTarget(base, 4, object("targetShape"), 1.0));
    ASSERT_TRUE(blend.addTarget(base, 4, object("halfShape"), 0.5));
    EXPECT_FALSE(blend.addTarget(base, 4, object("halfShape"), 0.5));
    ASSERT_TRUE(blend.addTarget(base, 1, object("halfShape"), 1.0));
    MIntArray list;
    ASSERT_TRUE(blend.weightIndexList(list));
    EXPECT_EQ(ints(list), (std::vector<int>{1, 4}));
    EXPECT_EQ(blend.numWeights(), 2U);
    ASSERT_TRUE(blend.targetItemIndexList(4, base, list));
    EXPECT_EQ(ints(list), (std::vector<int>{5500, 6000}));
    MObjectArray targets;
    ASSERT_TRUE(blend.getTargets(base, 4, targets));
    ASSERT_EQ(targets.length(), 2U);
    EXPECT_TRUE(targets[0] == object("halfShape"));
    blend.setWeight(4, 0.75F);
    EXPECT_TRUE(offset().isEquivalent(MVector(0, 1, 2), 1e-5));
    EXPECT_FALSE(blend.addTarget(object("target"), 2, object("half"), 1.0));
    EXPECT_FALSE(blend.targetItemIndexList(4, object("half"), list));
}

TEST_F(DeformerTest, DeltasWrittenOverALiveTargetWin) {
    MFnBlendShapeDeformer blend;
    blend.create(object("base"));
    ASSERT_TRUE(blend.addTarget(firstBase(blend), 0, object("target"), 1.0));
    blend.setWeight(0, 1.0F);
    const std::string item = text(blend.name()) + ".it[0].itg[0].iti[6000]";
    MFnComponentListData components;
    MObject list = components.create();
    MFnSingleIndexedComponent vertices;
    MObject entry = vertices.create(MFn::kMeshVertComponent);
    vertices.addElement(3);
    components.add(entry);
    MFnPointArrayData points;
    ASSERT_TRUE(plug(item + ".ict").setValue(list));
    ASSERT_TRUE(plug(item + ".ipt").setValue(points.create(MPointArray(1, MPoint(7, 0, 0)))));
    EXPECT_TRUE(offset().isEquivalent(MVector(7, 0, 0), 1e-6));
}

TEST_F(DeformerTest, DeletingTheTargetKeepsItsDeltasAndDeletingTheBaseTakesTheDeformer) {
    MFnBlendShapeDeformer blend;
    const MObject node = blend.create(object("base"));
    blend.addTarget(firstBase(blend), 0, object("target"), 1.0);
    blend.setWeight(0, 1.0F);
    MObject target = object("target");
    ASSERT_TRUE(MGlobal::deleteNode(target));
    EXPECT_TRUE(offset().isEquivalent(MVector(0, 2, 0), 1e-6));
    MObject base = object("base");
    ASSERT_TRUE(MGlobal::deleteNode(base));
    EXPECT_FALSE(node.hasFn(MFn::kBlendShape));
    EXPECT_TRUE(object("baseShapeOrig").isNull());
    EXPECT_FALSE(graph.undoQueue().canUndo());
    MStatus status;
    blend.numWeights(&status);
    EXPECT_EQ(status, MS::kFailure);
}

}  // namespace
