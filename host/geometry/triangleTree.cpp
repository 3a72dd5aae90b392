#include "geometry/triangleTree.h"

#include <cmath>
#include <exception>
#include <thread>
#include <utility>

namespace host::geometry {

namespace {

/// Sorting this few is faster than handing them to another thread.
constexpr std::size_t kFewLeaves = 2000;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Twice the middle of the triangle's box along an axis. The corners are halved first, so that it stays
/// finite.
float middle(const TriangleTree::Triangle& triangle, std::size_t axis) {
    const auto& [a, b, c] = triangle.corners;
    return std::min({a[axis], b[axis], c[axis]}) * 0.5F + std::max({a[axis], b[axis], c[axis]}) * 0.5F;
}

/// A thread that does the work; none if the system starts no more threads.
template <typename Work>
std::thread startedThread(const Work& work) {
    try {
        return std::thread(work);
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

TriangleTree::TriangleTree(std::vector<Triangle> triangles) : triangles_(std::move(triangles)) {
    if (triangles_.empty()) return;
    nodes_.resize(leafCount() - 1);
    arrange(0, leafCount(), std::max(1U, std::thread::hardware_concurrency()));
    const Box all = build(0, 0, leafCount());
    for (const auto& corner : all) {
        for (const float value : corner)
            extent_ = std::max(extent_, std::abs(static_cast<double>(value)));
    }
}

/// Sorts the triangles of some leaves so that each half of the leaves, and each half of these, lies together.
/// They are divided in the middle, along the axis in which they are spread most.
/// @param threads  how many may work; if the system starts none, this one does all the work
void TriangleTree::arrange(std::size_t firstLeaf, std::size_t leafCount, unsigned threads) {
    if (leafCount < 2) return;
    const std::size_t half = firstHalf(leafCount);
    const auto begin = triangles_.begin() + static_cast<std::ptrdiff_t>(firstLeaf * kLeafSize);
    const auto end = triangles_.begin() + static_cast<std::ptrdiff_t>(std::min(
                                              (firstLeaf + leafCount) * kLeafSize, triangles_.size()));
    std::array<float, 3> lowest{kInfinity, kInfinity, kInfinity};
    std::array<float, 3> highest{-kInfinity, -kInfinity, -kInfinity};
    for (auto triangle = begin; triangle != end; ++triangle) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const float value = middle(*triangle, axis);
            lowest[axis] = std::min(lowest[axis], value);
            highest[axis] = std::max(highest[axis], value);
        }
    }
    std::size_t widest = 0;
    for (std::size_t axis = 1; axis < 3; ++axis) {
        if (highest[axis] - lowest[axis] > highest[widest] - lowest[widest]) widest = axis;
    }
    std::nth_element(
        begin, begin + static_cast<std::ptrdiff_t>(half * kLeafSize), end,
        [widest](const Triangle& a, const Triangle& b) { return middle(a, widest) < middle(b, widest); });
    const unsigned helpers = leafCount < kFewLeaves ? 0 : threads / 2;
    std::thread helper =
        helpers == 0 ? std::thread()
                     : startedThread([this, firstLeaf, half, helpers] { arrange(firstLeaf, half, helpers); });
    if (!helper.joinable()) arrange(firstLeaf, half, 1);
    arrange(firstLeaf + half, leafCount - half, threads - helpers);
    if (helper.joinable()) helper.join();
}

/// Fills the nodes of some leaves.
/// @return the box of all of them
TriangleTree::Box TriangleTree::build(std::size_t node, std::size_t firstLeaf, std::size_t leafCount) {
    Box box{{{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}}};
    const auto expand = [&box](const std::array<float, 3>& lowest, const std::array<float, 3>& highest) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box[0][axis] = std::min(box[0][axis], lowest[axis]);
            box[1][axis] = std::max(box[1][axis], highest[axis]);
        }
    };
    if (leafCount == 1) {
        const std::size_t start = firstLeaf * kLeafSize;
        const std::size_t end = std::min(start + kLeafSize, triangles_.size());
        for (std::size_t k = start; k < end; ++k) {
            for (const auto& corner : triangles_[k].corners)
                expand(corner, corner);
        }
        return box;
    }
    const std::size_t half = firstHalf(leafCount);
    nodes_[node].halves = {build(node + 1, firstLeaf, half),
                           build(node + half, firstLeaf + half, leafCount - half)};
    for (const Box& part : nodes_[node].halves)
        expand(part[0], part[1]);
    return box;
}

}  // namespace host::geometry
