#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.h"
#include "graph/instances.h"

namespace host::graph {

enum class NameFailure { None, NoMatch, Ambiguous };

/// What a name in a script matches.
struct NameMatches {
    std::vector<SelectionItem> items;
    NameFailure failure = NameFailure::None;

    /// "No object matches name: X" or "More than one object matches name: X".
    std::string errorText(std::string_view name) const;
};

/// A plug named in a script, with the end of a range given in its last brackets ("vt[0:7]").
struct PlugMatch {
    Plug plug;      // the first element of a range
    int last = -1;  // the range's last logical index; the plug's own index when no range was given
    bool ok = false;
};

/// Nodes that match a name or path: "mesh", "group|mesh", "|group|mesh", ":mesh". A path may lead through any
/// parents. * and ? match any characters within one part, but no colon: "*" has what is in the root
/// namespace,
/// "*:*" what is one level below. A name without a colon in front is looked for in the current namespace
/// first. Order of creation.
std::vector<NodeRef> findNodes(const Graph& graph, std::string_view path);

/// The same nodes, each at the first of its places that the path means. Nodes at places that are not told
/// apart (kMaxPaths) are left out.
std::vector<Instance> findPlaces(const Graph& graph, std::string_view path);

/// The one node of a name without wildcards; null if none or several match.
NodeRef findNode(const Graph& graph, std::string_view path);

/// The first of a node's paths that a name or path of it means.
Instance instanceOn(const Graph& graph, Node& node, std::string_view path, InstanceNumbers& numbers);

/// A plug of a node by its attribute text, without the node. The text has long, short or alias names;
/// ancestors may be left out; missing indices are read as 0. Elements need not exist. On a transform, the
/// attributes of its shape are found too.
PlugMatch findPlug(const Graph& graph, const NodeRef& node, std::string_view attributeText);
/// The same for the node alone, without its shape.
PlugMatch findOwnPlug(const NodeRef& node, std::string_view attributeText);

/// A plug by its whole name "node.attribute"; not ok unless exactly one plug matches.
PlugMatch findPlug(const Graph& graph, std::string_view name);

/// Everything that a name matches: nodes, plugs or components ("mesh.vtx[0:7]"; on a transform, components of
/// its shape). Component numbers past the last one are cut off. If no number is left, the name matches
/// nothing.
NameMatches findAll(Graph& graph, std::string_view name);

/// Whether text matches a pattern with * and ?.
/// @param barrier  a character that they do not stand for
bool matchesPattern(std::string_view text, std::string_view pattern, char barrier = '\0');
/// Whether a node or attribute may have this name: letters, digits and underscores, with no digit first.
bool isLegalName(std::string_view name);

}  // namespace host::graph
