#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "graph/messages.h"
#include "graph/node.h"
#include "graph/nodeType.h"
#include "graph/optionVariables.h"
#include "graph/plug.h"
#include "graph/removalLog.h"
#include "graph/selection.h"
#include "graph/undo.h"
#include "graph/variants.h"

namespace host::graph {

/// What the graph must know about shapes to resolve component names. `host/nodes` supplies it.
struct ComponentSupport {
    /// The visible shape below a transform, or the shape itself; null if there is none.
    std::function<NodeRef(const Graph&, const NodeRef&)> shapeOf{};
    /// How many components of a kind a shape has.
    std::function<int(Graph&, const NodeRef&, ComponentKind)> count{};
};

/// The numbers first .. end-1 after a name are taken.
struct TakenNumbers {
    long first = 1;
    long end = 1;
};

/// The namespaces of a scene besides the root, and the one that new names without a colon get. Without a
/// colon in front: "a", "a:b". Empty for the root.
struct Namespaces {
    std::set<std::string, std::less<>> names{};
    std::string current{};
};

/// What a scene consists of. Handles may keep nodes longer: after this they are not alive any more.
struct SceneContent {
    SceneContent() = default;
    ~SceneContent();
    SceneContent(const SceneContent&) = delete;
    SceneContent& operator=(const SceneContent&) = delete;

    std::map<std::uint64_t, NodeRef> nodes;
    std::unordered_map<std::string, std::vector<Node*>> byName;
    std::unordered_map<std::string, TakenNumbers> takenNumbers;  // by name without number
    std::vector<Node*> roots;
    std::set<std::pair<const Node*, const Node*>> instances;  // of nodes: each with one of its other parents
    Selection selection;
    bool hasKeptSources = false;  // a kept attribute feeds another node, or did
    double framesPerSecond = 24.0;
    Namespaces namespaces;
};

/// One connection, from source to destination.
struct Connection {
    Plug source;
    Plug destination;
};

/// The scene: nodes and their values, connections, names, the DAG, evaluation on demand, selection, option
/// variables and the undo queue.
///
/// Every change goes through this class. While a ChangeList is set as recorder, each change records its
/// inverse there. Without a recorder nothing is recorded. The caller checks the preconditions (a name is
/// legal, a destination is free, ...), because only commands have the words to report them.
///
/// Const access is safe from several threads at once while the scene does not change.
class Graph {
  public:
    Graph();
    ~Graph();
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    NodeTypes& types() { return types_; }
    const NodeTypes& types() const { return types_; }
    Selection& selection() { return content_->selection; }
    const Selection& selection() const { return content_->selection; }
    /// Replaces the selection. The change is recorded.
    void select(Selection selection);
    OptionVariables& optionVariables() { return optionVariables_; }
    UndoQueue& undoQueue() { return undoQueue_; }
    MessageSink& messages() { return *messages_; }
    /// The sink must outlive the graph, or be replaced first.
    void setMessages(MessageSink& sink) { messages_ = &sink; }
    const Variants& variants() const { return variants_; }
    /// For tests. Call it before anything else is done with the scene.
    void setVariants(const Variants& variants);
    /// What has been removed since the variants were set; null unless a variant needs it.
    const RemovalLog* removals() const { return removals_.get(); }
    void setComponentSupport(ComponentSupport support) { componentSupport_ = std::move(support); }

    // Nodes and names.

    /// @param name    wanted name; made unique by a number at its end; empty means <type>1, <type>2, ...
    /// @param parent  DAG parent, null for the top level
    NodeRef createNode(const NodeType& type, const std::string& name = {}, Node* parent = nullptr);
    /// Deletes nodes with everything below them, apart from what has another parent that stays: that loses an
    /// instance. Plugs of other nodes that were connected to them keep their
    /// last value. Service nodes (deformers, history) that lose their last output connection are deleted too.
    void deleteNodes(const std::vector<NodeRef>& nodes);
    /// Renames a node, with a name made unique like that of createNode.
    /// @return the name given
    std::string rename(Node& node, const std::string& name);
    /// Moves a DAG node below another parent (null: top level), to the end of the children or to `position`.
    /// Of a node with several parents, only the first instance moves. If another one is there already, the
    /// first one goes.
    void reparent(Node& node, Node* parent, int position = -1);

