#pragma once

#include "graph/graph.h"

namespace host::commands {

/// Whether a DAG node shows in a view at its place: it and all above it are visible, and it is no
/// intermediate object.
bool isVisible(graph::Graph& graph, const graph::SelectionItem& item);

/// A flag of `ls` that lists the nodes in a state.
struct NodeState {
    const char* shortName;
    const char* flag;
    bool (*isTrue)(graph::Graph&, const graph::SelectionItem&);
};
inline constexpr std::size_t kNodeStateCount = 14;
extern const NodeState kNodeStates[kNodeStateCount];

}  // namespace host::commands
