#include "graph/node.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

#include "graph/scopedValue.h"

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

struct Node::Awaited {
    // What waits for a root attribute.
    static constexpr unsigned char kValues = 1;             // of the source
    static constexpr unsigned char kConnectedElements = 2;  // exist only through a connection

    std::unique_ptr<NodeSource> source;
    std::atomic<bool> isIntroduced{false};
    bool isBusy = false;                                    // the source is at work
    std::unique_ptr<std::atomic<unsigned char>[]> waiting;  // by ordinal
    std::size_t count = 0;                                  // of `waiting`
};

Node::Node(const NodeType& type, std::string name, std::uint64_t id)
    : type_(type), name_(std::move(name)), id_(id) {}

Node::~Node() = default;

void Node::leaveForGood() {
    isAlive_ = false;
    incoming_.clear();
    outgoing_.clear();
    children_.clear();
    parent_ = nullptr;
    otherParents_.clear();
    extension_.reset();
}

void Node::setSource(std::unique_ptr<NodeSource> source) {
    awaited_ = std::make_unique<Awaited>();
    awaited_->source = std::move(source);
}

namespace {

/// Sources are asked one at a time: a source may share its text with those of other nodes.
std::recursive_mutex& sourceMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

std::size_t rootOrdinal(const PlugKey& key) {
    return static_cast<std::size_t>(key.attribute->path().front()->ordinal());
}

}  // namespace

bool Node::isIntroduced() const {
    return awaited_ == nullptr || awaited_->isIntroduced.load(std::memory_order_acquire);
}

void Node::introduceNow() const {
    Awaited& awaited = *awaited_;
    if (awaited.isIntroduced.load(std::memory_order_acquire)) return;
    const std::lock_guard<std::recursive_mutex> lock(sourceMutex());
    // The source itself uses the node while it introduces it.
    if (awaited.isIntroduced.load(std::memory_order_relaxed) || awaited.isBusy) return;
    const ScopedValue<bool> busy(awaited.isBusy, true);
    NodeLoader loader(const_cast<Node&>(*this));
    awaited.source->introduce(loader);
    awaited.count = type_.attributes().size() + dynamic_.size();
    awaited.waiting = std::make_unique<std::atomic<unsigned char>[]>(awaited.count);
    for (std::size_t ordinal = 0; ordinal < awaited.count; ++ordinal)
        awaited.waiting[ordinal] =
            awaited.source->hasValues(static_cast<int>(ordinal)) ? Awaited::kValues : 0;
    const auto awaitElement = [&](const auto& entry) {
        if (entry.first.depth > 0) awaited.waiting[rootOrdinal(entry.first)] |= Awaited::kConnectedElements;
    };
    std::for_each(incoming_.begin(), incoming_.end(), awaitElement);
    std::for_each(outgoing_.begin(), outgoing_.end(), awaitElement);
    awaited.isIntroduced.store(true, std::memory_order_release);
}

void Node::loadNow(int ordinal) const {
    introduceNow();
    Awaited& awaited = *awaited_;
    if (static_cast<std::size_t>(ordinal) >= awaited.count) return;
    std::atomic<unsigned char>& waiting = awaited.waiting[static_cast<std::size_t>(ordinal)];
    if (waiting.load(std::memory_order_acquire) == 0) return;
    const std::lock_guard<std::recursive_mutex> lock(sourceMutex());
    const unsigned char what = waiting.load(std::memory_order_relaxed);
    if (what == 0 || awaited.isBusy) return;
    const ScopedValue<bool> busy(awaited.isBusy, true);
    Node& self = const_cast<Node&>(*this);
    NodeLoader loader(self);
    if ((what & Awaited::kValues) != 0) awaited.source->load(loader, ordinal);
    if ((what & Awaited::kConnectedElements) != 0) self.createConnectedElements(loader, ordinal);
    waiting.store(0, std::memory_order_release);
}

