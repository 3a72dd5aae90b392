// The commands of the hierarchy: parent, group, listRelatives.

#include <algorithm>
#include <optional>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "graph/pathNames.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

bool isAncestor(const graph::Node& above, const graph::Node& node) {
    for (const graph::Node* at = &node; at != nullptr; at = at->parent()) {
        if (at == &above) return true;
    }
    return false;
}

/// Moves a node below another parent. A transform keeps its place in the world unless `isRelative`.
void moveBelow(graph::Graph& graph, const graph::NodeRef& node, graph::Node* parent, bool isRelative) {
    const bool keepsPlace = !isRelative && node->isA("transform");
    const geometry::Matrix4 world = keepsPlace ? nodes::worldMatrix(graph, node) : geometry::Matrix4();
    graph.reparent(*node, parent);
    nodes::compensateParentScale(graph, node);
    if (!keepsPlace) return;
    const geometry::Matrix4 local = world * nodes::parentMatrix(graph, node).inverse().matrix;
    // A node that is already in the right place keeps its exact values.
    if (!geometry::isEquivalent(local, nodes::localMatrix(graph, node), 1e-12))
        nodes::setLocalMatrix(graph, node, local);
}

struct ParentRequest {
    std::vector<graph::NodeRef> children;
    graph::NodeRef parent;  // null for the world
    bool isShape = false;
    bool isRelative = false;
};

/// Why a child cannot be moved there; empty if it can.
std::string parentProblem(const graph::Graph& graph, const ParentRequest& request,
                          const graph::NodeRef& child) {
    const std::string name = graph.uniqueName(*child);
    if (!child->type().isDag()) return "parent: '" + name + "' is no DAG object.";
    if (child->isLocked()) return lockProblem(graph, *child, "parent");
    if (request.isShape != child->isA("shape")) {
        return request.isShape ? "parent: '" + name + "' is no shape."
                               : "parent: '" + name + "' is a shape; use -shape to move shapes.";
    }
    if (request.parent == nullptr)
        return request.isShape ? "parent: A shape needs a transform as its parent." : "";
    if (isAncestor(*child, *request.parent))
        return "parent: Cannot parent an object to itself or to one of its children.";
    return {};
}

/// A shape named on the command line does not mean its transform: the host moves a shape only if told to.
Found<ParentRequest> parentRequest(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    Found<ParentRequest> request;
    request.value.children = nodesOf(items.value);
    request.value.isShape = arguments.isSet("shape");
    // A shape has no position of its own to keep.
    request.value.isRelative = arguments.isSet("relative") || request.value.isShape;
    if (!arguments.isSet("world")) {
        if (request.value.children.size() < 2)
            return {{}, "parent: Select two or more objects or specify more names on the command line."};
        request.value.parent = request.value.children.back();
        request.value.children.pop_back();
        if (!request.value.parent->isA("transform"))
            return {{}, "parent: '" + context.graph.uniqueName(*request.value.parent) + "' is no transform."};
    }
    if (request.value.children.empty()) return {{}, "parent: No objects to move."};
    for (const graph::NodeRef& child : request.value.children) {
        std::string problem = parentProblem(context.graph, request.value, child);
        if (!problem.empty()) return {{}, std::move(problem)};
    }
    return request;
}

CommandResult parent(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.isSet("addObject")) {
        return CommandResult::failure(
            "parent: A node has one parent in this host. The instances of an opened scene are kept as its "
            "file "
            "has them.");
    }
    const Found<ParentRequest> request = parentRequest(context, arguments);
    if (!request.ok()) return CommandResult::failure(request.error);
    graph::Node* target = request.value.parent.get();
    for (const graph::NodeRef& child : request.value.children) {
        if (child->parent() == target) {
            graph.messages().warning("Object, '" + graph.uniqueName(*child) +
                                     "', skipped.  It is already a child of the parent" +
                                     (target != nullptr ? ", '" + graph.uniqueName(*target) + "'." : "."));
        } else {
            moveBelow(graph, child, target, request.value.isRelative);
        }
    }
    selectNodes(graph, request.value.children);
    return CommandResult::success(uniqueNames(graph, request.value.children));
}

