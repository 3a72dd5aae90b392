#include "geometry/closestPoint.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <utility>

#include "geometry/triangleTree.h"
#include "geometry/triangulate.h"

namespace host::geometry {

namespace {

/// Positions along an edge, or weights of a corner, below this are rounding errors and count as zero. So all
/// triangles that share the vertex or edge find exactly the same point on it, and tie.
constexpr double kSnap = 1e-14;

/// How far a computed distance may be off, relative to the coordinates that it was computed from. The actual
/// error is much smaller, except for slivers.
constexpr double kRounding = 1e-9;

/// Where a triangle is closest. The distance is in the unit of the corners.
struct TriangleHit {
    std::array<double, 3> barycentric{};
    Vec3 offset;  ///< from the query point
    double squaredDistance = std::numeric_limits<double>::infinity();
};

bool isBefore(const Vec3& a, const Vec3& b) {
    return std::array<double, 3>{a.x, a.y, a.z} < std::array<double, 3>{b.x, b.y, b.z};
}

/// Replaces `hit` by the closest point of the edge between corners i and j, if that is closer to the origin.
void improveByEdge(const std::array<Vec3, 3>& corners, int i, int j, TriangleHit& hit) {
    // The direction of an edge must not depend on the triangle: both triangles on it must get the same bits.
    if (isBefore(corners[j], corners[i])) std::swap(i, j);
    const Vec3& a = corners[i];
    const Vec3 along = corners[j] - a;
    const double squared = squaredLength(along);
    double t = squared > 0.0 ? -dot(a, along) / squared : 0.0;
    if (!(t > kSnap)) t = 0.0;
    if (t > 1.0 - kSnap) t = 1.0;
    const Vec3 offset = t == 1.0 ? corners[j] : a + along * t;
    const double distance = squaredLength(offset);
    if (!(distance < hit.squaredDistance)) return;
    hit = {{}, offset, distance};
    hit.barycentric[i] = 1.0 - t;
    hit.barycentric[j] = t;
}

/// The point of a triangle that is closest to the origin.
TriangleHit closestOnTriangle(const std::array<Vec3, 3>& corners) {
    TriangleHit hit;
    const auto& [a, b, c] = corners;
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const Vec3 normal = cross(ab, ac);
    const double squared = squaredLength(normal);
    if (squared > 0.0) {
        const double weightB = dot(cross(ac, a), normal) / squared;
        const double weightC = dot(cross(a, ab), normal) / squared;
        const double weightA = 1.0 - weightB - weightC;
        if (weightA > kSnap && weightB > kSnap && weightC > kSnap) {
            const double height = dot(a, normal) / squared;
            return {{weightA, weightB, weightC}, normal * height, height * height * squared};
        }
    }
    improveByEdge(corners, 0, 1, hit);
    improveByEdge(corners, 1, 2, hit);
    improveByEdge(corners, 0, 2, hit);
    return hit;
}

double largestOf(const Vec3& v) {
    return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
}

Vec3 vector(const std::array<float, 3>& point) {
    return {point[0], point[1], point[2]};
}

/// Scatters face numbers. Each step can be reversed, so no two faces get the same rank.
std::uint32_t shuffled(int face, std::uint32_t seed) {
    std::uint32_t bits = static_cast<std::uint32_t>(face) ^ (seed * 0x9e3779b9U);
    bits = (bits ^ (bits >> 16)) * 0x7feb352dU;
    bits = (bits ^ (bits >> 15)) * 0x846ca68bU;
    return bits ^ (bits >> 16);
}

/// Which of two equally close triangles is reported. Every tie is decided here.
bool winsTie(const FaceTieRule& rule, const TriangleTree::Triangle& candidate,
             const TriangleTree::Triangle& current) {
    const bool isSameFace = candidate.owner == current.owner;
    if (rule.kind == FaceTieRule::Kind::Lowest || isSameFace) return candidate.number < current.number;
    if (rule.kind == FaceTieRule::Kind::Highest) return candidate.owner > current.owner;
    return shuffled(candidate.owner, rule.seed) < shuffled(current.owner, rule.seed);
}

std::size_t hashOf(const TriangleTree::Triangle& triangle) {
    std::uint64_t hash = 0;
    for (const auto& corner : triangle.corners) {
        for (const float value : corner) {
            std::uint32_t bits = 0;
            std::memcpy(&bits, &value, sizeof bits);
            hash = (hash ^ bits) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 32;
        }
    }
    return static_cast<std::size_t>(hash);
}

/// Triangles at different places. Triangles whose corners are at the same places in the same order are
/// equally close to every point: only the one that wins every tie is kept.
class Places {
  public:
    Places(std::size_t most, const FaceTieRule& rule) : rule_(rule) {
        triangles_.reserve(most);
        std::size_t size = 2;
        while (size < 2 * most)
            size *= 2;
        slots_.resize(size, kFree);
    }

