#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "graph/component.h"
#include "graph/plug.h"

namespace host::graph {

class Graph;
struct Instance;

/// A node, a plug of it, or components of it (then the node is the shape).
struct SelectionItem {
    NodeRef node;
    std::optional<Plug> plug{};
    std::optional<Component> component{};
    /// The number of the node's path that is meant (Instance). Later changes of the hierarchy may take it
    /// away: then the first one is meant.
    std::size_t path = 0;

    bool isWholeNode() const { return !plug && !component; }
    /// Same node at the same place, or same plug. Components of one shape are the same object if they are of
    /// the same kind.
    bool isSameObject(const SelectionItem& other) const;
};

/// The item's node and those above it on its path, from the node up. Never empty.
std::vector<Instance> upwards(const SelectionItem& item);

enum class SelectionMode { Replace, Add, Toggle, Remove };

/// An ordered list in which each object occurs once: components of one kind of one shape share an item.
class Selection {
  public:
    const std::vector<SelectionItem>& items() const { return items_; }
    bool empty() const { return items_.empty(); }
    void clear() { items_.clear(); }
    /// Adds an object that is not in the list yet. Otherwise adds its components to those in the list.
    void add(const SelectionItem& item);
    void remove(const SelectionItem& item);
    void toggle(const SelectionItem& item);
    void removeNode(const Node& node);

  private:
    std::vector<SelectionItem>::iterator find(const SelectionItem& item);

    std::vector<SelectionItem> items_;
};

/// The names of an item as a user sees them: the shortest unique name; one "mesh.vtx[3:5]" per run.
/// Components of a shape that is its transform's only visible shape are named after the transform. An
/// instance has a path that names no other one.
std::vector<std::string> itemNames(const Graph& graph, const SelectionItem& item, bool fullPaths = false);
/// The first of these names, for messages. For a component without elements, the name of the object.
std::string itemName(const Graph& graph, const SelectionItem& item);

}  // namespace host::graph
