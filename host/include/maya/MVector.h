#pragma once

#include <maya/MStatus.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of the comparisons.
#define MVector_kTol 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A direction: matrices rotate and scale it, but do not move it.
class OPENMAYA_EXPORT MVector {
  public:
    enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };

    MVector() = default;
    MVector(const MFloatVector& src);
    MVector(const MPoint& src);
    MVector(const double d[3]) : x(d[0]), y(d[1]), z(d[2]) {}
    MVector(const float f[3]) : x(f[0]), y(f[1]), z(f[2]) {}
    MVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}

    MVector operator+(const MVector& other) const { return MVector(x + other.x, y + other.y, z + other.z); }
    MVector operator-(const MVector& other) const { return MVector(x - other.x, y - other.y, z - other.z); }
    MVector operator-() const { return MVector(-x, -y, -z); }
    MVector operator*(double scale) const { return MVector(x * scale, y * scale, z * scale); }
    MVector operator/(double scale) const { return MVector(x / scale, y / scale, z / scale); }
    MVector& operator+=(const MVector& other) { return *this = *this + other; }
    MVector& operator-=(const MVector& other) { return *this = *this - other; }
    MVector& operator*=(double scale) { return *this = *this * scale; }
    MVector& operator/=(double scale) { return *this = *this / scale; }

    /// Dot product, cross product.
    double operator*(const MVector& other) const { return x * other.x + y * other.y + z * other.z; }
    MVector operator^(const MVector& other) const {
        return MVector(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
    }

    /// Applies the upper 3x3 of the matrix to this row vector.
    MVector operator*(const MMatrix& matrix) const;
    MVector& operator*=(const MMatrix& matrix);

    bool operator==(const MVector& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const MVector& other) const { return !(*this == other); }

    double operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator()(unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    MStatus get(double d[3]) const;

    double length() const;
    /// Unit vector. The zero vector stays zero.
    MVector normal() const;
    MStatus normalize();
    /// Angle between the two in radians, from 0 to pi; 0 if one of them has no length.
    double angle(const MVector& other) const;
    /// Whether the distance between the two ends is at most the tolerance.
    bool isEquivalent(const MVector& other, double tolerance = MVector_kTol) const;
    /// Whether the directions are the same or opposite. `tolerance` applies to the sine of the angle between
    /// them.
    bool isParallel(const MVector& other, double tolerance = MVector_kTol) const;
    /// Transformed by the inverse transpose of the upper 3x3. The length changes.
    MVector transformAsNormal(const MMatrix& matrix) const;

    MVector rotateBy(double qx, double qy, double qz, double qw) const;
    MVector rotateBy(const double rotXYZ[3], MTransformationMatrix::RotationOrder order) const;
    MVector rotateBy(MVector::Axis axis, const double angle) const;
    MVector rotateBy(const MQuaternion& rotation) const;
    MVector rotateBy(const MEulerRotation& rotation) const;
    /// The shortest rotation from this direction to the other one.
    MQuaternion rotateTo(const MVector& other) const;

    static const MVector zero;
    static const MVector one;
    static const MVector xAxis;
    static const MVector yAxis;
    static const MVector zAxis;
    static const MVector xNegAxis;
    static const MVector yNegAxis;
    static const MVector zNegAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline MVector operator*(double scale, const MVector& vector) {
    return vector * scale;
}
OPENMAYA_EXPORT MVector operator*(const MMatrix& matrix, const MVector& vector);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MVector& vector);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
