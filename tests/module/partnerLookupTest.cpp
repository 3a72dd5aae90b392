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
#include "symmetry/mirrorPlaces.h"
#include "symmetry/pointGrid.h"

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
        return lookUpPartners({{points, faces}, static_cast<std::size_t>(axis), tolerance}, all);
    }

    std::vector<PlainPoint> points;
    IndexLists faces;
    std::vector<int> all;
};

/// Faces that the host may leave out, because it cannot tell where they are.
enum class LeftOut { kNone, kWithoutArea, kBroken };

/// What the host may find, depending on which of equally close faces it takes.
class Possibilities {
  public:
    Possibilities(const Mesh& mesh, int axis, double tolerance) : mesh_(mesh), tolerance_(tolerance) {
        Mesh image = mesh;
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            Vec3 point = mesh.point(vertex);
            point[axis] = -point[axis];
            image_.push_back(point);
            image.setPoint(vertex, point);
        }
        for (int face = 0; face < mesh.faceCount(); ++face)
            faces_.emplace_back(image, std::vector<int>{face});
    }

    /// The partners that are possible for a vertex. kUndecided: the search fails.
    std::set<int> of(int vertex, LeftOut leftOut) const {
        const Vec3 point = mesh_.point(vertex);
        double least = std::numeric_limits<double>::infinity();
        std::set<int> answers{kUndecided};
        for (int face = 0; face < mesh_.faceCount(); ++face) {
            const auto closest = faces_[static_cast<std::size_t>(face)].query(point);
            if (!closest || closest->squaredDistance > least || isLeftOut(face, leftOut)) continue;
            if (closest->squaredDistance < least) answers.clear();
            least = closest->squaredDistance;
            answers.insert(cornerAt(face, point));
        }
        return answers;
    }

  private:
    bool isLeftOut(int face, LeftOut leftOut) const {
        const host::geometry::IntSpan corners = mesh_.topology().faceVertices(face);
        if (leftOut == LeftOut::kWithoutArea) return isOnLine(corners);
        return leftOut == LeftOut::kBroken && std::any_of(corners.begin(), corners.end(), [this](int corner) {
                   return !std::isfinite(length(mesh_.point(corner)));
               });
    }

    bool isOnLine(const host::geometry::IntSpan& corners) const {
        const Vec3 origin = mesh_.point(corners[0]);
        for (const int a : corners) {
            for (const int b : corners) {
                if (length(cross(mesh_.point(a) - origin, mesh_.point(b) - origin)) != 0.0) return false;
            }
        }
        return true;
    }

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

/// Compares all answers for a mesh, and that part of the vertices have the same. Returns how many vertices
/// were decided.
int expectPossible(const Mesh& mesh, int axis, double tolerance, const std::string& what) {
    const Flat flat(mesh);
    const std::vector<int> answers = flat.answers(axis, tolerance);
    const Possibilities possibilities(mesh, axis, tolerance);
    int decided = 0;
    std::vector<int> some;
    std::vector<int> answersForSome;
    for (int vertex = mesh.vertexCount(); vertex-- > 0;) {
        const int answer = answers[static_cast<std::size_t>(vertex)];
        if (vertex % 3 == 0) some.push_back(vertex);
        if (vertex % 3 == 0) answersForSome.push_back(answer);
        if (answer == kUndecided) continue;
        ++decided;
        for (const LeftOut leftOut : {LeftOut::kNone, LeftOut::kWithoutArea, LeftOut::kBroken}) {
            const std::set<int> possible = possibilities.of(vertex, leftOut);
            EXPECT_EQ(possible.count(answer), 1U)
                << what << ", tolerance " << tolerance << ", axis " << axis << ": vertex " << vertex
                << " got " << answer << " and not " << ::testing::PrintToString(possible);
        }
    }
    const PartnerSpace space{{flat.points, flat.faces}, static_cast<std::size_t>(axis), tolerance};
    EXPECT_EQ(lookUpPartners(space, some), answersForSome) << what;
    return decided;
}

class PartnersOfEveryMesh : public ::testing::TestWithParam<zoo::NamedMesh> {};

