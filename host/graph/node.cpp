#include "graph/node.h"

#include <algorithm>
#include <array>
#include <optional>

namespace host::graph {

namespace {

const Attribute* findBelow(const Attribute& attribute, std::string_view longOrShort) {
    if (attribute.longName() == longOrShort || attribute.shortName() == longOrShort) return &attribute;
    for (const auto& child : attribute.children()) {
        if (const Attribute* found = findBelow(*child, longOrShort)) return found;
    }
    return nullptr;
}

/// Where a walk down an attribute path ended: in a slot, or in the numbers of a flat element.
struct Place {
    const Slot* slot = nullptr;
    std::optional<double> number{};
};

Place locate(const std::vector<Slot>& slots, const PlugKey& key) {
    const auto& path = key.attribute->path();
    const auto root = static_cast<std::size_t>(path.front()->ordinal());
    if (root >= slots.size()) return {};
    const Slot* slot = &slots[root];
    for (std::size_t k = 0; k < path.size(); ++k) {
        const Attribute& attribute = *path[k];
        if (attribute.isArray()) {
            if (key.depth < attribute.arrayDepth()) return {slot, {}};
            const int index = key.indices[static_cast<std::size_t>(attribute.arrayDepth() - 1)];
            if (attribute.flatWidth() > 0) {
                const auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot->content);
                // Reading must not merge: commands read and write elements in turn.
                std::array<double, Attribute::kMaxFlatWidth> values{};
                if (numbers == nullptr || !(*numbers)->read(index, values.data())) return {};
                const int part = k + 1 < path.size() ? path[k + 1]->ordinal() : 0;
                return {nullptr, values[static_cast<std::size_t>(part)]};
            }
            const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&slot->content);
            slot = multi != nullptr ? static_cast<const ElementMulti&>(**multi).find(index) : nullptr;
            if (slot == nullptr) return {};
        }
        if (k + 1 == path.size()) break;
        const auto* children = std::get_if<std::unique_ptr<Slot::Children>>(&slot->content);
        if (children == nullptr) return {};
        slot = &(**children)[static_cast<std::size_t>(path[k + 1]->ordinal())];
    }
    return {slot, {}};
}

}  // namespace

Node::Node(const NodeType& type, std::string name, std::uint64_t id)
    : type_(type), name_(std::move(name)), id_(id), slots_(type.attributes().size()) {}

std::vector<const Attribute*> Node::attributes() const {
    std::vector<const Attribute*> result = type_.attributes();
    for (const auto& attribute : dynamic_)
        result.push_back(attribute.get());
    return result;
}

const Attribute* Node::findAttribute(std::string_view longOrShort) const {
    if (const Attribute* found = type_.find(longOrShort)) return found;
    for (const auto& attribute : dynamic_) {
        if (attribute == nullptr) continue;
        if (const Attribute* found = findBelow(*attribute, longOrShort)) return found;
    }
    return nullptr;
}

Plug Node::plug(std::string_view longOrShort) {
    const Attribute* attribute = findAttribute(longOrShort);
    return attribute != nullptr ? Plug(ref(), attribute) : Plug();
}

bool Node::hasIncoming(const Attribute& attribute) const {
    for (const Attribute* connected : incomingAttributes_) {
        for (const Attribute* at = &attribute; at != nullptr; at = at->parent()) {
            if (at == connected) return true;
        }
    }
    return false;
}

PlugState Node::state(const PlugKey& key) const {
    const auto found = states_.find(key);
    if (found != states_.end()) return found->second;
    PlugState state;
    state.isKeyable = key.attribute->spec().isKeyable;
    return state;
}

double Node::storedNumber(const PlugKey& key) const {
    const Place place = locate(slots_, key);
    if (place.number) return *place.number;
    if (place.slot != nullptr) {
        if (const auto* value = std::get_if<double>(&place.slot->content)) return *value;
    }
    return key.attribute->spec().defaultValue;
}

DataPtr Node::storedData(const PlugKey& key) const {
    const Place place = locate(slots_, key);
    if (place.slot != nullptr) {
        if (const auto* value = std::get_if<DataPtr>(&place.slot->content)) return *value;
    }
    return key.attribute->spec().defaultData;
}

const Slot* Node::slot(const PlugKey& key) const {
    return locate(slots_, key).slot;
}

Slot& Node::rootSlot(int ordinal) {
    const auto at = static_cast<std::size_t>(ordinal);
    if (at >= slots_.size()) slots_.resize(at + 1);
    return slots_[at];
}

Slot& Node::obtainSlot(const PlugKey& key, PlugKey& created) {
    const auto& path = key.attribute->path();
    Slot* slot = &rootSlot(path.front()->ordinal());
    for (std::size_t k = 0; k < path.size(); ++k) {
        const Attribute& attribute = *path[k];
        if (attribute.isArray()) {
            if (attribute.flatWidth() > 0) {
                if (slot->empty()) slot->content = std::make_unique<NumberMulti>(attribute.flatWidth());
                return *slot;
            }
            if (slot->empty()) slot->content = std::make_unique<ElementMulti>();
            if (key.depth < attribute.arrayDepth()) return *slot;
            bool isNew = false;
            const int index = key.indices[static_cast<std::size_t>(attribute.arrayDepth() - 1)];
            slot = &std::get<std::unique_ptr<ElementMulti>>(slot->content)->obtain(index, isNew);
            if (isNew && created.attribute == nullptr) {
                created.attribute = &attribute;
                created.depth = static_cast<std::uint8_t>(attribute.arrayDepth());
                std::copy_n(key.indices.begin(), attribute.arrayDepth(), created.indices.begin());
            }
        }
        if (k + 1 == path.size()) break;
        if (slot->empty()) slot->content = std::make_unique<Slot::Children>(attribute.children().size());
        auto& children = *std::get<std::unique_ptr<Slot::Children>>(slot->content);
        slot = &children[static_cast<std::size_t>(path[k + 1]->ordinal())];
    }
    return *slot;
}

}  // namespace host::graph
