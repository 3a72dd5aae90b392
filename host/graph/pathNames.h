#pragma once

#include <string>

#include "graph/graph.h"

namespace host::graph {

/// Names of many nodes, asked for one after the other. If a node is the child, the sibling or the parent of
/// the one before, only the end of the name changes. So the names of a chain of n nodes cost the length of
/// their text, and not n walks up to the root. The scene may not change in between.
class PathNames {
  public:
    enum class Kind { Full, Unique };

    /// @param kind  Full: names as from Graph::fullPath. Unique: names as from Graph::uniqueName
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
