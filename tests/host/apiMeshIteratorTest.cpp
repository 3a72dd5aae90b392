#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "apiFixture.h"
#include "support/meshZoo.h"

using namespace apitest;

namespace {

/// Every mesh of the zoo, as a shape in the scene.
class IteratorTest : public ApiTest, public ::testing::WithParamInterface<zoo::NamedMesh> {
  protected:
    IteratorTest() : shape(addMesh("mesh1", GetParam().mesh)), faces(shape) {}

    /// Faces that have a value among what `lists` says of them.
    template <typename Lists>
    std::set<int> facesWith(int value, Lists lists) const {
        std::set<int> result;
        for (int face = 0; face < faces.numPolygons(); ++face) {
            const std::vector<int> values = lists(face);
            if (std::find(values.begin(), values.end(), value) != values.end()) result.insert(face);
        }
        return result;
    }
    std::vector<int> corners(int face) const {
        MIntArray vertices;
        faces.getPolygonVertices(face, vertices);
        return ints(vertices);
    }
    std::vector<int> edgesOf(int face) const {
        MItMeshPolygon polygon(shape);
        int previous = 0;
        polygon.setIndex(face, previous);
        MIntArray edges;
        polygon.getEdges(edges);
        return ints(edges);
    }
    static std::set<int> asSet(const MIntArray& array) {
        const std::vector<int> list = ints(array);
        return {list.begin(), list.end()};
    }

