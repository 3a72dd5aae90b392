// The commands move, rotate and scale, on transforms and on points.

#include <algorithm>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::SelectionItem;

enum class Space { Object, Local, World };

/// What one call asks for.
struct Request {
    AxisValues values;
    Space space = Space::World;
    bool isRelative = false;
    std::optional<Vec3> pivot{};  // in the world
    std::vector<SelectionItem> items{};
};

/// What differs between the three commands.
struct Kind {
    const char* name;
    const char* axisFlag;  // with X, XY, ... after it
    ArgumentType unit;     // of the values
    Space defaultSpace;
    std::string (*transform)(graph::Graph&, const Placed&, const Request&, const ParsedArguments&);
    std::string (*points)(graph::Graph&, const SelectionItem&, const Request&, const ParsedArguments&);
};

// The call's words.

/// Axes that the flags name, in x y z order; all three without such a flag.
std::vector<int> namedAxes(const ParsedArguments& arguments, const Kind& kind) {
    for (const char* axes : {"X", "Y", "Z", "XY", "XZ", "YZ", "XYZ"}) {
        if (!arguments.isSet(std::string(kind.axisFlag) + axes)) continue;
        std::vector<int> result;
        for (const char* at = axes; *at != '\0'; ++at)
            result.push_back(*at - 'X');
        return result;
    }
    return {0, 1, 2};
}

Space spaceOf(const ParsedArguments& arguments, Space fallback) {
    if (arguments.isSet("objectSpace")) return Space::Object;
    if (arguments.isSet("localSpace")) return Space::Local;
    if (arguments.isSet("worldSpace")) return Space::World;
    return fallback;
}

/// Why a word is not the next of the numbers that a call needs.
std::string valueProblem(const Value* word, const Kind& kind, std::size_t count) {
    const std::string prefix = std::string(kind.name) + ": ";
    const std::string text = word != nullptr ? word->toString() : std::string();
    const std::size_t first = text.find_first_not_of("+-.");
    // No name starts with a digit.
    if (first == std::string::npos || text[first] < '0' || text[first] > '9')
        return prefix + "Not enough values; " + std::to_string(count) + " are needed.";
    const char* wanted = kind.unit == kLength ? "distance" : kind.unit == kAngle ? "angle" : "number";
    return prefix + '\'' + text + "' is no " + wanted + '.';
}

/// The numbers come first, then names. Without names, the selection is used.
Found<Request> requestOf(CommandContext& context, const ParsedArguments& arguments, const Kind& kind) {
    const std::string prefix = std::string(kind.name) + ": ";
    Found<Request> request;
    const std::vector<Value>& words = arguments.objects();
    const std::vector<int> axes = namedAxes(arguments, kind);
    std::size_t at = 0;
    for (; at < axes.size(); ++at) {
        std::optional<double> value;
        if (at < words.size()) value = mel::numberOf(words[at], kind.unit, context.graph.framesPerSecond());
        if (!value) return {{}, valueProblem(at < words.size() ? &words[at] : nullptr, kind, axes.size())};
        request.value.values[static_cast<std::size_t>(axes[at])] = *value;
    }
    std::vector<std::string> names;
    for (; at < words.size(); ++at) {
        if (words[at].isNumber()) return {{}, prefix + "Too many values."};
        names.push_back(words[at].toString());
    }
    Found<std::vector<SelectionItem>> items{context.graph.selection().items(), {}};
    if (!names.empty()) items = findItems(context.graph, names);
    if (!items.ok()) return {{}, items.error};
    if (items.value.empty()) return {{}, prefix + "Nothing is currently selected."};
    request.value.items = std::move(items.value);
    request.value.space = spaceOf(arguments, kind.defaultSpace);
    request.value.isRelative = arguments.isSet("relative");
    if (arguments.isSet("pivot")) {
        const std::vector<Value>& pivot = arguments.values("pivot");
        request.value.pivot = Vec3{pivot[0].toFloat(), pivot[1].toFloat(), pivot[2].toFloat()};
    }
    return request;
}

// Points.

/// Points of a shape that a call changes.
struct Points {
    Placed shape;
    std::vector<int> vertices;
    std::vector<Vec3> positions;  // object space
    Matrix4 world;
};

