#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "graph/plug.h"

namespace host::graph {

/// Remembers which nodes, array elements and connections were removed, for plugs that do not outlive them
/// (Variants::plugsExpire). A new one with the same name or index counts as another one.
class RemovalLog {
  public:
    /// The moment: the number of removals so far. A plug handed out now does not outlive later removals.
    std::uint32_t now() const { return now_; }

    void nodeGone(const Node& node) { add(node, {}, Kind::Node); }
    void elementGone(const Plug& element) { add(*element.node(), element.key(), Kind::Element); }
    /// All elements of an array plug.
    void elementsGone(const Plug& array) { add(*array.node(), array.key(), Kind::Element); }
    void connectionGone(const Plug& end) { add(*end.node(), end.key(), Kind::Connection); }

    /// Whether something that the plug needs was removed after the moment at which it was handed out.
    /// @param isNetworked  the plug came from a connection, and is lost with it
    bool hasLost(const Plug& plug, std::uint32_t moment, bool isNetworked) const;

  private:
    enum class Kind { Node, Element, Connection };
    struct Removal {
        std::uint32_t moment;
        Kind kind;
        PlugKey key;
    };

    void add(const Node& node, PlugKey key, Kind kind) { removals_[&node].push_back({now_++, kind, key}); }

    std::uint32_t now_ = 0;
    std::unordered_map<const Node*, std::vector<Removal>> removals_;
};

}  // namespace host::graph
