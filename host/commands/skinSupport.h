#pragma once

#include <optional>
#include <vector>

#include "commands/commandSupport.h"
#include "nodes/meshData.h"
#include "nodes/skinClusterNode.h"
#include "nodes/skinWeights.h"

/// What the commands for skin clusters share.
namespace host::commands {

/// Edits the weights of vertices one by one, as a user's tools do. Locked influences keep their weights. The
/// node's settings say whether the sum stays 1, and how many influences a vertex may have.
///
/// Rows are collected until `write`.
class WeightEditor {
  public:
    /// @param normalizes  keep sums at 1, unless the node's setting says otherwise
    WeightEditor(graph::Graph& graph, graph::NodeRef skinCluster, bool normalizes);

    /// Elements of the node's `matrix`. The weights below are in their order.
    const std::vector<int>& influences() const { return influences_; }
    bool isLocked(std::size_t influence) const { return locked_[influence]; }

    /// The stored weights of a vertex.
    std::vector<double> weights(int vertex) const;
    /// Sets new weights of a vertex. Weights that no call gave and that differ from the present ones by
    /// rounding only are no change: a row without change is not written.
    /// @param roles  Given for the weights that the call sets, Free for all others
    void set(int vertex, std::vector<double> weights, std::vector<nodes::WeightRole> roles);
    /// Writes everything that was set.
    /// @return whether every given weight kept its value
    bool write();

  private:
    std::vector<double> distances(int vertex);
    void fillFromNeighbours(int vertex, std::vector<double>& weights,
                            const std::vector<nodes::WeightRole>& roles) const;
    bool limit(std::vector<double>& weights, std::vector<nodes::WeightRole>& roles);

    graph::Graph& graph_;
    graph::NodeRef skinCluster_;
    bool normalizes_;
    std::size_t maxInfluences_;
    std::vector<int> influences_;
    std::vector<bool> locked_;
    std::optional<nodes::BindPose> pose_;
    nodes::MeshPtr neighbourhood_;  // null unless free weights come from those of neighbours
    nodes::WeightRows rows_;
    bool isKept_ = true;
};

/// The skinCluster with a name.
Found<graph::NodeRef> findSkinCluster(const graph::Graph& graph, const std::string& name);
/// A skinCluster itself, or the one that deforms a mesh or a mesh's transform.
Found<graph::NodeRef> skinClusterFor(graph::Graph& graph, const graph::NodeRef& node,
                                     const std::string& command);

}  // namespace host::commands
