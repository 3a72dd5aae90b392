#include "geometry/closestPoint.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "geometry/triangulate.h"

namespace host::geometry {

namespace {

/// Beyond this the tree's single precision arithmetic could overflow; such meshes and queries are searched
/// one by one.
constexpr double kLargestInTree = 1e15;

/// Positions along an edge or weights of a corner below this are rounding and count as zero, so that all
/// triangles that share the vertex or edge find the very same point on it and tie.
constexpr double kSnap = 1e-14;

/// Where a triangle is closest; the distance is in the same unit as the corners.
struct TriangleHit {
    std::array<double, 3> barycentric{};
    Vec3 offset;  ///< from the query point
    double squaredDistance = std::numeric_limits<double>::infinity();
};

bool isBefore(const Vec3& a, const Vec3& b) {
    return std::array<double, 3>{a.x, a.y, a.z} < std::array<double, 3>{b.x, b.y, b.z};
}

/// Takes the point of the edge between corners i and j into `hit` if it is closer to the origin than that.
void improveByEdge(const std::array<Vec3, 3>& corners, int i, int j, TriangleHit& hit) {
    // One direction for an edge whoever asks: the two triangles on it must get the same bits.
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

/// Closest point of a triangle to the origin.
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

/// One for the process: it owns nothing but settings, and making one takes longer than a small tree.
RTCDevice sharedDevice() {
    struct Owner {
        RTCDevice device = rtcNewDevice(nullptr);
        ~Owner() {
            if (device != nullptr) rtcReleaseDevice(device);
        }
    };
    static const Owner owner;
    return owner.device;
}

double largestOf(const Vec3& v) {
    return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
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

/// Scatters face numbers. Each step can be reversed, so that no two faces get one rank.
std::uint32_t shuffled(std::uint32_t face, std::uint32_t seed) {
    face ^= seed * 0x9e3779b9U;
    face = (face ^ (face >> 16)) * 0x7feb352dU;
    face = (face ^ (face >> 15)) * 0x846ca68bU;
    return face ^ (face >> 16);
}

}  // namespace

/// The mesh and its triangles in order of face and triangle, and a bounding volume tree over them.
///
/// The tree only says which triangles may be close: its boxes are single precision, relative to the mesh's
/// centre, and the search radius is widened by their rounding. Distances are computed in double from the
/// mesh's own points.
struct ClosestPointTree::Snapshot {
    Mesh mesh;
    Matrix4 toMesh;
    Triangulation triangulation;
    FaceTieRule rule;
    Vec3 centre;
    double extent = 0.0;       ///< largest coordinate relative to the centre
    RTCScene scene = nullptr;  ///< null: every triangle is looked at

    Snapshot(const Mesh& source, std::vector<int> faces, const Matrix4& matrix, FaceTieRule tieRule)
        : mesh(source), toMesh(matrix), triangulation(triangulate(mesh, faces)), rule(tieRule) {
        if (!triangulation.triangles.empty() && measure()) buildScene();
    }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
    ~Snapshot() {
        if (scene != nullptr) rtcReleaseScene(scene);
    }

    /// Sets centre and extent; false when the points do not suit the tree.
    bool measure() {
        BoundingBox box;
        for (const auto& triangle : triangulation.triangles) {
            for (int vertex : triangle) {
                const Vec3 point = mesh.point(vertex);
                if (!(largestOf(point) <= kLargestInTree) || !isFinite(point)) return false;
                box.expand(point);
            }
        }
        centre = box.center();
        extent = largestOf(box.size()) * 0.5;
        return true;
    }

    /// Position of a triangle's face among the faces of the triangulation.
    std::size_t facePosition(int triangle) const {
        const auto& offsets = triangulation.offsets;
        return static_cast<std::size_t>(std::upper_bound(offsets.begin(), offsets.end(), triangle) -
                                        offsets.begin() - 1);
    }

    /// Whether a triangle is answered in place of another one that is equally close.
    bool isPreferred(int triangle, int other) const {
        const int face = triangulation.faces[facePosition(triangle)];
        const int otherFace = triangulation.faces[facePosition(other)];
        if (rule.kind == FaceTieRule::Kind::Lowest || face == otherFace) return triangle < other;
        if (rule.kind == FaceTieRule::Kind::Highest) return face > otherFace;
        return shuffled(static_cast<std::uint32_t>(face), rule.seed) <
               shuffled(static_cast<std::uint32_t>(otherFace), rule.seed);
    }

    bool isFiniteTriangle(int triangle) const {
        const auto& vertices = triangulation.triangles[triangle];
        return std::all_of(vertices.begin(), vertices.end(),
                           [this](int v) { return isFinite(mesh.point(v)); });
    }

    void buildScene() {
        RTCDevice device = sharedDevice();
        if (device == nullptr) return;
        RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        const std::size_t vertexCount = static_cast<std::size_t>(mesh.vertexCount());
        const std::size_t triangleCount = triangulation.triangles.size();
        auto* points = static_cast<float*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), vertexCount));
        auto* corners = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
            geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(unsigned), triangleCount));
        if (points != nullptr && corners != nullptr) {
            fill(points, corners);
            rtcSetGeometryPointQueryFunction(geometry, &Snapshot::visit);
            rtcCommitGeometry(geometry);
            scene = rtcNewScene(device);
            rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
            rtcAttachGeometry(scene, geometry);
            rtcCommitScene(scene);
        }
        rtcReleaseGeometry(geometry);
    }

    void fill(float* points, unsigned* corners) const {
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            const Vec3 point = mesh.point(vertex) - centre;
            // Vertices outside the listed faces may be anything; the tree never looks at them.
            const bool usable = largestOf(point) <= 2.0 * kLargestInTree && isFinite(point);
            for (int axis = 0; axis < 3; ++axis)
                *points++ = usable ? static_cast<float>(point[axis]) : 0.0F;
        }
        for (const auto& triangle : triangulation.triangles) {
            for (int vertex : triangle)
                *corners++ = static_cast<unsigned>(vertex);
        }
    }

    struct Search {
        const Snapshot& snapshot;
        Vec3 point;
        double slack = 0.0;  ///< rounding of the tree's distances
        double largestSquared = 0.0;
        int triangle = -1;
        TriangleHit hit{};

        /// True when the triangle is the best so far.
        bool tryTriangle(int candidate) {
            const auto& vertices = snapshot.triangulation.triangles[candidate];
            std::array<Vec3, 3> corners;
            for (int i = 0; i < 3; ++i)
                corners[i] = snapshot.mesh.point(vertices[i]) - point;
            const TriangleHit found = closestOnTriangle(corners);
            if (!(found.squaredDistance <= largestSquared)) return false;
            const bool isTie = triangle >= 0 && found.squaredDistance == hit.squaredDistance;
            if (isTie && !snapshot.isPreferred(candidate, triangle)) return false;
            hit = found;
            triangle = candidate;
            largestSquared = found.squaredDistance;
            return true;
        }

        /// Search radius for the tree: never below the best distance, so that equal ones are still visited.
        float radius() const {
            const double padded = std::sqrt(largestSquared) * (1.0 + 1e-6) + slack;
            return padded < 10.0 * kLargestInTree ? static_cast<float>(padded)
                                                  : std::numeric_limits<float>::infinity();
        }
    };

    static bool visit(RTCPointQueryFunctionArguments* arguments) {
        Search& search = *static_cast<Search*>(arguments->userPtr);
        if (!search.tryTriangle(static_cast<int>(arguments->primID))) return false;
        arguments->query->radius = search.radius();
        return true;
    }

    void run(Search& search) const {
        const Vec3 relative = search.point - centre;
        if (scene == nullptr || !(largestOf(relative) <= kLargestInTree)) {
            const int count = static_cast<int>(triangulation.triangles.size());
            for (int triangle = 0; triangle < count; ++triangle) {
                if (isFiniteTriangle(triangle)) search.tryTriangle(triangle);
            }
            return;
        }
        search.slack = 1e-6 * std::max(largestOf(relative), extent);
        RTCPointQuery query{};
        query.x = static_cast<float>(relative.x);
        query.y = static_cast<float>(relative.y);
        query.z = static_cast<float>(relative.z);
        query.radius = search.radius();
        RTCPointQueryContext context;
        rtcInitPointQueryContext(&context);
        rtcPointQuery(scene, &query, &context, nullptr, &search);
    }
};

