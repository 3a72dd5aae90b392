#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include "geometry/math.h"

/// Converts between the API's value classes and those of the geometry room.
namespace host::api {

geometry::Matrix4 toGeometry(const MMatrix& matrix);
MMatrix fromGeometry(const geometry::Matrix4& matrix);
inline geometry::Vec3 toGeometry(const MVector& v) {
    return {v.x, v.y, v.z};
}
inline MVector fromGeometry(const geometry::Vec3& v) {
    return MVector(v.x, v.y, v.z);
}

/// Convert between the API's two enumerations of rotation orders and that of the geometry room. Only the
/// transformation matrix counts from 1. The caller must rule out its kInvalid and kLast.
inline geometry::RotateOrder toGeometry(MEulerRotation::RotationOrder order) {
    return static_cast<geometry::RotateOrder>(order);
}
inline geometry::RotateOrder toGeometry(MTransformationMatrix::RotationOrder order) {
    return static_cast<geometry::RotateOrder>(static_cast<int>(order) - 1);
}
inline MEulerRotation::RotationOrder eulerOrder(MTransformationMatrix::RotationOrder order) {
    return static_cast<MEulerRotation::RotationOrder>(static_cast<int>(order) - 1);
}
inline MTransformationMatrix::RotationOrder matrixOrder(MEulerRotation::RotationOrder order) {
    return static_cast<MTransformationMatrix::RotationOrder>(static_cast<int>(order) + 1);
}

/// The rotation of a matrix, without scale, shear and translation.
geometry::Matrix4 rotationOnly(const geometry::Matrix4& matrix);

}  // namespace host::api
