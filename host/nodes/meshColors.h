#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "graph/graph.h"

/// Colour sets of mesh shapes: named lists of one RGBA colour per vertex, kept on the shape whatever its
/// history. A vertex without colour has four times -1.
namespace host::nodes {

using Color = std::array<float, 4>;
constexpr Color kUnsetColor{-1.0F, -1.0F, -1.0F, -1.0F};

/// The colours of a set; immutable in the graph like all data.
class VertexColorData final : public graph::Data {
  public:
    explicit VertexColorData(std::vector<Color> content) : colors(std::move(content)) {}
    std::string_view typeName() const override { return "vertexColors"; }
    void describe(std::string& text) const override { graph::appendText(text, colors); }

    std::vector<Color> colors;  // by vertex; vertices past its end have none
};

/// Names in the order of making.
std::vector<std::string> colorSetNames(graph::Graph& graph, const graph::NodeRef& shape);
/// Empty while there is no set.
std::string currentColorSet(graph::Graph& graph, const graph::NodeRef& shape);
/// @return false when there is no such set
bool setCurrentColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);

/// Makes a set, current when it is the first.
/// @param name  made unique by the number at its end; empty means colorSet1, colorSet2, ...
/// @return the name given
std::string createColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);
/// Deletes a set; when it was current the first one left becomes it. @return false when there is none
bool deleteColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);
/// @return false when there is no such set or the new name is taken
bool renameColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name,
                    const std::string& newName);

/// One colour per vertex of the mesh, kUnsetColor where there is none.
/// @param set  empty means the current one
/// @return empty when there is no such set
std::vector<Color> vertexColors(graph::Graph& graph, const graph::NodeRef& shape,
                                const std::string& set = {});
/// Gives vertices of the current set their colours; without a set makes colorSet1. Numbers that are no vertex
/// are left out. @param colors  one per entry of `vertices`
void setVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices,
                     const std::vector<Color>& colors);
/// Leaves vertices of the current set without colour.
void removeVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices);
/// Leaves no vertex of a set with a colour; the set stays. @param name  empty means the current one
/// @return false when there is no such set
bool clearColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name = {});
/// Gives a shape without sets those of another one, colours included.
void copyColorSets(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to);

}  // namespace host::nodes
