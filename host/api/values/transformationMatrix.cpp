#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <algorithm>
#include <functional>

#include "api/values/conversion.h"
#include "api/values/statusMaker.h"
#include "api/values/tuple.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

using namespace host;
using namespace host::api;

const MTransformationMatrix MTransformationMatrix::identity;

namespace {

using Order = MTransformationMatrix::RotationOrder;

bool isOrder(Order order) {
    return order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast;
}

geometry::Vec3 triple(const double (&values)[3]) {
    return {values[0], values[1], values[2]};
}

MStatus anySpace(MSpace::Space space) {
    const bool known = space > MSpace::kInvalid && space < MSpace::kLast;
    return known ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

// Scaling in the space after the rotation would need a shear that depends on the rotation.
MStatus localSpace(MSpace::Space space) {
    if (anySpace(space).error()) return MStatus::kInvalidParameter;
    const bool local = space == MSpace::kTransform || space == MSpace::kPreTransform;
    return local ? MStatus::kSuccess : MStatus::kNotImplemented;
}

MStatus translationSpace(MSpace::Space space) {
    if (anySpace(space).error()) return MStatus::kInvalidParameter;
    return space == MSpace::kPreTransform ? MStatus::kNotImplemented : MStatus::kSuccess;
}

MStatus copyIf(const MStatus& allowed, const double source[3], double destination[3]) {
    if (allowed) std::copy(source, source + 3, destination);
    return allowed;
}

}  // namespace

MTransformationMatrix::MTransformationMatrix() = default;

MTransformationMatrix::MTransformationMatrix(const MMatrix& src) {
    const geometry::TransformParts parts = geometry::decomposeTransform(toGeometry(src));
    copyThree(parts.translate, translate_);
    copyThree(parts.rotate, rotate_);
    copyThree(parts.scale, scale_);
    copyThree(parts.shear, shear_);
}

MTransformationMatrix& MTransformationMatrix::operator=(const MMatrix& rhs) {
    return *this = MTransformationMatrix(rhs);
}

MMatrix MTransformationMatrix::asMatrix() const {
    geometry::TransformParts parts;
    parts.translate = triple(translate_);
    parts.rotate = triple(rotate_);
    parts.scale = triple(scale_);
    parts.shear = triple(shear_);
    parts.rotateOrder = toGeometry(order_);
    return fromGeometry(geometry::composeTransform(parts));
}

MMatrix MTransformationMatrix::asMatrixInverse() const {
    return asMatrix().inverse();
}

MMatrix MTransformationMatrix::asScaleMatrix() const {
    return fromGeometry(geometry::Matrix4::scaling(triple(scale_)));
}

MMatrix MTransformationMatrix::asRotateMatrix() const {
    return eulerRotation().asMatrix();
}

bool MTransformationMatrix::operator==(const MTransformationMatrix& other) const {
    return std::equal(translate_, translate_ + 3, other.translate_) &&
           std::equal(rotate_, rotate_ + 3, other.rotate_) && std::equal(scale_, scale_ + 3, other.scale_) &&
           std::equal(shear_, shear_ + 3, other.shear_) && order_ == other.order_;
}

bool MTransformationMatrix::operator!=(const MTransformationMatrix& other) const {
    return !(*this == other);
}

bool MTransformationMatrix::isEquivalent(const MTransformationMatrix& other, double tolerance) const {
    return asMatrix().isEquivalent(other.asMatrix(), tolerance);
}

MQuaternion MTransformationMatrix::rotation() const {
    return eulerRotation().asQuaternion();
}

MEulerRotation MTransformationMatrix::eulerRotation() const {
    return MEulerRotation(rotate_, eulerOrder(order_));
}

MStatus MTransformationMatrix::getRotation(double rotation[3], RotationOrder& order) const {
    order = order_;
    return copyIf(MStatus::kSuccess, rotate_, rotation);
}

MStatus MTransformationMatrix::setRotation(const double rotation[3], RotationOrder order) {
    if (!isOrder(order)) return MStatus::kInvalidParameter;
    order_ = order;
    return copyIf(MStatus::kSuccess, rotation, rotate_);
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MQuaternion& rotation) {
    return rotateTo(MEulerRotation::decompose(rotation.asMatrix(), eulerOrder(order_)));
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MEulerRotation& rotation) {
    order_ = matrixOrder(rotation.order);
    copyThree(rotation, rotate_);
    return *this;
}

MStatus MTransformationMatrix::getRotationQuaternion(double& x, double& y, double& z, double& w) const {
    const MQuaternion quaternion = rotation();
    x = quaternion.x;
    y = quaternion.y;
    z = quaternion.z;
    w = quaternion.w;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotationQuaternion(double x, double y, double z, double w) {
    rotateTo(MQuaternion(x, y, z, w));
    return MStatus::kSuccess;
}

MTransformationMatrix::RotationOrder MTransformationMatrix::rotationOrder() const {
    return order_;
}

MStatus MTransformationMatrix::reorderRotation(RotationOrder order) {
    if (!isOrder(order)) return MStatus::kInvalidParameter;
    rotateTo(eulerRotation().reorder(eulerOrder(order)));
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space space) const {
    return copyIf(anySpace(space), scale_, scale);
}

MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space space) {
    return copyIf(anySpace(space), scale, scale_);
}

MStatus MTransformationMatrix::addScale(const double scale[3], MSpace::Space space) {
    const MStatus allowed = localSpace(space);
    if (allowed) std::transform(scale, scale + 3, scale_, scale_, std::multiplies<double>());
    return allowed;
}

MStatus MTransformationMatrix::getShear(double shear[3], MSpace::Space space) const {
    return copyIf(anySpace(space), shear_, shear);
}

MStatus MTransformationMatrix::setShear(const double shear[3], MSpace::Space space) {
    return copyIf(anySpace(space), shear, shear_);
}

MStatus MTransformationMatrix::addShear(const double shear[3], MSpace::Space space) {
    const MStatus allowed = localSpace(space);
    if (allowed) std::transform(shear, shear + 3, shear_, shear_, std::plus<double>());
    return allowed;
}

MVector MTransformationMatrix::getTranslation(MSpace::Space space, MStatus* status) const {
    const MStatus allowed = report(status, translationSpace(space));
    return allowed ? MVector(translate_) : MVector();
}

MStatus MTransformationMatrix::setTranslation(const MVector& vector, MSpace::Space space) {
    const MStatus allowed = translationSpace(space);
    if (allowed) copyThree(vector, translate_);
    return allowed;
}

MStatus MTransformationMatrix::addTranslation(const MVector& vector, MSpace::Space space) {
    return setTranslation(MVector(translate_) + vector, space);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
