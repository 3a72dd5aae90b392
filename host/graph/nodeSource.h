#pragma once

#include <string>

#include "graph/attribute.h"
#include "graph/plug.h"
#include "graph/slot.h"

namespace host::graph {

struct PlugState;

/// Fills a node with what a file says of it. Nothing is recorded, nothing counts as a change, and nothing
/// downstream is told: for everybody else the values were always there.
class NodeLoader {
  public:
    explicit NodeLoader(Node& node) : node_(node) {}

    Node& node() const { return node_; }
    const Attribute& addAttribute(AttributeSpec spec);
    void setAlias(const std::string& alias, const PlugKey& key);
    void setState(const PlugKey& key, const PlugState& state);
    void setUuid(std::string uuid);

    /// @param value  as the attribute's kind stores it; it is rounded
    void setNumber(const PlugKey& key, double value);
    void setData(const PlugKey& key, DataPtr value);
    /// Makes an element exist. A flat one gets its defaults.
    void createElement(const PlugKey& element);

  private:
    Node& node_;
};

/// What a file says of a node, and nobody has asked for yet. The node calls it when somebody asks, so that a
/// large scene opens without its numbers being read. Calls come one at a time, perhaps from several threads.
class NodeSource {
  public:
    virtual ~NodeSource() = default;
    NodeSource() = default;
    NodeSource(const NodeSource&) = delete;
    NodeSource& operator=(const NodeSource&) = delete;

    /// Adds attributes, aliases, states and the uuid. Called once, before `load`.
    virtual void introduce(NodeLoader& loader) = 0;
    /// Whether there are values of a root attribute. Called after `introduce`.
    virtual bool hasValues(int ordinal) const = 0;
    /// Sets the values of a root attribute. Called once for each.
    virtual void load(NodeLoader& loader, int ordinal) = 0;
};

}  // namespace host::graph
