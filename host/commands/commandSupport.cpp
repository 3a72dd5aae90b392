#include "commands/commandSupport.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <unordered_set>

#include "geometry/math.h"
#include "graph/pathNames.h"

namespace host::commands {

namespace {

/// The plug pnts[...] of a mesh for a vertex word after the mesh's name.
graph::PlugMatch pointPlug(graph::Graph& graph, const graph::NodeRef& node, std::string_view attribute) {
    const auto word = graph::parseMeshComponentWord(attribute);
    const graph::NodeRef shape = word && node->type().isDag() ? graph.shapeOf(node) : nullptr;
    if (shape == nullptr || word->kind != graph::ComponentKind::Vertex) return {};
    const graph::Plug points = shape->plug("pnts");
    const int count = graph.componentCount(shape, word->kind);
    const int last = word->all ? count - 1 : word->run.last;
    if (!points || last < 0 || last >= count) return {};
    return {points.element(word->run.first), last, true};
}

/// Consecutive component words of one kind and object. Together they cost a sort. One by one, each would cost
/// a pass over the component.
struct ComponentGroup {
    std::size_t words = 1;
    std::string all;  // the name of all components of the object
    std::vector<graph::Run> runs;
};

ComponentGroup componentGroup(const std::vector<std::string>& names, std::size_t first) {
    ComponentGroup group;
    const std::size_t dot = names[first].find('.');
    if (dot == std::string::npos) return group;
    const std::string_view object = std::string_view(names[first]).substr(0, dot + 1);
    std::optional<graph::ComponentKind> kind;
    std::size_t at = first;
    for (; at < names.size(); ++at) {
        const std::string_view name = names[at];
        if (name.substr(0, dot + 1) != object) break;
        const auto word = graph::parseMeshComponentWord(name.substr(dot + 1));
        if (!word || word->all || (kind && word->kind != *kind)) break;
        kind = word->kind;
        group.runs.push_back(word->run);
    }
    if (at - first < 2) return group;
    group.words = at - first;
    group.all = std::string(object) + std::string(graph::componentWord(*kind)) + "[*]";
    return group;
}

/// Reduces complete components to what a group of words names. Fails if a word names nothing.
void cutDown(graph::NameMatches& matches, const ComponentGroup& group) {
    for (graph::SelectionItem& item : matches.items) {
        const int count = item.component->count();
        std::vector<int> indices;
        for (const graph::Run run : group.runs) {
            if (run.first >= count) {
                matches.failure = graph::NameFailure::NoMatch;
                return;
            }
            for (int index = run.first; index <= std::min(run.last, count - 1); ++index)
                indices.push_back(index);
        }
        item.component = graph::Component::fromIndices(item.component->kind(), std::move(indices));
    }
}

Found<graph::NodeRef> nodeOfPlugName(graph::Graph& graph, std::string_view nodeName,
                                     const std::string& name) {
    if (nodeName.empty()) {
        const auto& items = graph.selection().items();
        if (!items.empty()) return {items.front().node, {}};
        return {nullptr, "No object matches name: " + name};
    }
    const std::vector<graph::NodeRef> nodes = graph::findNodes(graph, nodeName);
    if (nodes.empty()) return {nullptr, "No object matches name: " + name};
    if (nodes.size() > 1) return {nullptr, "More than one object matches name: " + name};
    return {nodes.front(), {}};
}

/// A name within its namespace; empty if it has no letter or digit.
std::string legalPart(std::string_view wanted) {
    const auto isLetterOrDigit = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 128 && std::isalnum(byte) != 0;
    };
    if (std::none_of(wanted.begin(), wanted.end(), isLetterOrDigit)) return {};
    std::string name(wanted);
    for (char& c : name) {
        if (!isLetterOrDigit(c)) c = '_';
    }
    if (std::isdigit(static_cast<unsigned char>(name.front())) != 0) name.insert(0, 1, '_');
    return name;
}

}  // namespace

Found<graph::NodeRef> findOneNode(const graph::Graph& graph, const std::string& name) {
    const std::vector<graph::NodeRef> nodes = graph::findNodes(graph, name);
    if (nodes.empty()) return {nullptr, "No object matches name: " + name};
    if (nodes.size() > 1) return {nullptr, "More than one object matches name: " + name};
    return {nodes.front(), {}};
}

Found<std::vector<graph::SelectionItem>> findItems(graph::Graph& graph,
                                                   const std::vector<std::string>& names) {
    Found<std::vector<graph::SelectionItem>> found;
    for (std::size_t k = 0; k < names.size();) {
        const ComponentGroup group = componentGroup(names, k);
        graph::NameMatches matches = graph::findAll(graph, group.words > 1 ? group.all : names[k]);
        if (matches.failure == graph::NameFailure::None && group.words > 1) cutDown(matches, group);
        if (matches.failure != graph::NameFailure::None) return {{}, matches.errorText(names[k])};
        for (graph::SelectionItem& item : matches.items)
            found.value.push_back(std::move(item));
        k += group.words;
    }
    return found;
}

