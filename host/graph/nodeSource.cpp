#include "graph/nodeSource.h"

#include <utility>

#include "graph/node.h"

namespace host::graph {

const Attribute& NodeLoader::addAttribute(AttributeSpec spec) {
    return node_.adopt(std::move(spec));
}

void NodeLoader::setAlias(const std::string& alias, const PlugKey& key) {
    AliasTable& aliases = node_.aliases_;
    const std::size_t position = aliases.position(key);
    if (position < aliases.size()) {
        aliases.rename(key, alias);
    } else {
        aliases.insert(position, alias, key);
    }
}

void NodeLoader::setState(const PlugKey& key, const PlugState& state) {
    node_.states_[key] = state;
}

void NodeLoader::setUuid(std::string uuid) {
    node_.uuid_ = std::move(uuid);
}

void NodeLoader::setNumber(const PlugKey& key, double value) {
    PlugKey created;
    Slot& slot = node_.obtainLoadedSlot(key, created);
    const double kept = roundedTo(key.attribute->kind(), value);
    if (auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot.content)) {
        const Attribute& array = *flatArrayOf(*key.attribute);
        const int part = &array == key.attribute ? 0 : key.attribute->ordinal();
        const int index = key.indices[static_cast<std::size_t>(array.arrayDepth() - 1)];
        (*numbers)->write(index, part, kept, array.flatDefaults().data());
    } else {
        slot.content = kept;
    }
}

void NodeLoader::setData(const PlugKey& key, DataPtr value) {
    PlugKey created;
    node_.obtainLoadedSlot(key, created).content = std::move(value);
}

void NodeLoader::createElement(const PlugKey& element) {
    PlugKey created;
    Slot& slot = node_.obtainLoadedSlot(element, created);
    auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot.content);
    if (numbers == nullptr) return;
    const Attribute& array = *flatArrayOf(*element.attribute);
    const int index = element.indices[static_cast<std::size_t>(array.arrayDepth() - 1)];
    if (!(*numbers)->contains(index))
        (*numbers)->write(index, 0, array.flatDefaults().front(), array.flatDefaults().data());
}

}  // namespace host::graph
