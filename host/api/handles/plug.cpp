// MPlug without its values (plugValues.cpp).

#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/plugAccess.h"
#include "api/handles/session.h"

using host::api::answer;
using host::api::answerIf;
using host::api::incompatible;
using host::api::missingObject;
using host::api::noElement;
using host::api::ObjectAccess;
using host::api::PlugAccess;
using host::api::scene;
using host::api::succeeded;
using host::graph::Attribute;
using host::graph::Plug;

namespace host::api {

namespace {

/// One step of an attribute path: "vlist[0]".
void appendPart(std::string& text, const Plug& place, const Attribute& part, bool longNames) {
    if (!text.empty()) text += '.';
    text += longNames ? part.longName() : part.shortName();
    const bool isLeaf = &part == &place.attribute();
    if (!part.isArray() || (isLeaf && !place.isElement())) return;
    text += '[';
    text += std::to_string(place.key().indices[static_cast<std::size_t>(part.arrayDepth() - 1)]);
    text += ']';
}

std::string attributeText(const Plug& place, bool full, bool longNames) {
    std::string text;
    for (const Attribute* part : place.attribute().path()) {
        if (full || part->isArray() || part == &place.attribute()) appendPart(text, place, *part, longNames);
    }
    return text;
}

/// The elements of an array plug that are connected, or have a connection below them.
std::set<int> connectedElements(const Plug& array) {
    std::set<int> result;
    const auto depth = static_cast<std::size_t>(array.attribute().arrayDepth() - 1);
    for (const graph::Connection& connection : scene().connectionsBelow(array)) {
        for (const Plug* end : {&connection.source, &connection.destination}) {
            const auto& path = end->attribute().path();
            const bool isBelow = end->node() == array.node() && end->key().depth > depth &&
                                 std::find(path.begin(), path.end(), &array.attribute()) != path.end();
            if (isBelow) result.insert(end->key().indices[depth]);
        }
    }
    return result;
}

/// Whether a plug is one array: all indices above it are known.
bool isOneArray(const Plug& place) {
    return place.isArray() && place.isFullyIndexed();
}

bool isChildPlace(const Plug& place) {
    return !place.isElement() && place.attribute().parent() != nullptr;
}

/// Success if a place is in the scene and fits.
template <typename Fits>
MStatus checkPlace(const Plug& place, Fits fits) {
    if (!isUsable(place)) return missingObject();
    return std::invoke(fits, place) ? MStatus(MStatus::kSuccess) : incompatible();
}

/// The place of a plug; null if it is not in the scene.
const Plug* usable(const MPlug& plug) {
    const Plug& place = PlugAccess::place(plug);
    return isUsable(place) ? &place : nullptr;
}

}  // namespace

}  // namespace host::api

OPENMAYA_MAJOR_NAMESPACE_OPEN

using host::api::checkPlace;
using host::api::isChildPlace;
using host::api::isOneArray;
using host::api::isUsable;
using host::api::usable;

MPlug::MPlug() {
    new (place_) Plug();
}

MPlug::MPlug(const MPlug& other) : moment_(other.moment_), isNetworked_(other.isNetworked_) {
    new (place_) Plug(PlugAccess::held(other));
}

MPlug::MPlug(const MObject& node, const MObject& attribute) : MPlug() {
    const host::graph::NodeRef owner = ObjectAccess::node(node);
    const Attribute* wanted = ObjectAccess::attribute(attribute);
    if (owner == nullptr || wanted == nullptr || owner->findAttribute(wanted->longName()) != wanted) return;
    *this = PlugAccess::plug(owner->plug(*wanted));
}

MPlug::~MPlug() {
    PlugAccess::held(*this).~Plug();
}

MPlug& MPlug::operator=(const MPlug& other) {
    PlugAccess::held(*this) = PlugAccess::held(other);
    moment_ = other.moment_;
    isNetworked_ = other.isNetworked_;
    return *this;
}

bool MPlug::operator==(const MPlug& other) const {
    return PlugAccess::place(*this) == PlugAccess::place(other);
}