    /// Gives a DAG node one more parent, with the node as its last child. The top level (null) becomes the
    /// first parent. The node must be neither below that parent yet (hasParent), nor above it (isBelow).
    void addInstance(Node& node, Node* parent);
    /// Takes a node away from one of its parents; it must have another. If that was the first parent, the
    /// next one is the first.
    void removeInstance(Node& node, Node* parent);
    /// Whether this is one of the node's parents (null: the top level).
    bool hasParent(const Node& node, const Node* parent) const;
    /// Whether any node has several parents.
    bool hasInstances() const { return !content_->instances.empty(); }

    /// The name with the next number at its end that no node of the scene uses: "pCube2" for "pCube1",
    /// "group1" for "group".
    std::string nextName(const std::string& name);

    /// All nodes in order of creation.
    std::vector<NodeRef> nodes() const;
    /// Nodes of a type or of one derived from it, in order of creation.
    std::vector<NodeRef> nodesOfType(std::string_view typeName) const;
    /// Top-level DAG nodes in order.
    const std::vector<Node*>& roots() const { return content_->roots; }
    /// All nodes with this own name, in order of creation.
    std::vector<NodeRef> nodesNamed(std::string_view name) const;
    /// "|group|mesh" for a DAG node, the plain name for others. Through first parents.
    std::string fullPath(const Node& node) const;
    /// The shortest path that names only this node. Through first parents.
    std::string uniqueName(const Node& node) const;
    /// uniqueName, a dot and the plug's attribute path.
    std::string plugName(const Plug& plug) const;
    /// Number of changes to names, nodes and DAG so far. Callers use it to cache look-ups by name.
    std::uint64_t nameVersion() const { return nameVersion_; }
    /// Number of changes to anything that a scene file holds. What a file says of a node is no change, nor is
    /// the selection.
    std::uint64_t changes() const { return changes_; }
    /// Lets every node count as unchanged (Node::isChanged): the scene is that of a file, or a new one.
    void forgetChanges();

    /// The unit in which scripts give times. The graph itself counts seconds.
    double framesPerSecond() const { return content_->framesPerSecond; }
    void setFramesPerSecond(double rate);

    /// Sets the id that files give the node.
    void setUuid(Node& node, std::string uuid);

    /// Takes everything out of the scene that a file holds: nodes with their connections and names, and the
    /// selection. The undo queue must be empty, or be emptied before the old scene goes.
    std::unique_ptr<SceneContent> takeContent();
    /// Replaces the scene by what was taken before.
    void putContent(std::unique_ptr<SceneContent> content);

    NodeRef shapeOf(const NodeRef& node) const;
    int componentCount(const NodeRef& shape, ComponentKind kind);

    /// Locks a node (Node::isLocked), or unlocks it.
    void setLocked(Node& node, bool isLocked);

    // Namespaces.

    /// All that exist. A namespace stays when its last node goes.
    const std::set<std::string, std::less<>>& namespaces() const { return content_->namespaces.names; }
    const std::string& currentNamespace() const { return content_->namespaces.current; }
    const Namespaces& allNamespaces() const { return content_->namespaces; }
    void setNamespaces(Namespaces namespaces);
    /// Makes a namespace with those around it, or makes one of them the current one. The changes are
    /// recorded.
    void addNamespace(const std::string& nameSpace);
    void setCurrentNamespace(const std::string& nameSpace);
    /// Takes a namespace away, with those in it. It must have no nodes. If it was current, the root is.
    void removeNamespace(const std::string& nameSpace);
    /// The whole name that a script means for a new node: a name without a colon belongs to the current
    /// namespace, and one that begins with a colon to the root.
    std::string wholeName(std::string_view name) const;

    // Values.

