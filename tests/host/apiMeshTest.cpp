#include <maya/MFloatPointArray.h>
#include <maya/MFnMeshData.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPointArray.h>
#include <maya/MVector.h>

#include <string>
#include <thread>
#include <vector>

#include "apiFixture.h"
#include "support/meshZoo.h"

using namespace apitest;

namespace {

class MeshTest : public ApiTest {
  protected:
    static std::vector<MPoint> pointsOf(const MObject& mesh) {
        MPointArray points;
        EXPECT_TRUE(MFnMesh(mesh).getPoints(points));
        std::vector<MPoint> list;
        for (const MPoint& point : points)
            list.push_back(point);
        return list;
    }
};

TEST_F(MeshTest, ACopyWithoutParentIsANewObjectWithTheNextNumber) {
    const MObject source = addMesh("pSphere1", zoo::sphereWithPoles());
    plug("pSphere1.tx").setDouble(3.0);
    plug("pSphereShape1.pnts[4].pnty").setDouble(0.5);
    MFnMesh set;
    MStatus status;
    const MObject transform = set.copy(source, MObject::kNullObj, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(text(MFnDagNode(transform).fullPathName()), "|pSphere2");
    EXPECT_EQ(text(set.fullPathName()), "|pSphere2|pSphereShape2");
    EXPECT_TRUE(set.object().hasFn(MFn::kMesh));
    EXPECT_EQ(pointsOf(set.object()), pointsOf(source));
    EXPECT_EQ(plug("pSphere2.tx").asDouble(), 0.0);
    EXPECT_EQ(plug("pSphereShape2.pnts").numElements(), 0U);
    EXPECT_FALSE(plug("pSphereShape2.inMesh").isConnected());
    EXPECT_EQ(text(MFnDagNode(set.copy(transform)).partialPathName()), "pSphere3");
}

TEST_F(MeshTest, ACopyBelowATransformIsAShape) {
    const MObject source = addMesh("pCube1");
    MFnMesh set;
    const MObject shape = set.copy(source, object("pCube1"));
    EXPECT_TRUE(shape.hasFn(MFn::kMesh));
    EXPECT_TRUE(set.parent(0) == object("pCube1"));
    EXPECT_FALSE(set.isIntermediateObject());
    EXPECT_EQ(pointsOf(shape), pointsOf(source));
    MStatus status;
    EXPECT_TRUE(set.copy(source, shape, &status).isNull());
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_TRUE(set.copy(object("initialShadingGroup"), MObject::kNullObj, &status).isNull());
    EXPECT_FALSE(status);
}

TEST_F(MeshTest, MeshDataIsFilledAndReadLikeAShape) {
    const MObject source = addMesh("pCube1");
    MFnMeshData data;
    const MObject owner = data.create();
    MFnMesh set;
    EXPECT_TRUE(set.copy(source, owner) == owner);
    EXPECT_EQ(set.numVertices(), 8);
    MPointArray points;
    ASSERT_TRUE(set.getPoints(points));
    points[0] = MPoint(9, 9, 9);
    ASSERT_TRUE(set.setPoints(points));
    EXPECT_EQ(pointsOf(owner)[0], MPoint(9, 9, 9));
    EXPECT_FALSE(pointsOf(source)[0] == MPoint(9, 9, 9));
    MStatus status;
    set.name(&status);
    EXPECT_FALSE(status);
    MFnMesh copied;
    copied.copy(owner);
    EXPECT_EQ(pointsOf(copied.object())[0], MPoint(9, 9, 9));
}

TEST_F(MeshTest, AMeshIsMadeFromFaces) {
    MPointArray points;
    for (int k = 0; k < 6; ++k)
        points.append(MPoint(k % 3, k / 3, 0));
    const int counts[] = {4, 4};
    const int connects[] = {0, 1, 4, 3, 1, 2, 5, 4};
    MFnMesh set;
    MStatus status;
    const MObject transform =
        set.create(6, 2, points, MIntArray(counts, 2), MIntArray(connects, 8), MObject::kNullObj, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(transform.hasFn(MFn::kTransform));
    EXPECT_EQ(set.numEdges(), 7);
    int2 ends;
    ASSERT_TRUE(set.getEdgeVertices(1, ends));
    EXPECT_EQ(ends[0], 1);
    EXPECT_EQ(ends[1], 4);
    EXPECT_FALSE(set.getEdgeVertices(7, ends));
    EXPECT_FALSE(set.getEdgeVertices(-1, ends));
    EXPECT_EQ(text(MFnDagNode(transform).name()), "polySurface1");
    set.create(6, 2, points, MIntArray(counts, 2), MIntArray(connects, 7), MObject::kNullObj, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    set.create(5, 2, points, MIntArray(counts, 2), MIntArray(connects, 8), MObject::kNullObj, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    set.create(6, 3, points, MIntArray(counts, 2), MIntArray(connects, 8), MObject::kNullObj, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
}

TEST_F(MeshTest, CountsAndCornersAgreeOnEveryMesh) {
    for (const zoo::NamedMesh& named : zoo::allMeshes()) {
        const MFnMesh set(addMesh(named.name, named.mesh));
        MIntArray counts;
        MIntArray corners;
        ASSERT_TRUE(set.getVertices(counts, corners)) << named.name;
        EXPECT_EQ(set.numVertices(), named.mesh.vertexCount());
        EXPECT_EQ(set.numEdges(), named.mesh.edgeCount());
        EXPECT_EQ(set.numPolygons(), static_cast<int>(counts.length()));
        EXPECT_EQ(set.numFaceVertices(), static_cast<int>(corners.length()));
        std::vector<int> gathered;
        MIntArray face;
        MIntArray triangleCounts;
        MIntArray triangles;
        ASSERT_TRUE(set.getTriangles(triangleCounts, triangles));
        unsigned int expected = 0;
        for (int k = 0; k < set.numPolygons(); ++k) {
            ASSERT_TRUE(set.getPolygonVertices(k, face));
            EXPECT_EQ(set.polygonVertexCount(k), static_cast<int>(face.length()));
            EXPECT_EQ(triangleCounts[static_cast<unsigned int>(k)], static_cast<int>(face.length()) - 2);
            for (const int corner : face)
                gathered.push_back(corner);
            expected += 3 * (face.length() - 2);
        }
        EXPECT_EQ(ints(corners), gathered) << named.name;
        EXPECT_EQ(triangles.length(), expected) << named.name;
        EXPECT_FALSE(set.getPolygonVertices(set.numPolygons(), face));
    }
}

TEST_F(MeshTest, PointsAreSinglePrecisionAndHaveAUnitW) {
    MFnMesh set(addMesh("pCube1"));
    MPointArray points;
    set.getPoints(points);
    points[3] = MPoint(0.1, 0.2, 0.3, 1.0);
    ASSERT_TRUE(set.setPoints(points));
    MPoint read;
    ASSERT_TRUE(set.getPoint(3, read));
    EXPECT_EQ(read.x, static_cast<double>(0.1F));
    EXPECT_EQ(read.w, 1.0);
    EXPECT_FALSE(set.getPoint(8, read));
    MFloatPointArray singles;
    ASSERT_TRUE(set.getPoints(singles));
    EXPECT_EQ(singles[3].y, 0.2F);
    MStatus status;
    const float* raw = set.getRawPoints(&status);
    ASSERT_TRUE(status);
    EXPECT_EQ(raw[3 * 3 + 2], 0.3F);
    points.setLength(7);
    EXPECT_EQ(set.setPoints(points), MS::kInvalidParameter);
}

TEST_F(MeshTest, WorldSpaceNeedsAPath) {
    const MObject shape = addMesh("pCube1");
    plug("pCube1.tx").setDouble(10.0);
    plug("pCube1.sy").setDouble(2.0);
    MPointArray points;
    EXPECT_EQ(MFnMesh(shape).getPoints(points, MSpace::kWorld), MS::kInvalidParameter);
    MFnMesh set(path("pCube1"));
    EXPECT_TRUE(set.object() == shape);
    ASSERT_TRUE(set.getPoints(points, MSpace::kWorld));
    EXPECT_TRUE(points[0].isEquivalent(pointsOf(shape)[0] * path("pCube1").inclusiveMatrix()));
    points[0] = MPoint(0, 0, 0);
    ASSERT_TRUE(set.setPoints(points, MSpace::kWorld));
    EXPECT_TRUE(pointsOf(shape)[0].isEquivalent(MPoint(-10, 0, 0), 1e-6));
    plug("pCube1.sz").setDouble(0.0);
    EXPECT_EQ(set.setPoints(points, MSpace::kWorld), MS::kFailure);
}

TEST_F(MeshTest, WritingPointsReachesWhatIsDownstream) {
    const MObject source = addMesh("pCube1");
    const MObject target = addMesh("pCube2");
    graph.connect(host::graph::findPlug(graph, "pCubeShape1.outMesh").plug,
                  host::graph::findPlug(graph, "pCubeShape2.inMesh").plug);
    MPointArray points;
    MFnMesh(source).getPoints(points);
    points[1] = MPoint(4, 5, 6);
    MFnMesh(source).setPoints(points);
    EXPECT_EQ(pointsOf(target)[1], MPoint(4, 5, 6));
    points[1] = MPoint(4, 7, 6);
    MFnMesh(target).setPoints(points);
    EXPECT_EQ(pointsOf(target)[1], MPoint(4, 7, 6));
    EXPECT_EQ(pointsOf(source)[1], MPoint(4, 5, 6));
    EXPECT_EQ(plug("pCubeShape2.pnts[1].pnty").asDouble(), 2.0);
}

TEST_F(MeshTest, ClosestPointsInBothSpaces) {
    addMesh("pCube1");
    plug("pCube1.tx").setDouble(10.0);
    const MFnMesh set(path("pCube1"));
    MPoint closest;
    int face = -1;
    ASSERT_TRUE(set.getClosestPoint(MPoint(0.1, 3, 0.2), closest, MSpace::kObject, &face));
    EXPECT_TRUE(closest.isEquivalent(MPoint(0.1, 0.5, 0.2), 1e-6));
    MVector normal;
    ASSERT_TRUE(set.getPolygonNormal(face, normal));
    EXPECT_TRUE(normal.isEquivalent(MVector(0, 1, 0), 1e-6));
    ASSERT_TRUE(set.getClosestPoint(MPoint(0, 0, 0), closest, MSpace::kWorld));
    EXPECT_TRUE(closest.isEquivalent(MPoint(9.5, 0, 0), 1e-6));
}

TEST_F(MeshTest, NormalsStayPerpendicularUnderUnevenScale) {
    addMesh("pPlane1", zoo::openGrid());
    plug("pPlane1.rx").setDouble(0.7);
    plug("pPlane1.sz").setDouble(5.0);
    plug("pPlane1.sy").setDouble(0.1);
    const MFnMesh set(path("pPlane1"));
    MPointArray points;
    set.getPoints(points, MSpace::kWorld);
    MIntArray corners;
    set.getPolygonVertices(0, corners);
    MVector normal;
    ASSERT_TRUE(set.getPolygonNormal(0, normal, MSpace::kWorld));
    EXPECT_NEAR(normal.length(), 1.0, 1e-9);
    for (unsigned int k = 1; k < corners.length(); ++k) {
        const MVector along =
            points[static_cast<unsigned int>(corners[k])] - points[static_cast<unsigned int>(corners[0])];
        EXPECT_NEAR(normal * along, 0.0, 1e-5);
    }
}

TEST_F(MeshTest, TheIntersectorAnswersInObjectSpaceOfItsSnapshot) {
    MObject shape = addMesh("pCube1");
    plug("pCube1.tx").setDouble(10.0);
    MMeshIntersector intersector;
    MPointOnMesh answer;
    EXPECT_FALSE(intersector.isCreated());
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(0, 0, 0), answer));
    MObject wrong = object("pCube1");
    EXPECT_FALSE(intersector.create(wrong));
    ASSERT_TRUE(intersector.create(shape, path("pCube1").inclusiveMatrixInverse()));
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(10.1, 3, 0.2), answer));
    EXPECT_TRUE(MPoint(answer.getPoint()).isEquivalent(MPoint(0.1, 0.5, 0.2), 1e-6));
    EXPECT_NEAR(answer.getNormal().y, 1.0F, 1e-6F);
    const int face = answer.faceIndex();
    EXPECT_GE(answer.triangleIndex(), 0);
    float u = -1.0F;
    float v = -1.0F;
    answer.getBarycentricCoords(u, v);
    EXPECT_GE(u, 0.0F);
    EXPECT_LE(u + v, 1.0F + 1e-6F);
    MPointOnMesh untouched(answer);
    EXPECT_FALSE(intersector.getClosestPoint(MPoint(0, 0, 0), untouched, 2.0));
    EXPECT_EQ(untouched.faceIndex(), face);
    MPointArray moved(8, MPoint(100, 100, 100));
    MFnMesh(shape).setPoints(moved);
    ASSERT_TRUE(intersector.getClosestPoint(MPoint(10.1, 3, 0.2), answer));
    EXPECT_EQ(answer.faceIndex(), face);
}

TEST_F(MeshTest, EquallyNearFacesGiveTheLowest) {
    MObject shape = addMesh("fin", zoo::nonManifoldFin());
    int2 ends;
    MFnMesh set(shape);
    MPointArray points;
    set.getPoints(points);
    MMeshIntersector intersector;
    ASSERT_TRUE(intersector.create(shape));
    for (int edge = 0; edge < set.numEdges(); ++edge) {
        set.getEdgeVertices(edge, ends);
        const MVector half =
            (points[static_cast<unsigned int>(ends[1])] - points[static_cast<unsigned int>(ends[0])]) * 0.5;
        MPointOnMesh answer;
        ASSERT_TRUE(intersector.getClosestPoint(points[static_cast<unsigned int>(ends[0])] + half, answer));
        int lowest = -1;
        MIntArray corners;
        for (int face = set.numPolygons() - 1; face >= 0; --face) {
            set.getPolygonVertices(face, corners);
            int shared = 0;
            for (const int corner : corners)
                shared += corner == ends[0] || corner == ends[1] ? 1 : 0;
            if (shared == 2) lowest = face;
        }
        EXPECT_EQ(answer.faceIndex(), lowest);
    }
}

TEST_F(MeshTest, SeveralThreadsReadOneScene) {
    const MObject shape = addMesh("head", zoo::shuffledHead());
    const std::vector<MPoint> expected = pointsOf(shape);
    std::vector<int> wrong(4, -1);
    std::vector<std::thread> threads;
    for (std::size_t k = 0; k < wrong.size(); ++k) {
        threads.emplace_back([&, k] {
            int differences = 0;
            for (int round = 0; round < 50; ++round) {
                const MFnMesh set(shape);
                MPointArray points;
                set.getPoints(points);
                for (unsigned int v = 0; v < points.length(); ++v)
                    differences += points[v] == expected[v] ? 0 : 1;
            }
            wrong[k] = differences;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(wrong.size(), 0));
}

}  // namespace
