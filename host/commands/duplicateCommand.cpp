#include <algorithm>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/nodeCopy.h"
#include "nodes/meshNode.h"
#include "nodes/sets.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

/// The copy is shaded as the original is.
void copyShading(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to) {
    for (const graph::NodeRef& set : nodes::setsOf(graph, from)) {
        if (!set->isA("shadingEngine")) continue;
        for (graph::SelectionItem& member : nodes::membersFrom(graph, set, from)) {
            member.node = to;
            nodes::addToSet(graph, set, member);
        }
    }
}

/// Copies a node and, unless `nodeOnly`, what is below it; appends the copies that are no shapes, top first.
graph::NodeRef copyTree(graph::Graph& graph, graph::Node& node, graph::Node* parent, const std::string& name,
                        bool nodeOnly, std::vector<graph::NodeRef>& copies) {
    const graph::NodeRef copy = graph.createNode(node.type(), name, parent);
    copyNodeContent(graph, node.ref(), copy);
    nodes::compensateParentScale(graph, copy);
    if (node.isA("shape")) {
        copyShading(graph, node.ref(), copy);
    } else {
        copies.push_back(copy);
    }
    if (nodeOnly) return copy;
    // The shape that is named after its transform stays so.
    const std::string namesake = nodes::shapeNameFor(node.name());
    const std::vector<graph::Node*> children = node.children();
    for (graph::Node* child : children) {
        const bool isNamesake = child->isA("shape") && child->name() == namesake;
        copyTree(graph, *child, copy.get(), isNamesake ? nodes::shapeNameFor(copy->name()) : child->name(),
                 false, copies);
    }
    return copy;
}

bool hasAncestorIn(const graph::Node& node, const std::vector<graph::NodeRef>& nodes) {
    for (graph::Node* at = node.parent(); at != nullptr; at = at->parent()) {
        if (std::find(nodes.begin(), nodes.end(), at->ref()) != nodes.end()) return true;
    }
    return false;
}

CommandResult duplicate(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    std::vector<graph::NodeRef> originals = nodesOf(items.value);
    // A shape is copied with its transform.
    for (graph::NodeRef& node : originals) {
        if (node->isA("shape") && node->parent() != nullptr) node = node->parent()->ref();
    }
    if (originals.empty()) return CommandResult::failure("duplicate: Nothing is selected to be duplicated.");
    std::vector<graph::NodeRef> roots;
    std::vector<graph::NodeRef> copies;
    for (const graph::NodeRef& node : originals) {
        if (hasAncestorIn(*node, originals)) continue;
        const std::string wanted = name.value.empty() ? nodes::copyName(graph, *node) : name.value;
        roots.push_back(
            copyTree(graph, *node, node->parent(), wanted, arguments.isSet("parentOnly"), copies));
    }
    selectNodes(graph, roots);
    return CommandResult::success(uniqueNames(graph, arguments.isSet("returnRootsOnly") ? roots : copies));
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
}

}  // namespace host::commands
