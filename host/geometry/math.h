#pragma once

#include <array>
#include <cmath>

/// Vectors, matrices and rotations. Everything is double precision; only mesh points are single (mesh.h).
///
/// Row vectors throughout: p' = p * M, the translation is in row 3, and A * B applies A first.
namespace host::geometry {

constexpr double kPi = 3.14159265358979323846;

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    double& operator[](int i) { return i == 0 ? x : (i == 1 ? y : z); }
    double operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }
    Vec3& operator+=(const Vec3& o) { return *this = {x + o.x, y + o.y, z + o.z}; }
    Vec3& operator-=(const Vec3& o) { return *this = {x - o.x, y - o.y, z - o.z}; }
    Vec3& operator*=(double s) { return *this = {x * s, y * s, z * s}; }
};

inline Vec3 operator+(Vec3 a, const Vec3& b) {
    return a += b;
}
inline Vec3 operator-(Vec3 a, const Vec3& b) {
    return a -= b;
}
inline Vec3 operator-(const Vec3& a) {
    return {-a.x, -a.y, -a.z};
}
inline Vec3 operator*(Vec3 a, double s) {
    return a *= s;
}
inline Vec3 operator*(double s, Vec3 a) {
    return a *= s;
}
inline bool operator==(const Vec3& a, const Vec3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
inline bool operator!=(const Vec3& a, const Vec3& b) {
    return !(a == b);
}

inline double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double squaredLength(const Vec3& a) {
    return dot(a, a);
}
inline double length(const Vec3& a) {
    return std::sqrt(dot(a, a));
}
/// Unit vector of `a`. The zero vector stays zero.
Vec3 normalized(const Vec3& a);
/// A unit vector perpendicular to the unit vector `a`.
Vec3 anyPerpendicular(const Vec3& a);
inline bool isFinite(const Vec3& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

struct InverseMatrix;

/// A 4x4 matrix, identity by default; m[row][column].
struct Matrix4 {
    std::array<std::array<double, 4>, 4> m{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    static Matrix4 translation(const Vec3& offset);
    static Matrix4 scaling(const Vec3& factors);
    /// shear.x is y by x, shear.y is z by x, shear.z is z by y ("xy", "xz", "yz").
    static Matrix4 shearing(const Vec3& shear);

    Vec3 row(int i) const;
    Matrix4 transposed() const;
    double determinant() const;
    /// The inverse. If this matrix is singular or not finite, `ok` is false and the result is the identity.
    InverseMatrix inverse() const;
};

struct InverseMatrix {
    Matrix4 matrix;
    bool ok = true;
};

Matrix4 operator*(const Matrix4& a, const Matrix4& b);
bool operator==(const Matrix4& a, const Matrix4& b);
inline bool operator!=(const Matrix4& a, const Matrix4& b) {
    return !(a == b);
}
/// Whether every element differs by at most `tolerance`.
bool isEquivalent(const Matrix4& a, const Matrix4& b, double tolerance = 1e-10);

/// p * M for an affine M: rotation, scale and translation. The last column is ignored.
Vec3 transformPoint(const Vec3& p, const Matrix4& matrix);
/// Like transformPoint, without the translation.
Vec3 transformVector(const Vec3& v, const Matrix4& matrix);

/// Which axis rotates first, second and third. The numbers are those of a transform's rotateOrder attribute.
enum class RotateOrder { Xyz = 0, Yzx, Zxy, Xzy, Yxz, Zyx };

/// Rotation matrix of three angles in radians. `angles.x` is always the angle about x, and so on.
Matrix4 rotationMatrix(const Vec3& angles, RotateOrder order = RotateOrder::Xyz);

/// Angles in radians of the rotation in the upper 3x3 of `matrix`, which must be orthonormal.
///
/// The middle angle is in [-pi/2, pi/2]. At a pole, the angle that is applied last is 0.
Vec3 eulerAngles(const Matrix4& matrix, RotateOrder order);

/// The other set of angles of the same rotation and order: the outer angles differ by half a turn, the middle
/// one is mirrored.
Vec3 alternateAngles(const Vec3& angles, RotateOrder order);

/// Angles of the same rotation in another order; unchanged if the orders are the same.
Vec3 reorderAngles(const Vec3& angles, RotateOrder from, RotateOrder to);

/// What a transform or joint node holds; angles in radians.
struct TransformParts {
    Vec3 translate;
    Vec3 rotate;
    Vec3 scale{1.0, 1.0, 1.0};
    Vec3 shear;
    RotateOrder rotateOrder = RotateOrder::Xyz;
    Vec3 rotateAxis;   ///< xyz order, applied before rotate
    Vec3 jointOrient;  ///< xyz order, applied after rotate
    Vec3 inverseParentScale{1.0, 1.0,
                            1.0};  ///< scale of the parent joint, which segment compensation divides out
    Vec3 scalePivot;
    Vec3 scalePivotTranslate;
    Vec3 rotatePivot;
    Vec3 rotatePivotTranslate;
};

/// Local matrix: scale and shear about the scale pivot; rotate axis, rotation, joint orient and parent scale
/// compensation about the rotate pivot; then the translation.
Matrix4 composeTransform(const TransformParts& parts);

/// Scale, shear, rotation in `order` and translation that compose to `matrix` without pivots.
///
/// A mirrored matrix gives three negative scales. A row of length zero gives scale 0 and no shear. The
/// rotation is then completed to any right-handed one.
TransformParts decomposeTransform(const Matrix4& matrix, RotateOrder order = RotateOrder::Xyz);

/// Axis-aligned box. The empty box has both corners at the origin and contains nothing.
struct BoundingBox {
    Vec3 min;
    Vec3 max;
    bool empty = true;

    void expand(const Vec3& point);
    void expand(const BoundingBox& box);
    /// Points on the faces count as inside.
    bool contains(const Vec3& point) const;
    Vec3 center() const { return min + (max - min) * 0.5; }
    Vec3 size() const { return max - min; }
    /// Box of the eight transformed corners.
    BoundingBox transformed(const Matrix4& matrix) const;
};

}  // namespace host::geometry