/// Lowest node above all of these; null if that is the world.
graph::Node* commonParent(const std::vector<graph::NodeRef>& nodes) {
    if (nodes.empty()) return nullptr;
    for (graph::Node* at = nodes.front()->parent(); at != nullptr; at = at->parent()) {
        const bool isAboveAll = std::all_of(nodes.begin(), nodes.end(), [&](const graph::NodeRef& node) {
            return node->parent() != nullptr && isAncestor(*at, *node->parent());
        });
        if (isAboveAll) return at;
    }
    return nullptr;
}

/// The nodes to group: transforms; a shape means its transform.
Found<std::vector<graph::NodeRef>> groupMembers(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    Found<std::vector<graph::NodeRef>> members;
    for (graph::NodeRef& node : nodesOf(items.value)) {
        if (!node->type().isDag()) return {{}, "group: '" + node->name() + "' is no DAG object."};
        if (node->isA("shape") && node->parent() != nullptr) node = node->parent()->ref();
        if (std::find(members.value.begin(), members.value.end(), node) == members.value.end())
            members.value.push_back(node);
    }
    if (members.value.empty()) return {{}, "group: Not enough objects or values."};
    return members;
}

CommandResult group(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<std::string> name{graph.nextName(graph.wholeName("group")), {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    Found<std::vector<graph::NodeRef>> members;
    if (!arguments.isSet("empty")) members = groupMembers(context, arguments);
    if (!members.ok()) return CommandResult::failure(members.error);
    graph::Node* above = arguments.isSet("world") ? nullptr : commonParent(members.value);
    Found<graph::NodeRef> parentNode;
    if (arguments.isSet("parent")) {
        parentNode = findOneNode(graph, arguments.text("parent"));
        if (parentNode.ok() && !parentNode.value->isA("transform"))
            parentNode.error = "group: '" + arguments.text("parent") + "' is no transform.";
        if (!parentNode.ok()) return CommandResult::failure(parentNode.error);
        above = parentNode.value.get();
    }
    for (const graph::NodeRef& member : members.value) {
        if (above != nullptr && isAncestor(*member, *above))
            return CommandResult::failure("group: Cannot parent an object to one of its children.");
    }
    const graph::NodeRef made = graph.createNode(*graph.types().find("transform"), name.value, above);
    for (const graph::NodeRef& member : members.value) {
        // A member below another member moves with it.
        if (!isAncestor(*made, *member)) moveBelow(graph, member, made.get(), arguments.isSet("relative"));
    }
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

/// Everything below a node; each node comes after the nodes below it.
std::vector<graph::Node*> nodesBelow(const graph::Node& node) {
    // The wanted order, backwards, is parents first and last children first.
    std::vector<graph::Node*> below;
    std::vector<graph::Node*> ahead = node.children();
    while (!ahead.empty()) {
        graph::Node* next = ahead.back();
        ahead.pop_back();
        below.push_back(next);
        ahead.insert(ahead.end(), next->children().begin(), next->children().end());
    }
    std::reverse(below.begin(), below.end());
    return below;
}

std::vector<graph::Node*> relatives(const graph::Node& node, const ParsedArguments& arguments) {
    std::vector<graph::Node*> found;
    if (arguments.isSet("parent") || arguments.isSet("allParents")) {
        if (node.parent() != nullptr) found.push_back(node.parent());
    } else if (arguments.isSet("allDescendents")) {
        found = nodesBelow(node);
    } else {
        found = node.children();
    }
    return found;
}

CommandResult listRelatives(CommandContext& context, const ParsedArguments& arguments) {
    const graph::Graph& graph = context.graph;
    Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
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
        const graph::Node& node = *item.node;
        const bool isParentQuery = arguments.isSet("parent") || arguments.isSet("allParents");
        // The owner of components is the shape of their transform.
        if (item.component && isParentQuery && filter.types.empty()) {
            names.push_back(paths.of(node));
            continue;
        }
        for (const graph::Node* relative : relatives(node, arguments)) {
            if (!passes(graph, filter, *relative)) continue;
            const bool isPath = arguments.isSet("fullPath") || arguments.isSet("path");
            names.push_back(isPath ? paths.of(*relative) : relative->name());
        }
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerDagCommands(mel::CommandRegistry& registry) {
    Syntax parenting;
    parenting.flag("w", "world").flag("r", "relative").flag("a", "absolute").flag("s", "shape");
    parenting.flag("nc", "noConnections").flag("add", "addObject");
    parenting.objects(ObjectKind::Strings);
    registry.add("parent", parenting, parent, "nis noInvScale rm removeObject");

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
