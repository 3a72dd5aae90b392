#include "nodes/skinWeights.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <utility>

namespace host::nodes {

namespace {

/// Sums that differ from 1 only by rounding need no warning.
constexpr double kTolerance = 1e-9;

constexpr double kShareDropoff = 4.0;

struct RoleSums {
    double given = 0.0;
    double free = 0.0;
    double locked = 0.0;
    int givenCount = 0;
    int freeCount = 0;
};

RoleSums sumsOf(const std::vector<double>& weights, const std::vector<WeightRole>& roles) {
    RoleSums sums;
    for (std::size_t k = 0; k < weights.size(); ++k) {
        switch (roles[k]) {
            case WeightRole::Given:
                sums.given += weights[k];
                ++sums.givenCount;
                break;
            case WeightRole::Free:
                sums.free += weights[k];
                ++sums.freeCount;
                break;
            case WeightRole::Locked:
                sums.locked += weights[k];
                break;
        }
    }
    return sums;
}

/// Gives the free weights, which are all 0, the rest by their distance.
void shareByDistance(std::vector<double>& weights, const std::vector<WeightRole>& roles, double rest,
                     const std::vector<double>& distances) {
    std::vector<double> ofFree;
    for (std::size_t k = 0; k < roles.size(); ++k) {
        if (roles[k] == WeightRole::Free) ofFree.push_back(distances[k]);
    }
    const std::vector<double> shares = closestWeights(ofFree, kShareDropoff, static_cast<int>(ofFree.size()));
    auto share = shares.begin();
    for (std::size_t k = 0; k < roles.size(); ++k) {
        if (roles[k] == WeightRole::Free) weights[k] = rest * *share++;
    }
}

const graph::Slot* rowSlot(const graph::Slot* list, int vertex) {
    if (list == nullptr) return nullptr;
    const auto* multi = std::get_if<std::unique_ptr<graph::ElementMulti>>(&list->content);
    return multi != nullptr ? static_cast<const graph::ElementMulti&>(**multi).find(vertex) : nullptr;
}

void appendRow(WeightRows& rows, int vertex, const graph::NumberMulti* weights) {
    if (weights != nullptr) {
        const std::vector<int>& indices = weights->indices();
        const double* values = weights->find(indices.front());
        rows.influences.insert(rows.influences.end(), indices.begin(), indices.end());
        rows.weights.insert(rows.weights.end(), values, values + indices.size());
    }
    rows.endRow(vertex);
}

/// A weight of 0 takes no element, but undo brings back one that was set by hand.
enum class Zeros { Dropped, Kept };

/// Writes one row without recording.
/// @param weights  the array to write to
/// @param present  its current weights, null for none
void writeRow(graph::Graph& graph, const graph::Plug& weights, const WeightRows& rows, std::size_t row,
              const graph::NumberMulti* present, Zeros zeros) {
    std::vector<std::pair<int, double>> wanted;
    for (std::size_t k = rows.starts[row]; k < rows.starts[row + 1]; ++k) {
        if (zeros == Zeros::Kept || rows.weights[k] != 0.0)
            wanted.emplace_back(rows.influences[k], rows.weights[k]);
    }
    if (present != nullptr) {
        const std::vector<int>& indices = present->indices();
        const bool isSameSet = std::equal(indices.begin(), indices.end(), wanted.begin(), wanted.end(),
                                          [](int index, const auto& entry) { return index == entry.first; });
        if (!isSameSet) graph.clearElements(weights);
    }
    for (const auto& [influence, weight] : wanted)
        graph.setNumber(weights.element(influence), weight);
}

void writeRows(graph::Graph& graph, const graph::NodeRef& skinCluster, const WeightRows& rows,
               Zeros zeros = Zeros::Dropped) {
    const graph::RecordingScope silent(graph, nullptr);
    const graph::Plug list = skinCluster->plug("weightList");
    const graph::Attribute& weights = weightsBelow(list);
    for (std::size_t row = 0; row < rows.vertices.size(); ++row) {
        const int vertex = rows.vertices[row];
        const graph::Slot* slot = rowSlot(skinCluster->slot(list.key()), vertex);
        writeRow(graph, list.element(vertex).child(weights), rows, row,
                 slot != nullptr ? weightsOf(*slot, weights) : nullptr, zeros);
    }
}

}  // namespace

bool normalizeWeights(std::vector<double>& weights, const std::vector<WeightRole>& roles,
                      const std::function<std::vector<double>()>& distances) {
    const RoleSums sums = sumsOf(weights, roles);
    const double available = std::max(0.0, 1.0 - sums.locked);
    const double rest = std::max(0.0, available - sums.given);
    const bool isShared = sums.free <= 0.0 && sums.freeCount > 0 && sums.givenCount > 0 && rest > 0.0;
    const bool isFilled = rest <= kTolerance || sums.free > 0.0 || isShared;
    const bool givenFit = sums.given <= available + kTolerance && isFilled;
    if (isShared) shareByDistance(weights, roles, rest, distances());
    for (std::size_t k = 0; k < weights.size(); ++k) {
        double& weight = weights[k];
        if (roles[k] == WeightRole::Free && sums.free > 0.0) {
            weight *= rest / sums.free;
        } else if (roles[k] == WeightRole::Given && !givenFit) {
            weight = sums.given > 0.0 ? weight * available / sums.given : available / sums.givenCount;
        }
    }
    return sums.givenCount == 0 || givenFit;
}

std::vector<double> closestWeights(const std::vector<double>& distances, double dropoff, int maxInfluences) {
    std::vector<double> weights(distances.size(), 0.0);
    std::vector<std::size_t> order(distances.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return distances[a] < distances[b]; });
    order.resize(std::min(order.size(), static_cast<std::size_t>(std::max(1, maxInfluences))));
    double sum = 0.0;
    for (const std::size_t k : order) {
        // Relative to the nearest one, so that no power overflows.
        const double nearest = distances[order.front()];
        weights[k] = distances[k] > 0.0 ? std::pow(nearest / distances[k], dropoff) : 1.0;
        sum += weights[k];
    }
    for (double& weight : weights)
        weight /= sum;
    return weights;
}

