// Partners that follow from positions alone: against every face of small meshes, one by one.

#include "symmetry/partnerLookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <set>

#include "geometry/closestPoint.h"
#include "geometry/primitives.h"
#include "support/meshZoo.h"

namespace {

using host::geometry::ClosestPointTree;
using host::geometry::Matrix4;
using host::geometry::uniteMeshes;
using host::geometry::Vec3;
using zoo::Mesh;

constexpr double kNotFinite[] = {std::nan(""), std::numeric_limits<double>::infinity()};

/// A mesh as the look-up takes it.
struct Flat {
    explicit Flat(const Mesh& mesh) {
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            const Vec3 point = mesh.point(vertex);
            points.push_back({static_cast<float>(point.x), static_cast<float>(point.y),
                              static_cast<float>(point.z), 1.0F});
        }
        for (int face = 0; face < mesh.faceCount(); ++face) {
            for (const int corner : mesh.topology().faceVertices(face))
                faces.values.push_back(corner);
            faces.endList();
        }
        all.resize(points.size());
        std::iota(all.begin(), all.end(), 0);
    }

    std::vector<int> answers(int axis, double tolerance) const {
        return lookUpPartners({points, faces, static_cast<std::size_t>(axis), tolerance}, all);
    }

    std::vector<PlainPoint> points;
    IndexLists faces;
    std::vector<int> all;
};

/// What the host may find, depending on which of equally close faces it takes.
class Possibilities {
  public:
    Possibilities(const Mesh& mesh, int axis, double tolerance) : mesh_(mesh), tolerance_(tolerance) {
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            Vec3 point = mesh.point(vertex);
            point[axis] = -point[axis];
            image_.push_back(point);
        }
        Mesh image = mesh;
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
            image.setPoint(vertex, image_[static_cast<std::size_t>(vertex)]);
        for (int face = 0; face < mesh.faceCount(); ++face)
            faces_.emplace_back(image, std::vector<int>{face});
    }

    /// The partners that are possible for a vertex. kUndecided: the search fails.
    std::set<int> of(int vertex) const {
        const Vec3 point = mesh_.point(vertex);
        double least = std::numeric_limits<double>::infinity();
        std::set<int> answers{kUndecided};
        for (int face = 0; face < mesh_.faceCount(); ++face) {
            const auto closest = faces_[static_cast<std::size_t>(face)].query(point);
            if (!closest || closest->squaredDistance > least) continue;
            if (closest->squaredDistance < least) answers.clear();
            least = closest->squaredDistance;
            answers.insert(cornerAt(face, point));
        }
        return answers;
    }

  private:
    int cornerAt(int face, const Vec3& point) const {
        for (const int corner : mesh_.topology().faceVertices(face)) {
            if (length(image_[static_cast<std::size_t>(corner)] - point) <= tolerance_) return corner;
        }
        return kNoPartner;
    }

    const Mesh& mesh_;
    double tolerance_;
    std::vector<Vec3> image_;
    std::vector<ClosestPointTree> faces_;
};

/// Compares all answers for a mesh. Returns how many vertices were decided.
int expectPossible(const Mesh& mesh, int axis, double tolerance, const std::string& what) {
    const std::vector<int> answers = Flat(mesh).answers(axis, tolerance);
    const Possibilities possibilities(mesh, axis, tolerance);
    int decided = 0;
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        const int answer = answers[static_cast<std::size_t>(vertex)];
        if (answer == kUndecided) continue;
        ++decided;
        const std::set<int> possible = possibilities.of(vertex);
        EXPECT_EQ(possible.count(answer), 1U)
            << what << ", tolerance " << tolerance << ", axis " << axis << ": vertex " << vertex << " got "
            << answer << " and not " << ::testing::PrintToString(possible);
    }
    return decided;
}

class PartnersOfEveryMesh : public ::testing::TestWithParam<zoo::NamedMesh> {};

