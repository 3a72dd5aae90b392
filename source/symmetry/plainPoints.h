#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "symmetry/meshTopology.h"

/// Points and boxes as plain numbers. No host types.

/// A point as the host's arrays hold it: x, y, z, and a fourth number that does not count.
using PlainPoint = std::array<float, 4>;
using PlainVector = std::array<double, 3>;

/// @param point  three coordinates, or more that do not count
template <class Point>
bool isFinite(const Point& point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

inline PlainVector difference(const PlainPoint& a, const PlainPoint& b) {
    return {double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]};
}

inline double dot(const PlainVector& a, const PlainVector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// A box along the axes. Its sides belong to it.
struct PlainBox {
    PlainVector minimum{};
    PlainVector maximum{};

    static PlainBox at(const PlainPoint& point) {
        return {{point[0], point[1], point[2]}, {point[0], point[1], point[2]}};
    }
    /// Ignores coordinates that are NaN.
    template <class Point>
    void expand(const Point& point) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            minimum[axis] = std::min<double>(minimum[axis], point[axis]);
            maximum[axis] = std::max<double>(maximum[axis], point[axis]);
        }
    }
    /// The box and what is no farther from it on any axis.
    PlainBox grown(double distance) const {
        PlainBox box(*this);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.minimum[axis] -= distance;
            box.maximum[axis] += distance;
        }
        return box;
    }
    std::size_t longestAxis() const {
        std::size_t longest = 0;
        for (const std::size_t axis : {1, 2}) {
            if (side(axis) > side(longest)) longest = axis;
        }
        return longest;
    }
    double side(std::size_t axis) const { return maximum[axis] - minimum[axis]; }
    /// The largest coordinate, without its sign.
    double reach() const {
        double largest = 0.0;
        for (std::size_t axis = 0; axis < 3; ++axis)
            largest = std::max({largest, std::abs(minimum[axis]), std::abs(maximum[axis])});
        return largest;
    }
    /// @param point  three coordinates, or more that do not count
    template <class Point>
    bool contains(const Point& point) const {
        // Not with &&: whether a point is inside cannot be foreseen, so branches would cost more.
        int isInside = 1;
        for (std::size_t axis = 0; axis < 3; ++axis)
            isInside &= int{point[axis] >= minimum[axis]} & int{point[axis] <= maximum[axis]};
        return isInside != 0;
    }
};

/// A mesh as plain arrays. Refers to what somebody else owns.
struct PlainMesh {
    const std::vector<PlainPoint>& points;  // per vertex
    const IndexLists& faces;                // per face: its corners

    bool has(int vertex) const { return vertex >= 0 && static_cast<std::size_t>(vertex) < points.size(); }
    const PlainPoint& point(int vertex) const { return points[static_cast<std::size_t>(vertex)]; }
    bool areFinite(IndexRange corners) const {
        return std::all_of(corners.begin(), corners.end(),
                           [this](int corner) { return isFinite(point(corner)); });
    }
    /// @param corners  one at least
    PlainBox boxOf(IndexRange corners) const {
        PlainBox box = PlainBox::at(point(corners[0]));
        for (const int corner : corners)
            box.expand(point(corner));
        return box;
    }
};

/// A number in single precision that is larger. Infinity for what does not fit.
float roundedUp(double value);

/// Whether a point is farther than a distance from all that lies between some corners of a mesh, in whatever
/// triangles it is divided. False also if this is not found in a few steps.
/// @param corners  finite, one at least
bool isFartherThan(double distance, const PlainPoint& point, const PlainMesh& mesh, IndexRange corners);
