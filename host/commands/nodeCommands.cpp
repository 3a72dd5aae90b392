// The commands of nodes: createNode, rename, objExists.

#include <algorithm>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/meshNode.h"
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

    Syntax renaming;
    renaming.flag("is", "ignoreShape").flag("uid", "uuid").objects(ObjectKind::Strings, 1, 2);
    registry.add("rename", renaming, rename);

    Syntax exists;
    exists.objects(ObjectKind::Strings, 1, 1);
    registry.add("objExists", exists, objectExists);
}

}  // namespace host::commands
