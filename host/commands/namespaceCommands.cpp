// The commands namespace and namespaceInfo.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "graph/namespaces.h"

namespace host::commands {

namespace {

using graph::Graph;
using graph::NodeRef;

/// What every scene has for the host's own use.
constexpr std::string_view kOwn[] = {"UI", "shared"};

bool isOwn(std::string_view nameSpace) {
    return std::find(std::begin(kOwn), std::end(kOwn), nameSpace) != std::end(kOwn);
}

bool exists(const Graph& graph, const std::string& nameSpace) {
    return nameSpace.empty() || isOwn(nameSpace) || graph.namespaces().count(nameSpace) != 0;
}

/// What a script calls a namespace, without a colon in front or at the end: first one in the current
/// namespace, then one in the root. Empty for the root.
std::string namedSpace(const Graph& graph, std::string name) {
    if (name.size() > 1 && name.back() == ':') name.pop_back();
    const std::string relative =
        graph.currentNamespace().empty() ? name : graph.currentNamespace() + ':' + name;
    const bool isAbsolute = !name.empty() && name.front() == ':';
    if (!isAbsolute && exists(graph, relative)) return relative;
    return std::string(graph::withoutRoot(name));
}

/// As scripts read it: ":" for the root.
std::string shown(std::string_view nameSpace, bool isAbsolute = false) {
    if (nameSpace.empty()) return ":";
    return (isAbsolute ? ":" : "") + std::string(nameSpace);
}

std::string joined(std::string_view outer, std::string_view name) {
    return outer.empty() ? std::string(name) : std::string(outer) + ':' + std::string(name);
}

std::vector<NodeRef> nodesIn(const Graph& graph, std::string_view nameSpace, bool recurses) {
    std::vector<NodeRef> found = graph.nodes();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const NodeRef& node) {
                                   const std::string_view own = graph::namespaceOf(node->name());
                                   return recurses ? !graph::isWithin(own, nameSpace) : own != nameSpace;
                               }),
                found.end());
    return found;
}

std::vector<std::string> namespacesIn(const Graph& graph, std::string_view nameSpace, bool recurses) {
    std::vector<std::string> found;
    if (nameSpace.empty()) found.assign(std::begin(kOwn), std::end(kOwn));
    for (const std::string& name : graph.namespaces()) {
        const std::string_view outer = graph::namespaceOf(name);
        if (recurses ? graph::isWithin(outer, nameSpace) : outer == nameSpace) found.push_back(name);
    }
    std::sort(found.begin(), found.end());
    return found;
}

CommandResult failure(const std::string& text) {
    return CommandResult::failure("namespace: " + text);
}

CommandResult missing(std::string_view nameSpace) {
    return failure("There is no namespace '" + shown(nameSpace) + "'.");
}

/// Why a namespace cannot be taken away or renamed; empty if it can.
std::string obstacle(const Graph& graph, const std::string& nameSpace) {
    if (nameSpace.empty() || isOwn(nameSpace))
        return "The namespace '" + shown(nameSpace) + "' is the host's own and stays.";
    if (!exists(graph, nameSpace)) return "There is no namespace '" + nameSpace + "'.";
    return {};
}

/// Renames what is in a namespace, and in those inside it, so that it is in another one.
void moveContent(Graph& graph, const std::string& from, const std::string& to) {
    for (const std::string& inner : namespacesIn(graph, from, true))
        graph.addNamespace(joined(to, std::string_view(inner).substr(from.size() + 1)));
    for (const NodeRef& node : nodesIn(graph, from, true))
        graph.rename(*node, joined(to, std::string_view(node->name()).substr(from.size() + 1)));
}

