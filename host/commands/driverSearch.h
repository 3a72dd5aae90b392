#pragma once

#include "commands/commandSupport.h"

namespace host::commands {

/// Finds the nodes that drive attributes of others: curves, constraints, expressions.
class DriverSearch {
  public:
    /// @param arguments  of delete: -attribute restricts the attributes, and those of control points count
    ///                   with -controlPoints only
    DriverSearch(const graph::Graph& graph, const ParsedArguments& arguments);

    /// The nodes of a type that are among these, or drive one of them directly or through nodes that only
    /// convert or mix values; each once. Linear in their connections.
    std::vector<graph::NodeRef> driversOf(const std::vector<graph::NodeRef>& nodes,
                                          std::string_view type) const;

  private:
    bool isWanted(const graph::Attribute& attribute) const;

    const graph::Graph& graph_;
    std::vector<std::string> attributes_;
    bool hasControlPoints_;
};

/// Drivers that are to be deleted, with the unit conversions that they leave without input. Fails if one of
/// them drives a locked attribute.
Found<std::vector<graph::NodeRef>> withConversions(const graph::Graph& graph,
                                                   std::vector<graph::NodeRef> drivers);

/// Whether a curve has the same value everywhere.
bool isStaticCurve(graph::Graph& graph, const graph::NodeRef& curve);

/// Breaks the connections into plugs, and deletes the nodes upstream that feed nothing any more. DAG nodes
/// and those that every scene has stay.
CommandResult deleteInputs(graph::Graph& graph, const std::vector<graph::SelectionItem>& items);

}  // namespace host::commands
