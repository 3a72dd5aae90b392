#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "graph/graph.h"

/// Weights of skin clusters: their arithmetic for one vertex, and reading and writing them for many.
namespace host::nodes {

/// How a weight takes part when the weights of a vertex are brought to a sum of 1.
enum class WeightRole : unsigned char {
    Free,    // scaled to fill what the others leave
    Given,   // just set: keeps its value where that is possible
    Locked,  // never changes
};

/// Weights by distance: 1 / distance^dropoff for the `maxInfluences` nearest, the sum being 1. Those at
/// distance 0 share all.
std::vector<double> closestWeights(const std::vector<double>& distances, double dropoff, int maxInfluences);

/// Brings the weights of one vertex to a sum of 1, both vectors being by influence. What the locked ones
/// leave belongs to the given ones first and to the free ones, in proportion, after them.
///
/// Where all free ones are 0, and something was given, they share what is left by their distance; where there
/// is no free one the given ones grow. With nothing given and all free ones 0 nothing changes.
/// @param distances  of the vertex from each influence; asked for only where they are needed
/// @return false when a given weight could not keep its value
bool normalizeWeights(std::vector<double>& weights, const std::vector<WeightRole>& roles,
                      const std::function<std::vector<double>()>& distances);

/// The stored weights of some vertices, row after row; a row's influences are logical indices of the
/// skinCluster's `matrix`, ascending.
struct WeightRows {
    std::vector<int> vertices;
    std::vector<std::size_t> starts{0};  // vertices + 1 offsets into the two below
    std::vector<int> influences;
    std::vector<double> weights;

    /// Ends the row of a vertex: everything appended to `influences` and `weights` since the row before.
    void endRow(int vertex);
};

/// The attribute of the weights of one vertex, below weightList.
const graph::Attribute& weightsBelow(const graph::Plug& weightList);
/// Weights of one element of weightList; null where there are none. @param weights  weightsBelow() of the
/// list
const graph::NumberMulti* weightsOf(const graph::Slot& weightListElement, const graph::Attribute& weights);

/// Calls `use(vertex, weights)` for the element of weightList with the lowest index, the next one, ... where
/// there are weights. Connections into weights are not followed.
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

/// The rows of these vertices, empty ones for vertices without weights. O(n log n).
WeightRows weightRows(const graph::NodeRef& skinCluster, const std::vector<int>& vertices);
/// The rows of all vertices that have one.
WeightRows weightRows(const graph::NodeRef& skinCluster);
/// Replaces the rows of these vertices. Weights of 0 are left out of the node. Recorded as one step.
void setWeightRows(graph::Graph& graph, const graph::NodeRef& skinCluster, const WeightRows& rows);

}  // namespace host::nodes
