// The connections of the graph: making, breaking and listing them, and their recorded steps.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>
#include <vector>

#include "graph/graph.h"
#include "graph/hierarchy.h"

namespace host::graph {

namespace {

/// Whether a plug is the other one or is below it.
bool isBelow(const PlugKey& key, const PlugKey& above) {
    const auto& path = key.attribute->path();
    if (std::find(path.begin(), path.end(), above.attribute) == path.end()) return false;
    return key.depth >= above.depth &&
           std::equal(above.indices.begin(), above.indices.begin() + above.depth, key.indices.begin());
}

/// The innermost array element on the path of a plug; an empty plug if there is none.
Plug elementAbove(const Plug& plug) {
    Plug at = plug;
    while (at && !at.isElement())
        at = at.parent();
    return at;
}

/// Makes the array elements on the path of a plug exist: a connected element exists.
void createElements(Graph& graph, const Plug& plug) {
    if (const Plug element = elementAbove(plug)) graph.createElement(element);
}

/// Whether nothing was ever written into a slot or below it.
bool isHollow(const Slot& slot) {
    if (const auto* children = std::get_if<std::unique_ptr<Slot::Children>>(&slot.content)) {
        return std::all_of((*children)->begin(), (*children)->end(), isHollow);
    }
    if (const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&slot.content)) {
        return (*multi)->elements.empty();
    }
    return slot.empty();
}

}  // namespace

void Graph::connect(const Plug& source, const Plug& destination) {
    if (this->source(destination)) disconnect(destination);
    createElements(*this, source);
    createElements(*this, destination);
    link(source, destination);
    record([source, destination](Graph& graph) { graph.unlinkAgain(source, destination); },
           [source, destination](Graph& graph) { graph.linkAgain(source, destination); });
    const auto& hook = destination.node()->type().behaviour().connected;
    if (hook) hook(*this, destination);
}

void Graph::disconnect(const Plug& destination) {
    const Plug feeding = source(destination);
    if (!feeding) return;
    const auto& hook = destination.node()->type().behaviour().disconnecting;
    if (hook) hook(*this, destination);
    const ValueKind kind = destination.attribute().kind();
    const bool keepsNumber = isNumber(kind) && !destination.isArray();
    const double lastNumber = keepsNumber ? number(destination) : 0.0;
    const DataPtr lastData = kind == ValueKind::Typed ? data(destination) : nullptr;
    std::vector<double> lastParts;
    if (kind == ValueKind::Compound) {
        for (const auto& child : destination.attribute().children()) {
            const Plug part = destination.child(*child);
            if (part.isNumber()) lastParts.push_back(number(part));
        }
    }
    breakLink(feeding, destination);
    if (keepsNumber) setNumber(destination, lastNumber);
    // "Never set" is a value too, if the destination has another value of its own.
    const bool hasOwnData =
        kind == ValueKind::Typed && destination.node()->storedData(destination.key()) != lastData;
    if (hasOwnData) setData(destination, lastData);
    if (lastParts.size() == destination.attribute().children().size()) {
        for (std::size_t k = 0; k < lastParts.size(); ++k)
            setNumber(destination.child(static_cast<int>(k)), lastParts[k]);
    }
    dropHollowElements(destination);
    dropHollowElements(feeding);
}

namespace {

/// Whether a plug, or one below it, is among the plugs of one side of a node's connections. A few look-ups,
/// however many connections there are.
template <typename Links>
bool hasAtOrBelow(const Links& links, const Plug& plug) {
    const auto given = plug.key().indices.begin() + plug.key().depth;
    std::vector<const Attribute*> ahead{&plug.attribute()};
    while (!ahead.empty()) {
        const Attribute& attribute = *ahead.back();
        ahead.pop_back();
        for (const auto& child : attribute.children())
            ahead.push_back(child.get());
        for (int depth = plug.key().depth; depth <= attribute.arrayDepth(); ++depth) {
            PlugKey first = plug.key();
            first.attribute = &attribute;
            std::fill(first.indices.begin() + first.depth, first.indices.begin() + depth,
                      std::numeric_limits<int>::min());
            first.depth = static_cast<std::uint8_t>(depth);
            const auto at = links.lower_bound(first);
            const bool isOfKind =
                at != links.end() && at->first.attribute == &attribute && at->first.depth == depth;
            if (isOfKind && std::equal(plug.key().indices.begin(), given, at->first.indices.begin()))
                return true;
        }
    }
    return false;
}

}  // namespace