TEST_P(PartnersOfEveryMesh, AreWhatTheHostMayFind) {
    const Mesh& mesh = GetParam().mesh;
    for (const double tolerance : {0.0, 1e-30, 1e-6, 0.001, 0.1, 0.6, 2.5, 1e30, 1e300}) {
        for (int axis = 0; axis < 3; ++axis)
            expectPossible(mesh, axis, tolerance, "as it is");
    }
    for (const double size : {1e-15, 1e15})
        expectPossible(transformed(mesh, Matrix4::scaling({size, size, size})), 0, 1e-4, "of another size");
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
        const int oneOf = below(8) == 0 ? 20 : 1000;
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            Vec3 point = mesh.point(vertex);
            for (int axis = 0; axis < 3; ++axis) {
                if (vertex % every == 0) point[axis] += between(-noise, noise);
                if (point[axis] == 0.0 && below(2) == 0) point[axis] = -0.0;
                if (below(oneOf) == 0) point[axis] = kNotFinite[below(2)];
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
        // Now and then exactly a distance of the lattice.
        const double tolerance =
            random.below(4) == 0 ? 0.5 * (1 + random.below(3)) : std::pow(10.0, random.between(-8.0, 0.3));
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
/// Long narrow faces, turned and slanted, with the last digits lost: the box of each holds corners of others.
Mesh narrowFaces() {
    Mesh mesh = uniteMeshes({zoo::openGrid(6, 40), zoo::openGrid(6, 40)},
                            {Matrix4::translation({4, 0, 0}), Matrix4::translation({4, 0, 0})})
                    .mesh;
    RandomMesh random(2);
    const int half = mesh.vertexCount() / 2;
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        const Vec3 flat = mesh.point(vertex);
        const double across = 0.05 * flat.z;
        const Vec3 point{flat.x + 0.8 * across + 0.3 * flat.x, 0.7 * flat.x - across,
                         0.5 * across + 0.6 * flat.x};
        const double side = vertex < half ? 1.0 : -1.0;
        mesh.setPoint(vertex, {side * point.x, point.y + random.between(-1e-6, 1e-6), point.z});
    }
    return mesh;
}
/// Coarse faces, and beside them on both sides others ten times as fine.
Mesh denseEyes() {
    const Matrix4 small = Matrix4::scaling({0.1, 0.1, 0.1});
    Mesh mesh = uniteMeshes({zoo::openGrid(8, 8), zoo::openGrid(10, 10), zoo::openGrid(10, 10)},
                            {Matrix4(), small * Matrix4::translation({1.5, 0.2, 0.3}),
                             small * Matrix4::translation({-1.5, 0.2, 0.3})})
                    .mesh;
    RandomMesh random(3);
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
        mesh.setPoint(vertex, mesh.point(vertex) + Vec3{0, random.between(-1e-5, 1e-5), 0});
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
/// One image within the tolerance, but farther than single precision can say.
Mesh largestNumbers() {
    constexpr float kLarge = 3e38F;
    return host::geometry::createMesh({-kLarge, -5e37F, 0, kLarge, kLarge, 0, kLarge, -kLarge, kLarge}, {3},
                                      {0, 1, 2})
        .mesh;
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
    ::testing::Values(
        Shape{"head", zoo::shuffledHead, 0.001, true}, Shape{"sculptedHead", sculptedHead, 0.001, true},
        Shape{"roundedHead", roundedHead, 0.001, true}, Shape{"disc", disc, 0.001, true},
        Shape{"denseEyes", denseEyes, 0.001, true}, Shape{"narrowFaces", narrowFaces, 0.001, true},
        Shape{"discOfCloseCorners", disc, 0.07, false}, Shape{"discOfLargeTolerance", disc, 1.5, false},
        Shape{"gridOfLargeTolerance", [] { return zoo::openGrid(); }, 1.0, false},
        Shape{"largestNumbers", largestNumbers, 4e38, false},
        Shape{"twoInOnePlace", twoInOnePlace, 0.001, false},
        Shape{"negativeTolerance", zoo::shuffledHead, -0.001, false}),
    [](const auto& test) { return test.param.name; });

/// Small triangles in two crowds, each of which nearly reaches the mirror image of the other.
Mesh crowds() {
    constexpr int kTriangles = 1000;
    RandomMesh random(1);
    std::vector<float> points;
    std::vector<int> corners(6 * kTriangles);
    std::iota(corners.begin(), corners.end(), 0);
    for (const int corner : corners) {
        for (const double middle : {corner % 2 == 0 ? 1.0 : -1.11, 0.0, 0.0})
            points.push_back(static_cast<float>(middle + random.between(-0.01, 0.01)));
    }
    return host::geometry::createMesh(points, std::vector<int>(2 * kTriangles, 3), corners).mesh;
}

TEST(PartnerLookup, GivesUpOnlyWhereComparingWouldTakeTooLong) {
    const Mesh head = transformed(roundedHead(), Matrix4::scaling({10, 10, 10}));
    const Mesh mesh = uniteMeshes({crowds(), head}, {Matrix4(), Matrix4::translation({0, 100, 0})}).mesh;
    const std::vector<int> answers = Flat(mesh).answers(0, 0.1);
    const auto headBegin = answers.end() - head.vertexCount();
    EXPECT_GT(std::count(answers.begin(), headBegin, kUndecided), 1000);
    EXPECT_EQ(std::count(headBegin, answers.end(), kUndecided), 0);
}

/// A host may divide such a face into triangles without area.
TEST(PartnerLookup, AsksAboutVerticesThatAFaceHasTwice) {
    const std::vector<float> points{0, 0, 0, 0, 1, 1, 0, 2, -1, 5, 5, 5, 6, 5, 5, 5, 6, 5};
    const Mesh mesh = host::geometry::createMesh(points, {4, 3}, {0, 1, 0, 2, 3, 4, 5}).mesh;
    EXPECT_EQ(Flat(mesh).answers(0, 0.001)[0], kUndecided);
    // There may be no face at all.
    const Mesh alone =
        host::geometry::createMesh({1, 0, 0, 2, 0, 0, 1, 0, 0, 1, 1, 0}, {4}, {0, 1, 2, 3}).mesh;
    EXPECT_EQ(Flat(alone).answers(0, 0.001), std::vector<int>(4, kUndecided));
}

TEST(MirrorPlaces, KnowsVerticesOnBothSidesAndOnThePlane) {
    const std::vector<PlainPoint> points{{1, -0.0F, 2}, {-1, 0, 2}, {-0.0F, 1, 0}, {0, 1, -0.0F}, {3, 0, 0},
                                         {-3, 0, 0},    {-3, 0, 0}, {4, 0, 0},     {0, 5, 0}};
    MirrorPlaces places(points, 0, points.size());
    std::vector<int> entries(points.size(), MirrorPlaces::kNowhere);
    // Listed twice, or no vertex: neither puts a vertex once more.
    for (const unsigned int half : {1U, 0U})
        places.add(half, {0, 1, -1, 2, 4, 7, 0, 99}, entries);
    for (const unsigned int half : {0U, 1U})
        places.addIfKnown(half, {3, 5, 6, 8}, entries);
    EXPECT_EQ(entries[8], MirrorPlaces::kNowhere);
    constexpr int kSeveral = MirrorPlaces::kSeveral;
    const std::vector<int> expected{1, 0, kSeveral, kSeveral, kSeveral, 4, 4, MirrorPlaces::kNobody};
    for (int vertex = 0; vertex < 8; ++vertex) {
        const auto at = static_cast<std::size_t>(vertex);
        EXPECT_EQ(places.acrossFrom(vertex, entries[at]), expected[at]) << vertex;
    }
}

TEST(PointGrid, FindsWhatComparingAllPointsFinds) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        RandomMesh random(seed);
        // Near the origin and far from it, in the smallest and the largest numbers.
        const double size = std::pow(10.0, random.between(-40.0, 30.0));
        const double far = random.below(2) == 0 ? 0.0 : size * std::pow(10.0, random.between(0.0, 6.0));
        const auto draw = [&] {
            PlainPoint point{};
            for (std::size_t axis = 0; axis < 3; ++axis)
                point[axis] = static_cast<float>(far + size * random.between(-1.0, 1.0));
            return point;
        };
        std::vector<PlainPoint> points(static_cast<std::size_t>(random.below(700)));
        std::generate(points.begin(), points.end(), draw);
        const double cell = size * std::pow(10.0, random.between(-3.0, 1.0));
        PointGrid grid(
            points.size(), [&](std::size_t k) { return points[k]; }, cell);
        std::set<int> missed;
        std::set<int> seen;
        for (int box = 0; box < 20; ++box) {
            const PlainPoint middle = box % 2 == 0 || points.empty()
                                          ? draw()
                                          : points[static_cast<std::size_t>(box) % points.size()];
            const PlainBox wanted = PlainBox::at(middle).grown(0.5 * cell * random.between(0.0, 1.0));
            std::vector<int> found;
            grid.visit(wanted, [&](int k) { found.push_back(k); });
            std::sort(found.begin(), found.end());
            EXPECT_EQ(std::adjacent_find(found.begin(), found.end()), found.end()) << "seed " << seed;
            seen.insert(found.begin(), found.end());
            for (std::size_t k = 0; k < points.size(); ++k) {
                const bool isFound = std::binary_search(found.begin(), found.end(), static_cast<int>(k));
                if (isFound != wanted.contains(points[k])) missed.insert(static_cast<int>(k));
            }
        }
        std::set<int> noted;
        grid.visitMissed([&](int k) { noted.insert(k); });
        EXPECT_TRUE(std::includes(noted.begin(), noted.end(), missed.begin(), missed.end()))
            << "seed " << seed;
        // Points are left out in crowds only.
        EXPECT_TRUE(noted.empty() || noted.size() > 500) << "seed " << seed;
    }
}

