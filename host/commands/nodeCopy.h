#pragma once

#include "graph/graph.h"

namespace host::commands {

/// Gives `to` what `from`, a node of the same type, holds: added attributes, values, plug states and aliases.
/// What comes in through a connection is copied as the value that it has; the connection is not.
void copyNodeContent(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to);

}  // namespace host::commands
