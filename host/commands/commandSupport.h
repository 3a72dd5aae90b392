#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.h"
#include "graph/names.h"
#include "mel/commandRegistry.h"

/// What all command families share: looking names up with the host's error texts, units, results.
namespace host::commands {

using mel::ArgumentType;
using mel::CommandContext;
using mel::CommandResult;
using mel::ObjectKind;
using mel::ParsedArguments;
using mel::Syntax;
using mel::Value;

/// What was looked for, or the text that says why it was not found.
template <typename T>
struct Found {
    T value{};
    std::string error{};

    bool ok() const { return error.empty(); }
};

/// The one node of a name.
Found<graph::NodeRef> findOneNode(const graph::Graph& graph, const std::string& name);

/// Everything that the names match, in their order.
Found<std::vector<graph::SelectionItem>> findItems(graph::Graph& graph,
                                                   const std::vector<std::string>& names);

/// The objects of a command line or, when none are given, the selection.
Found<std::vector<graph::SelectionItem>> objectsOrSelection(CommandContext& context,
                                                            const ParsedArguments& arguments);

/// The nodes of items in order, each once.
std::vector<graph::NodeRef> nodesOf(const std::vector<graph::SelectionItem>& items);

/// A plug by name. "mesh.vtx[3:5]" stands for the shape's pnts; ".attribute" alone belongs to the first
/// selected node.
Found<graph::PlugMatch> findOnePlug(graph::Graph& graph, const std::string& name);

/// Number of elements that the plug's name stands for: 1 without a range.
std::int64_t rangeLength(const graph::PlugMatch& match);

/// Whether a plug, or an array or compound that it lies in, is locked.
bool isLocked(const graph::Plug& plug);
/// Whether something feeds the plug, directly or through a compound above it.
bool hasSource(const graph::Graph& graph, const graph::Plug& plug);

/// The node and the whole attribute path in long names, as the sentences about connections name a plug.
std::string fullPlugName(const graph::Graph& graph, const graph::Plug& plug);

/// A value between the unit that scripts use (degrees, frames of a film) and the graph's (radians, seconds).
double fromScriptUnit(graph::ValueKind kind, double value);
double toScriptUnit(graph::ValueKind kind, double value);

/// A wanted name with what no name may hold replaced by underscores; empty when nothing legal is in it. A "#"
/// at the end becomes the first free number.
/// Names with a namespace give an error: there are none in this host.
Found<std::string> legalName(const std::string& wanted);

/// Nodes that every scene has: they can be neither renamed nor deleted.
bool isDefaultNode(const graph::Node& node);

/// Shortest unique names.
std::vector<std::string> uniqueNames(const graph::Graph& graph, const std::vector<graph::NodeRef>& nodes);

/// Replaces the selection by these nodes.
void selectNodes(graph::Graph& graph, const std::vector<graph::NodeRef>& nodes);

/// Shorthand for flag tables.
constexpr ArgumentType kText = ArgumentType::String;
constexpr ArgumentType kSwitch = ArgumentType::Boolean;
constexpr ArgumentType kWhole = ArgumentType::Int;
constexpr ArgumentType kReal = ArgumentType::Double;

}  // namespace host::commands