void Node::createConnectedElements(NodeLoader& loader, int ordinal) {
    const auto create = [&](const auto& entry) {
        const PlugKey& key = entry.first;
        if (key.depth > 0 && rootOrdinal(key) == static_cast<std::size_t>(ordinal)) loader.createElement(key);
    };
    std::for_each(incoming_.begin(), incoming_.end(), create);
    std::for_each(outgoing_.begin(), outgoing_.end(), create);
}

bool Node::isChanged(int ordinal) const {
    const auto at = static_cast<std::size_t>(ordinal);
    return at < changed_.size() && changed_[at];
}

void Node::markChanged(const PlugKey& key) {
    const std::size_t at = rootOrdinal(key);
    if (at >= changed_.size()) changed_.resize(at + 1);
    changed_[at] = true;
    hasChanges_ = true;
}

void Node::forgetChanges() {
    changed_.clear();
    changedAliases_ = false;
    hasChanges_ = false;
}

const std::vector<Slot>& Node::slots() const {
    const auto count = static_cast<int>(type_.attributes().size() + dynamic_.size());
    for (int ordinal = 0; awaited_ != nullptr && ordinal < count; ++ordinal)
        load(ordinal);
    return slots_;
}

std::vector<const Attribute*> Node::attributes() const {
    introduce();
    std::vector<const Attribute*> result = type_.attributes();
    for (const auto& attribute : dynamic_)
        result.push_back(attribute.get());
    return result;
}

const Attribute* Node::findAttribute(std::string_view longOrShort) const {
    if (const Attribute* found = type_.find(longOrShort)) return found;
    introduce();
    for (const std::size_t position : plain_) {
        const Attribute* attribute = dynamic_[position].get();
        if (attribute == nullptr) continue;
        if (const Attribute* found = findBelow(*attribute, longOrShort)) return found;
    }
    return findKept(longOrShort);
}

Attribute& Node::adopt(AttributeSpec spec) {
    const int ordinal = static_cast<int>(type_.attributes().size() + dynamic_.size());
    dynamic_.push_back(std::make_unique<Attribute>(std::move(spec), nullptr, ordinal));
    Attribute& attribute = *dynamic_.back();
    if (attribute.isKept()) {
        kept_.emplace(attribute.longName(), &attribute);
    } else {
        attribute.markDynamic();
        plain_.push_back(dynamic_.size() - 1);
    }
    return attribute;
}

const Attribute* Node::findKept(std::string_view name) const {
    introduce();
    if (kept_.empty()) return nullptr;
    const auto found = kept_.find(std::string(name));
    return found != kept_.end() ? found->second : nullptr;
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
    introduce();
    const auto found = states_.find(key);
    if (found != states_.end()) return found->second;
    PlugState state;
    state.isKeyable = key.attribute->spec().isKeyable;
    return state;
}

double Node::storedNumber(const PlugKey& key) const {
    load(key.attribute->path().front()->ordinal());
    const Place place = locate(slots_, key);
    if (place.number) return *place.number;
    if (place.slot != nullptr) {
        if (const auto* value = std::get_if<double>(&place.slot->content)) return *value;
    }
    return key.attribute->spec().defaultValue;
}

DataPtr Node::storedData(const PlugKey& key) const {
    load(key.attribute->path().front()->ordinal());
    const Place place = locate(slots_, key);
    if (place.slot != nullptr) {
        if (const auto* value = std::get_if<DataPtr>(&place.slot->content)) return *value;
    }
    return key.attribute->spec().defaultData;
}

const Slot* Node::slot(const PlugKey& key) const {
    load(key.attribute->path().front()->ordinal());
    return locate(slots_, key).slot;
}

Slot& Node::rootSlot(int ordinal) {
    const auto at = static_cast<std::size_t>(ordinal);
    if (at >= slots_.size()) slots_.resize(at + 1);
    return slots_[at];
}

Slot& Node::obtainSlot(const PlugKey& key, PlugKey& created) {
    load(key.attribute->path().front()->ordinal());
    return obtainLoadedSlot(key, created);
}

Slot& Node::obtainLoadedSlot(const PlugKey& key, PlugKey& created) {
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
