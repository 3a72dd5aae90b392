#pragma once

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry/mesh.h"
#include "graph/data.h"

namespace host::nodes {

/// Which vertices belong to the group that a groupId node stands for.
struct VertexGroup {
    int id = 0;
    std::shared_ptr<const graph::ComponentListData> components;
};

/// A mesh as it travels along connections. One that did not change keeps its address through evaluations, so
/// equal addresses mean an equal mesh.
class MeshData final : public graph::Data {
  public:
    explicit MeshData(geometry::Mesh content, std::vector<VertexGroup> members = {})
        : mesh(std::move(content)), groups(std::move(members)) {}
    std::string_view typeName() const override { return "mesh"; }
    /// Points, the topology as digests, and groups with their components.
    void describe(std::string& text) const override;

    geometry::Mesh mesh;
    std::vector<VertexGroup> groups;
};

using MeshPtr = std::shared_ptr<const MeshData>;

/// Whether both are the same mesh: one topology object and equal points. Linear at worst.
bool isSameMesh(const MeshPtr& a, const MeshPtr& b);

/// `last` when it says the same as `fresh`, otherwise `fresh`: keeps addresses stable.
MeshPtr keepAddress(const MeshPtr& last, MeshPtr fresh);

}  // namespace host::nodes
