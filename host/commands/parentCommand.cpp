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

struct ParentRequest {
    std::vector<Chain> children;
    Chain parent;  // the top level for the world
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
    if (request.parent.nodes.empty())
        return child->isA("shape") ? "parent: A shape needs a transform as its parent." : "";
    if (graph::isBelow(*request.parent.node(), *child))
        return "parent: Cannot parent an object to itself or to one of its children.";
    return {};
}

/// The objects of the command line, or the selection, each instance once.
Found<std::vector<Chain>> namedChildren(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<Chain>> found;
    std::set<std::pair<const graph::Node*, const graph::Node*>> seen;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    for (const graph::SelectionItem& item : items.value) {
        Chain chain(item);
        if (seen.emplace(item.node.get(), chain.parent()).second) found.value.push_back(std::move(chain));
    }
    return found;
}

/// A shape named on the command line does not mean its transform: the host moves a shape only if told to.
Found<ParentRequest> parentRequest(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<Chain>> children = namedChildren(context, arguments);
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
        request.value.parent = std::move(request.value.children.back());
        request.value.children.pop_back();
        const graph::NodeRef parent = request.value.parent.node();
        if (!parent->isA("transform"))
            return {{}, "parent: '" + context.graph.uniqueName(*parent) + "' is no transform."};
    }
    if (request.value.children.empty()) return {{}, "parent: No objects to move."};
    for (const Chain& child : request.value.children) {
        std::string problem = parentProblem(context.graph, request.value, child.node());
        if (!problem.empty()) return {{}, std::move(problem)};
    }
    return request;
}

CommandResult moveOrAdd(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<ParentRequest> request = parentRequest(context, arguments);
    if (!request.ok()) return CommandResult::failure(request.error);
    const Chain& parent = request.value.parent;
    graph::Node* target = parent.node().get();
    std::vector<graph::NodeRef> children;
    for (const Chain& chain : request.value.children) {
        const graph::NodeRef child = chain.node();
        children.push_back(child);
        if (graph.hasParent(*child, target)) {
            graph.messages().warning("Object, '" + graph.uniqueName(*child) +
                                     "', skipped.  It is already a child of the parent" +
                                     (target != nullptr ? ", '" + graph.uniqueName(*target) + "'." : "."));
        } else if (request.value.isAdding) {
            graph.addInstance(*child, target);
            if (!arguments.isSet("noConnections")) nodes::shadeInstances(graph, child);
        } else {
            const std::string error = moveBelow(graph, chain, parent, request.value.isRelative);
            if (!error.empty()) return CommandResult::failure("parent: " + error);
        }
    }
    graph::Selection selection;
    for (const graph::NodeRef& child : children) {
        const Placed place = parent.below(child).place();
        selection.add({place.node, {}, {}, place.path});
    }
    graph.select(std::move(selection));
    return CommandResult::success(uniqueNames(graph, children));
}

/// Takes away the instances that are named. The last instance of a node is the node.
CommandResult removeObjects(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<Chain>> children = namedChildren(context, arguments);
    if (!children.ok()) return CommandResult::failure(children.error);
    if (children.value.empty()) return CommandResult::failure("parent: No objects to remove.");
    for (const Chain& chain : children.value) {
        const graph::NodeRef child = chain.node();
        std::string problem = childProblem(graph, child, arguments.isSet("shape"));
        if (problem.empty() && (scene::isDefaultNode(*child) || nodes::isDefaultCamera(*child)))
            problem = "parent: Every scene has " + child->name() + ": it cannot be removed.";
        if (!problem.empty()) return CommandResult::failure(std::move(problem));
    }
    std::vector<graph::NodeRef> remaining;
    for (const Chain& chain : children.value) {
        const graph::NodeRef node = chain.node();
        graph::Node* from = chain.parent();
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