void Graph::dropHollowElements(const Plug& plug) {
    for (Plug at = plug; at; at = at.parent()) {
        if (!at.isElement()) continue;
        const Slot* slot = at.attribute().flatWidth() > 0 ? nullptr : at.node()->slot(at.key());
        if (slot == nullptr || !isHollow(*slot)) return;
        if (hasAtOrBelow(at.node()->incoming(), at) || hasAtOrBelow(at.node()->outgoing(), at)) return;
        removeElement(at);
    }
}

void Graph::breakLink(const Plug& source, const Plug& destination) {
    const int position = unlink(source, destination);
    record([source, destination, position](Graph& graph) { graph.linkAgain(source, destination, position); },
           [source, destination](Graph& graph) { graph.unlinkAgain(source, destination); });
}

namespace {

/// Whether a value that goes into an attribute can have an effect on a shape. Messages carry none, nothing is
/// computed from what is only kept, and some attributes only say how things are drawn.
bool shapesGeometry(const Attribute& attribute) {
    if (attribute.kind() == ValueKind::Message || attribute.isKept()) return false;
    const std::string& root = attribute.path().front()->longName();
    return root != "visibility" && root != "lodVisibility" && root != "drawOverride" &&
           root != "instObjGroups";
}

/// Whether one attribute is the other, or a part of it.
bool shareValue(const Attribute& a, const Attribute& b) {
    const auto& longer = a.path().size() < b.path().size() ? b.path() : a.path();
    const Attribute& upper = a.path().size() < b.path().size() ? a : b;
    return longer[upper.path().size() - 1] == &upper;
}

}  // namespace

std::string Graph::unevaluatedSource(const Node& node) const {
    if (!content_->hasKeptSources) return {};
    // An output depends on all that goes into its node (null), a plain attribute on what goes into that
    // attribute.
    using Feeder = std::pair<const Node*, const Attribute*>;
    std::vector<Feeder> ahead{{&node, nullptr}};
    std::set<Feeder> seen{ahead.front()};
    const auto visit = [&](const Node* next, const Attribute* attribute) {
        if (next != nullptr && seen.emplace(next, attribute).second) ahead.emplace_back(next, attribute);
    };
    while (!ahead.empty()) {
        const auto [at, part] = ahead.back();
        ahead.pop_back();
        for (const auto& [key, link] : at->incoming()) {
            if (!shapesGeometry(*key.attribute)) continue;
            if (part != nullptr && !shareValue(*part, *key.attribute)) continue;
            const Attribute& source = *link.key.attribute;
            if (source.isKept()) return uniqueName(*link.node) + " (" + link.node->type().name() + ')';
            visit(link.node, source.isOutput() ? nullptr : &source);
            // A world matrix comes from the transforms above as well.
            const bool isMatrix = source.spec().dataType == "matrix";
            if (isMatrix) {
                anyAbove(*link.node, [&](const Node& up) {
                    visit(&up, nullptr);
                    return false;
                });
            }
        }
    }
    return {};
}

void Graph::connectSaved(const Plug& source, const Plug& destination) {
    link(source, destination);
    for (const Plug& plug : {source, destination}) {
        const Node& node = *plug.node();
        // Elements of what still waits in the file are made when it is read.
        if (!node.isIntroduced()) continue;
        NodeLoader loader(*plug.node());
        if (plug.key().depth > 0) loader.createElement(elementAbove(plug).key());
    }
}

void Graph::linkAgain(const Plug& source, const Plug& destination, int position) {
    const bool hasSource = canStepOn(*source.node());
    if (canStepOn(*destination.node()) && hasSource) link(source, destination, position);
}

void Graph::unlinkAgain(const Plug& source, const Plug& destination) {
    const bool hasSource = canStepOn(*source.node());
    if (canStepOn(*destination.node()) && hasSource) unlink(source, destination);
}

