#include <unordered_map>
#include <unordered_set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/nodeCopy.h"
#include "commands/transformSupport.h"
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

/// Copies a node, below its parent there, and what is below it. Appends the nodes with their copies, top
/// first. A node that is there several times is copied once, and its copy is there as often. Hierarchies may
/// be deeper than the machine's stack.
graph::NodeRef copyTree(graph::Graph& graph, const Placed& place, const std::string& name, Below below,
                        NodeCopies& copies) {
    graph::Node& root = *place.node;
    struct Copied {
        graph::Node* node;
        graph::Node* parent;  // of the copy
    };
    graph::NodeRef copiedRoot;
    std::unordered_map<const graph::Node*, graph::Node*> shared;  // of nodes with several parents: the copies
    std::vector<Copied> ahead{{&root, parentAt({place.node, {}, {}, place.path})}};
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
            nodes::shadeInstances(graph, before->second->ref());
            continue;
        }
        const graph::NodeRef copy =
            copyNode(graph, *node, parent, node == &root ? name : childName(graph, *node, *parent));
        if (node == &root) copiedRoot = copy;
        copies.emplace_back(node->ref(), copy);
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

std::vector<graph::NodeRef> copiesBesideShapes(const NodeCopies& copies) {
    std::vector<graph::NodeRef> nodes;
    for (const auto& copied : copies) {
        if (!copied.second->isA("shape")) nodes.push_back(copied.second);
    }
    return nodes;
}

/// The last copy, and where its original was, for the next copy to repeat the way from there to here.
struct LastCopy {
    std::weak_ptr<graph::Node> node;
    geometry::Matrix4 matrix{};
};

/// Moves the copy of the last copy as that was moved away from its original. Of equivalent angles, those
/// nearest to the angles of the last copy are used.
/// @return empty, or the error
std::string repeatTransform(graph::Graph& graph, const LastCopy& last, const graph::NodeRef& original,
                            const graph::NodeRef& copy) {
    if (last.node.lock() != original) return {};
    const geometry::InverseMatrix back = last.matrix.inverse();
    if (!back.ok) return {};
    const geometry::Matrix4 now = nodes::localMatrix(graph, original);
    const geometry::Vec3 angles = nodes::transformParts(graph, copy).rotate;
    nodes::setLocalMatrix(graph, copy, now * back.matrix * now);
    const geometry::Matrix4 rotation = ownRotation(graph, copy);
    std::string error = writeTriple(graph, copy, "rotate", angles);
    return error.empty() ? setOwnRotation(graph, copy, rotation) : error;
}

/// What to copy: the objects of the command line, or the selection. A shape is copied with its transform.
Found<std::vector<Placed>> originalsOf(CommandContext& context, const ParsedArguments& arguments,
                                       const std::string& command) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    std::vector<Placed> originals;
    std::unordered_set<const graph::Node*> seen;
    for (const graph::SelectionItem& item : items.value) {
        if (command == "instance" && !item.node->type().isDag())
            return {{},
                    command + ": '" + item.node->name() + "' is no DAG object. Use duplicate to copy it."};
        Placed place = item;
        if (place->isA("shape") && place->parent() != nullptr) place = place.parent();
        if (seen.insert(place.node.get()).second) originals.push_back(std::move(place));
    }
    if (originals.empty()) return {{}, command + ": Nothing is selected to be " + command + "d."};
    return {std::move(originals), {}};
}

CommandResult copyObjects(CommandContext& context, const ParsedArguments& arguments,
                          const std::string& command, Below below, bool rootsOnly,
                          const std::shared_ptr<LastCopy>& last) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<Placed>> originals = originalsOf(context, arguments, command);
    if (!originals.ok()) return CommandResult::failure(originals.error);
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    std::unordered_set<const graph::Node*> given;
    for (const Placed& original : originals.value)
        given.insert(original.node.get());
    std::vector<graph::NodeRef> roots;
    NodeCopies copies;
    for (const Placed& node : originals.value) {
        if (hasAncestorIn(*node.node, given)) continue;
        const std::string wanted = name.value.empty() ? nodes::copyName(graph, *node.node) : name.value;
        roots.push_back(copyTree(graph, node, wanted, below, copies));
        if (!arguments.isSet("smartTransform") || !node->isA("transform")) continue;
        const std::string error = repeatTransform(graph, *last, node, roots.back());
        if (!error.empty()) return CommandResult::failure(error);
    }
    const std::vector<graph::NodeRef> listed = rootsOnly ? roots : copiesBesideShapes(copies);
    if (arguments.isSet("upstreamNodes")) {
        const std::string problem = copyUpstream(graph, copies);
        if (!problem.empty()) return CommandResult::failure(command + ": " + problem + '.');
    }
    if (arguments.isSet("inputConnections") || arguments.isSet("upstreamNodes")) connectInputs(graph, copies);
    *last = {};
    if (roots.size() == 1 && roots.front()->isA("transform"))
        *last = {roots.front(), nodes::localMatrix(graph, copies.front().first)};
    selectNodes(graph, roots);
    return CommandResult::success(uniqueNames(graph, listed));
}

}  // namespace

void registerDuplicateCommand(mel::CommandRegistry& registry) {
    const auto last = std::make_shared<LastCopy>();
    Syntax syntax;
    syntax.flag("n", "name", {kText}).flag("po", "parentOnly").flag("rr", "returnRootsOnly");
    syntax.flag("ic", "inputConnections").flag("un", "upstreamNodes").flag("st", "smartTransform");
    syntax.objects(ObjectKind::Strings);
    registry.add(
        "duplicate", syntax,
        [last](CommandContext& context, const ParsedArguments& arguments) {
            return copyObjects(context, arguments, "duplicate",
                               arguments.isSet("parentOnly") ? Below::Nothing : Below::Copies,
                               arguments.isSet("returnRootsOnly"), last);
        },
        "ilf instanceLeaf rc renameChildren tr transformsOnly");

    Syntax instancing;
    instancing.flag("n", "name", {kText}).flag("lf", "leaf").flag("st", "smartTransform");
    instancing.objects(ObjectKind::Strings);
    registry.add("instance", instancing, [last](CommandContext& context, const ParsedArguments& arguments) {
        return copyObjects(context, arguments, "instance",
                           arguments.isSet("leaf") ? Below::InstancedLeaves : Below::Instances, true, last);
    });
}

}  // namespace host::commands
