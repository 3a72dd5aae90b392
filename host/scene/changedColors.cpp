#include "scene/changedColors.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace host::scene {

ChangedColors::ChangedColors(graph::Graph& graph, graph::Node& node, const nodes::MeshPtr& mesh,
                             const SavedNode* then)
    : graph_(graph), node_(node) {
    if (!node.isA("mesh")) return;
    static const std::map<int, ColorPalette> none;
    for (const int set : graph.elements(node.plug("colorSet")))
        sets_.insert(set);
    const std::map<int, ColorPalette>& saved = then != nullptr ? then->palettes() : none;
    for (const auto& [set, palette] : saved)
        sets_.insert(set);
    for (const int set : sets_) {
        const auto found = saved.find(set);
        if (mesh != nullptr) {
            add(set, mesh->mesh.topology(), found != saved.end() ? found->second : ColorPalette());
        } else if (node.storedData(colorKey(node, set)) != nullptr) {
            areLost_ = true;
        }
    }
}

void ChangedColors::add(int set, const geometry::Topology& topology, const ColorPalette& saved) {
    const auto data = graph::dataAs<nodes::VertexColorData>(node_.storedData(colorKey(node_, set)));
    std::vector<nodes::Color> now = data != nullptr ? data->colors : std::vector<nodes::Color>();
    now.resize(static_cast<std::size_t>(topology.vertexCount()), nodes::kUnsetColor);
    const std::vector<nodes::Color> before = vertexColors(saved, topology);
    const bool isThere = graph_.hasElement(node_.plug("colorSet").element(set));
    if (areSame(before, now) && isThere) return;
    Changed changed{saved};
    updatePalette(changed.palette, before, now, topology);
    changed.kept = std::min(saved.colors.size(), changed.palette.colors.size());
    changed_.emplace(set, std::move(changed));
}

void ChangedColors::cover(NewValues& values) const {
    for (const int set : sets_)
        values.cover({colorKey(node_, set)});
    if (areLost_) {
        graph_.messages().warning("The vertex colors of " + graph_.uniqueName(node_) +
                                  " are not saved: its mesh comes from another node. Delete its history "
                                  "first to keep them.");
    }
}

CornerColors ChangedColors::corners() const {
    CornerColors result;
    for (const auto& [set, changed] : changed_)
        result.emplace(set, &changed.palette.corners);
    return result;
}

bool ChangedColors::keepsPalette(int set) const {
    const auto found = changed_.find(set);
    return found == changed_.end() || found->second.kept > 0;
}

std::string ChangedColors::addedText(const std::string& lineEnd) const {
    std::string text;
    for (const auto& [set, changed] : changed_)
        text += paletteText(changed.palette.colors, changed.kept, set, lineEnd);
    return text;
}

}  // namespace host::scene
