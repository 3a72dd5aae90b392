// The values of the graph: evaluation, storage, array elements, dirty marks, and their recorded steps.

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>

#include "graph/graph.h"
#include "graph/scopedValue.h"

namespace host::graph {

namespace {

/// How many computations may be nested before the rest is computed from the far end.
constexpr int kDeepEvaluation = 50;

/// Plug of the element that holds a flat number.
Plug flatElement(const Plug& plug, const Attribute& array) {
    return &plug.attribute() == &array ? plug : plug.child(array);
}

const NumberMulti* numbersOf(const Slot* slot) {
    if (slot == nullptr) return nullptr;
    const auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot->content);
    return numbers != nullptr ? numbers->get() : nullptr;
}

const ElementMulti* elementsOf(const Slot* slot) {
    if (slot == nullptr) return nullptr;
    const auto* multi = std::get_if<std::unique_ptr<ElementMulti>>(&slot->content);
    return multi != nullptr ? multi->get() : nullptr;
}

}  // namespace

double Graph::number(const Plug& plug) {
    const Attribute& attribute = plug.attribute();
    if (attribute.isOutput()) {
        const ComputedValue value = computed(plug);
        return std::holds_alternative<double>(value) ? std::get<double>(value)
                                                     : attribute.spec().defaultValue;
    }
    if (!plug.node()->hasIncoming(attribute)) return plug.node()->storedNumber(plug.key());
    std::vector<ValueKind> passed;
    const Plug at = origin(plug, passed);
    double value = at.attribute().isOutput() ? number(at) : at.node()->storedNumber(at.key());
    for (auto kind = passed.rbegin(); kind != passed.rend(); ++kind)
        value = roundedTo(*kind, value);
    return value;
}

double Graph::unconnectedNumber(const Plug& plug) {
    plug.node()->isClean_.store(true, std::memory_order_release);
    return number(plug);
}

DataPtr Graph::data(const Plug& plug) {
    const Attribute& attribute = plug.attribute();
    if (attribute.isOutput()) {
        const ComputedValue value = computed(plug);
        return std::holds_alternative<DataPtr>(value) ? std::get<DataPtr>(value) : nullptr;
    }
    if (!plug.node()->hasIncoming(attribute)) return plug.node()->storedData(plug.key());
    std::vector<ValueKind> passed;
    const Plug at = origin(plug, passed);
    return at == plug ? plug.node()->storedData(plug.key()) : data(at);
}

/// Warns once that a plug shows an old value.
void Graph::noteUnevaluated(const Plug& plug, const Plug& source) {
    const std::lock_guard<std::recursive_mutex> lock(evaluation_);
    if (!unevaluated_.emplace(plug.node()->id(), plug.key()).second) return;
    messages_->warning(plugName(plug) + " keeps its last value: " + plugName(source) + " (" +
                       source.node()->type().name() + ") is not evaluated.");
}

/// Follows connections up to the plug whose own value counts: an output, or a plug without a source. A cycle
/// of plain connections yields the plug itself.
/// @param passed  kinds of the plugs on the way, each of which rounds the value to what it stores
Plug Graph::origin(const Plug& plug, std::vector<ValueKind>& passed) {
    Plug at = plug;
    Plug mark = plug;  // moved on at each power of two: a cycle comes back to it
    for (std::size_t steps = 1, limit = 1; !at.attribute().isOutput(); ++steps) {
        const Plug source = at.node()->hasIncoming(at.attribute()) ? connectedSource(at) : Plug();
        if (!source) break;
        if (source.attribute().isKept()) {
            noteUnevaluated(at, source);
            break;
        }
        passed.push_back(at.attribute().kind());
        source.node()->isClean_.store(true, std::memory_order_release);
        if (source == mark) {
            passed.clear();
            return plug;
        }
        if (steps == limit) {
            mark = source;
            limit *= 2;
        }
        at = source;
    }
    return at;
}

/// The source of this plug, directly or through a connected compound above it.
Plug Graph::connectedSource(const Plug& plug) const {
    if (Plug direct = source(plug)) return direct;
    const Attribute* above = plug.attribute().parent();
    if (above == nullptr || plug.isElement()) return {};
    const Plug parentSource = connectedSource(plug.child(*above));
    if (!parentSource ||
        static_cast<int>(parentSource.attribute().children().size()) <= plug.attribute().ordinal())
        return {};
    return parentSource.child(plug.attribute().ordinal());
}

