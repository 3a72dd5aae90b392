#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MMatrix.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <vector>

#include "apiFixture.h"

using namespace apitest;

namespace {

class DataTest : public ApiTest {
  protected:
    /// A plug of a new dynamic attribute of a network node.
    MPlug dataPlug(const char* type) {
        addNode("network", "store");
        graph.addAttribute(*graph.nodesNamed("store").front(), host::graph::typed("content", "cn", type));
        return plug("store.content");
    }
};

/// What every kind of array data does alike.
template <typename Set, typename Array, typename Element>
void checkArrayData(MPlug plug, const Array& values, Element other) {
    Set set;
    MStatus status;
    const MObject data = set.create(values, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(data.hasFn(set.type()) && data.hasFn(MFn::kData));
    ASSERT_TRUE(plug.setValue(data));
    Set read(plug.asMObject(), &status);
    ASSERT_TRUE(status);
    ASSERT_EQ(read.length(), values.length());
    for (unsigned int k = 0; k < values.length(); ++k)
        EXPECT_EQ(read[k], values[k]);
    EXPECT_TRUE(read.set(other, 1));
    EXPECT_EQ(read.array()[1], other);
    EXPECT_EQ(read.set(other, values.length()), MS::kInvalidParameter);
    EXPECT_EQ(Set(plug.asMObject())[1], values[1]);
    Array copied;
    EXPECT_TRUE(set.set(Array()) && set.copyTo(copied));
    EXPECT_EQ(copied.length(), 0U);
    EXPECT_EQ(Set(data).length(), 0U);
    Set unattached;
    EXPECT_EQ(unattached.copyTo(copied), MS::kFailure);
    EXPECT_EQ(unattached.set(values), MS::kFailure);
    unattached.length(&status);
    EXPECT_EQ(status, MS::kFailure);
}

TEST_F(DataTest, PointArrays) {
    checkArrayData<MFnPointArrayData>(dataPlug("pointArray"), MPointArray(3, MPoint(1, 2, 3, 0.5)),
                                      MPoint(4, 5, 6));
}

TEST_F(DataTest, DoubleArrays) {
    checkArrayData<MFnDoubleArrayData>(dataPlug("doubleArray"), MDoubleArray(2, 0.1), 7.0);
}

TEST_F(DataTest, IntArrays) {
    checkArrayData<MFnIntArrayData>(dataPlug("Int32Array"), MIntArray(4, -1), 12);
}

TEST_F(DataTest, StringArrays) {
    checkArrayData<MFnStringArrayData>(dataPlug("stringArray"), MStringArray(2, "smile"), MString("blink"));
}

TEST_F(DataTest, OneKindOfDataIsNotTheOther) {
    MFnIntArrayData numbers;
    const MObject data = numbers.create(MIntArray(2, 5));
    MStatus status;
    const MFnDoubleArrayData wrong(data, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_FALSE(numbers.setObject(addNode("network", "net")));
    EXPECT_EQ(data.apiType(), MFn::kIntArrayData);
    MPlug points = dataPlug("pointArray");
    EXPECT_FALSE(points.setValue(data));
}

TEST_F(DataTest, TextsComeThroughPlugsEitherWay) {
    MPlug content = dataPlug("string");
    EXPECT_EQ(text(content.asString()), "");
    ASSERT_TRUE(content.setString("region map"));
    MFnStringData set(content.asMObject());
    EXPECT_EQ(text(set.string()), "region map");
    EXPECT_TRUE(set.set("other"));
    EXPECT_EQ(text(content.asString()), "region map");
    EXPECT_TRUE(content.setValue(set.object()));
    EXPECT_EQ(text(content.asString()), "other");
    MStatus status;
    EXPECT_EQ(text(MFnStringData().string(&status)), "");
    EXPECT_FALSE(status);
}

TEST_F(DataTest, MatricesKeepTheirElements) {
    double rows[4][4];
    for (int k = 0; k < 16; ++k)
        rows[k / 4][k % 4] = k;
    MPlug content = dataPlug("matrix");
    MFnMatrixData set;
    ASSERT_TRUE(content.setValue(set.create(MMatrix(rows))));
    EXPECT_EQ(MFnMatrixData(content.asMObject()).matrix(), MMatrix(rows));
    EXPECT_TRUE(set.set(MMatrix::identity));
    EXPECT_EQ(set.matrix(), MMatrix::identity);
}

TEST_F(DataTest, AMatrixOfTheSceneIsReadLikeAnyOther) {
    addNode("transform", "arm");
    plug("arm.tz").setDouble(4.0);
    const MPlug world = plug("arm.worldMatrix[0]");
    EXPECT_EQ(MFnMatrixData(world.asMObject()).matrix()(3, 2), 4.0);
    EXPECT_EQ(plug("arm.worldMatrix[0]").setValue(MFnMatrixData().create()), MS::kInvalidParameter);
}

TEST_F(DataTest, ArraysOfObjectsPlugsAndPathsHoldCopies) {
    addNode("transform", "arm");
    MObject arm = object("arm");
    MObjectArray objects(2U, arm);
    arm = MObject();
    EXPECT_TRUE(objects[1] == object("arm"));
    EXPECT_TRUE(objects.insert(MObject::kNullObj, 1));
    EXPECT_TRUE(objects[1].isNull() && objects.length() == 3U);
    EXPECT_FALSE(objects.remove(3));
    MPlugArray plugs;
    plugs.append(plug("arm.tx"));
    plugs.append(plug("arm.ty"));
    EXPECT_TRUE(plugs.remove(0));
    EXPECT_EQ(text(plugs[0].name()), "arm.translateY");
    plugs.setLength(3);
    EXPECT_TRUE(plugs[2].isNull());
    MDagPathArray paths;
    EXPECT_TRUE(MDagPath::getAllPathsTo(object("arm"), paths));
    ASSERT_EQ(paths.length(), 1U);
    EXPECT_TRUE(paths[0] == path("arm"));
}

}  // namespace
