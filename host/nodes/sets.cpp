#include "nodes/sets.h"

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_set>

#include "graph/instances.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

/// One connection into a set's member plugs.
struct Membership {
    graph::Plug member;  // of the set
    graph::Plug source;  // of the node that is in the set
    graph::SelectionItem item;
};

/// Components of an objectGroups element: one component per kind.
std::vector<graph::Component> componentsOf(graph::Graph& graph, const graph::Plug& objectGroup) {
    std::vector<graph::Component> result;
    const auto list =
        graph::dataAs<graph::ComponentListData>(graph.data(childPlug(objectGroup, "objectGrpCompList")));
    for (int entry = 0; list != nullptr && entry < list->size(); ++entry) {
        const graph::Component next = list->entry(entry);
        const auto same = std::find_if(result.begin(), result.end(),
                                       [&](const auto& other) { return other.kind() == next.kind(); });
        if (same != result.end()) {
            same->merge(next);
        } else {
            result.push_back(next);
        }
    }
    return result;
}

void setComponents(graph::Graph& graph, const graph::Plug& objectGroup,
                   const std::vector<graph::Component>& components) {
    auto list = std::make_shared<graph::ComponentListData>();
    for (const graph::Component& component : components) {
        if (!component.empty()) list->append(component);
    }
    graph.setData(childPlug(objectGroup, "objectGrpCompList"), std::move(list));
}

bool isMemberAttribute(const graph::Attribute& attribute) {
    return attribute.longName() == "dagSetMembers" || attribute.longName() == "dnSetMembers";
}

/// Appends the members that a member plug of a set connects: none if it has no connection.
void appendMemberships(graph::Graph& graph, const graph::Plug& member, std::vector<Membership>& result) {
    const graph::Plug source = graph.source(member);
    if (!source) return;
    if (source.attribute().longName() != "objectGroups") {
        result.push_back({member, source, {source.node(), {}, {}}});
        return;
    }
    for (graph::Component& component : componentsOf(graph, source))
        result.push_back({member, source, {source.node(), {}, std::move(component)}});
}

std::vector<Membership> memberships(graph::Graph& graph, const graph::NodeRef& set) {
    std::vector<Membership> result;
    for (const char* name : {"dagSetMembers", "dnSetMembers"}) {
        const graph::Plug array = set->plug(name);
        for (const int index : graph.elements(array))
            appendMemberships(graph, array.element(index), result);
    }
    return result;
}

/// The part of `memberships` that belongs to one node, in the same order. It is found from the node's side:
/// sets may have thousands of members, but a node is in few sets.
std::vector<Membership> membershipsOf(graph::Graph& graph, const graph::NodeRef& set,
                                      const graph::NodeRef& node) {
    std::vector<graph::Plug> plugs;
    for (const auto& entry : node->outgoing()) {
        for (const graph::Link& link : entry.second) {
            if (link.node == set.get() && isMemberAttribute(*link.key.attribute))
                plugs.emplace_back(set, link.key);
        }
    }
    std::sort(plugs.begin(), plugs.end(), [](const graph::Plug& a, const graph::Plug& b) {
        const int order = a.attribute().longName().compare(b.attribute().longName());
        return order != 0 ? order < 0 : a.logicalIndex() < b.logicalIndex();
    });
    std::vector<Membership> result;
    for (const graph::Plug& plug : plugs)
        appendMemberships(graph, plug, result);
    return result;
}

bool overlap(const graph::SelectionItem& a, const graph::SelectionItem& b) {
    if (a.node != b.node) return false;
    if (!a.component || !b.component) return true;
    if (a.component->kind() != b.component->kind()) return false;
    graph::Component rest = *a.component;
    rest.remove(*b.component);
    return rest.count() < a.component->count();
}

std::vector<Membership> overlapping(graph::Graph& graph, const graph::NodeRef& set,
                                    const graph::SelectionItem& item) {
    if (item.node == nullptr) return {};  // memberFor found no shape
    std::vector<Membership> result = membershipsOf(graph, set, item.node);
    result.erase(std::remove_if(result.begin(), result.end(),
                                [&](const Membership& entry) { return !overlap(entry.item, item); }),
                 result.end());
    return result;
}

void connectNext(graph::Graph& graph, const graph::Plug& source, const graph::Plug& array) {
    graph.connect(source, array.element(graph.nextIndex(array)));
}

/// Ends one membership. Its objectGroups element, if any, is removed with the groupId node.
void endMembership(graph::Graph& graph, const graph::Plug& member, const graph::Plug& source) {
    if (graph.source(member) != source) return;
    graph.disconnect(member);
    graph.removeElement(member);
    if (source.attribute().longName() != "objectGroups") return;
    const graph::Plug id = graph.source(childPlug(source, "objectGroupId"));
    if (id) {
        for (const graph::Plug& listed : graph.destinations(id.node()->plug("message"))) {
            graph.disconnect(listed);
            graph.removeElement(listed);
        }
        graph.deleteNodes({id.node()});
    }
    graph.removeElement(source);
}

