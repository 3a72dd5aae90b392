#pragma once

#include "graph/graph.h"

/// The time at which the scene stands: the value of time1.outTime, in seconds.
namespace host::nodes {

graph::Plug timePlug(graph::Graph& graph);
double currentTime(graph::Graph& graph);
/// Rounds to the finest step of time that the host keeps, which divides every frame rate; so whole frames,
/// and simple parts of them, stay what they are. Everything that depends on the time is dirty afterwards.
void setCurrentTime(graph::Graph& graph, double seconds);

}  // namespace host::nodes
