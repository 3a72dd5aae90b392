// The nodes of the graph: making, naming and moving them, and finding them by name.

#include <algorithm>
#include <cctype>
#include <optional>

#include "graph/graph.h"
#include "graph/hierarchy.h"
#include "graph/namespaces.h"
#include "graph/selectedPlaces.h"

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
    while (!node.children_.empty()) {
        Node& child = *node.children_.back();
        if (child.otherParents_.empty()) {
            setParent(child, nullptr, -1);
        } else {
            detach(child, &node);
        }
    }
    while (!node.otherParents_.empty())
        detach(node, node.otherParents_.back());
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
    if (parent != node.parent() && hasParent(node, parent)) return removeInstance(node, node.parent());
    const auto& list = siblings(node.parent());
    const int oldPosition = static_cast<int>(std::find(list.begin(), list.end(), &node) - list.begin());
    const NodeRef oldParent = node.parent() != nullptr ? node.parent()->ref() : nullptr;
    const NodeRef newParent = parent != nullptr ? parent->ref() : nullptr;
    std::optional<SelectedPlaces> selected;
    if (hasInstances()) selected.emplace(*this);
    setParent(node, parent, position);
    const auto moveAgain = [ref = node.ref()](const NodeRef& above, int place) {
        return [ref, above, place](Graph& graph) {
            const bool canMove = above == nullptr || graph.canStepOn(*above);
            if (!graph.canStepOn(*ref) || !canMove) return;
            if (ref->parent() == above.get() || !graph.hasParent(*ref, above.get()))
                graph.setParent(*ref, above.get(), place);
        };
    };
    record(moveAgain(oldParent, oldPosition), moveAgain(newParent, position));
    if (selected) selected->follow(&node, parent);
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

void addParents(const Node& node, std::vector<const Node*>& parents) {
    visitParents(node, [&](const Node* parent) { parents.push_back(parent); });
}

/// Through instances there may be as many ways to a node as powers of two.
void keepEachOnce(std::vector<const Node*>& nodes) {
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
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
        if (other != &node) addParents(*other, rivals);
    }
    for (const Node* up = node.parent(); up != nullptr && !rivals.empty(); up = up->parent()) {
        upwards.push_back(up);
        std::vector<const Node*> left;
        for (const Node* rival : rivals) {
            if (rival != nullptr && rival->name() == up->name()) addParents(*rival, left);
        }
        keepEachOnce(left);
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
        return !isDag || !other->type().isDag() || hasParent(*other, parent);
    });
}

std::string Graph::freeName(const std::string& wanted, const Node* parent, bool isDag, const Node* except) {
    const auto isTakenBelow = [&](const Node* above) { return isNameTaken(wanted, above, isDag, except); };
    const bool isTakenElsewhere = except != nullptr && std::any_of(except->otherParents_.begin(),
                                                                   except->otherParents_.end(), isTakenBelow);
    if (!isTakenElsewhere && !isTakenBelow(parent)) return wanted;
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
