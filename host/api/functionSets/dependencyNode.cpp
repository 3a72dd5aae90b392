#include <maya/MFnDependencyNode.h>
#include <maya/MPlugArray.h>
#include <maya/MStringArray.h>

#include <string>
#include <utility>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/plugAccess.h"
#include "api/handles/session.h"
#include "graph/names.h"

using host::api::answer;
using host::api::Answer;
using host::api::answerIf;
using host::api::checkArguments;
using host::api::incompatible;
using host::api::missingObject;
using host::api::ObjectAccess;
using host::api::PlugAccess;
using host::api::report;
using host::api::scene;
using host::api::string;
using host::api::text;
using host::graph::Attribute;
using host::graph::NodeRef;
using host::graph::Plug;

namespace {

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// A node name has letters, digits, underscores and the colons of namespaces. Any other character becomes an
/// underscore.
std::string legalName(const std::string& wanted) {
    std::string name = scene().wholeName(wanted);
    for (char& c : name) {
        if (!isNameCharacter(c) && c != ':') c = '_';
    }
    if (!name.empty() && name.front() >= '0' && name.front() <= '9') name.insert(0, 1, '_');
    return name;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnDependencyNode::MFnDependencyNode() = default;
MFnDependencyNode::~MFnDependencyNode() = default;

MFnDependencyNode::MFnDependencyNode(MObject& object, MStatus* status)
    : MFnDependencyNode(static_cast<const MObject&>(object), status) {}

MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* status) {
    report(status, MFnBase::setObject(object));
}

MFn::Type MFnDependencyNode::type() const {
    return MFn::kDependencyNode;
}

MObject MFnDependencyNode::create(const MString& typeName, MStatus* status) {
    return create(typeName, MString(), status);
}

MObject MFnDependencyNode::create(const MString& typeName, const MString& name, MStatus* status) {
    const host::graph::NodeType* nodeType = scene().types().find(text(typeName));
    const bool fits = nodeType != nullptr && !nodeType->isAbstract() && !nodeType->isDag();
    return answerIf(status, checkArguments(fits), [&] {
        object_ = ObjectAccess::object(scene().createNode(*nodeType, legalName(text(name))));
        return object_;
    });
}

MString MFnDependencyNode::typeName(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return string(node->type().name()); });
}

MString MFnDependencyNode::name(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return string(node->name()); });
}

MString MFnDependencyNode::absoluteName(MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [](const NodeRef& node) { return string(":" + node->name()); });
}

bool MFnDependencyNode::hasUniqueName() const {
    const NodeRef node = ObjectAccess::node(object_);
    return node != nullptr && scene().nodesNamed(node->name()).size() == 1;
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status) {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MString> {
        const std::string wanted = legalName(text(name));
        if (wanted.empty()) return MStatus::kInvalidParameter;
        return string(scene().rename(*node, wanted));
    });
}

MStatus MFnDependencyNode::getConnections(MPlugArray& array) const {
    array.clear();
    const NodeRef node = ObjectAccess::node(object_);
    if (node == nullptr) return missingObject();
    for (const auto& [key, link] : node->incoming())
        array.append(PlugAccess::plug(Plug(node, key), true));
    for (const auto& [key, links] : node->outgoing()) {
        if (node->incoming().count(key) == 0) array.append(PlugAccess::plug(Plug(node, key), true));
    }
    return MStatus::kSuccess;
}

MObject MFnDependencyNode::attribute(const MString& attributeName, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MObject> {
        const Attribute* found = node->findAttribute(text(attributeName));
        if (found == nullptr) return incompatible();
        return ObjectAccess::object(node, *found);
    });
}

MFnDependencyNode::MAttrClass MFnDependencyNode::attributeClass(const MObject& attribute,
                                                                MStatus* status) const {
    return answer(
        status, ObjectAccess::node(object_),
        [&](const NodeRef& node) -> Answer<MFnDependencyNode::MAttrClass> {
            const Attribute* asked = ObjectAccess::attribute(attribute);
            if (asked == nullptr || node->findAttribute(asked->longName()) != asked) return incompatible();
            return asked->isDynamic() ? kLocalDynamicAttr : kNormalAttr;
        },
        kInvalidAttr);
}

bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_),
                  [&](const NodeRef& node) { return node->findAttribute(text(name)) != nullptr; });
}

// A networked plug and a free copy read and write the same place. They differ in how long they last.
MPlug MFnDependencyNode::findPlug(const MString& attributeName, bool wantNetworkedPlug,
                                  MStatus* status) const {
    Plug found = answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<Plug> {
        Plug place = node->plug(text(attributeName));
        if (!place) return incompatible();
        return place;
    });
    return PlugAccess::plug(std::move(found), wantNetworkedPlug);
}

MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool wantNetworkedPlug, MStatus* status) const {
    Plug found = answer(status, ObjectAccess::node(object_), [&](const NodeRef&) -> Answer<Plug> {
        const MPlug plug(object_, attribute);
        if (plug.isNull()) return incompatible();
        return PlugAccess::place(plug);
    });
    return PlugAccess::plug(std::move(found), wantNetworkedPlug);
}

bool MFnDependencyNode::setAlias(const MString& alias, const MString&, const MPlug& plug, bool add,
                                 MStatus* status) {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<bool> {
        const Plug& place = PlugAccess::place(plug);
        const std::string wanted = text(alias);
        if (!place || place.node() != node) return incompatible();
        MObject ignored;
        const bool isFree = !findAlias(alias, ignored) && node->findAttribute(wanted) == nullptr;
        const bool isValid =
            add ? host::graph::isLegalName(wanted) && isFree : node->alias(place.key()) == wanted;
        if (!isValid) return MStatus::kInvalidParameter;
        scene().setAlias(place, add ? wanted : std::string());
        return true;
    });
}

bool MFnDependencyNode::findAlias(const MString& alias, MObject& attribute, MStatus* status) const {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) {
        const host::graph::PlugKey* key = node->aliases().find(text(alias));
        if (key == nullptr) return false;
        attribute = ObjectAccess::object(node, *key->attribute);
        return true;
    });
}

bool MFnDependencyNode::getAliasList(MStringArray& strings, MStatus* status) {
    strings.clear();
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) {
        for (const auto& [name, key] : node->aliases()) {
            strings.append(string(name));
            strings.append(string(Plug(node, key).attributePath()));
        }
        return strings.length() > 0;
    });
}

MString MFnDependencyNode::plugsAlias(const MPlug& plug, MStatus* status) {
    return answer(status, ObjectAccess::node(object_), [&](const NodeRef& node) -> Answer<MString> {
        const Plug& place = PlugAccess::place(plug);
        if (!place || place.node() != node) return incompatible();
        return string(node->alias(place.key()));
    });
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
