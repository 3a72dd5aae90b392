#include <algorithm>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/skinSupport.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using graph::NodeRef;
using nodes::WeightRole;

std::string prefixed(const std::string& error) {
    return error.empty() ? error : "skinCluster: " + error;
}

// Create.

/// The joint and all joints below it, parents before children.
void appendSkeleton(const NodeRef& joint, std::vector<NodeRef>& joints) {
    std::vector<graph::Node*> ahead{joint.get()};
    while (!ahead.empty()) {
        graph::Node& next = *ahead.back();
        ahead.pop_back();
        if (!next.isA("joint") || std::find(joints.begin(), joints.end(), next.ref()) != joints.end())
            continue;
        joints.push_back(next.ref());
        ahead.insert(ahead.end(), next.children().rbegin(), next.children().rend());
    }
}

/// The uppermost joint of a joint's skeleton.
NodeRef rootJoint(const NodeRef& joint) {
    graph::Node* root = joint.get();
    while (root->parent() != nullptr && root->parent()->isA("joint"))
        root = root->parent();
    return root->ref();
}

struct Binding {
    std::vector<NodeRef> influences;
    NodeRef shape;
};

/// Sorts the objects of a call into influences and the one mesh.
Found<Binding> bindingOf(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    const bool takesSkeletons = !arguments.isSet("toSelectedBones");
    Found<Binding> binding;
    auto& [influences, shape] = binding.value;
    for (const NodeRef& node : nodesOf(items.value)) {
        const NodeRef mesh = context.graph.shapeOf(node);
        if (mesh != nullptr && mesh->isA("mesh")) {
            if (shape != nullptr) return {{}, "Only one mesh can be bound at a time."};
            shape = mesh;
        } else if (node->isA("joint") && takesSkeletons) {
            appendSkeleton(rootJoint(node), influences);
        } else if (node->isA("transform")) {
            if (std::find(influences.begin(), influences.end(), node) == influences.end())
                influences.push_back(node);
        } else {
            return {{}, context.graph.uniqueName(*node) + " can be neither bound nor an influence."};
        }
    }
    if (influences.empty() || shape == nullptr)
        return {{}, "A skeleton and a mesh to bind to it must be given."};
    return binding;
}

/// Checks the flags that create and edit share.
std::string methodObstacle(const ParsedArguments& arguments) {
    if (arguments.integer("bindMethod") != 0)
        return "Bind methods other than closest distance (0) are not covered.";
    if (arguments.integer("skinMethod") != 0)
        return "Skinning methods other than classic linear (0) are not covered.";
    if (arguments.isSet("maximumInfluences") && arguments.integer("maximumInfluences") < 1)
        return "At least one influence must be allowed.";
    const int normalization = arguments.integer("normalizeWeights");
    if (normalization < 0 || normalization > 2) return "-normalizeWeights takes 0, 1 or 2.";
    return {};
}

/// Sets the settings that are attributes of the node.
void setSettings(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments) {
    const auto set = [&](const char* flag, const char* attribute, double value) {
        if (arguments.isSet(flag)) graph.setNumber(skinCluster->plug(attribute), value);
    };
    set("normalizeWeights", "normalizeWeights", arguments.integer("normalizeWeights"));
    set("maximumInfluences", "maxInfluences", arguments.integer("maximumInfluences"));
    set("obeyMaxInfluences", "maintainMaxInfluences", arguments.boolean("obeyMaxInfluences") ? 1.0 : 0.0);
}

CommandResult create(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    for (const char* flag :
         {"addInfluence", "removeInfluence", "influence", "lockWeights", "weight", "forceNormalizeWeights"}) {
        if (arguments.isSet(flag))
            return CommandResult::failure(std::string("skinCluster: -") + flag + " needs -edit.");
    }
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    const std::string obstacle = methodObstacle(arguments);
    if (!obstacle.empty()) return CommandResult::failure(prefixed(obstacle));
    const Found<Binding> binding = bindingOf(context, arguments);
    if (!binding.ok()) return CommandResult::failure(prefixed(binding.error));
    const NodeRef& shape = binding.value.shape;
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return CommandResult::failure(prefixed(mesh.error));
    if (const NodeRef present = nodes::skinClusterOf(graph, shape))
        return CommandResult::failure("skinCluster: " + graph.uniqueName(*shape) + " is bound already, by " +
                                      present->name() + '.');
    nodes::SkinOptions options;
    options.maxInfluences = arguments.integer("maximumInfluences", options.maxInfluences);
    options.keepsMaxInfluences = arguments.boolean("obeyMaxInfluences", options.keepsMaxInfluences);
    options.dropoff = arguments.number("dropoffRate", options.dropoff);
    const NodeRef skinCluster =
        nodes::createSkinCluster(graph, shape, binding.value.influences, options, name.value);
    setSettings(graph, skinCluster, arguments);
    return CommandResult::success(std::vector<std::string>{skinCluster->name()});
}

