#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.h"
#include "graph/names.h"
#include "mel/commandRegistry.h"

/// What all command families share: looking up names with the host's error texts, units, results.
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

/// The one node with a name.
Found<graph::NodeRef> findOneNode(const graph::Graph& graph, const std::string& name);

/// Everything that the names match, in their order.
Found<std::vector<graph::SelectionItem>> findItems(graph::Graph& graph,
                                                   const std::vector<std::string>& names);

/// The objects of a command line; if there are none, the selection.
Found<std::vector<graph::SelectionItem>> objectsOrSelection(CommandContext& context,
                                                            const ParsedArguments& arguments);

/// The nodes of items in order, each once.
std::vector<graph::NodeRef> nodesOf(const std::vector<graph::SelectionItem>& items);

/// A plug by name. "mesh.vtx[3:5]" means the shape's pnts. ".attribute" alone is a plug of the first selected
/// node.
Found<graph::PlugMatch> findOnePlug(graph::Graph& graph, const std::string& name);

/// A multi with one element for each instance of its object ("worldMatrix", "instObjGroups") means the
/// element of the instance that the plug's name gives. Any other plug is itself.
graph::Plug atInstance(graph::Graph& graph, const graph::Plug& plug, const std::string& name);

/// Number of elements that the plug's name means: 1 without a range.
std::int64_t rangeLength(const graph::PlugMatch& match);

/// Whether a plug, or an array or compound that contains it, is locked.
bool isLocked(const graph::Plug& plug);
/// Why a command may not change a locked node; empty if the node is not locked.
std::string lockProblem(const graph::Graph& graph, const graph::Node& node, std::string_view command);
/// Whether the plug has an incoming connection, directly or through a compound above it.
bool hasSource(const graph::Graph& graph, const graph::Plug& plug);

/// The node and the whole attribute path in long names, as messages about connections name a plug.
std::string fullPlugName(const graph::Graph& graph, const graph::Plug& plug);

/// Converts a value between the unit of scripts (degrees, the scene's frames) and that of the graph (radians,
/// seconds).
double fromScriptUnit(const graph::Graph& graph, graph::ValueKind kind, double value);
double toScriptUnit(const graph::Graph& graph, graph::ValueKind kind, double value);

/// The whole name that a script means (Graph::wholeName), with all illegal characters replaced by
/// underscores. It is an error if a part has no legal ones. A "#" at the end becomes the first free number.
Found<std::string> legalName(const graph::Graph& graph, const std::string& wanted);

/// Shortest unique names.
std::vector<std::string> uniqueNames(const graph::Graph& graph, const std::vector<graph::NodeRef>& nodes);

/// The texts of all uses of a flag with one argument.
std::vector<std::string> texts(const ParsedArguments& arguments, std::string_view flag);

/// Selects these nodes only.
void selectNodes(graph::Graph& graph, const std::vector<graph::NodeRef>& nodes);

/// Shorthand for flag tables.
constexpr ArgumentType kText = ArgumentType::String;
constexpr ArgumentType kSwitch = ArgumentType::Boolean;
constexpr ArgumentType kWhole = ArgumentType::Int;
constexpr ArgumentType kReal = ArgumentType::Double;
constexpr ArgumentType kLength = ArgumentType::Distance;
constexpr ArgumentType kAngle = ArgumentType::Angle;
constexpr ArgumentType kTime = ArgumentType::Time;

}  // namespace host::commands
