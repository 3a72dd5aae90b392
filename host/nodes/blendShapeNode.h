#pragma once

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "graph/graph.h"

namespace host::nodes {

/// Index of an inputTargetItem for a weight: 6000 for 1, 5500 for 0.5. Items begin at 1. 0 means that the
/// weight has no item: it is below -4.999, too large or not a number.
inline int itemIndex(double weight) {
    const double index = std::round(5000.0 + 1000.0 * weight);
    return index >= 1.0 && index <= std::numeric_limits<int>::max() ? static_cast<int>(index) : 0;
}
inline double itemWeight(int itemIndex) {
    return (itemIndex - 5000) / 1000.0;
}

// Attributes of an inputTargetItem.
constexpr const char* kGeomTarget = "inputGeomTarget";
constexpr const char* kPointsTarget = "inputPointsTarget";
constexpr const char* kComponentsTarget = "inputComponentsTarget";

/// Plug of blendShape.inputTarget[base].inputTargetGroup[weight]. Its elements need not exist.
graph::Plug targetGroupPlug(const graph::NodeRef& blendShape, int baseIndex, int weightIndex);
/// Plug of one inputTargetItem of that group. Its elements need not exist.
graph::Plug targetItemPlug(const graph::NodeRef& blendShape, int baseIndex, int weightIndex, int item);

struct TargetResult {
    bool ok = false;
    std::string error{};
};

/// Connects a target mesh. A new weight index gets its weight, 0, and an alias: the name of the target's
/// transform, made unique. An in-between is added to an existing index and gets no alias.
///
/// Fails and changes nothing if the base index does not exist, the shape has no mesh, the item is taken, the
/// weight is 0 or has no item, an in-between is to be added to an index that does not exist, or topologyCheck
/// is on and the numbers of vertices, edges or faces differ.
/// @param fullWeight  weight at which the target has its full effect
TargetResult addTarget(graph::Graph& graph, const graph::NodeRef& blendShape, int baseIndex, int weightIndex,
                       const graph::NodeRef& targetShape, double fullWeight, bool inBetween);

/// The deformed shapes, by ascending geometry index.
std::vector<graph::NodeRef> baseShapes(graph::Graph& graph, const graph::NodeRef& blendShape);
/// Existing weight indices, ascending.
std::vector<int> weightIndices(graph::Graph& graph, const graph::NodeRef& blendShape);
/// Existing items of a target, ascending.
std::vector<int> targetItems(graph::Graph& graph, const graph::NodeRef& blendShape, int baseIndex,
                             int weightIndex);

}  // namespace host::nodes
