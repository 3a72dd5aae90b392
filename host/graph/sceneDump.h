#pragma once

#include <string>

namespace host::graph {

class Graph;

/// The whole scene as text, one fact per line: the DAG; nodes in order of creation with added attributes,
/// stored values (numbers exact, long lists as digests), plug states, aliases and connections; and the
/// selection.
///
/// Nodes have their unique names, and the children of a node have lines of their own: full paths would grow
/// with the square of the depth. Two dumps are equal exactly if all of this is equal. Nothing is evaluated.
std::string sceneDump(const Graph& graph);

}  // namespace host::graph