ComputedValue Graph::computed(const Plug& plug) {
    Node& node = *plug.node();
    const auto& compute = node.type().behaviour().compute;
    if (!compute) return plug.node()->storedData(plug.key());
    const std::lock_guard<std::recursive_mutex> lock(evaluation_);
    Node::CachedOutput& cached = node.outputs_[plug.key()];
    // A cycle yields the value of the previous evaluation.
    if (cached.version == node.version_ || cached.isComputing) return cached.value;
    const ScopedValue<bool> computing(cached.isComputing, true);
    const ScopedValue<int> deeper(evaluationDepth_, evaluationDepth_ + 1);
    if (evaluationDepth_ > kDeepEvaluation) computeUpstream(node);
    const std::uint64_t version = node.version_;
    node.isClean_.store(true, std::memory_order_release);
    cached.value = compute(*this, plug);
    cached.version = version;
    return cached.value;
}

/// Computes everything upstream of a node, from the far end on, so that the node finds it computed. Chains
/// may be longer than the machine's stack is deep. This also computes inputs that the node would not have
/// read.
void Graph::computeUpstream(Node& node) {
    struct Ahead {
        Plug plug;
        bool isReady;  // everything upstream of its node was computed
    };
    std::vector<Ahead> ahead;
    std::set<std::pair<const Node*, PlugKey>> seen;
    const auto addSources = [&](const Node& destination) {
        for (const auto& entry : destination.incoming_) {
            if (seen.emplace(entry.second.node, entry.second.key).second)
                ahead.push_back({Plug(entry.second.node->ref(), entry.second.key), false});
        }
    };
    const ScopedValue<int> fromZero(evaluationDepth_, 0);
    addSources(node);
    while (!ahead.empty()) {
        const Plug plug = ahead.back().plug;
        const bool isOutput = plug.attribute().isOutput();
        if (ahead.back().isReady || (isOutput && isCurrent(plug))) {
            ahead.pop_back();
            if (isOutput) computed(plug);
        } else {
            ahead.back().isReady = true;
            addSources(*plug.node());
        }
    }
}

void Graph::markDirty(Node& node) {
    if (!node.isClean_.exchange(false, std::memory_order_acq_rel)) return;
    try {
        markDownstream(node);
    } catch (const std::bad_alloc&) {
        // It is no longer known who was told.
        for (const auto& entry : content_->nodes) {
            entry.second->isClean_.store(false, std::memory_order_release);
            ++entry.second->version_;
        }
    }
}

void Graph::markDownstream(Node& node) {
    // Hierarchies and chains may be deeper than the machine's stack.
    std::vector<Node*> dirty{&node};
    const auto tell = [&dirty](Node& next) {
        if (next.isClean_.exchange(false, std::memory_order_acq_rel)) dirty.push_back(&next);
    };
    while (!dirty.empty()) {
        Node& at = *dirty.back();
        dirty.pop_back();
        ++at.version_;
        for (const auto& entry : at.outgoing_) {
            for (const Link& link : entry.second)
                tell(*link.node);
        }
        for (Node* child : at.children_)
            tell(*child);
        if (const auto& dependents = at.type().behaviour().dependents) {
            for (Node* next : dependents(*this))
                tell(*next);
        }
    }
}

bool Graph::isCurrent(const Plug& output) {
    Node& node = *output.node();
    const std::lock_guard<std::recursive_mutex> lock(evaluation_);
    const auto found = node.outputs_.find(output.key());
    return found != node.outputs_.end() && found->second.version == node.version_;
}

void Graph::setNumber(const Plug& plug, double value) {
    const double kept = roundedTo(plug.attribute().kind(), value);
    if (recorder_ == nullptr) {
        writeNumber(plug, kept);
        return;
    }
    Node& node = *plug.node();
    const Attribute* array = flatArrayOf(plug.attribute());
    Slot old;
    bool existed = true;
    if (array != nullptr) {
        const NumberMulti* numbers = numbersOf(node.slot(flatElement(plug, *array).array().key()));
        existed = numbers != nullptr && numbers->contains(flatElement(plug, *array).logicalIndex());
        if (existed) old.content = node.storedNumber(plug.key());
    } else if (const Slot* slot = node.slot(plug.key()); slot != nullptr) {
        old = slot->clone();
    }
    PlugKey created;
    node.obtainSlot(plug.key(), created);
    writeNumber(plug, kept);
    const auto redo = [plug, kept](Graph& graph) { graph.writeAgain(plug, kept); };
    if (created.attribute != nullptr) {
        record([place = Plug(plug.node(), created)](Graph& graph) { graph.undoCreation(place); }, redo);
    } else if (!existed) {
        record([place = flatElement(plug, *array)](Graph& graph) { graph.undoCreation(place); }, redo);
    } else if (array != nullptr) {
        record(
            [plug, before = std::get<double>(old.content)](Graph& graph) { graph.writeAgain(plug, before); },
            redo);
    } else {
        const auto shared = std::make_shared<Slot>(std::move(old));
        record([plug, shared](Graph& graph) { graph.restoreSlot(plug, shared->clone()); }, redo);
    }
}

