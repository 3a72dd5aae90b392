// The command xform: its edits. xformQuery.cpp does its queries and pointPosition.

#include <algorithm>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "commands/xformQuery.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::NodeRef;
using graph::SelectionItem;

constexpr std::size_t kMatrixSize = 16;

bool isWorld(const ParsedArguments& arguments) {
    return arguments.isSet("worldSpace");
}

std::string notCovered(const std::string& what) {
    return "xform: " + what + " is not covered.";
}

Vec3 tripleOf(const ParsedArguments& arguments, const char* flag) {
    const std::vector<Value>& values = arguments.values(flag);
    return {values[0].toFloat(), values[1].toFloat(), values[2].toFloat()};
}

/// The words of a call. A matrix has more numbers than a flag may have arguments, so they are among the
/// objects.
struct Words {
    std::vector<double> matrix;
    std::vector<std::string> names;
};

Found<Words> wordsOf(const ParsedArguments& arguments) {
    Found<Words> words;
    const bool takesMatrix = arguments.isSet("matrix") && !arguments.isQuery();
    for (const Value& word : arguments.objects()) {
        if (takesMatrix && word.isNumber()) {
            words.value.matrix.push_back(word.toFloat());
        } else {
            words.value.names.push_back(word.toString());
        }
    }
    if (takesMatrix && words.value.matrix.size() != kMatrixSize)
        return {{}, "xform: -matrix must be passed 16 numbers."};
    return words;
}

std::string translate(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    const Vec3 value = tripleOf(arguments, "translation");
    const bool isRelative = arguments.isSet("relative");
    if (isWorld(arguments)) {
        const Vec3 offset = isRelative ? value : value - nodes::worldMatrix(graph, node).row(3);
        return moveInWorld(graph, node, offset);
    }
    const Vec3 present = nodes::transformParts(graph, node).translate;
    return writeTriple(graph, node, "translate", isRelative ? present + value : value);
}

std::string rotate(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Vec3 angles = toRadians(tripleOf(arguments, "rotation"));
    const bool isRelative = arguments.isSet("relative");
    if (isRelative && arguments.isSet("euler"))
        return writeTriple(graph, node, "rotate", parts.rotate + angles);
    if (!isRelative && !isWorld(arguments)) return writeTriple(graph, node, "rotate", angles);
    const Matrix4 turn = geometry::rotationMatrix(angles, parts.rotateOrder);
    const Matrix4 own = ownRotation(graph, node);
    if (!isWorld(arguments)) return setOwnRotation(graph, node, turn * own);
    const Matrix4 parent = parentRotation(graph, node);
    const Matrix4 world = isRelative ? own * parent * turn : turn;
    return setOwnRotation(graph, node, world * parent.transposed());
}

std::string scale(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    if (isWorld(arguments)) return notCovered("-scale in world space");
    Vec3 value = tripleOf(arguments, "scale");
    if (arguments.isSet("relative")) {
        const Vec3 present = nodes::transformParts(graph, node).scale;
        value = {present.x * value.x, present.y * value.y, present.z * value.z};
    }
    return writeTriple(graph, node, "scale", value);
}

std::string shear(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    if (isWorld(arguments) || arguments.isSet("relative")) return notCovered("-shear other than as it is");
    return writeTriple(graph, node, "shear", tripleOf(arguments, "shear"));
}

std::string setMatrix(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments,
                      const std::vector<double>& numbers) {
    if (arguments.isSet("relative")) return notCovered("-matrix together with -relative");
    Matrix4 matrix;
    for (std::size_t k = 0; k < kMatrixSize; ++k)
        matrix.m[k / 4][k % 4] = numbers[k];
    if (isWorld(arguments)) matrix = matrix * worldToParent(graph, node);
    for (const char* attribute : {"translate", "rotate", "scale", "shear"}) {
        const graph::Plug compound = node->plug(attribute);
        for (int axis = 0; axis < 3; ++axis) {
            std::string error = writeObstacle(graph, compound.child(axis));
            if (!error.empty()) return error;
        }
    }
    nodes::setLocalMatrix(graph, node, matrix);
    return {};
}

std::string setRotateOrder(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    const std::string wanted = arguments.text("rotateOrder");
    const auto found = std::find(std::begin(kRotateOrderNames), std::end(kRotateOrderNames), wanted);
    if (found == std::end(kRotateOrderNames)) return "xform: '" + wanted + "' is no rotate order.";
    const Matrix4 rotation = ownRotation(graph, node);
    nodes::setRotateOrder(graph, node,
                          static_cast<geometry::RotateOrder>(found - std::begin(kRotateOrderNames)));
    return arguments.boolean("preserve") ? setOwnRotation(graph, node, rotation) : std::string();
}

