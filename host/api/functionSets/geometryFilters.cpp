// The function sets of deformers in general and of blend shapes.

#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>

#include <vector>

#include "api/handles/answers.h"
#include "api/handles/objectAccess.h"
#include "api/handles/session.h"
#include "nodes/blendShapeNode.h"
#include "nodes/deformers.h"
#include "nodes/plugs.h"

using host::api::answer;
using host::api::Answer;
using host::api::answerIf;
using host::api::incompatible;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::report;
using host::api::scene;
using host::graph::NodeRef;
using host::graph::Plug;

namespace {

/// The shape of an object: itself, or the only visible shape of a transform.
NodeRef shapeOf(const MObject& object) {
    const NodeRef node = ObjectAccess::node(object);
    if (node == nullptr || !node->type().isDag()) return nullptr;
    NodeRef shape = scene().shapeOf(node);
    return shape != nullptr && shape->isA("mesh") ? shape : nullptr;
}

NodeRef originalOf(const NodeRef& shape) {
    return host::nodes::originalShape(scene(), shape);
}

/// The shapes that a deformer deforms.
MStatus listDeformed(const MObject& deformer, MObjectArray& objects) {
    objects.clear();
    const NodeRef filter = ObjectAccess::node(deformer);
    if (filter == nullptr) return missingObject();
    for (const NodeRef& shape : host::nodes::baseShapes(scene(), filter))
        objects.append(ObjectAccess::object(shape));
    return MStatus::kSuccess;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnGeometryFilter::MFnGeometryFilter() = default;
MFnGeometryFilter::~MFnGeometryFilter() = default;

MFnGeometryFilter::MFnGeometryFilter(MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnGeometryFilter::type() const {
    return MFn::kGeometryFilt;
}

MStatus MFnGeometryFilter::getInputGeometry(MObjectArray& objects) const {
    objects.clear();
    const NodeRef filter = ObjectAccess::node(object_);
    if (filter == nullptr) return missingObject();
    for (const NodeRef& shape : host::nodes::baseShapes(scene(), filter)) {
        if (const NodeRef original = originalOf(shape)) objects.append(ObjectAccess::object(original));
    }
    return MStatus::kSuccess;
}

MStatus MFnGeometryFilter::getOutputGeometry(MObjectArray& objects) const {
    return listDeformed(object_, objects);
}

MObject MFnGeometryFilter::inputShapeAtIndex(unsigned int index, MStatus* status) const {
    const NodeRef shape = ObjectAccess::node(outputShapeAtIndex(index));
    const NodeRef original = shape != nullptr ? originalOf(shape) : nullptr;
    report(status, original != nullptr ? MStatus(MStatus::kSuccess) : noElement());
    return ObjectAccess::object(original);
}

MObject MFnGeometryFilter::outputShapeAtIndex(unsigned int index, MStatus* status) const {
    return ObjectAccess::object(
        answer(status, ObjectAccess::node(object_), [&](const NodeRef& filter) -> Answer<NodeRef> {
            NodeRef shape = host::nodes::deformedShape(scene(), filter, static_cast<int>(index));
            if (shape == nullptr) return noElement();
            return shape;
        }));
}

unsigned int MFnGeometryFilter::indexForOutputShape(const MObject& shape, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& filter) -> Answer<unsigned int> {
        const NodeRef wanted = ObjectAccess::node(shape);
        if (wanted == nullptr) return missingObject();
        const int index = host::nodes::geometryIndexOf(scene(), filter, wanted);
        if (index < 0) return incompatible();
        return static_cast<unsigned int>(index);
    });
}

unsigned int MFnGeometryFilter::numOutputConnections(MStatus* status) const {
    MObjectArray objects;
    report(status, getOutputGeometry(objects));
    return objects.length();
}

MStatus MFnGeometryFilter::getPathAtIndex(unsigned int index, MDagPath& path) const {
    MStatus status;
    const MObject shape = outputShapeAtIndex(index, &status);
    return status ? MDagPath::getAPathTo(shape, path) : status;
}

float MFnGeometryFilter::envelope(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& filter) {
        return static_cast<float>(scene().number(filter->plug("envelope")));
    });
}

MStatus MFnGeometryFilter::setEnvelope(float envelope) {
    const NodeRef filter = ObjectAccess::node(object_);
    if (filter == nullptr) return missingObject();
    scene().setNumber(filter->plug("envelope"), static_cast<double>(envelope));
    return MStatus::kSuccess;
}

MFnBlendShapeDeformer::MFnBlendShapeDeformer() = default;
MFnBlendShapeDeformer::~MFnBlendShapeDeformer() = default;

