// The commands exactWorldBoundingBox, matchTransform, makeIdentity and spaceLocator.

#include <algorithm>
#include <unordered_map>

#include "commands/commandSupport.h"
#include "commands/commands.h"
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
        if (error.empty() && wants("rotation")) {
            const Matrix4 world = ownRotation(graph, target) * parentRotation(graph, target);
            error = setOwnRotation(graph, node, world * parentRotation(graph, node).transposed());
        }
        if (error.empty() && wants("position"))
            error =
                moveInWorld(graph, node, rotatePivotInWorld(graph, target) - rotatePivotInWorld(graph, node));
        if (!error.empty()) return CommandResult::failure(std::move(error));
    }
    return CommandResult::success();
}

// makeIdentity

struct IdentityRequest {
    bool translate = true;
    bool rotate = true;
    bool scale = true;
    bool jointOrient = false;
};

IdentityRequest identityRequest(const ParsedArguments& arguments) {
    IdentityRequest request;
    request.jointOrient = arguments.boolean("jointOrient");
    if (!arguments.isSet("translate") && !arguments.isSet("rotate") && !arguments.isSet("scale"))
        return request;
    request.translate = arguments.boolean("translate");
    request.rotate = arguments.boolean("rotate");
    request.scale = arguments.boolean("scale");
    return request;
}

std::string reset(graph::Graph& graph, const NodeRef& node, const IdentityRequest& request) {
    std::string error;
    if (request.translate) error = writeTriple(graph, node, "translate", {});
    if (error.empty() && request.rotate) error = writeTriple(graph, node, "rotate", {});
    if (error.empty() && request.scale) error = writeTriple(graph, node, "scale", {1, 1, 1});
    if (error.empty() && request.jointOrient && node->isA("joint"))
        error = writeTriple(graph, node, "jointOrient", {});
    return error;
}

/// The rotation of a joint becomes its orientation. Its place is what its parent sees, and stays.
std::string freezeJoint(graph::Graph& graph, const NodeRef& joint, const IdentityRequest& request) {
    const Vec3 scale = nodes::tripleAt(graph, joint->plug("scale"));
    if (request.scale && !(scale == Vec3{1, 1, 1})) {
        return "makeIdentity: " + graph.uniqueName(*joint) +
               " is a scaled joint, which this host does not freeze. Set its scale to 1 first.";
    }
    if (!request.rotate) return {};
    const Vec3 orient = geometry::decomposeTransform(ownRotation(graph, joint)).rotate;
    std::string error = writeTriple(graph, joint, "jointOrient", orient);
    for (const char* attribute : {"rotate", "rotateAxis"}) {
        if (error.empty()) error = writeTriple(graph, joint, attribute, {});
    }
    return error;
}

/// Puts a matrix into the points of a shape.
std::string freezeShape(graph::Graph& graph, const NodeRef& shape, const Matrix4& matrix) {
    const nodes::MeshPtr mesh = nodes::meshOf(graph, shape);
    if (mesh == nullptr) return {};
    if (!shape->otherParents().empty())
        return "makeIdentity: " + graph.uniqueName(*shape) + " is instanced and cannot be frozen.";
    if (graph.source(shape->plug("inMesh"))) {
        return "makeIdentity: " + graph.uniqueName(*shape) +
               " has history. Delete it first: delete -constructionHistory.";
    }
    geometry::Mesh frozen = mesh->mesh;
    for (int vertex = 0; vertex < frozen.vertexCount(); ++vertex)
        frozen.setPoint(vertex, geometry::transformPoint(frozen.point(vertex), matrix));
    nodes::setMesh(graph, shape, std::move(frozen));
    return {};
}

/// Makes a transform the identity. Its pivots stay where they are.
std::string freezeTransform(graph::Graph& graph, const NodeRef& node, const Matrix4& matrix) {
    std::string error;
    for (const char* pivot : {"rotatePivot", "scalePivot"}) {
        const Vec3 moved = geometry::transformPoint(nodes::tripleAt(graph, node->plug(pivot)), matrix);
        if (error.empty()) error = writeTriple(graph, node, pivot, moved);
    }
    for (const char* attribute :
         {"translate", "rotate", "rotateAxis", "shear", "rotatePivotTranslate", "scalePivotTranslate"}) {
        if (error.empty()) error = writeTriple(graph, node, attribute, {});
    }
    return error.empty() ? writeTriple(graph, node, "scale", {1, 1, 1}) : error;
}

/// Why a transform cannot be frozen as asked; empty if it can.
std::string freezeProblem(graph::Graph& graph, const NodeRef& node, const IdentityRequest& request) {
    const std::string name = graph.uniqueName(*node);
    const auto isAt = [&](const char* attribute, const Vec3& value) {
        return nodes::tripleAt(graph, node->plug(attribute)) == value;
    };
    if ((!request.translate && !isAt("translate", {})) || (!request.rotate && !isAt("rotate", {})) ||
        (!request.scale && !isAt("scale", {1, 1, 1}))) {
        return "makeIdentity: Freezing only a part of " + name +
               " is not covered by this host. Freeze translation, rotation and scale together.";
    }
    if (!node->otherParents().empty()) return "makeIdentity: " + name + " is instanced and cannot be frozen.";
    return {};
}

/// Freezes a hierarchy: each transform's matrix goes into the points below it.
std::string freeze(graph::Graph& graph, const NodeRef& top, const IdentityRequest& request) {
    std::vector<NodeRef> below;
    graph::visitHierarchy(*top, [&](graph::Node& node) { below.push_back(node.ref()); });
    std::unordered_map<const graph::Node*, Matrix4> frozen;
    for (const NodeRef& node : below) {
        const auto above = frozen.find(node->parent());
        const Matrix4 parent = above != frozen.end() ? above->second : Matrix4();
        std::string error;
        if (node->isA("joint")) {
            error = freezeJoint(graph, node, request);
        } else if (node->isA("transform")) {
            if (std::string problem = freezeProblem(graph, node, request); !problem.empty()) return problem;
            const Matrix4 matrix = nodes::localMatrix(graph, node) * parent;
            frozen.emplace(node.get(), matrix);
            error = freezeTransform(graph, node, matrix);
        } else if (node->isA("mesh") && above != frozen.end()) {
            error = freezeShape(graph, node, parent);
        }
        if (!error.empty()) return error;
    }
    return {};
}

CommandResult makeIdentity(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<NodeRef>> found = transformsOf(context, arguments, "makeIdentity");
    if (!found.ok()) return CommandResult::failure(found.error);
    const IdentityRequest request = identityRequest(arguments);
    for (const NodeRef& node : found.value) {
        std::string error = arguments.boolean("apply") ? freeze(context.graph, node, request)
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