TEST_P(PartnersOfEveryMesh, AreWhatTheHostMayFind) {
    const Mesh& mesh = GetParam().mesh;
    for (const double tolerance : {1e-30, 1e-6, 0.001, 0.1, 0.6, 2.5, 1e30}) {
        for (int axis = 0; axis < 3; ++axis)
            expectPossible(mesh, axis, tolerance, "as it is");
    }
    Mesh broken = mesh;
    for (int vertex = 0; vertex < mesh.vertexCount(); vertex += 7)
        broken.setPoint(vertex, {kNotFinite[vertex % 2], mesh.point(vertex).y, 0.0});
    expectPossible(broken, 0, 0.001, "with points that are not finite");
}

INSTANTIATE_TEST_SUITE_P(Zoo, PartnersOfEveryMesh, ::testing::ValuesIn(zoo::allMeshes()),
                         [](const auto& test) { return test.param.name; });

/// Draws meshes in which much coincides: on a coarse lattice, in several copies, with mirror images, moved by
/// the last digits of a number, with points that are not finite.
class RandomMesh {
  public:
    explicit RandomMesh(unsigned seed) : random_(seed) {}

    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }

    Mesh draw() {
        Mesh mesh = below(2) == 0 ? polygons() : zoo::openGrid(2 + below(4), 1 + below(3));
        if (below(3) == 0) mesh = zoo::shuffled(mesh, static_cast<unsigned>(below(1000)));
        if (below(2) == 0) {
            const Vec3 shift = latticePoint();
            mesh = uniteMeshes({mesh, mesh}, {Matrix4(), Matrix4::translation(shift)}).mesh;
        }
        if (below(2) == 0) mesh = uniteMeshes({mesh, mesh}, {Matrix4(), Matrix4::scaling({-1, 1, 1})}).mesh;
        const double noise = below(2) == 0 ? 0.0 : std::pow(10.0, between(-9.0, -1.0));
        const int every = 1 + below(4);
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            Vec3 point = mesh.point(vertex);
            for (int axis = 0; axis < 3; ++axis) {
                if (vertex % every == 0) point[axis] += between(-noise, noise);
                if (point[axis] == 0.0 && below(2) == 0) point[axis] = -0.0;
                if (below(400) == 0) point[axis] = kNotFinite[below(2)];
            }
            mesh.setPoint(vertex, point);
        }
        return mesh;
    }

  private:
    Vec3 latticePoint() { return {below(5) * 0.5 - 1.0, below(3) * 0.5 - 0.5, below(3) * 0.5 - 0.5}; }

    Mesh polygons() {
        std::vector<float> points;
        const int count = 4 + below(12);
        for (int vertex = 0; vertex < count; ++vertex) {
            const Vec3 point = latticePoint();
            for (int axis = 0; axis < 3; ++axis)
                points.push_back(static_cast<float>(point[axis]));
        }
        std::vector<int> counts;
        std::vector<int> corners;
        std::vector<int> vertices(static_cast<std::size_t>(count));
        std::iota(vertices.begin(), vertices.end(), 0);
        for (int face = 1 + below(12); face > 0; --face) {
            std::shuffle(vertices.begin(), vertices.end(), random_);
            counts.push_back(std::min(count, 3 + below(3)));
            corners.insert(corners.end(), vertices.begin(), vertices.begin() + counts.back());
        }
        return host::geometry::createMesh(points, counts, corners).mesh;
    }

    std::mt19937 random_;
};

TEST(PartnerLookup, AgreesWithTheHostOnRandomMeshes) {
    constexpr unsigned kMeshes = 4000;
    int decided = 0;
    int all = 0;
    for (unsigned seed = 0; seed < kMeshes && !::testing::Test::HasFailure(); ++seed) {
        RandomMesh random(seed);
        const Mesh mesh = random.draw();
        const double tolerance = std::pow(10.0, random.between(-8.0, 0.3));
        decided += expectPossible(mesh, random.below(3), tolerance, "seed " + std::to_string(seed));
        all += mesh.vertexCount();
    }
    // Or the comparison shows nothing.
    EXPECT_GT(decided, all / 4);
}

struct Shape {
    const char* name;
    Mesh (*make)();
    double tolerance;
    bool isKnown;  // all vertices, or none
};

