// The command ls.

#include <algorithm>
#include <set>
#include <unordered_set>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/listFilter.h"
#include "graph/instances.h"
#include "graph/namespaces.h"
#include "graph/pathNames.h"
#include "nodes/meshNode.h"
#include "scene/sceneSession.h"

namespace host::commands {

namespace {

using graph::SelectionItem;

void addBelow(const SelectionItem& item, std::vector<SelectionItem>& items) {
    for (const graph::Instance& below : graph::hierarchyBelow(graph::upwards(item).front()))
        items.push_back({below.node->ref(), {}, {}, below.number});
}

std::vector<SelectionItem> sceneItems(const graph::Graph& graph, const ListFilter& filter) {
    std::vector<SelectionItem> items;
    if (filter.dagOnly && !filter.intermediateOnly) {
        for (graph::Node* root : graph.roots())
            addBelow({root->ref()}, items);
        return items;
    }
    for (const graph::NodeRef& node : graph.nodes())
        items.push_back({node, {}, {}});
    return items;
}

bool isTopLevel(const graph::Node& node) {
    return node.parent() == nullptr;
}

/// Nodes of a kind are listed by name, the whole scene in order of creation. Of nodes with the same name, the
/// one nearest to the top comes first.
void sortByName(const graph::Graph& graph, std::vector<SelectionItem>& items) {
    std::stable_sort(items.begin(), items.end(), [&](const SelectionItem& a, const SelectionItem& b) {
        if (a.node->name() != b.node->name()) return a.node->name() < b.node->name();
        if (isTopLevel(*a.node) != isTopLevel(*b.node)) return isTopLevel(*a.node);
        return graph.fullPath(*a.node) < graph.fullPath(*b.node);
    });
}

/// Everything with the given names. A name that matches nothing is not an error here, and one that several
/// objects share means all of them.
std::vector<SelectionItem> namedItems(graph::Graph& graph, const std::vector<std::string>& names) {
    std::vector<SelectionItem> items;
    for (const std::string& name : names) {
        std::vector<SelectionItem> found;
        if (name.find('.') == std::string::npos) {
            for (const graph::Instance& place : graph::findPlaces(graph, name))
                found.push_back({place.node->ref(), {}, {}, place.number});
        } else {
            found = graph::findAll(graph, name).items;
        }
        if (name.find('.') == std::string::npos) {
            if (name.find_first_of("*?") != std::string::npos) {
                sortByName(graph, found);
            } else {
                std::stable_partition(found.begin(), found.end(),
                                      [](const SelectionItem& item) { return isTopLevel(*item.node); });
            }
        }
        items.insert(items.end(), found.begin(), found.end());
    }
    return items;
}

/// With -dag, a given object means everything below it too.
std::vector<SelectionItem> withDescendants(const std::vector<SelectionItem>& items) {
    std::vector<SelectionItem> result;
    for (const SelectionItem& item : items) {
        if (item.isWholeNode()) {
            addBelow(item, result);
        } else {
            result.push_back(item);
        }
    }
    return result;
}

std::vector<SelectionItem> candidates(CommandContext& context, const ParsedArguments& arguments,
                                      const ListFilter& filter) {
    graph::Graph& graph = context.graph;
    const bool isSelection = arguments.isSet("selection") || arguments.isSet("orderedSelection");
    std::vector<SelectionItem> items;
    if (isSelection) {
        items = graph.selection().items();
        if (!arguments.objects().empty()) {
            const std::vector<SelectionItem> named = namedItems(graph, arguments.objectNames());
            const auto isOther = [&](const SelectionItem& item) {
                return std::none_of(named.begin(), named.end(), [&](const SelectionItem& wanted) {
                    return wanted.node == item.node && wanted.path == item.path;
                });
            };
            items.erase(std::remove_if(items.begin(), items.end(), isOther), items.end());
        }
    } else if (!arguments.objects().empty()) {
        items = namedItems(graph, arguments.objectNames());
    } else if (arguments.isSet("assemblies")) {
        for (graph::Node* root : graph.roots())
            items.push_back({root->ref(), {}, {}});
        return items;
    } else {
        items = sceneItems(graph, filter);
        if (filter.isTyped() && !arguments.isSet("dagObjects")) sortByName(graph, items);
        return items;
    }
    return arguments.isSet("dagObjects") ? withDescendants(items) : items;
}

/// The ids of whole nodes, in place of their names. A node that no file knows gets its id now.
std::vector<std::string> uuidsOf(const std::vector<SelectionItem>& items, scene::SceneSession& session) {
    std::vector<std::string> uuids;
    uuids.reserve(items.size());
    for (const SelectionItem& item : items) {
        if (item.isWholeNode()) uuids.push_back(session.uuidOf(*item.node));
    }
    return uuids;
}

/// The names of a whole node: of the path that is meant, or of all.
std::vector<std::string> namesOf(const graph::Graph& graph, const SelectionItem& item,
                                 const ParsedArguments& arguments, graph::PathNames& paths) {
    const bool isLong = arguments.isSet("long");
    if (arguments.isSet("allPaths") && graph::isInstanced(*item.node))
        return isLong ? graph::paths(*item.node) : graph::shortPaths(graph, *item.node);
    if (item.path > 0) return graph::itemNames(graph, item, isLong);
    return {paths.of(*item.node)};
}

/// The root is ":"; with -absoluteName, so every other namespace begins.
std::string shownNamespace(const graph::Node& node, const ParsedArguments& arguments) {
    const std::string_view nameSpace = graph::namespaceOf(node.name());
    const bool hasColon = nameSpace.empty() || arguments.isSet("absoluteName");
    return (hasColon ? ":" : "") + std::string(nameSpace);
}

void appendNames(const graph::Graph& graph, const SelectionItem& item, const ParsedArguments& arguments,
                 graph::PathNames& paths, std::vector<std::string>& names) {
    if (item.isWholeNode()) {
        for (std::string& name : namesOf(graph, item, arguments, paths)) {
            names.push_back(std::move(name));
            if (arguments.isSet("showNamespace")) names.push_back(shownNamespace(*item.node, arguments));
            if (arguments.isSet("showType")) names.push_back(item.node->type().name());
        }
        return;
    }
    std::vector<std::string> own = graph::itemNames(graph, item, arguments.isSet("long"));
    if (item.component && arguments.isSet("flatten")) {
        const std::string prefix = own.empty() ? "" : own.front().substr(0, own.front().find('.') + 1);
        own.clear();
        for (const int element : item.component->elements())
            own.push_back(prefix + graph::runText(item.component->kind(), {element, element}));
    }
    for (std::string& name : own) {
        names.push_back(std::move(name));
        if (!arguments.isSet("showType")) continue;
        names.push_back(item.component ? "float3" : item.node->type().name());
    }
}

std::vector<std::string> typeNames(const graph::Graph& graph) {
    std::vector<std::string> names;
    for (const graph::NodeType* type : graph.types().all())
        names.push_back(type->name());
    return names;
}

/// What was listed: nodes, and further instances of them.
class Listed {
  public:
    /// Whether an item is new.
    bool add(const SelectionItem& item) {
        if (item.path == 0) return nodes_.insert(item.node.get()).second;
        return instances_.emplace(item.node.get(), item.path).second;
    }

