#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "symmetry/plainPoints.h"

/// Points in the cells of a regular grid, to find those in a box. No host types.
///
/// Cells are kept by a hash of their place, so memory depends on the number of points only: at most 25 bytes
/// a point. Cells in which points crowd are not searched, so that a visit has a limit. They are noted
/// instead.
class PointGrid {
  public:
    /// Linear cost.
    /// @param pointAt  gives the point of a number below count; finite, and the same each time
    /// @param cell     edge length of a cell. Cells are longer if the points are so far from the origin that
    ///                 such cells could not be counted
    template <class PointAt>
    PointGrid(std::size_t count, const PointAt& pointAt, double cell);

    /// Calls visit(number) for each point in a box, once, in no particular order.
    /// @param box  its sides are no longer than a cell
    template <class Visit>
    void visit(const PlainBox& box, const Visit& visit);

    /// Calls visit(number) for each point that visits may have missed, because it is in a crowded cell.
    template <class Visit>
    void visitMissed(const Visit& visit) const;

  private:
    /// Points in a cell, above which it is crowded.
    static constexpr std::uint32_t kCrowd = 512;

    using Cell = std::array<std::int64_t, 3>;
    struct Entry {
        std::array<float, 3> point;
        int number;
    };

    void setCell(double cell);
    std::int64_t cellAlong(double coordinate) const;
    template <class Point>
    Cell cellOf(const Point& point) const {
        return {cellAlong(point[0]), cellAlong(point[1]), cellAlong(point[2])};
    }
    std::size_t bucketOf(const Cell& cell) const;

    PlainBox bounds_;
    double cellsPerUnit_ = 1.0;
    unsigned int shift_ = 63;            // of a hash, to get a bucket
    std::vector<std::uint32_t> starts_;  // per bucket: its first entry; one more for the end
    std::vector<Entry> entries_;
    std::vector<bool> isMissed_;  // per bucket: it is crowded, and a visit came to it
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

template <class PointAt>
PointGrid::PointGrid(std::size_t count, const PointAt& pointAt, double cell) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    PlainBox bounds{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    for (std::size_t number = 0; number < count; ++number)
        bounds.expand(pointAt(number));
    bounds_ = bounds;
    std::size_t bucketCount = 2;
    for (; bucketCount < count; bucketCount *= 2)
        --shift_;
    starts_.assign(bucketCount + 1, 0);
    isMissed_.assign(bucketCount, false);
    if (count == 0) return;
    setCell(cell);
    for (std::size_t number = 0; number < count; ++number)
        ++starts_[bucketOf(cellOf(pointAt(number)))];
    // The ends of the buckets, from which they are filled backward.
    std::uint32_t end = 0;
    for (std::uint32_t& start : starts_) {
        end += start;
        start = end;
    }
    entries_.resize(count);
    for (std::size_t number = count; number-- > 0;) {
        const PlainPoint point = pointAt(number);
        entries_[--starts_[bucketOf(cellOf(point))]] = {{point[0], point[1], point[2]},
                                                        static_cast<int>(number)};
    }
}

template <class Visit>
void PointGrid::visit(const PlainBox& box, const Visit& visit) {
    Cell first;
    Cell last;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Inside the bounds, so that the cells can be counted.
        const double minimum = std::max(box.minimum[axis], bounds_.minimum[axis]);
        const double maximum = std::min(box.maximum[axis], bounds_.maximum[axis]);
        if (!(minimum <= maximum)) return;
        first[axis] = cellAlong(minimum);
        last[axis] = cellAlong(maximum);
    }
    Cell cell;
    for (cell[0] = first[0]; cell[0] <= last[0]; ++cell[0]) {
        for (cell[1] = first[1]; cell[1] <= last[1]; ++cell[1]) {
            for (cell[2] = first[2]; cell[2] <= last[2]; ++cell[2]) {
                const std::size_t bucket = bucketOf(cell);
                const std::uint32_t end = starts_[bucket + 1];
                if (end - starts_[bucket] > kCrowd) {
                    isMissed_[bucket] = true;
                    continue;
                }
                for (std::uint32_t at = starts_[bucket]; at < end; ++at) {
                    const Entry& entry = entries_[at];
                    // Cells of the box may share a bucket; each finds its own points.
                    if (box.contains(entry.point) && cellOf(entry.point) == cell) visit(entry.number);
                }
            }
        }
    }
}

template <class Visit>
void PointGrid::visitMissed(const Visit& visit) const {
    for (std::size_t bucket = 0; bucket < isMissed_.size(); ++bucket) {
        if (!isMissed_[bucket]) continue;
        for (std::uint32_t at = starts_[bucket]; at < starts_[bucket + 1]; ++at)
            visit(entries_[at].number);
    }
}
