#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "graph/graph.h"
#include "graph/instances.h"
#include "scene/setStatement.h"

namespace host::scene {

/// The name of a plug in a file, after the node's dot: short names, indices of arrays, and of the compounds
/// above it only those that are arrays. "it[0].itg[3].tw[7]", "tx".
std::string plugPath(const graph::PlugKey& key);
/// Plug of the node as a connection names it: "node.path". Default nodes have a colon in front.
std::string plugText(const graph::Graph& graph, const graph::Plug& plug);
/// The node of a name or path in a file, where names begin in the root whatever the current namespace is.
/// Null if none or several match.
graph::NodeRef findFromRoot(const graph::Graph& graph, std::string_view path);
/// The first path of a node that a name or path in a file means.
graph::Instance instanceFromRoot(const graph::Graph& graph, graph::Node& node, std::string_view path,
                                 graph::InstanceNumbers& numbers);
/// The name of a node in a file: the shortest one that is unique in the scene, or the full first path of a
/// node that has several. Default nodes have a colon in front.
std::string nodeText(const graph::Graph& graph, const graph::Node& node);
/// Whether an attribute has an element per instance of its node, and is none that the node computes.
bool isInstanceGroups(const graph::Attribute& attribute);

/// The text after a statement's flags for the values that a node now holds at a target: name, type, numbers.
/// One text for each run of elements that exist; none if there is no value at all.
/// @param path  how the file names the target; ranges are replaced
std::vector<std::string> valueTexts(const graph::Node& node, const SetTarget& target, std::string_view path,
                                    const TextForm& form);

/// The values and states of some attributes that no statement of the file names, as statements with line
/// ends.
class NewValues {
  public:
    NewValues(graph::Graph& graph, graph::Node& node, const TextForm& form)
        : graph_(graph), node_(node), form_(form) {}

    /// These are written already.
    void cover(const SetTarget& target);
    void coverState(const graph::PlugKey& key) { states_.insert(key); }
    bool isCovered(const graph::PlugKey& key) const;

    std::string text(const graph::Attribute& root);

  private:
    void write(const graph::Attribute& attribute, graph::PlugKey key, const graph::Slot& slot);
    void writeNumbers(const graph::Attribute& array, const graph::PlugKey& key,
                      const graph::NumberMulti& numbers);
    void writeElements(const graph::Attribute& array, const graph::PlugKey& key,
                       const graph::ElementMulti& multi);
    bool isPartlyCovered(const graph::Attribute& array, graph::PlugKey key) const;
    void writeUncoveredParts(const graph::Attribute& array, graph::PlugKey key, const double* values);
    void writePlain(const graph::PlugKey& key);
    bool writeTuple(const graph::PlugKey& key);
    void writeStates(const graph::Attribute& root);
    bool isFed(const graph::PlugKey& key) const;
    bool isOnlySource(const graph::Attribute& array, const graph::PlugKey& key, const double* values) const;
    void coverKeys(graph::PlugKey first, graph::PlugKey last);
    bool isInRange(const graph::PlugKey& key) const;
    void line(const std::string& text);

    graph::Graph& graph_;
    graph::Node& node_;
    const TextForm& form_;
    std::map<graph::PlugKey, graph::PlugKey> covered_;  // ranges that do not overlap, from first to last
    std::set<graph::PlugKey> states_;
    std::string text_;
};

/// The flags of a state that differs from what the attribute has from the start; empty if none does.
std::string stateFlags(const graph::Attribute& attribute, const graph::PlugState& state);

}  // namespace host::scene
