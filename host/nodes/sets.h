#pragma once

#include <string>
#include <vector>

#include "graph/graph.h"

/// Membership in objectSets and shading groups. Members are connections: a DAG node's instObjGroups, any
/// other node's message, or an objectGroups element that lists components.
namespace host::nodes {

/// Members in the order of the set's plugs, components as items with their shape.
std::vector<graph::SelectionItem> members(graph::Graph& graph, const graph::NodeRef& set);
/// Those of the members that are this node or components of it. Linear in the node's own connections, however
/// large the set is.
std::vector<graph::SelectionItem> membersFrom(graph::Graph& graph, const graph::NodeRef& set,
                                              const graph::NodeRef& node);
/// What would be a member in place of the item: for a shading group the shape, otherwise the item itself. The
/// node is null when there is nothing to add.
graph::SelectionItem memberFor(const graph::Graph& graph, const graph::NodeRef& set,
                               const graph::SelectionItem& item);
/// Whether the whole object, or all of these components, are members.
bool isMember(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// Sets that hold the node or components of it, in order of creation.
std::vector<graph::NodeRef> setsOf(graph::Graph& graph, const graph::NodeRef& node);

/// Adds a member; nothing happens when it is one already.
/// @return empty, or why the item cannot be added: plugs, or something that another set of the same partition
/// holds
std::string addToSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// Takes a member out, or components out of a member that lists components. @return whether it was in there
bool removeFromSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// As addToSet, taking the item out of other sets of the same partition first.
std::string forceElement(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);

/// The partition of a set, null when it is in none.
graph::NodeRef partitionOf(const graph::Graph& graph, const graph::NodeRef& set);
void addToPartition(graph::Graph& graph, const graph::NodeRef& partition, const graph::NodeRef& set);
/// Sets of a partition in the order of its plugs.
std::vector<graph::NodeRef> setsIn(graph::Graph& graph, const graph::NodeRef& partition);

}  // namespace host::nodes
