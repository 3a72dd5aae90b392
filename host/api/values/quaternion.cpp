#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <cmath>

#include "api/values/conversion.h"
#include "api/values/tuple.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host::api;

const MQuaternion MQuaternion::identity;

namespace {

// Below this sine, the ends of an arc are too close for its formula.
constexpr double kSmallestArc = 1e-12;

double dot(const MQuaternion& p, const MQuaternion& q) {
    return p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w;
}

MVector anyPerpendicular(const MVector& v) {
    return (std::abs(v.x) < std::abs(v.y) ? v ^ MVector::xAxis : v ^ MVector::yAxis).normal();
}

/// From a rotation matrix. Starts with the largest of the four parts, so that the division is exact.
MQuaternion fromRotation(const MMatrix& m) {
    const double squares[4] = {1.0 + m[0][0] - m[1][1] - m[2][2], 1.0 - m[0][0] + m[1][1] - m[2][2],
                               1.0 - m[0][0] - m[1][1] + m[2][2], 1.0 + m[0][0] + m[1][1] + m[2][2]};
    unsigned int largest = 3;
    for (unsigned int i = 0; i < 3; ++i) {
        if (squares[i] > squares[largest]) largest = i;
    }
    const double part = std::sqrt(squares[largest]) / 2.0;
    const double divisor = 4.0 * part;
    const double xy = (m[0][1] + m[1][0]) / divisor;
    const double xz = (m[0][2] + m[2][0]) / divisor;
    const double yz = (m[1][2] + m[2][1]) / divisor;
    const double xw = (m[1][2] - m[2][1]) / divisor;
    const double yw = (m[2][0] - m[0][2]) / divisor;
    const double zw = (m[0][1] - m[1][0]) / divisor;
    switch (largest) {
        case 0:
            return MQuaternion(part, xy, xz, xw);
        case 1:
            return MQuaternion(xy, part, yz, yw);
        case 2:
            return MQuaternion(xz, yz, part, zw);
        default:
            return MQuaternion(xw, yw, zw, part);
    }
}

}  // namespace

MQuaternion::MQuaternion(const MVector& a, const MVector& b) : MQuaternion(a, b, 1.0) {}

MQuaternion::MQuaternion(const MVector& a, const MVector& b, double factor) {
    const MVector axis = a ^ b;
    const double angle = a.angle(b);
    if (axis.length() > 0.0) {
        setAxisAngle(axis, angle * factor);
    } else if (a * b < 0.0) {
        setAxisAngle(anyPerpendicular(a), angle * factor);
    }
}

MQuaternion::MQuaternion(double angle, const MVector& axis) {
    setAxisAngle(axis, angle);
}

MQuaternion& MQuaternion::operator=(const MMatrix& matrix) {
    return *this = fromRotation(fromGeometry(rotationOnly(toGeometry(matrix))));
}

MQuaternion& MQuaternion::operator=(const MEulerRotation& rotation) {
    return *this = rotation.asQuaternion();
}

MMatrix MQuaternion::asMatrix() const {
    const double rows[4][4] = {
        {1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y + z * w), 2.0 * (x * z - y * w), 0.0},
        {2.0 * (x * y - z * w), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z + x * w), 0.0},
        {2.0 * (x * z + y * w), 2.0 * (y * z - x * w), 1.0 - 2.0 * (x * x + y * y), 0.0},
        {0.0, 0.0, 0.0, 1.0}};
    return MMatrix(rows);
}

MEulerRotation MQuaternion::asEulerRotation() const {
    return MEulerRotation::decompose(asMatrix(), MEulerRotation::kXYZ);
}

MStatus MQuaternion::get(double dest[4]) const {
    return copyFour(*this, dest);
}