    MObject shape;
    MFnMesh faces;
};

TEST_P(IteratorTest, VerticesSeeTheEdgesAndFacesThatUseThem) {
    MItMeshVertex vertex(shape);
    EXPECT_EQ(vertex.count(), static_cast<unsigned int>(faces.numVertices()));
    int visited = 0;
    for (; !vertex.isDone(); vertex.next(), ++visited) {
        ASSERT_EQ(vertex.index(), visited);
        MIntArray edges;
        MIntArray neighbours;
        MIntArray around;
        ASSERT_TRUE(vertex.getConnectedEdges(edges) && vertex.getConnectedVertices(neighbours) &&
                    vertex.getConnectedFaces(around));
        ASSERT_EQ(edges.length(), neighbours.length());
        for (unsigned int k = 0; k < edges.length(); ++k) {
            int2 ends;
            faces.getEdgeVertices(edges[k], ends);
            EXPECT_EQ(std::minmax(ends[0], ends[1]), std::minmax(visited, neighbours[k]));
            EXPECT_TRUE(vertex.connectedToEdge(edges[k]));
        }
        EXPECT_EQ(asSet(around), facesWith(visited, [&](int face) { return corners(face); }));
        int faceCount = -1;
        int edgeCount = -1;
        EXPECT_TRUE(vertex.numConnectedFaces(faceCount) && vertex.numConnectedEdges(edgeCount));
        EXPECT_EQ(faceCount, static_cast<int>(around.length()));
        EXPECT_EQ(edgeCount, static_cast<int>(edges.length()));
        EXPECT_FALSE(vertex.connectedToFace(faces.numPolygons()));
        MPoint place;
        faces.getPoint(visited, place);
        EXPECT_EQ(vertex.position(), place);
    }
    EXPECT_EQ(visited, faces.numVertices());
    EXPECT_FALSE(vertex.next());
    MStatus status;
    vertex.position(MSpace::kObject, &status);
    EXPECT_FALSE(status);
}

TEST_P(IteratorTest, EdgesSeeTheirEndsAndFaces) {
    MPointArray points;
    faces.getPoints(points);
    MItMeshEdge edge(shape);
    int visited = 0;
    for (; !edge.isDone(); edge.next(), ++visited) {
        ASSERT_EQ(edge.index(), visited);
        int2 ends;
        faces.getEdgeVertices(visited, ends);
        EXPECT_EQ(edge.index(0), ends[0]);
        EXPECT_EQ(edge.index(1), ends[1]);
        const MPoint& first = points[static_cast<unsigned int>(ends[0])];
        const MPoint& second = points[static_cast<unsigned int>(ends[1])];
        EXPECT_TRUE(edge.center().isEquivalent(first + (second - first) * 0.5, 1e-6));
        EXPECT_EQ(edge.point(1), second);
        double length = -1.0;
        EXPECT_TRUE(edge.getLength(length));
        EXPECT_DOUBLE_EQ(length, first.distanceTo(second));
        MIntArray around;
        const int faceCount = edge.getConnectedFaces(around);
        EXPECT_EQ(faceCount, static_cast<int>(around.length()));
        EXPECT_EQ(asSet(around), facesWith(visited, [&](int face) { return edgesOf(face); }));
        EXPECT_EQ(edge.onBoundary(), around.length() < 2);
        MIntArray touching;
        int count = -1;
        EXPECT_TRUE(edge.numConnectedEdges(count));
        EXPECT_EQ(edge.getConnectedEdges(touching), count);
        for (const int other : touching) {
            int2 otherEnds;
            faces.getEdgeVertices(other, otherEnds);
            EXPECT_NE(other, visited);
            EXPECT_TRUE(otherEnds[0] == ends[0] || otherEnds[0] == ends[1] || otherEnds[1] == ends[0] ||
                        otherEnds[1] == ends[1]);
        }
    }
    EXPECT_EQ(visited, faces.numEdges());
    MStatus status;
    EXPECT_EQ(edge.index(&status), -1);
    EXPECT_FALSE(status);
}

TEST_P(IteratorTest, FacesSeeCornersEdgesAndNeighbours) {
    MPointArray points;
    faces.getPoints(points);
    MItMeshPolygon polygon(shape);
    int visited = 0;
    for (; !polygon.isDone(); polygon.next(), ++visited) {
        ASSERT_EQ(polygon.index(), static_cast<unsigned int>(visited));
        MIntArray vertices;
        MIntArray edges;
        MPointArray places;
        ASSERT_TRUE(polygon.getVertices(vertices) && polygon.getEdges(edges));
        polygon.getPoints(places);
        ASSERT_EQ(ints(vertices), corners(visited));
        ASSERT_EQ(polygon.polygonVertexCount(), vertices.length());
        MVector sum;
        for (unsigned int k = 0; k < vertices.length(); ++k) {
            int2 ends;
            faces.getEdgeVertices(edges[k], ends);
            EXPECT_EQ(std::minmax(ends[0], ends[1]),
                      std::minmax(vertices[k], vertices[(k + 1) % vertices.length()]));
            EXPECT_EQ(polygon.vertexIndex(static_cast<int>(k)), vertices[k]);
            EXPECT_EQ(places[k], points[static_cast<unsigned int>(vertices[k])]);
            sum += MVector(places[k].x, places[k].y, places[k].z);
        }
        EXPECT_TRUE(polygon.center().isEquivalent(MPoint(sum * (1.0 / vertices.length())), 1e-5));
        std::set<int> expected;
        for (const int edge : edges) {
            for (const int other : facesWith(edge, [&](int face) { return edgesOf(face); }))
                expected.insert(other);
        }
        expected.erase(visited);
        MIntArray neighbours;
        ASSERT_TRUE(polygon.getConnectedFaces(neighbours));
        EXPECT_EQ(asSet(neighbours), expected);
        int count = -1;
        EXPECT_TRUE(polygon.numConnectedFaces(count));
        EXPECT_EQ(count, static_cast<int>(neighbours.length()));
        MIntArray outside;
        ASSERT_TRUE(polygon.getConnectedVertices(outside));
        MIntArray leaving;
        ASSERT_TRUE(polygon.getConnectedEdges(leaving));
        for (const int edge : leaving) {
            EXPECT_EQ(asSet(edges).count(edge), 0U);
            int2 ends;
            faces.getEdgeVertices(edge, ends);
            EXPECT_EQ(asSet(vertices).count(ends[0]) + asSet(outside).count(ends[0]), 1U);
        }
    }
    EXPECT_EQ(visited, faces.numPolygons());
}

INSTANTIATE_TEST_SUITE_P(Zoo, IteratorTest, ::testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& mesh) { return mesh.param.name; });