MFnBlendShapeDeformer::MFnBlendShapeDeformer(MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnBlendShapeDeformer::type() const {
    return MFn::kBlendShape;
}

MObject MFnBlendShapeDeformer::create(MObject baseObject, Origin originSpecifier, MStatus* status) {
    const NodeRef shape = shapeOf(baseObject);
    return answerIf(
        status, shape != nullptr ? MStatus(MStatus::kSuccess) : incompatible(), [&]() -> Answer<MObject> {
            object_ = ObjectAccess::object(host::nodes::createDeformer(scene(), "blendShape", {shape}));
            if (const MStatus placed = setOrigin(originSpecifier); !placed) return placed;
            return object_;
        });
}

MFnBlendShapeDeformer::Origin MFnBlendShapeDeformer::origin(MStatus* status) const {
    return answer(
        status, ObjectAccess::node(object_),
        [](const NodeRef& node) {
            // The attribute counts the world first.
            return scene().number(node->plug("origin")) == 0.0 ? kWorldOrigin : kLocalOrigin;
        },
        kLocalOrigin);
}

MStatus MFnBlendShapeDeformer::setOrigin(Origin space) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    scene().setNumber(node->plug("origin"), space == kWorldOrigin ? 0.0 : 1.0);
    return MStatus::kSuccess;
}

MStatus MFnBlendShapeDeformer::getBaseObjects(MObjectArray& objects) const {
    return listDeformed(object_, objects);
}

unsigned int MFnBlendShapeDeformer::numWeights(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& node) {
        return static_cast<unsigned int>(host::nodes::weightIndices(scene(), node).size());
    });
}

MStatus MFnBlendShapeDeformer::weightIndexList(MIntArray& indexList) const {
    indexList.clear();
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const std::vector<int> indices = host::nodes::weightIndices(scene(), node);
    indexList = MIntArray(indices.data(), static_cast<unsigned int>(indices.size()));
    return MStatus::kSuccess;
}

float MFnBlendShapeDeformer::weight(unsigned int index, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<float> {
        const Plug element = node->plug("weight").element(static_cast<int>(index));
        if (!scene().hasElement(element)) return noElement();
        return static_cast<float>(scene().number(element));
    });
}

MStatus MFnBlendShapeDeformer::setWeight(unsigned int index, float weight) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const Plug element = node->plug("weight").element(static_cast<int>(index));
    if (!scene().hasElement(element)) return noElement();
    scene().setNumber(element, static_cast<double>(weight));
    return MStatus::kSuccess;
}

MStatus MFnBlendShapeDeformer::addTarget(const MObject& baseObject, int weightIndex, const MObject& newTarget,
                                         double fullWeight) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const NodeRef base = shapeOf(baseObject);
    const NodeRef target = shapeOf(newTarget);
    const int baseIndex = base != nullptr ? host::nodes::geometryIndexOf(scene(), node, base) : -1;
    if (baseIndex < 0 || target == nullptr || weightIndex < 0) return incompatible();
    const std::vector<int> items = host::nodes::targetItems(scene(), node, baseIndex, weightIndex);
    const host::nodes::TargetResult result =
        host::nodes::addTarget(scene(), node, baseIndex, weightIndex, target, fullWeight, !items.empty());
    return result.ok ? MStatus(MStatus::kSuccess) : MStatus(MStatus::kFailure);
}

MStatus MFnBlendShapeDeformer::getTargets(MObject baseObject, int weightIndex, MObjectArray& targets) const {
    targets.clear();
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const NodeRef base = shapeOf(baseObject);
    const int baseIndex = base != nullptr ? host::nodes::geometryIndexOf(scene(), node, base) : -1;
    if (baseIndex < 0) return incompatible();
    for (const int item : host::nodes::targetItems(scene(), node, baseIndex, weightIndex)) {
        const Plug target = host::nodes::targetItemPlug(node, baseIndex, weightIndex, item);
        const Plug place = host::nodes::childPlug(target, host::nodes::kGeomTarget);
        if (const Plug source = scene().source(place)) targets.append(ObjectAccess::object(source.node()));
    }
    return MStatus::kSuccess;
}

MStatus MFnBlendShapeDeformer::targetItemIndexList(unsigned int targetIndex, MObject baseObject,
                                                   MIntArray& inbetween) const {
    inbetween.clear();
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    const NodeRef base = shapeOf(baseObject);
    const int baseIndex = base != nullptr ? host::nodes::geometryIndexOf(scene(), node, base) : -1;
    if (baseIndex < 0) return incompatible();
    const std::vector<int> items =
        host::nodes::targetItems(scene(), node, baseIndex, static_cast<int>(targetIndex));
    inbetween = MIntArray(items.data(), static_cast<unsigned int>(items.size()));
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
