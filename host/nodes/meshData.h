#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry/mesh.h"
#include "graph/data.h"

namespace host::nodes {

/// Components of a mesh that deformers can be restricted to: those of a group, which a groupId node
/// identifies, or those of a component tag, which has a name.
struct ComponentGroup {
    int id = 0;         ///< kTagId for a tag
    std::string tag{};  ///< empty for a group
    std::shared_ptr<const graph::ComponentListData> components{};

    bool operator==(const ComponentGroup& other) const {
        return id == other.id && tag == other.tag && components == other.components;
    }
};
constexpr int kTagId = -1;

/// A mesh as it is passed along connections. A mesh that does not change keeps its address through
/// evaluations, so equal addresses mean equal meshes.
class MeshData final : public graph::Data {
  public:
    explicit MeshData(geometry::Mesh content, std::vector<ComponentGroup> members = {})
        : mesh(std::move(content)), groups(std::move(members)) {}
    std::string_view typeName() const override { return "mesh"; }
    /// Points, the topology as digests, and groups with their components.
    void describe(std::string& text) const override;

    geometry::Mesh mesh;
    std::vector<ComponentGroup> groups;
};

using MeshPtr = std::shared_ptr<const MeshData>;

/// Whether both are the same mesh: one topology object and equal points. Linear at worst.
bool isSameMesh(const MeshPtr& a, const MeshPtr& b);

/// `last` if it is equal to `fresh`, otherwise `fresh`. This keeps addresses stable.
MeshPtr keepAddress(const MeshPtr& last, MeshPtr fresh);

}  // namespace host::nodes
