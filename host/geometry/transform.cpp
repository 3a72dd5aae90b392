// Transformation matrices: composed from the parts of a transform node, decomposed into them, and rotate
// orders.

#include <array>
#include <cmath>

#include "geometry/math.h"

namespace host::geometry {

namespace {

/// The axes of an order, first to last. An odd order is an even one seen in a mirror, where every angle
/// changes its sign.
struct OrderAxes {
    int first;
    int second;
    int third;
    bool odd;
};

OrderAxes axesOf(RotateOrder order) {
    switch (order) {
        case RotateOrder::Xyz:
            return {0, 1, 2, false};
        case RotateOrder::Yzx:
            return {1, 2, 0, false};
        case RotateOrder::Zxy:
            return {2, 0, 1, false};
        case RotateOrder::Xzy:
            return {0, 2, 1, true};
        case RotateOrder::Yxz:
            return {1, 0, 2, true};
        case RotateOrder::Zyx:
            return {2, 1, 0, true};
    }
    return {0, 1, 2, false};
}

Matrix4 axisRotation(int axis, double angle) {
    const int next = (axis + 1) % 3;
    const int last = (axis + 2) % 3;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    Matrix4 result;
    result.m[next][next] = c;
    result.m[next][last] = s;
    result.m[last][next] = -s;
    result.m[last][last] = c;
    return result;
}

void setRow(Matrix4& matrix, int row, const Vec3& v) {
    for (int column = 0; column < 3; ++column)
        matrix.m[row][column] = v[column];
}

/// Gives a direction to rows that have none (length zero in `scale`), so that all three form a rotation.
void completeRotation(std::array<Vec3, 3>& rows, const Vec3& scale) {
    const bool has[3] = {scale.x != 0, scale.y != 0, scale.z != 0};
    const int count = has[0] + has[1] + has[2];
    if (count == 0) rows = {Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}};
    if (count == 0 || count == 3) return;
    int base = has[0] ? 0 : (has[1] ? 1 : 2);
    if (count == 1) {
        const int next = (base + 1) % 3;
        rows[next] = anyPerpendicular(rows[base]);
        rows[(base + 2) % 3] = cross(rows[base], rows[next]);
        return;
    }
    const int missing = !has[0] ? 0 : (!has[1] ? 1 : 2);
    rows[missing] = cross(rows[(missing + 1) % 3], rows[(missing + 2) % 3]);
}

}  // namespace

Matrix4 rotationMatrix(const Vec3& angles, RotateOrder order) {
    const OrderAxes axes = axesOf(order);
    return axisRotation(axes.first, angles[axes.first]) * axisRotation(axes.second, angles[axes.second]) *
           axisRotation(axes.third, angles[axes.third]);
}

Vec3 eulerAngles(const Matrix4& matrix, RotateOrder order) {
    const auto [i, j, k, odd] = axesOf(order);
    const auto& m = matrix.m;
    const double cosine = std::hypot(m[i][i], m[i][j]);
    Vec3 result;
    result[j] = std::atan2(-m[i][k], cosine);
    if (cosine > 1e-12) {
        result[i] = std::atan2(m[j][k], m[k][k]);
        result[k] = std::atan2(m[i][j], m[i][i]);
    } else {
        result[i] = std::atan2(-m[k][j], m[j][j]);
    }
    return odd ? -result : result;
}

Vec3 alternateAngles(const Vec3& angles, RotateOrder order) {
    const OrderAxes axes = axesOf(order);
    const auto halfTurn = [](double angle) { return angle > 0.0 ? angle - kPi : angle + kPi; };
    Vec3 result;
    result[axes.first] = halfTurn(angles[axes.first]);
    result[axes.second] = (angles[axes.second] > 0.0 ? kPi : -kPi) - angles[axes.second];
    result[axes.third] = halfTurn(angles[axes.third]);
    return result;
}

Vec3 reorderAngles(const Vec3& angles, RotateOrder from, RotateOrder to) {
    return from == to ? angles : eulerAngles(rotationMatrix(angles, from), to);
}

Matrix4 composeTransform(const TransformParts& parts) {
    const Matrix4 scaled = Matrix4::translation(-parts.scalePivot) * Matrix4::scaling(parts.scale) *
                           Matrix4::shearing(parts.shear) *
                           Matrix4::translation(parts.scalePivot + parts.scalePivotTranslate);
    const Matrix4 rotated = Matrix4::translation(-parts.rotatePivot) * rotationMatrix(parts.rotateAxis) *
                            rotationMatrix(parts.rotate, parts.rotateOrder) *
                            rotationMatrix(parts.jointOrient) * Matrix4::scaling(parts.inverseParentScale);
    return scaled * rotated *
           Matrix4::translation(parts.rotatePivot + parts.rotatePivotTranslate + parts.translate);
}

TransformParts decomposeTransform(const Matrix4& matrix, RotateOrder order) {
    TransformParts parts;
    parts.rotateOrder = order;
    parts.translate = matrix.row(3);

    // Gram-Schmidt on the rows of scale * shear * rotation. A remainder that is only a rounding error counts
    // as zero.
    std::array<Vec3, 3> rows{matrix.row(0), matrix.row(1), matrix.row(2)};
    for (int i = 0; i < 3; ++i) {
        const double whole = length(rows[i]);
        double along[2] = {0.0, 0.0};
        for (int j = 0; j < i; ++j) {
            if (parts.scale[j] == 0.0) continue;
            along[j] = dot(rows[i], rows[j]);
            rows[i] -= rows[j] * along[j];
        }
        const double rest = length(rows[i]);
        parts.scale[i] = rest > whole * 1e-14 ? rest : 0.0;
        rows[i] = parts.scale[i] != 0.0 ? normalized(rows[i]) : Vec3{};
        if (parts.scale[i] == 0.0) continue;
        if (i == 1) parts.shear.x = along[0] / rest;
        if (i == 2) parts.shear.y = along[0] / rest;
        if (i == 2) parts.shear.z = along[1] / rest;
    }
    if (dot(rows[0], cross(rows[1], rows[2])) < 0.0) {
        for (Vec3& row : rows)
            row = -row;
        parts.scale = -parts.scale;
    }
    completeRotation(rows, parts.scale);

    Matrix4 rotation;
    for (int i = 0; i < 3; ++i)
        setRow(rotation, i, rows[i]);
    parts.rotate = eulerAngles(rotation, order);
    return parts;
}

}  // namespace host::geometry
