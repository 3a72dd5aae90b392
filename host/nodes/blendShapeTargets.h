#pragma once

#include <utility>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// Arithmetic of blend shape targets on plain data.
namespace host::nodes {

/// How much of one item's deltas counts.
struct ItemShare {
    int item = 0;
    double share = 0.0;
};

/// Shares of a target's items at a weight: linear between neighbouring items, with an item without deltas at
/// weight 0, and going on along the outermost pair beyond them.
/// @param items  item indices, ascending
/// @return at most two, none with a share of 0
std::vector<ItemShare> itemShares(const std::vector<int>& items, double weight);

/// The vertices that differ between two meshes, up to the shorter one's length, as aligned lists: ascending
/// runs, and one point (x y z 1) per vertex.
std::pair<graph::DataPtr, graph::DataPtr> sparseDeltas(const geometry::Mesh& base,
                                                       const geometry::Mesh& target);

/// Adds scaled deltas to sums of x y z per vertex. Point k belongs to the k-th element of the component list,
/// entry after entry; what has no counterpart or is no vertex is left out.
/// @param weights  weight per vertex, missing ones count as 1; null for none at all
void addDeltas(const graph::PointArrayData& points, const graph::ComponentListData& components, double scale,
               const graph::NumberMulti* weights, std::vector<double>& sums);

}  // namespace host::nodes