/// Adds an element to the node's objectGroups for components in this set, connected and numbered.
void addComponents(graph::Graph& graph, const graph::NodeRef& set, const graph::NodeRef& node,
                   const graph::Component& component) {
    const graph::Plug groups = childPlug(node->plug("instObjGroups").element(0), "objectGroups");
    const graph::Plug group = groups.element(graph.nextIndex(groups));
    setComponents(graph, group, {component});
    const graph::NodeRef id = graph.createNode(*graph.types().find("groupId"));
    graph.connect(id->plug("groupId"), childPlug(group, "objectGroupId"));
    connectNext(graph, id->plug("message"), set->plug("groupNodes"));
    connectNext(graph, group, set->plug("dagSetMembers"));
}

struct Restriction {
    const char* attribute;
    std::optional<graph::ComponentKind> kind;  // no object of this host has edit points
    const char* what;
};
constexpr Restriction kRestrictions[] = {{"verticesOnlySet", graph::ComponentKind::Vertex, "vertices"},
                                         {"edgesOnlySet", graph::ComponentKind::Edge, "edges"},
                                         {"facetsOnlySet", graph::ComponentKind::Face, "faces"},
                                         {"editPointsOnlySet", std::nullopt, "edit points"}};

/// Why a set, by what it is made for, cannot hold an item; empty if it can.
std::string restrictionProblem(graph::Graph& graph, const graph::NodeRef& set,
                               const graph::SelectionItem& item) {
    for (const Restriction& restriction : kRestrictions) {
        if (graph.number(set->plug(restriction.attribute)) == 0.0) continue;
        if (item.component && item.component->kind() == restriction.kind) continue;
        return graph::itemName(graph, item) + " cannot be in " + set->name() + ", which holds only " +
               restriction.what;
    }
    return {};
}

void addMember(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item) {
    const graph::NodeRef& node = item.node;
    if (!item.component) {
        // The whole object replaces its components.
        removeFromSet(graph, set, item);
        if (node->type().isDag()) {
            connectNext(graph, node->plug("instObjGroups").element(0), set->plug("dagSetMembers"));
            if (graph.hasInstances()) shadeInstances(graph, node);
        } else {
            connectNext(graph, node->plug("message"), set->plug("dnSetMembers"));
        }
        return;
    }
    for (const Membership& entry : membershipsOf(graph, set, node)) {
        if (!entry.item.component) continue;
        std::vector<graph::Component> components = componentsOf(graph, entry.source);
        const auto same = std::find_if(components.begin(), components.end(), [&](const auto& other) {
            return other.kind() == item.component->kind();
        });
        if (same != components.end()) {
            same->merge(*item.component);
        } else {
            components.push_back(*item.component);
        }
        setComponents(graph, entry.source, components);
        return;
    }
    addComponents(graph, set, node, *item.component);
}

std::vector<graph::NodeRef> rivals(graph::Graph& graph, const graph::NodeRef& set) {
    const graph::NodeRef partition = partitionOf(graph, set);
    std::vector<graph::NodeRef> others =
        partition != nullptr ? setsIn(graph, partition) : std::vector<graph::NodeRef>();
    others.erase(std::remove(others.begin(), others.end(), set), others.end());
    return others;
}

}  // namespace

std::vector<graph::SelectionItem> members(graph::Graph& graph, const graph::NodeRef& set) {
    std::vector<graph::SelectionItem> items;
    std::unordered_set<const graph::Node*> whole;
    for (Membership& entry : memberships(graph, set)) {
        if (entry.item.isWholeNode() && !whole.insert(entry.item.node.get()).second) continue;
        items.push_back(std::move(entry.item));
    }
    return items;
}

std::vector<graph::SelectionItem> membersFrom(graph::Graph& graph, const graph::NodeRef& set,
                                              const graph::NodeRef& node) {
    std::vector<graph::SelectionItem> items;
    for (Membership& entry : membershipsOf(graph, set, node))
        items.push_back(std::move(entry.item));
    return items;
}

graph::SelectionItem memberFor(const graph::Graph& graph, const graph::NodeRef& set,
                               const graph::SelectionItem& item) {
    if (!set->isA("shadingEngine") || !item.isWholeNode()) return item;
    return {shapeOf(graph, item.node), {}, {}};
}

bool isMember(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item) {
    const graph::SelectionItem wanted = memberFor(graph, set, item);
    for (const Membership& entry : overlapping(graph, set, wanted)) {
        if (!entry.item.component) return true;
        if (!wanted.component) continue;
        graph::Component rest = *wanted.component;
        rest.remove(*entry.item.component);
        if (rest.empty()) return true;
    }
    return false;
}

