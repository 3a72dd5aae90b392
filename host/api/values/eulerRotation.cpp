#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>

#include <algorithm>
#include <cmath>

#include "api/values/conversion.h"
#include "api/values/tuple.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host;
using namespace host::api;

const MEulerRotation MEulerRotation::identity;

namespace {

constexpr double kTurn = 6.283185307179586476925286766559;
// Largest step of an incremental rotation. It is far below the quarter turn at which two solutions are
// equally near.
constexpr double kLargestStep = kTurn / 64.0;

MEulerRotation::RotationOrder reversed(MEulerRotation::RotationOrder order) {
    constexpr MEulerRotation::RotationOrder kReversed[] = {MEulerRotation::kZYX, MEulerRotation::kXZY,
                                                           MEulerRotation::kYXZ, MEulerRotation::kYZX,
                                                           MEulerRotation::kZXY, MEulerRotation::kXYZ};
    return kReversed[order];
}

double nearest(double angle, double target) {
    return angle + kTurn * std::round((target - angle) / kTurn);
}

double distance(const MEulerRotation& a, const MEulerRotation& b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z);
}

}  // namespace

MEulerRotation MEulerRotation::decompose(const MMatrix& matrix, RotationOrder ord) {
    const geometry::Vec3 angles = geometry::decomposeTransform(toGeometry(matrix), toGeometry(ord)).rotate;
    return MEulerRotation(angles.x, angles.y, angles.z, ord);
}

MEulerRotation& MEulerRotation::operator=(const MMatrix& matrix) {
    return *this = decompose(matrix, order);
}

MEulerRotation& MEulerRotation::operator=(const MQuaternion& quaternion) {
    return *this = quaternion.asMatrix();
}

MEulerRotation& MEulerRotation::setValue(const MVector& v, RotationOrder ord) {
    return *this = MEulerRotation(v, ord);
}

MEulerRotation& MEulerRotation::setValue(double xx, double yy, double zz, RotationOrder ord) {
    return *this = MEulerRotation(xx, yy, zz, ord);
}

MQuaternion MEulerRotation::asQuaternion() const {
    MQuaternion result;
    result = asMatrix();
    return result;
}

MMatrix MEulerRotation::asMatrix() const {
    return fromGeometry(geometry::rotationMatrix({x, y, z}, toGeometry(order)));
}

MVector MEulerRotation::asVector() const {
    return MVector(x, y, z);
}

MEulerRotation MEulerRotation::operator+(const MEulerRotation& other) const {
    const MEulerRotation same = other.reorder(order);
    return MEulerRotation(x + same.x, y + same.y, z + same.z, order);
}

MEulerRotation MEulerRotation::operator-(const MEulerRotation& other) const {
    const MEulerRotation same = other.reorder(order);
    return MEulerRotation(x - same.x, y - same.y, z - same.z, order);
}

MEulerRotation MEulerRotation::operator-() const {
    return *this * -1.0;
}

MEulerRotation& MEulerRotation::operator+=(const MEulerRotation& other) {
    return *this = *this + other;
}

MEulerRotation& MEulerRotation::operator-=(const MEulerRotation& other) {
    return *this = *this - other;
}

MEulerRotation MEulerRotation::operator*(double scale) const {
    return MEulerRotation(x * scale, y * scale, z * scale, order);
}

MEulerRotation& MEulerRotation::operator*=(double scale) {
    return *this = *this * scale;
}

MEulerRotation MEulerRotation::operator*(const MEulerRotation& other) const {
    return decompose(asMatrix() * other.asMatrix(), order);
}

MEulerRotation MEulerRotation::operator*(const MQuaternion& other) const {
    return decompose(asMatrix() * other.asMatrix(), order);
}

MEulerRotation& MEulerRotation::operator*=(const MEulerRotation& other) {
    return *this = *this * other;
}

MEulerRotation& MEulerRotation::operator*=(const MQuaternion& other) {
    return *this = *this * other;
}