bool MPlug::operator==(const MObject& attribute) const {
    const Plug& place = PlugAccess::place(*this);
    return place && &place.attribute() == ObjectAccess::attribute(attribute);
}

bool MPlug::operator!=(const MPlug& other) const {
    return !(*this == other);
}

bool MPlug::operator!=(const MObject& attribute) const {
    return !(*this == attribute);
}

MObject MPlug::attribute(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return ObjectAccess::object(place.node(), place.attribute()); });
}

MObject MPlug::node(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return ObjectAccess::object(place.node()); });
}

MString MPlug::name(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return host::api::string(scene().plugName(place)); });
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool useAlias, bool useFullAttributePath,
                           bool useLongNames, MStatus* status) const {
    return answer(status, usable(*this), [&](const Plug& place) {
        std::string text = useAlias ? place.node()->alias(place.key()) : std::string();
        if (text.empty()) text = host::api::attributeText(place, useFullAttributePath, useLongNames);
        if (includeNodeName) text.insert(0, scene().uniqueName(*place.node()) + '.');
        return host::api::string(text);
    });
}

bool MPlug::isNull(MStatus* status) const {
    return succeeded(status, !PlugAccess::place(*this));
}

bool MPlug::isArray(MStatus* status) const {
    return answer(status, usable(*this), [](const Plug& place) { return place.isArray(); });
}

bool MPlug::isElement(MStatus* status) const {
    return answer(status, usable(*this), [](const Plug& place) { return place.isElement(); });
}

bool MPlug::isCompound(MStatus* status) const {
    return answer(status, usable(*this), [](const Plug& place) { return place.isCompound(); });
}

bool MPlug::isChild(MStatus* status) const {
    return answer(status, usable(*this), isChildPlace);
}

bool MPlug::isDynamic(MStatus* status) const {
    return answer(status, usable(*this), [](const Plug& place) { return place.attribute().isDynamic(); });
}

bool MPlug::isLocked(MStatus* status) const {
    return answer(status, usable(*this), host::api::isLocked);
}

bool MPlug::isKeyable(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return place.node()->state(place.key()).isKeyable; });
}

MStatus MPlug::setLocked(bool locked) {
    const Plug& place = PlugAccess::place(*this);
    if (!isUsable(place)) return missingObject();
    host::graph::PlugState state = place.node()->state(place.key());
    state.isLocked = locked;
    scene().setState(place, state);
    return MStatus::kSuccess;
}

MStatus MPlug::setKeyable(bool keyable) {
    const Plug& place = PlugAccess::place(*this);
    if (!isUsable(place)) return missingObject();
    host::graph::PlugState state = place.node()->state(place.key());
    state.isKeyable = keyable;
    scene().setState(place, state);
    return MStatus::kSuccess;
}

unsigned int MPlug::numElements(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, isOneArray),
                    [&] { return static_cast<unsigned int>(scene().elementCount(place)); });
}

// Only writing and connecting make elements, so evaluating never adds one.
unsigned int MPlug::evaluateNumElements(MStatus* status) {
    return numElements(status);
}

unsigned int MPlug::numChildren(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, &Plug::isCompound),
                    [&] { return static_cast<unsigned int>(place.attribute().children().size()); });
}

unsigned int MPlug::numConnectedElements(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, &Plug::isArray),
                    [&] { return static_cast<unsigned int>(host::api::connectedElements(place).size()); });
}

unsigned int MPlug::numConnectedChildren(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, &Plug::isCompound), [&] {
        unsigned int count = 0;
        for (const auto& child : place.attribute().children()) {
            if (!scene().connectionsBelow(place.child(*child)).empty()) ++count;
        }
        return count;
    });
}

unsigned int MPlug::logicalIndex(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, &Plug::isElement),
                    [&] { return static_cast<unsigned int>(place.logicalIndex()); });
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) {
    indices.clear();
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, isOneArray), [&] {
        const std::vector<int> existing = scene().elements(place);
        const auto count = static_cast<unsigned int>(existing.size());
        indices = MIntArray(existing.data(), count);
        return count;
    });
}