    /// Value of a number plug, evaluated: from its connection, computed, stored, or the default.
    double number(const Plug& plug);
    /// The same for a computation that reads a plug without a connection to it (NodeBehaviour::dependents):
    /// the next change of the plug's node is told to the node that is computed.
    double unconnectedNumber(const Plug& plug);
    /// Value of a Typed plug, evaluated; null if it was never set. Also for elements of Typed arrays.
    DataPtr data(const Plug& plug);
    /// Writes a number, rounded to what the kind stores. The plug must be fully indexed and must not be an
    /// output.
    void setNumber(const Plug& plug, double value);
    void setData(const Plug& plug, DataPtr value);
    /// Sets a number for a while. That is neither recorded nor counted as a change: the caller sets it back.
    void setPassing(const Plug& plug, double value);
    /// Keeps data that a node's compute function derives from its inputs, in an attribute that is not an
    /// output. Nothing is recorded and nothing downstream is marked as changed: the change of the inputs did
    /// that.
    void storeDerived(const Plug& plug, DataPtr value);
    /// Existing elements of an array plug, ascending: those with a value and those with a connection.
    std::vector<int> elements(const Plug& arrayPlug);
    int elementCount(const Plug& arrayPlug);
    /// Logical index of the element at a physical position; -1 past the end.
    int elementAt(const Plug& arrayPlug, int position);
    bool hasElement(const Plug& element);
    /// Makes an element exist without setting a value.
    void createElement(const Plug& element);
    /// Removes an element with its value and everything below it. Its connections must be broken first.
    void removeElement(const Plug& element);
    /// Removes all elements of an array plug that are not connected.
    void clearElements(const Plug& arrayPlug);
    /// The logical index after the last element. If the last one is the largest int, the first gap.
    int nextIndex(const Plug& arrayPlug);

    /// Tells everything downstream that a value of this node changed. The graph does this itself for its own
    /// changes.
    void markDirty(Node& node);
    /// Whether a computed plug can be read without computing anything.
    bool isCurrent(const Plug& output);

    // Connections.

    /// Connects, and replaces the connection that `destination` had.
    void connect(const Plug& source, const Plug& destination);
    /// Connects as a file says: nothing is recorded, and node types are not told.
    void connectSaved(const Plug& source, const Plug& destination);
    /// Breaks the connection into `destination`, which keeps the value that it had through it. Array elements
    /// that existed only through the connection are removed.
    void disconnect(const Plug& destination);
    /// The source of a connection into exactly this plug; an empty plug if there is none.
    Plug source(const Plug& destination) const;
    /// The destinations of this plug, in the order in which the connections were made.
    std::vector<Plug> destinations(const Plug& source) const;
    /// Why a value of a node is not known: "Y (type)", the first node upstream that feeds it through an
    /// attribute that this host does not evaluate. Empty if there is none. Linear in what is upstream.
    std::string unevaluatedSource(const Node& node) const;
    /// All connections of a node, incoming first. Each side is ordered by plug.
    std::vector<Connection> connections(const Node& node) const;
    /// All connections into or out of a plug and everything below it.
    std::vector<Connection> connectionsBelow(const Plug& plug) const;

    // Attributes, aliases, states.

    const Attribute& addAttribute(Node& node, AttributeSpec spec);
    /// Removes a dynamic root attribute with its value and connections.
    void deleteAttribute(Node& node, const Attribute& attribute);
    /// Sets the alias of a plug and replaces the one it had. An empty alias removes it.
    void setAlias(const Plug& plug, const std::string& alias);
    void setState(const Plug& plug, PlugState state);

    // Recording.

    ChangeList* recorder() const { return recorder_; }
    void setRecorder(ChangeList* recorder) { recorder_ = recorder; }
    /// Records a change that a node type makes to its private memory.
    void record(ChangeList::Step undo, ChangeList::Step redo);
    /// Makes undo restore what a plug stores now, even if the value is derived again in between.
    void recordStored(const Plug& plug);
    /// Whether a recorded step may change a node: not if the node has left the scene. A plug-in's redo may
    /// have made a new node in place of the one that a later step refers to.
    bool canStepOn(const Node& node);
    /// Shows one warning for all nodes that steps had to skip since the last call.
    void warnOfMissing();

