#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of the comparisons.
#define MFloatVector_kTol 1.0e-5f

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A direction in single precision: matrices rotate and scale it, but do not move it.
class OPENMAYA_EXPORT MFloatVector {
  public:
    MFloatVector() = default;
    MFloatVector(const MVector& src);
    MFloatVector(const MFloatPoint& src);
    MFloatVector(const MPoint& src);
    MFloatVector(const double d[3])
        : x(static_cast<float>(d[0])), y(static_cast<float>(d[1])), z(static_cast<float>(d[2])) {}
    MFloatVector(const float f[3]) : x(f[0]), y(f[1]), z(f[2]) {}
    MFloatVector(float xx, float yy, float zz = 0.0f) : x(xx), y(yy), z(zz) {}

    MFloatVector operator+(const MFloatVector& other) const {
        return MFloatVector(x + other.x, y + other.y, z + other.z);
    }
    MFloatVector operator-(const MFloatVector& other) const {
        return MFloatVector(x - other.x, y - other.y, z - other.z);
    }
    MFloatVector operator-() const { return MFloatVector(-x, -y, -z); }
    MFloatVector operator*(float scale) const { return MFloatVector(x * scale, y * scale, z * scale); }
    MFloatVector operator/(float scale) const { return MFloatVector(x / scale, y / scale, z / scale); }
    MFloatVector& operator+=(const MFloatVector& other) { return *this = *this + other; }
    MFloatVector& operator-=(const MFloatVector& other) { return *this = *this - other; }
    MFloatVector& operator*=(float scale) { return *this = *this * scale; }
    MFloatVector& operator/=(float scale) { return *this = *this / scale; }

    /// Dot product, cross product.
    float operator*(const MFloatVector& other) const { return x * other.x + y * other.y + z * other.z; }
    MFloatVector operator^(const MFloatVector& other) const {
        return MFloatVector(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
    }

    /// Applies the upper 3x3 of the matrix to this row vector.
    MFloatVector operator*(const MFloatMatrix& matrix) const;
    MFloatVector& operator*=(const MFloatMatrix& matrix);

    bool operator==(const MFloatVector& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const MFloatVector& other) const { return !(*this == other); }

    float operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    float operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    float& operator()(unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    float& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    MStatus get(float f[3]) const;

    float length() const;
    /// Unit vector. The zero vector stays zero.
    MFloatVector normal() const;
    MStatus normalize();
    /// Angle between the two in radians, from 0 to pi; 0 if one of them has no length.
    float angle(const MFloatVector& other) const;
    /// Whether the distance between the two ends is at most the tolerance.
    bool isEquivalent(const MFloatVector& other, float tolerance = MFloatVector_kTol) const;
    /// Whether the directions are the same or opposite. `tolerance` applies to the sine of the angle between
    /// them.
    bool isParallel(const MFloatVector& other, float tolerance = MFloatVector_kTol) const;

    static const MFloatVector zero;
    static const MFloatVector one;
    static const MFloatVector xAxis;
    static const MFloatVector yAxis;
    static const MFloatVector zAxis;
    static const MFloatVector xNegAxis;
    static const MFloatVector yNegAxis;
    static const MFloatVector zNegAxis;

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};

inline MFloatVector operator*(float scale, const MFloatVector& vector) {
    return vector * scale;
}
OPENMAYA_EXPORT MFloatVector operator*(const MFloatMatrix& matrix, const MFloatVector& vector);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatVector& vector);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
