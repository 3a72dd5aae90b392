#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

#include "graph/attribute.h"
#include "graph/plug.h"

namespace host::graph {

class Graph;

/// What a computed attribute yields: a number or a Data object.
using ComputedValue = std::variant<double, DataPtr>;

/// What a node type does besides holding values. Every member may be empty.
struct NodeBehaviour {
    /// Computes the value of an output plug. Called once per change of anything upstream. It reads its inputs
    /// through the graph.
    std::function<ComputedValue(Graph&, const Plug& output)> compute{};
    /// Called after a connection into `destination` was made.
    std::function<void(Graph&, const Plug& destination)> connected{};
    /// Called before a connection into `destination` is broken.
    std::function<void(Graph&, const Plug& destination)> disconnecting{};
    /// Called before data is written into a watched attribute, but not by Graph::storeDerived.
    std::function<void(Graph&, const Plug& plug)> writing{};
    /// Nodes that depend on this one without a connection. They become dirty with it, if they read it through
    /// Graph::unconnectedNumber.
    std::function<std::vector<Node*>(const Graph&)> dependents{};
    /// The input of the node whose source replaces `output` when the node is deleted; an empty plug if the
    /// output has no such input.
    std::function<Plug(const Plug& output)> passThrough{};
    /// Whether this node only serves others although its type does not always do so (diesWithLastOutput).
    std::function<bool(const Node&)> isService{};
    /// Whether a node of this type is deleted when the last of the nodes that feed such an attribute is
    /// deleted.
    std::function<bool(const Attribute&)> diesWithSources{};
};

/// Description of a node type, given as data.
struct NodeTypeSpec {
    std::string name;
    std::string base;  // empty for the root type
    std::vector<AttributeSpec> attributes{};
    NodeBehaviour behaviour{};  // members left empty are inherited
    bool isAbstract = false;
    /// Nodes that only serve others (deformers, history): they are deleted when they lose their last output
    /// connection.
    bool diesWithLastOutput = false;
    /// Known from files only: nodes are kept with all that a file says of them, and compute nothing.
    bool isKept = false;
};

/// A node type with all inherited attributes. Attributes keep their address as long as the type exists.
class NodeType {
  public:
    NodeType(NodeTypeSpec spec, const NodeType* base);

    const std::string& name() const { return name_; }
    const NodeType* base() const { return base_; }
    /// Whether this is the named type or derives from it.
    bool isA(std::string_view typeName) const;
    bool isDag() const { return isDag_; }
    bool isAbstract() const { return isAbstract_; }
    bool diesWithLastOutput() const { return diesWithLastOutput_; }
    bool isKept() const { return isKept_; }
    const NodeBehaviour& behaviour() const { return behaviour_; }

    /// Root attributes, inherited ones first. The position of an attribute is its ordinal.
    const std::vector<const Attribute*>& attributes() const { return attributes_; }
    /// An attribute at any depth by its long or short name; null if there is none.
    const Attribute* find(std::string_view longOrShort) const;

  private:
    void index(const Attribute& attribute);

    std::string name_;
    const NodeType* base_;
    bool isDag_;
    bool isAbstract_;
    bool diesWithLastOutput_;
    bool isKept_;
    NodeBehaviour behaviour_;
    std::vector<std::unique_ptr<Attribute>> own_;
    std::vector<const Attribute*> attributes_;
    std::unordered_map<std::string, const Attribute*> byName_;
};

/// The node types of a scene, by name.
class NodeTypes {
  public:
    /// Registers a type. Its base must be registered before. A kept type of the same name is replaced; nodes
    /// of it stay as they are.
    const NodeType& add(NodeTypeSpec spec);
    const NodeType* find(std::string_view name) const;
    /// All types by ascending name.
    std::vector<const NodeType*> all() const;

  private:
    std::map<std::string, std::unique_ptr<NodeType>, std::less<>> types_;
    std::vector<std::unique_ptr<NodeType>> replaced_;  // nodes may still be of these types
};

}  // namespace host::graph
