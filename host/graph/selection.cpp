#include "graph/selection.h"

#include <algorithm>

#include "graph/graph.h"
#include "graph/instances.h"

namespace host::graph {

bool SelectionItem::isSameObject(const SelectionItem& other) const {
    if (node != other.node || plug != other.plug) return false;
    if (plug) return true;
    if (path != other.path) return false;
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

std::vector<Instance> upwards(const SelectionItem& item) {
    std::vector<Instance> places = upwards(Instance{item.node.get(), item.path});
    return places.empty() ? upwards(Instance{item.node.get(), 0}) : places;
}

std::vector<std::string> itemNames(const Graph& graph, const SelectionItem& item, bool fullPaths) {
    const auto nameOf = [&](const Instance& place) {
        if (place.number == 0) return fullPaths ? graph.fullPath(*place.node) : graph.uniqueName(*place.node);
        return fullPaths ? fullPath(place) : shortPaths(graph, *place.node)[place.number];
    };
    const std::vector<Instance> places = upwards(item);
    if (item.plug) return {nameOf(places.front()) + '.' + item.plug->attributePath()};
    if (!item.component) return {nameOf(places.front())};
    const bool isShapeOfParent =
        places.size() > 1 && graph.shapeOf(places[1].node->ref()).get() == item.node.get();
    const std::string prefix = nameOf(places[isShapeOfParent ? 1 : 0]) + '.';
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
