#pragma once

#include "graph/graph.h"

namespace host::nodes {

/// Makes the cameras persp, top, front and side of a scene without nodes of its own. Not recorded.
void addDefaultCameras(graph::Graph& graph);

/// Whether a node is one of these cameras, or its transform.
bool isDefaultCamera(const graph::Node& node);

}  // namespace host::nodes
