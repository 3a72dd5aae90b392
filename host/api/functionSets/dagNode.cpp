#include <maya/MBoundingBox.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MMatrix.h>

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

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
    // Each node is visited before and after what is below it. So hierarchies may be of any depth, and what is
    // there several times is measured once.
    struct Part {
        host::geometry::BoundingBox box{};
        bool isDone = false;
    };
    std::unordered_map<const Node*, Part> parts;
    std::vector<Node*> ahead{node.get()};
    const auto isPart = [](const Node& child) { return !host::nodes::isIntermediate(scene(), child); };
    while (!ahead.empty()) {
        Node& at = *ahead.back();
        const auto [entry, isNew] = parts.try_emplace(&at);
        Part& part = entry->second;
        if (isNew && !at.isA("mesh")) {
            std::copy_if(at.children().begin(), at.children().end(), std::back_inserter(ahead),
                         [&](const Node* child) { return isPart(*child) && parts.count(child) == 0; });
            continue;
        }
        ahead.pop_back();
        if (std::exchange(part.isDone, true)) continue;
        if (at.isA("mesh")) {
            if (const host::nodes::MeshPtr mesh = host::nodes::meshOf(scene(), at.ref()))
                part.box = host::geometry::bounds(mesh->mesh);
            continue;
        }
        for (const Node* child : at.children()) {
            if (isPart(*child)) part.box.expand(parts.at(child).box);
        }
        part.box = part.box.transformed(host::nodes::localMatrix(scene(), at.ref()));
    }
    return parts.at(node.get()).box;
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
    return answer(status, ObjectAccess::node(object_), [](const NodeRef& node) {
        return static_cast<unsigned int>(node->otherParents().size() + 1);
    });
}

MObject MFnDagNode::parent(unsigned int index, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MObject> {
        if (index > node->otherParents().size()) return noElement();
        if (index > 0) return ObjectAccess::object(node->otherParents()[index - 1]->ref());
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
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& own) {
        const NodeRef other = ObjectAccess::node(node);
        return other != nullptr ? scene().hasParent(*own, other.get())
                                : own->parent() == nullptr && ObjectAccess::isWorld(node);
    });
}

bool MFnDagNode::hasChild(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& own) {
        const NodeRef other = ObjectAccess::node(node);
        return other != nullptr && scene().hasParent(*other, own.get());
    });
}

bool MFnDagNode::isChildOf(const MObject& node, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& own) {
        const NodeRef other = ObjectAccess::node(node);
        return other != nullptr && other != own && host::graph::isBelow(*own, *other);
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
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    host::api::appendPaths(node, paths);
    return MStatus::kSuccess;
}

bool MFnDagNode::isInstanced(bool indirect, MStatus* status) const {
    return instanceCount(indirect, status) > 1;
}

unsigned int MFnDagNode::instanceCount(bool total, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) {
        return static_cast<unsigned int>(total ? host::graph::pathCount(*node)
                                               : node->otherParents().size() + 1);
    });
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
