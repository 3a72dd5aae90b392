#include "geometry/closestVertex.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

namespace host::geometry {

namespace {

struct NearestCorner {
    Vec3 point;
    int vertex = -1;
    double squaredDistance = std::numeric_limits<double>::infinity();

    double reachSquared() const { return squaredDistance; }
    void look(const TriangleTree::Triangle& triangle) {
        const auto& corner = triangle.corners[0];
        const double squared = squaredLength(Vec3{corner[0], corner[1], corner[2]} - point);
        if (squared > squaredDistance || (squared == squaredDistance && triangle.number > vertex)) return;
        squaredDistance = squared;
        vertex = triangle.number;
    }
};

}  // namespace

ClosestVertexTree::ClosestVertexTree(const Mesh& mesh) {
    // A vertex is a triangle whose corners are all at one place.
    std::vector<TriangleTree::Triangle> corners;
    corners.reserve(static_cast<std::size_t>(mesh.vertexCount()));
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        if (!isFinite(mesh.point(vertex))) continue;
        const float* p = mesh.points().data() + 3 * static_cast<std::size_t>(vertex);
        const std::array<float, 3> corner{p[0], p[1], p[2]};
        corners.push_back({{corner, corner, corner}, vertex, vertex});
    }
    // Of vertices at one place only the lowest is ever found. The others would all be looked at.
    const auto isBefore = [](const TriangleTree::Triangle& a, const TriangleTree::Triangle& b) {
        return std::tie(a.corners[0], a.number) < std::tie(b.corners[0], b.number);
    };
    const auto isSamePlace = [](const TriangleTree::Triangle& a, const TriangleTree::Triangle& b) {
        return a.corners[0] == b.corners[0];
    };
    std::sort(corners.begin(), corners.end(), isBefore);
    corners.erase(std::unique(corners.begin(), corners.end(), isSamePlace), corners.end());
    tree_ = TriangleTree(std::move(corners));
}

int ClosestVertexTree::query(const Vec3& point) const {
    if (!isFinite(point)) return -1;
    NearestCorner nearest{point};
    tree_.search(point, nearest);
    return nearest.vertex;
}

}  // namespace host::geometry
