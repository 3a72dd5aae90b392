#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "graph/graph.h"

/// Colour sets of mesh shapes: named lists of one RGBA colour per vertex. They are kept on the shape, with or
/// without history. A vertex without colour has -1 four times.
namespace host::nodes {

using Color = std::array<float, 4>;
constexpr Color kUnsetColor{-1.0F, -1.0F, -1.0F, -1.0F};

/// The colours of a set. Immutable in the graph, like all data.
class VertexColorData final : public graph::Data {
  public:
    explicit VertexColorData(std::vector<Color> content) : colors(std::move(content)) {}
    std::string_view typeName() const override { return "vertexColors"; }
    void describe(std::string& text) const override { graph::appendText(text, colors); }

    std::vector<Color> colors;  // by vertex; vertices after the end of the list have no colour
};

/// What a colour set holds besides its colours.
struct ColorSetForm {
    bool isClamped = false;  ///< colours that are set are brought between 0 and 1
    int representation = kRgba;
    static constexpr int kAlpha = 1;
    static constexpr int kRgb = 3;
    static constexpr int kRgba = 4;
};
/// @param set  empty means the current one; for a set that does not exist the usual form is given
ColorSetForm colorSetForm(graph::Graph& graph, const graph::NodeRef& shape, const std::string& set = {});
void setColorSetForm(graph::Graph& graph, const graph::NodeRef& shape, const std::string& set,
                     const ColorSetForm& form);

/// Names in order of creation.
std::vector<std::string> colorSetNames(graph::Graph& graph, const graph::NodeRef& shape);
/// Empty if there is no set.
std::string currentColorSet(graph::Graph& graph, const graph::NodeRef& shape);
/// @return false if there is no such set
bool setCurrentColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);

/// Makes a set. The first one becomes the current one.
/// @param name  made unique by the number at its end; empty means colorSet1, colorSet2, ...
/// @return the name given
std::string createColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);
/// Deletes a set. If it was the current one, the first remaining set becomes current.
/// @return false if there is no such set
bool deleteColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name);
/// @return false if there is no such set or the new name is taken
bool renameColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name,
                    const std::string& newName);

/// Copies a set with its colours into another one, which is made if it is not there.
/// @param copy  empty means colorSet1, colorSet2, ...
/// @return the name of the copy; empty if there is no such set
std::string copyColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name,
                         const std::string& copy);

/// One colour per vertex of the mesh, kUnsetColor if it has none.
/// @param set  empty means the current one
/// @return empty if there is no such set
std::vector<Color> vertexColors(graph::Graph& graph, const graph::NodeRef& shape,
                                const std::string& set = {});
/// Sets the colours of vertices in the current set. Makes colorSet1 if there is no set. Numbers that are not
/// vertices are left out.
/// @param colors  one per entry of `vertices`
void setVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices,
                     const std::vector<Color>& colors);
/// Removes the colours of vertices from the current set.
void removeVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices);
/// Removes all colours from a set. The set stays.
/// @param name  empty means the current one
/// @return false if there is no such set
bool clearColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name = {});
/// Copies the sets of a shape, with colours, to a shape that has none.
void copyColorSets(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to);

}  // namespace host::nodes
