#pragma once

#include "graph/graph.h"

/// Constraints: nodes below a transform that compute its translation, rotation or scale from targets.
///
/// A constraint reads plugs only. What makes a node a target are the connections from its channels and from
/// its parentMatrix into an element of `target`; what makes a transform constrained are those from the
/// outputs into its channels.
///
/// - Targets count in proportion to their weights. Targets whose weight is not positive do not count.
/// - If none counts, the outputs are restTranslate, ... if enableRestPosition is on.
/// - Otherwise, and with lockOutput or a nodeState other than Normal, they are what the constrained
/// transform,
///   the parent of the node, has stored below its connections: as if it were not constrained.
namespace host::nodes {

/// Computes an output of a constraint. The outputs that every DAG node has are those of any transform.
graph::ComputedValue computeConstraint(graph::Graph& graph, const graph::Plug& output);

}  // namespace host::nodes
