#pragma once

#include <string>

namespace host::graph {

class Graph;

/// The whole scene as text, one fact a line: the DAG, nodes in order of creation with added attributes,
/// stored values (numbers exact, long lists as digests), plug states, aliases and connections, and the
/// selection.
///
/// Nodes have their unique names, and lines of their own for their children: full paths would grow with the
/// square of the depth. Two dumps are equal exactly when nothing of that differs. Nothing is evaluated.
std::string sceneDump(const Graph& graph);

}  // namespace host::graph
