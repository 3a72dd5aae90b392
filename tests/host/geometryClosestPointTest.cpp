#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <ctime>
#include <map>
#include <random>
#include <thread>

#include "geometry/closestPoint.h"
#include "geometry/closestVertex.h"
#include "geometry/primitives.h"
#include "geometry/triangulate.h"
#include "support/meshZoo.h"

namespace {

using namespace host::geometry;

/// Squared distance to a triangle, found another way than the tree does: by the Voronoi region of the point.
double squaredDistanceToTriangle(const Vec3& p, const Vec3& a, const Vec3& b, const Vec3& c) {
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const auto toSegment = [&p](const Vec3& from, const Vec3& to) {
        const Vec3 along = to - from;
        const double whole = squaredLength(along);
        const double t = whole > 0.0 ? std::clamp(dot(p - from, along) / whole, 0.0, 1.0) : 0.0;
        return squaredLength(from + along * t - p);
    };
    const double border = std::min({toSegment(a, b), toSegment(b, c), toSegment(c, a)});
    const Vec3 normal = cross(ab, ac);
    if (squaredLength(normal) == 0.0) return border;
    const bool above = dot(cross(ab, p - a), normal) >= 0.0 && dot(cross(c - b, p - b), normal) >= 0.0 &&
                       dot(cross(a - c, p - c), normal) >= 0.0;
    const double height = dot(p - a, normal) / length(normal);
    return above ? height * height : border;
}

struct BruteForce {
    std::vector<double> squaredDistances;  ///< per face
    double smallest = std::numeric_limits<double>::infinity();
};

BruteForce searchAll(const Mesh& mesh, const Vec3& point) {
    const Triangulation cut = triangulate(mesh);
    BruteForce result;
    for (int face = 0; face < mesh.faceCount(); ++face) {
        double best = std::numeric_limits<double>::infinity();
        for (int i = cut.offsets[face]; i < cut.offsets[face + 1]; ++i) {
            const auto [a, b, c] = cut.triangles[i];
            best =
                std::min(best, squaredDistanceToTriangle(point, mesh.point(a), mesh.point(b), mesh.point(c)));
        }
        result.squaredDistances.push_back(best);
        result.smallest = std::min(result.smallest, best);
    }
    return result;
}

/// Checks one answer against all faces: the distance, that the face has it, and that the parts of it fit
/// together.
void expectClosest(const Mesh& mesh, const ClosestPointTree& tree, const Vec3& point, double tolerance) {
    const BruteForce expected = searchAll(mesh, point);
    const auto found = tree.query(point);
    ASSERT_TRUE(found.has_value());
    const double distance = std::sqrt(expected.smallest);
    EXPECT_NEAR(std::sqrt(found->squaredDistance), distance, tolerance);
    EXPECT_NEAR(std::sqrt(expected.squaredDistances[found->face]), distance, tolerance);
    EXPECT_NEAR(length(found->point - point), distance, tolerance);
    Vec3 weighted;
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        EXPECT_GE(found->barycentric[i], 0.0);
        sum += found->barycentric[i];
        weighted += mesh.point(found->vertices[i]) * found->barycentric[i];
    }
    EXPECT_NEAR(sum, 1.0, 1e-12);
    EXPECT_LT(length(weighted - found->point), tolerance);
    const Triangulation face = triangulate(mesh, {found->face});
    EXPECT_EQ(face.triangles[found->triangle], found->vertices);
}

class ClosestOnZoo : public testing::TestWithParam<zoo::NamedMesh> {};

INSTANTIATE_TEST_SUITE_P(Zoo, ClosestOnZoo, testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& animal) { return animal.param.name; });

TEST_P(ClosestOnZoo, randomPointsFindWhatBruteForceFinds) {
    const Mesh& mesh = GetParam().mesh;
    const ClosestPointTree tree(mesh);
    if (mesh.faceCount() == 0) {
        EXPECT_FALSE(tree.query({0, 0, 0}).has_value());
        return;
    }
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> random(-6.0, 6.0);
    for (int i = 0; i < 200; ++i)
        expectClosest(mesh, tree, {random(engine), random(engine), random(engine)}, 1e-12);
}

