// MPoint and MFloatPoint.

#include <maya/MFloatMatrix.h>
#include <maya/MFloatPoint.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include "api/values/tuple.h"

namespace host::api {

namespace {

/// If w is 0, changes nothing and returns false.
template <typename Point>
bool divideByW(Point& point) {
    if (point.w == 0) return false;
    point.x /= point.w;
    point.y /= point.w;
    point.z /= point.w;
    return true;
}

/// With w = 1. A point with w = 0, which is at infinity, does not change.
template <typename Point>
Point cartesian(Point point) {
    if (point.w != 1) point.cartesianize();
    return point;
}

template <typename Vector, typename Point>
Vector difference(const Point& to, const Point& from) {
    const Point a = cartesian(to);
    const Point b = cartesian(from);
    return Vector(a.x - b.x, a.y - b.y, a.z - b.z);
}

template <typename Point, typename Matrix>
Point rowTimesMatrix(const Point& p, const Matrix& m) {
    return Point(p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + p.w * m[3][0],
                 p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + p.w * m[3][1],
                 p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + p.w * m[3][2],
                 p.x * m[0][3] + p.y * m[1][3] + p.z * m[2][3] + p.w * m[3][3]);
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host::api;

const MPoint MPoint::origin;
const MFloatPoint MFloatPoint::origin;

MPoint::MPoint(const MFloatPoint& src)
    : x(static_cast<double>(src.x)),
      y(static_cast<double>(src.y)),
      z(static_cast<double>(src.z)),
      w(static_cast<double>(src.w)) {}

MFloatPoint::MFloatPoint(const MPoint& src)
    : x(static_cast<float>(src.x)),
      y(static_cast<float>(src.y)),
      z(static_cast<float>(src.z)),
      w(static_cast<float>(src.w)) {}

MVector MPoint::operator-(const MPoint& other) const {
    return difference<MVector>(*this, other);
}

MPoint MPoint::operator*(const MMatrix& matrix) const {
    return rowTimesMatrix(*this, matrix);
}

MPoint& MPoint::operator*=(const MMatrix& matrix) {
    return *this = *this * matrix;
}

MStatus MPoint::get(double d[4]) const {
    return copyFour(*this, d);
}

MStatus MPoint::get(float f[4]) const {
    return copyFour(*this, f);
}

MPoint& MPoint::cartesianize() {
    if (divideByW(*this)) w = 1;
    return *this;
}

MPoint& MPoint::rationalize() {
    divideByW(*this);
    return *this;
}

MPoint& MPoint::homogenize() {
    return *this = MPoint(x * w, y * w, z * w, w);
}

double MPoint::distanceTo(const MPoint& other) const {
    return (*this - other).length();
}

bool MPoint::isEquivalent(const MPoint& other, double tolerance) const {
    return distanceTo(other) <= tolerance;
}

MPoint operator*(const MMatrix& matrix, const MPoint& point) {
    return point * matrix.transpose();
}

std::ostream& operator<<(std::ostream& out, const MPoint& point) {
    return writeFour(out, point);
}

MFloatVector MFloatPoint::operator-(const MFloatPoint& other) const {
    return difference<MFloatVector>(*this, other);
}

MFloatPoint MFloatPoint::operator*(const MFloatMatrix& matrix) const {
    return rowTimesMatrix(*this, matrix);
}

MFloatPoint& MFloatPoint::operator*=(const MFloatMatrix& matrix) {
    return *this = *this * matrix;
}

MStatus MFloatPoint::get(double d[4]) const {
    return copyFour(*this, d);
}

MStatus MFloatPoint::get(float f[4]) const {
    return copyFour(*this, f);
}

MFloatPoint& MFloatPoint::cartesianize() {
    if (divideByW(*this)) w = 1;
    return *this;
}

MFloatPoint& MFloatPoint::rationalize() {
    divideByW(*this);
    return *this;
}

MFloatPoint& MFloatPoint::homogenize() {
    return *this = MFloatPoint(x * w, y * w, z * w, w);
}

float MFloatPoint::distanceTo(const MFloatPoint& other) const {
    return (*this - other).length();
}

bool MFloatPoint::isEquivalent(const MFloatPoint& other, float tolerance) const {
    return distanceTo(other) <= tolerance;
}

MFloatPoint operator*(const MFloatMatrix& matrix, const MFloatPoint& point) {
    return point * matrix.transpose();
}

std::ostream& operator<<(std::ostream& out, const MFloatPoint& point) {
    return writeFour(out, point);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
