#pragma once

#include <vector>

#include "graph/graph.h"

/// What several objectSets hold together. Components of one kind of one shape are one item of a result. The
/// whole of a shape and its components have in common those components.
namespace host::nodes {

/// What is in any of the sets, in the order of the sets.
std::vector<graph::SelectionItem> unionOf(graph::Graph& graph, const std::vector<graph::NodeRef>& sets);
/// What is in all of the sets, in the order of the first one.
std::vector<graph::SelectionItem> intersectionOf(graph::Graph& graph,
                                                 const std::vector<graph::NodeRef>& sets);
/// What is in the first set and in none of the others. The whole of an object stays if others hold only
/// components of it.
std::vector<graph::SelectionItem> differenceOf(graph::Graph& graph, const std::vector<graph::NodeRef>& sets);

}  // namespace host::nodes
