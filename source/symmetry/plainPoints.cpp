#include "symmetry/plainPoints.h"

#include <limits>

float roundedUp(double value) {
    using Limits = std::numeric_limits<float>;
    const double fitting = std::min<double>(value, Limits::max());
    return std::nextafter(static_cast<float>(fitting), Limits::infinity());
}

/// Frank and Wolfe's search for the point of a convex hull that is closest to the origin. `nearest` is a
/// point of the hull. The plane through the corner that is foremost against it bounds the hull.
bool isFartherThan(double distance, const PlainPoint& point, const PlainMesh& mesh, IndexRange corners) {
    constexpr int kSteps = 32;
    const auto placeOf = [&](int corner) { return difference(mesh.point(corner), point); };
    PlainVector nearest{};
    for (const int corner : corners) {
        const PlainVector place = placeOf(corner);
        for (std::size_t axis = 0; axis < 3; ++axis)
            nearest[axis] += place[axis] / corners.size();
    }
    for (int step = 0; step < kSteps; ++step) {
        PlainVector foremost = nearest;
        double least = std::numeric_limits<double>::infinity();
        for (const int corner : corners) {
            const PlainVector place = placeOf(corner);
            const double along = dot(place, nearest);
            if (along >= least) continue;
            least = along;
            foremost = place;
        }
        if (least > distance * std::sqrt(dot(nearest, nearest))) return true;
        const PlainVector back{nearest[0] - foremost[0], nearest[1] - foremost[1], nearest[2] - foremost[2]};
        const double squared = dot(back, back);
        if (!(squared > 0.0)) return false;
        const double part = std::min(1.0, std::max(0.0, dot(nearest, back) / squared));
        for (std::size_t axis = 0; axis < 3; ++axis)
            nearest[axis] -= part * back[axis];
    }
    return false;
}
