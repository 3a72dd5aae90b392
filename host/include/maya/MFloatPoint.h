#pragma once

#include <maya/MFloatVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of isEquivalent.
#define MFloatPoint_kTol 1.0e-5f

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A position in single precision in homogeneous coordinates; the origin by default.
///
/// Adding and scaling do not change w. Differences, distances and comparisons by tolerance use the Cartesian
/// values (x, y and z divided by w).
class OPENMAYA_EXPORT MFloatPoint {
  public:
    MFloatPoint() = default;
    MFloatPoint(const MPoint& src);
    MFloatPoint(const MFloatVector& src) : x(src.x), y(src.y), z(src.z) {}
    MFloatPoint(const double d[4])
        : x(static_cast<float>(d[0])),
          y(static_cast<float>(d[1])),
          z(static_cast<float>(d[2])),
          w(static_cast<float>(d[3])) {}
    MFloatPoint(const float f[4]) : x(f[0]), y(f[1]), z(f[2]), w(f[3]) {}
    MFloatPoint(float xx, float yy, float zz = 0.0f, float ww = 1.0f) : x(xx), y(yy), z(zz), w(ww) {}

    MFloatPoint operator+(const MFloatVector& other) const {
        return MFloatPoint(x + other.x, y + other.y, z + other.z, w);
    }
    MFloatPoint operator-(const MFloatVector& other) const {
        return MFloatPoint(x - other.x, y - other.y, z - other.z, w);
    }
    MFloatVector operator-(const MFloatPoint& other) const;
    MFloatPoint operator*(const float scale) const { return MFloatPoint(x * scale, y * scale, z * scale, w); }
    MFloatPoint operator/(const float scale) const { return MFloatPoint(x / scale, y / scale, z / scale, w); }
    MFloatPoint& operator+=(const MFloatVector& vector) { return *this = *this + vector; }
    MFloatPoint& operator-=(const MFloatVector& vector) { return *this = *this - vector; }

    /// Row vector times matrix.
    MFloatPoint operator*(const MFloatMatrix& matrix) const;
    MFloatPoint& operator*=(const MFloatMatrix& matrix);

    bool operator==(const MFloatPoint& other) const {
        return x == other.x && y == other.y && z == other.z && w == other.w;
    }
    bool operator!=(const MFloatPoint& other) const { return !(*this == other); }

    float operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    float operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    float& operator()(unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    float& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    MStatus get(double d[4]) const;
    MStatus get(float f[4]) const;

    /// (x, y, z, w) becomes (x/w, y/w, z/w, 1). If w is 0, this and rationalize change nothing.
    MFloatPoint& cartesianize();
    /// Becomes (x/w, y/w, z/w, w).
    MFloatPoint& rationalize();
    /// Becomes (x*w, y*w, z*w, w).
    MFloatPoint& homogenize();

    float distanceTo(const MFloatPoint& other) const;
    /// Whether the distance between the two is at most the tolerance.
    bool isEquivalent(const MFloatPoint& other, float tolerance = MFloatPoint_kTol) const;

    static const MFloatPoint origin;

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;
};

inline MFloatPoint operator*(float scale, const MFloatPoint& point) {
    return point * scale;
}
OPENMAYA_EXPORT MFloatPoint operator*(const MFloatMatrix& matrix, const MFloatPoint& point);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatPoint& point);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
