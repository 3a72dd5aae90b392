#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "graph/graph.h"

/// Weights of skin clusters: arithmetic for one vertex, and reading and writing for many.
namespace host::nodes {

/// What happens to a weight when the weights of a vertex are brought to a sum of 1.
enum class WeightRole : unsigned char {
    Free,    // scaled to fill what the others leave
    Given,   // just set: keeps its value if possible
    Locked,  // never changes
};

/// Weights by distance: 1 / distance^dropoff for the `maxInfluences` nearest, scaled to a sum of 1. If some
/// distances are 0, these influences share all the weight.
std::vector<double> closestWeights(const std::vector<double>& distances, double dropoff, int maxInfluences);

/// Brings the weights of one vertex to a sum of 1. Both vectors are by influence. What the locked weights
/// leave goes to the given ones first, and then to the free ones in proportion.
///
/// If something was given and all free weights are 0, the free ones share the rest by their distance. If no
/// weight is free, the given ones grow. If nothing was given and all free weights are 0, nothing changes.
/// @param distances  of the vertex from each influence; called only if they are needed
/// @return false if a given weight could not keep its value
bool normalizeWeights(std::vector<double>& weights, const std::vector<WeightRole>& roles,
                      const std::function<std::vector<double>()>& distances);

/// The stored weights of some vertices, row after row. The influences of a row are logical indices of the
/// skinCluster's `matrix`, ascending.
struct WeightRows {
    std::vector<int> vertices;
    std::vector<std::size_t> starts{0};  // number of vertices + 1 offsets into the two below
    std::vector<int> influences;
    std::vector<double> weights;

    /// Ends the row of a vertex: everything appended to `influences` and `weights` since the last row.
    void endRow(int vertex);
};

/// The attribute of the weights of one vertex, below weightList.
const graph::Attribute& weightsBelow(const graph::Plug& weightList);
/// Weights of one element of weightList; null if it has none.
/// @param weights  weightsBelow() of the list
const graph::NumberMulti* weightsOf(const graph::Slot& weightListElement, const graph::Attribute& weights);

/// Calls `use(vertex, weights)` for each element of weightList that has weights, by ascending index.
/// Connections into weights are not followed.
template <typename Use>
void forEachWeightRow(const graph::NodeRef& skinCluster, Use&& use) {
    const graph::Plug list = skinCluster->plug("weightList");
    const graph::Slot* stored = skinCluster->slot(list.key());
    if (stored == nullptr) return;
    const auto* multi = std::get_if<std::unique_ptr<graph::ElementMulti>>(&stored->content);
    if (multi == nullptr) return;
    const graph::Attribute& below = weightsBelow(list);
    for (const auto& [vertex, element] : (*multi)->elements) {
        if (const graph::NumberMulti* weights = weightsOf(*element, below)) use(vertex, *weights);
    }
}

/// The rows of these vertices, empty for vertices without weights. O(n log n).
WeightRows weightRows(const graph::NodeRef& skinCluster, const std::vector<int>& vertices);
/// The rows of all vertices that have weights.
WeightRows weightRows(const graph::NodeRef& skinCluster);
/// Replaces the rows of these vertices. Weights of 0 are not stored. Recorded as one step.
void setWeightRows(graph::Graph& graph, const graph::NodeRef& skinCluster, const WeightRows& rows);

}  // namespace host::nodes
