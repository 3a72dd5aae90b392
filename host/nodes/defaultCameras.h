#pragma once

#include "graph/graph.h"

namespace host::nodes {

/// Makes those of the cameras persp, top, front and side whose name no node has. Not recorded.
/// @return their transforms and shapes
std::vector<graph::NodeRef> addDefaultCameras(graph::Graph& graph);

/// Whether a node is one of these cameras, or its transform.
bool isDefaultCamera(const graph::Node& node);

}  // namespace host::nodes
