#pragma once

#include "graph/graph.h"

/// Deltas of blend shape items whose target mesh is connected.
///
/// They are made when the deformer is evaluated, not when the mesh is connected and not when somebody asks
/// for them: until then the lists of such an item are empty, and after a change of the mesh they say what was
/// true before. Deltas that are written while the mesh is connected last until it changes. What no evaluation
/// has seen when the mesh is disconnected is taken then, or by the next evaluation (graph::Variants).
namespace host::nodes {

/// Makes the deltas of one geometry's items whose mesh changed since they were made or written. For the
/// deformer's compute.
void takeLiveDeltas(graph::Graph& graph, const graph::NodeRef& blendShape, int geometryIndex);

// The blend shape's behaviour around its plugs (graph::NodeBehaviour).
void liveTargetConnected(graph::Graph& graph, const graph::Plug& destination);
void liveTargetDisconnecting(graph::Graph& graph, const graph::Plug& destination);
void liveDeltasWriting(graph::Graph& graph, const graph::Plug& plug);

}  // namespace host::nodes