/// Matrix of the rotation or the scale part of a transform, without pivots.
Matrix4 rotationOnly(const geometry::TransformParts& parts) {
    geometry::TransformParts only;
    only.rotate = parts.rotate;
    only.rotateOrder = parts.rotateOrder;
    only.rotateAxis = parts.rotateAxis;
    return geometry::composeTransform(only);
}
Matrix4 scaleOnly(const geometry::TransformParts& parts) {
    geometry::TransformParts only;
    only.scale = parts.scale;
    only.shear = parts.shear;
    return geometry::composeTransform(only);
}

/// Whether the object stays in place when its pivots move.
bool keepsPlace(const ParsedArguments& arguments) {
    return arguments.boolean("preserve", true);
}

/// Moves the rotate pivot. Its translation is adjusted so that the object stays in place, unless the call
/// wants otherwise.
///
/// The pivot p and its translation t map x to (x - p) R + p + t, so the constant part t + p - p R must stay.
std::string setRotatePivot(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments,
                           Vec3 pivot, bool isInWorld) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Matrix4 rotation = rotationOnly(parts);
    const Vec3 constant = parts.rotatePivotTranslate + parts.rotatePivot -
                          geometry::transformVector(parts.rotatePivot, rotation);
    if (isInWorld) {
        const Vec3 inParent = geometry::transformPoint(pivot, worldToParent(graph, node));
        pivot = geometry::transformVector(inParent - parts.translate - constant, rotation.transposed());
    }
    const Vec3 shift = constant - pivot + geometry::transformVector(pivot, rotation);
    std::string error = writeTriple(graph, node, "rotatePivot", pivot);
    if (!keepsPlace(arguments)) return error;
    return error.empty() ? writeTriple(graph, node, "rotatePivotTranslate", shift) : error;
}

/// The same for the scale pivot and the scale.
std::string setScalePivot(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments,
                          Vec3 pivot, bool isInWorld) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Matrix4 scaling = scaleOnly(parts);
    const Vec3 constant =
        parts.scalePivotTranslate + parts.scalePivot - geometry::transformVector(parts.scalePivot, scaling);
    if (isInWorld) pivot = geometry::transformPoint(pivot, nodes::worldMatrix(graph, node).inverse().matrix);
    const Vec3 shift = constant - pivot + geometry::transformVector(pivot, scaling);
    std::string error = writeTriple(graph, node, "scalePivot", pivot);
    if (!keepsPlace(arguments)) return error;
    return error.empty() ? writeTriple(graph, node, "scalePivotTranslate", shift) : error;
}

/// Puts both pivots into the middle of what is at and below a transform, if anything is. The scale acts on
/// the rotate pivot's place, but not on the scale pivot's.
std::string centrePivots(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    const geometry::InverseMatrix toObject = nodes::worldMatrix(graph, node).inverse();
    geometry::BoundingBox box;
    expandBox(graph, node, toObject.matrix, box);
    if (box.empty || !toObject.ok) return {};
    const Vec3 centre = box.center();
    std::string error = setScalePivot(graph, node, arguments, centre, false);
    if (!error.empty()) return error;
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Vec3 scaled = geometry::transformVector(centre - parts.scalePivot, scaleOnly(parts)) +
                        parts.scalePivot + parts.scalePivotTranslate;
    return setRotatePivot(graph, node, arguments, scaled, false);
}

/// Takes the pivots away. What they did to the matrix becomes a part of the translation.
std::string zeroPivots(graph::Graph& graph, const NodeRef& node) {
    const Vec3 place = nodes::localMatrix(graph, node).row(3);
    for (const char* attribute :
         {"rotatePivot", "rotatePivotTranslate", "scalePivot", "scalePivotTranslate"}) {
        std::string error = writeTriple(graph, node, attribute, {});
        if (!error.empty()) return error;
    }
    return writeTriple(graph, node, "translate", place);
}

std::string setPivots(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments) {
    std::string error;
    if (arguments.isSet("centerPivots")) error = centrePivots(graph, node, arguments);
    if (error.empty() && arguments.isSet("zeroTransformPivots")) error = zeroPivots(graph, node);
    for (const char* flag : {"rotatePivot", "pivots"}) {
        if (error.empty() && arguments.isSet(flag))
            error = setRotatePivot(graph, node, arguments, tripleOf(arguments, flag), isWorld(arguments));
    }
    for (const char* flag : {"scalePivot", "pivots"}) {
        if (error.empty() && arguments.isSet(flag))
            error = setScalePivot(graph, node, arguments, tripleOf(arguments, flag), isWorld(arguments));
    }
    return error;
}