CommandResult add(Graph& graph, const ParsedArguments& arguments) {
    const std::string name = arguments.text("addNamespace");
    const bool isAbsolute = !name.empty() && name.front() == ':';
    const std::string outer = arguments.isSet("parent") ? namedSpace(graph, arguments.text("parent"))
                              : isAbsolute              ? std::string()
                                                        : graph.currentNamespace();
    if (!exists(graph, outer)) return missing(outer);
    const std::string whole = joined(outer, graph::withoutRoot(name));
    const Found<std::string> legal = legalName(graph, ':' + whole);
    if (!legal.ok() || legal.value != whole)
        return failure("'" + name + "' is no legal name. Use letters, digits and underscores.");
    if (exists(graph, whole)) return failure("The namespace '" + whole + "' already exists.");
    graph.addNamespace(whole);
    return CommandResult::success(whole);
}

CommandResult remove(Graph& graph, const ParsedArguments& arguments) {
    const std::string name = namedSpace(graph, arguments.text("removeNamespace"));
    if (const std::string why = obstacle(graph, name); !why.empty()) return failure(why);
    if (arguments.isSet("mergeNamespaceWithParent")) {
        moveContent(graph, name, std::string(graph::namespaceOf(name)));
    } else if (arguments.isSet("mergeNamespaceWithRoot")) {
        moveContent(graph, name, {});
    } else if (arguments.isSet("deleteNamespaceContent")) {
        graph.deleteNodes(nodesIn(graph, name, true));
    } else if (!nodesIn(graph, name, true).empty() || !namespacesIn(graph, name, true).empty()) {
        return failure("The namespace '" + name +
                       "' is not empty. Add -mergeNamespaceWithParent, -mergeNamespaceWithRoot or "
                       "-deleteNamespaceContent.");
    }
    graph.removeNamespace(name);
    return CommandResult::success(name);
}

/// Moves the content of one namespace to another, which is made if it is to have the name of the first.
CommandResult rename(Graph& graph, const ParsedArguments& arguments) {
    const std::vector<Value>& names = arguments.values("rename");
    const std::string from = namedSpace(graph, names[0].toString());
    if (const std::string why = obstacle(graph, from); !why.empty()) return failure(why);
    const std::string outer = arguments.isSet("parent") ? namedSpace(graph, arguments.text("parent"))
                                                        : std::string(graph::namespaceOf(from));
    const std::string to = joined(outer, graph::withoutRoot(names[1].toString()));
    const Found<std::string> legal = legalName(graph, ':' + to);
    if (!legal.ok() || legal.value != to)
        return failure("'" + names[1].toString() +
                       "' is no legal name. Use letters, digits and underscores.");
    if (exists(graph, to)) return failure("The namespace '" + to + "' already exists.");
    if (graph::isWithin(to, from)) return failure("A namespace cannot be moved into itself.");
    const bool isCurrent = graph.currentNamespace() == from;
    graph.addNamespace(to);
    moveContent(graph, from, to);
    graph.removeNamespace(from);
    if (isCurrent) graph.setCurrentNamespace(to);
    return CommandResult::success(to);
}

CommandResult move(Graph& graph, const ParsedArguments& arguments) {
    const std::vector<Value>& names = arguments.values("moveNamespace");
    const std::string from = namedSpace(graph, names[0].toString());
    const std::string to = namedSpace(graph, names[1].toString());
    if (!exists(graph, from)) return missing(from);
    if (!exists(graph, to)) return missing(to);
    if (graph::isWithin(to, from)) return failure("A namespace cannot be moved into itself.");
    for (const NodeRef& node : nodesIn(graph, from, false)) {
        if (arguments.isSet("force") || graph.nodesNamed(joined(to, graph::baseName(node->name()))).empty())
            continue;
        return failure("'" + shown(to) + "' has a node " + std::string(graph::baseName(node->name())) +
                       " already. Add -force to give the moved one another name.");
    }
    moveContent(graph, from, to);
    return CommandResult::success();
}