    void add(const TriangleTree::Triangle& triangle) {
        std::size_t slot = hashOf(triangle) & (slots_.size() - 1);
        while (slots_[slot] != kFree) {
            TriangleTree::Triangle& present = triangles_[slots_[slot]];
            // Bit by bit, so that a corner that is no number equals itself.
            // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
            if (std::memcmp(&present.corners, &triangle.corners, sizeof triangle.corners) == 0) {
                if (winsTie(rule_, triangle, present)) present = triangle;
                return;
            }
            slot = (slot + 1) & (slots_.size() - 1);
        }
        slots_[slot] = static_cast<std::uint32_t>(triangles_.size());
        triangles_.push_back(triangle);
    }

    std::vector<TriangleTree::Triangle> take() && { return std::move(triangles_); }

  private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;
    const FaceTieRule& rule_;
    std::vector<TriangleTree::Triangle> triangles_;
    std::vector<std::uint32_t> slots_;
};

/// The triangles of the tree. Those with a point that is not finite are left out.
std::vector<TriangleTree::Triangle> distinctTriangles(const Mesh& mesh, const Triangulation& triangulation,
                                                      const FaceTieRule& rule) {
    Places places(triangulation.triangles.size(), rule);
    const std::vector<float>& points = mesh.points();
    for (std::size_t face = 0; face < triangulation.faces.size(); ++face) {
        for (int number = triangulation.offsets[face]; number < triangulation.offsets[face + 1]; ++number) {
            TriangleTree::Triangle triangle{{}, number, static_cast<int>(face)};
            bool isWhole = true;
            for (std::size_t corner = 0; corner < 3; ++corner) {
                const int vertex = triangulation.triangles[static_cast<std::size_t>(number)][corner];
                const float* point = points.data() + 3 * static_cast<std::size_t>(vertex);
                std::copy(point, point + 3, triangle.corners[corner].begin());
                isWhole = isWhole && isFinite(vector(triangle.corners[corner]));
            }
            if (isWhole) places.add(triangle);
        }
    }
    return std::move(places).take();
}

std::vector<int> allFaces(const Mesh& mesh) {
    std::vector<int> faces(mesh.faceCount());
    std::iota(faces.begin(), faces.end(), 0);
    return faces;
}

std::vector<int> orderedFaces(const Mesh& mesh, std::vector<int> faces) {
    std::sort(faces.begin(), faces.end());
    faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
    const auto isNoFace = [&](int face) { return face < 0 || face >= mesh.faceCount(); };
    faces.erase(std::remove_if(faces.begin(), faces.end(), isNoFace), faces.end());
    return faces;
}

}  // namespace

/// The mesh, its triangles in order of face and triangle, and a tree of the places where they are.
struct ClosestPointTree::Snapshot {
    Mesh mesh;
    Matrix4 toMesh;
    Triangulation triangulation;
    FaceTieRule rule;
    TriangleTree tree;

