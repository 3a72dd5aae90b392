// MVector and MFloatVector.

#include <maya/MEulerRotation.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include "api/values/conversion.h"
#include "api/values/tuple.h"

namespace host::api {

namespace {

template <typename Vector, typename Matrix>
Vector rowTimesMatrix(const Vector& v, const Matrix& m) {
    return Vector(v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0],
                  v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1],
                  v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2]);
}

/// From sine and cosine together, so that small angles are exact.
template <typename Vector>
auto angleBetween(const Vector& a, const Vector& b) {
    return std::atan2((a ^ b).length(), a * b);
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host::api;

MVector::MVector(const MFloatVector& src)
    : x(static_cast<double>(src.x)), y(static_cast<double>(src.y)), z(static_cast<double>(src.z)) {}

MVector::MVector(const MPoint& src) : x(src.x), y(src.y), z(src.z) {}

MFloatVector::MFloatVector(const MVector& src)
    : x(static_cast<float>(src.x)), y(static_cast<float>(src.y)), z(static_cast<float>(src.z)) {}

MFloatVector::MFloatVector(const MPoint& src)
    : x(static_cast<float>(src.x)), y(static_cast<float>(src.y)), z(static_cast<float>(src.z)) {}

MFloatVector::MFloatVector(const MFloatPoint& src) : x(src.x), y(src.y), z(src.z) {}

const MVector MVector::zero;
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);
const MVector MVector::xNegAxis(-1.0, 0.0, 0.0);
const MVector MVector::yNegAxis(0.0, -1.0, 0.0);
const MVector MVector::zNegAxis(0.0, 0.0, -1.0);

MVector MVector::operator*(const MMatrix& matrix) const {
    return rowTimesMatrix(*this, matrix);
}

MVector& MVector::operator*=(const MMatrix& matrix) {
    return *this = *this * matrix;
}

MStatus MVector::get(double d[3]) const {
    return copyThree(*this, d);
}

double MVector::length() const {
    return std::sqrt(*this * *this);
}

MVector MVector::normal() const {
    const double size = length();
    return size > 0 ? *this / size : *this;
}

MStatus MVector::normalize() {
    *this = normal();
    return MStatus::kSuccess;
}

double MVector::angle(const MVector& other) const {
    return angleBetween(*this, other);
}

bool MVector::isEquivalent(const MVector& other, double tolerance) const {
    return (*this - other).length() <= tolerance;
}

bool MVector::isParallel(const MVector& other, double tolerance) const {
    return (normal() ^ other.normal()).length() <= tolerance;
}

MVector MVector::transformAsNormal(const MMatrix& matrix) const {
    return *this * matrix.inverse().transpose();
}

MVector MVector::rotateBy(double qx, double qy, double qz, double qw) const {
    return rotateBy(MQuaternion(qx, qy, qz, qw));
}

MVector MVector::rotateBy(const double rotXYZ[3], MTransformationMatrix::RotationOrder rotationOrder) const {
    return rotateBy(MEulerRotation(rotXYZ, eulerOrder(rotationOrder)));
}

MVector MVector::rotateBy(MVector::Axis axis, const double angle) const {
    MEulerRotation rotation;
    if (axis != kWaxis) rotation[static_cast<unsigned int>(axis)] = angle;
    return rotateBy(rotation);
}

MVector MVector::rotateBy(const MQuaternion& rotation) const {
    return *this * rotation.asMatrix();
}

MVector MVector::rotateBy(const MEulerRotation& rotation) const {
    return *this * rotation.asMatrix();
}

MQuaternion MVector::rotateTo(const MVector& other) const {
    return MQuaternion(*this, other);
}

MVector operator*(const MMatrix& matrix, const MVector& vector) {
    return vector * matrix.transpose();
}

std::ostream& operator<<(std::ostream& out, const MVector& vector) {
    return writeThree(out, vector);
}

const MFloatVector MFloatVector::zero;
const MFloatVector MFloatVector::one(1.0f, 1.0f, 1.0f);
const MFloatVector MFloatVector::xAxis(1.0f, 0.0f, 0.0f);
const MFloatVector MFloatVector::yAxis(0.0f, 1.0f, 0.0f);
const MFloatVector MFloatVector::zAxis(0.0f, 0.0f, 1.0f);
const MFloatVector MFloatVector::xNegAxis(-1.0f, 0.0f, 0.0f);
const MFloatVector MFloatVector::yNegAxis(0.0f, -1.0f, 0.0f);
const MFloatVector MFloatVector::zNegAxis(0.0f, 0.0f, -1.0f);

MFloatVector MFloatVector::operator*(const MFloatMatrix& matrix) const {
    return rowTimesMatrix(*this, matrix);
}

MFloatVector& MFloatVector::operator*=(const MFloatMatrix& matrix) {
    return *this = *this * matrix;
}

MStatus MFloatVector::get(float f[3]) const {
    return copyThree(*this, f);
}

float MFloatVector::length() const {
    return std::sqrt(*this * *this);
}

MFloatVector MFloatVector::normal() const {
    const float size = length();
    return size > 0 ? *this / size : *this;
}

MStatus MFloatVector::normalize() {
    *this = normal();
    return MStatus::kSuccess;
}

float MFloatVector::angle(const MFloatVector& other) const {
    return angleBetween(*this, other);
}

bool MFloatVector::isEquivalent(const MFloatVector& other, float tolerance) const {
    return (*this - other).length() <= tolerance;
}

bool MFloatVector::isParallel(const MFloatVector& other, float tolerance) const {
    return (normal() ^ other.normal()).length() <= tolerance;
}

MFloatVector operator*(const MFloatMatrix& matrix, const MFloatVector& vector) {
    return vector * matrix.transpose();
}

std::ostream& operator<<(std::ostream& out, const MFloatVector& vector) {
    return writeThree(out, vector);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
