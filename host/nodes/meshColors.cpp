#include "nodes/meshColors.h"

#include <algorithm>

#include "nodes/meshNode.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

// Attributes of a colour set.
constexpr const char* kName = "colorName";
constexpr const char* kColors = "vertexColors";
constexpr const char* kClamped = "clamped";
constexpr const char* kRepresentation = "representation";

/// Element of the set with a name; empty if there is none.
graph::Plug findSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name) {
    const graph::Plug sets = shape->plug("colorSet");
    for (const int index : graph.elements(sets)) {
        graph::Plug set = sets.element(index);
        if (textAt(graph, childPlug(set, kName)) == name) return set;
    }
    return {};
}

void setText(graph::Graph& graph, const graph::Plug& plug, const std::string& text) {
    graph.setData(plug, std::make_shared<graph::StringData>(text));
}

std::size_t vertexCount(graph::Graph& graph, const graph::NodeRef& shape) {
    const MeshPtr mesh = meshOf(graph, shape);
    return mesh != nullptr ? static_cast<std::size_t>(mesh->mesh.vertexCount()) : 0;
}

Color clamped(Color color) {
    for (float& channel : color)
        channel = std::clamp(channel, 0.0F, 1.0F);
    return color;
}

std::string freeSetName(graph::Graph& graph, const graph::NodeRef& shape, const std::string& wanted) {
    if (!findSet(graph, shape, wanted)) return wanted;
    const std::string stem = wanted.substr(0, wanted.find_last_not_of("0123456789") + 1);
    for (int number = 1;; ++number) {
        std::string name = stem + std::to_string(number);
        if (!findSet(graph, shape, name)) return name;
    }
}

}  // namespace

ColorSetForm colorSetForm(graph::Graph& graph, const graph::NodeRef& shape, const std::string& set) {
    const graph::Plug found = findSet(graph, shape, set.empty() ? currentColorSet(graph, shape) : set);
    if (!found) return {};
    return {graph.number(childPlug(found, kClamped)) != 0.0,
            choiceAt(graph, childPlug(found, kRepresentation))};
}

void setColorSetForm(graph::Graph& graph, const graph::NodeRef& shape, const std::string& set,
                     const ColorSetForm& form) {
    const graph::Plug found = findSet(graph, shape, set);
    if (!found) return;
    graph.setNumber(childPlug(found, kClamped), form.isClamped ? 1.0 : 0.0);
    graph.setNumber(childPlug(found, kRepresentation), form.representation);
}

std::vector<std::string> colorSetNames(graph::Graph& graph, const graph::NodeRef& shape) {
    const graph::Plug sets = shape->plug("colorSet");
    std::vector<std::string> names;
    for (const int index : graph.elements(sets))
        names.push_back(textAt(graph, childPlug(sets.element(index), kName)));
    return names;
}

std::string currentColorSet(graph::Graph& graph, const graph::NodeRef& shape) {
    return textAt(graph, shape->plug("currentColorSet"));
}

bool setCurrentColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name) {
    if (!findSet(graph, shape, name)) return false;
    setText(graph, shape->plug("currentColorSet"), name);
    return true;
}

std::string createColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name) {
    const graph::Plug sets = shape->plug("colorSet");
    const bool isFirst = graph.elementCount(sets) == 0;
    std::string given = freeSetName(graph, shape, name.empty() ? "colorSet1" : name);
    setText(graph, childPlug(sets.element(graph.nextIndex(sets)), kName), given);
    if (isFirst) setCurrentColorSet(graph, shape, given);
    return given;
}

bool deleteColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name) {
    const graph::Plug set = findSet(graph, shape, name);
    if (!set) return false;
    graph.removeElement(set);
    if (currentColorSet(graph, shape) != name) return true;
    const std::vector<std::string> left = colorSetNames(graph, shape);
    setText(graph, shape->plug("currentColorSet"), left.empty() ? std::string() : left.front());
    return true;
}

bool renameColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name,
                    const std::string& newName) {
    const graph::Plug set = findSet(graph, shape, name);
    if (!set || newName.empty() || findSet(graph, shape, newName)) return false;
    const bool isCurrent = currentColorSet(graph, shape) == name;
    setText(graph, childPlug(set, kName), newName);
    if (isCurrent) setCurrentColorSet(graph, shape, newName);
    return true;
}

std::string copyColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name,
                         const std::string& copy) {
    const graph::Plug from = findSet(graph, shape, name);
    if (!from) return {};
    std::string given = findSet(graph, shape, copy) ? copy : createColorSet(graph, shape, copy);
    graph.setData(childPlug(findSet(graph, shape, given), kColors), graph.data(childPlug(from, kColors)));
    setColorSetForm(graph, shape, given, colorSetForm(graph, shape, name));
    return given;
}

std::vector<Color> vertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::string& set) {
    const graph::Plug found = findSet(graph, shape, set.empty() ? currentColorSet(graph, shape) : set);
    if (!found) return {};
    const auto stored = graph::dataAs<VertexColorData>(graph.data(childPlug(found, kColors)));
    std::vector<Color> colors = stored != nullptr ? stored->colors : std::vector<Color>();
    colors.resize(vertexCount(graph, shape), kUnsetColor);
    return colors;
}

void setVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices,
                     const std::vector<Color>& colors) {
    // The current set may be named wrongly: files and scripts set its name like any text.
    if (!findSet(graph, shape, currentColorSet(graph, shape)))
        setCurrentColorSet(graph, shape, createColorSet(graph, shape, currentColorSet(graph, shape)));
    std::vector<Color> all = vertexColors(graph, shape);
    const bool isClamped = colorSetForm(graph, shape).isClamped;
    const std::size_t count = std::min(vertices.size(), colors.size());
    for (std::size_t k = 0; k < count; ++k) {
        const auto vertex = static_cast<std::size_t>(vertices[k]);
        if (vertices[k] >= 0 && vertex < all.size())
            all[vertex] = isClamped && colors[k] != kUnsetColor ? clamped(colors[k]) : colors[k];
    }
    const graph::Plug set = findSet(graph, shape, currentColorSet(graph, shape));
    graph.setData(childPlug(set, kColors), std::make_shared<VertexColorData>(std::move(all)));
}

void removeVertexColors(graph::Graph& graph, const graph::NodeRef& shape, const std::vector<int>& vertices) {
    if (!findSet(graph, shape, currentColorSet(graph, shape))) return;
    setVertexColors(graph, shape, vertices, std::vector<Color>(vertices.size(), kUnsetColor));
}

bool clearColorSet(graph::Graph& graph, const graph::NodeRef& shape, const std::string& name) {
    const graph::Plug set = findSet(graph, shape, name.empty() ? currentColorSet(graph, shape) : name);
    if (!set) return false;
    graph.setData(childPlug(set, kColors), nullptr);
    return true;
}

void copyColorSets(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to) {
    const graph::Plug sets = from->plug("colorSet");
    for (const int index : graph.elements(sets)) {
        const graph::Plug copy = to->plug("colorSet").element(index);
        for (const char* part : {kName, kColors})
            graph.setData(childPlug(copy, part), graph.data(childPlug(sets.element(index), part)));
        const std::string name = textAt(graph, childPlug(copy, kName));
        setColorSetForm(graph, to, name, colorSetForm(graph, from, name));
    }
    if (const std::string current = currentColorSet(graph, from); !current.empty())
        setCurrentColorSet(graph, to, current);
}

}  // namespace host::nodes
