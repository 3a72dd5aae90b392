#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "graph/attribute.h"

namespace host::graph {

class Node;
using NodeRef = std::shared_ptr<Node>;

/// Logical indices of the array attributes on an attribute's path, from the root down.
using PlugIndices = std::array<int, Attribute::kMaxArrayDepth>;

/// Which attribute of a node, and which elements of the arrays above it: a plug without its node.
struct PlugKey {
    const Attribute* attribute = nullptr;
    PlugIndices indices{};
    std::uint8_t depth = 0;  // how many indices are used

    bool operator==(const PlugKey& other) const {
        return attribute == other.attribute && depth == other.depth && indices == other.indices;
    }
    bool operator<(const PlugKey& other) const {
        return std::make_tuple(attribute->sequence(), depth, indices) <
               std::make_tuple(other.attribute->sequence(), other.depth, other.indices);
    }
};

/// A place in the graph that holds or computes a value. Cheap to copy. It keeps the memory of its node alive,
/// even after the node has left the scene (Node::isAlive).
///
/// Unused indices are always 0, so that keys compare by plain equality. An index of -1 was not given (a plug
/// made from an attribute below an array). Such a plug can be named and navigated, but not read.
class Plug {
  public:
    Plug() = default;
    Plug(NodeRef node, PlugKey key) : node_(std::move(node)), key_(key) {}
    /// The plug of an attribute without given indices: array ancestors get index -1.
    Plug(NodeRef node, const Attribute* attribute);

    explicit operator bool() const { return node_ != nullptr; }
    const NodeRef& node() const { return node_; }
    const Attribute& attribute() const { return *key_.attribute; }
    const PlugKey& key() const { return key_; }

    /// An array attribute as a whole, not one of its elements.
    bool isArray() const { return attribute().isArray() && key_.depth < attribute().arrayDepth(); }
    bool isElement() const { return attribute().isArray() && key_.depth == attribute().arrayDepth(); }
    bool isCompound() const { return attribute().isCompound(); }
    bool isNumber() const { return graph::isNumber(attribute().kind()) && !isArray(); }
    /// Whether every array above it has its index.
    bool isFullyIndexed() const;
    /// Logical index of an element; -1 if the plug is not an element.
    int logicalIndex() const {
        return isElement() ? key_.indices[static_cast<std::size_t>(key_.depth - 1)] : -1;
    }

    /// Element of an array plug; the element need not exist.
    Plug element(int logicalIndex) const;
    Plug child(int position) const;
    Plug child(const Attribute& attribute) const;
    /// The array of an element; else the compound that the plug is a child of; else an empty plug.
    Plug parent() const;
    /// The array plug that an element belongs to.
    Plug array() const;

    bool operator==(const Plug& other) const { return node_ == other.node_ && key_ == other.key_; }
    bool operator!=(const Plug& other) const { return !(*this == other); }

    /// Attribute path without the node: long names, array ancestors with their index, without plain compound
    /// ancestors.
    std::string attributePath() const;
    /// The same with every ancestor, in long or short names.
    std::string fullAttributePath(bool longNames) const;

  private:
    NodeRef node_;
    PlugKey key_;
};

}  // namespace host::graph
