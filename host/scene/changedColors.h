#pragma once

#include <map>
#include <set>
#include <string>

#include "scene/plugText.h"
#include "scene/savedNode.h"

namespace host::scene {

/// The colour sets of a mesh node that differ from those of its file, as they are to be written.
class ChangedColors {
  public:
    /// @param mesh  whose faces are in the file or are going to be; null if there are none, as for a shape
    ///              whose mesh another node makes
    /// @param then  the node's file; null if it has none, or if its mesh has other faces now
    ChangedColors(graph::Graph& graph, graph::Node& node, const nodes::MeshPtr& mesh, const SavedNode* then);

    /// What this writes must not be written as plain values. Tells the user of colours that cannot be
    /// written.
    void cover(NewValues& values) const;
    CornerColors corners() const;
    /// Whether the statements of a palette stay.
    bool keepsPalette(int set) const;
    /// Statements of the entries that the file does not have, with line ends.
    std::string addedText(const std::string& lineEnd) const;

  private:
    struct Changed {
        ColorPalette palette;
        std::size_t kept = 0;  ///< entries that the file has
    };

    void add(int set, const geometry::Topology& topology, const ColorPalette& saved);

    graph::Graph& graph_;
    graph::Node& node_;
    bool areLost_ = false;
    std::set<int> sets_;
    std::map<int, Changed> changed_;
};

}  // namespace host::scene