void WeightRows::endRow(int vertex) {
    vertices.push_back(vertex);
    starts.push_back(influences.size());
}

const graph::Attribute& weightsBelow(const graph::Plug& weightList) {
    return *weightList.attribute().child("weights");
}

const graph::NumberMulti* weightsOf(const graph::Slot& weightListElement, const graph::Attribute& weights) {
    const auto* children = std::get_if<std::unique_ptr<graph::Slot::Children>>(&weightListElement.content);
    if (children == nullptr) return nullptr;
    const graph::Slot& slot = (**children)[static_cast<std::size_t>(weights.ordinal())];
    const auto* numbers = std::get_if<std::unique_ptr<graph::NumberMulti>>(&slot.content);
    return numbers != nullptr && (*numbers)->size() > 0 ? numbers->get() : nullptr;
}

WeightRows weightRows(const graph::NodeRef& skinCluster, const std::vector<int>& vertices) {
    WeightRows rows;
    const graph::Plug list = skinCluster->plug("weightList");
    const graph::Attribute& weights = weightsBelow(list);
    const graph::Slot* stored = skinCluster->slot(list.key());
    for (const int vertex : vertices) {
        const graph::Slot* slot = rowSlot(stored, vertex);
        appendRow(rows, vertex, slot != nullptr ? weightsOf(*slot, weights) : nullptr);
    }
    return rows;
}

WeightRows weightRows(const graph::NodeRef& skinCluster) {
    WeightRows rows;
    forEachWeightRow(skinCluster, [&](int vertex, const graph::NumberMulti& weights) {
        appendRow(rows, vertex, &weights);
    });
    return rows;
}

void setWeightRows(graph::Graph& graph, const graph::NodeRef& skinCluster, const WeightRows& rows) {
    if (graph.recorder() == nullptr) {
        writeRows(graph, skinCluster, rows);
        return;
    }
    const auto before = std::make_shared<WeightRows>(weightRows(skinCluster, rows.vertices));
    const auto after = std::make_shared<WeightRows>(rows);
    const graph::Plug list = skinCluster->plug("weightList");
    std::vector<int> fresh;
    for (const int vertex : rows.vertices) {
        if (!graph.hasElement(list.element(vertex))) fresh.push_back(vertex);
    }
    writeRows(graph, skinCluster, rows);
    graph.recorder()->add(
        [skinCluster, before, list, fresh = std::move(fresh)](graph::Graph& scene) {
            writeRows(scene, skinCluster, *before, Zeros::Kept);
            const graph::RecordingScope silent(scene, nullptr);
            for (auto vertex = fresh.rbegin(); vertex != fresh.rend(); ++vertex)
                scene.removeElement(list.element(*vertex));
        },
        [skinCluster, after](graph::Graph& scene) { writeRows(scene, skinCluster, *after); });
}

}  // namespace host::nodes
