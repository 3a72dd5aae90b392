#pragma once

#include <string>

#include "graph/graph.h"

namespace host::graph {

/// Names of many nodes, asked for one after the other. Where a node stands next to the one before (its child,
/// its sibling or its parent), only the end of that one's name changes: the names of a chain of n nodes cost
/// their text and not n ways up to the root. The scene may not change in between.
class PathNames {
  public:
    enum class Kind { Full, Unique };

    /// @param kind  whether names are those of Graph::fullPath or of Graph::uniqueName
    PathNames(const Graph& graph, Kind kind) : graph_(graph), kind_(kind) {}

    /// Valid until the next call.
    const std::string& of(const Node& node);

  private:
    bool extendFull(const Node& node);
    bool extendUnique(const Node& node);

    const Graph& graph_;
    const Kind kind_;
    const Node* last_ = nullptr;
    std::string name_;  // of the last node
};

}  // namespace host::graph
