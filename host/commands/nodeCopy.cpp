#include "commands/nodeCopy.h"

#include <unordered_map>
#include <unordered_set>

#include "graph/names.h"
#include "graph/numberMulti.h"
#include "scene/fileTypes.h"

namespace host::commands {

namespace {

using graph::Attribute;
using graph::Plug;
using graph::Slot;

graph::AttributeSpec specOf(const Attribute& attribute) {
    graph::AttributeSpec spec = attribute.spec();
    for (const auto& child : attribute.children())
        spec.children.push_back(specOf(*child));
    return spec;
}

void copyNumbers(graph::Graph& graph, const graph::NumberMulti& numbers, const Plug& to) {
    for (const int index : numbers.indices()) {
        const double* values = numbers.find(index);
        const Plug element = to.element(index);
        if (!element.isCompound()) {
            graph.setNumber(element, values[0]);
            continue;
        }
        for (int part = 0; part < numbers.width(); ++part)
            graph.setNumber(element.child(part), values[part]);
    }
}

void copySlot(graph::Graph& graph, const Slot& slot, const Plug& to) {
    if (const auto* number = std::get_if<double>(&slot.content)) {
        graph.setNumber(to, *number);
    } else if (const auto* data = std::get_if<graph::DataPtr>(&slot.content)) {
        graph.setData(to, *data);
    } else if (const auto* numbers = std::get_if<std::unique_ptr<graph::NumberMulti>>(&slot.content)) {
        copyNumbers(graph, **numbers, to);
    } else if (const auto* children = std::get_if<std::unique_ptr<Slot::Children>>(&slot.content)) {
        for (std::size_t k = 0; k < (**children).size(); ++k)
            copySlot(graph, (**children)[k], to.child(static_cast<int>(k)));
    } else if (const auto* multi = std::get_if<std::unique_ptr<graph::ElementMulti>>(&slot.content)) {
        for (const auto& [index, element] : (**multi).elements) {
            graph.createElement(to.element(index));
            copySlot(graph, *element, to.element(index));
        }
    }
}

/// The plug of `to` that corresponds to one of `from`.
Plug counterpart(const graph::NodeRef& to, const graph::PlugKey& key) {
    const Attribute& root = *key.attribute->path().front();
    if (!root.isDynamic() && !root.isKept()) return Plug(to, key);
    graph::PlugKey own = key;
    own.attribute = to->findAttribute(key.attribute->longName());
    return own.attribute != nullptr ? Plug(to, own) : Plug();
}

void copyIncoming(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to) {
    for (const auto& entry : from->incoming()) {
        const Plug source(from, entry.first);
        const Plug target = counterpart(to, entry.first);
        if (!target || source.isArray()) continue;
        if (source.isNumber()) graph.setNumber(target, graph.number(source));
        if (source.attribute().kind() == graph::ValueKind::Typed) graph.setData(target, graph.data(source));
        for (const auto& child : source.attribute().children()) {
            const Plug part = source.child(*child);
            const Plug targetPart = target.child(child->ordinal());
            if (part.isNumber()) graph.setNumber(targetPart, graph.number(part));
        }
    }
}

/// Whether a connection brings a node a value, and not its place in a set.
bool feeds(const graph::Connection& connection, const graph::NodeRef& node) {
    return connection.destination.node() == node &&
           connection.destination.attribute().path().front()->longName() != "instObjGroups";
}

}  // namespace

void copyNodeContent(graph::Graph& graph, const graph::NodeRef& from, const graph::NodeRef& to) {
    for (const Attribute* attribute : from->attributes()) {
        if (attribute == nullptr || attribute->isOutput() || attribute->longName() == "instObjGroups")
            continue;
        const Attribute* own = attribute->isDynamic() || attribute->isKept()
                                   ? &graph.addAttribute(*to, specOf(*attribute))
                                   : attribute;
        const auto ordinal = static_cast<std::size_t>(attribute->ordinal());
        if (ordinal < from->slots().size()) copySlot(graph, from->slots()[ordinal], Plug(to, own));
    }
    copyIncoming(graph, from, to);
    for (const auto& [key, state] : from->states()) {
        if (const Plug plug = counterpart(to, key)) graph.setState(plug, state);
    }
    for (const auto& [alias, key] : from->aliases()) {
        if (const Plug plug = counterpart(to, key)) graph.setAlias(plug, alias);
    }
}

void connectInputs(graph::Graph& graph, const NodeCopies& copies) {
    std::unordered_map<const graph::Node*, graph::NodeRef> copyOf;
    for (const auto& [original, copy] : copies)
        copyOf.emplace(original.get(), copy);
    for (const auto& [original, copy] : copies) {
        for (const graph::Connection& connection : graph.connections(*original)) {
            if (!feeds(connection, original)) continue;
            const Plug target = counterpart(copy, connection.destination.key());
            const auto copied = copyOf.find(connection.source.node().get());
            const Plug source = copied == copyOf.end() ? connection.source
                                                       : counterpart(copied->second, connection.source.key());
            if (source && target) graph.connect(source, target);
        }
    }
}

std::string copyUpstream(graph::Graph& graph, NodeCopies& copies) {
    std::unordered_set<const graph::Node*> seen;
    for (const auto& copied : copies)
        seen.insert(copied.first.get());
    for (std::size_t k = 0; k < copies.size(); ++k) {
        const graph::NodeRef original = copies[k].first;
        for (const graph::Connection& connection : graph.connections(*original)) {
            const graph::NodeRef& node = connection.source.node();
            if (!feeds(connection, original) || scene::isDefaultNode(*node) ||
                !seen.insert(node.get()).second)
                continue;
            if (node->type().isDag())
                return "'" + node->name() + "' feeds '" + original->name() +
                       "'. Copying DAG objects upstream is not covered";
            const graph::NodeRef copy = graph.createNode(node->type(), graph.nextName(node->name()));
            copyNodeContent(graph, node, copy);
            copies.emplace_back(node, copy);
        }
    }
    return {};
}

}  // namespace host::commands
