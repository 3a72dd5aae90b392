#include "commands/xformPivots.h"

#include "commands/xformQuery.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;

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
std::string setRotatePivot(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments,
                           Vec3 pivot, bool isInWorld) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Matrix4 rotation = rotationOnly(parts);
    const Vec3 constant = parts.rotatePivotTranslate + parts.rotatePivot -
                          geometry::transformVector(parts.rotatePivot, rotation);
    if (isInWorld) {
        const Found<Matrix4> toParent = worldToParent(graph, node);
        if (!toParent.ok()) return toParent.error;
        const Vec3 inParent = geometry::transformPoint(pivot, toParent.value);
        pivot = geometry::transformVector(inParent - parts.translate - constant, rotation.transposed());
    }
    const Vec3 shift = constant - pivot + geometry::transformVector(pivot, rotation);
    std::string error = writeTriple(graph, node, "rotatePivot", pivot);
    if (!keepsPlace(arguments)) return error;
    return error.empty() ? writeTriple(graph, node, "rotatePivotTranslate", shift) : error;
}

/// The same for the scale pivot and the scale.
std::string setScalePivot(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments,
                          Vec3 pivot, bool isInWorld) {
    const geometry::TransformParts parts = nodes::transformParts(graph, node);
    const Matrix4 scaling = scaleOnly(parts);
    const Vec3 constant =
        parts.scalePivotTranslate + parts.scalePivot - geometry::transformVector(parts.scalePivot, scaling);
    if (isInWorld) {
        const Found<Matrix4> toObject = worldToObject(graph, node);
        if (!toObject.ok()) return toObject.error;
        pivot = geometry::transformPoint(pivot, toObject.value);
    }
    const Vec3 shift = constant - pivot + geometry::transformVector(pivot, scaling);
    std::string error = writeTriple(graph, node, "scalePivot", pivot);
    if (!keepsPlace(arguments)) return error;
    return error.empty() ? writeTriple(graph, node, "scalePivotTranslate", shift) : error;
}

/// Puts both pivots into the middle of what is at and below a transform, if anything is. The scale acts on
/// the rotate pivot's place, but not on the scale pivot's.
std::string centrePivots(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
    const geometry::InverseMatrix toObject = worldMatrix(graph, node).inverse();
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
std::string zeroPivots(graph::Graph& graph, const Placed& node) {
    const Vec3 place = nodes::localMatrix(graph, node).row(3);
    for (const char* attribute :
         {"rotatePivot", "rotatePivotTranslate", "scalePivot", "scalePivotTranslate"}) {
        std::string error = writeTriple(graph, node, attribute, {});
        if (!error.empty()) return error;
    }
    return writeTriple(graph, node, "translate", place);
}

}  // namespace

bool isWorld(const ParsedArguments& arguments) {
    return arguments.isSet("worldSpace");
}

Vec3 tripleOf(const ParsedArguments& arguments, const char* flag) {
    const std::vector<Value>& values = arguments.values(flag);
    return {values[0].toFloat(), values[1].toFloat(), values[2].toFloat()};
}

std::string setPivots(graph::Graph& graph, const Placed& node, const ParsedArguments& arguments) {
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

}  // namespace host::commands
