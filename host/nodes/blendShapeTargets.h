#pragma once

#include <utility>
#include <vector>

#include "graph/graph.h"
#include "nodes/meshData.h"

/// Arithmetic of blend shape targets on plain data.
namespace host::nodes {

/// How much of one item's deltas is used.
struct ItemShare {
    int item = 0;
    double share = 0.0;
};

/// Shares of a target's items at a weight. They are linear between neighbouring items. If there is no item at
/// weight 0, one without deltas is assumed there. Beyond the outermost items, the line through the last two
/// continues.
/// @param items  item indices, ascending
/// @return at most two shares, none of them 0
std::vector<ItemShare> itemShares(const std::vector<int>& items, double weight);

/// The vertices that differ between two meshes, as aligned lists: ascending runs, and one point (x y z 1) per
/// vertex. Vertices that only one mesh has are ignored.
std::pair<graph::DataPtr, graph::DataPtr> sparseDeltas(const geometry::Mesh& base,
                                                       const geometry::Mesh& target);

/// Adds scaled deltas to sums of x y z per vertex. Point k belongs to the k-th element of the component list,
/// entry after entry. Points or elements without counterpart, and elements that are not vertices, are left
/// out.
/// @param weights  weight per vertex, missing ones count as 1; null for no weights
void addDeltas(const graph::PointArrayData& points, const graph::ComponentListData& components, double scale,
               const graph::NumberMulti* weights, std::vector<double>& sums);

}  // namespace host::nodes
