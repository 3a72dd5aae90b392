#include "graph/names.h"

#include <algorithm>
#include <cctype>

#include "graph/instances.h"
#include "graph/namespaces.h"
#include "text/numbers.h"

namespace host::graph {

namespace {

constexpr char kColon = ':';  // between a namespace and what is in it
constexpr std::size_t kFewParents = 16;

bool hasWildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t from = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, from)) {
        parts.push_back(text.substr(from, at - from));
        from = at + 1;
    }
    parts.push_back(text.substr(from));
    return parts;
}

/// Whether a part of a path names a node: by its whole name, or by its name in the current namespace.
bool isNamed(const Graph& graph, const Node& node, std::string_view part) {
    if (matchesPattern(node.name(), withoutRoot(part), kColon)) return true;
    const std::string& current = graph.currentNamespace();
    return !current.empty() && part.front() != ':' && node.name().size() > current.size() &&
           isWithin(namespaceOf(node.name()), current) &&
           matchesPattern(std::string_view(node.name()).substr(current.size() + 1), part, kColon);
}

/// The node and those above it that a path names up to the bar before the node. Empty if it names others.
std::vector<Node*> namedChain(const Graph& graph, Node& node, std::string_view above) {
    return chainAbove(node, above, [&](const Node& at, std::string_view part, std::vector<Node*>& parents) {
        const auto add = [&](Node* parent) {
            if (parent != nullptr && !part.empty() && isNamed(graph, *parent, part))
                parents.push_back(parent);
        };
        if (at.otherParents().size() < kFewParents || hasWildcard(part)) {
            visitParents(at, add);
            return;
        }
        // Many parents are not searched, but found by the name.
        const std::string& current = graph.currentNamespace();
        std::vector<NodeRef> named = graph.nodesNamed(withoutRoot(part));
        if (!current.empty() && part.front() != ':') {
            const auto more = graph.nodesNamed(current + ':' + std::string(part));
            named.insert(named.end(), more.begin(), more.end());
        }
        for (const NodeRef& parent : named) {
            if (graph.hasParent(at, parent.get())) add(parent.get());
        }
    });
}

/// One part of an attribute text: "iti[6000]", "vt[0:7]", "weight".
struct PathPart {
    std::string_view name;
    bool hasIndex = false;
    int first = 0;
    int last = 0;
};

bool parsePart(std::string_view text, PathPart& part) {
    const std::size_t open = text.find('[');
    part.name = text.substr(0, open);
    if (part.name.empty()) return false;
    if (open == std::string_view::npos) return true;
    if (text.back() != ']') return false;
    const auto range = text::readIndexRange(text.substr(open + 1, text.size() - open - 2));
    if (!range) return false;
    part.hasIndex = true;
    part.first = range->first;
    part.last = range->last;
    return true;
}

const Attribute* descendant(const Attribute& above, std::string_view name) {
    if (const Attribute* direct = above.child(name)) return direct;
    for (const auto& child : above.children()) {
        if (const Attribute* found = descendant(*child, name)) return found;
    }
    return nullptr;
}

/// Follows parsed parts down from a node's attribute, and sets the indices that are given.
PlugMatch followParts(const NodeRef& node, const std::vector<std::string_view>& texts) {
    PlugMatch match;
    PlugKey key;
    int last = -1;
    for (std::size_t k = 0; k < texts.size(); ++k) {
        PathPart part;
        if (!parsePart(texts[k], part)) return {};
        const PlugKey* alias = k == 0 && !part.hasIndex ? node->aliases().find(part.name) : nullptr;
        if (alias != nullptr) {
            key = *alias;
            last = Plug(node, key).logicalIndex();
            continue;
        }
        const Attribute* next =
            k == 0 ? node->findAttribute(part.name) : descendant(*key.attribute, part.name);
        if (next == nullptr || (part.hasIndex && !next->isArray())) return {};
        // Only the last part may leave its own index open. Every other missing index is 0.
        const bool isLast = k + 1 == texts.size();
        key.attribute = next;
        const bool isOpen = next->isArray() && !part.hasIndex && isLast;
        key.depth = static_cast<std::uint8_t>(next->arrayDepth() - (isOpen ? 1 : 0));
        last = -1;
        if (part.hasIndex) {
            if (!isLast && part.first != part.last) return {};
            key.indices[static_cast<std::size_t>(next->arrayDepth() - 1)] = part.first;
            last = part.last;
        }
    }
    match.plug = Plug(node, key);
    match.last = last >= 0 ? last : match.plug.logicalIndex();
    match.ok = true;
    return match;
}

/// Position of the dot that ends the node's name.
std::size_t nodeEnd(std::string_view name) {
    return name.find('.');
}

NameMatches componentMatches(Graph& graph, const std::vector<Instance>& places, const ComponentWord& word) {
    NameMatches matches;
    for (const Instance& place : places) {
        const NodeRef shape = graph.shapeOf(place.node->ref());
        if (shape == nullptr) continue;
        const std::size_t path =
            shape.get() == place.node || place.number == 0 ? place.number : childOf(place, *shape).number;
        const int count = graph.componentCount(shape, word.kind);
        if (word.all) {
            matches.items.push_back({shape, {}, Component::complete(word.kind, count), path});
        } else if (word.run.first < count) {
            matches.items.push_back(
                {shape,
                 {},
                 Component(word.kind, {word.run.first, std::min(word.run.last, count - 1)}),
                 path});
        }
    }
    return matches;
}

}  // namespace