TEST_P(ClosestOnZoo, theClosestVertexIsTheLowestOfThoseThatTie) {
    const Mesh& mesh = GetParam().mesh;
    const ClosestVertexTree tree(mesh);
    const auto expectLowest = [&](const Vec3& point) {
        int expected = -1;
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            if (expected < 0 ||
                squaredLength(mesh.point(vertex) - point) < squaredLength(mesh.point(expected) - point))
                expected = vertex;
        }
        EXPECT_EQ(tree.query(point), expected);
    };
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
        expectLowest(mesh.point(vertex));
    for (int edge = 0; edge < mesh.edgeCount(); ++edge) {
        const auto [a, b] = mesh.topology().edge(edge);
        expectLowest((mesh.point(a) + mesh.point(b)) * 0.5);
    }
    EXPECT_EQ(tree.query({std::nan(""), 0, 0}), -1);
}

TEST_P(ClosestOnZoo, everyVertexOfAFaceIsFoundExactlyAndInItsLowestFace) {
    const Mesh& mesh = GetParam().mesh;
    const ClosestPointTree tree(mesh);
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        if (mesh.topology().vertexFaces(vertex).empty()) continue;
        const auto found = tree.query(mesh.point(vertex), 0.0);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->point, mesh.point(vertex));
        EXPECT_EQ(found->squaredDistance, 0.0);
        EXPECT_LE(found->face, mesh.topology().vertexFaces(vertex)[0]);
    }
}

TEST_P(ClosestOnZoo, pointsOffAnEdgeOrVertexGoToTheLowestOfTheFacesThatTie) {
    const Mesh& mesh = GetParam().mesh;
    const ClosestPointTree tree(mesh);
    for (int edge = 0; edge < mesh.edgeCount(); ++edge) {
        const auto [a, b] = mesh.topology().edge(edge);
        for (double t : {0.0, 0.37, 1.0}) {
            const Vec3 on = mesh.point(a) + (mesh.point(b) - mesh.point(a)) * t;
            const Vec3 off = on * 1.3 + Vec3{0, 0.1, 0};
            const auto found = tree.query(off);
            ASSERT_TRUE(found.has_value());
            // Where the answer lies on an edge or vertex, all faces there offer the very same point.
            const auto zeros = std::count(found->barycentric.begin(), found->barycentric.end(), 0.0);
            if (zeros == 0) continue;
            for (int i = 0; i < 3; ++i) {
                if (found->barycentric[i] != 1.0) continue;
                EXPECT_LE(found->face, mesh.topology().vertexFaces(found->vertices[i])[0]);
            }
            const int zero =
                static_cast<int>(std::find(found->barycentric.begin(), found->barycentric.end(), 0.0) -
                                 found->barycentric.begin());
            const int shared =
                mesh.topology().findEdge(found->vertices[(zero + 1) % 3], found->vertices[(zero + 2) % 3]);
            if (shared >= 0) {
                EXPECT_LE(found->face, mesh.topology().edgeFaces(shared)[0]);
            }
        }
    }
}

TEST(ClosestPoint, randomMeshesFarFromTheOriginAgreeWithBruteForce) {
    std::mt19937 engine(5);
    for (const auto& [offset, scale] : std::vector<std::pair<double, double>>{
             {0, 1}, {1e4, 1}, {-3e6, 100}, {1e9, 1e5}, {0, 1e-12}, {1e17, 1e16}, {0, 1e30}}) {
        SCOPED_TRACE(offset);
        std::uniform_real_distribution<double> random(offset - 10 * scale, offset + 10 * scale);
        std::vector<float> points;
        std::vector<int> corners;
        for (int i = 0; i < 900; ++i)
            points.push_back(static_cast<float>(random(engine)));
        for (int i = 0; i < 300; ++i)
            corners.push_back(i);
        const MeshResult soup = createMesh(points, std::vector<int>(100, 3), corners);
        ASSERT_TRUE(soup.ok());
        const ClosestPointTree tree(soup.mesh);
        const double tolerance = 1e-12 * (std::abs(offset) + 20 * scale);
        for (int i = 0; i < 60; ++i) {
            expectClosest(soup.mesh, tree, {random(engine), random(engine), random(engine)}, tolerance);
        }
        expectClosest(soup.mesh, tree, {offset + 1e5 * scale, offset, offset}, 1e5 * tolerance);
    }
}

