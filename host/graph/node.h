#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "graph/aliasTable.h"
#include "graph/nodeSource.h"
#include "graph/nodeType.h"
#include "graph/plug.h"
#include "graph/slot.h"

namespace host::graph {

/// What is stored for a plug besides its value.
struct PlugState {
    bool isLocked = false;
    bool isKeyable = false;
    bool isInChannelBox = false;
};

/// One end of a connection, as a node stores it. Both ends are always in the scene: a node that leaves is
/// unlinked, and a node that has left is never linked. So a plain pointer is enough.
struct Link {
    Node* node = nullptr;
    PlugKey key;
};

/// A node of the scene: its values, connections, DAG neighbours and dynamic attributes. Only Graph changes a
/// node. All others only read it.
class Node : public std::enable_shared_from_this<Node> {
  public:
    Node(const NodeType& type, std::string name, std::uint64_t id);
    ~Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    const NodeType& type() const { return type_; }
    bool isA(std::string_view typeName) const { return type_.isA(typeName); }
    const std::string& name() const { return name_; }
    /// Creation number, unique within the scene: the order in which nodes are listed.
    std::uint64_t id() const { return id_; }
    /// Whether the node is in the scene (not deleted).
    bool isAlive() const { return isAlive_; }
    /// Whether commands refuse to delete, rename or move the node, or to change which attributes it has and
    /// which of these are locked.
    bool isLocked() const { return isLocked_; }
    NodeRef ref() { return shared_from_this(); }

    /// DAG neighbours; the parent is null for a top-level or non-DAG node.
    Node* parent() const { return parent_; }
    /// The parents of the node's further instances, in order. The world is none of them: if the node is at
    /// the top level too, that comes first.
    const std::vector<Node*>& otherParents() const { return otherParents_; }
    const std::vector<Node*>& children() const { return children_; }

    /// Static and dynamic root attributes by ordinal. A removed dynamic attribute leaves a null.
    std::vector<const Attribute*> attributes() const;
    /// An attribute at any depth by long or short name, dynamic ones included; null if there is none.
    const Attribute* findAttribute(std::string_view longOrShort) const;
    /// A kept attribute (AttributeSpec::isKept) by its name: the text that a file has after the node's dot.
    /// Null if there is none.
    const Attribute* findKept(std::string_view name) const;
    Plug plug(const Attribute& attribute) { return Plug(ref(), &attribute); }
    /// Plug of a named attribute; empty if there is none.
    Plug plug(std::string_view longOrShort);

    /// Aliases in the order in which they were set.
    const AliasTable& aliases() const {
        introduce();
        return aliases_;
    }
    /// Alias of a plug; empty if it has none.
    std::string alias(const PlugKey& key) const { return aliases().aliasOf(key); }
    /// The id that files give a node, "8-4-4-4-12" hexadecimal digits; empty if it has none yet.
    const std::string& uuid() const {
        introduce();
        return uuid_;
    }

    /// Connections into and out of this node, by the plug of this node.
    const std::map<PlugKey, Link>& incoming() const { return incoming_; }
    const std::map<PlugKey, std::vector<Link>>& outgoing() const { return outgoing_; }
    /// Whether the attribute or a compound above it has an incoming connection on any element.
    bool hasIncoming(const Attribute& attribute) const;

    const std::map<PlugKey, PlugState>& states() const {
        introduce();
        return states_;
    }
    PlugState state(const PlugKey& key) const;

    /// Stored value, without evaluation; the default if nothing is stored.
    double storedNumber(const PlugKey& key) const;
    DataPtr storedData(const PlugKey& key) const;
    /// Storage of a plug; null if nothing was ever written. Elements of flat arrays and their children have
    /// no slot of their own: ask for the array.
    const Slot* slot(const PlugKey& key) const;
    /// Root slots by ordinal, without those at the end that nothing was written into.
    const std::vector<Slot>& slots() const;

    /// Makes a file the origin of whatever the node does not hold yet. The node must be new.
    void setSource(std::unique_ptr<NodeSource> source);
    /// Whether a value or a state of a root attribute, or the aliases, were changed since
    /// Graph::forgetChanges, by anything but the source.
    bool isChanged(int ordinal) const;
    bool hasChangedAliases() const { return changedAliases_; }
    /// Whether anything of the node itself was changed, apart from its name, parent and connections.
    bool hasChanges() const { return hasChanges_; }

    /// Private memory of the node type's functions.
    std::shared_ptr<void>& extension() { return extension_; }

  private:
    friend class Graph;
    friend class NodeLoader;
    friend struct SceneContent;

    /// What has not been taken from the source yet.
    struct Awaited;

    struct CachedOutput {
        std::uint64_t version = 0;
        ComputedValue value{};
        bool isComputing = false;
    };

    /// Storage of a plug. Missing parts of it are made.
    /// @param created  set to the uppermost array element that had to be made; its attribute stays null if
    ///                 there was none
    Slot& obtainSlot(const PlugKey& key, PlugKey& created);
    Slot& rootSlot(int ordinal);
    /// obtainSlot, without asking the source first.
    Slot& obtainLoadedSlot(const PlugKey& key, PlugKey& created);
    /// Before attributes, aliases or states are used: the source adds its own.
    void introduce() const {
        if (awaited_ != nullptr) introduceNow();
    }
    /// Before a slot is used: the source sets its values.
    void load(int ordinal) const {
        if (awaited_ != nullptr) loadNow(ordinal);
    }
    bool isIntroduced() const;
    void introduceNow() const;
    void loadNow(int ordinal) const;
    /// Adds a root attribute of this node alone.
    Attribute& adopt(AttributeSpec spec);
    void createConnectedElements(NodeLoader& loader, int ordinal);
    void markChanged(const PlugKey& key);
    void forgetChanges();
    /// Drops everything that leads to other nodes: the scene is gone.
    void leaveForGood();
    /// Position of a dynamic root attribute in dynamic_.
    std::size_t dynamicPosition(const Attribute& attribute) const {
        return static_cast<std::size_t>(attribute.ordinal()) - type_.attributes().size();
    }

    const NodeType& type_;
    std::string name_;
    std::uint64_t id_;
    bool isAlive_ = false;
    bool isLocked_ = false;
    Node* parent_ = nullptr;
    std::vector<Node*> otherParents_;
    std::vector<Node*> children_;
    std::vector<std::unique_ptr<Attribute>> dynamic_;
    std::vector<std::size_t> plain_;                   // positions in dynamic_ of all that are not kept
    std::vector<std::unique_ptr<Attribute>> removed_;  // plugs may still point to them
    std::unordered_map<std::string, const Attribute*> kept_;
    AliasTable aliases_;
    std::string uuid_;
    std::unique_ptr<Awaited> awaited_;  // null for a node that no file knows
    std::vector<bool> changed_;         // by ordinal
    bool changedAliases_ = false;
    bool hasChanges_ = false;
    std::vector<Slot> slots_;
    std::map<PlugKey, Link> incoming_;
    std::map<PlugKey, std::vector<Link>> outgoing_;
    std::vector<const Attribute*> incomingAttributes_;  // one entry per incoming connection
    std::map<PlugKey, PlugState> states_;
    std::atomic<bool> isClean_{false};  // an output was read since the last change
    std::uint64_t version_ = 1;
    std::map<PlugKey, CachedOutput> outputs_;
    std::shared_ptr<void> extension_;
};

}  // namespace host::graph