std::vector<graph::NodeRef> setsOf(graph::Graph& graph, const graph::NodeRef& node) {
    std::vector<graph::NodeRef> sets;
    for (const graph::Connection& connection : graph.connections(*node)) {
        const graph::NodeRef& set = connection.destination.node();
        if (!isMemberAttribute(connection.destination.attribute())) continue;
        if (std::find(sets.begin(), sets.end(), set) == sets.end()) sets.push_back(set);
    }
    std::sort(sets.begin(), sets.end(), [](const auto& a, const auto& b) { return a->id() < b->id(); });
    return sets;
}

std::string addToSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item) {
    if (item.plug) return "A plug cannot be in " + set->name();
    const graph::SelectionItem member = memberFor(graph, set, item);
    if (member.node == nullptr) return item.node->name() + " has no shape that could be in " + set->name();
    if (isMember(graph, set, member)) return {};
    if (std::string problem = restrictionProblem(graph, set, member); !problem.empty()) return problem;
    for (const graph::NodeRef& other : rivals(graph, set)) {
        if (!overlapping(graph, other, member).empty())
            return member.node->name() + " is in " + other->name() + ", which shares a partition with " +
                   set->name();
    }
    addMember(graph, set, member);
    return {};
}

bool removeFromSet(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item) {
    const graph::SelectionItem member = memberFor(graph, set, item);
    const std::vector<Membership> found = overlapping(graph, set, member);
    for (const Membership& entry : found) {
        if (!member.component) {
            endMembership(graph, entry.member, entry.source);
            continue;
        }
        std::vector<graph::Component> rest;
        if (entry.item.component) {
            rest = componentsOf(graph, entry.source);
        } else {
            const graph::ComponentKind kind = member.component->kind();
            const int count = graph.componentCount(member.node, kind);
            if (count > 0) rest.emplace_back(kind, graph::Run{0, count - 1});
        }
        for (graph::Component& component : rest) {
            if (component.kind() == member.component->kind()) component.remove(*member.component);
        }
        rest.erase(std::remove_if(rest.begin(), rest.end(), [](const auto& part) { return part.empty(); }),
                   rest.end());
        if (entry.item.component && !rest.empty()) {
            setComponents(graph, entry.source, rest);
            continue;
        }
        endMembership(graph, entry.member, entry.source);
        for (const graph::Component& component : rest)
            addComponents(graph, set, member.node, component);
    }
    return !found.empty();
}

std::string forceElement(graph::Graph& graph, const graph::NodeRef& set, const graph::SelectionItem& item) {
    const graph::SelectionItem member = memberFor(graph, set, item);
    if (!item.plug && member.node != nullptr) {
        for (const graph::NodeRef& other : rivals(graph, set))
            removeFromSet(graph, other, member);
    }
    return addToSet(graph, set, item);
}

namespace {

void shadeShape(graph::Graph& graph, const graph::NodeRef& shape) {
    const int count = static_cast<int>(std::min(graph::pathCount(*shape), graph::kMaxPaths));
    const graph::Plug instances = shape->plug("instObjGroups");
    for (const graph::NodeRef& set : setsOf(graph, shape)) {
        if (!set->isA("shadingEngine")) continue;
        std::set<int> shaded;
        for (const Membership& entry : membershipsOf(graph, set, shape)) {
            if (entry.item.component) continue;
            const int number = entry.source.isElement() ? entry.source.logicalIndex() : 0;
            if (number < count) {
                shaded.insert(number);
            } else {
                endMembership(graph, entry.member, entry.source);
            }
        }
        for (int number = 0; !shaded.empty() && number < count; ++number) {
            if (shaded.count(number) == 0)
                connectNext(graph, instances.element(number), set->plug("dagSetMembers"));
        }
    }
}

}  // namespace

void shadeInstances(graph::Graph& graph, const graph::NodeRef& node) {
    graph::visitHierarchy(*node, [&](graph::Node& below) {
        if (below.isA("shape")) shadeShape(graph, below.ref());
    });
}

graph::NodeRef partitionOf(const graph::Graph& graph, const graph::NodeRef& set) {
    for (const graph::Plug& fed : graph.destinations(set->plug("partition"))) {
        if (fed.node()->isA("partition")) return fed.node();
    }
    return nullptr;
}

void addToPartition(graph::Graph& graph, const graph::NodeRef& partition, const graph::NodeRef& set) {
    if (partitionOf(graph, set) == partition) return;
    connectNext(graph, set->plug("partition"), partition->plug("sets"));
}

std::vector<graph::NodeRef> setsIn(graph::Graph& graph, const graph::NodeRef& partition) {
    std::vector<graph::NodeRef> sets;
    const graph::Plug array = partition->plug("sets");
    for (const int index : graph.elements(array)) {
        if (const graph::Plug source = graph.source(array.element(index))) sets.push_back(source.node());
    }
    return sets;
}

}  // namespace host::nodes