std::string NameMatches::errorText(std::string_view name) const {
    const char* text = failure == NameFailure::Ambiguous ? "More than one object matches name: "
                                                         : "No object matches name: ";
    return text + std::string(name);
}

bool matchesPattern(std::string_view text, std::string_view pattern, char barrier) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (t < text.size()) {
        const bool isBarrier = text[t] == barrier;
        if (p < pattern.size() &&
            ((pattern[p] == '?' && !isBarrier) || (pattern[p] != '*' && pattern[p] == text[t]))) {
            ++t;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = t;
        } else if (star != std::string_view::npos && text[resume] != barrier) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

bool isLegalName(std::string_view name) {
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name.front())) != 0) return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        return c == '_' ||
               (std::isalnum(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 128);
    });
}

std::vector<NodeRef> findNodes(const Graph& graph, std::string_view path) {
    const std::size_t bar = path.rfind('|');
    const std::string_view leaf = path.substr(bar + 1);
    std::vector<NodeRef> result;
    if (withoutRoot(leaf).empty()) return result;
    const auto add = [&](const std::vector<NodeRef>& candidates) {
        for (const NodeRef& node : candidates) {
            if (!isNamed(graph, *node, leaf)) continue;
            const bool isPath = bar != std::string_view::npos;
            const bool isMeant =
                !isPath || (node->type().isDag() && !namedChain(graph, *node, path.substr(0, bar)).empty());
            if (isMeant) result.push_back(node);
        }
    };
    if (hasWildcard(leaf)) {
        add(graph.nodes());
        return result;
    }
    // What the current namespace has goes before the namesakes in the root.
    const std::string& current = graph.currentNamespace();
    if (!current.empty() && leaf.front() != ':') add(graph.nodesNamed(current + ':' + std::string(leaf)));
    if (result.empty()) add(graph.nodesNamed(withoutRoot(leaf)));
    return result;
}

std::vector<Instance> findPlaces(const Graph& graph, std::string_view path) {
    std::vector<Instance> places;
    InstanceNumbers numbers;
    for (const NodeRef& node : findNodes(graph, path)) {
        Instance place{node.get(), 0};
        if (graph.hasInstances()) place = instanceOn(graph, *node, path, numbers);
        if (place.number < kMaxPaths) places.push_back(place);
    }
    return places;
}

NodeRef findNode(const Graph& graph, std::string_view path) {
    if (hasWildcard(path)) return nullptr;
    const std::vector<NodeRef> found = findNodes(graph, path);
    return found.size() == 1 ? found.front() : nullptr;
}

Instance instanceOn(const Graph& graph, Node& node, std::string_view path, InstanceNumbers& numbers) {
    const std::size_t bar = path.rfind('|');
    if (bar == std::string_view::npos || !isInstanced(node)) return {&node, 0};
    const std::vector<Node*> chain = namedChain(graph, node, path.substr(0, bar));
    return chain.empty() ? Instance{&node, 0} : numbers.at(chain);
}

PlugMatch findOwnPlug(const NodeRef& node, std::string_view attributeText) {
    PlugMatch match = followParts(node, split(attributeText, '.'));
    if (match.ok) return match;
    // What is only known from a file has the whole text as its name.
    const Attribute* kept = node->findKept(attributeText);
    return kept != nullptr ? PlugMatch{Plug(node, kept), -1, true} : match;
}

PlugMatch findPlug(const Graph& graph, const NodeRef& node, std::string_view attributeText) {
    PlugMatch match = findOwnPlug(node, attributeText);
    if (match.ok || !node->type().isDag()) return match;
    const NodeRef shape = graph.shapeOf(node);
    return shape != nullptr && shape != node ? findOwnPlug(shape, attributeText) : match;
}

PlugMatch findPlug(const Graph& graph, std::string_view name) {
    const std::size_t dot = nodeEnd(name);
    if (dot == std::string_view::npos) return {};
    const NodeRef node = findNode(graph, name.substr(0, dot));
    return node != nullptr ? findPlug(graph, node, name.substr(dot + 1)) : PlugMatch();
}

NameMatches findAll(Graph& graph, std::string_view name) {
    NameMatches matches;
    const std::size_t dot = nodeEnd(name);
    const std::vector<Instance> places = findPlaces(graph, name.substr(0, dot));
    if (places.size() > 1 && !hasWildcard(name.substr(0, dot))) {
        matches.failure = NameFailure::Ambiguous;
        return matches;
    }
    if (dot == std::string_view::npos) {
        for (const Instance& place : places)
            matches.items.push_back({place.node->ref(), {}, {}, place.number});
    } else if (const auto word = parseMeshComponentWord(name.substr(dot + 1))) {
        matches = componentMatches(graph, places, *word);
    } else {
        for (const Instance& place : places) {
            const PlugMatch match = findPlug(graph, place.node->ref(), name.substr(dot + 1));
            if (!match.ok) continue;
            const NodeRef& owner = match.plug.node();
            const std::size_t path =
                owner.get() == place.node || place.number == 0 ? place.number : childOf(place, *owner).number;
            matches.items.push_back({owner, match.plug, {}, path});
        }
    }
    if (matches.items.empty()) matches.failure = NameFailure::NoMatch;
    return matches;
}

}  // namespace host::graph
