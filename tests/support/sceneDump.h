#pragma once

#include <string>

#include "graph/graph.h"

namespace delven::test {

/// The whole scene as text, one fact a line: nodes in order of creation with their place in the DAG, added
/// attributes, stored values (numbers exact, long arrays of meshes as digests), plug states, aliases,
/// connections, and the selection.
///
/// Two dumps are equal exactly when nothing of that differs, which makes "do, undo" and "undo, redo" one
/// comparison each. Nothing is evaluated.
std::string sceneDump(const host::graph::Graph& graph);

/// The lines of `after` that `before` lacks (marked +) and the reverse (marked -): the readable part of a
/// failed comparison.
std::string dumpDifference(const std::string& before, const std::string& after);

}  // namespace delven::test
