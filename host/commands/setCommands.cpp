// The command sets.

#include <algorithm>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/sets.h"

namespace host::commands {

namespace {

using graph::NodeRef;
using graph::SelectionItem;

Found<NodeRef> findSet(const graph::Graph& graph, const std::string& name) {
    Found<NodeRef> set = findOneNode(graph, name);
    if (set.ok() && !set.value->isA("objectSet")) return {nullptr, "sets: '" + name + "' is no set."};
    return set;
}

std::vector<std::string> memberNames(graph::Graph& graph, const NodeRef& set) {
    std::vector<std::string> names;
    for (const SelectionItem& member : nodes::members(graph, set)) {
        for (std::string& name : graph::itemNames(graph, member))
            names.push_back(std::move(name));
    }
    return names;
}

CommandResult query(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const std::vector<std::string> names = arguments.objectNames();
    if (names.size() != 1) return CommandResult::failure("sets: A query needs the name of one set.");
    const Found<NodeRef> set = findSet(graph, names.front());
    if (!set.ok()) return CommandResult::failure(set.error);
    if (arguments.isSet("size")) {
        int count = 0;
        for (const SelectionItem& member : nodes::members(graph, set.value))
            count += member.component ? member.component->count() : 1;
        return CommandResult::success(count);
    }
    if (arguments.isSet("renderable")) return CommandResult::success(set.value->isA("shadingEngine"));
    if (arguments.isSet("text")) {
        const auto text = graph::dataAs<graph::StringData>(graph.data(set.value->plug("annotation")));
        return CommandResult::success(text != nullptr ? text->value : std::string());
    }
    if (arguments.flagsSet() > 0)
        return CommandResult::failure("sets: Only -size, -renderable and -text are covered in query mode.");
    return CommandResult::success(memberNames(graph, set.value));
}

/// A flag that changes or queries the members of the set that it names.
struct Operation {
    const char* flag;
    CommandResult (*run)(CommandContext&, const NodeRef& set, const std::vector<SelectionItem>& items);
};

CommandResult named(CommandContext& context, const NodeRef& set) {
    return CommandResult::success(context.graph.uniqueName(*set));
}

using AddFunction = std::string (*)(graph::Graph&, const NodeRef&, const SelectionItem&);

template <AddFunction add>
CommandResult addAll(CommandContext& context, const NodeRef& set, const std::vector<SelectionItem>& items) {
    for (const SelectionItem& item : items) {
        const std::string problem = add(context.graph, set, item);
        if (!problem.empty()) return CommandResult::failure("sets: " + problem + '.');
    }
    return named(context, set);
}

CommandResult include(CommandContext& context, const NodeRef& set, const std::vector<SelectionItem>& items) {
    for (const SelectionItem& item : items) {
        const std::string problem = nodes::addToSet(context.graph, set, item);
        if (!problem.empty()) context.graph.messages().warning("sets: " + problem + '.');
    }
    return named(context, set);
}

CommandResult removeAll(CommandContext& context, const NodeRef& set,
                        const std::vector<SelectionItem>& items) {
    for (const SelectionItem& item : items)
        nodes::removeFromSet(context.graph, set, item);
    return named(context, set);
}

CommandResult clear(CommandContext& context, const NodeRef& set, const std::vector<SelectionItem>&) {
    return removeAll(context, set, nodes::members(context.graph, set));
}

CommandResult areMembers(CommandContext& context, const NodeRef& set,
                         const std::vector<SelectionItem>& items) {
    return CommandResult::success(!items.empty() &&
                                  std::all_of(items.begin(), items.end(), [&](const SelectionItem& item) {
                                      return nodes::isMember(context.graph, set, item);
                                  }));
}

constexpr Operation kOperations[] = {{"addElement", addAll<nodes::addToSet>},
                                     {"forceElement", addAll<nodes::forceElement>},
                                     {"include", include},
                                     {"remove", removeAll},
                                     {"clear", clear},
                                     {"isMember", areMembers}};

CommandResult create(CommandContext& context, const ParsedArguments& arguments,
                     const std::vector<SelectionItem>& items) {
    graph::Graph& graph = context.graph;
    Found<std::string> name{"set1", {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    const bool isRenderable = arguments.boolean("renderable");
    const NodeRef set =
        graph.createNode(*graph.types().find(isRenderable ? "shadingEngine" : "objectSet"), name.value);
    if (isRenderable) {
        nodes::addToPartition(graph, graph::findNode(graph, "renderPartition"), set);
        if (!arguments.boolean("noSurfaceShader"))
            graph.connect(graph::findNode(graph, "lambert1")->plug("outColor"), set->plug("surfaceShader"));
    }
    if (arguments.isSet("text"))
        graph.setData(set->plug("annotation"), std::make_shared<graph::StringData>(arguments.text("text")));
    if (arguments.isSet("empty")) return named(context, set);
    return addAll<nodes::addToSet>(context, set, items);
}

CommandResult runSets(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isQuery()) return query(context, arguments);
    const Found<std::vector<SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const Operation* asked = nullptr;
    for (const Operation& operation : kOperations) {
        if (!arguments.isSet(operation.flag)) continue;
        if (asked != nullptr)
            return CommandResult::failure(std::string("sets: -") + asked->flag + " and -" + operation.flag +
                                          " cannot be used together.");
        asked = &operation;
    }
    if (asked != nullptr) {
        const Found<NodeRef> set = findSet(context.graph, arguments.text(asked->flag));
        return set.ok() ? asked->run(context, set.value, items.value) : CommandResult::failure(set.error);
    }
    if (arguments.isEdit()) return CommandResult::failure("sets: Nothing to edit was given.");
    return create(context, arguments, items.value);
}

}  // namespace

void registerSetCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("add", "addElement", {kText}).flag("fe", "forceElement", {kText});
    syntax.flag("in", "include", {kText}).flag("rm", "remove", {kText}).flag("cl", "clear", {kText});
    syntax.flag("im", "isMember", {kText}).flag("n", "name", {kText}).flag("em", "empty");
    syntax.flag("r", "renderable", {kSwitch}).flag("nss", "noSurfaceShader", {kSwitch});
    syntax.flag("s", "size").flag("t", "text", {kText});
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add(
        "sets", syntax, runSets,
        "af afterFilters co color cp copy eg edges ep editPoints fc facets fl flatten ii "
        "isIntersecting int intersection l layer no nodesOnly nw noWarnings sp split sub subtract un union v "
        "vertices");
}

}  // namespace host::commands
