#include "geometry/orientation.h"

#include "geometry/quaternion.h"

namespace host::geometry {

namespace {

/// Two directions whose cross product is shorter than this are parallel.
constexpr double kParallel = 1e-10;

/// Axes as rows: along `first`, and `second` as far as it is perpendicular to it.
/// @return false if the two do not define a plane
bool frame(const Vec3& first, const Vec3& second, Matrix4& rows) {
    const Vec3 x = normalized(first);
    const Vec3 across = cross(x, normalized(second));
    if (!(length(across) > kParallel)) return false;
    const Vec3 z = normalized(across);
    const Vec3 y = cross(z, x);
    for (int column = 0; column < 3; ++column) {
        rows.m[0][column] = x[column];
        rows.m[1][column] = y[column];
        rows.m[2][column] = z[column];
    }
    return true;
}

}  // namespace

Matrix4 rotationPart(const Matrix4& matrix) {
    return rotationMatrix(decomposeTransform(matrix).rotate);
}

Matrix4 smallestRotation(const Vec3& from, const Vec3& to) {
    const Vec3 a = normalized(from);
    const Vec3 b = normalized(to);
    if (a == Vec3() || b == Vec3()) return {};
    const Vec3 axis = cross(a, b);
    const double cosine = dot(a, b);
    if (cosine < 0.0 && length(axis) < kParallel) {
        const Vec3 any = anyPerpendicular(a);
        return toMatrix(Quaternion{any.x, any.y, any.z, 0.0});
    }
    return toMatrix(normalized(Quaternion{axis.x, axis.y, axis.z, 1.0 + cosine}));
}

Matrix4 aimRotation(const Vec3& aim, const Vec3& up, const Vec3& direction, const Vec3& upDirection) {
    Matrix4 own;
    Matrix4 wanted;
    if (!frame(aim, up, own) || !frame(direction, upDirection, wanted))
        return smallestRotation(aim, direction);
    return own.transposed() * wanted;
}

}  // namespace host::geometry
