#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <iosfwd>

/// Default tolerance of isEquivalent.
#define MPoint_kTol 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A position in homogeneous coordinates; the origin by default.
///
/// Adding and scaling do not change w. Differences, distances and comparisons by tolerance use the Cartesian
/// values (x, y and z divided by w).
class OPENMAYA_EXPORT MPoint {
  public:
    MPoint() = default;
    MPoint(const MFloatPoint& src);
    MPoint(const MVector& src) : x(src.x), y(src.y), z(src.z) {}
    MPoint(const double d[4]) : x(d[0]), y(d[1]), z(d[2]), w(d[3]) {}
    MPoint(const float f[4]) : x(f[0]), y(f[1]), z(f[2]), w(f[3]) {}
    MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}

    MPoint operator+(const MVector& other) const { return MPoint(x + other.x, y + other.y, z + other.z, w); }
    MPoint operator-(const MVector& other) const { return MPoint(x - other.x, y - other.y, z - other.z, w); }
    MVector operator-(const MPoint& other) const;
    MPoint operator*(const double scale) const { return MPoint(x * scale, y * scale, z * scale, w); }
    MPoint operator/(const double scale) const { return MPoint(x / scale, y / scale, z / scale, w); }
    MPoint& operator+=(const MVector& vector) { return *this = *this + vector; }
    MPoint& operator-=(const MVector& vector) { return *this = *this - vector; }

    /// Row vector times matrix.
    MPoint operator*(const MMatrix& matrix) const;
    MPoint& operator*=(const MMatrix& matrix);

    bool operator==(const MPoint& other) const {
        return x == other.x && y == other.y && z == other.z && w == other.w;
    }
    bool operator!=(const MPoint& other) const { return !(*this == other); }

    double operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator()(unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    MStatus get(double d[4]) const;
    MStatus get(float f[4]) const;

    /// (x, y, z, w) becomes (x/w, y/w, z/w, 1). If w is 0, this and rationalize change nothing.
    MPoint& cartesianize();
    /// Becomes (x/w, y/w, z/w, w).
    MPoint& rationalize();
    /// Becomes (x*w, y*w, z*w, w).
    MPoint& homogenize();

    double distanceTo(const MPoint& other) const;
    /// Whether the distance between the two is at most the tolerance.
    bool isEquivalent(const MPoint& other, double tolerance = MPoint_kTol) const;

    static const MPoint origin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

inline MPoint operator*(double scale, const MPoint& point) {
    return point * scale;
}
OPENMAYA_EXPORT MPoint operator*(const MMatrix& matrix, const MPoint& point);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MPoint& point);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
