// The commands camera, lookThru and viewFit.

#include <algorithm>
#include <array>
#include <cmath>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "commands/viewState.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Vec3;
using graph::NodeRef;

constexpr struct {
    const char* shortName;
    const char* name;  // of flag and attribute
    ArgumentType type;
} kSettings[] = {
    {"fl", "focalLength", kReal},           {"hfa", "horizontalFilmAperture", kReal},
    {"vfa", "verticalFilmAperture", kReal}, {"cs", "cameraScale", kReal},
    {"ncp", "nearClipPlane", kLength},      {"fcp", "farClipPlane", kLength},
    {"coi", "centerOfInterest", kLength},   {"o", "orthographic", kSwitch},
    {"ow", "orthographicWidth", kLength},
};

constexpr std::array<const char*, 4> kFilmFits{"fill", "horizontal", "vertical", "overscan"};

Vec3 tripleOf(const ParsedArguments& arguments, const char* flag) {
    const std::vector<Value>& values = arguments.values(flag);
    return {values[0].toFloat(), values[1].toFloat(), values[2].toFloat()};
}

/// Sets one number of a camera.
/// @return empty, or the error
std::string setSetting(graph::Graph& graph, const NodeRef& camera, const char* attribute, double value) {
    const graph::Plug plug = camera->plug(attribute);
    std::string error = writeObstacle(graph, plug);
    if (error.empty()) graph.setNumber(plug, value);
    return error;
}

/// Does what the flags say.
/// @return empty, or the error
std::string setUp(graph::Graph& graph, const NodeRef& camera, const ParsedArguments& arguments) {
    std::string error;
    for (const auto& setting : kSettings) {
        if (error.empty() && arguments.isSet(setting.name))
            error = setSetting(graph, camera, setting.name, arguments.number(setting.name));
    }
    if (error.empty() && arguments.isSet("filmFit")) {
        const std::string fit = arguments.text("filmFit");
        const auto found = std::find(kFilmFits.begin(), kFilmFits.end(), fit);
        if (found == kFilmFits.end())
            return "camera: '" + fit + "' is none of fill, horizontal, vertical and overscan.";
        error = setSetting(graph, camera, "filmFit", static_cast<double>(found - kFilmFits.begin()));
    }
    const NodeRef transform = camera->parent()->ref();
    if (error.empty() && arguments.isSet("position"))
        error = writeTriple(graph, transform, "translate", tripleOf(arguments, "position"));
    if (error.empty() && arguments.isSet("rotation"))
        error = writeTriple(graph, transform, "rotate", toRadians(tripleOf(arguments, "rotation")));
    return error;
}

CommandResult queryCamera(graph::Graph& graph, const NodeRef& camera, const ParsedArguments& arguments) {
    for (const auto& setting : kSettings) {
        if (!arguments.isSet(setting.name)) continue;
        const double value = graph.number(camera->plug(setting.name));
        return CommandResult::success(setting.type == kSwitch ? Value(value != 0.0) : Value(value));
    }
    if (arguments.isSet("filmFit"))
        return CommandResult::success(
            kFilmFits[static_cast<std::size_t>(graph.number(camera->plug("filmFit")))]);
    const geometry::TransformParts parts = nodes::transformParts(graph, camera->parent()->ref());
    for (const auto& [flag, value] :
         {std::pair("position", parts.translate), std::pair("rotation", toDegrees(parts.rotate))}) {
        if (arguments.isSet(flag))
            return CommandResult::success(std::vector<double>{value.x, value.y, value.z});
    }
    return CommandResult::failure("camera: No flag says what to report.");
}

/// The name of a new camera ends with a number, even if it was given one without: so does the host.
CommandResult createCamera(graph::Graph& graph, const ParsedArguments& arguments) {
    const Found<std::string> name = legalName(graph, arguments.text("name", "camera") + "1");
    if (!name.ok()) return CommandResult::failure(name.error);
    const NodeRef transform = graph.createNode(*graph.types().find("transform"), name.value);
    const NodeRef camera = graph.createNode(*graph.types().find("camera"),
                                            nodes::shapeNameFor(transform->name()), transform.get());
    const std::string error = setUp(graph, camera, arguments);
    if (!error.empty()) return CommandResult::failure(error);
    selectNodes(graph, {transform});
    return CommandResult::success(uniqueNames(graph, {transform, camera}));
}

CommandResult camera(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (!arguments.isQuery() && !arguments.isEdit()) {
        if (!arguments.objects().empty())
            return CommandResult::failure("camera: Use -edit or -query with the name of a camera.");
        return createCamera(graph, arguments);
    }
    std::vector<std::string> names = arguments.objectNames();
    if (names.empty()) names = uniqueNames(graph, nodesOf(graph.selection().items()));
    if (names.empty()) return CommandResult::failure("camera: No camera was given, and none is selected.");
    const Found<NodeRef> found = findCamera(graph, names.front());
    if (!found.ok()) return CommandResult::failure(found.error);
    if (arguments.isQuery()) return queryCamera(graph, found.value, arguments);
    if (arguments.isSet("name")) return CommandResult::failure("camera: Use rename to name a camera.");
    const std::string error = setUp(graph, found.value, arguments);
    return error.empty() ? CommandResult::success() : CommandResult::failure(error);
}

/// A panel may stand before the camera. There is one view only.
CommandResult lookThru(CommandContext& context, const ParsedArguments& arguments, ViewState& view) {
    graph::Graph& graph = context.graph;
    if (arguments.isQuery()) {
        const Found<NodeRef> now = viewCamera(graph, view);
        return now.ok() ? CommandResult::success(graph.uniqueName(*now.value->parent()))
                        : CommandResult::failure(now.error);
    }
    const Found<NodeRef> found = findCamera(graph, arguments.objectNames().back());
    if (!found.ok()) return CommandResult::failure(found.error);
    view.camera = found.value;
    return CommandResult::success();
}

