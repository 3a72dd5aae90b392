#pragma once

#include <optional>
#include <vector>

#include "commands/commandSupport.h"
#include "nodes/skinClusterNode.h"
#include "nodes/skinWeights.h"

/// What the commands that work on skin clusters share.
namespace host::commands {

/// Edits the weights of vertices, one by one, as a user's tools do: locked influences keep theirs, and the
/// node's own settings say whether the sum is kept at 1 and how many influences a vertex may have.
///
/// Rows gather until `write`.
class WeightEditor {
  public:
    /// @param normalizes  keep sums at 1, unless the node is set to leave them alone
    WeightEditor(graph::Graph& graph, graph::NodeRef skinCluster, bool normalizes);

    /// Elements of the node's `matrix`; weights below are in their order.
    const std::vector<int>& influences() const { return influences_; }
    bool isLocked(std::size_t influence) const { return locked_[influence]; }

    /// The stored weights of a vertex.
    std::vector<double> weights(int vertex) const;
    /// Takes new weights of a vertex. @param roles  Given for those that were asked for, Free for all others
    void set(int vertex, std::vector<double> weights, std::vector<nodes::WeightRole> roles);
    /// Writes everything that was set. @return whether every given weight kept its value
    bool write();

  private:
    std::vector<double> distances(int vertex);
    bool limit(std::vector<double>& weights, std::vector<nodes::WeightRole>& roles);

    graph::Graph& graph_;
    graph::NodeRef skinCluster_;
    bool normalizes_;
    std::size_t maxInfluences_;
    std::vector<int> influences_;
    std::vector<bool> locked_;
    std::optional<nodes::BindPose> pose_;
    nodes::WeightRows rows_;
    bool isKept_ = true;
};

/// The skinCluster of a name.
Found<graph::NodeRef> findSkinCluster(const graph::Graph& graph, const std::string& name);

}  // namespace host::commands