// Query.

std::vector<std::string> influenceNames(graph::Graph& graph, const NodeRef& skinCluster, bool weightedOnly) {
    std::vector<int> weighted;
    if (weightedOnly) {
        weighted = nodes::weightRows(skinCluster).influences;
        std::sort(weighted.begin(), weighted.end());
    }
    std::vector<NodeRef> influences;
    for (const nodes::Influence& influence : nodes::influencesOf(skinCluster)) {
        if (!weightedOnly || std::binary_search(weighted.begin(), weighted.end(), influence.index))
            influences.push_back(influence.node);
    }
    return uniqueNames(graph, influences);
}

/// Logical index of an influence by name.
Found<int> namedInfluence(const graph::Graph& graph, const NodeRef& skinCluster, const std::string& name) {
    const Found<NodeRef> node = findOneNode(graph, name);
    if (!node.ok()) return {-1, node.error};
    const int index = nodes::influenceIndex(skinCluster, node.value);
    if (index < 0) return {-1, "skinCluster: " + name + " is no influence of " + skinCluster->name() + '.'};
    return {index, {}};
}

/// @param influence  the argument of -influence; empty if none
CommandResult query(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                    const std::string& influence) {
    const auto number = [&](const char* attribute) { return graph.number(skinCluster->plug(attribute)); };
    if (arguments.isSet("lockWeights")) {
        const Found<int> index = namedInfluence(graph, skinCluster, influence);
        if (!index.ok()) return CommandResult::failure(index.error);
        return CommandResult::success(nodes::isInfluenceLocked(graph, skinCluster, index.value));
    }
    if (arguments.isSet("influence") || arguments.isSet("weightedInfluence"))
        return CommandResult::success(
            influenceNames(graph, skinCluster, arguments.isSet("weightedInfluence")));
    if (arguments.isSet("geometry")) {
        const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
        return CommandResult::success(
            uniqueNames(graph, shape != nullptr ? std::vector<NodeRef>{shape} : std::vector<NodeRef>()));
    }
    if (arguments.isSet("normalizeWeights"))
        return CommandResult::success(static_cast<int>(number("normalizeWeights")));
    if (arguments.isSet("maximumInfluences"))
        return CommandResult::success(static_cast<int>(number("maxInfluences")));
    if (arguments.isSet("obeyMaxInfluences"))
        return CommandResult::success(number("maintainMaxInfluences") != 0.0);
    if (arguments.isSet("skinMethod"))
        return CommandResult::success(static_cast<int>(number("skinningMethod")));
    if (arguments.isSet("bindMethod")) return CommandResult::success(0);
    if (arguments.isSet("dropoffRate")) {
        const std::vector<int> indices = graph.elements(skinCluster->plug("dropoff"));
        return CommandResult::success(
            indices.empty() ? 4.0 : graph.number(skinCluster->plug("dropoff").element(indices.front())));
    }
    return CommandResult::failure("skinCluster: No flag says what to report.");
}

// Edit.

