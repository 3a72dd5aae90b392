#include "targets/correctivePoints.h"

#include <maya/MFloatPoint.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

struct Vector3 {
    double x, y, z;
};

Vector3 difference(const MFloatPoint& to, const MFloatPoint& from) {
    return {static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y,
            static_cast<double>(to.z) - from.z};
}

Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double largest(const Vector3& vector) {
    return std::max({std::fabs(vector.x), std::fabs(vector.y), std::fabs(vector.z)});
}

/// The movement of a deformed vertex when its rest point moves by one unit along each axis.
struct Steps {
    Vector3 x, y, z;
};

/// @param offset  before: from the deformed to the sculpted point; after: the offset of the rest point
/// @return whether the steps can be inverted; if not, the offset does not change
bool invert(const Steps& steps, const MFloatPoint& deformed, Vector3& offset) {
    const Vector3 yz = cross(steps.y, steps.z);
    const Vector3 zx = cross(steps.z, steps.x);
    const Vector3 xy = cross(steps.x, steps.y);
    const double determinant = dot(steps.x, yz);
    // The steps are differences of single-precision points: values as small as the last bits of these points
    // are noise. Comparisons with NaN are false, and so count as singular.
    const double size = largest(difference(deformed, MFloatPoint())) +
                        std::max({largest(steps.x), largest(steps.y), largest(steps.z)});
    const double noise = 4.0 * std::numeric_limits<float>::epsilon() * size;
    const double cofactor = std::max({largest(yz), largest(zx), largest(xy)});
    if (!(std::fabs(determinant) > noise * cofactor)) return false;
    offset = {dot(offset, yz) / determinant, dot(offset, zx) / determinant, dot(offset, xy) / determinant};
    return true;
}

/// An affine matrix from three rows and a translation.
MMatrix affine(const Vector3& row0, const Vector3& row1, const Vector3& row2, const MFloatPoint& place) {
    const double rows[4][4] = {{row0.x, row0.y, row0.z, 0.0},
                               {row1.x, row1.y, row1.z, 0.0},
                               {row2.x, row2.y, row2.z, 0.0},
                               {place.x, place.y, place.z, 1.0}};
    return MMatrix(rows);
}

/// The corrective point, computed with the host's matrices, which give a result for any steps. Both matrices
/// have the rows z, x, y. That order cancels out, except in the host's inverse of a singular matrix.
MFloatPoint pointByHost(const Steps& steps, const MFloatPoint& deformed, const MFloatPoint& sculpt,
                        const MFloatPoint& rest) {
    const MMatrix deformation = affine(steps.z, steps.x, steps.y, deformed);
    const MMatrix place = affine({0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, rest);
    return MFloatPoint(MPoint(sculpt.x, sculpt.y, sculpt.z) * deformation.inverse() * place);
}

bool isFinite(const MFloatPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

}  // namespace

unsigned int solveCorrective(const ProbedDeformation& deformation, const MFloatPointArray& sculpt,
                             MFloatPointArray& points) {
    unsigned int count = std::min({sculpt.length(), points.length(), deformation.deformed.length()});
    for (const MFloatPointArray& moved : deformation.moved)
        count = std::min(count, moved.length());
    unsigned int unsolved = 0;
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        const MFloatPoint& from = deformation.deformed[vertex];
        Vector3 offset = difference(sculpt[vertex], from);
        if (offset.x == 0.0 && offset.y == 0.0 && offset.z == 0.0) continue;
        const Steps steps{difference(deformation.moved[0][vertex], from),
                          difference(deformation.moved[1][vertex], from),
                          difference(deformation.moved[2][vertex], from)};
        MFloatPoint& point = points[vertex];
        const bool isInverted = invert(steps, from, offset);
        const MFloatPoint corrective = isInverted ? MFloatPoint(static_cast<float>(point.x + offset.x),
                                                                static_cast<float>(point.y + offset.y),
                                                                static_cast<float>(point.z + offset.z))
                                                  : pointByHost(steps, from, sculpt[vertex], point);
        const bool isUsable = isFinite(corrective);
        if (isUsable) point = corrective;
        if (!isInverted || !isUsable) ++unsolved;
    }
    return unsolved;
}
