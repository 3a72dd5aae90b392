#include <algorithm>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/skinClusterEdit.h"
#include "commands/skinSupport.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using graph::NodeRef;

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

CommandResult create(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    for (const char* flag : {"addInfluence", "removeInfluence", "influence", "lockWeights", "weight",
                             "forceNormalizeWeights", "selectInfluenceVerts", "unbind", "useGeometry"}) {
        if (arguments.isSet(flag))
            return CommandResult::failure(std::string("skinCluster: -") + flag + " needs -edit.");
    }
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    std::string obstacle = skinSettingsObstacle(arguments);
    if (!obstacle.empty()) return CommandResult::failure(std::move(obstacle));
    const Found<Binding> binding = bindingOf(context, arguments);
    if (!binding.ok()) return CommandResult::failure("skinCluster: " + binding.error);
    const NodeRef& shape = binding.value.shape;
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return CommandResult::failure("skinCluster: " + mesh.error);
    if (const NodeRef present = nodes::skinClusterOf(graph, shape))
        return CommandResult::failure("skinCluster: " + graph.uniqueName(*shape) + " is bound already, by " +
                                      present->name() + '.');
    nodes::SkinOptions options;
    options.maxInfluences = arguments.integer("maximumInfluences", options.maxInfluences);
    options.keepsMaxInfluences = arguments.boolean("obeyMaxInfluences", options.keepsMaxInfluences);
    options.dropoff = arguments.number("dropoffRate", options.dropoff);
    options.leavesOutUnused = arguments.boolean("removeUnusedInfluence");
    const NodeRef skinCluster =
        nodes::createSkinCluster(graph, shape, binding.value.influences, options, name.value);
    setSkinSettings(graph, skinCluster, arguments);
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

/// @param influence  the argument of -influence; empty if none
CommandResult query(graph::Graph& graph, const NodeRef& skinCluster, const ParsedArguments& arguments,
                    const std::string& influence) {
    const auto number = [&](const char* attribute) { return graph.number(skinCluster->plug(attribute)); };
    if (arguments.isSet("lockWeights") || (arguments.isSet("dropoffRate") && !influence.empty())) {
        const Found<int> index = namedInfluence(graph, skinCluster, influence);
        if (!index.ok()) return CommandResult::failure(index.error);
        if (arguments.isSet("dropoffRate"))
            return CommandResult::success(graph.number(skinCluster->plug("dropoff").element(index.value)));
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
    if (arguments.isSet("weightDistribution"))
        return CommandResult::success(static_cast<int>(number("weightDistribution")));
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
    if (arguments.isQuery()) return query(context.graph, node.value, arguments, influence);
    std::string error = editSkinCluster(context.graph, node.value, arguments, influence);
    return error.empty() ? CommandResult::success() : CommandResult::failure(std::move(error));
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
    syntax.flag("g", "geometry").flag("wd", "weightDistribution", {kWhole});
    syntax.flag("rui", "removeUnusedInfluence", {kSwitch}).flag("siv", "selectInfluenceVerts", {kText});
    syntax.flag("ub", "unbind");
    // Nothing to do for these: joints may be bound and added in any pose, the closest ones are found whatever
    // their hierarchy, no matrix is cached, and no influence has a surface.
    syntax.flag("ibp", "ignoreBindPose", {kSwitch}).flag("ih", "ignoreHierarchy");
    syntax.flag("rbm", "recacheBindMatrices").flag("ug", "useGeometry");
    syntax.flag("ps", "polySmoothness", {kReal}).flag("ns", "nurbsSamples", {kWhole});
    syntax.makeQueryWithArguments("influence");
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add(
        "skinCluster", syntax, skinCluster,
        "af after ar afterReference bf before bsh baseShape ch cn cp colorJoints cj dt deformerTools "
        "df dropoff ex exclusive foc frontOfChain gi geometryIndices hmf heatmapFalloff ihs "
        "includeHiddenSelections ig ignoreSelected jra jointRadius mjm moveJointsMode multi par "
        "parallel pr prune rag remapBase smt smoothWeights smx smoothWeightsMaxIterations sw split "
        "ss suppress tst toSkeletonAndTransforms ubk unbindKeepHistory uct useComponentTags vdt "
        "voldeform");
}

}  // namespace host::commands
