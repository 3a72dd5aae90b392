// The commands polyColorPerVertex and polyColorSet.

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "nodes/meshColors.h"

namespace host::commands {

namespace {

using graph::NodeRef;
using nodes::Color;

constexpr std::array<const char*, 4> kChannels{"colorR", "colorG", "colorB", "alpha"};

// The command polyColorPerVertex.

/// Vertices of an item. A whole mesh means all of them.
Found<std::vector<int>> verticesOfItem(graph::Graph& graph, const graph::SelectionItem& item) {
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, item.node);
    if (!mesh.ok()) return {{}, "polyColorPerVertex: " + mesh.error};
    if (item.component) return {verticesOf(mesh.value, *item.component), {}};
    std::vector<int> all(static_cast<std::size_t>(mesh.value->mesh.vertexCount()));
    std::iota(all.begin(), all.end(), 0);
    return {std::move(all), {}};
}

/// The channels that a call gives, by position in kChannels.
std::array<std::optional<float>, 4> channelsOf(const ParsedArguments& arguments) {
    std::array<std::optional<float>, 4> channels;
    const std::vector<Value>& rgb = arguments.values("colorRGB");
    for (std::size_t k = 0; k < rgb.size(); ++k)
        channels[k] = static_cast<float>(rgb[k].toFloat());
    for (std::size_t k = 0; k < kChannels.size(); ++k) {
        if (arguments.isSet(kChannels[k])) channels[k] = static_cast<float>(arguments.number(kChannels[k]));
    }
    return channels;
}

/// A colour with some channels replaced or increased. A vertex without colour starts as opaque black.
Color changed(const Color& present, const std::array<std::optional<float>, 4>& channels, bool isRelative) {
    Color color = present == nodes::kUnsetColor ? Color{0.0F, 0.0F, 0.0F, 1.0F} : present;
    for (std::size_t k = 0; k < channels.size(); ++k) {
        if (channels[k]) color[k] = isRelative ? color[k] + *channels[k] : *channels[k];
    }
    return color;
}

void setColors(graph::Graph& graph, const NodeRef& shape, const std::vector<int>& vertices,
               const ParsedArguments& arguments) {
    const auto channels = channelsOf(arguments);
    const bool givesAny =
        std::any_of(channels.begin(), channels.end(), [](const auto& value) { return value.has_value(); });
    if (!givesAny) return;
    const std::vector<Color> present = nodes::vertexColors(graph, shape);
    std::vector<Color> colors;
    colors.reserve(vertices.size());
    for (const int vertex : vertices) {
        const Color& before =
            present.empty() ? nodes::kUnsetColor : present[static_cast<std::size_t>(vertex)];
        colors.push_back(changed(before, channels, arguments.isSet("relative")));
    }
    nodes::setVertexColors(graph, shape, vertices, colors);
}

CommandResult queryColors(graph::Graph& graph, const std::vector<graph::SelectionItem>& items,
                          const ParsedArguments& arguments) {
    if (arguments.isSet("colorDisplayOption"))
        return CommandResult::success(graph.number(items.front().node->plug("displayColors")) != 0.0);
    std::vector<std::size_t> channels;
    for (std::size_t k = 0; k < kChannels.size(); ++k) {
        if (arguments.isSet(kChannels[k]) || (k < 3 && arguments.isSet("colorRGB"))) channels.push_back(k);
    }
    if (channels.empty()) return CommandResult::failure("polyColorPerVertex: No flag says what to report.");
    std::vector<double> numbers;
    for (const graph::SelectionItem& item : items) {
        const Found<std::vector<int>> vertices = verticesOfItem(graph, item);
        if (!vertices.ok()) return CommandResult::failure(vertices.error);
        const std::vector<Color> colors = nodes::vertexColors(graph, item.node);
        if (colors.empty())
            return CommandResult::failure("polyColorPerVertex: " + graph.uniqueName(*item.node) +
                                          " has no colour set.");
        for (const int vertex : vertices.value) {
            for (const std::size_t channel : channels)
                numbers.push_back(static_cast<double>(colors[static_cast<std::size_t>(vertex)][channel]));
        }
    }
    return CommandResult::success(std::move(numbers));
}

CommandResult polyColorPerVertex(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.flagsSet() == 0)
        return CommandResult::failure("polyColorPerVertex: No flag says what to do.");
    const Found<std::vector<graph::SelectionItem>> items =
        meshObjects(context, arguments, "polyColorPerVertex");
    if (!items.ok()) return CommandResult::failure(items.error);
    if (arguments.isQuery()) return queryColors(graph, items.value, arguments);
    for (const graph::SelectionItem& item : items.value) {
        const Found<std::vector<int>> vertices = verticesOfItem(graph, item);
        if (!vertices.ok()) return CommandResult::failure(vertices.error);
        if (arguments.isSet("remove")) {
            nodes::removeVertexColors(graph, item.node, vertices.value);
        } else {
            setColors(graph, item.node, vertices.value, arguments);
        }
        if (arguments.isSet("colorDisplayOption"))
            graph.setNumber(item.node->plug("displayColors"),
                            arguments.boolean("colorDisplayOption") ? 1.0 : 0.0);
    }
    return CommandResult::success(true);
}

// The command polyColorSet.

constexpr std::pair<const char*, int> kRepresentations[] = {{"A", nodes::ColorSetForm::kAlpha},
                                                            {"RGB", nodes::ColorSetForm::kRgb},
                                                            {"RGBA", nodes::ColorSetForm::kRgba}};