    Snapshot(const Mesh& source, std::vector<int> faces, const Matrix4& matrix, FaceTieRule tieRule)
        : mesh(source),
          toMesh(matrix),
          triangulation(triangulate(mesh, faces)),
          rule(tieRule),
          tree(distinctTriangles(mesh, triangulation, rule)) {}
};

namespace {

/// The best triangle so far of one query.
class Search {
  public:
    /// @param slack  how far a computed distance may be off
    Search(const Vec3& point, double largestSquared, double slack, const FaceTieRule& rule)
        : point_(point), largestSquared_(largestSquared), slack_(slack), rule_(rule) {
        reach();
    }

    const TriangleTree::Triangle* triangle() const { return triangle_; }
    const TriangleHit& hit() const { return hit_; }
    /// The squared distance up to which boxes must be searched. It includes ties.
    double reachSquared() const { return reachSquared_; }

    void look(const TriangleTree::Triangle& candidate) {
        std::array<Vec3, 3> corners;
        for (std::size_t i = 0; i < 3; ++i)
            corners[i] = vector(candidate.corners[i]) - point_;
        const TriangleHit found = closestOnTriangle(corners);
        if (!(found.squaredDistance <= largestSquared_)) return;
        const bool isTie = triangle_ != nullptr && found.squaredDistance == largestSquared_;
        if (isTie && !winsTie(rule_, candidate, *triangle_)) return;
        hit_ = found;
        triangle_ = &candidate;
        largestSquared_ = found.squaredDistance;
        reach();
    }

  private:
    void reach() {
        const double distance = std::sqrt(largestSquared_) * (1.0 + kRounding) + slack_;
        reachSquared_ = distance * distance;
    }

    Vec3 point_;
    double largestSquared_;  // triangles that are farther away are ignored
    double slack_;
    const FaceTieRule& rule_;
    double reachSquared_ = 0.0;
    const TriangleTree::Triangle* triangle_ = nullptr;
    TriangleHit hit_;
};

}  // namespace

ClosestPointTree::ClosestPointTree(const Mesh& mesh, const Matrix4& toMesh, FaceTieRule rule)
    : snapshot_(std::make_shared<Snapshot>(mesh, allFaces(mesh), toMesh, rule)) {}

ClosestPointTree::ClosestPointTree(const Mesh& mesh, const std::vector<int>& faces, const Matrix4& toMesh,
                                   FaceTieRule rule)
    : snapshot_(std::make_shared<Snapshot>(mesh, orderedFaces(mesh, faces), toMesh, rule)) {}

std::optional<ClosestPoint> ClosestPointTree::query(const Vec3& point, double maxDistance) const {
    const Triangulation& triangulation = snapshot_->triangulation;
    const Vec3 local = transformPoint(point, snapshot_->toMesh);
    if (triangulation.triangles.empty() || !isFinite(local) || !(maxDistance >= 0.0)) return std::nullopt;
    Search search(local, maxDistance * maxDistance,
                  kRounding * std::max(largestOf(local), snapshot_->tree.extent()), snapshot_->rule);
    snapshot_->tree.search(local, search);
    if (search.triangle() == nullptr) return std::nullopt;

    const TriangleTree::Triangle& triangle = *search.triangle();
    const auto face = static_cast<std::size_t>(triangle.owner);
    ClosestPoint result;
    result.face = triangulation.faces[face];
    result.triangle = triangle.number - triangulation.offsets[face];
    result.vertices = triangulation.triangles[static_cast<std::size_t>(triangle.number)];
    result.barycentric = search.hit().barycentric;
    result.point = local + search.hit().offset;
    result.squaredDistance = search.hit().squaredDistance;
    const auto& [a, b, c] = triangle.corners;
    result.normal = normalized(cross(vector(b) - vector(a), vector(c) - vector(a)));
    if (result.normal == Vec3()) result.normal = faceNormal(snapshot_->mesh, result.face);
    return result;
}

}  // namespace host::geometry