std::string editTransform(graph::Graph& graph, const NodeRef& node, const ParsedArguments& arguments,
                          const std::vector<double>& matrix) {
    std::string error;
    if (arguments.isSet("rotateOrder")) error = setRotateOrder(graph, node, arguments);
    if (error.empty() && !matrix.empty()) error = setMatrix(graph, node, arguments, matrix);
    if (error.empty()) error = setPivots(graph, node, arguments);
    if (error.empty() && arguments.isSet("scale")) error = scale(graph, node, arguments);
    if (error.empty() && arguments.isSet("shear")) error = shear(graph, node, arguments);
    if (error.empty() && arguments.isSet("rotation")) error = rotate(graph, node, arguments);
    if (error.empty() && arguments.isSet("translation")) error = translate(graph, node, arguments);
    return error;
}

std::string editPoints(graph::Graph& graph, const SelectionItem& item, const ParsedArguments& arguments) {
    for (const char* flag : {"rotation", "scale", "shear", "matrix", "rotatePivot", "scalePivot", "pivots",
                             "rotateOrder", "centerPivots", "zeroTransformPivots"}) {
        if (arguments.isSet(flag)) return notCovered(std::string("-") + flag + " of components");
    }
    if (!arguments.isSet("translation")) return {};
    const nodes::MeshPtr mesh = nodes::meshOf(graph, item.node);
    const std::vector<int> vertices = verticesOf(mesh, *item.component);
    const Matrix4 toObject =
        isWorld(arguments) ? nodes::worldMatrix(graph, item.node).inverse().matrix : Matrix4();
    const Vec3 value = tripleOf(arguments, "translation");
    std::vector<Vec3> offsets;
    offsets.reserve(vertices.size());
    for (const int vertex : vertices) {
        offsets.push_back(arguments.isSet("relative")
                              ? geometry::transformVector(value, toObject)
                              : geometry::transformPoint(value, toObject) - mesh->mesh.point(vertex));
    }
    nodes::offsetVertices(graph, item.node, vertices, offsets);
    return {};
}

CommandResult xform(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<Words> words = wordsOf(arguments);
    if (!words.ok()) return CommandResult::failure(words.error);
    Found<std::vector<SelectionItem>> items{graph.selection().items(), {}};
    if (!words.value.names.empty()) items = findItems(graph, words.value.names);
    if (!items.ok()) return CommandResult::failure(items.error);
    if (items.value.empty()) return CommandResult::failure("xform: Nothing is currently selected.");
    if (arguments.isQuery()) return queryXform(context, arguments, items.value);
    if (arguments.isSet("boundingBox"))
        return CommandResult::failure("xform: -boundingBox can only be queried.");
    for (const SelectionItem& item : items.value) {
        std::string error;
        if (item.component) {
            error = editPoints(graph, item, arguments);
        } else if (item.plug || !item.node->isA("transform")) {
            error =
                "xform: " + graph::itemName(graph, item) + " is neither a transform nor points of a mesh.";
        } else {
            error = editTransform(graph, item.node, arguments, words.value.matrix);
        }
        if (!error.empty()) return CommandResult::failure(error);
    }
    return CommandResult::success();
}

}  // namespace

void registerXformCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    for (const auto& [shortName, longName] :
         {std::pair("t", "translation"), std::pair("ro", "rotation"), std::pair("s", "scale"),
          std::pair("sh", "shear"), std::pair("rp", "rotatePivot"), std::pair("sp", "scalePivot"),
          std::pair("piv", "pivots")})
        syntax.flag(shortName, longName, {kReal, kReal, kReal});
    syntax.flag("m", "matrix").flag("bb", "boundingBox").flag("roo", "rotateOrder", {kText});
    syntax.flag("os", "objectSpace").flag("ws", "worldSpace").flag("r", "relative").flag("a", "absolute");
    syntax.flag("p", "preserve", {kSwitch}).flag("eu", "euler");
    syntax.flag("cp", "centerPivots").flag("ztp", "zeroTransformPivots");
    syntax.enableQuery().objects(ObjectKind::Values);
    registry.add(
        "xform", syntax, xform,
        "bbi boundingBoxInvisible cpc centerPivotsOnComponents dph deletePriorHistory ra "
        "rotateAxis "
        "rab reflectionAboutBBox rao reflectionAboutOrigin rax reflectionAboutX ray reflectionAboutY raz "
        "reflectionAboutZ rfl reflection rft reflectionTolerance rt rotateTranslation st scaleTranslation "
        "puv "
        "preserveUV wd worldSpaceDistance");

    Syntax point;
    point.flag("l", "local").flag("w", "world").objects(ObjectKind::Strings, 0, 1);
    registry.add("pointPosition", point, pointPosition);
}

}  // namespace host::commands
