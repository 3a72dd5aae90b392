#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// No host types: everything works on plain numbers.

/// A point as the host's arrays hold it: x, y, z, and a fourth number that does not count.
using PlainPoint = std::array<float, 4>;

/// A box along the axes. Its sides belong to it.
struct PlainBox {
    std::array<double, 3> minimum;
    std::array<double, 3> maximum;

    void expand(const PlainPoint& point) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            minimum[axis] = std::min<double>(minimum[axis], point[axis]);
            maximum[axis] = std::max<double>(maximum[axis], point[axis]);
        }
    }
    /// @param point  three coordinates, or more that do not count
    template <class Point>
    bool contains(const Point& point) const {
        // Not with &&: whether a point is inside cannot be foreseen, so branches would cost more.
        bool isInside = true;
        for (std::size_t axis = 0; axis < 3; ++axis)
            isInside &= (point[axis] >= minimum[axis]) & (point[axis] <= maximum[axis]);
        return isInside;
    }
};

/// Points in the cells of a regular grid, to find those in a box.
///
/// Cells are kept by a hash of their place, so memory depends on the number of points only: 24 bytes a point.
/// Where points crowd together, a visit takes long. It returns what it cost, so that the caller can give up.
class PointGrid {
  public:
    /// Linear cost.
    /// @param points  finite
    /// @param cell    edge length of a cell. Cells are longer if the points are so far from the origin that
    ///                such cells could not be counted
    PointGrid(const std::vector<PlainPoint>& points, double cell);

    /// Calls visit(k) for each points[k] in the box, once, in no particular order.
    /// @return the number of points and cells that were looked at
    template <class Visit>
    std::size_t visit(const PlainBox& box, const Visit& visit) const;

  private:
    using Cell = std::array<std::int64_t, 3>;
    struct Entry {
        std::array<float, 3> point;
        int number;  // in the list of points
    };

    std::int64_t cellAlong(double coordinate) const;
    template <class Point>
    Cell cellOf(const Point& point) const {
        return {cellAlong(point[0]), cellAlong(point[1]), cellAlong(point[2])};
    }
    std::size_t bucketOf(const Cell& cell) const;

    PlainBox bounds_;  // of the points
    double cellsPerUnit_ = 1.0;
    unsigned int shift_ = 63;            // of a hash, to get a bucket
    std::vector<std::uint32_t> starts_;  // per bucket: its first entry; one more for the end
    std::vector<Entry> entries_;
};

inline std::int64_t PointGrid::cellAlong(double coordinate) const {
    // Rounded down by hand: without SSE 4.1, std::floor is a call.
    const double scaled = coordinate * cellsPerUnit_;
    const auto truncated = static_cast<std::int64_t>(scaled);
    return truncated - static_cast<std::int64_t>(scaled < static_cast<double>(truncated));
}

inline std::size_t PointGrid::bucketOf(const Cell& cell) const {
    // Odd factors without small common multiples; the upper bits depend on all bits of the three numbers.
    const std::uint64_t hash = static_cast<std::uint64_t>(cell[0]) * 0x9E3779B97F4A7C15U +
                               static_cast<std::uint64_t>(cell[1]) * 0xC2B2AE3D27D4EB4FU +
                               static_cast<std::uint64_t>(cell[2]) * 0x165667B19E3779F9U;
    return static_cast<std::size_t>(hash >> shift_);
}

template <class Visit>
std::size_t PointGrid::visit(const PlainBox& box, const Visit& visit) const {
    Cell first;
    Cell last;
    double cellCount = 1.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Inside the bounds, so that the cells can be counted.
        const double minimum = std::max(box.minimum[axis], bounds_.minimum[axis]);
        const double maximum = std::min(box.maximum[axis], bounds_.maximum[axis]);
        if (!(minimum <= maximum)) return 1;
        first[axis] = cellAlong(minimum);
        last[axis] = cellAlong(maximum);
        cellCount *= static_cast<double>(last[axis] - first[axis] + 1);
    }
    if (cellCount > static_cast<double>(entries_.size())) {
        for (const Entry& entry : entries_) {
            if (box.contains(entry.point)) visit(entry.number);
        }
        return entries_.size();
    }
    std::size_t cost = 0;
    Cell cell;
    for (cell[0] = first[0]; cell[0] <= last[0]; ++cell[0]) {
        for (cell[1] = first[1]; cell[1] <= last[1]; ++cell[1]) {
            for (cell[2] = first[2]; cell[2] <= last[2]; ++cell[2]) {
                const std::size_t bucket = bucketOf(cell);
                cost += 1 + starts_[bucket + 1] - starts_[bucket];
                for (std::uint32_t at = starts_[bucket]; at < starts_[bucket + 1]; ++at) {
                    const Entry& entry = entries_[at];
                    // Cells of the box may share a bucket; each finds its own points.
                    if (box.contains(entry.point) && cellOf(entry.point) == cell) visit(entry.number);
                }
            }
        }
    }
    return cost;
}
