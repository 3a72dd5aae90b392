#include "geometry/math.h"

#include <algorithm>
#include <utility>

namespace host::geometry {

namespace {

void setRow(Matrix4& matrix, int row, const Vec3& v) {
    for (int column = 0; column < 3; ++column)
        matrix.m[row][column] = v[column];
}

}  // namespace

Vec3 normalized(const Vec3& a) {
    // Scaling first, so that squares of very small and very large vectors neither vanish nor overflow.
    const double largest = std::max({std::abs(a.x), std::abs(a.y), std::abs(a.z)});
    if (!(largest > 0.0) || !std::isfinite(largest)) return {};
    const Vec3 scaled{a.x / largest, a.y / largest, a.z / largest};
    return scaled * (1.0 / length(scaled));
}

Vec3 anyPerpendicular(const Vec3& a) {
    const Vec3 other = std::abs(a.x) < 0.6 ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    return normalized(cross(a, other));
}

Matrix4 Matrix4::translation(const Vec3& offset) {
    Matrix4 result;
    setRow(result, 3, offset);
    return result;
}

Matrix4 Matrix4::scaling(const Vec3& factors) {
    Matrix4 result;
    for (int i = 0; i < 3; ++i)
        result.m[i][i] = factors[i];
    return result;
}

Matrix4 Matrix4::shearing(const Vec3& shear) {
    Matrix4 result;
    result.m[1][0] = shear.x;
    result.m[2][0] = shear.y;
    result.m[2][1] = shear.z;
    return result;
}

Vec3 Matrix4::row(int i) const {
    return {m[i][0], m[i][1], m[i][2]};
}

Matrix4 Matrix4::transposed() const {
    Matrix4 result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            result.m[r][c] = m[c][r];
    }
    return result;
}

double Matrix4::determinant() const {
    // By pairs of rows: the 2x2 minors of the upper two rows with those of the lower two.
    const auto minor = [this](int row, int a, int b) {
        return m[row][a] * m[row + 1][b] - m[row][b] * m[row + 1][a];
    };
    return minor(0, 0, 1) * minor(2, 2, 3) - minor(0, 0, 2) * minor(2, 1, 3) +
           minor(0, 0, 3) * minor(2, 1, 2) + minor(0, 1, 2) * minor(2, 0, 3) -
           minor(0, 1, 3) * minor(2, 0, 2) + minor(0, 2, 3) * minor(2, 0, 1);
}

InverseMatrix Matrix4::inverse() const {
    // Gauss-Jordan with row pivoting.
    Matrix4 left = *this;
    Matrix4 right;
    for (int column = 0; column < 4; ++column) {
        int pivot = column;
        for (int r = column + 1; r < 4; ++r) {
            if (std::abs(left.m[r][column]) > std::abs(left.m[pivot][column])) pivot = r;
        }
        const double value = left.m[pivot][column];
        if (value == 0.0 || !std::isfinite(1.0 / value)) return {Matrix4(), false};
        std::swap(left.m[column], left.m[pivot]);
        std::swap(right.m[column], right.m[pivot]);
        for (int c = 0; c < 4; ++c) {
            left.m[column][c] /= value;
            right.m[column][c] /= value;
        }
        for (int r = 0; r < 4; ++r) {
            const double factor = left.m[r][column];
            if (r == column || factor == 0.0) continue;
            for (int c = 0; c < 4; ++c) {
                left.m[r][c] -= factor * left.m[column][c];
                right.m[r][c] -= factor * right.m[column][c];
            }
        }
    }
    for (const auto& r : right.m) {
        for (double value : r) {
            if (!std::isfinite(value)) return {Matrix4(), false};
        }
    }
    return {right, true};
}

Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
    Matrix4 result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            result.m[r][c] =
                a.m[r][0] * b.m[0][c] + a.m[r][1] * b.m[1][c] + a.m[r][2] * b.m[2][c] + a.m[r][3] * b.m[3][c];
        }
    }
    return result;
}

bool operator==(const Matrix4& a, const Matrix4& b) {
    return a.m == b.m;
}

bool isEquivalent(const Matrix4& a, const Matrix4& b, double tolerance) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (!(std::abs(a.m[r][c] - b.m[r][c]) <= tolerance)) return false;
        }
    }
    return true;
}

Vec3 transformVector(const Vec3& v, const Matrix4& matrix) {
    const auto& m = matrix.m;
    return {v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0], v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1],
            v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2]};
}

Vec3 transformPoint(const Vec3& p, const Matrix4& matrix) {
    return transformVector(p, matrix) + matrix.row(3);
}

void BoundingBox::expand(const Vec3& point) {
    if (empty) {
        min = max = point;
        empty = false;
        return;
    }
    for (int i = 0; i < 3; ++i) {
        min[i] = std::min(min[i], point[i]);
        max[i] = std::max(max[i], point[i]);
    }
}

void BoundingBox::expand(const BoundingBox& box) {
    if (box.empty) return;
    expand(box.min);
    expand(box.max);
}

bool BoundingBox::contains(const Vec3& point) const {
    if (empty) return false;
    for (int i = 0; i < 3; ++i) {
        if (!(point[i] >= min[i] && point[i] <= max[i])) return false;
    }
    return true;
}

BoundingBox BoundingBox::transformed(const Matrix4& matrix) const {
    BoundingBox result;
    if (empty) return result;
    for (int corner = 0; corner < 8; ++corner) {
        const Vec3 point{corner & 1 ? max.x : min.x, corner & 2 ? max.y : min.y, corner & 4 ? max.z : min.z};
        result.expand(transformPoint(point, matrix));
    }
    return result;
}

}  // namespace host::geometry
