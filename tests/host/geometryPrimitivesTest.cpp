#include <gtest/gtest.h>

#include "geometry/primitives.h"

namespace {

using namespace host::geometry;

std::vector<int> listOf(IntSpan span) {
    return {span.begin(), span.end()};
}

void expectPoint(const Mesh& mesh, int vertex, const Vec3& expected) {
    EXPECT_LT(length(mesh.point(vertex) - expected), 1e-6) << "vertex " << vertex;
}

/// Six times the volume that the faces enclose; positive when they face outward.
double signedVolume(const Mesh& mesh) {
    double sum = 0.0;
    for (int face = 0; face < mesh.faceCount(); ++face) {
        sum += dot(faceCentre(mesh, face), faceAreaVector(mesh, face));
    }
    return sum;
}

TEST(Primitives, cubeHasTheKnownNumbering) {
    const Mesh cube = makeCube();
    const std::vector<float> points{-.5F, -.5F, .5F,  .5F, -.5F, .5F,  -.5F, .5F,  .5F,  .5F, .5F,  .5F,
                                    -.5F, .5F,  -.5F, .5F, .5F,  -.5F, -.5F, -.5F, -.5F, .5F, -.5F, -.5F};
    EXPECT_EQ(cube.points(), points);
    EXPECT_EQ(cube.topology().faceVertices(),
              (std::vector<int>{0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4}));
    EXPECT_EQ(
        cube.topology().edges(),
        (std::vector<Edge>{
            {0, 1}, {2, 3}, {4, 5}, {6, 7}, {0, 2}, {1, 3}, {2, 4}, {3, 5}, {4, 6}, {5, 7}, {6, 0}, {7, 1}}));
}

TEST(Primitives, sphereHasTheKnownNumbering) {
    const Mesh sphere = makeSphere();
    EXPECT_EQ(sphere.vertexCount(), 382);
    EXPECT_EQ(sphere.edgeCount(), 780);
    EXPECT_EQ(sphere.faceCount(), 400);
    expectPoint(sphere, 0, {0.14877813, -0.98768836, -0.048340943});
    expectPoint(sphere, 380, {0, -1, 0});
    expectPoint(sphere, 381, {0, 1, 0});
    const Topology& topology = sphere.topology();
    EXPECT_EQ(listOf(topology.faceEdges(0)), (std::vector<int>{0, 381, 20, 380}));
    EXPECT_EQ(listOf(topology.faceEdges(360)), (std::vector<int>{0, 740, 741}));
    EXPECT_EQ(listOf(topology.faceEdges(380)), (std::vector<int>{360, 761, 760}));
    EXPECT_EQ(topology.vertexEdges(381).size(), 20);
}

TEST(Primitives, planeHasTheKnownNumbering) {
    const Mesh plane = makePlane();
    EXPECT_EQ(plane.vertexCount(), 121);
    EXPECT_EQ(plane.edgeCount(), 220);
    expectPoint(plane, 0, {-0.5, 0, 0.5});
    expectPoint(plane, 120, {0.5, 0, -0.5});
    EXPECT_EQ(listOf(plane.topology().faceEdges(0)), (std::vector<int>{0, 3, 21, 1}));
    EXPECT_GT(faceNormal(plane, 50).y, 0.999);
}

TEST(Primitives, torusHasTheKnownNumbering) {
    const Mesh torus = makeTorus();
    EXPECT_EQ(torus.vertexCount(), 400);
    EXPECT_EQ(torus.edgeCount(), 800);
    expectPoint(torus, 0, {0.47552857, 0, -0.15450859});
    EXPECT_GT(torus.point(20).y, 0.1);
    EXPECT_EQ(listOf(torus.topology().faceVertices(0)), (std::vector<int>{1, 0, 20, 21}));
    EXPECT_EQ(torus.topology().edge(400), (Edge{0, 20}));
}

TEST(Primitives, subdividedOnesAreClosedFaceOutwardAndFillTheirBox) {
    struct Row {
        const char* name;
        Mesh mesh;
        int eulerCharacteristic;
        Vec3 size;
        int faces;
    };
    const std::vector<Row> table{
        {"cube 3 4 5", makeCube({2, 4, 6, 3, 4, 5}), 2, {2, 4, 6}, 94},
        {"cube 1 1 3", makeCube({1, 1, 1, 1, 1, 3}), 2, {1, 1, 1}, 14},
        {"cube 2 3 1", makeCube({1, 1, 1, 2, 3, 1}), 2, {1, 1, 1}, 22},
        {"cube 0", makeCube({1, 1, 1, 0, -3, 0}), 2, {1, 1, 1}, 6},
        {"sphere 4 2", makeSphere({2, 4, 2}), 2, {4, 4, 4}, 8},
        {"sphere 8 5", makeSphere({1, 8, 5}), 2, {1.9021130, 2, 1.9021130}, 40},
        {"torus 4 4", makeTorus({2, 0.5, 0, 4, 4}), 0, {5, 1, 5}, 16},
        {"torus twisted", makeTorus({2, 0.5, kPi, 4, 4}), 0, {5, 1, 5}, 16},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        const Topology& topology = row.mesh.topology();
        EXPECT_EQ(topology.vertexCount() - topology.edgeCount() + topology.faceCount(),
                  row.eulerCharacteristic);
        EXPECT_EQ(topology.faceCount(), row.faces);
        EXPECT_EQ(topology.shells().count(), 1);
        for (int edge = 0; edge < topology.edgeCount(); ++edge)
            ASSERT_EQ(topology.edgeFaces(edge).size(), 2);
        EXPECT_GT(signedVolume(row.mesh), 0.0);
        EXPECT_LT(length(bounds(row.mesh).size() - row.size), 1e-5);
        EXPECT_LT(length(bounds(row.mesh).center()), 1e-6);
    }
}

TEST(Primitives, subdividedCubeKeepsPlanarSidesOfEqualQuads) {
    const Mesh cube = makeCube({3, 4, 5, 3, 4, 5});
    for (int face = 0; face < cube.faceCount(); ++face)
        EXPECT_NEAR(length(faceAreaVector(cube, face)), 2.0, 1e-5);
    for (int edge = 0; edge < cube.edgeCount(); ++edge)
        EXPECT_NEAR(edgeLength(cube, edge), 1.0, 1e-5);
}

}  // namespace
