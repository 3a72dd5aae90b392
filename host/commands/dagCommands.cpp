// The commands of the hierarchy: group, listRelatives.

#include <algorithm>
#include <set>
#include <unordered_set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/transformSupport.h"
#include "graph/instances.h"
#include "graph/pathNames.h"
#include "nodes/meshNode.h"

namespace host::commands {

namespace {

/// Lowest place above all of these; the top level if there is none.
Chain commonParent(const std::vector<Chain>& members) {
    if (members.empty()) return {};
    std::vector<graph::NodeRef> shared(members.front().nodes.begin() + 1, members.front().nodes.end());
    for (const Chain& member : members) {
        // From the top down, chains are the same up to where they part.
        const auto parting =
            std::mismatch(shared.rbegin(), shared.rend(), member.nodes.rbegin(), member.nodes.rend() - 1);
        shared.erase(shared.begin(), parting.first.base());
    }
    Chain parent;
    parent.nodes = std::move(shared);
    return parent;
}

/// The nodes to group: transforms; a shape means its transform.
Found<std::vector<Chain>> groupMembers(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    Found<std::vector<Chain>> members;
    std::set<std::pair<const graph::Node*, const graph::Node*>> seen;
    for (const graph::SelectionItem& item : items.value) {
        if (!item.node->type().isDag()) return {{}, "group: '" + item.node->name() + "' is no DAG object."};
        Chain chain(item);
        if (item.node->isA("shape") && chain.nodes.size() > 1) chain.nodes.erase(chain.nodes.begin());
        std::string problem = lockProblem(context.graph, *chain.node(), "group");
        if (!problem.empty()) return {{}, std::move(problem)};
        if (seen.emplace(chain.node().get(), chain.parent()).second)
            members.value.push_back(std::move(chain));
    }
    if (members.value.empty()) return {{}, "group: Not enough objects or values."};
    return members;
}

/// Below what a call makes its group.
Found<Chain> groupParent(CommandContext& context, const ParsedArguments& arguments,
                         const std::vector<Chain>& members) {
    if (!arguments.isSet("parent")) return {arguments.isSet("world") ? Chain() : commonParent(members), {}};
    const std::string name = arguments.text("parent");
    const Found<std::vector<graph::SelectionItem>> parent = findItems(context.graph, {name});
    if (!parent.ok()) return {{}, parent.error};
    const graph::SelectionItem& item = parent.value.front();
    if (!item.isWholeNode() || !item.node->isA("transform"))
        return {{}, "group: '" + name + "' is no transform."};
    return {Chain(item), {}};
}

/// Moves the members below a new group.
/// @return empty, or the error
std::string gather(graph::Graph& graph, const std::vector<Chain>& members, const Chain& group,
                   bool isRelative) {
    std::unordered_set<const graph::Node*> gathered;
    for (const Chain& member : members) {
        const graph::NodeRef node = member.node();
        if (!gathered.insert(node.get()).second) {
            graph.messages().warning("Object, '" + graph.uniqueName(*node) +
                                     "', skipped.  Another instance of it is in the group.");
            continue;
        }
        // A member below another member moves with it.
        if (graph::isBelow(*node, *group.node())) continue;
        std::string error = moveBelow(graph, member, group, isRelative);
        if (!error.empty()) return error;
    }
    return {};
}

CommandResult group(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<std::string> name{graph.nextName(graph.wholeName("group")), {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    Found<std::vector<Chain>> members;
    if (!arguments.isSet("empty")) members = groupMembers(context, arguments);
    if (!members.ok()) return CommandResult::failure(members.error);
    const Found<Chain> above = groupParent(context, arguments, members.value);
    if (!above.ok()) return CommandResult::failure(above.error);
    graph::Node* parent = above.value.node().get();
    for (const Chain& member : members.value) {
        if (parent != nullptr && graph::isBelow(*parent, *member.node()))
            return CommandResult::failure("group: Cannot parent an object to one of its children.");
    }
    const graph::NodeRef made = graph.createNode(*graph.types().find("transform"), name.value, parent);
    const std::string error =
        gather(graph, members.value, above.value.below(made), arguments.isSet("relative"));
    if (!error.empty()) return CommandResult::failure("group: " + error);
    selectNodes(graph, {made});
    return CommandResult::success(graph.uniqueName(*made));
}

struct RelativesFilter {
    bool shapesOnly = false;
    bool noIntermediate = false;
    std::vector<std::string> types;
};

bool passes(const graph::Graph& graph, const RelativesFilter& filter, const graph::Node& node) {
    if (filter.shapesOnly && !node.isA("shape")) return false;
    if (filter.noIntermediate && nodes::isIntermediate(graph, node)) return false;
    return filter.types.empty() || std::any_of(filter.types.begin(), filter.types.end(),
                                               [&](const std::string& type) { return node.isA(type); });
}

/// A node, and the path that leads to it where that is not its first one.
struct Relative {
    graph::Node* node = nullptr;
    std::string path{};
};

/// A child at the place where it was found.
Relative childOf(const Relative& above, graph::Node* child) {
    if (above.path.empty() && child->parent() == above.node) return {child, {}};
    const std::string path = above.path.empty() ? graph::fullPath({above.node, 0}) : above.path;
    return {child, path + '|' + child->name()};
}

std::vector<Relative> childrenOf(const Relative& node) {
    std::vector<Relative> children;
    children.reserve(node.node->children().size());
    for (graph::Node* child : node.node->children())
        children.push_back(childOf(node, child));
    return children;
}

/// Everything below a node, each once; each node comes after the nodes below it.
std::vector<Relative> nodesBelow(const Relative& node) {
    // The wanted order, backwards, is parents first and last children first.
    std::vector<Relative> below;
    std::vector<Relative> ahead = childrenOf(node);
    std::unordered_set<const graph::Node*> seen;
    while (!ahead.empty()) {
        Relative next = std::move(ahead.back());
        ahead.pop_back();
        if (!next.node->otherParents().empty() && !seen.insert(next.node).second) continue;
        std::vector<Relative> children = childrenOf(next);
        std::move(children.begin(), children.end(), std::back_inserter(ahead));
        below.push_back(std::move(next));
    }
    std::reverse(below.begin(), below.end());
    return below;
}

std::vector<Relative> relatives(const graph::SelectionItem& item, const ParsedArguments& arguments) {
    const std::vector<graph::Instance> upwards = graph::upwards(item);
    const graph::Instance& place = upwards.front();
    std::vector<Relative> found;
    const Relative given{place.node, place.number > 0 ? graph::fullPath(place) : std::string()};
    if (arguments.isSet("allParents")) {
        graph::visitParents(*place.node, [&](graph::Node* parent) {
            if (parent != nullptr) found.push_back({parent, {}});
        });
    } else if (arguments.isSet("parent")) {
        if (upwards.size() < 2) return found;
        const std::size_t end = given.path.rfind('|');
        found.push_back({upwards[1].node, given.path.empty() ? std::string() : given.path.substr(0, end)});
    } else {
        found = arguments.isSet("allDescendents") ? nodesBelow(given) : childrenOf(given);
    }
    return found;
}

/// What a node is called in the result.
std::string nameOf(const Relative& relative, const ParsedArguments& arguments, graph::PathNames& paths) {
    const bool isFull = arguments.isSet("fullPath");
    if (isFull && !relative.path.empty()) return relative.path;
    return isFull || arguments.isSet("path") ? paths.of(*relative.node) : relative.node->name();
}

CommandResult listRelatives(CommandContext& context, const ParsedArguments& arguments) {
    const graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    RelativesFilter filter;
    filter.shapesOnly = arguments.isSet("shapes");
    filter.noIntermediate = arguments.isSet("noIntermediate");
    for (int use = 0; use < arguments.uses("type"); ++use)
        filter.types.push_back(arguments.values("type", use)[0].toString());
    graph::PathNames paths(
        graph, arguments.isSet("fullPath") ? graph::PathNames::Kind::Full : graph::PathNames::Kind::Unique);
    std::vector<std::string> names;
    for (const graph::SelectionItem& item : items.value) {
        const bool isParentQuery = arguments.isSet("parent") || arguments.isSet("allParents");
        // The owner of components is the shape of their transform.
        if (item.component && isParentQuery && filter.types.empty()) {
            names.push_back(paths.of(*item.node));
            continue;
        }
        for (const Relative& relative : relatives(item, arguments)) {
            if (passes(graph, filter, *relative.node)) names.push_back(nameOf(relative, arguments, paths));
        }
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerDagCommands(mel::CommandRegistry& registry) {
    Syntax grouping;
    grouping.flag("n", "name", {kText}).flag("em", "empty").flag("p", "parent", {kText});
    grouping.flag("w", "world").flag("r", "relative").flag("a", "absolute");
    grouping.objects(ObjectKind::Strings);
    registry.add("group", grouping, group, "useAsGroup uag");

    Syntax relating;
    relating.flag("ad", "allDescendents").flag("ap", "allParents").flag("c", "children");
    relating.flag("f", "fullPath").flag("ni", "noIntermediate").flag("p", "parent").flag("pa", "path");
    relating.flag("s", "shapes").multiUseFlag("typ", "type", {kText}).objects(ObjectKind::Strings);
    registry.add("listRelatives", relating, listRelatives);
}

}  // namespace host::commands
