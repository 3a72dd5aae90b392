#include <unordered_map>
#include <unordered_set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/nodeCopy.h"
#include "graph/hierarchy.h"
#include "graph/namespaces.h"
#include "nodes/meshNode.h"
#include "nodes/sets.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

/// The copy gets the shading of the original.
void copyShading(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to) {
    for (const graph::NodeRef& set : nodes::setsOf(graph, from)) {
        if (!set->isA("shadingEngine")) continue;
        for (graph::SelectionItem& member : nodes::membersFrom(graph, set, from)) {
            member.node = to;
            nodes::addToSet(graph, set, member);
        }
    }
}

graph::NodeRef copyNode(graph::Graph& graph, graph::Node& node, graph::Node* parent,
                        const std::string& name) {
    const graph::NodeRef copy = graph.createNode(node.type(), name, parent);
    copyNodeContent(graph, node.ref(), copy);
    nodes::compensateParentScale(graph, copy);
    if (node.isA("shape")) copyShading(graph, node.ref(), copy);
    return copy;
}

/// Name for the copy of a child. A shape that is named after its transform is named after the copied one.
std::string childName(const graph::Graph& graph, const graph::Node& child, const graph::Node& copiedParent) {
    const bool isNamesake = child.isA("shape") && child.name() == nodes::shapeNameFor(child.parent()->name());
    return isNamesake ? nodes::shapeNameFor(copiedParent.name())
                      : graph.wholeName(graph::baseName(child.name()));
}

/// What a copy takes of what is below its root.
enum class Below { Nothing, Copies, InstancedLeaves, Instances };

/// Copies a node and what is below it. Appends the copies that are not shapes, top first. A node that is
/// there several times is copied once, and its copy is there as often. Hierarchies may be deeper than the
/// machine's stack.
graph::NodeRef copyTree(graph::Graph& graph, graph::Node& root, const std::string& name, Below below,
                        std::vector<graph::NodeRef>& copies) {
    struct Copied {
        graph::Node* node;
        graph::Node* parent;  // of the copy
    };
    graph::NodeRef copiedRoot;
    std::unordered_map<const graph::Node*, graph::Node*> shared;  // of nodes with several parents: the copies
    std::vector<Copied> ahead{{&root, root.parent()}};
    while (!ahead.empty()) {
        const auto [node, parent] = ahead.back();
        ahead.pop_back();
        const bool isInstance =
            below == Below::Instances || (below == Below::InstancedLeaves && node->isA("shape"));
        if (node != &root && isInstance) {
            graph.addInstance(*node, parent);
            nodes::shadeInstances(graph, node->ref());
            continue;
        }
        const auto before = shared.find(node);
        if (before != shared.end()) {
            graph.addInstance(*before->second, parent);
            continue;
        }
        const graph::NodeRef copy =
            copyNode(graph, *node, parent, node == &root ? name : childName(graph, *node, *parent));
        if (node == &root) copiedRoot = copy;
        if (!node->isA("shape")) copies.push_back(copy);
        if (node != &root && !node->otherParents().empty()) shared.emplace(node, copy.get());
        if (below == Below::Nothing) break;
        for (auto child = node->children().rbegin(); child != node->children().rend(); ++child)
            ahead.push_back({*child, copy.get()});
    }
    return copiedRoot;
}

bool hasAncestorIn(const graph::Node& node, const std::unordered_set<const graph::Node*>& nodes) {
    return graph::anyAbove(node, [&](const graph::Node& above) { return nodes.count(&above) != 0; });
}

/// Copies the objects of the command line, or the selection.
CommandResult copyObjects(CommandContext& context, const ParsedArguments& arguments,
                          const std::string& command, Below below, bool rootsOnly) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    std::vector<graph::NodeRef> originals = nodesOf(items.value);
    // A shape is copied with its transform.
    for (graph::NodeRef& node : originals) {
        if (node->isA("shape") && node->parent() != nullptr) node = node->parent()->ref();
    }
    if (originals.empty())
        return CommandResult::failure(command + ": Nothing is selected to be " + command + "d.");
    for (const graph::NodeRef& node : originals) {
        if (command == "instance" && !node->type().isDag())
            return CommandResult::failure(command + ": '" + node->name() +
                                          "' is no DAG object. Use duplicate to copy it.");
    }
    std::unordered_set<const graph::Node*> given;
    for (const graph::NodeRef& node : originals)
        given.insert(node.get());
    std::vector<graph::NodeRef> roots;
    std::vector<graph::NodeRef> copies;
    for (const graph::NodeRef& node : originals) {
        if (hasAncestorIn(*node, given)) continue;
        const std::string wanted = name.value.empty() ? nodes::copyName(graph, *node) : name.value;
        roots.push_back(copyTree(graph, *node, wanted, below, copies));
    }
    selectNodes(graph, roots);
    return CommandResult::success(uniqueNames(graph, rootsOnly ? roots : copies));
}

CommandResult duplicate(CommandContext& context, const ParsedArguments& arguments) {
    return copyObjects(context, arguments, "duplicate",
                       arguments.isSet("parentOnly") ? Below::Nothing : Below::Copies,
                       arguments.isSet("returnRootsOnly"));
}

CommandResult instance(CommandContext& context, const ParsedArguments& arguments) {
    return copyObjects(context, arguments, "instance",
                       arguments.isSet("leaf") ? Below::InstancedLeaves : Below::Instances, true);
}

}  // namespace

void registerDuplicateCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("n", "name", {kText}).flag("po", "parentOnly").flag("rr", "returnRootsOnly");
    syntax.objects(ObjectKind::Strings);
    registry.add(
        "duplicate", syntax, duplicate,
        "ic inputConnections ilf instanceLeaf rc renameChildren st smartTransform tr transformsOnly un "
        "upstreamNodes");

    Syntax instancing;
    instancing.flag("n", "name", {kText}).flag("lf", "leaf").objects(ObjectKind::Strings);
    registry.add("instance", instancing, instance, "st smartTransform");
}

}  // namespace host::commands
