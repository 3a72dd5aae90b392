#include "geometry/rotationBlend.h"

#include <cmath>

#include "geometry/quaternion.h"

namespace host::geometry {

namespace {

/// The same angles with full turns added, as close to the wanted ones as turns can bring them.
Vec3 withTurns(Vec3 angles, const Vec3& wanted) {
    for (int axis = 0; axis < 3; ++axis)
        angles[axis] += 2.0 * kPi * std::round((wanted[axis] - angles[axis]) / (2.0 * kPi));
    return angles;
}

}  // namespace

Vec3 blendAngles(const Vec3& from, const Vec3& to, RotateOrder order, double weight) {
    const Vec3 straight = from * (1.0 - weight) + to * weight;
    const Quaternion blended = interpolated(quaternionOf(rotationMatrix(from, order)),
                                            quaternionOf(rotationMatrix(to, order)), weight);
    const Vec3 angles = eulerAngles(toMatrix(blended), order);
    const Vec3 one = withTurns(angles, straight);
    const Vec3 other = withTurns(alternateAngles(angles, order), straight);
    return squaredLength(other - straight) < squaredLength(one - straight) ? other : one;
}

}  // namespace host::geometry
