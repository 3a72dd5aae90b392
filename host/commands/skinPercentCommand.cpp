#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/skinSupport.h"

namespace host::commands {

namespace {

using graph::NodeRef;
using nodes::WeightRole;

/// What a call works on.
struct Request {
    NodeRef skinCluster;
    std::string transform{};  // of -transform in query mode
    std::vector<int> vertices{};
};

/// The words that are not flags. In query mode, -transform may have a name or not. Without one, it has taken
/// the skin cluster's name as its argument.
std::vector<std::string> objectWords(const graph::Graph& graph, const ParsedArguments& arguments,
                                     std::string& transform) {
    std::vector<std::string> words = arguments.objectNames();
    if (!arguments.isQuery() || !arguments.isSet("transform")) return words;
    transform = arguments.text("transform");
    if (findSkinCluster(graph, transform).ok()) words.insert(words.begin(), std::exchange(transform, {}));
    return words;
}

/// Vertices of the skin's mesh among items. An item for the whole mesh means all of them.
Found<std::vector<int>> verticesOfItems(graph::Graph& graph, const NodeRef& skinCluster,
                                        const std::vector<graph::SelectionItem>& items) {
    const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
    if (shape == nullptr) return {{}, "skinPercent: " + skinCluster->name() + " deforms nothing."};
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return {{}, "skinPercent: " + mesh.error};
    graph::Component vertices(graph::ComponentKind::Vertex);
    for (const graph::SelectionItem& item : items) {
        if (item.plug || graph.shapeOf(item.node) != shape)
            return {{},
                    "skinPercent: " + graph::itemName(graph, item) + " is not deformed by " +
                        skinCluster->name() + '.'};
        const int last = mesh.value->mesh.vertexCount() - 1;
        const graph::Component all(graph::ComponentKind::Vertex, {0, last});
        vertices.add(verticesOf(mesh.value, item.component ? *item.component : all));
    }
    if (vertices.empty()) return {{}, "skinPercent: No vertices were given, and none are selected."};
    return {vertices.elements(), {}};
}

Found<Request> requestOf(CommandContext& context, const ParsedArguments& arguments) {
    Request request;
    std::vector<std::string> words = objectWords(context.graph, arguments, request.transform);
    if (words.empty()) return {{}, "skinPercent: A skin cluster must be given."};
    const Found<NodeRef> skinCluster = findSkinCluster(context.graph, words.front());
    if (!skinCluster.ok()) return {{}, "skinPercent: " + skinCluster.error};
    request.skinCluster = skinCluster.value;
    words.erase(words.begin());
    const Found<std::vector<graph::SelectionItem>> items =
        words.empty() ? Found<std::vector<graph::SelectionItem>>{context.graph.selection().items(), {}}
                      : findItems(context.graph, words);
    if (!items.ok()) return {{}, items.error};
    Found<std::vector<int>> vertices = verticesOfItems(context.graph, request.skinCluster, items.value);
    request.vertices = std::move(vertices.value);
    return {std::move(request), std::move(vertices.error)};
}

/// Position of a transform among the weights of an editor.
Found<std::size_t> influencePosition(const graph::Graph& graph, const Request& request,
                                     const WeightEditor& editor, const std::string& name) {
    const Found<NodeRef> node = findOneNode(graph, name);
    if (!node.ok()) return {0, node.error};
    const int index = nodes::influenceIndex(request.skinCluster, node.value);
    const auto& influences = editor.influences();
    const auto found = std::find(influences.begin(), influences.end(), index);
    if (found == influences.end())
        return {0, "skinPercent: " + name + " is no influence of " + request.skinCluster->name() + '.'};
    return {static_cast<std::size_t>(found - influences.begin()), {}};
}

// Query.

/// Means of the vertices' weights.
std::vector<double> meanWeights(const Request& request, const WeightEditor& editor) {
    std::vector<double> means(editor.influences().size(), 0.0);
    for (const int vertex : request.vertices) {
        const std::vector<double> weights = editor.weights(vertex);
        for (std::size_t k = 0; k < means.size(); ++k)
            means[k] += weights[k];
    }
    for (double& mean : means)
        mean /= static_cast<double>(request.vertices.size());
    return means;
}

CommandResult query(graph::Graph& graph, const Request& request, const ParsedArguments& arguments) {
    const WeightEditor editor(graph, request.skinCluster, false);
    const std::vector<double> weights = meanWeights(request, editor);
    if (!request.transform.empty()) {
        const Found<std::size_t> position = influencePosition(graph, request, editor, request.transform);
        if (!position.ok()) return CommandResult::failure(position.error);
        return CommandResult::success(weights[position.value]);
    }
    // Nothing is left out without -ignoreBelow, not even weights below 0.
    const auto isShown = [&](double weight) {
        return !arguments.isSet("ignoreBelow") || weight > arguments.number("ignoreBelow");
    };
    if (arguments.isSet("value")) {
        std::vector<double> shown;
        std::copy_if(weights.begin(), weights.end(), std::back_inserter(shown), isShown);
        return CommandResult::success(std::move(shown));
    }
    if (!arguments.isSet("transform"))
        return CommandResult::failure("skinPercent: Only -transform and -value can be queried.");
    std::vector<NodeRef> influences;
    for (const nodes::Influence& influence : nodes::influencesOf(request.skinCluster)) {
        const auto& indices = editor.influences();
        const auto at = std::lower_bound(indices.begin(), indices.end(), influence.index) - indices.begin();
        if (isShown(weights[static_cast<std::size_t>(at)])) influences.push_back(influence.node);
    }
    return CommandResult::success(uniqueNames(graph, influences));
}

// Edit.

/// The change to the weights of each vertex.
struct Change {
    std::vector<std::pair<std::size_t, double>> values{};  // by position
    bool isRelative = false;
    bool zeroesOthers = false;
    bool normalizes = true;
    std::optional<double> pruneBelow{};
    std::vector<std::size_t> moves{};           // from the first position to the others, in equal parts
    std::optional<nodes::BindPose> defaults{};  // the weights of binding come first
    int maxInfluences = 0;                      // of these
};

Found<Change> changeOf(graph::Graph& graph, const Request& request, const WeightEditor& editor,
                       const ParsedArguments& arguments) {
    Change change;
    change.isRelative = arguments.boolean("relative");
    change.zeroesOthers = arguments.boolean("zeroRemainingInfluences");
    change.normalizes = arguments.boolean("normalize", true);
    if (arguments.isSet("pruneWeights")) change.pruneBelow = arguments.number("pruneWeights");
    if (arguments.isSet("resetToDefault")) change.defaults = nodes::bindPoseOf(graph, request.skinCluster);
    change.maxInfluences = static_cast<int>(graph.number(request.skinCluster->plug("maxInfluences")));
    for (int use = 0; use < arguments.uses("transformValue"); ++use) {
        const std::vector<Value>& words = arguments.values("transformValue", use);
        const Found<std::size_t> position = influencePosition(graph, request, editor, words[0].toString());
        if (!position.ok()) return {{}, position.error};
        change.values.emplace_back(position.value, words[1].toFloat());
    }
    for (int use = 0; use < arguments.uses("transformMoveWeights"); ++use) {
        const std::string name = arguments.values("transformMoveWeights", use)[0].toString();
        const Found<std::size_t> position = influencePosition(graph, request, editor, name);
        if (!position.ok()) return {{}, position.error};
        change.moves.push_back(position.value);
    }
    if (change.moves.size() == 1)
        return {{}, "skinPercent: -transformMoveWeights needs a source and at least one target."};
    return {std::move(change), {}};
}

/// The weights of binding, without the locked influences.
std::vector<double> defaultWeights(const Change& change, int vertex, const WeightEditor& editor) {
    std::vector<double> distances = change.defaults->distances(vertex);
    for (std::size_t k = 0; k < distances.size(); ++k) {
        if (editor.isLocked(k)) distances[k] = std::numeric_limits<double>::infinity();
    }
    return nodes::closestWeights(distances, change.defaults->dropoff, change.maxInfluences);
}

void moveWeights(const std::vector<std::size_t>& moves, std::vector<double>& weights,
                 std::vector<WeightRole>& roles) {
    const double part = weights[moves.front()] / static_cast<double>(moves.size() - 1);
    weights[moves.front()] = 0.0;
    for (const std::size_t position : moves)
        roles[position] = WeightRole::Given;
    for (std::size_t k = 1; k < moves.size(); ++k)
        weights[moves[k]] += part;
}

void apply(const Change& change, int vertex, WeightEditor& editor) {
    const std::vector<double> present =
        change.defaults ? defaultWeights(change, vertex, editor) : editor.weights(vertex);
    std::vector<double> weights = present;
    std::vector<WeightRole> roles(weights.size(), WeightRole::Free);
    if (change.pruneBelow) {
        for (double& weight : weights) {
            if (weight < *change.pruneBelow) weight = 0.0;
        }
    }
    if (change.zeroesOthers) {
        // Only the weights that are set may take the rest.
        std::fill(weights.begin(), weights.end(), 0.0);
        std::fill(roles.begin(), roles.end(), WeightRole::Locked);
    }
    // A locked source keeps its weight, so it has none to give.
    if (!change.moves.empty() && !editor.isLocked(change.moves.front()))
        moveWeights(change.moves, weights, roles);
    for (const auto& [position, value] : change.values) {
        const double wanted = change.isRelative ? present[position] + value : value;
        weights[position] = change.normalizes ? std::clamp(wanted, 0.0, 1.0) : wanted;
        roles[position] = WeightRole::Given;
    }
    editor.set(vertex, std::move(weights), std::move(roles));
}

CommandResult edit(graph::Graph& graph, const Request& request, const ParsedArguments& arguments) {
    WeightEditor editor(graph, request.skinCluster, arguments.boolean("normalize", true));
    const Found<Change> change = changeOf(graph, request, editor, arguments);
    if (!change.ok()) return CommandResult::failure(change.error);
    for (const int vertex : request.vertices)
        apply(change.value, vertex, editor);
    if (!editor.write())
        graph.messages().warning(
            "skinPercent: Some weights could not be set to the given values: influences are locked, or the "
            "sum would not be 1.");
    return CommandResult::success();
}

CommandResult skinPercent(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isQuery() && arguments.isSet("transform"))
        return CommandResult::failure("skinPercent: -transform can only be queried.");
    if (!arguments.isQuery() && arguments.isSet("value"))
        return CommandResult::failure("skinPercent: -value can only be queried.");
    const bool changesAnything = arguments.isSet("transformValue") || arguments.isSet("normalize") ||
                                 arguments.isSet("pruneWeights") || arguments.isSet("resetToDefault") ||
                                 arguments.isSet("transformMoveWeights");
    if (!arguments.isQuery() && !changesAnything)
        return CommandResult::failure("skinPercent: No flag says what to change.");
    const Found<Request> request = requestOf(context, arguments);
    if (!request.ok()) return CommandResult::failure(request.error);
    return arguments.isQuery() ? query(context.graph, request.value, arguments)
                               : edit(context.graph, request.value, arguments);
}

}  // namespace

void registerSkinPercentCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.multiUseFlag("tv", "transformValue", {kText, kReal}).flag("nrm", "normalize", {kSwitch});
    syntax.flag("r", "relative", {kSwitch}).flag("zri", "zeroRemainingInfluences", {kSwitch});
    syntax.flag("prw", "pruneWeights", {kReal}).flag("v", "value").flag("t", "transform", {kText});
    syntax.flag("ib", "ignoreBelow", {kReal}).flag("rtd", "resetToDefault");
    syntax.multiUseFlag("tmw", "transformMoveWeights", {kText});
    syntax.makeQueryWithArguments("transform");
    syntax.makeQueryWithArguments("ignoreBelow");
    syntax.enableQuery().objects(ObjectKind::Strings);
    registry.add("skinPercent", syntax, skinPercent, "e edit");
}

}  // namespace host::commands