MStatus MPlug::selectAncestorLogicalIndex(unsigned int index, const MObject& attribute) {
    const Plug& place = PlugAccess::place(*this);
    if (!isUsable(place)) return missingObject();
    const Attribute* wanted = ObjectAccess::attribute(attribute);
    const Attribute* nearest = nullptr;
    for (const Attribute* part : place.attribute().path()) {
        const bool isIndexed = part->isArray() && part->arrayDepth() <= place.key().depth;
        if (isIndexed && (wanted == nullptr || part == wanted)) nearest = part;
    }
    if (nearest == nullptr) return incompatible();
    host::graph::PlugKey key = place.key();
    key.indices[static_cast<std::size_t>(nearest->arrayDepth() - 1)] = static_cast<int>(index);
    *this = PlugAccess::plug(Plug(place.node(), key));
    return MStatus::kSuccess;
}

MPlug MPlug::elementByLogicalIndex(unsigned int index, MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    const auto hasElement = [&](const Plug& array) {
        return array.isArray() && static_cast<int>(index) >= 0;
    };
    return answerIf(status, checkPlace(place, hasElement),
                    [&] { return PlugAccess::plug(place.element(static_cast<int>(index))); });
}

MPlug MPlug::elementByPhysicalIndex(unsigned int index, MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    MStatus found = checkPlace(place, isOneArray);
    const int logical = found ? scene().elementAt(place, static_cast<int>(index)) : -1;
    if (found && logical < 0) found = noElement();
    return answerIf(status, found, [&] { return PlugAccess::plug(place.element(logical)); });
}

MPlug MPlug::connectionByPhysicalIndex(unsigned int index, MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    MStatus found = checkPlace(place, &Plug::isArray);
    const std::set<int> connected = found ? host::api::connectedElements(place) : std::set<int>();
    if (found && index >= connected.size()) found = noElement();
    return answerIf(status, found, [&] {
        const int logical = *std::next(connected.begin(), static_cast<std::ptrdiff_t>(index));
        return PlugAccess::plug(place.element(logical), true);
    });
}

MPlug MPlug::array(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, &Plug::isElement),
                    [&] { return PlugAccess::plug(place.array()); });
}

MPlug MPlug::parent(MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    return answerIf(status, checkPlace(place, isChildPlace),
                    [&] { return PlugAccess::plug(place.parent()); });
}

MPlug MPlug::child(unsigned int index, MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    MStatus found =
        checkPlace(place, [](const Plug& compound) { return compound.isCompound() && !compound.isArray(); });
    if (found && index >= place.attribute().children().size()) found = noElement();
    return answerIf(status, found, [&] { return PlugAccess::plug(place.child(static_cast<int>(index))); });
}

MPlug MPlug::child(MObject& attribute, MStatus* status) const {
    const Plug& place = PlugAccess::place(*this);
    const Attribute* wanted = ObjectAccess::attribute(attribute);
    const auto hasChild = [&](const Plug& compound) {
        return wanted != nullptr && wanted->parent() == &compound.attribute() && !compound.isArray();
    };
    return answerIf(status, checkPlace(place, hasChild),
                    [&] { return PlugAccess::plug(place.child(*wanted)); });
}

bool MPlug::isConnected(MStatus* status) const {
    return isDestination(status) || isSource(status);
}

bool MPlug::isSource(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return place.node()->outgoing().count(place.key()) > 0; });
}

bool MPlug::isDestination(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return place.node()->incoming().count(place.key()) > 0; });
}

bool MPlug::connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* status) const {
    array.clear();
    return answer(status, usable(*this), [&](const Plug& place) {
        if (asDst) {
            if (Plug source = scene().source(place)) array.append(PlugAccess::plug(std::move(source), true));
        }
        if (asSrc) {
            for (Plug& destination : scene().destinations(place))
                array.append(PlugAccess::plug(std::move(destination), true));
        }
        return array.length() > 0;
    });
}

MPlug MPlug::source(MStatus* status) const {
    return answer(status, usable(*this),
                  [](const Plug& place) { return PlugAccess::plug(scene().source(place), true); });
}

bool MPlug::destinations(MPlugArray& plugs, MStatus* status) const {
    return connectedTo(plugs, false, true, status);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