void Graph::noteChange(Node& node, const PlugKey& key) {
    ++changes_;
    node.markChanged(key);
}

void Graph::forgetChanges() {
    for (const auto& entry : content_->nodes)
        entry.second->forgetChanges();
}

void Graph::writeNumber(const Plug& plug, double value) {
    noteChange(*plug.node(), plug.key());
    setPassing(plug, value);
}

void Graph::setPassing(const Plug& plug, double value) {
    Node& node = *plug.node();
    PlugKey created;
    Slot& slot = node.obtainSlot(plug.key(), created);
    const Attribute* array = flatArrayOf(plug.attribute());
    if (array != nullptr) {
        const int part = array == &plug.attribute() ? 0 : plug.attribute().ordinal();
        const int index = plug.key().indices[static_cast<std::size_t>(array->arrayDepth() - 1)];
        std::get<std::unique_ptr<NumberMulti>>(slot.content)
            ->write(index, part, value, array->flatDefaults().data());
    } else {
        slot.content = value;
    }
    markDirty(node);
}

void Graph::writeAgain(const Plug& plug, double value) {
    if (canStepOn(*plug.node())) writeNumber(plug, value);
}

void Graph::setData(const Plug& plug, DataPtr value) {
    Node& node = *plug.node();
    const auto& writing = node.type().behaviour().writing;
    if (plug.attribute().spec().isWatched && writing) writing(*this, plug);
    PlugKey created;
    Slot& slot = node.obtainSlot(plug.key(), created);
    if (recorder_ != nullptr) {
        const auto redo = [plug, value](Graph& graph) {
            Slot again;
            again.content = value;
            graph.restoreSlot(plug, std::move(again));
        };
        if (created.attribute != nullptr) {
            record([place = Plug(plug.node(), created)](Graph& graph) { graph.undoCreation(place); }, redo);
        } else {
            const auto old = std::make_shared<Slot>(slot.clone());
            record([plug, old](Graph& graph) { graph.restoreSlot(plug, old->clone()); }, redo);
        }
    }
    noteChange(node, plug.key());
    slot.content = std::move(value);
    markDirty(node);
}

void Graph::storeDerived(const Plug& plug, DataPtr value) {
    // No change of the scene by itself, but a later one may make it the value that is saved.
    plug.node()->markChanged(plug.key());
    PlugKey created;
    plug.node()->obtainSlot(plug.key(), created).content = std::move(value);
}

void Graph::recordStored(const Plug& plug) {
    if (recorder_ == nullptr) return;
    const Slot* slot = plug.node()->slot(plug.key());
    const auto stored = std::make_shared<Slot>(slot != nullptr ? slot->clone() : Slot());
    record([plug, stored](Graph& graph) { graph.restoreSlot(plug, stored->clone()); }, [](Graph&) {});
}

void Graph::restoreSlot(const Plug& plug, Slot slot) {
    if (!canStepOn(*plug.node())) return;
    PlugKey created;
    plug.node()->obtainSlot(plug.key(), created) = std::move(slot);
    noteChange(*plug.node(), plug.key());
    markDirty(*plug.node());
}

/// Undoes the creation of an array element, flat or not.
void Graph::undoCreation(const Plug& created) {
    if (!canStepOn(*created.node())) return;
    const RecordingScope silent(*this, nullptr);
    removeElement(created);
}

std::vector<int> Graph::elements(const Plug& arrayPlug) {
    const Slot* slot = arrayPlug.node()->slot(arrayPlug.key());
    if (const NumberMulti* numbers = numbersOf(slot)) return numbers->indices();
    std::vector<int> result;
    if (const ElementMulti* multi = elementsOf(slot)) {
        result.reserve(multi->elements.size());
        for (const auto& entry : multi->elements)
            result.push_back(entry.first);
    }
    return result;
}

int Graph::elementCount(const Plug& arrayPlug) {
    const Slot* slot = arrayPlug.node()->slot(arrayPlug.key());
    if (const NumberMulti* numbers = numbersOf(slot)) return numbers->size();
    const ElementMulti* multi = elementsOf(slot);
    return multi != nullptr ? static_cast<int>(multi->elements.size()) : 0;
}

