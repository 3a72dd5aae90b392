#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "geometry/mesh.h"
#include "geometry/primitives.h"
#include "geometry/triangulate.h"
#include "support/meshZoo.h"

namespace {

using namespace host::geometry;

TEST(Mesh, copiesShareUntilOneIsEdited) {
    const Mesh original = zoo::cube();
    Mesh copy = original;
    EXPECT_TRUE(copy.sharesPointsWith(original));
    copy.setPoint(3, {1, 2, 3});
    EXPECT_FALSE(copy.sharesPointsWith(original));
    EXPECT_EQ(copy.topologyPtr(), original.topologyPtr());
    EXPECT_EQ(copy.point(3), (Vec3{1, 2, 3}));
    EXPECT_EQ(original.point(3), (Vec3{0.5, 0.5, 0.5}));
    const float* block = copy.points().data();
    copy.setPoint(4, {});
    EXPECT_EQ(copy.points().data(), block);
}

TEST(Mesh, badPointsAreRefused) {
    EXPECT_EQ(createMesh({0, 0, 0, 1}, {}, {}).error, "the points are no multiple of three numbers");
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(createMesh({0, infinity, 0}, {}, {}).error, "a point is not finite");
    EXPECT_EQ(createMesh({0, 0, 0}, {3}, {0, 1, 2}).error,
              "face 0 refers to vertex 1, but there are 1 vertices");
}

TEST(Mesh, uniteKeepsEveryPartsOrderAndAddsItsOffset) {
    const Mesh cube = zoo::cube();
    const Mesh lonely = zoo::isolatedVertices();
    const MeshResult united = uniteMeshes({cube, lonely, Mesh(), cube},
                                          {Matrix4(), Matrix4(), Matrix4(), Matrix4::translation({0, 9, 0})});
    ASSERT_TRUE(united.ok()) << united.error;
    const Mesh& mesh = united.mesh;
    EXPECT_EQ(mesh.vertexCount(), 8 + 7 + 8);
    EXPECT_EQ(mesh.edgeCount(), 12 + 4 + 12);
    EXPECT_EQ(mesh.topology().shells().count(), 3);
    for (int edge = 0; edge < 12; ++edge) {
        const Edge first = cube.topology().edge(edge);
        EXPECT_EQ(mesh.topology().edge(edge), first);
        EXPECT_EQ(mesh.topology().edge(16 + edge), (Edge{first[0] + 15, first[1] + 15}));
    }
    for (int vertex = 0; vertex < 8; ++vertex) {
        EXPECT_EQ(mesh.point(15 + vertex), cube.point(vertex) + Vec3({0, 9, 0}));
    }
    EXPECT_EQ(mesh.topology().faceEdges(7)[0], 16);
    EXPECT_EQ(mesh.point(8), lonely.point(0));
}

TEST(Mesh, measuresOfACube) {
    const Mesh cube = transformed(zoo::cube(), Matrix4::scaling({2, 4, 6}));
    EXPECT_EQ(bounds(cube).max, (Vec3{1, 2, 3}));
    EXPECT_EQ(bounds(cube, Matrix4::translation({1, 0, 0})).min, (Vec3{0, -2, -3}));
    EXPECT_EQ(faceCentre(cube, 0), (Vec3{0, 0, 3}));
    EXPECT_EQ(faceNormal(cube, 0), (Vec3{0, 0, 1}));
    EXPECT_EQ(faceAreaVector(cube, 1), (Vec3{0, 24, 0}));
    EXPECT_EQ(edgeLength(cube, 0), 2.0);
    EXPECT_TRUE(bounds(zoo::nothing()).empty);
    EXPECT_EQ(faceNormal(zoo::zeroAreaFaces(), 1), Vec3());
}

TEST(Mesh, vertexNormalsAreWeightedAsAskedFor) {
    // A cube corner has three right angles; cutting one of its quads in two must not pull the angle-weighted
    // normal.
    const MeshResult cut = createMesh({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 0, 1, 1},
                                      {3, 3, 4, 4}, {0, 2, 1, 0, 3, 2, 0, 1, 5, 4, 0, 4, 6, 3});
    ASSERT_TRUE(cut.ok()) << cut.error;
    const std::vector<float> angle = vertexNormals(cut.mesh);
    const std::vector<float> uniform = vertexNormals(cut.mesh, NormalWeighting::Uniform);
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(angle[axis], -0.57735027, 1e-6);
    EXPECT_NEAR(uniform[2], -2.0 / std::sqrt(6.0), 1e-6);
    const std::vector<float> lonely = vertexNormals(zoo::isolatedVertices());
    EXPECT_EQ(lonely[0], 0.0F);
    EXPECT_EQ(lonely[5], 1.0F);
}

class TrianglesOfZoo : public testing::TestWithParam<zoo::NamedMesh> {};

INSTANTIATE_TEST_SUITE_P(Zoo, TrianglesOfZoo, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& animal) { return animal.param.name; });

TEST_P(TrianglesOfZoo, coverEveryFaceOnceAndTurnAsItDoes) {
    const Mesh& mesh = GetParam().mesh;
    const Triangulation cut = triangulate(mesh);
    ASSERT_EQ(static_cast<int>(cut.faces.size()), mesh.faceCount());
    for (int face = 0; face < mesh.faceCount(); ++face) {
        EXPECT_EQ(cut.offsets[face + 1] - cut.offsets[face], mesh.topology().faceSize(face) - 2);
        const Vec3 whole = faceAreaVector(mesh, face);
        std::map<std::pair<int, int>, int> open;
        double area = 0.0;
        for (int i = cut.offsets[face]; i < cut.offsets[face + 1]; ++i) {
            const auto& triangle = cut.triangles[i];
            const auto [a, b, c] = triangle;
            const Vec3 part = cross(mesh.point(b) - mesh.point(a), mesh.point(c) - mesh.point(a));
            EXPECT_GE(dot(part, whole), 0.0);
            area += length(part);
            for (int k = 0; k < 3; ++k)
                ++open[{triangle[k], triangle[(k + 1) % 3]}];
        }
        // The quads of these meshes are flat but for rounding and the fan's, so the areas add up.
        EXPECT_NEAR(area, length(whole), 1e-6 + 1e-3 * area);
        const IntSpan corners = mesh.topology().faceVertices(face);
        for (int k = 0; k < corners.size(); ++k) {
            EXPECT_EQ((open[{corners[k], corners[(k + 1) % corners.size()]}]), 1);
        }
    }
}

TEST(Triangulate, anArrowHeadIsNotCutAcrossItsNotch) {
    const Triangulation cut = triangulate(zoo::concaveFaces(), {1});
    ASSERT_EQ(cut.triangles.size(), 2U);
    EXPECT_EQ(cut.faces, (std::vector<int>{1}));
    for (const auto& triangle : cut.triangles) {
        EXPECT_EQ(std::count(triangle.begin(), triangle.end(), 13), 1);
        EXPECT_EQ(std::count(triangle.begin(), triangle.end(), 15), 1);
    }
}

TEST(Triangulate, aFaceThatCutsItselfStillEnds) {
    const MeshResult bow = createMesh({0, 0, 0, 2, 2, 0, 2, 0, 0, 0, 2, 0, -1, 1, 0}, {5}, {0, 1, 2, 3, 4});
    ASSERT_TRUE(bow.ok());
    EXPECT_EQ(triangulate(bow.mesh).triangles.size(), 3U);
}

}  // namespace
