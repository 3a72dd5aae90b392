#pragma once

#include <vector>

#include "graph/graph.h"

namespace host::graph {

/// Keeps the selection to the places that it means while the hierarchy changes: the numbers of paths change
/// with each parent that comes or goes. Made before one change, and told to follow after it.
class SelectedPlaces {
  public:
    explicit SelectedPlaces(Graph& graph);

    /// Items at places that are gone leave the selection, unless they went with a node that moved.
    /// @param moved   a node that was taken from one of its parents, if another took it
    /// @param parent  the one that took it; null for the top level
    void follow(const Node* moved = nullptr, Node* parent = nullptr);

  private:
    bool isThere(const std::vector<Node*>& chain) const;

    Graph& graph_;
    std::vector<std::vector<Node*>> chains_;  // of each item, from the node up; empty outside the hierarchy
};

}  // namespace host::graph
