#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/node.h"
#include "graph/nodeSource.h"
#include "scene/sceneUnits.h"

namespace host::scene {

constexpr int kUtf8 = 65001;  // as a number of a code page

/// What a file says of numbers and strings everywhere.
struct TextForm {
    SceneUnits units{};
    int codePage = kUtf8;       ///< of strings
    bool isDoubleByte = false;  ///< a lead byte in a string takes the next byte with it
    std::string lineEnd = "\n";
};

/// The beginning of a setAttr statement: everything before the values. Views lead into the statement.
struct SetHead {
    std::string_view path{};    ///< the attribute's name after its dot: "it[0].itg[0].tw[0:9]"
    std::string_view type{};    ///< of -type, without quotation marks; empty if there is none
    std::string_view values{};  ///< what follows, without the semicolon; blanks only if there is no value
    std::optional<bool> isLocked{};
    std::optional<bool> isKeyable{};
    std::optional<bool> isInChannelBox{};

    bool hasStates() const { return isLocked || isKeyable || isInChannelBox; }
    bool hasValues() const;
    /// The name of the root attribute.
    std::string_view root() const { return path.substr(0, path.find_first_of(".[")); }
};

/// Nothing if there is no attribute's name.
std::optional<SetHead> readSetHead(std::string_view statement, bool isDoubleByte);

/// The plugs that a statement writes: one, or the elements of one array from the key's index on.
struct SetTarget {
    graph::PlugKey key{};
    int count = 1;       ///< elements; 1 without a range
    int rangeDepth = 0;  ///< which index of the key counts up, from 1; 0 without a range

    /// The key of one of the elements.
    graph::PlugKey at(int position) const;
};

/// The plugs of a path; nothing if the node has no such attribute.
std::optional<SetTarget> findTarget(graph::Node& node, std::string_view path);

/// The values of a statement, as the graph keeps them. One of the two, or neither if it has no values.
struct SetValues {
    std::vector<double> numbers{};  ///< element after element, for a compound child after child
    graph::DataPtr data{};
    bool isRows = false;  ///< numbers are lists of pairs with a count first: the weights of skins
};

/// Reads the values for a target. Nothing if they do not fit the attribute; the text is then all that is
/// known.
std::optional<SetValues> readValues(const SetHead& head, const SetTarget& target, const TextForm& form);

/// The numbers of the flat array (graph::Attribute::flatWidth) that a plug is, or is an element or a part of;
/// null while it has none.
const graph::NumberMulti* numbersAt(const graph::Node& node, const graph::PlugKey& key);

/// Puts values into the node.
void applyValues(graph::NodeLoader& loader, const SetTarget& target, const SetValues& values);

/// Whether the node holds a value at a single plug.
bool exists(const graph::Node& node, const graph::PlugKey& key);

/// Whether something is true of a plug.
using PlugTest = std::function<bool(const graph::PlugKey&)>;

/// Whether the statement of these values may stay: the node holds them, as far as no later statement sets the
/// same plugs again. What the statement does not name does not matter.
bool holdsValues(const graph::Node& node, const SetTarget& target, const SetValues& values,
                 const PlugTest& isSetLater);

}  // namespace host::scene
