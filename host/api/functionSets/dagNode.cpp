#include <maya/MBoundingBox.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MMatrix.h>

#include <string>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/dag.h"
#include "api/handles/objectAccess.h"
#include "api/handles/pathAccess.h"
#include "api/handles/session.h"
#include "geometry/mesh.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

using host::api::answer;
using host::api::Answer;
using host::api::answerIf;
using host::api::checkArguments;
using host::api::incompatible;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::PathAccess;
using host::api::report;
using host::api::scene;
using host::api::string;
using host::api::text;
using host::graph::Node;
using host::graph::NodeRef;

namespace {

/// Box of a node and everything below it, in the space of its parent.
host::geometry::BoundingBox boxOf(const NodeRef& node) {
    // Parents first. From the end, each part adds its box to its parent's. So hierarchies may be of any
    // depth.
    struct Part {
        NodeRef node;
        std::size_t parent;
        host::geometry::BoundingBox box{};
    };
    std::vector<Part> parts{{node, 0}};
    for (std::size_t at = 0; at < parts.size(); ++at) {
        const NodeRef above = parts[at].node;
        if (above->isA("mesh")) continue;
        for (Node* child : above->children()) {
            if (!host::nodes::isIntermediate(scene(), *child)) parts.push_back({child->ref(), at});
        }
    }
    for (std::size_t at = parts.size(); at-- > 0;) {
        Part& part = parts[at];
        if (!part.node->isA("mesh")) {
            part.box = part.box.transformed(host::nodes::localMatrix(scene(), part.node));
        } else if (const host::nodes::MeshPtr mesh = host::nodes::meshOf(scene(), part.node)) {
            part.box = host::geometry::bounds(mesh->mesh);
        }
        if (at > 0) parts[part.parent].box.expand(part.box);
    }
    return parts.front().box;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnDagNode::MFnDagNode() = default;
MFnDagNode::~MFnDagNode() = default;

MFnDagNode::MFnDagNode(MObject& object, MStatus* status)
    : MFnDagNode(static_cast<const MObject&>(object), status) {}

MFnDagNode::MFnDagNode(const MObject& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFnDagNode::MFnDagNode(const MDagPath& object, MStatus* status) {
    report(status, MFnDagNode::setObject(object));
}

MFn::Type MFnDagNode::type() const {
    return MFn::kDagNode;
}

MStatus MFnDagNode::setObject(MObject& object) {
    return MFnDagNode::setObject(static_cast<const MObject&>(object));
}

MStatus MFnDagNode::setObject(const MObject& object) {
    hasPath_ = false;
    return MFnBase::setObject(object);
}

MStatus MFnDagNode::setObject(const MDagPath& path) {
    hasPath_ = false;
    // A function set of a shape also accepts a path to its transform.
    MObject object = path.node();
    if (!object.isNull() && !object.hasFn(type())) {
        MDagPath shape(path);
        if (shape.extendToShape()) object = shape.node();
    }
    const MStatus status = MFnBase::setObject(object);
    hasPath_ = status;
    return status;
}

MObject MFnDagNode::create(const MString& typeName, MObject& parent, MStatus* status) {
    return create(typeName, MString(), parent, status);
}

MObject MFnDagNode::create(const MString& typeName, const MString& name, MObject& parent, MStatus* status) {
    const host::graph::NodeType* nodeType = scene().types().find(text(typeName));
    const NodeRef above = ObjectAccess::node(parent);
    const bool isParentMissing = above == nullptr && !parent.isNull() && !ObjectAccess::isWorld(parent);
    const bool fits = nodeType != nullptr && !nodeType->isAbstract() && nodeType->isDag() && !isParentMissing;
    return answerIf(status, checkArguments(fits), [&]() -> Answer<MObject> {
        if (above != nullptr && !host::api::isTransform(*above)) return incompatible();
        if (nodeType->isA("transform") || above != nullptr) {
            object_ = ObjectAccess::object(scene().createNode(*nodeType, text(name), above.get()));
            return object_;
        }
        const NodeRef transform = scene().createNode(*scene().types().find("transform"), text(name));
        object_ = ObjectAccess::object(
            scene().createNode(*nodeType, host::nodes::shapeNameFor(transform->name()), transform.get()));
        return ObjectAccess::object(transform);
    });
}

unsigned int MFnDagNode::parentCount(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef&) { return 1U; });
}

MObject MFnDagNode::parent(unsigned int index, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MObject> {
        if (index > 0) return noElement();
        return host::api::parentObject(*node);
    });
}

unsigned int MFnDagNode::childCount(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return static_cast<unsigned int>(node->children().size()); });
}

MObject MFnDagNode::child(unsigned int index, MStatus* status) const {
    return ObjectAccess::object(
        answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<NodeRef> {
            if (index >= node->children().size()) return noElement();
            return node->children()[index]->ref();
        }));
}

bool MFnDagNode::hasParent(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [&](const NodeRef& own) { return host::api::parentObject(*own) == node; });
}

bool MFnDagNode::hasChild(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& own) {
        const NodeRef other = ObjectAccess::node(node);
        return other != nullptr && other->parent() == own.get();
    });
}

bool MFnDagNode::isChildOf(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& own) {
        const NodeRef other = ObjectAccess::node(node);
        for (const Node* at = own->parent(); at != nullptr && other != nullptr; at = at->parent()) {
            if (at == other.get()) return true;
        }
        return false;
    });
}

bool MFnDagNode::isParentOf(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef&) {
        MStatus attached;
        const MFnDagNode other(node, &attached);
        return attached && other.isChildOf(object_);
    });
}

MStatus MFnDagNode::getPath(MDagPath& path) const {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    path = PathAccess::path(node);
    return MStatus::kSuccess;
}

MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const {
    paths.clear();
    MDagPath path;
    const MStatus status = getPath(path);
    if (status) paths.append(path);
    return status;
}

MDagPath MFnDagNode::dagPath(MStatus* status) const {
    MDagPath path;
    report(status, hasPath_ ? getPath(path) : MStatus(MStatus::kFailure));
    return path;
}

MString MFnDagNode::fullPathName(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return string(scene().fullPath(*node)); });
}

MString MFnDagNode::partialPathName(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return string(scene().uniqueName(*node)); });
}

MMatrix MFnDagNode::transformationMatrix(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& node) {
        return host::api::toMatrix(host::nodes::localMatrix(scene(), node));
    });
}

bool MFnDagNode::isIntermediateObject(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return host::nodes::isIntermediate(scene(), *node); });
}

MStatus MFnDagNode::setIntermediateObject(bool state) {
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    host::nodes::setIntermediate(scene(), node, state);
    return MStatus::kSuccess;
}

MBoundingBox MFnDagNode::boundingBox(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& node) {
        const host::geometry::BoundingBox box = boxOf(node);
        if (box.empty) return MBoundingBox();
        return MBoundingBox(host::api::toPoint(box.min), host::api::toPoint(box.max));
    });
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
