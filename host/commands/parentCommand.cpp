// The command parent: moving nodes below other parents, and giving them more parents and fewer.

#include <algorithm>
#include <set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/transformSupport.h"
#include "graph/instances.h"
#include "nodes/defaultCameras.h"
#include "nodes/sets.h"
#include "nodes/transformNode.h"
#include "scene/fileTypes.h"

namespace host::commands {

namespace {

/// A node to move, and the parent that its name means.
struct Child {
    graph::NodeRef node;
    graph::Node* from = nullptr;
};

struct ParentRequest {
    std::vector<Child> children;
    graph::NodeRef parent;  // null for the world
    bool isShape = false;
    bool isRelative = false;
    bool isAdding = false;
};

/// Why a child cannot be touched; empty if it can.
std::string childProblem(const graph::Graph& graph, const graph::NodeRef& child, bool isShape) {
    const std::string name = graph.uniqueName(*child);
    if (!child->type().isDag()) return "parent: '" + name + "' is no DAG object.";
    if (child->isLocked()) return lockProblem(graph, *child, "parent");
    if (!isShape && child->isA("shape"))
        return "parent: '" + name + "' is a shape; use -shape to move shapes.";
    return {};
}

/// Why a child cannot be put below the parent; empty if it can.
std::string parentProblem(const graph::Graph& graph, const ParentRequest& request,
                          const graph::NodeRef& child) {
    std::string problem = childProblem(graph, child, request.isShape);
    if (!problem.empty()) return problem;
    // Scene files add instances of transforms with -shape, too.
    if (request.isShape && !request.isAdding && !child->isA("shape"))
        return "parent: '" + graph.uniqueName(*child) + "' is no shape.";
    if (request.parent == nullptr)
        return child->isA("shape") ? "parent: A shape needs a transform as its parent." : "";
    if (graph::isBelow(*request.parent, *child))
        return "parent: Cannot parent an object to itself or to one of its children.";
    return {};
}

/// The objects of the command line, or the selection, each instance once.
Found<std::vector<Child>> namedChildren(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<Child>> found;
    std::set<std::pair<const graph::Node*, const graph::Node*>> seen;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    for (const graph::SelectionItem& item : items.value) {
        graph::Node* from = parentAt(item);
        if (seen.emplace(item.node.get(), from).second) found.value.push_back({item.node, from});
    }
    return found;
}

/// A shape named on the command line does not mean its transform: the host moves a shape only if told to.
Found<ParentRequest> parentRequest(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<Child>> children = namedChildren(context, arguments);
    if (!children.ok()) return {{}, children.error};
    Found<ParentRequest> request;
    request.value.children = std::move(children.value);
    request.value.isShape = arguments.isSet("shape");
    request.value.isAdding = arguments.isSet("addObject");
    // A shape has no position of its own to keep.
    request.value.isRelative = arguments.isSet("relative") || request.value.isShape;
    if (!arguments.isSet("world")) {
        if (request.value.children.size() < 2)
            return {{}, "parent: Select two or more objects or specify more names on the command line."};
        request.value.parent = request.value.children.back().node;
        request.value.children.pop_back();
        if (!request.value.parent->isA("transform"))
            return {{}, "parent: '" + context.graph.uniqueName(*request.value.parent) + "' is no transform."};
    }
    if (request.value.children.empty()) return {{}, "parent: No objects to move."};
    for (const Child& child : request.value.children) {
        std::string problem = parentProblem(context.graph, request.value, child.node);
        if (!problem.empty()) return {{}, std::move(problem)};
    }
    return request;
}

CommandResult moveOrAdd(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<ParentRequest> request = parentRequest(context, arguments);
    if (!request.ok()) return CommandResult::failure(request.error);
    graph::Node* target = request.value.parent.get();
    std::vector<graph::NodeRef> children;
    for (const Child& child : request.value.children) {
        children.push_back(child.node);
        if (graph.hasParent(*child.node, target)) {
            graph.messages().warning("Object, '" + graph.uniqueName(*child.node) +
                                     "', skipped.  It is already a child of the parent" +
                                     (target != nullptr ? ", '" + graph.uniqueName(*target) + "'." : "."));
        } else if (request.value.isAdding) {
            graph.addInstance(*child.node, target);
            if (!arguments.isSet("noConnections")) nodes::shadeInstances(graph, child.node);
        } else {
            moveBelow(graph, child.node, child.from, target, request.value.isRelative);
        }
    }
    selectNodes(graph, children);
    return CommandResult::success(uniqueNames(graph, children));
}

/// Takes away the instances that are named. The last instance of a node is the node.
CommandResult removeObjects(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<Child>> children = namedChildren(context, arguments);
    if (!children.ok()) return CommandResult::failure(children.error);
    if (children.value.empty()) return CommandResult::failure("parent: No objects to remove.");
    for (const Child& child : children.value) {
        std::string problem = childProblem(graph, child.node, arguments.isSet("shape"));
        if (problem.empty() && (scene::isDefaultNode(*child.node) || nodes::isDefaultCamera(*child.node)))
            problem = "parent: Every scene has " + child.node->name() + ": it cannot be removed.";
        if (!problem.empty()) return CommandResult::failure(std::move(problem));
    }
    std::vector<graph::NodeRef> remaining;
    for (const auto& [node, from] : children.value) {
        // It may have gone with another one, or with its parent.
        if (!node->isAlive() || !graph.hasParent(*node, from)) continue;
        if (node->otherParents().empty()) {
            graph.deleteNodes({node});
            continue;
        }
        takeInstance(graph, node, from);
        remaining.push_back(node);
    }
    remaining.erase(std::remove_if(remaining.begin(), remaining.end(),
                                   [](const graph::NodeRef& node) { return !node->isAlive(); }),
                    remaining.end());
    return CommandResult::success(uniqueNames(graph, remaining));
}

CommandResult parent(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isSet("addObject") && arguments.isSet("removeObject"))
        return CommandResult::failure("parent: Use -addObject or -removeObject, not both.");
    return arguments.isSet("removeObject") ? removeObjects(context, arguments)
                                           : moveOrAdd(context, arguments);
}

}  // namespace

void registerParentCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("w", "world").flag("r", "relative").flag("a", "absolute").flag("s", "shape");
    syntax.flag("nc", "noConnections").flag("add", "addObject").flag("rm", "removeObject");
    syntax.objects(ObjectKind::Strings);
    registry.add("parent", syntax, parent, "nis noInvScale");
}

}  // namespace host::commands
