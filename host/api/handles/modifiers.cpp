// MDGModifier and MDagModifier.

#include <maya/MDGModifier.h>
#include <maya/MDagModifier.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/dag.h"
#include "api/handles/modifierAccess.h"
#include "api/handles/objectAccess.h"
#include "api/handles/plugAccess.h"
#include "api/handles/session.h"
#include "graph/names.h"

using host::api::Answer;
using host::api::answerIf;
using host::api::checkArguments;
using host::api::incompatible;
using host::api::missingObject;
using host::api::ObjectAccess;
using host::api::PlugAccess;
using host::api::scene;
using host::api::text;
using host::graph::ChangeList;
using host::graph::Node;
using host::graph::NodeRef;
using host::graph::Plug;
using host::graph::RecordingScope;

namespace {

using Change = std::function<MStatus()>;

MStatus deleteNodes(const MObject& object, bool includeParents) {
    NodeRef node = ObjectAccess::node(object);
    if (node == nullptr) return missingObject();
    const Node* parent = node->parent();
    const bool isOnlyShape =
        parent != nullptr && !host::api::isTransform(*node) && parent->children().size() == 1;
    if (includeParents && isOnlyShape && scene().variants().deletesEmptyParents) node = node->parent()->ref();
    scene().deleteNodes({node});
    return MStatus::kSuccess;
}

MStatus connectPlugs(const MPlug& source, const MPlug& destination) {
    const Plug& from = PlugAccess::place(source);
    const Plug& to = PlugAccess::place(destination);
    if (!host::api::isUsable(from) || !host::api::isUsable(to)) return missingObject();
    if (to.attribute().isOutput() || from.isArray() || to.isArray() || scene().source(to))
        return incompatible();
    scene().connect(from, to);
    return MStatus::kSuccess;
}

MStatus disconnectPlugs(const MPlug& source, const MPlug& destination) {
    const Plug& from = PlugAccess::place(source);
    const Plug& to = PlugAccess::place(destination);
    if (!host::api::isUsable(from) || !host::api::isUsable(to)) return missingObject();
    if (scene().source(to) != from) return incompatible();
    scene().disconnect(to);
    return MStatus::kSuccess;
}

MStatus reparent(const MObject& object, const MObject& newParent) {
    const NodeRef node = ObjectAccess::node(object);
    const NodeRef parent = ObjectAccess::node(newParent);
    const bool isToWorld = newParent.isNull() || ObjectAccess::isWorld(newParent);
    if (node == nullptr || (parent == nullptr && !isToWorld)) return missingObject();
    if (!node->type().isDag()) return incompatible();
    if (parent == nullptr && !host::api::isTransform(*node)) return incompatible();
    if (parent != nullptr && (!host::api::isTransform(*parent) || host::graph::isBelow(*parent, *node)))
        return incompatible();
    scene().reparent(*node, parent.get());
    return MStatus::kSuccess;
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MDGModifier::Changes {
    std::vector<Change> pending;
    std::vector<std::unique_ptr<ChangeList>> done;
    bool isUndone = false;

    MStatus add(Change change) {
        pending.push_back(std::move(change));
        return MStatus::kSuccess;
    }

    template <typename Value>
    MStatus addValue(const MPlug& plug, const Value& value) {
        if (plug.isNull()) return missingObject();
        return add([plug, value] { return MPlug(plug).setValue(value); });
    }

    /// Makes a node at once, as a change that is already done.
    template <typename Maker>
    Answer<MObject> create(Maker maker) {
        if (isUndone) return MStatus::kFailure;
        auto list = std::make_unique<ChangeList>();
        const RecordingScope recording(scene(), list.get());
        const NodeRef node = maker();
        done.push_back(std::move(list));
        return ObjectAccess::object(node);
    }
};

MDGModifier::MDGModifier() : changes_(std::make_unique<Changes>()) {}
MDGModifier::~MDGModifier() = default;

MObject MDGModifier::createNode(const MString& type, MStatus* status) {
    const host::graph::NodeType* nodeType = scene().types().find(text(type));
    const bool fits = nodeType != nullptr && !nodeType->isAbstract() && !nodeType->isDag();
    return answerIf(status, checkArguments(fits),
                    [&] { return changes_->create([&] { return scene().createNode(*nodeType); }); });
}

MStatus MDGModifier::deleteNode(const MObject& node) {
    return deleteNode(node, true);
}

MStatus MDGModifier::deleteNode(const MObject& node, bool includeParents) {
    if (ObjectAccess::node(node) == nullptr) return missingObject();
    return changes_->add([node, includeParents] { return deleteNodes(node, includeParents); });
}

MStatus MDGModifier::renameNode(const MObject& node, const MString& newName) {
    if (ObjectAccess::node(node) == nullptr) return missingObject();
    if (!host::graph::isLegalName(text(newName))) return MStatus::kInvalidParameter;
    return changes_->add([node, name = text(newName)]() -> MStatus {
        const NodeRef renamed = ObjectAccess::node(node);
        if (renamed == nullptr) return missingObject();
        scene().rename(*renamed, name);
        return MStatus::kSuccess;
    });
}

MStatus MDGModifier::connect(const MPlug& source, const MPlug& destination) {
    if (source.isNull() || destination.isNull()) return missingObject();
    return changes_->add([source, destination] { return connectPlugs(source, destination); });
}

MStatus MDGModifier::disconnect(const MPlug& source, const MPlug& destination) {
    if (source.isNull() || destination.isNull()) return missingObject();
    return changes_->add([source, destination] { return disconnectPlugs(source, destination); });
}

MStatus MDGModifier::newPlugValue(const MPlug& plug, MObject& value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueBool(const MPlug& plug, bool value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueDouble(const MPlug& plug, double value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueFloat(const MPlug& plug, float value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueInt(const MPlug& plug, int value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueShort(const MPlug& plug, short value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::newPlugValueString(const MPlug& plug, const MString& value) {
    return changes_->addValue(plug, value);
}

MStatus MDGModifier::doIt() {
    if (changes_->isUndone) {
        for (const auto& list : changes_->done)
            list->redo(scene());
        changes_->isUndone = false;
    }
    auto list = std::make_unique<ChangeList>();
    const std::vector<Change> pending = std::move(changes_->pending);
    changes_->pending.clear();
    {
        const RecordingScope recording(scene(), list.get());
        for (const Change& change : pending) {
            const MStatus status = change();
            if (status) continue;
            list->undo(scene());
            return status;
        }
    }
    if (!list->empty()) changes_->done.push_back(std::move(list));
    return MStatus::kSuccess;
}

MStatus MDGModifier::undoIt() {
    if (changes_->isUndone) return MStatus::kSuccess;
    for (auto list = changes_->done.rbegin(); list != changes_->done.rend(); ++list)
        (*list)->undo(scene());
    changes_->isUndone = true;
    return MStatus::kSuccess;
}

MDagModifier::MDagModifier() = default;
MDagModifier::~MDagModifier() = default;

MObject MDagModifier::createNode(const MString& type, const MObject& parent, MStatus* status) {
    const host::graph::NodeType* nodeType = scene().types().find(text(type));
    const NodeRef above = ObjectAccess::node(parent);
    const bool hasParent = above != nullptr && host::api::isTransform(*above);
    const bool isAtTop = parent.isNull() || ObjectAccess::isWorld(parent);
    const bool fits = nodeType != nullptr && !nodeType->isAbstract() && nodeType->isDag() &&
                      (hasParent || (isAtTop && nodeType->isA("transform")));
    return answerIf(status, checkArguments(fits), [&] {
        return changes_->create([&] { return scene().createNode(*nodeType, {}, above.get()); });
    });
}

MStatus MDagModifier::reparentNode(const MObject& node, const MObject& newParent) {
    if (ObjectAccess::node(node) == nullptr) return missingObject();
    return changes_->add([node, newParent] { return reparent(node, newParent); });
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

void ModifierAccess::addDone(MDGModifier& modifier, std::unique_ptr<ChangeList> change) {
    modifier.changes_->done.push_back(std::move(change));
}

}  // namespace host::api