void Graph::link(const Plug& source, const Plug& destination, int position) {
    // When a recorded step runs, another source may be connected. That source must not keep its end.
    if (const Plug other = this->source(destination)) unlink(other, destination);
    Node& from = *source.node();
    Node& to = *destination.node();
    to.incoming_[destination.key()] = {&from, source.key()};
    to.incomingAttributes_.push_back(&destination.attribute());
    auto& links = from.outgoing_[source.key()];
    const bool isInside = position >= 0 && position < static_cast<int>(links.size());
    const auto at = isInside ? links.begin() + position : links.end();
    links.insert(at, {&to, destination.key()});
    ++changes_;
    content_->hasKeptSources = content_->hasKeptSources || source.attribute().isKept();
    // The next reader of the destination must not get an older value.
    to.isClean_.store(true, std::memory_order_release);
    markDirty(to);
}

int Graph::unlink(const Plug& source, const Plug& destination) {
    if (this->source(destination) != source) return -1;
    Node& from = *source.node();
    Node& to = *destination.node();
    if (removals_ != nullptr) {
        removals_->connectionGone(source);
        removals_->connectionGone(destination);
    }
    ++changes_;
    to.incoming_.erase(destination.key());
    auto& attributes = to.incomingAttributes_;
    const auto found = std::find(attributes.begin(), attributes.end(), &destination.attribute());
    if (found != attributes.end()) attributes.erase(found);
    int position = -1;
    const auto outgoing = from.outgoing_.find(source.key());
    if (outgoing != from.outgoing_.end()) {
        auto& links = outgoing->second;
        const auto link = std::find_if(links.begin(), links.end(), [&](const Link& entry) {
            return entry.node == &to && entry.key == destination.key();
        });
        position = static_cast<int>(link - links.begin());
        if (link != links.end()) links.erase(link);
        if (links.empty()) from.outgoing_.erase(outgoing);
    }
    to.isClean_.store(true, std::memory_order_release);
    markDirty(to);
    return position;
}

Plug Graph::source(const Plug& destination) const {
    const auto& incoming = destination.node()->incoming();
    if (incoming.empty()) return {};
    const auto found = incoming.find(destination.key());
    return found == incoming.end() ? Plug() : Plug(found->second.node->ref(), found->second.key);
}

std::vector<Plug> Graph::destinations(const Plug& source) const {
    std::vector<Plug> result;
    const auto& outgoing = source.node()->outgoing();
    const auto found = outgoing.find(source.key());
    if (found == outgoing.end()) return result;
    for (const Link& link : found->second)
        result.emplace_back(link.node->ref(), link.key);
    return result;
}

std::vector<Connection> Graph::connections(const Node& node) const {
    std::vector<Connection> result;
    const NodeRef self = const_cast<Node&>(node).ref();
    for (const auto& [key, link] : node.incoming())
        result.push_back({Plug(link.node->ref(), link.key), Plug(self, key)});
    for (const auto& [key, links] : node.outgoing()) {
        for (const Link& link : links) {
            // A connection of the node with itself is listed once.
            if (link.node != &node) result.push_back({Plug(self, key), Plug(link.node->ref(), link.key)});
        }
    }
    return result;
}

std::vector<Connection> Graph::connectionsBelow(const Plug& plug) const {
    std::vector<Connection> result;
    for (const Connection& connection : connections(*plug.node())) {
        const bool isSource =
            connection.source.node() == plug.node() && isBelow(connection.source.key(), plug.key());
        const bool isDestination =
            connection.destination.node() == plug.node() && isBelow(connection.destination.key(), plug.key());
        if (isSource || isDestination) result.push_back(connection);
    }
    return result;
}

const Attribute& Graph::addAttribute(Node& node, AttributeSpec spec) {
    node.introduce();
    node.hasChanges_ = true;
    ++changes_;
    const Attribute& attribute = node.adopt(std::move(spec));
    const NodeRef ref = node.ref();
    record([ref, pointer = &attribute](Graph& graph) { graph.parkAttribute(*ref, *pointer); },
           [ref, pointer = &attribute](Graph& graph) { graph.unparkAttribute(*ref, *pointer); });
    return attribute;
}

void Graph::parkAttribute(Node& node, const Attribute& attribute) {
    auto& place = node.dynamic_[node.dynamicPosition(attribute)];
    if (!canStepOn(node) || place == nullptr) return;
    ++changes_;
    // Connections made without a record still exist.
    for (const Connection& connection : connectionsBelow(Plug(node.ref(), &attribute)))
        unlink(connection.source, connection.destination);
    if (attribute.isKept()) node.kept_.erase(attribute.longName());
    node.removed_.push_back(std::move(place));
}

