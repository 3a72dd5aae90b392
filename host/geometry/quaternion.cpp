#include "geometry/quaternion.h"

#include <algorithm>
#include <array>

namespace host::geometry {

Quaternion operator*(const Quaternion& a, const Quaternion& b) {
    const Vec3 v = a.axisPart() * b.w + b.axisPart() * a.w + cross(a.axisPart(), b.axisPart());
    return {v.x, v.y, v.z, a.w * b.w - dot(a.axisPart(), b.axisPart())};
}

Quaternion operator*(const Quaternion& q, double factor) {
    return {q.x * factor, q.y * factor, q.z * factor, q.w * factor};
}

Quaternion operator+(const Quaternion& a, const Quaternion& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w};
}

double dot(const Quaternion& a, const Quaternion& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

Quaternion normalized(const Quaternion& q) {
    const double size = std::sqrt(dot(q, q));
    return size > 1e-12 ? q * (1.0 / size) : Quaternion();
}

Quaternion quaternionOf(const Matrix4& matrix) {
    // Each of the four parts follows from the diagonal. Dividing by the largest loses no digits.
    const auto& m = matrix.m;
    const double trace = m[0][0] + m[1][1] + m[2][2];
    const std::array<double, 4> squares{m[0][0], m[1][1], m[2][2], trace};
    const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
    Quaternion q;
    switch (largest) {
        case 0:
            q = {1.0 + 2.0 * m[0][0] - trace, m[0][1] + m[1][0], m[0][2] + m[2][0], m[1][2] - m[2][1]};
            break;
        case 1:
            q = {m[0][1] + m[1][0], 1.0 + 2.0 * m[1][1] - trace, m[1][2] + m[2][1], m[2][0] - m[0][2]};
            break;
        case 2:
            q = {m[0][2] + m[2][0], m[1][2] + m[2][1], 1.0 + 2.0 * m[2][2] - trace, m[0][1] - m[1][0]};
            break;
        default:
            q = {m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0], 1.0 + trace};
    }
    return normalized(q);
}

Matrix4 toMatrix(const Quaternion& unit) {
    const auto [x, y, z, w] = unit;
    Matrix4 result;
    result.m[0] = {1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y), 0};
    result.m[1] = {2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x), 0};
    result.m[2] = {2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y), 0};
    return result;
}

Quaternion interpolated(const Quaternion& a, const Quaternion& b, double share, bool takesLongerArc) {
    double cosine = dot(a, b);
    const bool turnsAround = (cosine < 0.0) != takesLongerArc;
    const Quaternion to = turnsAround ? b * -1.0 : b;
    if (turnsAround) cosine = -cosine;
    const double angle = std::acos(std::clamp(cosine, -1.0, 1.0));
    const double sine = std::sin(angle);
    // Almost the same rotation: there is no arc to follow.
    if (sine < 1e-9) return normalized(a * (1.0 - share) + b * (dot(a, b) < 0.0 ? -share : share));
    return normalized(a * (std::sin((1.0 - share) * angle) / sine) + to * (std::sin(share * angle) / sine));
}

Quaternion blendRotations(const std::vector<WeightedRotation>& rotations, RotationBlend method,
                          const Quaternion& reference) {
    const Quaternion& first = rotations.front().rotation;
    if (method == RotationBlend::NoFlip || method == RotationBlend::Average) {
        const Quaternion& side = method == RotationBlend::NoFlip ? reference : first;
        Quaternion sum{0.0, 0.0, 0.0, 0.0};
        for (const auto& [rotation, weight] : rotations)
            sum = sum + rotation * (dot(rotation, side) < 0.0 ? -weight : weight);
        return dot(sum, sum) > 1e-24 ? normalized(sum) : first;
    }
    Quaternion result = first;
    double total = rotations.front().weight;
    for (std::size_t k = 1; k < rotations.size(); ++k) {
        total += rotations[k].weight;
        result = interpolated(result, rotations[k].rotation, rotations[k].weight / total,
                              method == RotationBlend::Longest);
    }
    return result;
}

DualQuaternion DualQuaternion::rigid(const Quaternion& rotation, const Vec3& translation) {
    const Quaternion offset{translation.x, translation.y, translation.z, 0.0};
    return {rotation, offset * rotation * 0.5};
}

Vec3 transformPoint(const Vec3& p, const DualQuaternion& motion) {
    const double square = dot(motion.real, motion.real);
    const Vec3 axis = motion.real.axisPart();
    const double w = motion.real.w;
    const Vec3 turned = cross(axis, cross(axis, p) + w * p);
    const Vec3 moved =
        w * motion.dual.axisPart() - motion.dual.w * axis + cross(axis, motion.dual.axisPart());
    return p + (2.0 / square) * (turned + moved);
}

}  // namespace host::geometry
