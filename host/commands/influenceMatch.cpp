#include "commands/influenceMatch.h"

#include <limits>
#include <utility>

#include "graph/namespaces.h"
#include "nodes/plugs.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Vec3;
using graph::NodeRef;
using nodes::Influence;

/// What a joint's `side` and `type` mean.
constexpr int kLeft = 1;
constexpr int kRight = 2;
constexpr int kNoLabel = 0;
constexpr int kOtherLabel = 18;

/// What the schemes compare.
struct Traits {
    Vec3 start;
    Vec3 end;  ///< of the bone; the start if there is no joint below
    std::string name{};
    std::string plainName{};  ///< without namespaces
    int side = 0;
    int label = kNoLabel;
    std::string otherLabel{};
};

Vec3 mirrored(Vec3 point, std::optional<int> axis) {
    if (axis) point[*axis] = -point[*axis];
    return point;
}

Traits traitsOf(graph::Graph& graph, const NodeRef& node, std::optional<int> mirrorAxis) {
    Traits traits;
    traits.start = traits.end = mirrored(nodes::worldMatrix(graph, node).row(3), mirrorAxis);
    for (graph::Node* child : node->children()) {
        if (!child->isA("joint")) continue;
        traits.end = mirrored(nodes::worldMatrix(graph, child->ref()).row(3), mirrorAxis);
        break;
    }
    traits.name = node->name();
    traits.plainName = graph::baseName(traits.name);
    if (!node->isA("joint")) return traits;
    traits.side = nodes::choiceAt(graph, node->plug("side"));
    if (mirrorAxis && (traits.side == kLeft || traits.side == kRight))
        traits.side = kLeft + kRight - traits.side;
    traits.label = nodes::choiceAt(graph, node->plug("type"));
    if (traits.label == kOtherLabel) traits.otherLabel = nodes::textAt(graph, node->plug("otherType"));
    return traits;
}

std::vector<Traits> traitsOf(graph::Graph& graph, const std::vector<Influence>& influences,
                             std::optional<int> mirrorAxis) {
    std::vector<Traits> result;
    result.reserve(influences.size());
    for (const Influence& influence : influences)
        result.push_back(traitsOf(graph, influence.node, mirrorAxis));
    return result;
}

/// Position of the candidate with the least `distance`, the first of equal ones.
template <typename Distance>
int nearest(const std::vector<Traits>& candidates, const Distance& distance) {
    int found = -1;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        const double present = distance(candidates[k]);
        if (!(present < least)) continue;
        least = present;
        found = static_cast<int>(k);
    }
    return found;
}

template <typename Condition>
int firstThat(const std::vector<Traits>& candidates, const Condition& isMatch) {
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        if (isMatch(candidates[k])) return static_cast<int>(k);
    }
    return -1;
}

int matchByName(const Traits& wanted, const std::vector<Traits>& candidates) {
    const int exact = firstThat(candidates, [&](const Traits& to) { return to.name == wanted.name; });
    if (exact >= 0) return exact;
    return firstThat(candidates, [&](const Traits& to) { return to.plainName == wanted.plainName; });
}

int matchBy(InfluenceScheme scheme, const Traits& wanted, std::size_t position,
            const std::vector<Traits>& candidates) {
    switch (scheme) {
        case InfluenceScheme::ClosestJoint:
            return nearest(candidates, [&](const Traits& to) { return length(to.start - wanted.start); });
        case InfluenceScheme::ClosestBone:
            return nearest(candidates, [&](const Traits& to) {
                return length(to.start - wanted.start) + length(to.end - wanted.end);
            });
        case InfluenceScheme::Name:
            return matchByName(wanted, candidates);
        case InfluenceScheme::Label:
            if (wanted.label == kNoLabel) return -1;
            return firstThat(candidates, [&](const Traits& to) {
                return to.label == wanted.label && to.side == wanted.side &&
                       to.otherLabel == wanted.otherLabel;
            });
        case InfluenceScheme::OneToOne:
            break;
    }
    return position < candidates.size() ? static_cast<int>(position) : -1;
}

}  // namespace

std::optional<InfluenceScheme> influenceScheme(const std::string& name) {
    if (name == "closestJoint") return InfluenceScheme::ClosestJoint;
    if (name == "closestBone") return InfluenceScheme::ClosestBone;
    if (name == "name") return InfluenceScheme::Name;
    if (name == "label") return InfluenceScheme::Label;
    if (name == "oneToOne") return InfluenceScheme::OneToOne;
    return std::nullopt;
}

std::vector<int> matchInfluences(graph::Graph& graph, const std::vector<Influence>& source,
                                 const std::vector<Influence>& destination,
                                 const std::vector<InfluenceScheme>& schemes, std::optional<int> mirrorAxis) {
    const std::vector<Traits> wanted = traitsOf(graph, source, mirrorAxis);
    const std::vector<Traits> candidates = traitsOf(graph, destination, std::nullopt);
    std::vector<int> matches(source.size(), -1);
    for (const InfluenceScheme scheme : schemes) {
        for (std::size_t k = 0; k < matches.size(); ++k) {
            if (matches[k] < 0) matches[k] = matchBy(scheme, wanted[k], k, candidates);
        }
    }
    return matches;
}

}  // namespace host::commands
