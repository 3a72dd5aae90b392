// The commands exactWorldBoundingBox, matchTransform, makeIdentity and spaceLocator.

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/freezeTransforms.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "graph/hierarchy.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::NodeRef;

/// Whole nodes only, of one type or derived from it.
Found<std::vector<NodeRef>> transformsOf(CommandContext& context, const ParsedArguments& arguments,
                                         const std::string& command) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {{}, items.error};
    for (const graph::SelectionItem& item : items.value) {
        if (!item.isWholeNode() || !item.node->isA("transform"))
            return {{}, command + ": " + graph::itemName(context.graph, item) + " is no transform."};
    }
    if (items.value.empty()) return {{}, command + ": No object was given or selected."};
    return {nodesOf(items.value), {}};
}

// exactWorldBoundingBox

CommandResult exactWorldBoundingBox(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    geometry::BoundingBox box;
    for (const graph::SelectionItem& item : items.value) {
        if (!item.node->type().isDag())
            return CommandResult::failure("exactWorldBoundingBox: " + graph.uniqueName(*item.node) +
                                          " is no DAG object.");
        const nodes::MeshPtr mesh = item.component ? nodes::meshOf(graph, item.node) : nullptr;
        if (mesh == nullptr) {
            visitMeshes(graph, item, [&](const Placed& shape, const geometry::Mesh& below) {
                box.expand(geometry::bounds(below, worldMatrix(graph, shape)));
            });
            continue;
        }
        const Matrix4 world = worldMatrix(graph, item);
        for (const int vertex : verticesOf(mesh, *item.component))
            box.expand(geometry::transformPoint(mesh->mesh.point(vertex), world));
    }
    // Objects without geometry are where they are.
    for (const graph::SelectionItem& item : items.value) {
        if (!box.empty) break;
        box.expand(geometry::transformPoint({}, worldMatrix(graph, item)));
    }
    if (box.empty) return CommandResult::failure("exactWorldBoundingBox: No object was given or selected.");
    return CommandResult::success(
        std::vector<double>{box.min.x, box.min.y, box.min.z, box.max.x, box.max.y, box.max.z});
}

// matchTransform

Vec3 worldScale(graph::Graph& graph, const NodeRef& transform) {
    return geometry::decomposeTransform(nodes::worldMatrix(graph, transform)).scale;
}

std::string matchScale(graph::Graph& graph, const NodeRef& transform, const NodeRef& target) {
    const Vec3 wanted = worldScale(graph, target);
    const Vec3 present = worldScale(graph, transform);
    Vec3 scale = nodes::tripleAt(graph, transform->plug("scale"));
    for (int axis = 0; axis < 3; ++axis) {
        if (present[axis] == 0.0)
            return "matchTransform: " + graph.uniqueName(*transform) + " has the scale 0.";
        scale[axis] *= wanted[axis] / present[axis];
    }
    return writeTriple(graph, transform, "scale", scale);
}

std::string matchRotation(graph::Graph& graph, const NodeRef& transform, const NodeRef& target) {
    const Found<Matrix4> fromTarget = worldToParent(graph, target);
    if (!fromTarget.ok()) return fromTarget.error;
    return setWorldRotation(graph, transform, ownRotation(graph, target) * parentRotation(graph, target));
}

CommandResult matchTransform(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<NodeRef>> found = transformsOf(context, arguments, "matchTransform");
    if (!found.ok()) return CommandResult::failure(found.error);
    if (found.value.size() < 2)
        return CommandResult::failure("matchTransform: Give what is to move, and last what it is to match.");
    const bool isAll = arguments.flagsSet() == 0;
    const auto wants = [&](const char* flag) { return isAll || arguments.boolean(flag); };
    const NodeRef& target = found.value.back();
    for (std::size_t k = 0; k + 1 < found.value.size(); ++k) {
        const NodeRef& node = found.value[k];
        std::string error;
        if (wants("scale")) error = matchScale(graph, node, target);
        if (error.empty() && wants("rotation")) error = matchRotation(graph, node, target);
        if (error.empty() && wants("position"))
            error =
                moveInWorld(graph, node, rotatePivotInWorld(graph, target) - rotatePivotInWorld(graph, node));
        if (!error.empty()) return CommandResult::failure(std::move(error));
    }
    return CommandResult::success();
}