CommandResult nameSpace(CommandContext& context, const ParsedArguments& arguments) {
    Graph& graph = context.graph;
    if (arguments.isQuery())
        return arguments.isSet("relativeNames") ? CommandResult::success(false)
                                                : failure("This query is not covered by this host.");
    if (arguments.isSet("exists"))
        return CommandResult::success(exists(graph, namedSpace(graph, arguments.text("exists"))));
    if (arguments.isSet("addNamespace")) return add(graph, arguments);
    if (arguments.isSet("removeNamespace")) return remove(graph, arguments);
    if (arguments.isSet("rename")) return rename(graph, arguments);
    if (arguments.isSet("moveNamespace")) return move(graph, arguments);
    if (!arguments.isSet("setNamespace")) return failure("Nothing was asked for.");
    const std::string wanted = namedSpace(graph, arguments.text("setNamespace"));
    if (!exists(graph, wanted)) return missing(wanted);
    graph.setCurrentNamespace(wanted);
    return CommandResult::success(shown(wanted));
}

CommandResult namespaceInfo(CommandContext& context, const ParsedArguments& arguments) {
    const Graph& graph = context.graph;
    const bool isAbsolute = arguments.isSet("absoluteName");
    const std::vector<std::string> named = arguments.objectNames();
    const std::string of = named.empty() ? graph.currentNamespace() : namedSpace(graph, named.front());
    if (!exists(graph, of))
        return CommandResult::failure("namespaceInfo: There is no namespace '" + of + "'.");
    if (arguments.isSet("isRootNamespace")) return CommandResult::success(of.empty());
    if (arguments.isSet("currentNamespace"))
        return CommandResult::success(shown(graph.currentNamespace(), isAbsolute));
    if (arguments.isSet("parent")) return CommandResult::success(shown(graph::namespaceOf(of), isAbsolute));
    if (arguments.isSet("baseName")) return CommandResult::success(shown(graph::baseName(of)));
    if (arguments.isSet("fullName")) return CommandResult::success(shown(of, isAbsolute));
    const bool recurses = arguments.isSet("recurse");
    std::vector<std::string> names;
    if (!arguments.isSet("listOnlyDependencyNodes")) {
        for (const std::string& inner : namespacesIn(graph, of, recurses))
            names.push_back(shown(inner, isAbsolute));
    }
    if (!arguments.isSet("listOnlyNamespaces")) {
        for (const NodeRef& node : nodesIn(graph, of, recurses)) {
            const std::string name =
                arguments.isSet("dagPath") ? graph.fullPath(*node) : graph.uniqueName(*node);
            names.push_back(isAbsolute ? ':' + name : name);
        }
    }
    return CommandResult::success(Value(std::move(names)));
}

}  // namespace

void registerNamespaceCommands(mel::CommandRegistry& registry) {
    Syntax changing;
    changing.flag("add", "addNamespace", {kText})
        .flag("p", "parent", {kText})
        .flag("set", "setNamespace", {kText});
    changing.flag("ex", "exists", {kText}).flag("rm", "removeNamespace", {kText}).flag("f", "force");
    changing.flag("mnp", "mergeNamespaceWithParent").flag("mnr", "mergeNamespaceWithRoot");
    changing.flag("dnc", "deleteNamespaceContent").flag("ren", "rename", {kText, kText});
    changing.flag("mv", "moveNamespace", {kText, kText})
        .flag("rel", "relativeNames", {kSwitch})
        .enableQuery();
    registry.add("namespace", changing, nameSpace,
                 "an absoluteName bak backup ir isRootNamespace mno mergeNamespaceWithOther r recurse vn "
                 "validateName");

    Syntax asking;
    asking.flag("cur", "currentNamespace").flag("ls", "listNamespace").flag("lon", "listOnlyNamespaces");
    asking.flag("lod", "listOnlyDependencyNodes").flag("r", "recurse").flag("dp", "dagPath");
    asking.flag("an", "absoluteName").flag("p", "parent").flag("bn", "baseName").flag("fn", "fullName");
    asking.flag("ir", "isRootNamespace").objects(ObjectKind::Strings, 0, 1);
    registry.add("namespaceInfo", asking, namespaceInfo, "int internal sn shortName");
}

}  // namespace host::commands
