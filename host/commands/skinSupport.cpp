#include "commands/skinSupport.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "nodes/deformers.h"

namespace host::commands {

using nodes::WeightRole;

namespace {

/// What normalizing may change of a weight that was normalized before.
constexpr double kRounding = 1e-12;

}  // namespace

WeightEditor::WeightEditor(graph::Graph& graph, graph::NodeRef skinCluster, bool normalizes)
    : graph_(graph),
      skinCluster_(std::move(skinCluster)),
      normalizes_(normalizes && nodes::normalizesEdits(graph, skinCluster_)),
      influences_(graph.elements(skinCluster_->plug("matrix"))) {
    for (const int index : influences_)
        locked_.push_back(nodes::isInfluenceLocked(graph, skinCluster_, index));
    const bool isLimited = graph.number(skinCluster_->plug("maintainMaxInfluences")) != 0.0;
    const double maximum = std::max(1.0, graph.number(skinCluster_->plug("maxInfluences")));
    maxInfluences_ = isLimited ? static_cast<std::size_t>(maximum) : influences_.size();
    const bool asksNeighbours = graph.number(skinCluster_->plug("weightDistribution")) == 1.0;
    if (normalizes_ && asksNeighbours) neighbourhood_ = nodes::undeformedMesh(graph, skinCluster_, 0);
}

std::vector<double> WeightEditor::weights(int vertex) const {
    std::vector<double> result(influences_.size(), 0.0);
    const nodes::WeightRows row = nodes::weightRows(skinCluster_, {vertex});
    for (std::size_t k = 0; k < row.influences.size(); ++k) {
        const auto found = std::lower_bound(influences_.begin(), influences_.end(), row.influences[k]);
        if (found != influences_.end() && *found == row.influences[k])
            result[static_cast<std::size_t>(found - influences_.begin())] = row.weights[k];
    }
    return result;
}

std::vector<double> WeightEditor::distances(int vertex) {
    if (!pose_) pose_ = nodes::bindPoseOf(graph_, skinCluster_);
    return pose_->distances(vertex);
}

/// If nothing but weights of 0 could take what given weights leave, these get the sums of the neighbours'
/// stored weights, in whose proportion they share it. Where those are 0 too, distances decide.
void WeightEditor::fillFromNeighbours(int vertex, std::vector<double>& weights,
                                      const std::vector<WeightRole>& roles) const {
    const bool isGiven = std::find(roles.begin(), roles.end(), WeightRole::Given) != roles.end();
    if (!isGiven || vertex >= neighbourhood_->mesh.vertexCount()) return;
    for (std::size_t k = 0; k < weights.size(); ++k) {
        if (roles[k] == WeightRole::Free && weights[k] != 0.0) return;
    }
    for (const int neighbour : neighbourhood_->mesh.topology().vertexNeighbours(vertex)) {
        const std::vector<double> beside = this->weights(neighbour);
        for (std::size_t k = 0; k < weights.size(); ++k) {
            if (roles[k] == WeightRole::Free) weights[k] += beside[k];
        }
    }
}

/// Removes the smallest weights beyond the maximum number, first those that were not given. All weights of 0
/// then count as locked.
/// @return whether any were removed
bool WeightEditor::limit(std::vector<double>& weights, std::vector<WeightRole>& roles) {
    const auto isUsed = [](double weight) { return weight != 0.0; };
    const auto used = static_cast<std::size_t>(std::count_if(weights.begin(), weights.end(), isUsed));
    bool hasDropped = false;
    for (std::size_t excess = used > maxInfluences_ ? used - maxInfluences_ : 0; excess > 0; --excess) {
        std::size_t least = weights.size();
        for (std::size_t k = 0; k < weights.size(); ++k) {
            if (weights[k] == 0.0 || roles[k] == WeightRole::Locked) continue;
            const bool isLess = least == weights.size() ||
                                std::make_pair(roles[k] == WeightRole::Given, weights[k]) <
                                    std::make_pair(roles[least] == WeightRole::Given, weights[least]);
            if (isLess) least = k;
        }
        if (least == weights.size()) break;
        weights[least] = 0.0;
        isKept_ = isKept_ && roles[least] != WeightRole::Given;
        hasDropped = true;
    }
    for (std::size_t k = 0; hasDropped && k < weights.size(); ++k) {
        if (weights[k] == 0.0) roles[k] = WeightRole::Locked;
    }
    return hasDropped;
}

void WeightEditor::set(int vertex, std::vector<double> weights, std::vector<WeightRole> roles) {
    const std::vector<double> present = this->weights(vertex);
    for (std::size_t k = 0; k < weights.size(); ++k) {
        if (!locked_[k]) continue;
        isKept_ = isKept_ && (roles[k] != WeightRole::Given || weights[k] == present[k]);
        weights[k] = present[k];
        roles[k] = WeightRole::Locked;
    }
    const auto normalize = [&] {
        if (!normalizes_) return;
        if (neighbourhood_ != nullptr) fillFromNeighbours(vertex, weights, roles);
        isKept_ = nodes::normalizeWeights(weights, roles, [&] { return distances(vertex); }) && isKept_;
    };
    normalize();
    if (limit(weights, roles)) normalize();
    bool isUnchanged = true;
    for (std::size_t k = 0; k < weights.size(); ++k) {
        // What was taken away is a change, however small it was.
        const bool isExact = roles[k] == WeightRole::Given || weights[k] == 0.0;
        isUnchanged = isUnchanged && std::abs(weights[k] - present[k]) <= (isExact ? 0.0 : kRounding);
    }
    if (isUnchanged) return;
    for (std::size_t k = 0; k < weights.size(); ++k) {
        if (weights[k] == 0.0) continue;
        rows_.influences.push_back(influences_[k]);
        rows_.weights.push_back(weights[k]);
    }
    rows_.endRow(vertex);
}

bool WeightEditor::write() {
    if (!rows_.vertices.empty()) nodes::setWeightRows(graph_, skinCluster_, rows_);
    return isKept_;
}

Found<graph::NodeRef> findSkinCluster(const graph::Graph& graph, const std::string& name) {
    Found<graph::NodeRef> node = findOneNode(graph, name);
    if (node.ok() && !node.value->isA("skinCluster")) return {nullptr, '\'' + name + "' is no skinCluster."};
    return node;
}

Found<graph::NodeRef> skinClusterFor(graph::Graph& graph, const graph::NodeRef& node,
                                     const std::string& command) {
    if (node->isA("skinCluster")) return {node, {}};
    const graph::NodeRef shape = graph.shapeOf(node);
    graph::NodeRef skin =
        shape != nullptr && shape->isA("mesh") ? nodes::skinClusterOf(graph, shape) : nullptr;
    if (skin == nullptr) return {nullptr, command + ": " + graph.uniqueName(*node) + " has no skin cluster."};
    return {std::move(skin), {}};
}

}  // namespace host::commands
