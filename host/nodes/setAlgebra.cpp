#include "nodes/setAlgebra.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "nodes/sets.h"

namespace host::nodes {

namespace {

using graph::SelectionItem;

/// Collects items, each object once. The list of a selection does the same at the cost of a search through
/// it.
class ItemList {
  public:
    void add(const SelectionItem& item) {
        const int kind = item.component ? static_cast<int>(item.component->kind()) : -1;
        const auto [at, isNew] = places_.emplace(std::pair(item.node.get(), kind), items_.size());
        if (isNew) {
            items_.push_back(item);
        } else if (item.component) {
            items_[at->second].component->merge(*item.component);
        }
    }
    std::vector<SelectionItem> take() { return std::move(items_); }

  private:
    std::vector<SelectionItem> items_;
    std::map<std::pair<const graph::Node*, int>, std::size_t> places_;
};

/// The part of a component that is in another one of the same kind.
graph::Component commonPart(const graph::Component& component, const graph::Component& other) {
    graph::Component rest = component;
    rest.remove(other);
    graph::Component common = component;
    common.remove(rest);
    return common;
}

/// The parts of an item that a set holds.
std::vector<SelectionItem> partsIn(graph::Graph& graph, const graph::NodeRef& set,
                                   const SelectionItem& item) {
    std::vector<SelectionItem> parts;
    for (SelectionItem& member : membersFrom(graph, set, item.node)) {
        if (!member.component) return {item};
        if (!item.component) {
            parts.push_back(std::move(member));
        } else if (member.component->kind() == item.component->kind()) {
            graph::Component common = commonPart(*item.component, *member.component);
            if (!common.empty()) parts.push_back({item.node, {}, std::move(common)});
        }
    }
    return parts;
}

}  // namespace

std::vector<SelectionItem> unionOf(graph::Graph& graph, const std::vector<graph::NodeRef>& sets) {
    ItemList all;
    for (const graph::NodeRef& set : sets) {
        for (const SelectionItem& member : members(graph, set))
            all.add(member);
    }
    return all.take();
}

std::vector<SelectionItem> intersectionOf(graph::Graph& graph, const std::vector<graph::NodeRef>& sets) {
    std::vector<SelectionItem> items = members(graph, sets.front());
    for (auto set = std::next(sets.begin()); set != sets.end(); ++set) {
        ItemList common;
        for (const SelectionItem& item : items) {
            for (const SelectionItem& part : partsIn(graph, *set, item))
                common.add(part);
        }
        items = common.take();
    }
    return items;
}

std::vector<SelectionItem> differenceOf(graph::Graph& graph, const std::vector<graph::NodeRef>& sets) {
    std::vector<SelectionItem> left;
    for (SelectionItem& item : members(graph, sets.front())) {
        bool isTaken = false;
        for (auto set = std::next(sets.begin()); set != sets.end() && !isTaken; ++set) {
            for (const SelectionItem& part : partsIn(graph, *set, item)) {
                if (item.component) item.component->remove(*part.component);
                isTaken = item.component ? item.component->empty() : !part.component;
            }
        }
        if (!isTaken) left.push_back(std::move(item));
    }
    return left;
}

}  // namespace host::nodes