bool MEulerRotation::operator==(const MEulerRotation& other) const {
    return x == other.x && y == other.y && z == other.z && order == other.order;
}

bool MEulerRotation::operator!=(const MEulerRotation& other) const {
    return !(*this == other);
}

bool MEulerRotation::isEquivalent(const MEulerRotation& other, double tolerance) const {
    return order == other.order && std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(z - other.z) <= tolerance;
}

bool MEulerRotation::isZero(double tolerance) const {
    return std::max({std::abs(x), std::abs(y), std::abs(z)}) <= tolerance;
}

MEulerRotation MEulerRotation::inverse() const {
    return MEulerRotation(-x, -y, -z, reversed(order));
}

MEulerRotation& MEulerRotation::invertIt() {
    return *this = inverse();
}

MEulerRotation MEulerRotation::reorder(RotationOrder ord) const {
    const geometry::Vec3 angles = geometry::reorderAngles({x, y, z}, toGeometry(order), toGeometry(ord));
    return MEulerRotation(angles.x, angles.y, angles.z, ord);
}

MEulerRotation& MEulerRotation::reorderIt(RotationOrder ord) {
    return *this = reorder(ord);
}

MEulerRotation MEulerRotation::bound() const {
    return closestCut(MEulerRotation(0.0, 0.0, 0.0, order));
}

MEulerRotation& MEulerRotation::boundIt() {
    return *this = bound();
}

MEulerRotation& MEulerRotation::boundIt(const MEulerRotation& src) {
    return *this = src.bound();
}

MEulerRotation MEulerRotation::alternateSolution() const {
    const geometry::Vec3 angles = geometry::alternateAngles({x, y, z}, toGeometry(order));
    return MEulerRotation(angles.x, angles.y, angles.z, order).bound();
}

MEulerRotation& MEulerRotation::setToAlternateSolution() {
    return *this = alternateSolution();
}

MEulerRotation& MEulerRotation::setToAlternateSolution(const MEulerRotation& src) {
    return *this = src.alternateSolution();
}

MEulerRotation MEulerRotation::closestSolution(const MEulerRotation& dst) const {
    const MEulerRotation target = dst.reorder(order);
    const MEulerRotation first = closestCut(target);
    const MEulerRotation second = alternateSolution().closestCut(target);
    return distance(second, target) < distance(first, target) ? second : first;
}

MEulerRotation& MEulerRotation::setToClosestSolution(const MEulerRotation& dst) {
    return *this = closestSolution(dst);
}

MEulerRotation& MEulerRotation::setToClosestSolution(const MEulerRotation& src, const MEulerRotation& dst) {
    return *this = src.closestSolution(dst);
}

MEulerRotation MEulerRotation::closestCut(const MEulerRotation& dst) const {
    const MEulerRotation target = dst.reorder(order);
    return MEulerRotation(nearest(x, target.x), nearest(y, target.y), nearest(z, target.z), order);
}

MEulerRotation& MEulerRotation::setToClosestCut(const MEulerRotation& dst) {
    return *this = closestCut(dst);
}

MEulerRotation& MEulerRotation::setToClosestCut(const MEulerRotation& src, const MEulerRotation& dst) {
    return *this = src.closestCut(dst);
}

MEulerRotation& MEulerRotation::incrementalRotateBy(const MVector& axis, double angle) {
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(angle) / kLargestStep)));
    const MMatrix step = MQuaternion(angle / steps, axis).asMatrix();
    for (int i = 0; i < steps; ++i) {
        *this = decompose(asMatrix() * step, order).closestSolution(*this);
    }
    return *this;
}

MEulerRotation operator*(double scale, const MEulerRotation& rotation) {
    return rotation * scale;
}

std::ostream& operator<<(std::ostream& out, const MEulerRotation& rotation) {
    constexpr const char* kOrderNames[] = {"kXYZ", "kYZX", "kZXY", "kXZY", "kYXZ", "kZYX"};
    return writeThree(out, rotation) << ' ' << kOrderNames[rotation.order];
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
