// The command xform: its edits beside pivots. xformQuery.cpp does its queries and pointPosition.

#include <algorithm>
#include <tuple>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "commands/xformPivots.h"
#include "commands/xformQuery.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::SelectionItem;

constexpr std::size_t kMatrixSize = 16;

std::string notCovered(const std::string& what) {
    return "xform: " + what + " is not covered.";
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

std::string translate(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    const Vec3 value = tripleOf(arguments, "translation");
    const bool isRelative = arguments.isSet("relative");
    if (isWorld(arguments)) {
        const Vec3 offset = isRelative ? value : value - worldMatrix(graph, node).row(3);
        return moveInWorld(graph, node, offset);
    }
    const Vec3 present = nodes::transformParts(graph, node).translate;
    return writeTriple(graph, node, "translate", isRelative ? present + value : value);
}

std::string rotate(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Vec3 angles = toRadians(tripleOf(arguments, "rotation"));
    const bool isRelative = arguments.isSet("relative");
    if (isRelative && arguments.isSet("euler"))
        return writeTriple(graph, node, "rotate", parts.rotate + angles);
    if (!isRelative && !isWorld(arguments)) return writeTriple(graph, node, "rotate", angles);
    const Matrix4 turn = geometry::rotationMatrix(angles, parts.rotateOrder);
    const Matrix4 own = ownRotation(graph, node);
    if (!isWorld(arguments)) return setOwnRotation(graph, node, turn * own);
    return setWorldRotation(graph, node, isRelative ? own * parentRotation(graph, node) * turn : turn);
}

std::string scale(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    if (isWorld(arguments)) return notCovered("-scale in world space");
    Vec3 value = tripleOf(arguments, "scale");
    if (arguments.isSet("relative")) {
        const Vec3 present = nodes::transformParts(graph, node).scale;
        value = {present.x * value.x, present.y * value.y, present.z * value.z};
    }
    return writeTriple(graph, node, "scale", value);
}

std::string shear(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    if (isWorld(arguments) || arguments.isSet("relative")) return notCovered("-shear other than as it is");
    return writeTriple(graph, node, "shear", tripleOf(arguments, "shear"));
}

std::string setMatrix(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments,
                      const std::vector<double>& numbers) {
    if (arguments.isSet("relative")) return notCovered("-matrix together with -relative");
    Matrix4 matrix;
    for (std::size_t k = 0; k < kMatrixSize; ++k)
        matrix.m[k / 4][k % 4] = numbers[k];
    Found<Matrix4> toParent;
    if (isWorld(arguments)) toParent = worldToParent(graph, node);
    if (!toParent.ok()) return toParent.error;
    for (const char* attribute : {"translate", "rotate", "scale", "shear"}) {
        const graph::Plug compound = node->plug(attribute);
        for (int axis = 0; axis < 3; ++axis) {
            std::string error = writeObstacle(graph, compound.child(axis));
            if (!error.empty()) return error;
        }
    }
    nodes::setLocalMatrix(graph, node, matrix * toParent.value);
    return {};
}

std::string setRotateOrder(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    const std::string wanted = arguments.text("rotateOrder");
    const auto found = std::find(std::begin(kRotateOrderNames), std::end(kRotateOrderNames), wanted);
    if (found == std::end(kRotateOrderNames)) return "xform: '" + wanted + "' is no rotate order.";
    const Matrix4 rotation = ownRotation(graph, node);
    nodes::setRotateOrder(graph, node,
                          static_cast<geometry::RotateOrder>(found - std::begin(kRotateOrderNames)));
    return arguments.boolean("preserve") ? setOwnRotation(graph, node, rotation) : std::string();
}

std::string editTransform(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments,
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
    Found<Matrix4> toObject;
    if (isWorld(arguments)) toObject = worldToObject(graph, item);
    if (!toObject.ok()) return toObject.error;
    const Vec3 value = tripleOf(arguments, "translation");
    std::vector<Vec3> offsets;
    offsets.reserve(vertices.size());
    for (const int vertex : vertices) {
        offsets.push_back(arguments.isSet("relative")
                              ? geometry::transformVector(value, toObject.value)
                              : geometry::transformPoint(value, toObject.value) - mesh->mesh.point(vertex));
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
            error = editTransform(graph, item, arguments, words.value.matrix);
        }
        if (!error.empty()) return CommandResult::failure(error);
    }
    return CommandResult::success();
}

}  // namespace

void registerXformCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    for (const auto& [shortName, longName, unit] :
         {std::tuple("t", "translation", kLength), std::tuple("ro", "rotation", kAngle),
          std::tuple("s", "scale", kReal), std::tuple("sh", "shear", kReal),
          std::tuple("rp", "rotatePivot", kLength), std::tuple("sp", "scalePivot", kLength),
          std::tuple("piv", "pivots", kLength)})
        syntax.flag(shortName, longName, {unit, unit, unit});
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