TEST(ClosestPoint, coincidentFacesTieToTheLowestWhateverTheirOrderInSpace) {
    // Nine sheets at one place, each a mesh of its own: every query ties nine times.
    const Mesh grid = zoo::openGrid(6, 6);
    const MeshResult sheets = uniteMeshes(std::vector<Mesh>(9, grid));
    ASSERT_TRUE(sheets.ok());
    const ClosestPointTree tree(sheets.mesh);
    std::mt19937 engine(9);
    std::uniform_real_distribution<double> random(-4.0, 4.0);
    for (int i = 0; i < 500; ++i) {
        const auto found = tree.query({random(engine), random(engine), random(engine)});
        ASSERT_TRUE(found.has_value());
        EXPECT_LT(found->face, grid.faceCount());
    }
}

/// The lowest face that has a corner at the place of each vertex.
std::vector<int> lowestFaceAt(const Mesh& mesh) {
    std::map<std::array<double, 3>, int> lowest;
    const auto place = [&mesh](int vertex) {
        const Vec3 point = mesh.point(vertex);
        return std::array<double, 3>{point.x, point.y, point.z};
    };
    for (int face = 0; face < mesh.faceCount(); ++face) {
        for (const int vertex : mesh.topology().faceVertices(face))
            lowest.emplace(place(vertex), face);
    }
    std::vector<int> faces;
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
        faces.push_back(lowest.at(place(vertex)));
    return faces;
}

TEST(ClosestPoint, coincidentShellsTieToTheLowestFaceHoweverTheirFacesBegin) {
    // Copies, mirror images (which turn the other way round), other numberings: all at one place.
    const Mesh sphere = makeSphere({1.0, 8, 6});
    std::vector<Mesh> shells;
    for (unsigned seed = 0; seed < 12; ++seed) {
        shells.push_back(zoo::shuffled(sphere, seed));
        shells.push_back(sphere);
        shells.push_back(transformed(sphere, Matrix4::scaling({-1, 1, 1})));
    }
    const MeshResult united = uniteMeshes(shells);
    ASSERT_TRUE(united.ok());
    for (const Mesh& mesh : {united.mesh, zoo::shuffled(united.mesh, 3)}) {
        const ClosestPointTree tree(mesh);
        const std::vector<int> lowest = lowestFaceAt(mesh);
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            const auto found = tree.query(mesh.point(vertex));
            ASSERT_TRUE(found.has_value());
            ASSERT_EQ(found->squaredDistance, 0.0);
            ASSERT_EQ(found->face, lowest[static_cast<std::size_t>(vertex)]) << vertex;
        }
        std::mt19937 engine(4);
        std::uniform_real_distribution<double> random(-2.0, 2.0);
        for (int i = 0; i < 50; ++i)
            expectClosest(mesh, tree, {random(engine), random(engine), random(engine)}, 1e-12);
    }
}

