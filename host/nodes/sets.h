#pragma once

#include <string>
#include <vector>

#include "graph/graph.h"

/// Membership in objectSets and shading groups. Members are connections: from a DAG node's instObjGroups,
/// from the message of any other node, or from an objectGroups element that lists components.
namespace host::nodes {

/// Members in the order of the set's plugs. Components are items with their shape. A node that is in the set
/// by several instances is one member.
std::vector<graph::SelectionItem> members(graph::Graph& graph, const graph::NodeRef& set);
/// Those members that are this node or components of it. Linear in the node's own connections, however large
/// the set is.
std::vector<graph::SelectionItem> membersFrom(graph::Graph& graph, const graph::NodeRef& set,
                                              const graph::NodeRef& node);
/// The item that would become a member: for a shading group the shape, otherwise the item itself. The node is
/// null if there is nothing to add.
graph::SelectionItem memberFor(const graph::Graph& graph, const graph::NodeRef& set,
                               const graph::SelectionItem& item);
/// Whether the whole object, or all of these components, are members.
bool isMember(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// Sets that contain the node or components of it, in order of creation.
std::vector<graph::NodeRef> setsOf(graph::Graph& graph, const graph::NodeRef& node);

/// Adds a member. Does nothing if it is one already.
/// @return empty, or why the item cannot be added: it is a plug, or another set of the same partition
/// contains it
std::string addToSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// Removes an item. A whole object is removed with its components. Components are also removed from an object
/// that is a member as a whole.
/// @return whether anything of it was in the set
bool removeFromSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);
/// Like addToSet, but first removes the item from other sets of the same partition.
std::string forceElement(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item);

/// For the shapes at and below a node: connects each instance with the shading groups that the shape is in as
/// a whole, and none that is gone.
void shadeInstances(graph::Graph& graph, const graph::NodeRef& node);

/// The partition of a set; null if it is in none.
graph::NodeRef partitionOf(const graph::Graph& graph, const graph::NodeRef& set);
void addToPartition(graph::Graph& graph, const graph::NodeRef& partition, const graph::NodeRef& set);
/// Sets of a partition, in the order of its plugs.
std::vector<graph::NodeRef> setsIn(graph::Graph& graph, const graph::NodeRef& partition);

}  // namespace host::nodes
