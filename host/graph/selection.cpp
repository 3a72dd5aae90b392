#include "graph/selection.h"

#include <algorithm>

#include "graph/graph.h"

namespace host::graph {

bool SelectionItem::isSameObject(const SelectionItem& other) const {
    if (node != other.node || plug != other.plug) return false;
    if (component.has_value() != other.component.has_value()) return false;
    return !component || component->kind() == other.component->kind();
}

std::vector<SelectionItem>::iterator Selection::find(const SelectionItem& item) {
    return std::find_if(items_.begin(), items_.end(),
                        [&](const SelectionItem& entry) { return entry.isSameObject(item); });
}

void Selection::add(const SelectionItem& item) {
    const auto found = find(item);
    if (found == items_.end()) {
        items_.push_back(item);
    } else if (item.component) {
        found->component->merge(*item.component);
    }
}

void Selection::remove(const SelectionItem& item) {
    const auto found = find(item);
    if (found == items_.end()) return;
    if (item.component) found->component->remove(*item.component);
    if (!item.component || found->component->empty()) items_.erase(found);
}

void Selection::toggle(const SelectionItem& item) {
    const auto found = find(item);
    if (found == items_.end()) {
        items_.push_back(item);
        return;
    }
    if (item.component) found->component->toggle(*item.component);
    if (!item.component || found->component->empty()) items_.erase(found);
}

void Selection::removeNode(const Node& node) {
    const auto gone = std::remove_if(items_.begin(), items_.end(),
                                     [&](const SelectionItem& item) { return item.node.get() == &node; });
    items_.erase(gone, items_.end());
}

std::vector<std::string> itemNames(const Graph& graph, const SelectionItem& item, bool fullPaths) {
    const auto nameOf = [&](const Node& node) {
        return fullPaths ? graph.fullPath(node) : graph.uniqueName(node);
    };
    if (item.plug) return {nameOf(*item.node) + '.' + item.plug->attributePath()};
    if (!item.component) return {nameOf(*item.node)};
    const Node* owner = item.node.get();
    if (owner->parent() != nullptr && graph.shapeOf(owner->parent()->ref()).get() == owner)
        owner = owner->parent();
    const std::string prefix = nameOf(*owner) + '.';
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(item.component->runCount()));
    for (int k = 0; k < item.component->runCount(); ++k)
        names.push_back(prefix + runText(item.component->kind(), item.component->run(k)));
    return names;
}

std::string itemName(const Graph& graph, const SelectionItem& item) {
    const std::vector<std::string> names = itemNames(graph, item);
    return names.empty() ? graph.uniqueName(*item.node) : names.front();
}

}  // namespace host::graph
