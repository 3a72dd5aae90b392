#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <utility>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/pathAccess.h"
#include "api/handles/plugAccess.h"
#include "api/handles/selectionAccess.h"
#include "api/handles/session.h"
#include "graph/names.h"

using host::api::incompatible;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::PathAccess;
using host::api::PlugAccess;
using host::api::report;
using host::api::scene;
using host::api::succeeded;
using host::api::unknownObject;
using host::graph::NodeRef;
using host::graph::SelectionItem;

OPENMAYA_MAJOR_NAMESPACE_OPEN

struct MSelectionList::Items {
    std::vector<SelectionItem> list;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace host::api {

std::vector<SelectionItem>& SelectionAccess::items(MSelectionList& list) {
    return list.items_->list;
}

const std::vector<SelectionItem>& SelectionAccess::items(const MSelectionList& list) {
    return list.items_->list;
}

namespace {

std::vector<SelectionItem>::iterator findItem(std::vector<SelectionItem>& items,
                                              const SelectionItem& wanted) {
    return std::find_if(items.begin(), items.end(),
                        [&](const SelectionItem& item) { return item.isSameObject(wanted); });
}

void addItem(std::vector<SelectionItem>& items, SelectionItem item, bool merge) {
    const auto found = merge ? findItem(items, item) : items.end();
    if (found == items.end()) {
        items.push_back(std::move(item));
    } else if (item.component) {
        found->component->merge(*item.component);
    }
}

void removeItem(std::vector<SelectionItem>& items, const SelectionItem& item) {
    const auto found = findItem(items, item);
    if (found == items.end()) return;
    if (item.component) found->component->remove(*item.component);
    if (!item.component || found->component->empty()) items.erase(found);
}

void toggleItem(std::vector<SelectionItem>& items, const SelectionItem& item) {
    const auto found = findItem(items, item);
    if (found == items.end()) {
        items.push_back(item);
    } else if (!item.component) {
        items.erase(found);
    } else {
        found->component->toggle(*item.component);
        if (found->component->empty()) items.erase(found);
    }
}

void mergeItem(std::vector<SelectionItem>& items, const SelectionItem& item,
               MSelectionList::MergeStrategy strategy) {
    switch (strategy) {
        case MSelectionList::kMergeNormal:
            addItem(items, item, true);
            break;
        case MSelectionList::kXORWithList:
            toggleItem(items, item);
            break;
        case MSelectionList::kRemoveFromList:
            removeItem(items, item);
            break;
    }
}

/// The item of a path with a component. For a component on a transform, the object is its shape.
MStatus makeItem(const MDagPath& path, const MObject& component, SelectionItem& item) {
    item.node = PathAccess::node(path);
    if (item.node == nullptr) return unknownObject();
    const graph::Instance place = PathAccess::instance(path);
    item.path = place.number;
    if (component.isNull()) return MStatus::kSuccess;
    const graph::Component* elements = ObjectAccess::component(component);
    const NodeRef shape = scene().shapeOf(item.node);
    if (elements == nullptr || shape == nullptr) return incompatible();
    if (shape != item.node) item.path = graph::childOf(place, *shape).number;
    item.node = shape;
    item.component = *elements;
    return MStatus::kSuccess;
}

MStatus makeItem(const MObject& object, SelectionItem& item) {
    item.node = ObjectAccess::node(object);
    return item.node != nullptr ? MStatus(MStatus::kSuccess) : unknownObject();
}

MStatus makeItem(const MPlug& plug, SelectionItem& item) {
    const graph::Plug& place = PlugAccess::place(plug);
    if (!isUsable(place)) return unknownObject();
    item.node = place.node();
    item.plug = place;
    return MStatus::kSuccess;
}

void appendNames(MStringArray& strings, const SelectionItem& item) {
    if (!item.node->isAlive()) return;
    for (const std::string& name : graph::itemNames(scene(), item))
        strings.append(string(name));
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

MSelectionList::MSelectionList() : items_(std::make_unique<Items>()) {}
MSelectionList::MSelectionList(const MSelectionList& other)
    : items_(std::make_unique<Items>(*other.items_)) {}
MSelectionList::~MSelectionList() = default;

MSelectionList& MSelectionList::operator=(const MSelectionList& other) {
    items_->list = other.items_->list;
    return *this;
}

MStatus MSelectionList::clear() {
    items_->list.clear();
    return MStatus::kSuccess;
}

bool MSelectionList::isEmpty(MStatus* status) const {
    return succeeded(status, items_->list.empty());
}

unsigned int MSelectionList::length(MStatus* status) const {
    return succeeded(status, static_cast<unsigned int>(items_->list.size()));
}

MStatus MSelectionList::getDependNode(unsigned int index, MObject& node) const {
    if (index >= items_->list.size()) return noElement();
    const NodeRef& found = items_->list[index].node;
    if (!found->isAlive()) return host::api::missingObject();
    node = ObjectAccess::object(found);
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path) const {
    MObject component;
    return getDagPath(index, path, component);
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path, MObject& component) const {
    if (index >= items_->list.size()) return noElement();
    const SelectionItem& item = items_->list[index];
    if (!item.node->isAlive()) return host::api::missingObject();
    if (!item.node->type().isDag()) return incompatible();
    const bool isThere = item.path < host::graph::pathCount(*item.node);
    path = PathAccess::path(item.node, isThere ? item.path : 0);
    component = item.component ? ObjectAccess::object(*item.component) : MObject();
    return MStatus::kSuccess;
}

MStatus MSelectionList::getPlug(unsigned int index, MPlug& plug) const {
    if (index >= items_->list.size()) return noElement();
    const SelectionItem& item = items_->list[index];
    if (!item.node->isAlive()) return host::api::missingObject();
    if (!item.plug) return incompatible();
    plug = PlugAccess::plug(*item.plug);
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(MStringArray& strings) const {
    strings.clear();
    for (const SelectionItem& item : items_->list)
        host::api::appendNames(strings, item);
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(unsigned int index, MStringArray& strings) const {
    strings.clear();
    if (index >= items_->list.size()) return noElement();
    host::api::appendNames(strings, items_->list[index]);
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MString& matchString, bool) {
    host::graph::NameMatches matches = host::graph::findAll(scene(), host::api::text(matchString));
    if (matches.failure == host::graph::NameFailure::Ambiguous && scene().variants().addsEveryNamesake) {
        for (const NodeRef& node : host::graph::findNodes(scene(), host::api::text(matchString)))
            items_->list.push_back({node});
        return items_->list.empty() ? unknownObject() : MStatus(MStatus::kSuccess);
    }
    if (matches.failure != host::graph::NameFailure::None || matches.items.empty()) return unknownObject();
    for (SelectionItem& item : matches.items)
        items_->list.push_back(std::move(item));
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MObject& object, bool mergeWithExisting) {
    SelectionItem item;
    const MStatus status = host::api::makeItem(object, item);
    if (status) host::api::addItem(items_->list, std::move(item), mergeWithExisting);
    return status;
}

MStatus MSelectionList::add(const MDagPath& object, const MObject& component, bool mergeWithExisting) {
    SelectionItem item;
    const MStatus status = host::api::makeItem(object, component, item);
    if (status) host::api::addItem(items_->list, std::move(item), mergeWithExisting);
    return status;
}

MStatus MSelectionList::add(const MPlug& plug, bool mergeWithExisting) {
    SelectionItem item;
    const MStatus status = host::api::makeItem(plug, item);
    if (status) host::api::addItem(items_->list, std::move(item), mergeWithExisting);
    return status;
}

MStatus MSelectionList::remove(unsigned int index) {
    if (index >= items_->list.size()) return noElement();
    items_->list.erase(items_->list.begin() + static_cast<std::ptrdiff_t>(index));
    return MStatus::kSuccess;
}

MStatus MSelectionList::replace(unsigned int index, const MObject& object) {
    if (index >= items_->list.size()) return noElement();
    SelectionItem item;
    const MStatus status = host::api::makeItem(object, item);
    if (status) items_->list[index] = std::move(item);
    return status;
}

MStatus MSelectionList::replace(unsigned int index, const MDagPath& object, const MObject& component) {
    if (index >= items_->list.size()) return noElement();
    SelectionItem item;
    const MStatus status = host::api::makeItem(object, component, item);
    if (status) items_->list[index] = std::move(item);
    return status;
}

MStatus MSelectionList::replace(unsigned int index, const MPlug& plug) {
    if (index >= items_->list.size()) return noElement();
    SelectionItem item;
    const MStatus status = host::api::makeItem(plug, item);
    if (status) items_->list[index] = std::move(item);
    return status;
}

bool MSelectionList::hasItem(const MObject& object, MStatus* status) const {
    SelectionItem item;
    const MStatus made = host::api::makeItem(object, item);
    report(status, made);
    return made && host::api::findItem(items_->list, item) != items_->list.end();
}

bool MSelectionList::hasItem(const MDagPath& object, const MObject& component, MStatus* status) const {
    SelectionItem item;
    const MStatus made = host::api::makeItem(object, component, item);
    report(status, made);
    if (!made) return false;
    const auto found = host::api::findItem(items_->list, item);
    if (found == items_->list.end() || !item.component) return found != items_->list.end();
    host::graph::Component missing = *item.component;
    missing.remove(*found->component);
    return missing.empty();
}

MStatus MSelectionList::merge(const MSelectionList& other, MergeStrategy strategy) {
    // A list may be merged with itself.
    const std::vector<SelectionItem> added = other.items_->list;
    for (const SelectionItem& item : added)
        host::api::mergeItem(items_->list, item, strategy);
    return MStatus::kSuccess;
}

MStatus MSelectionList::merge(const MDagPath& object, const MObject& component, MergeStrategy strategy) {
    SelectionItem item;
    const MStatus status = host::api::makeItem(object, component, item);
    if (status) host::api::mergeItem(items_->list, item, strategy);
    return status;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
