#include "symmetry/pointGrid.h"

#include <cmath>
#include <limits>

namespace {

/// Cells are at least this part of the largest coordinate, so that their numbers fit the integers.
constexpr double kSmallestPart = 0x1p-50;
/// And at least this long, so that one cell has a number of cells per unit.
constexpr double kSmallestCell = 1e-300;

PlainBox boundsOf(const std::vector<PlainPoint>& points) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    PlainBox bounds{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    for (const PlainPoint& point : points)
        bounds.expand(point);
    return bounds;
}

double largestCoordinate(const PlainBox& bounds) {
    double largest = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        largest = std::max({largest, std::abs(bounds.minimum[axis]), std::abs(bounds.maximum[axis])});
    return largest;
}

}  // namespace

PointGrid::PointGrid(const std::vector<PlainPoint>& points, double cell) : bounds_(boundsOf(points)) {
    std::size_t bucketCount = 2;
    for (; bucketCount < points.size(); bucketCount *= 2)
        --shift_;
    starts_.assign(bucketCount + 1, 0);
    if (points.empty()) return;
    cellsPerUnit_ = 1.0 / std::max({cell, largestCoordinate(bounds_) * kSmallestPart, kSmallestCell});
    for (const PlainPoint& point : points)
        ++starts_[bucketOf(cellOf(point))];
    // The ends of the buckets, from which they are filled backward.
    std::uint32_t end = 0;
    for (std::uint32_t& start : starts_) {
        end += start;
        start = end;
    }
    entries_.resize(points.size());
    for (std::size_t k = points.size(); k-- > 0;) {
        const PlainPoint& point = points[k];
        entries_[--starts_[bucketOf(cellOf(point))]] = {{point[0], point[1], point[2]}, static_cast<int>(k)};
    }
}
