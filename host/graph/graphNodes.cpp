// The nodes of the graph: making, deleting, naming and moving them, and finding them by name.

#include <algorithm>
#include <cctype>
#include <set>

#include "graph/graph.h"
#include "graph/namespaces.h"

namespace host::graph {

namespace {

class SilentSink final : public MessageSink {
  public:
    void print(const std::string&) override {}
    void info(const std::string&) override {}
    void warning(const std::string&) override {}
    void error(const std::string&) override {}
};

SilentSink& silentSink() {
    static SilentSink sink;
    return sink;
}

/// A name without the number at its end, and that number (0 if there is none).
std::pair<std::string, long> splitNumber(const std::string& name) {
    std::size_t end = name.size();
    // A number that is too long to count on is part of the name.
    while (end > 1 && name.size() - end < 9 && std::isdigit(static_cast<unsigned char>(name[end - 1])) != 0)
        --end;
    const long number = end < name.size() ? std::stol(name.substr(end)) : 0;
    return {name.substr(0, end), number};
}

}  // namespace

Graph::Graph() : content_(std::make_unique<SceneContent>()), messages_(&silentSink()) {}

Graph::~Graph() {
    undoQueue_.clear();
}

SceneContent::~SceneContent() {
    selection.clear();
    // Handles may keep nodes longer. Then no node may look alive or reach its neighbours.
    for (auto& entry : nodes)
        entry.second->leaveForGood();
}

std::unique_ptr<SceneContent> Graph::takeContent() {
    ++nameVersion_;
    ++changes_;
    return std::exchange(content_, std::make_unique<SceneContent>());
}

void Graph::putContent(std::unique_ptr<SceneContent> content) {
    ++nameVersion_;
    ++changes_;
    content_ = std::move(content);
}

void Graph::setLocked(Node& node, bool isLocked) {
    if (node.isLocked_ == isLocked) return;
    const auto setAgain = [ref = node.ref()](bool value) {
        return [ref, value](Graph& graph) {
            ++graph.changes_;
            ref->isLocked_ = value;
        };
    };
    record(setAgain(!isLocked), setAgain(isLocked));
    ++changes_;
    node.isLocked_ = isLocked;
}

void Graph::setFramesPerSecond(double rate) {
    const double before = content_->framesPerSecond;
    if (rate == before) return;
    record([before](Graph& graph) { graph.setFramesPerSecond(before); },
           [rate](Graph& graph) { graph.setFramesPerSecond(rate); });
    ++changes_;
    content_->framesPerSecond = rate;
}

void Graph::setNamespaces(Namespaces namespaces) {
    record([before = content_->namespaces](Graph& graph) { graph.setNamespaces(before); },
           [namespaces](Graph& graph) { graph.setNamespaces(namespaces); });
    content_->namespaces = std::move(namespaces);
    ++nameVersion_;
}

void Graph::enterNamespaces(const std::string& name) {
    for (std::string_view space = namespaceOf(name); !space.empty(); space = namespaceOf(space)) {
        if (!content_->namespaces.names.emplace(space).second) return;
    }
}

void Graph::addNamespace(const std::string& nameSpace) {
    Namespaces changed = content_->namespaces;
    for (std::string_view space = nameSpace; !space.empty(); space = namespaceOf(space))
        changed.names.emplace(space);
    setNamespaces(std::move(changed));
}

void Graph::setCurrentNamespace(const std::string& nameSpace) {
    setNamespaces({content_->namespaces.names, nameSpace});
}

void Graph::removeNamespace(const std::string& nameSpace) {
    Namespaces changed = content_->namespaces;
    for (auto at = changed.names.begin(); at != changed.names.end();)
        at = isWithin(*at, nameSpace) ? changed.names.erase(at) : std::next(at);
    if (isWithin(changed.current, nameSpace)) changed.current.clear();
    setNamespaces(std::move(changed));
}

std::string Graph::wholeName(std::string_view name) const {
    const std::string& current = content_->namespaces.current;
    if (current.empty() || name.find(':') != std::string_view::npos) return std::string(withoutRoot(name));
    return current + ':' + std::string(name);
}

void Graph::setUuid(Node& node, std::string uuid) {
    ++changes_;
    node.hasChanges_ = true;
    const std::string old = node.uuid();
    node.uuid_ = uuid;
    const auto setAgain = [ref = node.ref()](const std::string& text) {
        return [ref, text](Graph& graph) {
            ++graph.changes_;
            ref->uuid_ = text;
        };
    };
    record(setAgain(old), setAgain(uuid));
}

void Graph::setVariants(const Variants& variants) {
    variants_ = variants;
    removals_ = variants.plugsExpire ? std::make_unique<RemovalLog>() : nullptr;
}

void Graph::record(ChangeList::Step undo, ChangeList::Step redo) {
    if (recorder_ != nullptr) recorder_->add(std::move(undo), std::move(redo));
}

void Graph::select(Selection selection) {
    if (recorder_ != nullptr) {
        record([old = content_->selection](Graph& graph) { graph.selectAgain(old); },
               [selection](Graph& graph) { graph.selectAgain(selection); });
    }
    content_->selection = std::move(selection);
}

void Graph::selectAgain(const Selection& selection) {
    content_->selection = selection;
    for (const SelectionItem& item : selection.items()) {
        if (!canStepOn(*item.node)) content_->selection.removeNode(*item.node);
    }
}

bool Graph::canStepOn(const Node& node) {
    if (!node.isAlive()) missing_.insert(node.name());
    return node.isAlive();
}

void Graph::warnOfMissing() {
    if (missing_.empty()) return;
    const std::string more =
        missing_.size() > 1 ? " and " + std::to_string(missing_.size() - 1) + " more" : std::string();
    messages().warning("Undo or redo left out what it knows of nodes that are not in the scene: " +
                       *missing_.begin() + more + ". Check the scene, and use flushUndo.");
    missing_.clear();
}

NodeRef Graph::createNode(const NodeType& type, const std::string& name, Node* parent) {
    // A default name is unique in the whole scene. A wanted name only has to differ from its siblings.
    const std::string given =
        name.empty() ? nextName(wholeName(type.name())) : freeName(name, parent, type.isDag(), nullptr);
    auto node = std::make_shared<Node>(type, given, nextId_++);
    enterScene(node, parent, -1);
    const int position = type.isDag() ? static_cast<int>(siblings(parent).size()) - 1 : -1;
    const NodeRef parentRef = parent != nullptr ? parent->ref() : nullptr;
    record([node](Graph& graph) { graph.leaveAgain(*node); },
           [node, parentRef, position](Graph& graph) { graph.enterAgain(node, parentRef, position); });
    return node;
}

void Graph::enterScene(const NodeRef& node, Node* parent, int position) {
    content_->nodes[node->id()] = node;
    node->isAlive_ = true;
    content_->byName[node->name()].push_back(node.get());
    enterNamespaces(node->name());
    if (node->type().isDag()) {
        auto& list = siblings(parent);
        const auto at =
            position < 0 || position > static_cast<int>(list.size()) ? list.end() : list.begin() + position;
        list.insert(at, node.get());
        node->parent_ = parent;
    }
    ++nameVersion_;
    ++changes_;
}

void Graph::leaveScene(Node& node) {
    const NodeRef keep = node.ref();
    // What was connected to it or put below it without a record still exists when the node's creation is
    // undone.
    for (const Connection& connection : connections(node))
        unlink(connection.source, connection.destination);
    while (!node.children_.empty())
        setParent(*node.children_.back(), nullptr, -1);
    content_->takenNumbers.erase(splitNumber(node.name()).first);
    auto& named = content_->byName[node.name()];
    named.erase(std::remove(named.begin(), named.end(), &node), named.end());
    if (named.empty()) content_->byName.erase(node.name());
    if (node.type().isDag()) {
        auto& list = siblings(node.parent_);
        list.erase(std::remove(list.begin(), list.end(), &node), list.end());
        node.parent_ = nullptr;
    }
    content_->selection.removeNode(node);
    if (removals_ != nullptr) removals_->nodeGone(node);
    node.isAlive_ = false;
    content_->nodes.erase(node.id());
    ++nameVersion_;
    ++changes_;
}

void Graph::enterAgain(const NodeRef& node, const NodeRef& parent, int position) {
    if (node->isAlive() || (parent != nullptr && !canStepOn(*parent))) return;
    enterScene(node, parent.get(), position);
}

void Graph::leaveAgain(Node& node) {
    if (canStepOn(node)) leaveScene(node);
}

namespace {

bool servesOthers(const Node& node) {
    const auto& isService = node.type().behaviour().isService;
    return node.type().diesWithLastOutput() || (isService && isService(node));
}

using NodeSet = std::set<const Node*>;

/// Adds a node and everything below it to the nodes to delete.
void doom(Node& node, std::vector<Node*>& doomed, NodeSet& gone) {
    std::vector<Node*> ahead{&node};
    while (!ahead.empty()) {
        Node& next = *ahead.back();
        ahead.pop_back();
        if (!next.isAlive() || !gone.insert(&next).second) continue;
        doomed.push_back(&next);
        ahead.insert(ahead.end(), next.children().begin(), next.children().end());
    }
}

bool hasSurvivor(const std::vector<Link>& links, const NodeSet& gone) {
    return std::any_of(links.begin(), links.end(),
                       [&](const Link& link) { return gone.count(link.node) == 0; });
}

/// Whether something that the node computes goes to a node that stays. Messages and plain values do not keep
/// a service node.
bool feedsSurvivor(const Node& node, const NodeSet& gone) {
    const auto& outgoing = node.outgoing();
    return std::any_of(outgoing.begin(), outgoing.end(), [&](const auto& entry) {
        return entry.first.attribute->isOutput() && hasSurvivor(entry.second, gone);
    });
}

/// Whether a node is of a type that is deleted with the nodes that feed this attribute, and all of these are
/// deleted.
bool losesAllSources(const Node& node, const Attribute& attribute, const NodeSet& gone) {
    const auto& diesWithSources = node.type().behaviour().diesWithSources;
    if (!diesWithSources || !diesWithSources(attribute)) return false;
    const auto& incoming = node.incoming();
    return std::all_of(incoming.begin(), incoming.end(), [&](const auto& entry) {
        return !diesWithSources(*entry.first.attribute) || gone.count(entry.second.node) != 0;
    });
}

/// Whether a node only prepares the input of the next node, and is deleted with it: a service, by its own
/// state, that passes its input on.
bool isHelper(const Node& node) {
    const NodeBehaviour& behaviour = node.type().behaviour();
    return behaviour.passThrough && behaviour.isService && behaviour.isService(node);
}

/// The plug that replaces an output when its node is deleted: the source of the input that the output passes
/// through. If that node is deleted too, the one before it. Empty if there is none.
Plug passedSource(const Graph& graph, const Plug& output, const NodeSet& gone) {
    Plug at = output;
    std::vector<Plug> passed;
    const auto goes = [&](const Node& node) {
        return gone.count(&node) != 0 || (isHelper(node) && !feedsSurvivor(node, gone));
    };
    while (at && goes(*at.node())) {
        // A chain that leads back to itself has no source.
        if (std::find(passed.begin(), passed.end(), at) != passed.end()) return {};
        passed.push_back(at);
        const auto& passThrough = at.node()->type().behaviour().passThrough;
        const Plug input = passThrough ? passThrough(at) : Plug();
        at = input ? graph.source(input) : Plug();
    }
    return at;
}

/// Nodes that stay and get their values through deleted nodes that pass them on.
NodeSet neededBySurvivors(const Graph& graph, const std::vector<Node*>& doomed, const NodeSet& gone) {
    NodeSet needed;
    for (Node* node : doomed) {
        for (const auto& [key, links] : node->outgoing()) {
            if (!hasSurvivor(links, gone)) continue;
            if (const Plug source = passedSource(graph, Plug(node->ref(), key), gone))
                needed.insert(source.node().get());
        }
    }
    return needed;
}

}  // namespace

std::vector<NodeRef> Graph::dependents(const std::vector<NodeRef>& nodes) const {
    std::vector<Node*> doomed;
    NodeSet gone;
    for (const NodeRef& node : nodes)
        doom(*node, doomed, gone);
    for (bool grows = true; grows;) {
        grows = false;
        const NodeSet needed = neededBySurvivors(*this, doomed, gone);
        const std::vector<Node*> current = doomed;
        for (Node* node : current) {
            for (const auto& entry : node->incoming()) {
                Node* source = entry.second.node;
                if (gone.count(source) != 0 || !servesOthers(*source)) continue;
                if (needed.count(source) != 0 || feedsSurvivor(*source, gone)) continue;
                doom(*source, doomed, gone);
                grows = true;
            }
            for (const auto& entry : node->outgoing()) {
                for (const Link& link : entry.second) {
                    if (gone.count(link.node) != 0) continue;
                    if (!losesAllSources(*link.node, *link.key.attribute, gone)) continue;
                    doom(*link.node, doomed, gone);
                    grows = true;
                }
            }
        }
    }
    std::sort(doomed.begin(), doomed.end(), [](const Node* a, const Node* b) { return a->id() < b->id(); });
    std::vector<NodeRef> result;
    result.reserve(doomed.size());
    for (Node* node : doomed)
        result.push_back(node->ref());
    return result;
}

void Graph::deleteNodes(const std::vector<NodeRef>& nodes) {
    const std::vector<NodeRef> doomed = dependents(nodes);
    NodeSet gone;
    Selection remaining = content_->selection;
    for (const NodeRef& node : doomed) {
        gone.insert(node.get());
        remaining.removeNode(*node);
    }
    if (remaining.items().size() != content_->selection.items().size()) select(std::move(remaining));
    // Survivors first: the values that they keep are evaluated while the deleted nodes are still connected.
    for (const NodeRef& node : doomed) {
        for (const Connection& connection : connections(*node)) {
            if (gone.count(connection.destination.node().get()) != 0) continue;
            if (const Plug source = passedSource(*this, connection.source, gone)) {
                connect(source, connection.destination);
            } else {
                disconnect(connection.destination);
            }
        }
    }
    for (const NodeRef& node : doomed) {
        for (const Connection& connection : connections(*node)) {
            breakLink(connection.source, connection.destination);
            if (gone.count(connection.source.node().get()) == 0) dropHollowElements(connection.source);
        }
    }
    // Children first, so that a node has none when it leaves.
    std::vector<std::pair<int, NodeRef>> byDepth;
    for (const NodeRef& node : doomed) {
        int depth = 0;
        for (const Node* up = node->parent(); up != nullptr; up = up->parent())
            ++depth;
        byDepth.emplace_back(depth, node);
    }
    std::stable_sort(byDepth.begin(), byDepth.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& entry : byDepth) {
        const NodeRef node = entry.second;
        const NodeRef parent = node->parent() != nullptr ? node->parent()->ref() : nullptr;
        int position = -1;
        if (node->type().isDag()) {
            const auto& list = siblings(parent.get());
            position = static_cast<int>(std::find(list.begin(), list.end(), node.get()) - list.begin());
        }
        leaveScene(*node);
        record([node, parent, position](Graph& graph) { graph.enterAgain(node, parent, position); },
               [node](Graph& graph) { graph.leaveAgain(*node); });
    }
}

std::string Graph::rename(Node& node, const std::string& name) {
    const std::string given = freeName(name, node.parent(), node.type().isDag(), &node);
    const std::string old = node.name();
    if (given == old) return given;
    setName(node, given);
    const auto nameAgain = [ref = node.ref()](const std::string& text) {
        return [ref, text](Graph& graph) {
            if (graph.canStepOn(*ref)) graph.setName(*ref, text);
        };
    };
    record(nameAgain(old), nameAgain(given));
    return given;
}

void Graph::setName(Node& node, const std::string& name) {
    content_->takenNumbers.erase(splitNumber(node.name_).first);
    auto& named = content_->byName[node.name_];
    named.erase(std::remove(named.begin(), named.end(), &node), named.end());
    if (named.empty()) content_->byName.erase(node.name_);
    node.name_ = name;
    content_->byName[name].push_back(&node);
    enterNamespaces(name);
    ++nameVersion_;
    ++changes_;
}

void Graph::reparent(Node& node, Node* parent, int position) {
    const auto& list = siblings(node.parent());
    const int oldPosition = static_cast<int>(std::find(list.begin(), list.end(), &node) - list.begin());
    const NodeRef oldParent = node.parent() != nullptr ? node.parent()->ref() : nullptr;
    const NodeRef newParent = parent != nullptr ? parent->ref() : nullptr;
    setParent(node, parent, position);
    const auto moveAgain = [ref = node.ref()](const NodeRef& above, int place) {
        return [ref, above, place](Graph& graph) {
            const bool hasParent = above == nullptr || graph.canStepOn(*above);
            if (graph.canStepOn(*ref) && hasParent) graph.setParent(*ref, above.get(), place);
        };
    };
    record(moveAgain(oldParent, oldPosition), moveAgain(newParent, position));
    // One of the new siblings may have the same name.
    if (isNameTaken(node.name(), parent, true, &node)) rename(node, node.name());
}

void Graph::setParent(Node& node, Node* parent, int position) {
    auto& from = siblings(node.parent_);
    from.erase(std::remove(from.begin(), from.end(), &node), from.end());
    auto& to = siblings(parent);
    to.insert(position < 0 || position > static_cast<int>(to.size()) ? to.end() : to.begin() + position,
              &node);
    node.parent_ = parent;
    ++nameVersion_;
    ++changes_;
    markDirty(node);
}

std::vector<NodeRef> Graph::nodes() const {
    std::vector<NodeRef> result;
    result.reserve(content_->nodes.size());
    for (const auto& entry : content_->nodes)
        result.push_back(entry.second);
    return result;
}

std::vector<NodeRef> Graph::nodesOfType(std::string_view typeName) const {
    std::vector<NodeRef> result;
    for (const auto& entry : content_->nodes) {
        if (entry.second->isA(typeName)) result.push_back(entry.second);
    }
    return result;
}

std::vector<NodeRef> Graph::nodesNamed(std::string_view name) const {
    std::vector<NodeRef> result;
    const auto found = content_->byName.find(std::string(name));
    if (found == content_->byName.end()) return result;
    for (Node* node : found->second)
        result.push_back(node->ref());
    std::sort(result.begin(), result.end(),
              [](const NodeRef& a, const NodeRef& b) { return a->id() < b->id(); });
    return result;
}

namespace {

/// The names of a node and of those above it, given from the node upwards, as a path.
std::string joinedDownwards(const std::vector<const Node*>& upwards) {
    std::string path;
    for (auto at = upwards.rbegin(); at != upwards.rend(); ++at) {
        if (at != upwards.rbegin()) path += '|';
        path += (*at)->name();
    }
    return path;
}

}  // namespace

std::string Graph::fullPath(const Node& node) const {
    if (!node.type().isDag()) return node.name();
    std::vector<const Node*> upwards;
    for (const Node* up = &node; up != nullptr; up = up->parent())
        upwards.push_back(up);
    return '|' + joinedDownwards(upwards);
}

std::string Graph::uniqueName(const Node& node) const {
    const auto found = content_->byName.find(node.name());
    if (found == content_->byName.end() || found->second.size() == 1) return node.name();
    // Make the path longer upwards until no node of the same name has a path with that end.
    std::vector<const Node*> upwards{&node};
    std::vector<const Node*> rivals;
    for (const Node* other : found->second) {
        if (other != &node) rivals.push_back(other->parent());
    }
    for (const Node* up = node.parent(); up != nullptr && !rivals.empty(); up = up->parent()) {
        upwards.push_back(up);
        std::vector<const Node*> left;
        for (const Node* rival : rivals) {
            if (rival != nullptr && rival->name() == up->name()) left.push_back(rival->parent());
        }
        rivals = std::move(left);
    }
    // Only a path from the root distinguishes a top-level node from a deeper one.
    return (rivals.empty() ? "" : "|") + joinedDownwards(upwards);
}

std::string Graph::plugName(const Plug& plug) const {
    return uniqueName(*plug.node()) + '.' + plug.attributePath();
}

NodeRef Graph::shapeOf(const NodeRef& node) const {
    return componentSupport_.shapeOf ? componentSupport_.shapeOf(*this, node) : nullptr;
}

int Graph::componentCount(const NodeRef& shape, ComponentKind kind) {
    return componentSupport_.count ? componentSupport_.count(*this, shape, kind) : 0;
}

bool Graph::isNameTaken(const std::string& name, const Node* parent, bool isDag, const Node* except) const {
    const auto found = content_->byName.find(name);
    if (found == content_->byName.end()) return false;
    return std::any_of(found->second.begin(), found->second.end(), [&](const Node* other) {
        if (other == except) return false;
        // DAG nodes may share a name if their paths differ. All other names are unique in the scene.
        return !isDag || !other->type().isDag() || other->parent() == parent;
    });
}

std::string Graph::freeName(const std::string& wanted, const Node* parent, bool isDag, const Node* except) {
    if (!isNameTaken(wanted, parent, isDag, except)) return wanted;
    std::string next = nextName(wanted);
    if (except == nullptr) return next;
    // The numbers that were skipped may include the node's own, which it may keep.
    const auto [base, number] = splitNumber(wanted);
    const auto [ownBase, ownNumber] = splitNumber(except->name());
    const bool isPassedOver = ownBase == base && number < ownNumber && ownNumber < splitNumber(next).second;
    return isPassedOver ? except->name() : next;
}

std::string Graph::nextName(const std::string& name) {
    const auto [base, number] = splitNumber(name);
    // Thousands of nodes are named one after the other: continue where the last search ended.
    TakenNumbers& taken = content_->takenNumbers[base];
    if (number + 1 < taken.first || number + 1 > taken.end) taken = {number + 1, number + 1};
    while (content_->byName.count(base + std::to_string(taken.end)) != 0)
        ++taken.end;
    return base + std::to_string(taken.end);
}

}  // namespace host::graph
