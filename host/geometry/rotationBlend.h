#pragma once

#include "geometry/math.h"

namespace host::geometry {

/// Angles of the rotation at `weight` (0 .. 1) on the shortest way, at constant speed, from one rotation to
/// another one; angles in radians, all in `order`.
///
/// Of the many angles of that rotation, the ones closest to the linear blend of the given ones are taken. So
/// the ends keep their full turns.
Vec3 blendAngles(const Vec3& from, const Vec3& to, RotateOrder order, double weight);

}  // namespace host::geometry
