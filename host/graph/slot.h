#pragma once

#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "graph/data.h"
#include "graph/numberMulti.h"

namespace host::graph {

class Attribute;
struct Slot;

/// Elements of an array of compounds or data objects, sorted by logical index.
struct ElementMulti {
    std::vector<std::pair<int, std::unique_ptr<Slot>>> elements;

    const Slot* find(int index) const;
    Slot* find(int index);
    /// The element, made if it is missing.
    /// @param isNew  set to whether it was made
    Slot& obtain(int index, bool& isNew);
    /// Takes an element out; null if it does not exist.
    std::unique_ptr<Slot> take(int index);
    /// Puts an element back, and replaces one of the same index.
    void put(int index, std::unique_ptr<Slot> slot);
};

/// Stored value of one attribute below one parent element. Empty means never set: the default applies.
struct Slot {
    using Children = std::vector<Slot>;
    std::variant<std::monostate, double, DataPtr, std::unique_ptr<NumberMulti>, std::unique_ptr<Children>,
                 std::unique_ptr<ElementMulti>>
        content;

    bool empty() const { return std::holds_alternative<std::monostate>(content); }
    Slot clone() const;
};

}  // namespace host::graph
