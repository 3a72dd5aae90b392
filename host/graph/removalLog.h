#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "graph/plug.h"

namespace host::graph {

/// Remembers which nodes, array elements and connections went, for plugs that do not outlive them
/// (Variants::plugsExpire). What comes back under the same name or index is another one.
class RemovalLog {
  public:
    /// The moment: how many removals there were. A plug that was handed out now does not outlive later ones.
    std::uint32_t now() const { return now_; }

    void nodeGone(const Node& node) { add(node, {}, Kind::Node); }
    void elementGone(const Plug& element) { add(*element.node(), element.key(), Kind::Element); }
    /// All elements of an array plug.
    void elementsGone(const Plug& array) { add(*array.node(), array.key(), Kind::Element); }
    void connectionGone(const Plug& end) { add(*end.node(), end.key(), Kind::Connection); }

    /// Whether something that the plug needs went after the moment at which it was handed out.
    /// @param isNetworked  it came from a connection, and goes with that
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