// makeIdentity

FreezeRequest identityRequest(const ParsedArguments& arguments) {
    FreezeRequest request;
    request.jointOrient = arguments.boolean("jointOrient");
    if (!arguments.isSet("translate") && !arguments.isSet("rotate") && !arguments.isSet("scale"))
        return request;
    request.translate = arguments.boolean("translate");
    request.rotate = arguments.boolean("rotate");
    request.scale = arguments.boolean("scale");
    return request;
}

std::string reset(graph::Graph& graph, const NodeRef& node, const FreezeRequest& request) {
    std::string error;
    if (request.translate) error = writeTriple(graph, node, "translate", {});
    if (error.empty() && request.rotate) error = writeTriple(graph, node, "rotate", {});
    if (error.empty() && request.scale) error = writeTriple(graph, node, "scale", {1, 1, 1});
    if (error.empty() && request.jointOrient && node->isA("joint"))
        error = writeTriple(graph, node, "jointOrient", {});
    return error;
}

CommandResult makeIdentity(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<NodeRef>> found = transformsOf(context, arguments, "makeIdentity");
    if (!found.ok()) return CommandResult::failure(found.error);
    const FreezeRequest request = identityRequest(arguments);
    for (const NodeRef& node : found.value) {
        std::string error = arguments.boolean("apply") ? freezeTransforms(context.graph, node, request)
                                                       : reset(context.graph, node, request);
        if (!error.empty()) return CommandResult::failure(std::move(error));
    }
    return CommandResult::success();
}

// spaceLocator

CommandResult spaceLocator(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    if (name.value.empty()) name.value = graph.nextName(graph.wholeName("locator"));
    const NodeRef transform = graph.createNode(*graph.types().find("transform"), name.value);
    const NodeRef shape = graph.createNode(*graph.types().find("locator"),
                                           nodes::shapeNameFor(transform->name()), transform.get());
    const std::vector<Value>& position = arguments.values("position");
    for (int axis = 0; axis < 3 && !position.empty(); ++axis)
        graph.setNumber(shape->plug("localPosition").child(axis),
                        position[static_cast<std::size_t>(axis)].toFloat());
    selectNodes(graph, {transform});
    return CommandResult::success(std::vector<std::string>{graph.uniqueName(*transform)});
}

}  // namespace

void registerPlacementCommands(mel::CommandRegistry& registry) {
    Syntax box;
    box.flag("ce", "calculateExactly").objects(ObjectKind::Strings);
    registry.add("exactWorldBoundingBox", box, exactWorldBoundingBox, "ii ignoreInvisible");

    Syntax match;
    match.flag("pos", "position", {kSwitch})
        .flag("rot", "rotation", {kSwitch})
        .flag("scl", "scale", {kSwitch});
    match.objects(ObjectKind::Strings);
    registry.add("matchTransform", match, matchTransform,
                 "piv pivots px positionX py positionY pz positionZ rx rotateX ry rotateY rz rotateZ sx "
                 "scaleX sy scaleY sz scaleZ");

    Syntax identity;
    identity.flag("a", "apply", {kSwitch}).flag("t", "translate", {kSwitch}).flag("r", "rotate", {kSwitch});
    identity.flag("s", "scale", {kSwitch}).flag("jo", "jointOrient", {kSwitch});
    // Meshes have no normals of their own here.
    identity.flag("n", "normal", {kWhole}).flag("pn", "preserveNormals", {kSwitch});
    identity.objects(ObjectKind::Strings);
    registry.add("makeIdentity", identity, makeIdentity);

    Syntax locator;
    locator.flag("n", "name", {kText}).flag("p", "position", {kLength, kLength, kLength});
    locator.flag("a", "absolute").flag("r", "relative");
    registry.add("spaceLocator", locator, spaceLocator, "e edit q query");
}

}  // namespace host::commands
