// The ways in which the host can be made to behave otherwise (graph/variants.h), as the API shows them.

#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItMeshVertex.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPlugArray.h>
#include <maya/MPoint.h>

#include <set>

#include "apiFixture.h"

using namespace apitest;

namespace {

class VariantTest : public ApiTest {
  protected:
    template <typename Change>
    void with(Change change) {
        host::graph::Variants variants;
        change(variants);
        this->graph.setVariants(variants);
    }
    static unsigned int count(const std::string& array) { return plug(array).numElements(); }
};

TEST_F(VariantTest, ReadingAnElementMakesItExistOrNot) {
    addMesh("box");
    const auto readBoth = [] {
        plug("boxShape.pnts[4].pntx").asDouble();
        MObject data;
        plug("boxShape.pnts").elementByLogicalIndex(2).child(1).getValue(data);
        plug("boxShape.pnts[6]").isConnected();
    };
    readBoth();
    EXPECT_EQ(count("boxShape.pnts"), 0U);
    with([](host::graph::Variants& host) { host.readingCreates = true; });
    readBoth();
    EXPECT_EQ(count("boxShape.pnts"), 1U) << "a read that fails and a question make none";
    EXPECT_EQ(plug("boxShape.pnts[4].pntx").asDouble(), 0.0);
    EXPECT_FALSE(this->graph.undoQueue().canUndo());
}

TEST_F(VariantTest, CopiesAreNamedInThreeWays) {
    addMesh("head1");
    MFnMesh copier;
    const auto copied = [&] {
        MFnDagNode transform(copier.copy(object("headShape1")));
        return text(transform.name()) + ' ' + text(copier.name());
    };
    EXPECT_EQ(copied(), "head2 headShape2");
    with([](host::graph::Variants& host) { host.copyNames = host::graph::CopyNames::Default; });
    EXPECT_EQ(copied(), "polySurface1 polySurfaceShape1");
    with([](host::graph::Variants& host) { host.copyNames = host::graph::CopyNames::Appended; });
    EXPECT_EQ(copied(), "head1_copy1 headShape1_copy1");
}

/// Closest faces to a point in the middle of a cube: all six are equally close.
TEST_F(VariantTest, OfEquallyCloseFacesTheRuleSaysWhichIsAnswered) {
    addMesh("box");
    const auto answered = [&] {
        MObject shape = object("boxShape");
        MMeshIntersector search;
        EXPECT_TRUE(search.create(shape));
        MPointOnMesh found;
        EXPECT_TRUE(search.getClosestPoint(MPoint(0, 0, 0), found));
        return found.faceIndex();
    };
    EXPECT_EQ(answered(), 0);
    with([](host::graph::Variants& host) { host.faceTie = host::graph::FaceTie::Last; });
    EXPECT_EQ(answered(), 5);
    std::set<int> faces;
    for (unsigned int seed = 1; seed < 40; ++seed) {
        with([&](host::graph::Variants& host) {
            host.faceTie = host::graph::FaceTie::Random;
            host.seed = seed;
        });
        faces.insert(answered());
        EXPECT_EQ(answered(), answered());
    }
    EXPECT_GE(faces.size(), 3U);
}

TEST_F(VariantTest, NeighboursAreListedInThreeOrders) {
    addMesh("box");
    const auto around = [&](host::graph::NeighbourOrder order) {
        with([&](host::graph::Variants& host) { host.neighbourOrder = order; });
        MObject shape = object("boxShape");
        MItMeshVertex vertex(shape);
        MIntArray found;
        vertex.getConnectedVertices(found);
        std::vector<int> result;
        for (unsigned int k = 0; k < found.length(); ++k)
            result.push_back(found[k]);
        return result;
    };
    const std::vector<int> usual = around(host::graph::NeighbourOrder::Ascending);
    ASSERT_EQ(usual.size(), 3U);
    EXPECT_EQ(around(host::graph::NeighbourOrder::Descending),
              (std::vector<int>{usual[2], usual[1], usual[0]}));
    EXPECT_EQ(around(host::graph::NeighbourOrder::Rotated), (std::vector<int>{usual[1], usual[2], usual[0]}));
}

TEST_F(VariantTest, APlugExpiresWithItsNodeItsElementAndIfNetworkedItsConnection) {
    with([](host::graph::Variants& host) { host.plugsExpire = true; });
    addMesh("box");
    addNode("transform", "driver");
    plug("boxShape.pnts[4].pntx").setDouble(2);
    MPlug array = plug("boxShape.pnts");
    const MPlug part = plug("boxShape.pnts[4].pntx");
    const MPlug other = plug("boxShape.pnts[5].pntx");
    MPlug copy(part);
    MFnDependencyNode box(object("box"));
    const MPlug free = box.findPlug("translateX", false);
    const MPlug networked = box.findPlug("translateX", true);
    MDGModifier connecting;
    connecting.connect(plug("driver.translateX"), free);
    ASSERT_TRUE(connecting.doIt());
    MPlugArray listed;
    ASSERT_TRUE(box.getConnections(listed));
    ASSERT_EQ(listed.length(), 1U);
    const MPlug source = free.source();
    EXPECT_EQ(part.asDouble(), 2.0);

    array.setValue(MObject());
    MStatus status;
    part.asDouble(&status);
    EXPECT_FALSE(status);
    EXPECT_FALSE(copy.setDouble(1)) << "copies are as old as what they were copied from";
    EXPECT_FALSE(copy.setLocked(true));
    other.name(&status);
    EXPECT_FALSE(status) << "every element went, existing or not";
    EXPECT_TRUE(array.elementByLogicalIndex(4).setDouble(1) == MS::kSuccess ||
                array.elementByLogicalIndex(4).child(0).setDouble(1));
    part.asDouble(&status);
    EXPECT_FALSE(status) << "a new element is another one";

    ASSERT_TRUE(connecting.undoIt());
    for (const MPlug* gone : {&networked, &source, static_cast<const MPlug*>(&listed[0])}) {
        gone->isConnected(&status);
        EXPECT_FALSE(status);
    }
    free.isConnected(&status);
    EXPECT_TRUE(status);

    MDGModifier deleting;
    deleting.deleteNode(object("boxShape"), false);
    ASSERT_TRUE(deleting.doIt());
    ASSERT_TRUE(deleting.undoIt());
    array.numElements(&status);
    EXPECT_FALSE(status) << "nor does undo of the deletion bring it back";
    EXPECT_EQ(count("boxShape.pnts"), 1U);
}

TEST_F(VariantTest, ANameOfSeveralObjectsIsRefusedOrMeansThemAll) {
    addNode("transform", "left");
    addNode("transform", "right");
    for (const char* parent : {"left", "right"}) {
        const auto owner = host::graph::findNode(this->graph, parent);
        this->graph.createNode(*this->graph.types().find("transform"), "twin", owner.get());
    }
    MSelectionList list;
    EXPECT_FALSE(list.add("twin"));
    with([](host::graph::Variants& host) { host.addsEveryNamesake = true; });
    EXPECT_TRUE(list.add("twin"));
    EXPECT_EQ(names(list), (std::vector<std::string>{"left|twin", "right|twin"}));
    EXPECT_FALSE(list.add("ghost"));
    EXPECT_EQ(list.length(), 2U);
}

TEST_F(VariantTest, AModifierTakesAnEmptyParentAlongOrNot) {
    addMesh("box");
    addMesh("ball");
    MDGModifier first;
    first.deleteNode(object("boxShape"), true);
    EXPECT_TRUE(first.doIt());
    EXPECT_TRUE(object("box").isNull());
    with([](host::graph::Variants& host) { host.deletesEmptyParents = false; });
    MDGModifier second;
    second.deleteNode(object("ballShape"), true);
    EXPECT_TRUE(second.doIt());
    EXPECT_FALSE(object("ball").isNull());
    EXPECT_TRUE(object("ballShape").isNull());
}

}  // namespace
