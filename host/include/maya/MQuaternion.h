#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// Default tolerance of isEquivalent.
#define kQuaternionEpsilon 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A rotation as (x, y, z) = axis * sin(angle / 2), w = cos(angle / 2); the identity by default.
///
/// p * q rotates by p first, as matrices do.
class OPENMAYA_EXPORT MQuaternion {
  public:
    MQuaternion() = default;
    MQuaternion(double xx, double yy, double zz, double ww) : x(xx), y(yy), z(zz), w(ww) {}
    MQuaternion(const double qv[4]) : x(qv[0]), y(qv[1]), z(qv[2]), w(qv[3]) {}
    /// The shortest rotation from `a` to `b`, or the fraction `factor` of it.
    MQuaternion(const MVector& a, const MVector& b);
    MQuaternion(const MVector& a, const MVector& b, double factor);
    MQuaternion(double angle, const MVector& axis);

    MQuaternion& operator=(const MMatrix& matrix);
    MQuaternion& operator=(const MEulerRotation& rotation);
    MMatrix asMatrix() const;
    MEulerRotation asEulerRotation() const;
    MStatus get(double dest[4]) const;

    /// Axis of unit length and angle in radians, from 0 to 2 pi. For no rotation, false, with the x axis and
    /// angle 0.
    bool getAxisAngle(MVector& axis, double& theta) const;
    MQuaternion& setAxisAngle(const MVector& axis, double theta);
    MQuaternion& setToXAxis(double theta);
    MQuaternion& setToYAxis(double theta);
    MQuaternion& setToZAxis(double theta);

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    MQuaternion operator+(const MQuaternion& other) const;
    MQuaternion operator-(const MQuaternion& other) const;
    MQuaternion operator-() const;
    MQuaternion operator*(const MQuaternion& rhs) const;
    MQuaternion& operator*=(const MQuaternion& rhs);
    bool operator==(const MQuaternion& other) const;
    bool operator!=(const MQuaternion& other) const;
    bool isEquivalent(const MQuaternion& other, double tolerance = kQuaternionEpsilon) const;

    MQuaternion& scaleIt(double scale);
    MQuaternion& negateIt();
    MQuaternion normal() const;
    MQuaternion& normalizeIt();
    MQuaternion conjugate() const;
    MQuaternion& conjugateIt();
    MQuaternion inverse() const;
    MQuaternion& invertIt();

    static const MQuaternion identity;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

OPENMAYA_EXPORT MQuaternion operator*(double scale, const MQuaternion& rhs);
/// On the great arc from `p` (t = 0) to `q` (t = 1), by the shorter way.
OPENMAYA_EXPORT MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MQuaternion& rotation);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
