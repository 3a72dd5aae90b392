#include <algorithm>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/skinSupport.h"
#include "commands/skinTransfer.h"

namespace host::commands {

namespace {

using graph::NodeRef;

constexpr const char* kCommand = "copySkinWeights";

/// A skin and vertices of it.
struct Part {
    NodeRef skinCluster;
    NodeRef shape;
    graph::Component vertices{graph::ComponentKind::Vertex};
};

struct Request {
    NodeRef source;
    std::vector<Part> destinations{};
};

/// The skin of a flag; null if the flag is not set.
Found<NodeRef> skinOfFlag(graph::Graph& graph, const ParsedArguments& arguments, const char* flag) {
    if (!arguments.isSet(flag)) return {};
    const Found<NodeRef> node = findOneNode(graph, arguments.text(flag));
    return node.ok() ? skinClusterFor(graph, node.value, kCommand) : node;
}

/// Adds vertices of a skinned shape: all of them, or those of an item.
std::string addPart(graph::Graph& graph, std::vector<Part>& parts, const NodeRef& skinCluster,
                    const graph::SelectionItem* item) {
    const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
    if (shape == nullptr) return std::string(kCommand) + ": " + skinCluster->name() + " deforms nothing.";
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return std::string(kCommand) + ": " + mesh.error;
    auto part = std::find_if(parts.begin(), parts.end(), [&](const Part& p) { return p.shape == shape; });
    if (part == parts.end()) part = parts.insert(part, {skinCluster, shape});
    const graph::Component all(graph::ComponentKind::Vertex, {0, mesh.value->mesh.vertexCount() - 1});
    part->vertices.add(verticesOf(mesh.value, item != nullptr && item->component ? *item->component : all));
    return {};
}

/// The skins among the objects or the selection, in order.
Found<std::vector<Part>> givenParts(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = meshObjects(context, arguments, kCommand);
    if (!items.ok()) return {{}, items.error};
    Found<std::vector<Part>> parts;
    for (const graph::SelectionItem& item : items.value) {
        const Found<NodeRef> skin = skinClusterFor(context.graph, item.node, kCommand);
        if (!skin.ok()) return {{}, skin.error};
        parts.error = addPart(context.graph, parts.value, skin.value, &item);
        if (!parts.ok()) return parts;
    }
    return parts;
}

/// What is not named by a flag is given or selected: the source first. A mirrored skin may be both.
Found<Request> requestOf(CommandContext& context, const ParsedArguments& arguments) {
    const Found<NodeRef> source = skinOfFlag(context.graph, arguments, "sourceSkin");
    if (!source.ok()) return {{}, source.error};
    const Found<NodeRef> destination = skinOfFlag(context.graph, arguments, "destinationSkin");
    if (!destination.ok()) return {{}, destination.error};
    Found<Request> request{{source.value}};
    auto& [from, parts] = request.value;
    const bool areBothNamed = from != nullptr && destination.value != nullptr;
    if (!areBothNamed || !arguments.objects().empty()) {
        Found<std::vector<Part>> given = givenParts(context, arguments);
        if (!given.ok()) return {{}, given.error};
        parts = std::move(given.value);
    }
    if (from == nullptr) {
        from = parts.front().skinCluster;
        if (parts.size() > 1 || destination.value != nullptr || arguments.isSet("noMirror"))
            parts.erase(parts.begin());
    }
    if (destination.value != nullptr) {
        const auto isOther = [&](const Part& part) { return part.skinCluster != destination.value; };
        parts.erase(std::remove_if(parts.begin(), parts.end(), isOther), parts.end());
        if (parts.empty()) request.error = addPart(context.graph, parts, destination.value, nullptr);
    }
    if (request.ok() && parts.empty())
        request.error = std::string(kCommand) + ": A source and a destination skin must be given.";
    return request;
}

Found<SkinSurface> surfaceOf(graph::Graph& graph, const NodeRef& skinCluster, bool isInWorld) {
    const NodeRef shape = nodes::skinnedShape(graph, skinCluster);
    if (shape == nullptr)
        return {{}, std::string(kCommand) + ": " + skinCluster->name() + " deforms nothing."};
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return {{}, std::string(kCommand) + ": " + mesh.error};
    const geometry::Mesh& own = mesh.value->mesh;
    return {{skinCluster, isInWorld ? meshInWorld(graph, shape, own) : own}, {}};
}

/// The axis across a plane: "XY" is 2.
std::optional<int> mirrorAxis(const std::string& plane) {
    if (plane == "YZ") return 0;
    if (plane == "XZ") return 1;
    if (plane == "XY") return 2;
    return std::nullopt;
}

Found<TransferOptions> optionsOf(const ParsedArguments& arguments) {
    const auto refuse = [](const char* flag, const std::string& text, const char* known) {
        return Found<TransferOptions>{
            {}, std::string(kCommand) + ": -" + flag + " takes " + known + ", not " + text + '.'};
    };
    TransferOptions options;
    const std::string surface = arguments.text("surfaceAssociation", "closestPoint");
    if (surface == "rayCast")
        return {{}, std::string(kCommand) + ": The surface association rayCast is not covered."};
    if (surface != "closestPoint" && surface != "closestComponent")
        return refuse("surfaceAssociation", surface, "closestPoint or closestComponent");
    // Smooth weights are between those of vertices.
    options.usesVertices = surface == "closestComponent" && !arguments.isSet("smooth");
    const std::string plane = arguments.text("mirrorMode", "XY");
    if (!mirrorAxis(plane)) return refuse("mirrorMode", plane, "XY, YZ or XZ");
    if (!arguments.isSet("noMirror")) options.mirrorAxis = mirrorAxis(plane);
    for (int use = 0; use < arguments.uses("influenceAssociation"); ++use) {
        const std::string name = arguments.values("influenceAssociation", use)[0].toString();
        const std::optional<InfluenceScheme> scheme = influenceScheme(name);
        if (!scheme)
            return refuse("influenceAssociation", name, "closestJoint, closestBone, name, label or oneToOne");
        options.schemes.push_back(*scheme);
    }
    if (options.schemes.empty()) options.schemes = {InfluenceScheme::ClosestJoint};
    options.mirrorsToPositive = arguments.isSet("mirrorInverse");
    options.normalizes = arguments.isSet("normalize");
    options.copiesBlendWeights = !arguments.isSet("noBlendWeight");
    return {std::move(options), {}};
}

CommandResult copySkinWeights(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<TransferOptions> options = optionsOf(arguments);
    if (!options.ok()) return CommandResult::failure(options.error);
    const Found<Request> request = requestOf(context, arguments);
    if (!request.ok()) return CommandResult::failure(request.error);
    const bool isInWorld = arguments.integer("sampleSpace") == 0;
    const Found<SkinSurface> source = surfaceOf(graph, request.value.source, isInWorld);
    if (!source.ok()) return CommandResult::failure(source.error);
    for (const Part& part : request.value.destinations) {
        const Found<SkinSurface> destination = surfaceOf(graph, part.skinCluster, isInWorld);
        if (!destination.ok()) return CommandResult::failure(destination.error);
        transferWeights(graph, source.value, destination.value, part.vertices.elements(), options.value);
    }
    return CommandResult::success();
}

}  // namespace

void registerCopySkinWeightsCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("ss", "sourceSkin", {kText}).flag("ds", "destinationSkin", {kText});
    syntax.flag("sa", "surfaceAssociation", {kText}).multiUseFlag("ia", "influenceAssociation", {kText});
    syntax.flag("nm", "noMirror").flag("mm", "mirrorMode", {kText}).flag("mi", "mirrorInverse");
    syntax.flag("nr", "normalize").flag("sm", "smooth").flag("nbw", "noBlendWeight");
    syntax.flag("spa", "sampleSpace", {kWhole});
    syntax.objects(ObjectKind::Strings);
    registry.add("copySkinWeights", syntax, copySkinWeights, "uv uvSpace");
}

}  // namespace host::commands
