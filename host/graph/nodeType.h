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

/// What a node type does beyond holding values. Every member may be empty.
struct NodeBehaviour {
    /// Value of an output plug. Called once per change of anything upstream; reads its inputs through the
    /// graph.
    std::function<ComputedValue(Graph&, const Plug& output)> compute{};
    /// After a connection into `destination` was made.
    std::function<void(Graph&, const Plug& destination)> connected{};
    /// Before a connection into `destination` is broken.
    std::function<void(Graph&, const Plug& destination)> disconnecting{};
    /// Before data is written into a watched attribute (Graph::storeDerived is no writing).
    std::function<void(Graph&, const Plug& plug)> writing{};
    /// Input of the node whose source takes the place of `output` when the node is deleted; an empty plug
    /// for an output that has none.
    std::function<Plug(const Plug& output)> passThrough{};
    /// Whether this node only serves others although its type does not always (diesWithLastOutput).
    std::function<bool(const Node&)> isService{};
    /// Whether nodes of this type go with the last of the nodes that feed such an attribute.
    std::function<bool(const Attribute&)> diesWithSources{};
};

/// Description of a node type, given as data.
struct NodeTypeSpec {
    std::string name;
    std::string base;  // empty for the root type
    std::vector<AttributeSpec> attributes{};
    NodeBehaviour behaviour{};  // members left empty are inherited
    bool isAbstract = false;
    /// Nodes that only serve others (deformers, history): they go when their last output connection goes.
    bool diesWithLastOutput = false;
};

/// A node type with all inherited attributes. Attributes keep their address for the life of the process.
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
    const NodeBehaviour& behaviour() const { return behaviour_; }

    /// Root attributes, inherited ones first; an attribute stands at its ordinal.
    const std::vector<const Attribute*>& attributes() const { return attributes_; }
    /// An attribute at any depth by its long or short name; null when there is none.
    const Attribute* find(std::string_view longOrShort) const;

  private:
    void index(const Attribute& attribute);

    std::string name_;
    const NodeType* base_;
    bool isDag_;
    bool isAbstract_;
    bool diesWithLastOutput_;
    NodeBehaviour behaviour_;
    std::vector<std::unique_ptr<Attribute>> own_;
    std::vector<const Attribute*> attributes_;
    std::unordered_map<std::string, const Attribute*> byName_;
};

/// The node types of a scene, by name.
class NodeTypes {
  public:
    /// Registers a type; its base must have been registered before.
    const NodeType& add(NodeTypeSpec spec);
    const NodeType* find(std::string_view name) const;
    /// All types by ascending name.
    std::vector<const NodeType*> all() const;

  private:
    std::map<std::string, std::unique_ptr<NodeType>, std::less<>> types_;
};

}  // namespace host::graph