/// Box in world space of all meshes at and below these objects, or of the whole scene.
geometry::BoundingBox boxOf(graph::Graph& graph, const std::vector<graph::SelectionItem>& items) {
    geometry::BoundingBox box;
    const auto expand = [&](const Placed& shape, const geometry::Mesh& mesh) {
        box.expand(geometry::bounds(mesh, worldMatrix(graph, shape)));
    };
    for (const graph::SelectionItem& item : items) {
        const nodes::MeshPtr mesh = item.component ? nodes::meshOf(graph, item.node) : nullptr;
        if (mesh == nullptr) {
            visitMeshes(graph, item, expand);
            continue;
        }
        for (const int vertex : verticesOf(mesh, *item.component))
            box.expand(geometry::transformPoint(mesh->mesh.point(vertex), worldMatrix(graph, item)));
    }
    if (!items.empty()) return box;
    for (graph::Node* root : graph.roots())
        visitMeshes(graph, root->ref(), expand);
    return box;
}

/// Moves a camera along its axis until a sphere around a box fills the part of the picture that is wanted.
std::string fit(graph::Graph& graph, const NodeRef& camera, const geometry::BoundingBox& box, double part) {
    const NodeRef transform = camera->parent()->ref();
    const Found<render::Lens> found = lensOf(graph, camera);
    if (!found.ok()) return "viewFit: " + found.error;
    const render::Lens& lens = found.value;
    const double radius = std::max(geometry::length(box.max - box.min) / 2.0, 1e-3);
    double distance = radius;
    if (lens.isOrthographic) {
        std::string error = setSetting(graph, camera, "orthographicWidth", 2.0 * radius / part);
        if (!error.empty()) return error;
        distance = graph.number(camera->plug("centerOfInterest"));
    } else {
        const render::View view = render::viewOf({}, lens, lens.filmWidth / lens.filmHeight);
        // A sphere at distance d is seen under an angle with the sine radius / d.
        const double tangent = part * std::min(view.halfWidth, view.halfHeight);
        distance = radius * std::sqrt(1.0 + tangent * tangent) / tangent;
        std::string error = setSetting(graph, camera, "centerOfInterest", distance);
        if (!error.empty()) return error;
    }
    const geometry::Matrix4 world = nodes::worldMatrix(graph, transform);
    const Vec3 place = box.center() + geometry::normalized(world.row(2)) * distance;
    return moveInWorld(graph, transform, place - world.row(3));
}

CommandResult viewFit(CommandContext& context, const ParsedArguments& arguments, const ViewState& view) {
    graph::Graph& graph = context.graph;
    const double part = arguments.number("fitFactor", 1.0);
    if (!(part > 0.0 && part <= 1.0))
        return CommandResult::failure("viewFit: -fitFactor is above 0 and at most 1.");
    std::vector<std::string> names = arguments.objectNames();
    Found<NodeRef> camera = viewCamera(graph, view);
    if (!names.empty()) {
        const Found<NodeRef> first = findCamera(graph, names.front());
        if (first.ok()) {
            camera = first;
            names.erase(names.begin());
        }
    }
    if (!camera.ok()) return CommandResult::failure(camera.error);
    Found<std::vector<graph::SelectionItem>> items;
    if (!names.empty()) {
        items = findItems(graph, names);
    } else if (!arguments.isSet("allObjects")) {
        items.value = graph.selection().items();
    }
    if (!items.ok()) return CommandResult::failure(items.error);
    const geometry::BoundingBox box = boxOf(graph, items.value);
    // There is nothing to see, as the host takes it: the camera stays.
    if (box.empty || !geometry::isFinite(box.min) || !geometry::isFinite(box.max))
        return CommandResult::success();
    const std::string error = fit(graph, camera.value, box, part);
    return error.empty() ? CommandResult::success() : CommandResult::failure(error);
}

}  // namespace

void registerCameraCommands(mel::CommandRegistry& registry, const std::shared_ptr<ViewState>& view) {
    Syntax cameras;
    for (const auto& setting : kSettings)
        cameras.flag(setting.shortName, setting.name, {setting.type});
    cameras.flag("ff", "filmFit", {kText}).flag("n", "name", {kText});
    cameras.flag("p", "position", {kLength, kLength, kLength});
    cameras.flag("rot", "rotation", {kAngle, kAngle, kAngle});
    cameras.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add("camera", cameras, camera,
                 "wci worldCenterOfInterest wup worldUp hfo horizontalFilmOffset vfo verticalFilmOffset lsr "
                 "lensSqueezeRatio hfv horizontalFieldOfView vfv verticalFieldOfView ar aspectRatio");

    Syntax looking;
    looking.enableQuery().objects(ObjectKind::Strings, 0, 2);
    registry.add("lookThru", looking, [view](CommandContext& context, const ParsedArguments& arguments) {
        if (!arguments.isQuery() && arguments.objects().empty())
            return CommandResult::failure("lookThru: A camera must be given.");
        return lookThru(context, arguments, *view);
    });

    Syntax fitting;
    // Nothing moves visibly, so that there is nothing to animate.
    fitting.flag("f", "fitFactor", {kReal}).flag("all", "allObjects").flag("an", "animate", {kSwitch});
    fitting.objects(ObjectKind::Strings);
    registry.add("viewFit", fitting, [view](CommandContext& context, const ParsedArguments& arguments) {
        return viewFit(context, arguments, *view);
    });
}

}  // namespace host::commands