TEST(PartnerLookup, AnswersTheSameInOneGoAsInParts) {
    // So many that the whole is looked up on two threads, and the parts are not.
    Flat flat(zoo::openGrid(160, 150));
    std::mt19937 random(5);
    for (PlainPoint& point : flat.points) {
        // Vertices without a partner, with one near by, and with several.
        const auto chance = random() % 50;
        if (chance == 0) point[1] += 3.0F;
        if (chance == 1) point[2] += 0.0005F;
        if (chance == 2) point = flat.points[random() % flat.points.size()];
    }
    std::shuffle(flat.all.begin(), flat.all.end(), random);
    const std::vector<int> whole = flat.answers(0, 0.001);
    ASSERT_EQ(whole.size(), flat.points.size());
    constexpr std::size_t kPart = 9000;
    for (std::size_t begin = 0; begin < whole.size(); begin += kPart) {
        const std::size_t end = std::min(begin + kPart, whole.size());
        const auto at = [](auto& list, std::size_t k) {
            return list.begin() + static_cast<std::ptrdiff_t>(k);
        };
        const std::vector<int> asked(at(flat.all, begin), at(flat.all, end));
        EXPECT_EQ(lookUpPartners({{flat.points, flat.faces}, 0, 0.001}, asked),
                  std::vector<int>(at(whole, begin), at(whole, end)));
    }
}

