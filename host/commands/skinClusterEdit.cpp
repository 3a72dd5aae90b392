#include "commands/skinClusterEdit.h"

#include <algorithm>
#include <utility>

#include "commands/skinSupport.h"

namespace host::commands {

namespace {

using graph::NodeRef;
using nodes::WeightRole;

/// Gives a new influence its weights: the same one everywhere, or by distance as when binding.
void weighInfluence(graph::Graph& graph, const NodeRef& skinCluster, int index,
                    const ParsedArguments& arguments) {
    nodes::BindPose pose = nodes::bindPoseOf(graph, skinCluster);
    pose.dropoff = arguments.number("dropoffRate", pose.dropoff);
    const int maximum = static_cast<int>(graph.number(skinCluster->plug("maxInfluences")));
    WeightEditor editor(graph, skinCluster, true);
    const auto& influences = editor.influences();
    const auto position = static_cast<std::size_t>(
        std::lower_bound(influences.begin(), influences.end(), index) - influences.begin());
    for (int vertex = 0; vertex < static_cast<int>(pose.vertices.size()); ++vertex) {
        std::vector<double> weights = editor.weights(vertex);
        std::vector<WeightRole> roles(weights.size(), WeightRole::Free);
        weights[position] =
            arguments.isSet("weight")
                ? arguments.number("weight")
                : nodes::closestWeights(pose.distances(vertex), pose.dropoff, maximum)[position];
        roles[position] = WeightRole::Given;
        if (weights[position] != 0.0) editor.set(vertex, std::move(weights), std::move(roles));
    }
    editor.write();
}

std::string addInfluence(graph::Graph& graph, const NodeRef& skinCluster, const std::string& name,
                         const ParsedArguments& arguments) {
    const Found<NodeRef> node = findOneNode(graph, name);
    if (!node.ok()) return node.error;
    if (!node.value->isA("transform") || graph.shapeOf(node.value) != nullptr)
        return "skinCluster: Influences other than joints and empty transforms are not covered.";
    if (nodes::influenceIndex(skinCluster, node.value) >= 0)
        return "skinCluster: " + name + " is an influence of " + skinCluster->name() + " already.";
    const int index = nodes::addInfluence(graph, skinCluster, node.value);
    if (arguments.isSet("dropoffRate"))
        graph.setNumber(skinCluster->plug("dropoff").element(index), arguments.number("dropoffRate"));
    weighInfluence(graph, skinCluster, index, arguments);
    if (arguments.isSet("lockWeights"))
        nodes::setInfluenceLocked(graph, skinCluster, index, arguments.boolean("lockWeights"));
    return {};
}

std::string removeInfluence(graph::Graph& graph, const NodeRef& skinCluster, const std::string& name) {
    const Found<int> index = namedInfluence(graph, skinCluster, name);
    if (!index.ok()) return index.error;
    if (nodes::influencesOf(skinCluster).size() == 1)
        return "skinCluster: The last influence cannot be removed.";
    nodes::removeInfluence(graph, skinCluster, index.value);
    return {};
}

void normalizeAll(graph::Graph& graph, const NodeRef& skinCluster) {
    WeightEditor editor(graph, skinCluster, true);
    for (const int vertex : nodes::weightRows(skinCluster).vertices) {
        std::vector<double> weights = editor.weights(vertex);
        std::vector<WeightRole> roles(weights.size(), WeightRole::Free);
        editor.set(vertex, std::move(weights), std::move(roles));
    }
    editor.write();
}

/// Selects the vertices with a weight of an influence, besides what is selected.
std::string selectVertices(graph::Graph& graph, const NodeRef& skinCluster, const std::string& name) {
    const Found<int> index = namedInfluence(graph, skinCluster, name);
    if (!index.ok()) return index.error;
    const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
    if (shape == nullptr) return "skinCluster: " + skinCluster->name() + " deforms nothing.";
    std::vector<int> vertices;
    nodes::forEachWeightRow(skinCluster, [&](int vertex, const graph::NumberMulti& weights) {
        const double* weight = weights.find(index.value);
        if (weight != nullptr && *weight != 0.0) vertices.push_back(vertex);
    });
    if (vertices.empty()) return {};
    graph::Selection selection = graph.selection();
    selection.add(
        {shape, {}, graph::Component::fromIndices(graph::ComponentKind::Vertex, std::move(vertices))});
    graph.select(std::move(selection));
    return {};
}

/// Deletes the node. The transform of the shape can be moved again.
void unbind(graph::Graph& graph, const NodeRef& skinCluster) {
    const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
    graph.deleteNodes({skinCluster});
    if (shape != nullptr && shape->parent() != nullptr) nodes::setPlaceLocked(graph, *shape->parent(), false);
}

/// What is set for the one influence that -influence names: its lock and its dropoff. With new influences,
/// both are meant for these.
std::string editInfluence(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                          const std::string& influence) {
    const bool setsLock = arguments.isSet("lockWeights");
    if (arguments.isSet("addInfluence") || (!setsLock && !arguments.isSet("dropoffRate"))) return {};
    if (influence.empty())
        return std::string("skinCluster: -") + (setsLock ? "lockWeights" : "dropoffRate") +
               " needs -influence to say whose.";
    const Found<int> index = namedInfluence(graph, skinCluster, influence);
    if (!index.ok()) return index.error;
    if (setsLock)
        nodes::setInfluenceLocked(graph, skinCluster, index.value, arguments.boolean("lockWeights"));
    if (arguments.isSet("dropoffRate"))
        graph.setNumber(skinCluster->plug("dropoff").element(index.value), arguments.number("dropoffRate"));
    return {};
}

}  // namespace

std::string skinSettingsObstacle(const ParsedArguments& arguments) {
    if (arguments.integer("bindMethod") != 0)
        return "skinCluster: Bind methods other than closest distance (0) are not covered.";
    if (arguments.isSet("maximumInfluences") && arguments.integer("maximumInfluences") < 1)
        return "skinCluster: At least one influence must be allowed.";
    // Also what is no number is refused.
    if (arguments.isSet("dropoffRate") && !(arguments.number("dropoffRate") >= 0.0))
        return "skinCluster: -dropoffRate takes a number from 0 on.";
    const double weight = arguments.number("weight");
    if (!(weight >= 0.0 && weight <= 1.0)) return "skinCluster: -weight takes a number from 0 to 1.";
    const auto isWithin = [&](const char* flag, int last) {
        return arguments.integer(flag) >= 0 && arguments.integer(flag) <= last;
    };
    if (!isWithin("skinMethod", 2)) return "skinCluster: -skinMethod takes 0, 1 or 2.";
    if (!isWithin("normalizeWeights", 2)) return "skinCluster: -normalizeWeights takes 0, 1 or 2.";
    if (!isWithin("weightDistribution", 1)) return "skinCluster: -weightDistribution takes 0 or 1.";
    return {};
}

void setSkinSettings(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments) {
    const auto set = [&](const char* flag, const char* attribute, double value) {
        if (arguments.isSet(flag)) graph.setNumber(skinCluster->plug(attribute), value);
    };
    set("normalizeWeights", "normalizeWeights", arguments.integer("normalizeWeights"));
    set("weightDistribution", "weightDistribution", arguments.integer("weightDistribution"));
    set("skinMethod", "skinningMethod", arguments.integer("skinMethod"));
    set("maximumInfluences", "maxInfluences", arguments.integer("maximumInfluences"));
    set("obeyMaxInfluences", "maintainMaxInfluences", arguments.boolean("obeyMaxInfluences") ? 1.0 : 0.0);
}

Found<int> namedInfluence(const graph::Graph& graph, const NodeRef& skinCluster, const std::string& name) {
    const Found<NodeRef> node = findOneNode(graph, name);
    if (!node.ok()) return {-1, node.error};
    const int index = nodes::influenceIndex(skinCluster, node.value);
    if (index < 0) return {-1, "skinCluster: " + name + " is no influence of " + skinCluster->name() + '.'};
    return {index, {}};
}

std::string editSkinCluster(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                            const std::string& influence) {
    std::string error = skinSettingsObstacle(arguments);
    for (const char* flag : {"name", "toSelectedBones", "bindMethod", "removeUnusedInfluence"}) {
        if (error.empty() && arguments.isSet(flag))
            error = std::string("skinCluster: -") + flag + " cannot be edited.";
    }
    if (error.empty()) setSkinSettings(graph, skinCluster, arguments);
    for (int use = 0; use < arguments.uses("addInfluence") && error.empty(); ++use)
        error =
            addInfluence(graph, skinCluster, arguments.values("addInfluence", use)[0].toString(), arguments);
    if (error.empty()) error = editInfluence(graph, skinCluster, arguments, influence);
    for (int use = 0; use < arguments.uses("removeInfluence") && error.empty(); ++use)
        error = removeInfluence(graph, skinCluster, arguments.values("removeInfluence", use)[0].toString());
    if (error.empty() && arguments.isSet("forceNormalizeWeights")) normalizeAll(graph, skinCluster);
    if (error.empty() && arguments.isSet("selectInfluenceVerts"))
        error = selectVertices(graph, skinCluster, arguments.text("selectInfluenceVerts"));
    if (error.empty() && arguments.isSet("unbind")) unbind(graph, skinCluster);
    return error;
}

}  // namespace host::commands
