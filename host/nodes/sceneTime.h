#pragma once

#include "graph/graph.h"

/// The current time of the scene: the value of time1.outTime, in seconds.
namespace host::nodes {

graph::Plug timePlug(graph::Graph& graph);
double currentTime(graph::Graph& graph);
/// Rounds to the finest time step that the host keeps. That step divides every frame rate, so whole frames,
/// and simple parts of them, stay exact. Afterwards everything that depends on the time is dirty.
void setCurrentTime(graph::Graph& graph, double seconds);

}  // namespace host::nodes
