#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "geometry/math.h"

namespace host::geometry {

/// A tree of boxes around triangles, to find the triangles close to a point.
///
/// The triangles are stored in the tree's own order, each with its corners. So what is close in space is
/// close in memory, however the mesh is numbered. Boxes hold the single precision points of a mesh exactly.
/// Building costs n log n. Searches may run on several threads.
class TriangleTree {
  public:
    struct Triangle {
        std::array<std::array<float, 3>, 3> corners;
        int number;
        int owner;  ///< given by the caller, like the number
    };

    TriangleTree() = default;
    /// @param triangles  their corners must be finite
    explicit TriangleTree(std::vector<Triangle> triangles);

    bool empty() const { return triangles_.empty(); }
    /// Largest distance of a corner from the origin along one axis.
    double extent() const { return extent_; }

    /// Calls `visitor.look(triangle)` for the triangles whose box is close enough to the point, the closer
    /// one of two halves first. Triangles farther away than the root of `visitor.reachSquared()` are skipped.
    /// That value may shrink during the search.
    template <typename Visitor>
    void search(const Vec3& point, Visitor& visitor) const;

  private:
    using Box = std::array<std::array<float, 3>, 2>;  // lowest and highest corner

    /// The boxes of both halves of some leaves. The node of the first half comes right after this one. The
    /// node of the second half comes after all nodes of the first.
    struct Node {
        std::array<Box, 2> halves;
    };

    /// Leaves that still have to be searched. `node` is used if there are several.
    struct Part {
        std::size_t node;
        std::size_t firstLeaf;
        std::size_t leafCount;
        double squaredDistance;
    };

    static constexpr std::size_t kLeafSize = 8;

    static Box boxOf(const Triangle& triangle);
    static double squaredDistance(const Box& box, const Vec3& point);
    static std::size_t firstHalf(std::size_t leafCount) { return (leafCount + 1) / 2; }
    std::size_t leafCount() const { return (triangles_.size() + kLeafSize - 1) / kLeafSize; }
    void arrange(std::size_t firstLeaf, std::size_t leafCount, unsigned threads);
    Box build(std::size_t node, std::size_t firstLeaf, std::size_t leafCount);

    std::vector<Triangle> triangles_;
    std::vector<Node> nodes_;
    double extent_ = 0.0;
};

inline TriangleTree::Box TriangleTree::boxOf(const Triangle& triangle) {
    const auto& [a, b, c] = triangle.corners;
    Box box;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box[0][axis] = std::min(std::min(a[axis], b[axis]), c[axis]);
        box[1][axis] = std::max(std::max(a[axis], b[axis]), c[axis]);
    }
    return box;
}

/// How far a position is outside an interval. Written so that it compiles without branches.
inline double distanceOutside(float lowest, float highest, double position) {
    const double below = static_cast<double>(lowest) - position;
    const double above = position - static_cast<double>(highest);
    const double outside = below > above ? below : above;
    return outside > 0.0 ? outside : 0.0;
}

inline double TriangleTree::squaredDistance(const Box& box, const Vec3& point) {
    const double x = distanceOutside(box[0][0], box[1][0], point.x);
    const double y = distanceOutside(box[0][1], box[1][1], point.y);
    const double z = distanceOutside(box[0][2], box[1][2], point.z);
    return x * x + y * y + z * z;
}

template <typename Visitor>
void TriangleTree::search(const Vec3& point, Visitor& visitor) const {
    if (empty()) return;
    // Halving is never deeper than the number of bits of a count.
    std::array<Part, std::numeric_limits<std::size_t>::digits + 1> waiting;
    std::size_t waitingCount = 0;
    Part part{0, 0, leafCount(), 0.0};
    for (;;) {
        while (part.leafCount > 1 && !(part.squaredDistance > visitor.reachSquared())) {
            const std::size_t half = firstHalf(part.leafCount);
            const Node& node = nodes_[part.node];
            Part first{part.node + 1, part.firstLeaf, half, squaredDistance(node.halves[0], point)};
            Part second{part.node + half, part.firstLeaf + half, part.leafCount - half,
                        squaredDistance(node.halves[1], point)};
            if (second.squaredDistance < first.squaredDistance) std::swap(first, second);
            waiting[waitingCount++] = second;
            part = first;
        }
        if (!(part.squaredDistance > visitor.reachSquared())) {
            const std::size_t start = part.firstLeaf * kLeafSize;
            const std::size_t end = std::min(start + kLeafSize, triangles_.size());
            for (std::size_t k = start; k < end; ++k) {
                if (!(squaredDistance(boxOf(triangles_[k]), point) > visitor.reachSquared()))
                    visitor.look(triangles_[k]);
            }
        }
        if (waitingCount == 0) return;
        part = waiting[--waitingCount];
    }
}

}  // namespace host::geometry