/// Gives a new influence its weights: the same one everywhere, or by distance as when binding.
void weighInfluence(graph::Graph& graph, const NodeRef& skinCluster, int index,
                    const ParsedArguments& arguments) {
    const nodes::BindPose pose = nodes::bindPoseOf(graph, skinCluster);
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

std::string lockInfluence(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                          const std::string& influence) {
    if (influence.empty()) return "skinCluster: -lockWeights needs -influence to say whose.";
    const Found<int> index = namedInfluence(graph, skinCluster, influence);
    if (index.ok())
        nodes::setInfluenceLocked(graph, skinCluster, index.value, arguments.boolean("lockWeights"));
    return index.error;
}

CommandResult edit(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                   const std::string& influence) {
    std::string error = prefixed(methodObstacle(arguments));
    for (const char* flag : {"name", "toSelectedBones", "dropoffRate", "bindMethod"}) {
        if (error.empty() && arguments.isSet(flag))
            error = std::string("skinCluster: -") + flag + " cannot be edited.";
    }
    if (error.empty()) setSettings(graph, skinCluster, arguments);
    for (int use = 0; use < arguments.uses("addInfluence") && error.empty(); ++use)
        error =
            addInfluence(graph, skinCluster, arguments.values("addInfluence", use)[0].toString(), arguments);
    // With new influences, a lock is meant for these.
    if (error.empty() && arguments.isSet("lockWeights") && !arguments.isSet("addInfluence"))
        error = lockInfluence(graph, skinCluster, arguments, influence);
    for (int use = 0; use < arguments.uses("removeInfluence") && error.empty(); ++use)
        error = removeInfluence(graph, skinCluster, arguments.values("removeInfluence", use)[0].toString());
    if (error.empty() && arguments.isSet("forceNormalizeWeights")) normalizeAll(graph, skinCluster);
    return error.empty() ? CommandResult::success() : CommandResult::failure(error);
}

/// The skin cluster of an edit or a query: the named one, or the one that deforms the named object.
Found<NodeRef> namedSkinCluster(graph::Graph& graph, const std::vector<std::string>& words) {
    if (words.size() != 1) return {nullptr, "skinCluster: Exactly one skin cluster must be given."};
    Found<NodeRef> node = findOneNode(graph, words.front());
    return node.ok() ? skinClusterFor(graph, node.value, "skinCluster") : node;
}

CommandResult skinCluster(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isQuery() && !arguments.isEdit()) return create(context, arguments);
    std::vector<std::string> words = arguments.objectNames();
    if (words.empty()) words = uniqueNames(context.graph, nodesOf(context.graph.selection().items()));
    std::string influence = arguments.text("influence");
    // In query mode, -influence may have no name. Then it has taken the skin cluster's name.
    if (arguments.isQuery() && arguments.objects().empty() && !influence.empty())
        words = {std::exchange(influence, {})};
    const Found<NodeRef> node = namedSkinCluster(context.graph, words);
    if (!node.ok()) return CommandResult::failure(node.error);
    return arguments.isQuery() ? query(context.graph, node.value, arguments, influence)
                               : edit(context.graph, node.value, arguments, influence);
}

}  // namespace

void registerSkinClusterCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("n", "name", {kText}).flag("tsb", "toSelectedBones").flag("bm", "bindMethod", {kWhole});
    syntax.flag("sm", "skinMethod", {kWhole}).flag("nw", "normalizeWeights", {kWhole});
    syntax.flag("mi", "maximumInfluences", {kWhole}).flag("omi", "obeyMaxInfluences", {kSwitch});
    syntax.flag("dr", "dropoffRate", {kReal}).multiUseFlag("ai", "addInfluence", {kText});
    syntax.multiUseFlag("ri", "removeInfluence", {kText}).flag("inf", "influence", {kText});
    syntax.flag("lw", "lockWeights", {kSwitch}).flag("wt", "weight", {kReal});
    syntax.flag("fnw", "forceNormalizeWeights", {kSwitch}).flag("wi", "weightedInfluence");
    syntax.flag("g", "geometry").makeQueryWithArguments("influence");
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add(
        "skinCluster", syntax, skinCluster,
        "af after ar afterReference bf before bsh baseShape ch cn cp colorJoints cj dt deformerTools "
        "df dropoff ex exclusive foc frontOfChain gi geometryIndices hmf heatmapFalloff ihs "
        "includeHiddenSelections ibp ignoreBindPose ih ignoreHierarchy ig ignoreSelected jra "
        "jointRadius mjm moveJointsMode multi ns nurbsSamples par parallel pr prune ps "
        "polySmoothness rag recacheBindMatrices rbm remapBase rui removeUnusedInfluence siv "
        "selectInfluenceVerts smt smoothWeights smx smoothWeightsMaxIterations sw split ss suppress "
        "tst toSkeletonAndTransforms ub unbind ubk unbindKeepHistory ug useGeometry uct "
        "useComponentTags vdt voldeform wd weightDistribution");
}

}  // namespace host::commands
