#pragma once

#include <set>
#include <vector>

#include "graph/graph.h"

namespace host::scene {

/// The nodes that an export of some nodes takes along: what is below and above them in the DAG, everything
/// that feeds one of these, the shading groups of shapes and the sets that deformers use. Without the nodes
/// that every scene has.
std::set<const graph::Node*> exportScope(const std::vector<graph::NodeRef>& nodes);

}  // namespace host::scene