class ComponentIteratorTest : public ApiTest {
  protected:
    ComponentIteratorTest() : shape(addMesh("grid1", zoo::openGrid())) {}

    static MObject component(std::vector<int> elements, MFn::Type type) {
        MFnSingleIndexedComponent set;
        const MObject object = set.create(type);
        MIntArray array(elements.data(), static_cast<unsigned int>(elements.size()));
        set.addElements(array);
        return object;
    }

    MObject shape;
};

TEST_F(ComponentIteratorTest, AComponentLimitsTheWalk) {
    MObject some = component({7, 2, 5, 1000}, MFn::kMeshVertComponent);
    MItMeshVertex vertex(path("grid1"), some);
    EXPECT_EQ(vertex.count(), 3);
    std::vector<int> visited;
    for (; !vertex.isDone(); vertex.next()) {
        visited.push_back(vertex.index());
        EXPECT_EQ(MFnSingleIndexedComponent(vertex.currentItem()).element(0), vertex.index());
    }
    EXPECT_EQ(visited, (std::vector<int>{2, 5, 7}));
    ASSERT_TRUE(vertex.reset());
    int previous = -1;
    ASSERT_TRUE(vertex.setIndex(7, previous));
    EXPECT_EQ(previous, 2);
    EXPECT_EQ(vertex.index(), 7);
    EXPECT_FALSE(vertex.setIndex(3, previous));
    EXPECT_EQ(vertex.index(), 7);
    MFnSingleIndexedComponent all;
    MObject whole = all.create(MFn::kMeshVertComponent);
    all.setCompleteData(20);
    ASSERT_TRUE(vertex.reset(path("grid1"), whole));
    EXPECT_EQ(vertex.count(), 20);
}

TEST_F(ComponentIteratorTest, TheWrongObjectLeavesTheWalkDone) {
    MStatus status;
    MObject vertex = component({1}, MFn::kMeshVertComponent);
    MItMeshPolygon wrongKind(path("grid1"), vertex, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(wrongKind.isDone());
    MObject grid = object("grid1");
    MItMeshEdge transform(grid, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(transform.isDone());
    MIntArray around;
    EXPECT_EQ(transform.getConnectedFaces(around, &status), 0);
    EXPECT_FALSE(status);
    EXPECT_FALSE(transform.reset());
    MItMeshVertex null(MObject::kNullObj, &status);
    EXPECT_EQ(status, MS::kFailure);
}

TEST_F(ComponentIteratorTest, WorldSpaceNeedsAPath) {
    plug("grid1.tx").setDouble(10.0);
    plug("grid1.sx").setDouble(2.0);
    MItMeshEdge edge(path("grid1"));
    MItMeshEdge local(shape);
    EXPECT_TRUE(edge.center(MSpace::kWorld).isEquivalent(local.center() * path("grid1").inclusiveMatrix()));
    MStatus status;
    local.center(MSpace::kWorld, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    MItMeshPolygon polygon(path("grid1"));
    MVector normal;
    ASSERT_TRUE(polygon.getNormal(normal, MSpace::kWorld));
    EXPECT_NEAR(normal.length(), 1.0, 1e-9);
}

TEST_F(ComponentIteratorTest, AWalkKeepsTheMeshThatItStartedWith) {
    MItMeshVertex vertex(shape);
    const MPoint before = vertex.position();
    MPointArray moved(20, MPoint(5, 5, 5));
    MFnMesh(shape).setPoints(moved);
    EXPECT_EQ(vertex.position(), before);
    ASSERT_TRUE(vertex.reset(shape));
    EXPECT_EQ(vertex.position(), MPoint(5, 5, 5));
}

}  // namespace