ClosestPointTree::ClosestPointTree(const Mesh& mesh, const Matrix4& toMesh, FaceTieRule rule)
    : snapshot_(std::make_shared<Snapshot>(mesh, allFaces(mesh), toMesh, rule)) {}

ClosestPointTree::ClosestPointTree(const Mesh& mesh, const std::vector<int>& faces, const Matrix4& toMesh,
                                   FaceTieRule rule)
    : snapshot_(std::make_shared<Snapshot>(mesh, orderedFaces(mesh, faces), toMesh, rule)) {}

std::optional<ClosestPoint> ClosestPointTree::query(const Vec3& point, double maxDistance) const {
    const Triangulation& triangulation = snapshot_->triangulation;
    const Vec3 local = transformPoint(point, snapshot_->toMesh);
    if (triangulation.triangles.empty() || !isFinite(local) || !(maxDistance >= 0.0)) return std::nullopt;
    Snapshot::Search search{*snapshot_, local};
    search.largestSquared = maxDistance * maxDistance;
    snapshot_->run(search);
    if (search.triangle < 0) return std::nullopt;

    const Mesh& mesh = snapshot_->mesh;
    const std::size_t at = snapshot_->facePosition(search.triangle);
    ClosestPoint result;
    result.face = triangulation.faces[at];
    result.triangle = search.triangle - triangulation.offsets[at];
    result.vertices = triangulation.triangles[search.triangle];
    result.barycentric = search.hit.barycentric;
    result.point = local + search.hit.offset;
    result.squaredDistance = search.hit.squaredDistance;
    const auto& [a, b, c] = result.vertices;
    result.normal = normalized(cross(mesh.point(b) - mesh.point(a), mesh.point(c) - mesh.point(a)));
    if (result.normal == Vec3()) result.normal = faceNormal(mesh, result.face);
    return result;
}

}  // namespace host::geometry