/// Moves the vertices of one side, less and less toward the border of the sculpted region.
Mesh sculptedHead() {
    Mesh mesh = zoo::shuffledHead();
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        Vec3 point = mesh.point(vertex);
        if (point.x > 0.1) point.y += 0.05 * (point.x - 0.1) * (point.x - 0.1);
        mesh.setPoint(vertex, point);
    }
    return mesh;
}
/// As after an export: every coordinate is a little off.
Mesh roundedHead() {
    Mesh mesh = zoo::shuffledHead();
    RandomMesh random(1);
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        Vec3 point = mesh.point(vertex);
        for (int axis = 0; axis < 3; ++axis)
            point[axis] += random.between(-1e-6, 1e-6);
        mesh.setPoint(vertex, point);
    }
    return mesh;
}
/// One face with many corners.
Mesh disc() {
    constexpr int kHalf = 50;
    std::vector<float> points;
    for (int corner = 0; corner < 2 * kHalf; ++corner) {
        const int height = std::min(corner, 2 * kHalf - 1 - corner);
        const double angle = ((height + 0.5) / kHalf - 0.5) * std::acos(-1.0);
        const auto x = static_cast<float>(std::cos(angle));
        points.insert(points.end(), {corner < kHalf ? x : -x, static_cast<float>(std::sin(angle)), 0.0F});
    }
    std::vector<int> corners(2 * kHalf);
    std::iota(corners.begin(), corners.end(), 0);
    return host::geometry::createMesh(points, {2 * kHalf}, corners).mesh;
}
Mesh twoInOnePlace() {
    return uniteMeshes({zoo::openGrid(), zoo::openGrid()}).mesh;
}
class PartnersThatAreKnown : public ::testing::TestWithParam<Shape> {};

TEST_P(PartnersThatAreKnown, NeedNoQuestion) {
    const Mesh mesh = GetParam().make();
    const int decided = expectPossible(mesh, 0, GetParam().tolerance, GetParam().name);
    EXPECT_EQ(decided, GetParam().isKnown ? mesh.vertexCount() : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, PartnersThatAreKnown,
    ::testing::Values(Shape{"head", zoo::shuffledHead, 0.001, true},
                      Shape{"sculptedHead", sculptedHead, 0.001, true},
                      Shape{"roundedHead", roundedHead, 0.001, true}, Shape{"disc", disc, 0.001, true},
                      Shape{"discOfLargeTolerance", disc, 1.5, false},
                      Shape{"gridOfLargeTolerance", [] { return zoo::openGrid(); }, 1.0, false},
                      Shape{"twoInOnePlace", twoInOnePlace, 0.001, false},
                      Shape{"negativeTolerance", zoo::shuffledHead, -0.001, false}),
    [](const auto& test) { return test.param.name; });

/// Points in two crowds, each of which nearly reaches the mirror image of the other.
TEST(PartnerLookup, GivesUpWhereComparingWouldTakeTooLong) {
    constexpr int kCrowd = 2000;
    RandomMesh random(1);
    std::vector<float> points;
    for (int vertex = 0; vertex < 2 * kCrowd; ++vertex) {
        const double x = vertex < kCrowd ? 1.0 : -1.12;
        for (const double middle : {x, 0.0, 0.0})
            points.push_back(static_cast<float>(middle + random.between(-0.01, 0.01)));
    }
    std::vector<int> corners;
    for (int vertex = 0; vertex + 2 < 2 * kCrowd; vertex += 3)
        corners.insert(corners.end(), {vertex, vertex + 1, vertex + 2});
    const std::vector<int> counts(corners.size() / 3, 3);
    const Mesh mesh = host::geometry::createMesh(points, counts, corners).mesh;
    const std::vector<int> answers = Flat(mesh).answers(0, 0.1);
    EXPECT_EQ(std::count(answers.begin(), answers.end(), kUndecided), 2 * kCrowd);
}

TEST(PartnerLookup, AnswersInTheOrderAskedAndForNumbersThatAreNoVertices) {
    const Flat flat(zoo::cube());
    const PartnerSpace space{flat.points, flat.faces, 0, 0.001};
    const std::vector<int> all = lookUpPartners(space, flat.all);
    EXPECT_EQ(lookUpPartners(space, {7, 99, 0, -1, 7}),
              (std::vector<int>{all[7], kNoPartner, all[0], kNoPartner, all[7]}));
    EXPECT_TRUE(lookUpPartners(space, {}).empty());
}

}  // namespace