Points pointsOf(graph::Graph& graph, const SelectionItem& item) {
    const nodes::MeshPtr mesh = nodes::meshOf(graph, item.node);
    Points points{item, item.component->elements(), {}, worldMatrix(graph, item)};
    points.positions.reserve(points.vertices.size());
    for (const int vertex : points.vertices)
        points.positions.push_back(mesh->mesh.point(vertex));
    return points;
}

/// Moves every point to the result of `place`, which works in the space that `toSpace` leads to.
/// @return empty, or the error
template <typename Place>
std::string placePoints(graph::Graph& graph, const Points& points, const Matrix4& toSpace, Place place) {
    const Found<Matrix4> back = inverseFor(graph, points.shape, toSpace);
    if (!back.ok()) return back.error;
    std::vector<Vec3> offsets;
    offsets.reserve(points.positions.size());
    for (const Vec3& position : points.positions) {
        const Vec3 there = geometry::transformPoint(position, toSpace);
        // Only the difference is transformed back, so that a point that stays gets no offset from rounding.
        offsets.push_back(geometry::transformVector(place(there) - there, back.value));
    }
    nodes::offsetVertices(graph, points.shape, points.vertices, offsets);
    return {};
}

/// Matrix from object space to the space of a call.
Matrix4 toSpace(graph::Graph& graph, const Points& points, Space space) {
    if (space == Space::Object) return {};
    if (space == Space::World) return points.world;
    return nodes::localMatrix(graph, points.shape.parent());
}

std::string movePoints(graph::Graph& graph, const SelectionItem& item, const Request& request,
                       const ParsedArguments&) {
    const Points points = pointsOf(graph, item);
    return placePoints(graph, points, toSpace(graph, points, request.space), [&](const Vec3& point) {
        return request.isRelative ? point + completed(request.values, {}) : completed(request.values, point);
    });
}

/// Applies a linear map about the pivot: the given one, or the transform's own.
std::string mapPoints(graph::Graph& graph, const SelectionItem& item, const Request& request,
                      const Vec3& ownPivot, const Matrix4& map) {
    const Points points = pointsOf(graph, item);
    const Found<Matrix4> toObject = inverseFor(graph, points.shape, points.world);
    if (!toObject.ok()) return toObject.error;
    const Matrix4 space = toSpace(graph, points, request.space);
    const Vec3 pivot = geometry::transformPoint(request.pivot.value_or(ownPivot), toObject.value * space);
    return placePoints(graph, points, space, [&](const Vec3& point) {
        return pivot + geometry::transformVector(point - pivot, map);
    });
}

std::string rotatePoints(graph::Graph& graph, const SelectionItem& item, const Request& request,
                         const ParsedArguments&) {
    const Vec3 pivot = rotatePivotInWorld(graph, Placed(item).parent());
    return mapPoints(graph, item, request, pivot,
                     geometry::rotationMatrix(toRadians(completed(request.values, {}))));
}

std::string scalePoints(graph::Graph& graph, const SelectionItem& item, const Request& request,
                        const ParsedArguments&) {
    const Vec3 pivot = scalePivotInWorld(graph, Placed(item).parent());
    return mapPoints(graph, item, request, pivot, Matrix4::scaling(completed(request.values, {1, 1, 1})));
}

// Transforms.

/// The position of a transform that a move to a place in the world refers to: its origin, or one of its
/// pivots.
Vec3 placeInWorld(graph::Graph& graph, const Placed& transform, const ParsedArguments& arguments) {
    if (arguments.isSet("rotatePivotRelative")) return rotatePivotInWorld(graph, transform);
    if (arguments.isSet("scalePivotRelative")) return scalePivotInWorld(graph, transform);
    return worldMatrix(graph, transform).row(3);
}