/// What lies so close to the tolerance is for the host to say, whose arithmetic may differ.
TEST(PartnerLookup, AsksAboutImagesAtTheToleranceItself) {
    constexpr double kApart = 1.0 / 1024;
    const Flat flat(
        host::geometry::createMesh({1, 0, 0, 1, 1, 0, 1, 0, 1, -1 + 1.0F / 1024, 0, 0, -1, 1, 0, -1, 0, 1},
                                   {3, 3}, {0, 1, 2, 3, 5, 4})
            .mesh);
    const auto answersFor = [&](double tolerance) {
        return lookUpPartners({{flat.points, flat.faces}, 0, tolerance}, {0, 3});
    };
    EXPECT_EQ(answersFor(kApart * (1 + 2e-6)), (std::vector<int>{3, 0}));
    EXPECT_EQ(answersFor(kApart * (1 + 5e-7)), (std::vector<int>{kUndecided, kUndecided}));
    EXPECT_EQ(answersFor(kApart * (1 - 5e-7)), (std::vector<int>{kUndecided, kUndecided}));
    EXPECT_EQ(answersFor(kApart * (1 - 2e-6)), (std::vector<int>{kNoPartner, kNoPartner}));
}

/// Two faces that end in a corner that is not finite, one on each side: nothing lies between them.
TEST(PartnerLookup, TakesTheFiniteCornersOfEachFaceAlone) {
    Mesh mesh = host::geometry::createMesh({1,  0, 0, 1,  1, 0, 1, 0, 1, -1, 0, 1e-6F, -1, 1, 0, -1, 0, 1,
                                            -9, 0, 0, -9, 1, 0, 0, 0, 0, 9,  0, 0,     9,  1, 0, 0,  1, 0},
                                           {3, 3, 3, 3}, {0, 1, 2, 3, 5, 4, 6, 7, 8, 9, 10, 11})
                    .mesh;
    for (const int corner : {8, 11})
        mesh.setPoint(corner, {std::nan(""), 0, 0});
    const Flat flat(mesh);
    EXPECT_EQ(lookUpPartners({{flat.points, flat.faces}, 0, 0.001}, {0, 3}), (std::vector<int>{3, 0}));
}

TEST(PartnerLookup, AnswersInTheOrderAskedAndForNumbersThatAreNoVertices) {
    const Flat flat(zoo::cube());
    const PartnerSpace space{{flat.points, flat.faces}, 0, 0.001};
    const std::vector<int> all = lookUpPartners(space, flat.all);
    EXPECT_EQ(lookUpPartners(space, {7, 99, 0, -1, 7}),
              (std::vector<int>{all[7], kNoPartner, all[0], kNoPartner, all[7]}));
    EXPECT_TRUE(lookUpPartners(space, {}).empty());
}

}  // namespace
