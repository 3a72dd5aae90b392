#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "graph/graph.h"
#include "graph/nodeSource.h"
#include "nodes/meshData.h"
#include "scene/meshColorText.h"
#include "scene/sceneText.h"

namespace host::scene {

/// What one setAttr statement of a node is for.
struct AssignedStatement {
    int ordinal = 0;              ///< of the root attribute that it belongs to
    std::uint32_t statement = 0;  ///< number in the file
};

/// A node's part of a scene file. It reads statements when the node needs them: declarations and states when
/// somebody asks for an attribute, values when somebody asks for them.
class SavedNode final : public graph::NodeSource {
  public:
    /// @param graph  whose user is told of what cannot be read; must outlive the node's place in the scene
    SavedNode(std::shared_ptr<const SceneText> text, graph::Graph& graph)
        : text_(std::move(text)), graph_(graph) {}

    /// Adds statements first .. last-1, which belong to the node.
    void addStatements(std::uint32_t first, std::uint32_t last) { ranges_.emplace_back(first, last); }

    void introduce(graph::NodeLoader& loader) override;
    bool hasValues(int ordinal) const override;
    void load(graph::NodeLoader& loader, int ordinal) override;

    /// After `introduce`: the setAttr statements of the node, ordered by attribute and then as in the file.
    const std::vector<AssignedStatement>& assigned() const { return assigned_; }
    const std::shared_ptr<const SceneText>& text() const { return text_; }
    /// Calls visit(number) for each of the node's statements.
    template <typename Visit>
    void visitStatements(Visit&& visit) const {
        for (const auto& [first, last] : ranges_) {
            for (std::uint32_t k = first; k < last; ++k)
                visit(k);
        }
    }
    /// The mesh as the file has it, if it was read; null otherwise.
    const nodes::MeshPtr& mesh() const { return mesh_; }
    /// The statements of the edges and faces of that mesh, with line ends. They also say which UVs the
    /// corners have, which a mesh in memory does not know.
    /// @param corners  the colours that corners are to have instead of those that they have
    std::string facesText(const CornerColors& corners) const;
    /// The colour sets of that mesh as the file has them, by their index, as far as they were read.
    const std::map<int, ColorPalette>& palettes() const { return palettes_; }

  private:
    void introduceAttributes(graph::NodeLoader& loader);
    void introduceValue(graph::NodeLoader& loader, std::uint32_t statement);
    void introduceAliases(graph::NodeLoader& loader, const SetHead& head);
    /// Null if the node has none, or if it cannot be read. The user was told then.
    const nodes::MeshPtr& readOwnMesh(const graph::Node& node);
    void loadColors(graph::NodeLoader& loader, int ordinal);
    std::vector<AssignedStatement>::const_iterator firstOf(int ordinal) const;
    std::vector<std::uint32_t> statementsOf(int ordinal) const;

    std::shared_ptr<const SceneText> text_;
    graph::Graph& graph_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> ranges_;
    std::vector<AssignedStatement> assigned_;
    bool isMeshRead_ = false;
    nodes::MeshPtr mesh_;
    std::map<int, ColorPalette> palettes_;
};

/// The colours of the vertices of a mesh node in one of its sets.
graph::PlugKey colorKey(const graph::Node& mesh, int set);

/// The attribute of a node that a file names and this host does not have. It is made if it is missing.
/// @param name  the text after the node's dot
const graph::Attribute& keptAttribute(graph::NodeLoader& loader, std::string_view name);

}  // namespace host::scene