std::string moveTransform(graph::Graph& graph, const Placed& transform, const Request& request,
                          const ParsedArguments& arguments) {
    const Vec3 present = nodes::transformParts(graph, transform).translate;
    if (request.space == Space::World) {
        const Vec3 place = placeInWorld(graph, transform, arguments);
        const Vec3 offset =
            request.isRelative ? completed(request.values, {}) : completed(request.values, place) - place;
        return moveInWorld(graph, transform, offset);
    }
    if (!request.isRelative)
        return writeTriple(graph, transform, "translate", completed(request.values, present));
    const Vec3 offset = completed(request.values, {});
    const Vec3 turned = request.space == Space::Object
                            ? geometry::transformVector(offset, ownRotation(graph, transform))
                            : offset;
    return writeTriple(graph, transform, "translate", present + turned);
}

std::string rotateAbsolutely(graph::Graph& graph, const Placed& transform, const Request& request) {
    const geometry::TransformParts parts = nodes::transformParts(graph, transform);
    if (request.space != Space::World) {
        const Vec3 degrees = completed(request.values, toDegrees(parts.rotate));
        return writeTriple(graph, transform, "rotate", toRadians(degrees));
    }
    const Vec3 present = geometry::eulerAngles(
        ownRotation(graph, transform) * parentRotation(graph, transform), parts.rotateOrder);
    const Vec3 wanted = toRadians(completed(request.values, toDegrees(present)));
    return setWorldRotation(graph, transform, geometry::rotationMatrix(wanted, parts.rotateOrder));
}

std::string rotateRelatively(graph::Graph& graph, const Placed& transform, const Request& request,
                             const ParsedArguments& arguments) {
    const geometry::TransformParts parts = nodes::transformParts(graph, transform);
    const Vec3 angles = toRadians(completed(request.values, {}));
    if (arguments.isSet("euler")) return writeTriple(graph, transform, "rotate", parts.rotate + angles);
    const bool isXyz = arguments.isSet("forceOrderXYZ");
    const Matrix4 turn =
        geometry::rotationMatrix(angles, isXyz ? geometry::RotateOrder::Xyz : parts.rotateOrder);
    const Matrix4 own = ownRotation(graph, transform);
    if (request.space == Space::Object) return setOwnRotation(graph, transform, turn * own);
    if (request.space == Space::Local) return setOwnRotation(graph, transform, own * turn);
    return setWorldRotation(graph, transform, own * parentRotation(graph, transform) * turn);
}

/// Runs an edit, and then moves the transform so that the point at the pivot stays in place.
template <typename Edit>
std::string aroundPivot(graph::Graph& graph, const Placed& transform, const std::optional<Vec3>& pivot,
                        Edit edit) {
    if (!pivot) return edit();
    const Found<Matrix4> toObject = worldToObject(graph, transform);
    if (!toObject.ok()) return toObject.error;
    const Vec3 inObject = geometry::transformPoint(*pivot, toObject.value);
    std::string error = edit();
    if (!error.empty()) return error;
    const Vec3 moved = geometry::transformPoint(inObject, worldMatrix(graph, transform));
    return moveInWorld(graph, transform, *pivot - moved);
}

std::string rotateTransform(graph::Graph& graph, const Placed& transform, const Request& request,
                            const ParsedArguments& arguments) {
    return aroundPivot(graph, transform, request.pivot, [&] {
        return request.isRelative ? rotateRelatively(graph, transform, request, arguments)
                                  : rotateAbsolutely(graph, transform, request);
    });
}

std::string scaleTransform(graph::Graph& graph, const Placed& transform, const Request& request,
                           const ParsedArguments&) {
    if (request.space == Space::World)
        return "scale: Scaling an object along the axes of the world is not covered.";
    const Vec3 present = nodes::transformParts(graph, transform).scale;
    Vec3 scale = completed(request.values, present);
    if (request.isRelative) {
        const Vec3 factors = completed(request.values, {1, 1, 1});
        scale = {present.x * factors.x, present.y * factors.y, present.z * factors.z};
    }
    return aroundPivot(graph, transform, request.pivot,
                       [&] { return writeTriple(graph, transform, "scale", scale); });
}

// The commands.

