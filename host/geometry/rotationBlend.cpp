#include "geometry/rotationBlend.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {

namespace {

/// A unit quaternion: x, y, z and w.
using Quaternion = std::array<double, 4>;

Quaternion quaternionOf(const Matrix4& rotation) {
    const auto& m = rotation.m;
    // Four times the square of each part. The largest is far from 0: the others are found through it.
    const std::array<double, 4> squares{1.0 + m[0][0] - m[1][1] - m[2][2], 1.0 - m[0][0] + m[1][1] - m[2][2],
                                        1.0 - m[0][0] - m[1][1] + m[2][2], 1.0 + m[0][0] + m[1][1] + m[2][2]};
    const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
    const double twice = std::sqrt(squares[static_cast<std::size_t>(largest)]);
    const double x = m[1][2] - m[2][1];
    const double y = m[2][0] - m[0][2];
    const double z = m[0][1] - m[1][0];
    const double xy = m[0][1] + m[1][0];
    const double xz = m[0][2] + m[2][0];
    const double yz = m[1][2] + m[2][1];
    Quaternion result{};
    if (largest == 0) result = {twice * twice, xy, xz, x};
    if (largest == 1) result = {xy, twice * twice, yz, y};
    if (largest == 2) result = {xz, yz, twice * twice, z};
    if (largest == 3) result = {x, y, z, twice * twice};
    for (double& part : result)
        part /= 2.0 * twice;
    return result;
}

Matrix4 matrixOf(const Quaternion& q) {
    const auto [x, y, z, w] = q;
    Matrix4 result;
    result.m[0] = {1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y), 0};
    result.m[1] = {2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x), 0};
    result.m[2] = {2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y), 0};
    return result;
}

Quaternion between(const Quaternion& from, Quaternion to, double weight) {
    double cosine = 0.0;
    for (std::size_t k = 0; k < from.size(); ++k)
        cosine += from[k] * to[k];
    if (cosine < 0.0) {
        // The same rotation, on the near side.
        for (double& part : to)
            part = -part;
        cosine = -cosine;
    }
    // The sine of a small angle is lost in 1 - cosine: there the straight way is as good.
    constexpr double kNear = 1.0 - 1e-10;
    double a = 1.0 - weight;
    double b = weight;
    if (cosine < kNear) {
        const double angle = std::acos(cosine);
        a = std::sin((1.0 - weight) * angle) / std::sin(angle);
        b = std::sin(weight * angle) / std::sin(angle);
    }
    Quaternion result{};
    for (std::size_t k = 0; k < from.size(); ++k)
        result[k] = a * from[k] + b * to[k];
    return result;
}

/// The same angles with full turns added, as close to the wanted ones as turns can bring them.
Vec3 withTurns(Vec3 angles, const Vec3& wanted) {
    for (int axis = 0; axis < 3; ++axis)
        angles[axis] += 2.0 * kPi * std::round((wanted[axis] - angles[axis]) / (2.0 * kPi));
    return angles;
}

}  // namespace

Vec3 blendAngles(const Vec3& from, const Vec3& to, RotateOrder order, double weight) {
    const Vec3 straight = from * (1.0 - weight) + to * weight;
    const Quaternion blended =
        between(quaternionOf(rotationMatrix(from, order)), quaternionOf(rotationMatrix(to, order)), weight);
    const Vec3 angles = eulerAngles(matrixOf(blended), order);
    const Vec3 one = withTurns(angles, straight);
    const Vec3 other = withTurns(alternateAngles(angles, order), straight);
    return squaredLength(other - straight) < squaredLength(one - straight) ? other : one;
}

}  // namespace host::geometry