bool Graph::unparkAttribute(Node& node, const Attribute& attribute) {
    if (!canStepOn(node)) return false;
    auto& removed = node.removed_;
    const auto found = std::find_if(removed.begin(), removed.end(),
                                    [&](const auto& entry) { return entry.get() == &attribute; });
    if (found == removed.end()) return false;
    ++changes_;
    node.dynamic_[node.dynamicPosition(attribute)] = std::move(*found);
    if (attribute.isKept()) node.kept_.emplace(attribute.longName(), &attribute);
    removed.erase(found);
    return true;
}

void Graph::deleteAttribute(Node& node, const Attribute& attribute) {
    const NodeRef ref = node.ref();
    const Plug plug(ref, &attribute);
    for (const Connection& connection : connectionsBelow(plug))
        disconnect(connection.destination);
    const auto aliases = node.aliases_;
    for (const auto& entry : aliases) {
        if (isBelow(entry.second, plug.key())) setAlias(Plug(ref, entry.second), {});
    }
    node.load(attribute.ordinal());
    noteChange(node, plug.key());
    std::map<PlugKey, PlugState> states;
    for (auto at = node.states_.begin(); at != node.states_.end();) {
        const auto next = std::next(at);
        if (isBelow(at->first, plug.key())) states.insert(node.states_.extract(at));
        at = next;
    }
    Slot& slot = node.rootSlot(attribute.ordinal());
    const auto old = std::make_shared<Slot>(std::move(slot));
    slot = {};
    node.removed_.push_back(std::move(node.dynamic_[node.dynamicPosition(attribute)]));
    const auto restore = [ref, old, states, pointer = &attribute](Graph& graph) {
        if (!graph.unparkAttribute(*ref, *pointer)) return;
        ref->states_.insert(states.begin(), states.end());
        ref->rootSlot(pointer->ordinal()) = old->clone();
        graph.markDirty(*ref);
    };
    record(restore, [ref, pointer = &attribute](Graph& graph) {
        if (graph.canStepOn(*ref)) graph.deleteAttribute(*ref, *pointer);
    });
    markDirty(node);
}

void Graph::setAlias(const Plug& plug, const std::string& alias) {
    Node& node = *plug.node();
    node.introduce();
    AliasTable& aliases = node.aliases_;
    const PlugKey key = plug.key();
    const std::size_t position = aliases.position(key);
    const std::string old = aliases.aliasOf(key);
    if (old == alias) return;
    node.changedAliases_ = true;
    node.hasChanges_ = true;
    ++changes_;
    const auto insert = [ref = node.ref(), position, key](const std::string& name) {
        return [=](Graph& graph) {
            if (!graph.canStepOn(*ref)) return;
            ++graph.changes_;
            ref->aliases_.insert(position, name, key);
        };
    };
    const auto rename = [ref = node.ref(), key](const std::string& name) {
        return [=](Graph& graph) {
            if (!graph.canStepOn(*ref)) return;
            ++graph.changes_;
            ref->aliases_.rename(key, name);
        };
    };
    const auto erase = [ref = node.ref(), key](Graph& graph) {
        if (!graph.canStepOn(*ref)) return;
        ++graph.changes_;
        ref->aliases_.erase(key);
    };
    if (old.empty()) {
        aliases.insert(position, alias, key);
        record(erase, insert(alias));
    } else if (alias.empty()) {
        aliases.erase(key);
        record(insert(old), erase);
    } else {
        aliases.rename(key, alias);
        record(rename(old), rename(alias));
    }
}

void Graph::setState(const Plug& plug, PlugState state) {
    Node& node = *plug.node();
    const PlugState old = node.state(plug.key());
    noteChange(node, plug.key());
    node.states_[plug.key()] = state;
    const auto stateAgain = [plug](PlugState kept) {
        return [plug, kept](Graph& graph) {
            if (graph.canStepOn(*plug.node())) plug.node()->states_[plug.key()] = kept;
        };
    };
    record(stateAgain(old), stateAgain(state));
}

}  // namespace host::graph
