// The command delete.

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <unordered_set>
#include <utility>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/driverSearch.h"
#include "commands/transformSupport.h"
#include "graph/hierarchy.h"
#include "graph/instances.h"
#include "nodes/defaultCameras.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "scene/fileTypes.h"

namespace host::commands {

namespace {

/// Gives a shape the component tags that its mesh had from shapes before it.
void keepTags(graph::Graph& graph, const graph::NodeRef& shape,
              const std::vector<nodes::ComponentGroup>& groups) {
    const graph::Plug tags = shape->plug("componentTags");
    std::set<std::string> own;
    for (const int index : graph.elements(tags))
        own.insert(nodes::textAt(graph, nodes::childPlug(tags.element(index), "componentTagName")));
    for (const nodes::ComponentGroup& group : groups) {
        if (group.tag.empty() || !own.insert(group.tag).second) continue;
        const graph::Plug tag = tags.element(graph.nextIndex(tags));
        graph.setData(nodes::childPlug(tag, "componentTagName"),
                      std::make_shared<graph::StringData>(group.tag));
        graph.setData(nodes::childPlug(tag, "componentTagContents"), group.components);
    }
}

/// Replaces the deformer chain of a shape by its result.
void bakeShape(graph::Graph& graph, const graph::NodeRef& shape) {
    const nodes::MeshPtr mesh = nodes::meshOf(graph, shape);
    const graph::Plug in = shape->plug("inMesh");
    const graph::Plug source = graph.source(in);
    if (!source || mesh == nullptr) return;
    const std::vector<float> points = mesh->mesh.points();
    graph.disconnect(in);
    nodes::setMeshPoints(graph, shape, points);
    keepTags(graph, shape, mesh->groups);
    const graph::NodeRef& last = source.node();
    if (last->type().diesWithLastOutput() && last->outgoing().empty()) graph.deleteNodes({last});
    if (shape->parent() == nullptr) return;
    const std::vector<graph::Node*> siblings = shape->parent()->children();
    for (graph::Node* sibling : siblings) {
        if (nodes::isIntermediate(graph, *sibling) && sibling->outgoing().empty())
            graph.deleteNodes({sibling->ref()});
    }
}

void deleteHistory(graph::Graph& graph, const std::vector<graph::NodeRef>& nodes) {
    for (const graph::NodeRef& node : nodes) {
        if (!node->isAlive()) continue;
        std::vector<graph::NodeRef> shapes;
        if (node->isA("mesh")) shapes.push_back(node);
        for (graph::Node* child : node->children()) {
            if (child->isA("mesh") && !nodes::isIntermediate(graph, *child)) shapes.push_back(child->ref());
        }
        for (const graph::NodeRef& shape : shapes)
            bakeShape(graph, shape);
    }
}

/// Deletes what the objects of a call are, or what a pattern of it matches.
CommandResult deleteObjects(graph::Graph& graph, std::vector<graph::NodeRef> nodes) {
    // A pattern may match nodes that every scene has.
    const auto isKept = [](const graph::NodeRef& node) {
        return scene::isDefaultNode(*node) || nodes::isDefaultCamera(*node);
    };
    const auto kept = std::stable_partition(nodes.begin(), nodes.end(), std::not_fn(isKept));
    if (kept == nodes.begin() && !nodes.empty())
        return CommandResult::failure("delete: Cannot delete the read only node " + nodes.front()->name() +
                                      '.');
    nodes.erase(kept, nodes.end());
    for (const graph::NodeRef& node : nodes) {
        std::string problem = lockProblem(graph, *node, "delete");
        if (!problem.empty()) return CommandResult::failure(std::move(problem));
    }
    graph.deleteNodes(nodes);
    return CommandResult::success();
}

/// Flags for what drives the objects of a call, with the type of such nodes.
constexpr std::pair<const char*, const char*> kDrivers[] = {{"channels", "animCurve"},
                                                            {"staticChannels", "animCurve"},
                                                            {"expressions", "expression"},
                                                            {"constraints", "constraint"},
                                                            {"motionPaths", "motionPath"}};

bool asksForDrivers(const ParsedArguments& arguments) {
    return std::any_of(std::begin(kDrivers), std::end(kDrivers),
                       [&](const auto& kind) { return arguments.isSet(kind.first); });
}

/// Whether a curve is of a sort that a call wants.
bool isWantedCurve(graph::Graph& graph, const graph::NodeRef& node, const ParsedArguments& arguments) {
    if (!node->isA("animCurve")) return true;
    const bool isTimed = node->plug("input").attribute().kind() == graph::ValueKind::Time;
    if (!arguments.boolean(isTimed ? "timeAnimationCurves" : "unitlessAnimationCurves", true)) return false;
    return arguments.isSet("channels") || isStaticCurve(graph, node);
}

/// The objects of a call with those above and below them that it asks for.
Found<std::vector<graph::NodeRef>> drivenNodes(const std::vector<graph::SelectionItem>& given,
                                               const ParsedArguments& arguments) {
    const std::string hierarchy = arguments.text("hierarchy", "none");
    if (hierarchy != "none" && hierarchy != "above" && hierarchy != "below" && hierarchy != "both")
        return {{}, "delete: '" + hierarchy + "' is none of above, below, both and none."};
    const bool hasShapes = arguments.boolean("shape", true);
    std::vector<graph::NodeRef> nodes;
    std::unordered_set<const graph::Node*> seen;
    const auto add = [&](graph::Node& node) {
        if (seen.insert(&node).second) nodes.push_back(node.ref());
    };
    for (const graph::SelectionItem& item : given) {
        add(*item.node);
        if (hierarchy == "above" || hierarchy == "both") {
            for (const graph::Instance& above : graph::upwards(item))
                add(*above.node);
        }
        if (hierarchy == "below" || hierarchy == "both") graph::visitHierarchy(*item.node, add);
    }
    for (std::size_t k = 0; hasShapes && k < nodes.size(); ++k) {
        for (graph::Node* child : std::vector<graph::Node*>(nodes[k]->children())) {
            if (child->isA("shape")) add(*child);
        }
    }
    return {std::move(nodes), {}};
}

CommandResult deleteDrivers(graph::Graph& graph, const std::vector<graph::SelectionItem>& given,
                            const ParsedArguments& arguments) {
    const Found<std::vector<graph::NodeRef>> nodes = drivenNodes(given, arguments);
    if (!nodes.ok()) return CommandResult::failure(nodes.error);
    const DriverSearch search(graph, arguments);
    std::vector<graph::NodeRef> doomed;
    for (const auto& [flag, type] : kDrivers) {
        if (!arguments.isSet(flag)) continue;
        std::vector<graph::NodeRef> found;
        if (arguments.isSet("all")) {
            found = graph.nodesOfType(type);
        } else {
            found = search.driversOf(nodes.value, type);
        }
        std::copy_if(found.begin(), found.end(), std::back_inserter(doomed),
                     [&](const auto& node) { return isWantedCurve(graph, node, arguments); });
    }
    Found<std::vector<graph::NodeRef>> all = withConversions(graph, std::move(doomed));
    return all.ok() ? deleteObjects(graph, std::move(all.value)) : CommandResult::failure(all.error);
}

/// Takes away the instances that are meant of nodes with others, and gives the nodes to delete.
Found<std::vector<graph::NodeRef>> takeInstances(graph::Graph& graph,
                                                 const std::vector<graph::SelectionItem>& items) {
    if (!graph.hasInstances()) return {nodesOf(items), {}};
    // The numbers of the others change with each that goes.
    std::vector<std::pair<graph::NodeRef, graph::Node*>> places;
    places.reserve(items.size());
    for (const graph::SelectionItem& item : items)
        places.emplace_back(item.node, item.node->type().isDag() ? parentAt(item) : nullptr);
    Found<std::vector<graph::NodeRef>> doomed;
    for (const auto& [node, parent] : places) {
        if (node->otherParents().empty()) {
            doomed.value.push_back(node);
        } else if (node->isLocked()) {
            return {{}, lockProblem(graph, *node, "delete")};
        } else if (graph.hasParent(*node, parent)) {
            takeInstance(graph, node, parent);
        }
    }
    return doomed;
}

CommandResult runDelete(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const bool isHistory = arguments.isSet("constructionHistory");
    const bool isPart = isHistory || asksForDrivers(arguments);
    const bool isAll = arguments.isSet("all");
    if (isAll && !isPart)
        return CommandResult::failure("delete: -all needs a flag that says what is to be deleted.");
    Found<std::vector<graph::SelectionItem>> items;
    if (!isAll) items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    if (arguments.isSet("inputConnectionsAndNodes")) return deleteInputs(graph, items.value);
    for (const graph::SelectionItem& item : items.value) {
        if (!item.isWholeNode() && !isPart)
            return CommandResult::failure("delete: Deleting components or attributes is not covered.");
    }
    if (!isPart) {
        Found<std::vector<graph::NodeRef>> doomed = takeInstances(graph, items.value);
        return doomed.ok() ? deleteObjects(graph, std::move(doomed.value))
                           : CommandResult::failure(doomed.error);
    }
    if (isHistory) deleteHistory(graph, isAll ? graph.nodesOfType("mesh") : nodesOf(items.value));
    return asksForDrivers(arguments) ? deleteDrivers(graph, items.value, arguments)
                                     : CommandResult::success();
}

}  // namespace

void registerDeleteCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("all", "").flag("ch", "constructionHistory").flag("icn", "inputConnectionsAndNodes");
    for (const auto& [shortName, longName] :
         {std::pair("c", "channels"), std::pair("sc", "staticChannels"), std::pair("e", "expressions"),
          std::pair("cn", "constraints"), std::pair("mp", "motionPaths")})
        syntax.flag(shortName, longName);
    syntax.flag("tac", "timeAnimationCurves", {kSwitch}).flag("uac", "unitlessAnimationCurves", {kSwitch});
    syntax.multiUseFlag("at", "attribute", {kText}).flag("hi", "hierarchy", {kText});
    syntax.flag("s", "shape", {kSwitch}).flag("cp", "controlPoints", {kSwitch});
    syntax.objects(ObjectKind::Strings);
    registry.add("delete", syntax, runDelete);
}

}  // namespace host::commands