/// The items with all components of a shape as one set of vertices: shared vertices must not be moved twice.
std::vector<SelectionItem> joined(graph::Graph& graph, const std::vector<SelectionItem>& items) {
    graph::Selection result;
    for (const SelectionItem& item : items) {
        SelectionItem entry = item;
        if (item.component) {
            entry.component = graph::Component::fromIndices(
                graph::ComponentKind::Vertex, verticesOf(nodes::meshOf(graph, item.node), *item.component));
        }
        result.add(entry);
    }
    return result.items();
}

std::string applyTo(graph::Graph& graph, const SelectionItem& item, const Kind& kind, const Request& request,
                    const ParsedArguments& arguments) {
    if (item.component) return kind.points(graph, item, request, arguments);
    if (item.plug || !item.node->isA("transform"))
        return std::string(kind.name) + ": " + graph::itemName(graph, item) +
               " is neither a transform nor points of a mesh.";
    return kind.transform(graph, item, request, arguments);
}

CommandResult run(CommandContext& context, const ParsedArguments& arguments, const Kind& kind) {
    if (arguments.isSet("relative") && arguments.isSet("absolute"))
        return CommandResult::failure(std::string(kind.name) +
                                      ": -relative and -absolute cannot be used together.");
    const Found<Request> request = requestOf(context, arguments, kind);
    if (!request.ok()) return CommandResult::failure(request.error);
    for (const SelectionItem& item : joined(context.graph, request.value.items)) {
        const std::string error = applyTo(context.graph, item, kind, request.value, arguments);
        if (!error.empty()) return CommandResult::failure(error);
    }
    return CommandResult::success();
}

Syntax commonSyntax(const Kind& kind) {
    Syntax syntax;
    for (const char* axes : {"X", "Y", "Z", "XY", "XZ", "YZ", "XYZ"}) {
        std::string shortName(axes);
        for (char& letter : shortName)
            letter = static_cast<char>(letter - 'X' + 'x');
        syntax.flag(shortName, std::string(kind.axisFlag) + axes);
    }
    syntax.flag("a", "absolute").flag("r", "relative").flag("os", "objectSpace").flag("ws", "worldSpace");
    syntax.flag("ls", "localSpace").objects(ObjectKind::Values);
    return syntax;
}

void add(mel::CommandRegistry& registry, Syntax syntax, const Kind& kind, std::string_view uncovered) {
    registry.add(
        kind.name, std::move(syntax),
        [&kind](CommandContext& context, const ParsedArguments& arguments) {
            return run(context, arguments, kind);
        },
        uncovered);
}

constexpr Kind kMove{"move", "move", kLength, Space::World, moveTransform, movePoints};
constexpr Kind kRotate{"rotate", "rotate", kAngle, Space::Object, rotateTransform, rotatePoints};
constexpr Kind kScale{"scale", "scale", kReal, Space::Object, scaleTransform, scalePoints};

}  // namespace

void registerMoveCommands(mel::CommandRegistry& registry) {
    Syntax move = commonSyntax(kMove);
    move.flag("rpr", "rotatePivotRelative").flag("spr", "scalePivotRelative");
    add(registry, std::move(move), kMove,
        "xn constrainAlongNormal dph deletePriorHistory oj orientJoint p parameter pcp "
        "preserveChildPosition pgp preserveGeometryPosition puv preserveUV rfl reflection sao "
        "secondaryAxisOrient smn symNegative wd worldSpaceDistance xc xformConstraint");

    Syntax rotate = commonSyntax(kRotate);
    rotate.flag("p", "pivot", {kLength, kLength, kLength}).flag("eu", "euler").flag("fo", "forceOrderXYZ");
    add(registry, std::move(rotate), kRotate,
        "c centerPivot dph deletePriorHistory oj orientJoint pcp preserveChildPosition pgp "
        "preserveGeometryPosition puv preserveUV rfl reflection smn symNegative tr translate xc "
        "xformConstraint");

    Syntax scale = commonSyntax(kScale);
    scale.flag("p", "pivot", {kLength, kLength, kLength});
    add(registry, std::move(scale), kScale,
        "c centerPivot dph deletePriorHistory dso distanceOnly oj orientJoint pcp "
        "preserveChildPosition pgp preserveGeometryPosition puv preserveUV rfl reflection smn "
        "symNegative xc xformConstraint");
}

}  // namespace host::commands
