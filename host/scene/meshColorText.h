#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/topology.h"
#include "nodes/meshColors.h"
#include "scene/faceWords.h"
#include "scene/sceneText.h"

namespace host::scene {

/// A colour set as a file has it: a list of colours, and which of them each corner of a face takes. The host
/// that reads our files has colours by corner; in memory we have them by vertex.
struct ColorPalette {
    std::vector<nodes::Color> colors{};
    std::vector<int> corners{};  ///< by corner of the topology an index of colors; -1 for no colour; or empty
};

/// Whether an attribute's name is the list of colours of a set: "clst[0].clsp[0:11]".
bool isPalette(std::string_view path);
/// The index of the set that such a name belongs to.
int paletteSet(std::string_view path);

/// Reads the sets of a mesh, by their index. What does not fit the mesh has no colour.
/// @param colors  the statements of the lists of colours
/// @param faces   those of the mesh
std::map<int, ColorPalette> readPalettes(const SceneText& text, const std::vector<std::uint32_t>& colors,
                                         const std::vector<std::uint32_t>& faces,
                                         const geometry::Topology& topology);
/// The colour of each vertex: the mean of its corners that have one.
std::vector<nodes::Color> vertexColors(const ColorPalette& palette, const geometry::Topology& topology);

/// Whether two lists have the same colours, bit by bit.
bool areSame(const std::vector<nodes::Color>& a, const std::vector<nodes::Color>& b);

/// Brings a palette up to date, and gives it all its corners. Corners of vertices whose colour is still the
/// same keep their entries.
/// @param before, now  by vertex
void updatePalette(ColorPalette& palette, const std::vector<nodes::Color>& before,
                   const std::vector<nodes::Color>& now, const geometry::Topology& topology);

/// The statements of a set's colours from `first` on, with line ends.
std::string paletteText(const std::vector<nodes::Color>& colors, std::size_t first, int set,
                        std::string_view lineEnd);

/// A statement of faces with other colours at its corners.
/// @param keepsOther  whether sets that are not named keep their corners; otherwise they lose them
std::string recolored(std::string_view statement, const SetHead& head, const geometry::Topology& topology,
                      const CornerColors& corners, bool keepsOther, std::string_view lineEnd);

}  // namespace host::scene
