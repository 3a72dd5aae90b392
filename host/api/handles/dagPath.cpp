#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MMatrix.h>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/dag.h"
#include "api/handles/objectAccess.h"
#include "api/handles/pathAccess.h"
#include "api/handles/session.h"
#include "nodes/transformNode.h"

using host::api::answer;
using host::api::Answer;
using host::api::incompatible;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::PathAccess;
using host::api::scene;
using host::api::shapesBelow;
using host::api::string;
using host::api::succeeded;
using host::graph::Node;
using host::graph::NodeRef;

namespace host::api {

MDagPath PathAccess::path(const NodeRef& node) {
    MDagPath result;
    result.node_ = ObjectAccess::object(node);
    return result;
}

NodeRef PathAccess::node(const MDagPath& path) {
    return ObjectAccess::node(path.node_);
}

bool isTransform(const Node& node) {
    return node.isA("transform");
}

std::vector<NodeRef> shapesBelow(const Node& node) {
    std::vector<NodeRef> shapes;
    for (Node* child : node.children()) {
        if (!isTransform(*child)) shapes.push_back(child->ref());
    }
    return shapes;
}

MObject parentObject(const Node& node) {
    return node.parent() != nullptr ? ObjectAccess::object(node.parent()->ref()) : ObjectAccess::world();
}

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

MDagPath::MDagPath() = default;
MDagPath::MDagPath(const MDagPath& other) = default;
MDagPath::~MDagPath() = default;
MDagPath& MDagPath::operator=(const MDagPath& other) = default;

bool MDagPath::operator==(const MDagPath& other) const {
    return node_ == other.node_;
}

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path) {
    const NodeRef found = ObjectAccess::node(node);
    if (found == nullptr) return missingObject();
    if (!found->type().isDag()) return incompatible();
    path = PathAccess::path(found);
    return MStatus::kSuccess;
}

MStatus MDagPath::getAllPathsTo(const MObject& node, MDagPathArray& paths) {
    paths.clear();
    MDagPath path;
    const MStatus status = getAPathTo(node, path);
    if (status) paths.append(path);
    return status;
}

bool MDagPath::isValid(MStatus* status) const {
    return succeeded(status, PathAccess::node(*this) != nullptr);
}

bool MDagPath::hasFn(MFn::Type type, MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef&) { return node_.hasFn(type); });
}

MFn::Type MDagPath::apiType(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef&) { return node_.apiType(); });
}

MObject MDagPath::node(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef&) { return node_; });
}

MObject MDagPath::transform(MStatus* status) const {
    return ObjectAccess::object(
        answer(status, PathAccess::node(*this), [](const NodeRef& node) -> Answer<NodeRef> {
            if (host::api::isTransform(*node)) return node;
            if (node->parent() == nullptr) return incompatible();
            return node->parent()->ref();
        }));
}

unsigned int MDagPath::length(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [](const NodeRef& node) {
        unsigned int count = 0;
        for (const Node* at = node.get(); at != nullptr; at = at->parent())
            ++count;
        return count;
    });
}

MStatus MDagPath::extendToShape() {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    if (!host::api::isTransform(*node)) return MStatus::kSuccess;
    const NodeRef shape = scene().shapeOf(node);
    if (shape == nullptr) return incompatible();
    node_ = ObjectAccess::object(shape);
    return MStatus::kSuccess;
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int index) {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    const std::vector<NodeRef> shapes = shapesBelow(*node);
    if (index >= shapes.size()) return noElement();
    node_ = ObjectAccess::object(shapes[index]);
    return MStatus::kSuccess;
}

MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    count = static_cast<unsigned int>(shapesBelow(*node).size());
    return MStatus::kSuccess;
}

MStatus MDagPath::push(const MObject& child) {
    const NodeRef node = PathAccess::node(*this);
    const NodeRef next = ObjectAccess::node(child);
    if (next == nullptr || !next->type().isDag()) return MStatus::kInvalidParameter;
    if (next->parent() != node.get()) return incompatible();
    node_ = child;
    return MStatus::kSuccess;
}

MStatus MDagPath::pop(unsigned int count) {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    if (count > length()) return MStatus::kInvalidParameter;
    const Node* at = node.get();
    for (unsigned int k = 0; k < count; ++k)
        at = at->parent();
    node_ = at != nullptr ? ObjectAccess::object(const_cast<Node*>(at)->ref()) : MObject();
    return MStatus::kSuccess;
}

unsigned int MDagPath::childCount(MStatus* status) const {
    return answer(status, PathAccess::node(*this),
                  [](const NodeRef& node) { return static_cast<unsigned int>(node->children().size()); });
}

MObject MDagPath::child(unsigned int index, MStatus* status) const {
    return ObjectAccess::object(
        answer(status, PathAccess::node(*this), [&](const NodeRef& node) -> Answer<NodeRef> {
            if (index >= node->children().size()) return noElement();
            return node->children()[index]->ref();
        }));
}

MMatrix MDagPath::inclusiveMatrix(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [](const NodeRef& node) {
        return host::api::toMatrix(host::nodes::worldMatrix(scene(), node));
    });
}

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [](const NodeRef& node) {
        return host::api::toMatrix(host::nodes::parentMatrix(scene(), node));
    });
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* status) const {
    return inclusiveMatrix(status).inverse();
}

MMatrix MDagPath::exclusiveMatrixInverse(MStatus* status) const {
    return exclusiveMatrix(status).inverse();
}

MString MDagPath::fullPathName(MStatus* status) const {
    return answer(status, PathAccess::node(*this),
                  [](const NodeRef& node) { return string(scene().fullPath(*node)); });
}

MString MDagPath::partialPathName(MStatus* status) const {
    return answer(status, PathAccess::node(*this),
                  [](const NodeRef& node) { return string(scene().uniqueName(*node)); });
}

bool MDagPath::isInstanced(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [](const NodeRef&) { return false; });
}

unsigned int MDagPath::instanceNumber(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [](const NodeRef&) { return 0U; });
}

MStatus MDagPath::set(const MDagPath& other) {
    *this = other;
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