bool MQuaternion::getAxisAngle(MVector& axis, double& theta) const {
    axis = MVector(x, y, z);
    const double sine = axis.length();
    if (sine == 0.0) {
        axis = MVector::xAxis;
        theta = 0.0;
        return false;
    }
    axis /= sine;
    theta = 2.0 * std::atan2(sine, w);
    return true;
}

MQuaternion& MQuaternion::setAxisAngle(const MVector& axis, double theta) {
    const MVector part = axis.normal() * std::sin(theta / 2.0);
    return *this = MQuaternion(part.x, part.y, part.z, std::cos(theta / 2.0));
}

MQuaternion& MQuaternion::setToXAxis(double theta) {
    return setAxisAngle(MVector::xAxis, theta);
}

MQuaternion& MQuaternion::setToYAxis(double theta) {
    return setAxisAngle(MVector::yAxis, theta);
}

MQuaternion& MQuaternion::setToZAxis(double theta) {
    return setAxisAngle(MVector::zAxis, theta);
}

MQuaternion MQuaternion::operator+(const MQuaternion& other) const {
    return MQuaternion(x + other.x, y + other.y, z + other.z, w + other.w);
}

MQuaternion MQuaternion::operator-(const MQuaternion& other) const {
    return MQuaternion(x - other.x, y - other.y, z - other.z, w - other.w);
}

MQuaternion MQuaternion::operator-() const {
    return MQuaternion(-x, -y, -z, -w);
}

MQuaternion MQuaternion::operator*(const MQuaternion& rhs) const {
    return MQuaternion(
        w * rhs.x + x * rhs.w - y * rhs.z + z * rhs.y, w * rhs.y + y * rhs.w - z * rhs.x + x * rhs.z,
        w * rhs.z + z * rhs.w - x * rhs.y + y * rhs.x, w * rhs.w - x * rhs.x - y * rhs.y - z * rhs.z);
}

MQuaternion& MQuaternion::operator*=(const MQuaternion& rhs) {
    return *this = *this * rhs;
}

bool MQuaternion::operator==(const MQuaternion& other) const {
    return x == other.x && y == other.y && z == other.z && w == other.w;
}

bool MQuaternion::operator!=(const MQuaternion& other) const {
    return !(*this == other);
}

bool MQuaternion::isEquivalent(const MQuaternion& other, double tolerance) const {
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(z - other.z) <= tolerance && std::abs(w - other.w) <= tolerance;
}

MQuaternion& MQuaternion::scaleIt(double scale) {
    return *this = scale * *this;
}

MQuaternion& MQuaternion::negateIt() {
    return *this = -*this;
}

MQuaternion MQuaternion::normal() const {
    const double size = std::sqrt(dot(*this, *this));
    return size > 0.0 ? (1.0 / size) * *this : *this;
}

MQuaternion& MQuaternion::normalizeIt() {
    return *this = normal();
}

MQuaternion MQuaternion::conjugate() const {
    return MQuaternion(-x, -y, -z, w);
}

MQuaternion& MQuaternion::conjugateIt() {
    return *this = conjugate();
}

MQuaternion MQuaternion::inverse() const {
    const double square = dot(*this, *this);
    return square > 0.0 ? (1.0 / square) * conjugate() : *this;
}

MQuaternion& MQuaternion::invertIt() {
    return *this = inverse();
}

MQuaternion operator*(double scale, const MQuaternion& rhs) {
    return MQuaternion(rhs.x * scale, rhs.y * scale, rhs.z * scale, rhs.w * scale);
}

MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t) {
    const double cosine = dot(p, q);
    const MQuaternion end = cosine < 0.0 ? -q : q;
    const double arc = std::acos(std::fmin(std::abs(cosine), 1.0));
    const double sine = std::sin(arc);
    if (sine < kSmallestArc) return p;
    return (std::sin((1.0 - t) * arc) / sine) * p + (std::sin(t * arc) / sine) * end;
}

std::ostream& operator<<(std::ostream& out, const MQuaternion& rotation) {
    return writeFour(out, rotation);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
