// The command select.

#include <algorithm>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/nodeStates.h"
#include "graph/instances.h"
#include "nodes/defaultCameras.h"
#include "nodes/sets.h"

namespace host::commands {

namespace {

using graph::SelectionItem;

void addBelow(const SelectionItem& item, std::vector<SelectionItem>& items) {
    for (const graph::Instance& below : graph::hierarchyBelow(graph::upwards(item).front()))
        items.push_back({below.node->ref(), {}, {}, below.number});
}

/// The items to select for the named ones: a set means its members, and -hierarchy adds everything below.
std::vector<SelectionItem> expanded(graph::Graph& graph, const std::vector<SelectionItem>& items,
                                    const ParsedArguments& arguments) {
    std::vector<SelectionItem> result;
    for (const SelectionItem& item : items) {
        if (!arguments.isSet("noExpand") && item.isWholeNode() && item.node->isA("objectSet")) {
            for (SelectionItem& member : nodes::members(graph, item.node))
                result.push_back(std::move(member));
        } else if (arguments.isSet("hierarchy") && item.isWholeNode()) {
            addBelow(item, result);
        } else {
            result.push_back(item);
        }
    }
    return result;
}

std::vector<SelectionItem> allItems(const graph::Graph& graph, bool dependencyNodes) {
    std::vector<SelectionItem> items;
    if (dependencyNodes) {
        for (const graph::NodeRef& node : graph.nodes())
            items.push_back({node, {}, {}});
    } else {
        for (graph::Node* root : graph.roots()) {
            if (!nodes::isDefaultCamera(*root)) items.push_back({root->ref(), {}, {}});
        }
    }
    return items;
}

graph::SelectionMode modeOf(const ParsedArguments& arguments) {
    if (arguments.isSet("add") || arguments.isSet("addFirst")) return graph::SelectionMode::Add;
    if (arguments.isSet("toggle")) return graph::SelectionMode::Toggle;
    if (arguments.isSet("deselect")) return graph::SelectionMode::Remove;
    return graph::SelectionMode::Replace;
}

void apply(graph::Selection& selection, const SelectionItem& item, graph::SelectionMode mode) {
    switch (mode) {
        case graph::SelectionMode::Replace:
        case graph::SelectionMode::Add:
            return selection.add(item);
        case graph::SelectionMode::Toggle:
            return selection.toggle(item);
        case graph::SelectionMode::Remove:
            return selection.remove(item);
    }
}

CommandResult select(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.isSet("clear")) {
        graph.select({});
        return CommandResult::success();
    }
    Found<std::vector<SelectionItem>> items;
    const bool isAll = arguments.isSet("all") || arguments.isSet("allDagObjects");
    if (isAll || arguments.isSet("allDependencyNodes")) {
        items.value = allItems(graph, arguments.isSet("allDependencyNodes"));
    } else if (!arguments.objects().empty() || !arguments.hasEmptyList()) {
        items = objectsOrSelection(context, arguments);
    }
    if (!items.ok()) return CommandResult::failure(items.error);
    const graph::SelectionMode mode = modeOf(arguments);
    std::vector<SelectionItem> wanted = expanded(graph, items.value, arguments);
    if (arguments.isSet("visible")) {
        const auto isHidden = [&](const SelectionItem& item) { return !isVisible(graph, item); };
        wanted.erase(std::remove_if(wanted.begin(), wanted.end(), isHidden), wanted.end());
    }
    graph::Selection selection;
    if (arguments.isSet("addFirst")) {
        for (const SelectionItem& item : wanted)
            selection.add(item);
        for (const SelectionItem& item : graph.selection().items())
            selection.add(item);
    } else {
        if (mode != graph::SelectionMode::Replace) selection = graph.selection();
        for (const SelectionItem& item : wanted)
            apply(selection, item, mode);
    }
    graph.select(std::move(selection));
    return CommandResult::success();
}

}  // namespace

void registerSelectionCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("add", "").flag("af", "addFirst").flag("all", "").flag("ado", "allDagObjects");
    syntax.flag("adn", "allDependencyNodes").flag("cl", "clear").flag("d", "deselect");
    syntax.flag("hi", "hierarchy").flag("ne", "noExpand").flag("r", "replace").flag("tgl", "toggle");
    syntax.flag("vis", "visible");
    syntax.objects(ObjectKind::Strings);
    registry.add("select", syntax, select, "cc containerCentric sym symmetry sys symmetrySide");
}

}  // namespace host::commands
