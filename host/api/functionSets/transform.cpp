#include <maya/MEulerRotation.h>
#include <maya/MFnTransform.h>
#include <maya/MMatrix.h>
#include <maya/MVector.h>

#include <string>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/session.h"
#include "nodes/transformNode.h"

using host::api::answer;
using host::api::Answer;
using host::api::fromVector;
using host::api::missingObject;
using host::api::ObjectAccess;
using host::api::report;
using host::api::scene;
using host::api::toVector;
using host::geometry::RotateOrder;
using host::geometry::TransformParts;
using host::geometry::Vec3;
using host::graph::NodeRef;

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnTransform::MFnTransform() = default;
MFnTransform::~MFnTransform() = default;

MFnTransform::MFnTransform(MObject& object, MStatus* status)
    : MFnTransform(static_cast<const MObject&>(object), status) {}

MFnTransform::MFnTransform(const MObject& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFnTransform::MFnTransform(const MDagPath& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFn::Type MFnTransform::type() const {
    return MFn::kTransform;
}

MObject MFnTransform::create(MObject parent, MStatus* status) {
    return MFnDagNode::create("transform", parent, status);
}

MTransformationMatrix MFnTransform::transformation(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& node) {
        // The parts as the node stores them: decomposing the matrix would lose angles beyond half a turn.
        const TransformParts parts = host::nodes::transformParts(scene(), node);
        MTransformationMatrix result;
        const double rotation[3] = {parts.rotate.x, parts.rotate.y, parts.rotate.z};
        const double scale[3] = {parts.scale.x, parts.scale.y, parts.scale.z};
        const double shear[3] = {parts.shear.x, parts.shear.y, parts.shear.z};
        const auto order =
            static_cast<MTransformationMatrix::RotationOrder>(static_cast<int>(parts.rotateOrder) + 1);
        result.setRotation(rotation, order);
        result.setScale(scale, MSpace::kTransform);
        result.setShear(shear, MSpace::kTransform);
        result.setTranslation(toVector(parts.translate), MSpace::kTransform);
        return result;
    });
}

MStatus MFnTransform::set(const MTransformationMatrix& transformation) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    double rotation[3];
    double scale[3];
    double shear[3];
    MTransformationMatrix::RotationOrder order = MTransformationMatrix::kXYZ;
    transformation.getRotation(rotation, order);
    transformation.getScale(scale, MSpace::kTransform);
    transformation.getShear(shear, MSpace::kTransform);
    host::nodes::setRotateOrder(scene(), node, static_cast<RotateOrder>(static_cast<int>(order) - 1));
    host::nodes::setTranslation(scene(), node, fromVector(transformation.getTranslation(MSpace::kTransform)));
    host::nodes::setRotation(scene(), node, {rotation[0], rotation[1], rotation[2]});
    host::nodes::setScale(scene(), node, {scale[0], scale[1], scale[2]});
    host::nodes::setShear(scene(), node, {shear[0], shear[1], shear[2]});
    return MStatus::kSuccess;
}

MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MVector> {
        if (space == MSpace::kWorld) {
            if (!hasPath_) return MStatus::kInvalidParameter;
            return toVector(host::nodes::worldMatrix(scene(), node).row(3));
        }
        return toVector(host::nodes::transformParts(scene(), node).translate);
    });
}

MStatus MFnTransform::setTranslation(const MVector& translation, MSpace::Space space) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    Vec3 value = fromVector(translation);
    if (space == MSpace::kWorld) {
        if (!hasPath_) return MStatus::kInvalidParameter;
        const auto toParent = host::nodes::parentMatrix(scene(), node).inverse();
        if (!toParent.ok) return MStatus::kFailure;
        value = host::geometry::transformPoint(value, toParent.matrix);
    }
    host::nodes::setTranslation(scene(), node, value);
    return MStatus::kSuccess;
}

MStatus MFnTransform::getRotation(MEulerRotation& rotation) const {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const TransformParts parts = host::nodes::transformParts(scene(), node);
    rotation = MEulerRotation(parts.rotate.x, parts.rotate.y, parts.rotate.z,
                              static_cast<MEulerRotation::RotationOrder>(parts.rotateOrder));
    return MStatus::kSuccess;
}

MStatus MFnTransform::setRotation(const MEulerRotation& rotation) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    host::nodes::setRotateOrder(scene(), node, static_cast<RotateOrder>(rotation.order));
    host::nodes::setRotation(scene(), node, {rotation.x, rotation.y, rotation.z});
    return MStatus::kSuccess;
}

MStatus MFnTransform::getScale(double scale[3]) const {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const Vec3 value = host::nodes::transformParts(scene(), node).scale;
    for (int axis = 0; axis < 3; ++axis)
        scale[axis] = value[axis];
    return MStatus::kSuccess;
}

MStatus MFnTransform::setScale(const double scale[3]) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    host::nodes::setScale(scene(), node, {scale[0], scale[1], scale[2]});
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
