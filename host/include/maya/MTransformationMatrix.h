#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// Default tolerance of isEquivalent.
#define MTransformationMatrix_kTol 1.0e-10

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A transform stored as its parts: scale, shear, rotation and translation, applied in this order; the
/// identity by default.
///
/// Angles are in radians and are kept as set. A transform made from a matrix has no pivots and the order xyz.
class OPENMAYA_EXPORT MTransformationMatrix {
  public:
    /// Counted from 1, unlike MEulerRotation::RotationOrder.
    enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };

    MTransformationMatrix();
    MTransformationMatrix(const MMatrix& src);
    MTransformationMatrix& operator=(const MMatrix& rhs);

    MMatrix asMatrix() const;
    MMatrix asMatrixInverse() const;
    MMatrix asScaleMatrix() const;
    /// Rotation orientation and rotation.
    MMatrix asRotateMatrix() const;

    bool operator==(const MTransformationMatrix& other) const;
    bool operator!=(const MTransformationMatrix& other) const;
    /// Whether every element of the two matrices differs by at most the tolerance.
    bool isEquivalent(const MTransformationMatrix& other,
                      double tolerance = MTransformationMatrix_kTol) const;

    MQuaternion rotation() const;
    MEulerRotation eulerRotation() const;
    MStatus getRotation(double rotation[3], RotationOrder& order) const;
    /// Also sets the order. Fails for kInvalid and kLast.
    MStatus setRotation(const double rotation[3], RotationOrder order);
    MTransformationMatrix& rotateTo(const MQuaternion& rotation);
    MTransformationMatrix& rotateTo(const MEulerRotation& rotation);
    MStatus getRotationQuaternion(double& x, double& y, double& z, double& w) const;
    MStatus setRotationQuaternion(double x, double y, double z, double w);
    RotationOrder rotationOrder() const;
    /// Keeps the rotation and changes the angles.
    MStatus reorderRotation(RotationOrder order);

    /// Scale and shear are the same in every space. kInvalid and kLast fail. They can be added only in
    /// transform and object space. Other spaces fail with kNotImplemented.
    MStatus getScale(double scale[3], MSpace::Space space) const;
    MStatus setScale(const double scale[3], MSpace::Space space);
    /// Multiplies the scale.
    MStatus addScale(const double scale[3], MSpace::Space space);
    /// y by x, z by x, z by y.
    MStatus getShear(double shear[3], MSpace::Space space) const;
    MStatus setShear(const double shear[3], MSpace::Space space);
    MStatus addShear(const double shear[3], MSpace::Space space);

    /// The same in transform, post-transform and world space. Object space fails with kNotImplemented.
    MVector getTranslation(MSpace::Space space, MStatus* ReturnStatus = nullptr) const;
    MStatus setTranslation(const MVector& vector, MSpace::Space space);
    MStatus addTranslation(const MVector& vector, MSpace::Space space);

    static const MTransformationMatrix identity;

  private:
    double translate_[3] = {0.0, 0.0, 0.0};
    double rotate_[3] = {0.0, 0.0, 0.0};
    double scale_[3] = {1.0, 1.0, 1.0};
    double shear_[3] = {0.0, 0.0, 0.0};
    RotationOrder order_ = kXYZ;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
