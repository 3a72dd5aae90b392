// The commands of nodes: createNode, delete, rename, nodeType, objExists.

#include <algorithm>
#include <functional>
#include <memory>
#include <set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/defaultCameras.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "scene/fileTypes.h"
#include "scene/uuids.h"

namespace host::commands {

namespace {

/// The transform for a new shape without a named parent.
graph::NodeRef makeTransformFor(graph::Graph& graph, const graph::NodeType& shapeType) {
    const std::string base = shapeType.isA("mesh") ? "polySurface" : shapeType.name();
    return graph.createNode(*graph.types().find("transform"), graph.nextName(graph.wholeName(base)));
}

Found<graph::NodeRef> parentOption(CommandContext& context, const ParsedArguments& arguments,
                                   const graph::NodeType& type) {
    if (!arguments.isSet("parent")) return {};
    const std::string name = arguments.text("parent");
    Found<graph::NodeRef> parent = findOneNode(context.graph, name);
    if (!parent.ok()) return parent;
    if (!type.isDag()) return {nullptr, "createNode: Only DAG nodes can have a parent."};
    if (!parent.value->isA("transform")) return {nullptr, "createNode: '" + name + "' is no transform."};
    return parent;
}

CommandResult createNode(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const std::string typeName = arguments.arguments()[0].toString();
    const graph::NodeType* type = graph.types().find(typeName);
    if (type == nullptr || type->isAbstract())
        return CommandResult::failure("createNode: Unrecognized node type '" + typeName + "'.");
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    if (arguments.isSet("shared") && !name.value.empty()) {
        const std::vector<graph::NodeRef> existing = graph.nodesNamed(name.value);
        if (existing.size() == 1 && &existing.front()->type() == type)
            return CommandResult::success(graph.uniqueName(*existing.front()));
    }
    const Found<graph::NodeRef> parent = parentOption(context, arguments, *type);
    if (!parent.ok()) return CommandResult::failure(parent.error);
    graph::NodeRef owner = parent.value;
    if (owner == nullptr && type->isA("shape")) {
        owner = makeTransformFor(graph, *type);
        if (name.value.empty()) name.value = nodes::shapeNameFor(owner->name());
    }
    const graph::NodeRef node = graph.createNode(*type, name.value, owner.get());
    if (!arguments.isSet("skipSelect") && !arguments.isSet("shared")) selectNodes(graph, {node});
    return CommandResult::success(graph.uniqueName(*node));
}

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

CommandResult deleteNodes(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const bool isHistoryOnly = arguments.isSet("constructionHistory");
    for (const graph::SelectionItem& item : items.value) {
        if (!item.isWholeNode() && !isHistoryOnly)
            return CommandResult::failure("delete: Deleting components or attributes is not covered.");
    }
    std::vector<graph::NodeRef> nodes = nodesOf(items.value);
    if (isHistoryOnly) {
        deleteHistory(graph, nodes);
        return CommandResult::success();
    }
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

/// The shape that is named after its transform.
graph::Node* namesakeShape(const graph::Node& transform) {
    const std::string numbered = nodes::shapeNameFor(transform.name());
    const std::string plain = transform.name() + "Shape";
    for (graph::Node* child : transform.children()) {
        if (child->isA("shape") && (child->name() == numbered || child->name() == plain)) return child;
    }
    return nullptr;
}

CommandResult rename(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const std::vector<std::string> words = arguments.objectNames();
    graph::NodeRef node;
    if (words.size() == 2) {
        const Found<graph::NodeRef> found = findOneNode(graph, words[0]);
        if (!found.ok()) return CommandResult::failure(found.error);
        node = found.value;
    } else if (!graph.selection().empty()) {
        node = graph.selection().items().front().node;
    } else {
        return CommandResult::failure("rename: No object to rename was given.");
    }
    if (arguments.isSet("uuid")) {
        if (!scene::isUuid(words.back()))
            return CommandResult::failure("rename: '" + words.back() + "' is no id of the form 8-4-4-4-12.");
        graph.setUuid(*node, words.back());
        return CommandResult::success(graph.uniqueName(*node));
    }
    const Found<std::string> name = legalName(graph, words.back());
    if (!name.ok()) return CommandResult::failure(name.error);
    if (scene::isDefaultNode(*node)) return CommandResult::failure("Cannot rename a read only node.");
    if (node->isLocked()) return CommandResult::failure(lockProblem(graph, *node, "rename"));
    graph::Node* shape = arguments.isSet("ignoreShape") ? nullptr : namesakeShape(*node);
    const std::string given = graph.rename(*node, name.value);
    if (shape != nullptr) graph.rename(*shape, nodes::shapeNameFor(given));
    return CommandResult::success(graph.uniqueName(*node));
}

/// Types from the root down to the node's own.
std::vector<std::string> inheritance(const graph::NodeType& type) {
    std::vector<std::string> names;
    for (const graph::NodeType* at = &type; at != nullptr; at = at->base())
        names.push_back(at->name());
    std::reverse(names.begin(), names.end());
    return names;
}

CommandResult nodeType(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.objectNames().front();
    if (arguments.isSet("isTypeName")) {
        const graph::NodeType* type = context.graph.types().find(name);
        if (type == nullptr) return CommandResult::failure("nodeType: Unknown node type: " + name);
        return CommandResult::success(inheritance(*type));
    }
    const graph::NameMatches matches = graph::findAll(context.graph, name);
    if (matches.failure != graph::NameFailure::None) return CommandResult::failure(matches.errorText(name));
    const graph::NodeType& type = matches.items.front().node->type();
    if (arguments.isSet("inherited")) return CommandResult::success(inheritance(type));
    return CommandResult::success(type.name());
}

CommandResult objectExists(CommandContext& context, const ParsedArguments& arguments) {
    // A name that several objects share exists as well.
    const graph::NameMatches matches = graph::findAll(context.graph, arguments.objectNames().front());
    return CommandResult::success(matches.failure != graph::NameFailure::NoMatch);
}

}  // namespace

void registerNodeCommands(mel::CommandRegistry& registry) {
    Syntax create;
    create.addArgument(kText);
    create.flag("n", "name", {kText}).flag("p", "parent", {kText});
    create.flag("s", "shared").flag("ss", "skipSelect");
    registry.add("createNode", create, createNode);

    Syntax remove;
    remove.flag("ch", "constructionHistory").objects(ObjectKind::Strings);
    registry.add("delete", remove, deleteNodes,
                 "all attribute at controlPoints cp channels c cn constraints e expressions hi hierarchy "
                 "inputConnectionsAndNodes icn mp motionPaths s "
                 "shape sc staticChannels tac timeAnimationCurves uac unitlessAnimationCurves");

    Syntax renaming;
    renaming.flag("is", "ignoreShape").flag("uid", "uuid").objects(ObjectKind::Strings, 1, 2);
    registry.add("rename", renaming, rename);

    Syntax typing;
    typing.flag("i", "inherited").flag("itn", "isTypeName").objects(ObjectKind::Strings, 1, 1);
    registry.add("nodeType", typing, nodeType, "api apiType d derived");

    Syntax exists;
    exists.objects(ObjectKind::Strings, 1, 1);
    registry.add("objExists", exists, objectExists);
}

}  // namespace host::commands
