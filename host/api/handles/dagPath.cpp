#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MMatrix.h>

#include <algorithm>

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
using host::graph::childOf;
using host::graph::fullPath;
using host::graph::Instance;
using host::graph::Node;
using host::graph::NodeRef;
using host::graph::shortPaths;
using host::graph::upwards;

namespace host::api {

MDagPath PathAccess::path(const NodeRef& node, std::size_t instance) {
    MDagPath result;
    result.node_ = ObjectAccess::object(node);
    result.instance_ = static_cast<unsigned int>(instance);
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

void appendPaths(const NodeRef& node, MDagPathArray& paths) {
    const std::size_t count = std::min(graph::pathCount(*node), graph::kMaxPaths);
    for (std::size_t number = 0; number < count; ++number)
        paths.append(PathAccess::path(node, number));
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
    return node_ == other.node_ && instance_ == other.instance_;
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
    if (status) host::api::appendPaths(PathAccess::node(path), paths);
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
        answer(status, PathAccess::node(*this), [&](const NodeRef& node) -> Answer<NodeRef> {
            if (host::api::isTransform(*node)) return node;
            const std::vector<Instance> path = upwards(PathAccess::instance(*this));
            if (path.size() < 2) return incompatible();
            return path[1].node->ref();
        }));
}

unsigned int MDagPath::length(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef&) {
        return static_cast<unsigned int>(upwards(PathAccess::instance(*this)).size());
    });
}

MStatus MDagPath::extendToShape() {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    if (!host::api::isTransform(*node)) return MStatus::kSuccess;
    const NodeRef shape = scene().shapeOf(node);
    if (shape == nullptr) return incompatible();
    *this = PathAccess::path(childOf(PathAccess::instance(*this), *shape));
    return MStatus::kSuccess;
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int index) {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    const std::vector<NodeRef> shapes = shapesBelow(*node);
    if (index >= shapes.size()) return noElement();
    *this = PathAccess::path(childOf(PathAccess::instance(*this), *shapes[index]));
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
    if (node == nullptr ? next->parent() != nullptr : !scene().hasParent(*next, node.get()))
        return incompatible();
    *this = PathAccess::path(childOf({node.get(), instance_}, *next));
    return MStatus::kSuccess;
}

MStatus MDagPath::pop(unsigned int count) {
    const NodeRef node = PathAccess::node(*this);
    if (node == nullptr) return missingObject();
    if (count > length()) return MStatus::kInvalidParameter;
    const std::vector<Instance> path = upwards(PathAccess::instance(*this));
    *this = count < path.size() ? PathAccess::path(path[count]) : MDagPath();
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
    return answer(status, PathAccess::node(*this), [&](const NodeRef& node) {
        return host::api::toMatrix(host::nodes::worldMatrix(scene(), node, instance_));
    });
}

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef& node) {
        return host::api::toMatrix(host::nodes::parentMatrix(scene(), node, instance_));
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
                  [&](const NodeRef&) { return string(fullPath(PathAccess::instance(*this))); });
}

MString MDagPath::partialPathName(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef& node) {
        if (instance_ == 0) return string(scene().uniqueName(*node));
        const std::vector<std::string> names = shortPaths(scene(), *node);
        return instance_ < names.size() ? string(names[instance_]) : MString();
    });
}

bool MDagPath::isInstanced(MStatus* status) const {
    return answer(status, PathAccess::node(*this),
                  [](const NodeRef& node) { return host::graph::isInstanced(*node); });
}

unsigned int MDagPath::instanceNumber(MStatus* status) const {
    return answer(status, PathAccess::node(*this), [&](const NodeRef&) { return instance_; });
}

MStatus MDagPath::set(const MDagPath& other) {
    *this = other;
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
