#pragma once

#include "graph/graph.h"

/// Deltas of blend shape items whose target mesh is connected.
///
/// They are made when the deformer is evaluated, not when the mesh is connected and not when the deltas are
/// read. Until then the lists of such an item are empty. After a change of the mesh they still have the old
/// deltas. Deltas that are written while the mesh is connected last until the mesh changes. If the mesh is
/// disconnected before an evaluation has seen its last change, the deltas are made then, or by the next
/// evaluation (graph::Variants).
namespace host::nodes {

/// Makes the deltas of one geometry's items whose mesh has changed since they were made or written. Called by
/// the deformer's compute function.
void takeLiveDeltas(graph::Graph& graph, const graph::NodeRef& blendShape, int geometryIndex);

// Called when connections or data of a blend shape change (graph::NodeBehaviour).
void liveTargetConnected(graph::Graph& graph, const graph::Plug& destination);
void liveTargetDisconnecting(graph::Graph& graph, const graph::Plug& destination);
void liveDeltasWriting(graph::Graph& graph, const graph::Plug& plug);

}  // namespace host::nodes