/// Numbers without a name, which a file may bring, count as RGBA.
std::string representationName(const nodes::ColorSetForm& form) {
    for (const auto& [name, number] : kRepresentations) {
        if (number == form.representation) return name;
    }
    return "RGBA";
}

/// What a call says of a new set.
Found<nodes::ColorSetForm> formOf(const ParsedArguments& arguments) {
    nodes::ColorSetForm form;
    form.isClamped = arguments.boolean("clamped");
    const std::string wanted = arguments.text("representation", "RGBA");
    for (const auto& [name, number] : kRepresentations) {
        if (wanted != name) continue;
        form.representation = number;
        return {form, {}};
    }
    return {{}, "polyColorSet: '" + wanted + "' is none of A, RGB and RGBA."};
}

CommandResult querySets(graph::Graph& graph, const NodeRef& shape, const ParsedArguments& arguments) {
    if (arguments.isSet("allColorSets")) return CommandResult::success(nodes::colorSetNames(graph, shape));
    const std::string current = nodes::currentColorSet(graph, shape);
    const std::string asked = arguments.text("colorSet", current);
    if (arguments.isSet("clamped"))
        return CommandResult::success(nodes::colorSetForm(graph, shape, asked).isClamped);
    if (arguments.isSet("representation"))
        return CommandResult::success(representationName(nodes::colorSetForm(graph, shape, asked)));
    if (!arguments.isSet("currentColorSet"))
        return CommandResult::failure(
            "polyColorSet: Only -allColorSets, -currentColorSet, -clamped and -representation can be "
            "queried.");
    return CommandResult::success(current.empty() ? std::vector<std::string>()
                                                  : std::vector<std::string>{current});
}

/// One action on one shape.
/// @return the error; empty on success
std::string changeSets(graph::Graph& graph, const NodeRef& shape, const ParsedArguments& arguments,
                       std::vector<std::string>& names) {
    const std::string name =
        arguments.isSet("colorSet") ? arguments.text("colorSet") : nodes::currentColorSet(graph, shape);
    if (arguments.isSet("create")) {
        const Found<nodes::ColorSetForm> form = formOf(arguments);
        if (!form.ok()) return form.error;
        names.push_back(nodes::createColorSet(graph, shape, arguments.text("colorSet")));
        nodes::setColorSetForm(graph, shape, names.back(), form.value);
        return {};
    }
    bool isDone = false;
    if (arguments.isSet("delete")) {
        isDone = nodes::deleteColorSet(graph, shape, name);
    } else if (arguments.isSet("copy")) {
        names.push_back(nodes::copyColorSet(graph, shape, name, arguments.text("newColorSet")));
        isDone = !names.back().empty();
    } else if (arguments.isSet("rename")) {
        const std::string newName = arguments.text("newColorSet");
        isDone = nodes::renameColorSet(graph, shape, name, newName);
        if (!isDone && !name.empty())
            return "polyColorSet: The colour set '" + name + "' of " + graph.uniqueName(*shape) +
                   " cannot be renamed to '" + newName + "'.";
    } else {
        isDone = nodes::setCurrentColorSet(graph, shape, name);
    }
    if (isDone) return {};
    return "polyColorSet: " + graph.uniqueName(*shape) + " has no colour set '" + name + "'.";
}

CommandResult polyColorSet(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = meshObjects(context, arguments, "polyColorSet");
    if (!items.ok()) return CommandResult::failure(items.error);
    if (arguments.isQuery()) return querySets(graph, items.value.front().node, arguments);
    int actions = 0;
    for (const char* action : {"create", "copy", "delete", "rename", "currentColorSet"})
        actions += arguments.isSet(action) ? 1 : 0;
    if (actions != 1)
        return CommandResult::failure(
            "polyColorSet: One of -create, -copy, -delete, -rename and -currentColorSet must be given.");
    std::vector<std::string> names;
    for (const NodeRef& shape : nodesOf(items.value)) {
        const std::string error = changeSets(graph, shape, arguments, names);
        if (!error.empty()) return CommandResult::failure(error);
    }
    return names.empty() ? CommandResult::success() : CommandResult::success(std::move(names));
}

}  // namespace

void registerColorCommands(mel::CommandRegistry& registry) {
    Syntax coloring;
    coloring.flag("r", "colorR", {kReal}).flag("g", "colorG", {kReal}).flag("b", "colorB", {kReal});
    coloring.flag("rgb", "colorRGB", {kReal, kReal, kReal}).flag("a", "alpha", {kReal});
    coloring.flag("cdo", "colorDisplayOption", {kSwitch}).flag("rem", "remove").flag("rel", "relative");
    coloring.enableQuery().objects(ObjectKind::Strings);
    registry.add("polyColorPerVertex", coloring, polyColorPerVertex,
                 "cch caching ch constructionHistory cla clamp fnr frozen max maximum min minimum n name nds "
                 "nodeState nun notUndoable rfv representation e edit");

    Syntax sets;
    sets.flag("cr", "create").flag("d", "delete").flag("rn", "rename").flag("ccs", "currentColorSet");
    sets.flag("cs", "colorSet", {kText}).flag("nc", "newColorSet", {kText}).flag("acs", "allColorSets");
    sets.flag("cp", "copy").flag("cla", "clamped", {kSwitch}).flag("rpt", "representation", {kText});
    sets.makeQueryWithArguments("colorSet");
    sets.enableQuery().objects(ObjectKind::Strings);
    registry.add("polyColorSet", sets, polyColorSet,
                 "cch caching ch constructionHistory fnr frozen n name nds nodeState pi "
                 "perInstance shi shareInstances un unshared e edit");
}

}  // namespace host::commands
