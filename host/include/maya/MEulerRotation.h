#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <iosfwd>

/// Default tolerance of the comparisons.
#define kEulerRotationEpsilon 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Three angles in radians and the order in which they are applied.
///
/// Angles are kept as given, also beyond a full turn, unless a member says that it changes them.
class OPENMAYA_EXPORT MEulerRotation {
  public:
    /// Counted from 0, unlike MTransformationMatrix::RotationOrder.
    enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

    MEulerRotation() = default;
    MEulerRotation(double xx, double yy, double zz, RotationOrder ord = kXYZ)
        : x(xx), y(yy), z(zz), order(ord) {}
    MEulerRotation(const MVector& v, RotationOrder ord = kXYZ) : x(v.x), y(v.y), z(v.z), order(ord) {}

    /// These keep the order of the rotation.
    MEulerRotation& operator=(const MMatrix& matrix);
    MEulerRotation& operator=(const MQuaternion& quaternion);
    MEulerRotation& setValue(const MVector& v, RotationOrder ord = kXYZ);
    MEulerRotation& setValue(double xx, double yy, double zz, RotationOrder ord = kXYZ);

    MQuaternion asQuaternion() const;
    MMatrix asMatrix() const;
    MVector asVector() const;

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }

    /// Sums and differences of angles. The other rotation is first converted to this one's order.
    MEulerRotation operator+(const MEulerRotation& other) const;
    MEulerRotation operator-(const MEulerRotation& other) const;
    MEulerRotation operator-() const;
    MEulerRotation& operator+=(const MEulerRotation& other);
    MEulerRotation& operator-=(const MEulerRotation& other);
    MEulerRotation operator*(double scale) const;
    MEulerRotation& operator*=(double scale);
    /// This rotation followed by the other one, in this one's order.
    MEulerRotation operator*(const MEulerRotation& other) const;
    MEulerRotation operator*(const MQuaternion& other) const;
    MEulerRotation& operator*=(const MEulerRotation& other);
    MEulerRotation& operator*=(const MQuaternion& other);

    /// Same angles and order. Two different ways to write one rotation are not equal.
    bool operator==(const MEulerRotation& other) const;
    bool operator!=(const MEulerRotation& other) const;
    bool isEquivalent(const MEulerRotation& other, double tolerance = kEulerRotationEpsilon) const;
    bool isZero(double tolerance = kEulerRotationEpsilon) const;

    /// The opposite rotation: negated angles in the reversed order.
    MEulerRotation inverse() const;
    MEulerRotation& invertIt();

    /// The same rotation in another order, with its middle angle in [-pi/2, pi/2]; unchanged if the order is
    /// the same.
    MEulerRotation reorder(RotationOrder ord) const;
    MEulerRotation& reorderIt(RotationOrder ord);

    /// Brings every angle, or every angle of `src`, into [-pi, pi] by whole turns.
    MEulerRotation bound() const;
    MEulerRotation& boundIt();
    MEulerRotation& boundIt(const MEulerRotation& src);

    /// The other angles that give the same rotation in the same order, within [-pi, pi].
    MEulerRotation alternateSolution() const;
    MEulerRotation& setToAlternateSolution();
    MEulerRotation& setToAlternateSolution(const MEulerRotation& src);

    /// This rotation, or its alternate one, with whole turns added so that the angles are nearest to those of
    /// `dst`.
    MEulerRotation closestSolution(const MEulerRotation& dst) const;
    MEulerRotation& setToClosestSolution(const MEulerRotation& dst);
    MEulerRotation& setToClosestSolution(const MEulerRotation& src, const MEulerRotation& dst);

    /// This rotation with whole turns added so that every angle is within half a turn of that of `dst`.
    MEulerRotation closestCut(const MEulerRotation& dst) const;
    MEulerRotation& setToClosestCut(const MEulerRotation& dst);
    MEulerRotation& setToClosestCut(const MEulerRotation& src, const MEulerRotation& dst);

    /// Adds a rotation about `axis` after this one, and stays near the current angles.
    MEulerRotation& incrementalRotateBy(const MVector& axis, double angle);

    /// Angles of the rotation in `matrix`, with any scale, shear and translation.
    static MEulerRotation decompose(const MMatrix& matrix, RotationOrder ord);

    static const MEulerRotation identity;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    RotationOrder order = kXYZ;
};

OPENMAYA_EXPORT MEulerRotation operator*(double scale, const MEulerRotation& rotation);
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MEulerRotation& rotation);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