/// Processor time of a query at each of a few vertices, for so many spheres in one place.
double secondsOnCoincidentShells(int count) {
    const MeshResult shells =
        uniteMeshes(std::vector<Mesh>(static_cast<std::size_t>(count), makeSphere({1.0, 8, 6})));
    const ClosestPointTree tree(shells.mesh);
    const std::clock_t start = std::clock();
    for (int round = 0; round < 50; ++round) {
        for (int vertex = 0; vertex < 42; ++vertex)
            EXPECT_EQ(tree.query(shells.mesh.point(vertex))->squaredDistance, 0.0);
    }
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(ClosestPoint, aQueryCostsNoMoreForManyCoincidentShellsThanForFew) {
    // Were each shell looked at, it would cost two hundred times as much.
    EXPECT_LT(secondsOnCoincidentShells(1000), 20.0 * secondsOnCoincidentShells(5) + 0.01);
}

TEST(ClosestPoint, theNumberingOfTheMeshMakesNoDifference) {
    const Mesh ordered = zoo::openGrid(30, 30);
    std::vector<int> newNumber;
    const Mesh renumbered = zoo::shuffled(ordered, 8, &newNumber);
    const ClosestPointTree tree(ordered);
    const ClosestPointTree other(renumbered);
    std::mt19937 engine(6);
    std::uniform_real_distribution<double> random(-20.0, 20.0);
    for (int i = 0; i < 300; ++i) {
        const Vec3 point{random(engine), random(engine), random(engine)};
        EXPECT_NEAR(tree.query(point)->squaredDistance, other.query(point)->squaredDistance, 1e-10);
    }
    const std::vector<int> lowest = lowestFaceAt(renumbered);
    for (const int vertex : newNumber)
        EXPECT_EQ(other.query(renumbered.point(vertex))->face, lowest[static_cast<std::size_t>(vertex)]);
}

TEST(ClosestPoint, pointsOnASharedEdgeGoToItsLowestFaceInSpiteOfRounding) {
    const Matrix4 turned = rotationMatrix({0.3, 0.7, -0.4}) * Matrix4::translation({3, 1, -2});
    for (const Mesh& mesh : {transformed(makePlane(), turned), transformed(makeSphere(), turned)}) {
        const ClosestPointTree tree(mesh);
        for (int edge = 0; edge < mesh.edgeCount(); ++edge) {
            const auto [a, b] = mesh.topology().edge(edge);
            for (double t : {0.21, 0.37, 0.83}) {
                const auto found = tree.query(mesh.point(a) + (mesh.point(b) - mesh.point(a)) * t);
                ASSERT_TRUE(found.has_value());
                EXPECT_EQ(found->face, mesh.topology().edgeFaces(edge)[0]);
            }
        }
    }
}

TEST(ClosestPoint, maximumDistanceIsInclusive) {
    const ClosestPointTree tree(zoo::cube());
    EXPECT_TRUE(tree.query({2.5, 0, 0}, 2.0).has_value());
    EXPECT_FALSE(tree.query({2.5, 0, 0}, 1.9999999).has_value());
    EXPECT_TRUE(tree.query({2.5, 0, 0}, DBL_MAX).has_value());
    EXPECT_FALSE(tree.query({2.5, 0, 0}, -1.0).has_value());
    EXPECT_FALSE(tree.query({NAN, 0, 0}).has_value());
    EXPECT_TRUE(tree.query({1e200, 0, 0}).has_value());
}

TEST(ClosestPoint, onlyTheFacesOfInterestAreLookedAt) {
    const ClosestPointTree tree(zoo::cube(), std::vector<int>{3, 1, 1, 99, -4});
    const auto up = tree.query({0, 0.2, 0.45});
    ASSERT_TRUE(up.has_value());
    EXPECT_EQ(up->face, 1);
    EXPECT_EQ(up->point, (Vec3{0, 0.5, 0.45}));
    EXPECT_EQ(up->normal, (Vec3{0, 1, 0}));
    EXPECT_EQ(tree.query({0, 0, 0.25})->face, 1);
    EXPECT_EQ(tree.query({0, -0.1, 0})->face, 3);
    EXPECT_FALSE(ClosestPointTree(zoo::cube(), std::vector<int>()).query({}).has_value());
}

TEST(ClosestPoint, theMatrixTakesTheQueryIntoTheMeshsSpace) {
    const Matrix4 toMesh = Matrix4::scaling({0.1, 0.1, 0.1}) * Matrix4::translation({0, -5, 0});
    const ClosestPointTree tree(zoo::cube(), toMesh);
    const auto found = tree.query({0, 100, 0});
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->point, (Vec3{0, 0.5, 0}));
    EXPECT_DOUBLE_EQ(found->squaredDistance, 4.5 * 4.5);
}

TEST(ClosestPoint, laterEditsAndPointsThatAreNoNumbersDoNotMatter) {
    Mesh mesh = zoo::threeEqualShells();
    const ClosestPointTree before(mesh);
    for (int vertex = 0; vertex < 8; ++vertex)
        mesh.setPoint(vertex, {NAN, 0, INFINITY});
    EXPECT_EQ(before.query({0, 0, 0.4})->face, 0);
    const ClosestPointTree after(mesh);
    const auto found = after.query({0, 0, 0.4});
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->face, 6 + 2);
    EXPECT_EQ(ClosestPointTree(mesh, std::vector<int>{12}).query({0, 0, 0.4})->face, 12);
}

TEST(ClosestPoint, severalThreadsGetTheAnswersOfOne) {
    const Mesh mesh = makeSphere({1.0, 60, 40});
    const ClosestPointTree tree(mesh);
    const auto faces = [&tree] {
        std::vector<int> result;
        for (int i = 0; i < 3000; ++i) {
            result.push_back(tree.query({std::sin(i * 0.7), std::cos(i * 1.3), std::sin(i * 2.1)})->face);
        }
        return result;
    };
    const std::vector<int> expected = faces();
    std::vector<std::vector<int>> found(4);
    std::vector<std::thread> threads;
    for (std::vector<int>& result : found)
        threads.emplace_back([&] { result = faces(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::vector<int>& result : found)
        EXPECT_EQ(result, expected);
}

}  // namespace
