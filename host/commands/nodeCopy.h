#pragma once

#include "graph/graph.h"

namespace host::commands {

/// Copies the content of `from` to `to`, a node of the same type: added attributes, values, plug states and
/// aliases. A value from a connection is copied as a value. The connection is not copied.
void copyNodeContent(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to);

}  // namespace host::commands
