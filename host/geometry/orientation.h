#pragma once

#include "geometry/math.h"

/// Rotations that follow from directions and from other matrices.
namespace host::geometry {

/// The rotation of a matrix without its scale, shear and translation. It is the rotation that
/// decomposeTransform finds.
Matrix4 rotationPart(const Matrix4& matrix);

/// The rotation by the smallest angle that turns one direction into another. The identity if one of them is
/// zero.
Matrix4 smallestRotation(const Vec3& from, const Vec3& to);

/// The rotation that turns `aim` into `direction`, and `up` as near to `upDirection` as this leaves room for.
/// If `up` is parallel to `aim` or `upDirection` to `direction`, or one of them is zero, it is the smallest
/// rotation.
Matrix4 aimRotation(const Vec3& aim, const Vec3& up, const Vec3& direction, const Vec3& upDirection);

}  // namespace host::geometry