  private:
    void enterScene(const NodeRef& node, Node* parent, int position);
    void leaveScene(Node& node);
    /// The same as recorded steps: they leave alone what has changed since they were recorded.
    void enterAgain(const NodeRef& node, const NodeRef& parent, int position);
    void leaveAgain(Node& node);
    void selectAgain(const Selection& selection);
    void setName(Node& node, const std::string& name);
    /// Makes the namespaces of a name exist. That is not recorded: nothing is lost if they stay.
    void enterNamespaces(const std::string& name);
    void setParent(Node& node, Node* parent, int position);
    /// Where a node is in the lists of its parents, and below one of them.
    struct InstancePlace {
        int rank = 0;  // of the parent; 0 is the first one
        int position = -1;
    };
    void attach(Node& node, Node* parent, const InstancePlace& place);
    InstancePlace detach(Node& node, Node* parent);
    void attachAgain(const NodeRef& node, const NodeRef& parent, const InstancePlace& place);
    void detachAgain(const NodeRef& node, const NodeRef& parent);
    void leaveOtherParents(const std::vector<NodeRef>& doomed, const std::set<const Node*>& gone);
    std::string freeName(const std::string& wanted, const Node* parent, bool isDag, const Node* except);
    bool isNameTaken(const std::string& name, const Node* parent, bool isDag, const Node* except) const;
    std::vector<Node*>& siblings(Node* parent) {
        return parent != nullptr ? parent->children_ : content_->roots;
    }
    std::vector<NodeRef> dependents(const std::vector<NodeRef>& nodes) const;

    Plug connectedSource(const Plug& plug) const;
    Plug origin(const Plug& plug, std::vector<ValueKind>& passed);
    void noteUnevaluated(const Plug& plug, const Plug& source);
    /// A value or state of the node is about to change.
    void noteChange(Node& node, const PlugKey& key);
    ComputedValue computed(const Plug& plug);
    void computeUpstream(Node& node);
    void markDownstream(Node& node);
    void writeNumber(const Plug& plug, double value);
    /// These five are recorded steps.
    void writeAgain(const Plug& plug, double value);
    void restoreSlot(const Plug& plug, Slot slot);
    void undoCreation(const Plug& created);
    void linkAgain(const Plug& source, const Plug& destination, int position = -1);
    void unlinkAgain(const Plug& source, const Plug& destination);
    /// Replaces the connection into the destination.
    /// @param position  among the destinations of the source; -1 for the end
    void link(const Plug& source, const Plug& destination, int position = -1);
    /// Does nothing if another source is connected to the destination.
    /// @return the position that the
    /// destination had among those of the source
    int unlink(const Plug& source, const Plug& destination);
    void breakLink(const Plug& source, const Plug& destination);
    /// Steps that take a dynamic attribute out of its node and put it back.
    /// @return whether it was put back
    void parkAttribute(Node& node, const Attribute& attribute);
    bool unparkAttribute(Node& node, const Attribute& attribute);
    /// Removes the array elements above a plug that existed only through a connection that is now broken.
    void dropHollowElements(const Plug& plug);

    NodeTypes types_;
    std::unique_ptr<SceneContent> content_;
    std::uint64_t nextId_ = 1;
    std::uint64_t nameVersion_ = 0;
    std::uint64_t changes_ = 0;
    OptionVariables optionVariables_;
    UndoQueue undoQueue_;
    MessageSink* messages_;
    ComponentSupport componentSupport_;
    Variants variants_;
    std::unique_ptr<RemovalLog> removals_;
    std::set<std::string> missing_;                            // names of nodes that steps had to skip
    std::set<std::pair<std::uint64_t, PlugKey>> unevaluated_;  // plugs whose old value was reported
    ChangeList* recorder_ = nullptr;
    std::recursive_mutex evaluation_;
    int evaluationDepth_ = 0;  // how many computations are nested; Graph::computeUpstream starts a new count
};

/// Sets the recorder for a scope; a null recorder suspends recording.
class RecordingScope {
  public:
    RecordingScope(Graph& graph, ChangeList* recorder) : graph_(graph), previous_(graph.recorder()) {
        graph.setRecorder(recorder);
    }
    ~RecordingScope() { graph_.setRecorder(previous_); }
    RecordingScope(const RecordingScope&) = delete;
    RecordingScope& operator=(const RecordingScope&) = delete;

  private:
    Graph& graph_;
    ChangeList* previous_;
};

}  // namespace host::graph