Found<std::vector<graph::SelectionItem>> objectsOrSelection(CommandContext& context,
                                                            const ParsedArguments& arguments) {
    if (arguments.objects().empty()) return {context.graph.selection().items(), {}};
    return findItems(context.graph, arguments.objectNames());
}

std::vector<graph::NodeRef> nodesOf(const std::vector<graph::SelectionItem>& items) {
    std::vector<graph::NodeRef> nodes;
    std::unordered_set<const graph::Node*> seen;
    for (const graph::SelectionItem& item : items) {
        if (seen.insert(item.node.get()).second) nodes.push_back(item.node);
    }
    return nodes;
}

Found<graph::PlugMatch> findOnePlug(graph::Graph& graph, const std::string& name) {
    const std::size_t dot = name.find('.');
    const std::string_view text = name;
    if (dot == std::string::npos) return {{}, "No object matches name: " + name};
    const Found<graph::NodeRef> node = nodeOfPlugName(graph, text.substr(0, dot), name);
    if (!node.ok()) return {{}, node.error};
    graph::PlugMatch match = graph::findPlug(graph, node.value, text.substr(dot + 1));
    if (!match.ok) match = pointPlug(graph, node.value, text.substr(dot + 1));
    if (!match.ok) return {{}, "No object matches name: " + name};
    return {match, {}};
}

graph::Plug atInstance(graph::Graph& graph, const graph::Plug& plug, const std::string& name) {
    const bool isPerInstance = plug.attribute().isOutput() || plug.attribute().longName() == "instObjGroups";
    if (!plug.isArray() || !isPerInstance) return plug;
    const std::vector<graph::SelectionItem> items = graph::findAll(graph, name).items;
    return plug.element(items.size() == 1 ? static_cast<int>(items.front().path) : 0);
}

std::int64_t rangeLength(const graph::PlugMatch& match) {
    const std::int64_t first = match.plug.logicalIndex();
    return first < 0 || match.last <= first ? 1 : match.last - first + 1;
}

bool isLocked(const graph::Plug& plug) {
    const graph::Node& node = *plug.node();
    if (node.states().empty()) return false;
    for (graph::Plug at = plug; at; at = at.parent()) {
        if (node.state(at.key()).isLocked) return true;
    }
    return false;
}

std::string lockProblem(const graph::Graph& graph, const graph::Node& node, std::string_view command) {
    if (!node.isLocked()) return {};
    return std::string(command) + ": " + graph.uniqueName(node) +
           " is a locked node. Unlock it with lockNode -lock off.";
}

bool hasSource(const graph::Graph& graph, const graph::Plug& plug) {
    if (plug.node()->incoming().empty()) return false;
    for (graph::Plug at = plug; at; at = at.parent()) {
        if (graph.source(at)) return true;
    }
    return false;
}

std::string fullPlugName(const graph::Graph& graph, const graph::Plug& plug) {
    return graph.uniqueName(*plug.node()) + '.' + plug.fullAttributePath(true);
}

double fromScriptUnit(const graph::Graph& graph, graph::ValueKind kind, double value) {
    if (kind == graph::ValueKind::Angle) return value * (geometry::kPi / 180.0);
    if (kind == graph::ValueKind::Time) return value / graph.framesPerSecond();
    return value;
}

double toScriptUnit(const graph::Graph& graph, graph::ValueKind kind, double value) {
    if (kind == graph::ValueKind::Angle) return value * (180.0 / geometry::kPi);
    if (kind == graph::ValueKind::Time) return value * graph.framesPerSecond();
    return value;
}

Found<std::string> legalName(const graph::Graph& graph, const std::string& wanted) {
    std::string name = graph.wholeName(wanted);
    if (!name.empty() && name.back() == '#') name.back() = '1';
    std::string legal;
    for (std::size_t from = 0; from <= name.size();) {
        const std::size_t colon = std::min(name.find(':', from), name.size());
        const std::string part = legalPart(std::string_view(name).substr(from, colon - from));
        if (part.empty()) return {{}, "New name has no legal characters."};
        if (!legal.empty()) legal += ':';
        legal += part;
        from = colon + 1;
    }
    return {std::move(legal), {}};
}

std::vector<std::string> uniqueNames(const graph::Graph& graph, const std::vector<graph::NodeRef>& nodes) {
    std::vector<std::string> names;
    names.reserve(nodes.size());
    graph::PathNames paths(graph, graph::PathNames::Kind::Unique);
    for (const graph::NodeRef& node : nodes)
        names.push_back(paths.of(*node));
    return names;
}

std::vector<std::string> texts(const ParsedArguments& arguments, std::string_view flag) {
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(arguments.uses(flag)));
    for (int use = 0; use < arguments.uses(flag); ++use)
        result.push_back(arguments.values(flag, use)[0].toString());
    return result;
}

void selectNodes(graph::Graph& graph, const std::vector<graph::NodeRef>& nodes) {
    graph::Selection selection;
    for (const graph::NodeRef& node : nodes)
        selection.add({node, {}, {}});
    graph.select(std::move(selection));
}

}  // namespace host::commands