int Graph::elementAt(const Plug& arrayPlug, int position) {
    if (position < 0 || position >= elementCount(arrayPlug)) return -1;
    const Slot* slot = arrayPlug.node()->slot(arrayPlug.key());
    if (const NumberMulti* numbers = numbersOf(slot)) return numbers->logicalIndex(position);
    return elementsOf(slot)->elements[static_cast<std::size_t>(position)].first;
}

bool Graph::hasElement(const Plug& element) {
    const Slot* slot = element.node()->slot(element.array().key());
    if (const NumberMulti* numbers = numbersOf(slot)) return numbers->contains(element.logicalIndex());
    const ElementMulti* multi = elementsOf(slot);
    return multi != nullptr && multi->find(element.logicalIndex()) != nullptr;
}

int Graph::nextIndex(const Plug& arrayPlug) {
    const int count = elementCount(arrayPlug);
    if (count == 0) return 0;
    const int last = elementAt(arrayPlug, count - 1);
    if (last < std::numeric_limits<int>::max()) return last + 1;
    // There is no index after the largest one: take the first gap.
    int index = 0;
    while (elementAt(arrayPlug, index) == index)
        ++index;
    return index;
}

void Graph::createElement(const Plug& element) {
    if (hasElement(element)) return;
    const Attribute& attribute = element.attribute();
    if (attribute.flatWidth() > 0) {
        const Plug first = attribute.isCompound() ? element.child(0) : element;
        setNumber(first, attribute.flatDefaults().front());
        return;
    }
    PlugKey created;
    element.node()->obtainSlot(element.key(), created);
    record([place = Plug(element.node(), created)](Graph& graph) { graph.undoCreation(place); },
           [element](Graph& graph) {
               if (!graph.canStepOn(*element.node())) return;
               PlugKey ignored;
               element.node()->obtainSlot(element.key(), ignored);
           });
}

void Graph::removeElement(const Plug& element) {
    Node& node = *element.node();
    const Plug array = element.array();
    const int index = element.logicalIndex();
    if (!hasElement(element)) return;
    if (removals_ != nullptr) removals_->elementGone(element);
    noteChange(node, array.key());
    PlugKey ignored;
    Slot& slot = node.obtainSlot(array.key(), ignored);
    const auto redo = [element](Graph& graph) { graph.undoCreation(element); };
    if (auto* numbers = std::get_if<std::unique_ptr<NumberMulti>>(&slot.content)) {
        if (recorder_ != nullptr) {
            std::vector<double> old(static_cast<std::size_t>((*numbers)->width()));
            (*numbers)->read(index, old.data());
            record(
                [element, old](Graph& graph) {
                    const bool isCompound = element.attribute().isCompound();
                    for (std::size_t k = 0; k < old.size(); ++k) {
                        graph.writeAgain(isCompound ? element.child(static_cast<int>(k)) : element, old[k]);
                    }
                },
                redo);
        }
        (*numbers)->remove(index);
    } else {
        auto& multi = *std::get<std::unique_ptr<ElementMulti>>(slot.content);
        const std::shared_ptr<Slot> old = multi.take(index);
        record([element, old](Graph& graph) { graph.restoreSlot(element, old->clone()); }, redo);
    }
    markDirty(node);
}

void Graph::clearElements(const Plug& arrayPlug) {
    Node& node = *arrayPlug.node();
    if (elementCount(arrayPlug) == 0) return;
    if (arrayPlug.attribute().flatWidth() > 0 && !node.hasIncoming(arrayPlug.attribute())) {
        if (removals_ != nullptr) removals_->elementsGone(arrayPlug);
        noteChange(node, arrayPlug.key());
        PlugKey created;
        Slot& slot = node.obtainSlot(arrayPlug.key(), created);
        if (recorder_ != nullptr) {
            const auto old = std::make_shared<Slot>(slot.clone());
            record([arrayPlug, old](Graph& graph) { graph.restoreSlot(arrayPlug, old->clone()); },
                   [arrayPlug](Graph& graph) {
                       if (graph.canStepOn(*arrayPlug.node())) graph.clearElements(arrayPlug);
                   });
        }
        std::get<std::unique_ptr<NumberMulti>>(slot.content)->clear();
        markDirty(node);
        return;
    }
    for (const int index : elements(arrayPlug)) {
        const Plug element = arrayPlug.element(index);
        if (connectionsBelow(element).empty()) removeElement(element);
    }
}

}  // namespace host::graph