  private:
    std::unordered_set<const graph::Node*> nodes_;
    std::set<std::pair<const graph::Node*, std::size_t>> instances_;
};

CommandResult ls(CommandContext& context, const ParsedArguments& arguments, scene::SceneSession& session) {
    graph::Graph& graph = context.graph;
    const ListFilter filter = filterOf(arguments);
    for (const std::string& type : texts(arguments, "type")) {
        if (graph.types().find(type) == nullptr)
            return CommandResult::failure("ls: Unknown object type: " + type);
    }
    if (arguments.isSet("nodeTypes")) return CommandResult::success(typeNames(graph));
    std::vector<SelectionItem> items;
    Listed listed;
    const bool isPerNode = arguments.isSet("allPaths") || arguments.isSet("uuid");
    for (SelectionItem& item : candidates(context, arguments, filter)) {
        if (arguments.isSet("objectsOnly")) item = {item.node, {}, {}, item.path};
        if (isPerNode) item.path = 0;
        if (arguments.isSet("assemblies") && (!item.node->type().isDag() || item.node->parent() != nullptr))
            continue;
        if (!passes(graph, filter, item)) continue;
        if (item.isWholeNode() && !listed.add(item)) continue;
        items.push_back(std::move(item));
    }
    if (arguments.isSet("head")) {
        items.resize(std::min(items.size(), static_cast<std::size_t>(arguments.integer("head"))));
    } else if (arguments.isSet("tail")) {
        const auto kept = std::min(items.size(), static_cast<std::size_t>(arguments.integer("tail")));
        items.erase(items.begin(), items.end() - static_cast<std::ptrdiff_t>(kept));
    }
    for (const SelectionItem& item : items) {
        if (arguments.isSet("allPaths") && graph::pathCount(*item.node) > graph::kMaxPaths) {
            return CommandResult::failure("ls: '" + graph.uniqueName(*item.node) + "' has more than " +
                                          std::to_string(graph::kMaxPaths) +
                                          " paths. Leave out -allPaths to list its first one.");
        }
    }
    mel::ResultForm form;
    form.isListWhenEmpty = true;
    if (arguments.isSet("uuid")) return CommandResult::success(uuidsOf(items, session)).with(std::move(form));
    graph::PathNames paths(
        graph, arguments.isSet("long") ? graph::PathNames::Kind::Full : graph::PathNames::Kind::Unique);
    std::vector<std::string> names;
    names.reserve(items.size());
    for (const SelectionItem& item : items)
        appendNames(graph, item, arguments, paths, names);
    return CommandResult::success(std::move(names)).with(std::move(form));
}

}  // namespace

void registerListCommands(mel::CommandRegistry& registry,
                          const std::shared_ptr<scene::SceneSession>& session) {
    Syntax syntax;
    syntax.flag("as", "assemblies").flag("dag", "dagObjects").flag("dep", "dependencyNodes");
    syntax.flag("sl", "selection").flag("os", "orderedSelection").flag("fl", "flatten");
    syntax.flag("ap", "allPaths")
        .flag("l", "long")
        .flag("sn", "shortNames")
        .flag("st", "showType")
        .flag("uid", "uuid");
    addFilterFlags(syntax);
    syntax.flag("o", "objectsOnly")
        .flag("sns", "showNamespace")
        .flag("an", "absoluteName")
        .flag("r", "recursive", {kSwitch});
    syntax.flag("hd", "head", {ArgumentType::Unsigned}).flag("tl", "tail", {ArgumentType::Unsigned});
    syntax.objects(ObjectKind::Strings);
    registry.add(
        "ls", syntax,
        [session](CommandContext& context, const ParsedArguments& arguments) {
            return ls(context, arguments, *session);
        },
        "containerType ct modified mod persistentNodes pn");
}

}  // namespace host::commands
