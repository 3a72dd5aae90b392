#pragma once

#include <string>
#include <utility>
#include <vector>

#include "graph/graph.h"

namespace host::commands {

/// Copies the content of `from` to `to`, a node of the same type: added attributes, values, plug states and
/// aliases. A value from a connection is copied as a value. The connection is not copied.
void copyNodeContent(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to);

/// Nodes with their copies.
using NodeCopies = std::vector<std::pair<graph::NodeRef, graph::NodeRef>>;

/// Connects the inputs of copies to what feeds the originals: to the copy of it, if it was copied too. What
/// says in which sets a node is stays unconnected.
void connectInputs(graph::Graph& graph, const NodeCopies& copies);

/// Copies the nodes upstream of the originals that are neither default nodes nor in the DAG, and appends
/// them.
/// @return the error, if a DAG node that is not copied is upstream; empty on success
std::string copyUpstream(graph::Graph& graph, NodeCopies& copies);

}  // namespace host::commands
