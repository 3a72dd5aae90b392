#pragma once

#include "graph/graph.h"

namespace host::nodes {

/// Registers every node type. Called once, before anything else is done with the graph.
void registerTypes(graph::NodeTypes& types);

/// Prepares a graph whose types are registered: component names can be resolved, and the default nodes exist
/// (time1, lambert1, initialShadingGroup, renderPartition). Not recorded.
void setUpScene(graph::Graph& graph);

}  // namespace host::nodes
