// The command sets.

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/setAlgebra.h"
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

/// Flags for what alone a set may hold, with the attribute that says so.
constexpr std::pair<const char*, const char*> kRestrictions[] = {{"vertices", "verticesOnlySet"},
                                                                 {"edges", "edgesOnlySet"},
                                                                 {"facets", "facetsOnlySet"},
                                                                 {"editPoints", "editPointsOnlySet"}};

std::vector<std::string> namesOf(const graph::Graph& graph, const std::vector<SelectionItem>& items) {
    std::vector<std::string> names;
    for (const SelectionItem& item : items) {
        for (std::string& name : graph::itemNames(graph, item))
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
    for (const auto& [flag, attribute] : kRestrictions) {
        if (arguments.isSet(flag))
            return CommandResult::success(graph.number(set.value->plug(attribute)) != 0.0);
    }
    const std::vector<SelectionItem> members = nodes::members(graph, set.value);
    if (arguments.isSet("nodesOnly")) return CommandResult::success(uniqueNames(graph, nodesOf(members)));
    if (arguments.flagsSet() > 0)
        return CommandResult::failure(
            "sets: In query mode there are -size, -renderable, -text, -nodesOnly, -vertices, -edges, -facets "
            "and -editPoints.");
    return CommandResult::success(namesOf(graph, members));
}

/// A call of an operation on the set that its flag names.
struct Call {
    CommandContext& context;
    const ParsedArguments& arguments;
    NodeRef set;
    const std::vector<SelectionItem>& items;
};

struct Operation {
    const char* flag;
    CommandResult (*run)(const Call&);
};

CommandResult named(CommandContext& context, const NodeRef& set) {
    return CommandResult::success(context.graph.uniqueName(*set));
}

CommandResult failed(const std::string& problem) {
    return CommandResult::failure("sets: " + problem + '.');
}

using AddFunction = std::string (*)(graph::Graph&, const NodeRef&, const SelectionItem&);

template <AddFunction add>
CommandResult addAll(const Call& call) {
    for (const SelectionItem& item : call.items) {
        const std::string problem = add(call.context.graph, call.set, item);
        if (!problem.empty()) return failed(problem);
    }
    return named(call.context, call.set);
}

CommandResult include(const Call& call) {
    for (const SelectionItem& item : call.items) {
        const std::string problem = nodes::addToSet(call.context.graph, call.set, item);
        if (!problem.empty() && !call.arguments.isSet("noWarnings"))
            call.context.graph.messages().warning("sets: " + problem + '.');
    }
    return named(call.context, call.set);
}

CommandResult removeAll(const Call& call) {
    for (const SelectionItem& item : call.items)
        nodes::removeFromSet(call.context.graph, call.set, item);
    return named(call.context, call.set);
}

CommandResult clear(const Call& call) {
    return removeAll({call.context, call.arguments, call.set, nodes::members(call.context.graph, call.set)});
}

CommandResult areMembers(const Call& call) {
    return CommandResult::success(!call.items.empty() &&
                                  std::all_of(call.items.begin(), call.items.end(), [&](const auto& item) {
                                      return nodes::isMember(call.context.graph, call.set, item);
                                  }));
}

/// Replaces the sets in a set by their members. Sets may hold each other in circles.
CommandResult flatten(const Call& call) {
    graph::Graph& graph = call.context.graph;
    std::unordered_set<const graph::Node*> opened{call.set.get()};
    std::vector<NodeRef> ahead{call.set};
    while (!ahead.empty()) {
        const NodeRef set = ahead.back();
        ahead.pop_back();
        for (const SelectionItem& member : nodes::members(graph, set)) {
            const bool isSet = member.isWholeNode() && member.node->isA("objectSet");
            if (isSet && set == call.set) nodes::removeFromSet(graph, set, member);
            if (isSet && opened.insert(member.node.get()).second) ahead.push_back(member.node);
            if (isSet || set == call.set) continue;
            const std::string problem = nodes::addToSet(graph, call.set, member);
            if (!problem.empty()) return failed(problem);
        }
    }
    return named(call.context, call.set);
}

/// The sets that a call names beside that of its flag.
Found<std::vector<NodeRef>> otherSets(const Call& call) {
    Found<std::vector<NodeRef>> sets;
    for (const SelectionItem& item : call.items) {
        if (!item.isWholeNode() || !item.node->isA("objectSet"))
            return {{}, "sets: '" + graph::itemName(call.context.graph, item) + "' is no set."};
        sets.value.push_back(item.node);
    }
    return sets;
}

using Combination = std::vector<SelectionItem> (*)(graph::Graph&, const std::vector<NodeRef>&);

template <Combination combine>
CommandResult combined(const Call& call) {
    Found<std::vector<NodeRef>> sets = otherSets(call);
    if (!sets.ok()) return CommandResult::failure(sets.error);
    sets.value.insert(sets.value.begin(), call.set);
    graph::Graph& graph = call.context.graph;
    return CommandResult::success(namesOf(graph, combine(graph, sets.value)));
}

CommandResult intersects(const Call& call) {
    const Found<std::vector<NodeRef>> sets = otherSets(call);
    if (!sets.ok()) return CommandResult::failure(sets.error);
    graph::Graph& graph = call.context.graph;
    return CommandResult::success(
        std::any_of(sets.value.begin(), sets.value.end(), [&](const NodeRef& other) {
            return !nodes::intersectionOf(graph, {call.set, other}).empty();
        }));
}

/// The attribute for what alone a new set may hold; null if it may hold anything.
Found<const char*> restrictionOf(const ParsedArguments& arguments) {
    const std::pair<const char*, const char*>* asked = nullptr;
    for (const auto& restriction : kRestrictions) {
        if (!arguments.isSet(restriction.first)) continue;
        if (asked != nullptr)
            return {nullptr, std::string("sets: -") + asked->first + " and -" + restriction.first +
                                 " cannot be used together."};
        asked = &restriction;
    }
    return {asked != nullptr ? asked->second : nullptr, {}};
}

/// The new set that a call asks for, without members.
Found<NodeRef> makeSet(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<const char*> restriction = restrictionOf(arguments);
    if (!restriction.ok()) return {nullptr, restriction.error};
    Found<std::string> name{"set1", {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return {nullptr, name.error};
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
    if (restriction.value != nullptr) graph.setNumber(set->plug(restriction.value), 1.0);
    return {set, {}};
}

CommandResult copy(const Call& call) {
    const Found<NodeRef> set = makeSet(call.context, call.arguments);
    if (!set.ok()) return CommandResult::failure(set.error);
    return addAll<nodes::addToSet>(
        {call.context, call.arguments, set.value, nodes::members(call.context.graph, call.set)});
}

CommandResult split(const Call& call) {
    const Found<NodeRef> set = makeSet(call.context, call.arguments);
    if (!set.ok()) return CommandResult::failure(set.error);
    removeAll(call);
    return addAll<nodes::addToSet>({call.context, call.arguments, set.value, call.items});
}

constexpr Operation kOperations[] = {{"addElement", addAll<nodes::addToSet>},
                                     {"forceElement", addAll<nodes::forceElement>},
                                     {"include", include},
                                     {"remove", removeAll},
                                     {"clear", clear},
                                     {"isMember", areMembers},
                                     {"flatten", flatten},
                                     {"copy", copy},
                                     {"split", split},
                                     {"isIntersecting", intersects},
                                     {"intersection", combined<nodes::intersectionOf>},
                                     {"union", combined<nodes::unionOf>},
                                     {"subtract", combined<nodes::differenceOf>}};

CommandResult create(CommandContext& context, const ParsedArguments& arguments,
                     const std::vector<SelectionItem>& items) {
    const Found<NodeRef> set = makeSet(context, arguments);
    if (!set.ok()) return CommandResult::failure(set.error);
    if (arguments.isSet("empty")) return named(context, set.value);
    return addAll<nodes::addToSet>({context, arguments, set.value, items});
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
        return set.ok() ? asked->run({context, arguments, set.value, items.value})
                        : CommandResult::failure(set.error);
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
    syntax.flag("v", "vertices").flag("eg", "edges").flag("fc", "facets").flag("ep", "editPoints");
    syntax.flag("cp", "copy", {kText}).flag("sp", "split", {kText}).flag("fl", "flatten", {kText});
    syntax.flag("ii", "isIntersecting", {kText}).flag("int", "intersection", {kText});
    syntax.flag("un", "union", {kText}).flag("sub", "subtract", {kText});
    syntax.flag("no", "nodesOnly").flag("nw", "noWarnings");
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add("sets", syntax, runSets, "af afterFilters co color l layer");
}

}  // namespace host::commands
