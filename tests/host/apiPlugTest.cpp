#include <maya/MDoubleArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>

#include <string>
#include <vector>

#include "apiFixture.h"

using namespace apitest;

namespace {

class PlugTest : public ApiTest {
  protected:
    PlugTest() : blend(addNode("blendShape", "bs")) {}

    /// A plug of an attribute by MFnDependencyNode.
    static MPlug attribute(const MObject& node, const char* name) {
        return MFnDependencyNode(node).findPlug(name, false);
    }
    MPlug item(unsigned int target, unsigned int index) const {
        return attribute(blend, "inputTarget")
            .elementByLogicalIndex(0)
            .child(0)
            .elementByLogicalIndex(target)
            .child(0)
            .elementByLogicalIndex(index);
    }
    static MObject points(unsigned int count) {
        MFnPointArrayData data;
        return data.create(MPointArray(count, MPoint(1, 2, 3)));
    }

    MObject blend;
};

TEST_F(PlugTest, NamesSpellMultiAncestorsAndLeaveOutPlainOnes) {
    const MPlug deltas = item(3, 6000).child(3);
    EXPECT_EQ(text(deltas.name()),
              "bs.inputTarget[0].inputTargetGroup[3].inputTargetItem[6000].inputPointsTarget");
    EXPECT_EQ(text(deltas.partialName()), "it[0].itg[3].iti[6000].ipt");
    EXPECT_EQ(text(deltas.partialName(true, false, false, false, false, true)), text(deltas.name()));
    addNode("transform", "arm");
    EXPECT_EQ(text(plug("arm.tx").name()), "arm.translateX");
    EXPECT_EQ(text(plug("arm.tx").partialName(false, false, false, false, true)), "t.tx");
    EXPECT_EQ(text(item(3, 6000).array().name()), "bs.inputTarget[0].inputTargetGroup[3].inputTargetItem");
    addNode("tweak", "tweak1");
    EXPECT_EQ(text(plug("tweak1.vl[0].vt[5].vx").name()), "tweak1.vlist[0].vertex[5].xVertex");
}

TEST_F(PlugTest, NamesOfEquallyNamedNodesAreUnique) {
    const MObject group = addNode("transform", "group");
    graph.createNode(*graph.types().find("transform"), "leg");
    graph.createNode(*graph.types().find("transform"), "leg", graph.nodesNamed("group").front().get());
    EXPECT_EQ(text(attribute(object("group|leg"), "visibility").name()), "group|leg.visibility");
    EXPECT_EQ(text(attribute(object("|leg"), "visibility").name()), "|leg.visibility");
}

TEST_F(PlugTest, FoundByTextAndByWalkingIsTheSamePlug) {
    const MPlug walked = item(3, 6000).child(4);
    const MPlug found = plug("bs.it[0].itg[3].iti[6000].ict");
    EXPECT_TRUE(found == walked);
    EXPECT_FALSE(found != walked);
    EXPECT_TRUE(found == walked.attribute());
    EXPECT_FALSE(found == item(3, 5500).child(4));
    EXPECT_TRUE(walked.parent() == item(3, 6000));
    EXPECT_TRUE(walked.parent().array().parent().array() ==
                attribute(blend, "it").elementByLogicalIndex(0).child(0));
    MObject components = walked.attribute();
    EXPECT_TRUE(item(3, 6000).child(components) == walked);
    EXPECT_TRUE(walked.node() == blend);
}

TEST_F(PlugTest, KindsOfPlugs) {
    const MPlug weights = attribute(blend, "weight");
    EXPECT_TRUE(weights.isArray() && !weights.isElement() && !weights.isCompound());
    const MPlug first = weights.elementByLogicalIndex(0);
    EXPECT_TRUE(first.isElement() && !first.isArray() && !first.isChild());
    EXPECT_EQ(first.logicalIndex(), 0U);
    const MPlug target = item(0, 6000);
    EXPECT_TRUE(target.isCompound() && target.isElement());
    EXPECT_EQ(target.numChildren(), 5U);
    EXPECT_TRUE(target.child(0).isChild());
    EXPECT_TRUE(MPlug().isNull());
}

TEST_F(PlugTest, WrongQuestionsFailWithAStatus) {
    MStatus status;
    const MPlug weights = attribute(blend, "weight");
    weights.child(0, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    weights.logicalIndex(&status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    weights.elementByLogicalIndex(0).numElements(&status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    weights.elementByPhysicalIndex(0, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    item(0, 6000).child(5, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    weights.asDouble(&status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(MFnDependencyNode(blend).findPlug("nothing", false, &status).isNull());
    EXPECT_EQ(status, MS::kInvalidParameter);
    MPlug().name(&status);
    EXPECT_EQ(status, MS::kFailure);
    MPlug().isArray(&status);
    EXPECT_EQ(status, MS::kFailure);
}

TEST_F(PlugTest, ReadingAMissingElementGivesTheDefaultAndCreatesNothing) {
    MPlug weights = plug("bs.it[0].itg[0].tw");
    EXPECT_EQ(weights.elementByLogicalIndex(7).asFloat(), 1.0F);
    EXPECT_EQ(weights.numElements(), 0U);
    for (const unsigned int index : {9U, 2U, 40U})
        weights.elementByLogicalIndex(index).setFloat(0.25F * static_cast<float>(index));
    MIntArray indices;
    EXPECT_EQ(weights.getExistingArrayAttributeIndices(indices), 3U);
    EXPECT_EQ(ints(indices), (std::vector<int>{2, 9, 40}));
    EXPECT_EQ(weights.elementByPhysicalIndex(1).logicalIndex(), 9U);
    EXPECT_EQ(weights.elementByPhysicalIndex(1).asFloat(), 2.25F);
}

TEST_F(PlugTest, FloatAttributesRoundToSinglePrecision) {
    MPlug weight = plug("bs.w[0]");
    ASSERT_TRUE(weight.setDouble(0.1));
    EXPECT_EQ(weight.asDouble(), static_cast<double>(0.1F));
    addNode("transform", "arm");
    MPlug translate = plug("arm.translateX");
    ASSERT_TRUE(translate.setDouble(0.1));
    EXPECT_EQ(translate.asDouble(), 0.1);
}

TEST_F(PlugTest, ValuesComeBackAsTheTypeAskedFor) {
    addNode("transform", "arm");
    MPlug translate = plug("arm.tx");
    ASSERT_TRUE(translate.setValue(-2.75));
    EXPECT_EQ(translate.asInt(), -2);
    EXPECT_EQ(translate.asShort(), -2);
    EXPECT_TRUE(translate.asBool());
    float single = 0;
    EXPECT_TRUE(translate.getValue(single));
    EXPECT_EQ(single, -2.75F);
    translate.setDouble(1e300);
    EXPECT_EQ(translate.asInt(), 2147483647);
    MPlug visible = plug("arm.visibility");
    ASSERT_TRUE(visible.setValue(false));
    bool isVisible = true;
    EXPECT_TRUE(visible.getValue(isVisible));
    EXPECT_FALSE(isVisible);
    EXPECT_FALSE(translate.setString("text"));
    EXPECT_EQ(text(translate.asString()), "");
}

TEST_F(PlugTest, DataThatWasNeverSetIsAFailureAndANullObject) {
    MPlug deltas = item(0, 6000).child(3);
    MObject value = blend;
    EXPECT_FALSE(deltas.getValue(value));
    EXPECT_TRUE(value.isNull());
    EXPECT_FALSE(MFnPointArrayData().setObject(value));
    ASSERT_TRUE(deltas.setValue(points(2)));
    ASSERT_TRUE(deltas.getValue(value));
    EXPECT_EQ(MFnPointArrayData(value).length(), 2U);
    EXPECT_TRUE(item(0, 6000).array().numElements() == 1U);
    ASSERT_TRUE(deltas.setValue(MObject::kNullObj));
    EXPECT_FALSE(deltas.getValue(value));
}

TEST_F(PlugTest, DataOfAnotherTypeIsRefused) {
    MPlug deltas = item(0, 6000).child(3);
    MFnDoubleArrayData numbers;
    EXPECT_EQ(deltas.setValue(numbers.create(MDoubleArray(1, 5.0))), MS::kInvalidParameter);
    EXPECT_EQ(deltas.setValue(blend), MS::kInvalidParameter);
    EXPECT_EQ(deltas.setDouble(1.0), MS::kInvalidParameter);
    EXPECT_EQ(plug("bs.en").setValue(points(1)), MS::kInvalidParameter);
}

TEST_F(PlugTest, WhatWasReadIsACopyOfWhatThePlugHolds) {
    MPlug deltas = item(0, 6000).child(3);
    MObject set = points(1);
    deltas.setValue(set);
    MFnPointArrayData written(set);
    MPoint nines(9, 9, 9);
    written.set(nines, 0);
    MFnPointArrayData read(deltas.asMObject());
    EXPECT_EQ(read[0], MPoint(1, 2, 3));
    MPoint eights(8, 8, 8);
    read.set(eights, 0);
    EXPECT_EQ(read[0], MPoint(8, 8, 8));
    EXPECT_EQ(MFnPointArrayData(deltas.asMObject())[0], MPoint(1, 2, 3));
}

TEST_F(PlugTest, AnEmptyArrayOrANullObjectRemovesAllElementsOfAMulti) {
    MPlug weights = plug("bs.it[0].itg[2].tw");
    weights.elementByLogicalIndex(4).setFloat(0.5F);
    MFnDoubleArrayData numbers;
    EXPECT_FALSE(weights.setValue(numbers.create(MDoubleArray(3, 1.0))));
    EXPECT_EQ(weights.numElements(), 1U);
    ASSERT_TRUE(weights.setValue(numbers.create(MDoubleArray())));
    EXPECT_EQ(weights.numElements(), 0U);

    addNode("tweak", "tweak1");
    MPlug edits = plug("tweak1.vlist[0].vertex");
    edits.elementByLogicalIndex(3).child(1).setDouble(2.0);
    ASSERT_EQ(edits.numElements(), 1U);
    ASSERT_TRUE(edits.setValue(MObject::kNullObj));
    EXPECT_EQ(edits.numElements(), 0U);
    EXPECT_EQ(edits.elementByLogicalIndex(3).child(1).asDouble(), 0.0);
}

TEST_F(PlugTest, ALockedPlugKeepsItsValue) {
    addNode("transform", "arm");
    MPlug translate = plug("arm.translate");
    translate.child(1).setDouble(3.0);
    ASSERT_TRUE(translate.setLocked(true));
    EXPECT_TRUE(translate.child(1).isLocked());
    EXPECT_FALSE(translate.child(1).setDouble(4.0));
    EXPECT_EQ(translate.child(1).asDouble(), 3.0);
    translate.setLocked(false);
    EXPECT_TRUE(translate.child(1).setDouble(4.0));
}

TEST_F(PlugTest, ConnectionsAreSeenFromBothEnds) {
    addNode("transform", "source");
    addNode("transform", "first");
    addNode("transform", "second");
    graph.connect(host::graph::findPlug(graph, "source.tx").plug,
                  host::graph::findPlug(graph, "first.ty").plug);
    graph.connect(host::graph::findPlug(graph, "source.tx").plug,
                  host::graph::findPlug(graph, "second.ty").plug);
    const MPlug source = plug("source.tx");
    const MPlug first = plug("first.ty");
    EXPECT_TRUE(source.isSource() && source.isConnected() && !source.isDestination());
    EXPECT_TRUE(first.isDestination() && first.isConnected() && !first.isSource());
    EXPECT_FALSE(plug("first.translate").isConnected());
    EXPECT_TRUE(first.source() == source);
    EXPECT_TRUE(source.source().isNull());
    MPlugArray plugs;
    EXPECT_TRUE(source.connectedTo(plugs, false, true));
    ASSERT_EQ(plugs.length(), 2U);
    EXPECT_TRUE(plugs[0] == first);
    EXPECT_TRUE(first.connectedTo(plugs, true, false));
    ASSERT_EQ(plugs.length(), 1U);
    EXPECT_TRUE(plugs[0] == source);
    EXPECT_FALSE(source.connectedTo(plugs, true, false));
    plug("source.tx").setDouble(6.0);
    EXPECT_EQ(first.asDouble(), 6.0);
    MFnDependencyNode(object("source")).getConnections(plugs);
    ASSERT_EQ(plugs.length(), 1U);
    EXPECT_TRUE(plugs[0] == source);
    EXPECT_EQ(plug("first.translate").numConnectedChildren(), 1U);
}

TEST_F(PlugTest, ConnectedElementsCountOnceEach) {
    addNode("transform", "driver");
    for (const char* weight : {"bs.w[7]", "bs.w[2]"})
        graph.connect(host::graph::findPlug(graph, "driver.tx").plug,
                      host::graph::findPlug(graph, weight).plug);
    plug("bs.w[4]").setFloat(1.0F);
    const MPlug weights = attribute(blend, "weight");
    EXPECT_EQ(weights.numElements(), 3U);
    EXPECT_EQ(weights.numConnectedElements(), 2U);
    EXPECT_EQ(weights.connectionByPhysicalIndex(0).logicalIndex(), 2U);
    EXPECT_EQ(weights.connectionByPhysicalIndex(1).logicalIndex(), 7U);
    EXPECT_TRUE(weights.connectionByPhysicalIndex(2).isNull());
    EXPECT_FALSE(weights.isConnected());
}

TEST_F(PlugTest, AncestorIndicesCanBeChosenLater) {
    MPlug deltas(blend, MFnDependencyNode(blend).attribute("inputPointsTarget"));
    MStatus status;
    deltas.asMObject(&status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    ASSERT_TRUE(deltas.selectAncestorLogicalIndex(0, MFnDependencyNode(blend).attribute("inputTarget")));
    ASSERT_TRUE(deltas.selectAncestorLogicalIndex(3, MFnDependencyNode(blend).attribute("inputTargetGroup")));
    ASSERT_TRUE(deltas.selectAncestorLogicalIndex(6000));
    EXPECT_TRUE(deltas == item(3, 6000).child(3));
    EXPECT_FALSE(plug("bs.en").selectAncestorLogicalIndex(0));
}

TEST_F(PlugTest, PlugsOfADeletedNodeFail) {
    MPlug envelope = plug("bs.envelope");
    MStatus status;
    EXPECT_EQ(envelope.asDouble(&status), 1.0);
    EXPECT_TRUE(status);
    MGlobal::deleteNode(blend);
    envelope.asDouble(&status);
    EXPECT_EQ(status, MS::kFailure);
    EXPECT_FALSE(envelope.setDouble(0.5));
    EXPECT_EQ(text(envelope.name()), "");
    EXPECT_TRUE(envelope.elementByLogicalIndex(0).isNull());
}

}  // namespace
