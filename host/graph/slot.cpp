#include "graph/slot.h"

#include <algorithm>

namespace host::graph {

namespace {

template <typename Elements>
auto lowerBound(Elements& elements, int index) {
    return std::lower_bound(elements.begin(), elements.end(), index,
                            [](const auto& entry, int wanted) { return entry.first < wanted; });
}

template <typename Elements>
auto* findIn(Elements& elements, int index) {
    const auto at = lowerBound(elements, index);
    return at != elements.end() && at->first == index ? at->second.get() : nullptr;
}

}  // namespace

const Slot* ElementMulti::find(int index) const {
    return findIn(elements, index);
}

Slot* ElementMulti::find(int index) {
    return findIn(elements, index);
}

Slot& ElementMulti::obtain(int index, bool& isNew) {
    auto at = lowerBound(elements, index);
    isNew = at == elements.end() || at->first != index;
    if (isNew) at = elements.emplace(at, index, std::make_unique<Slot>());
    return *at->second;
}

std::unique_ptr<Slot> ElementMulti::take(int index) {
    const auto at = lowerBound(elements, index);
    if (at == elements.end() || at->first != index) return nullptr;
    std::unique_ptr<Slot> slot = std::move(at->second);
    elements.erase(at);
    return slot;
}

void ElementMulti::put(int index, std::unique_ptr<Slot> slot) {
    const auto at = lowerBound(elements, index);
    if (at != elements.end() && at->first == index) {
        at->second = std::move(slot);
    } else {
        elements.emplace(at, index, std::move(slot));
    }
}

Slot Slot::clone() const {
    Slot copy;
    if (const auto* value = std::get_if<double>(&content)) {
        copy.content = *value;
    } else if (const auto* data = std::get_if<DataPtr>(&content)) {
        copy.content = *data;
    } else if (const auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&content)) {
        copy.content = std::make_unique<NumberMulti>(**numbers);
    } else if (const auto* children = std::get_if<std::unique_ptr<Children>>(&content)) {
        auto copies = std::make_unique<Children>();
        for (const Slot& child : **children)
            copies->push_back(child.clone());
        copy.content = std::move(copies);
    } else if (const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&content)) {
        auto copies = std::make_unique<ElementMulti>();
        for (const auto& [index, slot] : (*multi)->elements) {
            copies->elements.emplace_back(index, std::make_unique<Slot>(slot->clone()));
        }
        copy.content = std::move(copies);
    }
    return copy;
}

}  // namespace host::graph
