#include "commands/freezeTransforms.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "commands/transformSupport.h"
#include "graph/hierarchy.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::TransformParts;
using geometry::Vec3;
using graph::NodeRef;

/// A node and where it was before anything was frozen.
struct Place {
    NodeRef node;
    Matrix4 world;
    Matrix4 parent;
};

/// Whether a matrix is the identity but for what rounding leaves of places as far out as `place` is.
bool isIdentity(const Matrix4& matrix, const Matrix4& place) {
    const Vec3 at = place.row(3);
    const double extent = std::max({1.0, std::abs(at.x), std::abs(at.y), std::abs(at.z)});
    return geometry::isEquivalent(matrix, Matrix4(), 1e-12 * extent);
}

std::string problem(graph::Graph& graph, const NodeRef& node, const char* text) {
    return "makeIdentity: " + graph.uniqueName(*node) + ' ' + text;
}

/// Where a matrix of a node has no inverse.
std::string inverseProblem(graph::Graph& graph, const NodeRef& node, const Matrix4& matrix) {
    return problem(graph, node, inverseObstacle(matrix)) + " and cannot be frozen.";
}

/// What changed above a node: from the old parent's space to the new one's.
Found<Matrix4> changeAbove(graph::Graph& graph, const Place& place) {
    const Matrix4 now = nodes::parentMatrix(graph, place.node);
    const geometry::InverseMatrix inverse = now.inverse();
    if (!inverse.ok) return {{}, inverseProblem(graph, place.node, now)};
    const Matrix4 change = place.parent * inverse.matrix;
    return {isIdentity(change, place.parent) ? Matrix4() : change, {}};
}

// Shapes.

/// Puts a matrix into the points of a shape.
std::string freezeMesh(graph::Graph& graph, const NodeRef& shape, const Matrix4& matrix) {
    const nodes::MeshPtr mesh = nodes::meshOf(graph, shape);
    if (mesh == nullptr) return {};
    if (!shape->otherParents().empty()) return problem(graph, shape, "is instanced and cannot be frozen.");
    if (graph.source(shape->plug("inMesh")))
        return problem(graph, shape, "has history. Delete it first: delete -constructionHistory.");
    nodes::setMesh(graph, shape, geometry::transformed(mesh->mesh, matrix));
    return {};
}

std::string freezeShape(graph::Graph& graph, const Place& place) {
    const Matrix4 now = nodes::worldMatrix(graph, place.node);
    const geometry::InverseMatrix inverse = now.inverse();
    if (!inverse.ok) return inverseProblem(graph, place.node, now);
    const Matrix4 matrix = place.world * inverse.matrix;
    if (isIdentity(matrix, place.world)) return {};
    if (place.node->isA("mesh")) return freezeMesh(graph, place.node, matrix);
    if (!place.node->isA("locator"))
        return problem(graph, place.node, "has points that this host cannot freeze.");
    const Vec3 local = nodes::tripleAt(graph, place.node->plug("localPosition"));
    return writeTriple(graph, place.node, "localPosition", geometry::transformPoint(local, matrix));
}

// Transforms.

/// Whether something that is asked for has a value.
bool hasWork(const TransformParts& parts, const FreezeRequest& request) {
    const Vec3 none;
    return (request.translate && (parts.translate != none || parts.rotatePivotTranslate != none ||
                                  parts.scalePivotTranslate != none)) ||
           (request.rotate && (parts.rotate != none || parts.rotateAxis != none)) ||
           (request.scale && (parts.scale != Vec3{1, 1, 1} || parts.shear != none));
}

/// The values that stay, placed so that both pivots are where they were.
/// @param above  see changeAbove
TransformParts frozenParts(const TransformParts& parts, const Matrix4& above, const FreezeRequest& request) {
    TransformParts frozen = parts;
    if (request.rotate) frozen.rotate = frozen.rotateAxis = {};
    if (request.scale) {
        frozen.scale = {1, 1, 1};
        frozen.shear = {};
    }
    frozen.rotatePivotTranslate = frozen.scalePivotTranslate = {};
    const Vec3 offset = parts.rotatePivotTranslate + parts.translate;
    const Vec3 rotatePivot = geometry::transformPoint(parts.rotatePivot + offset, above);
    const Vec3 scalePivot =
        geometry::transformPoint(parts.scalePivot, geometry::composeTransform(parts) * above);
    // Without a change above, the offset is taken as it is, not as a rounded difference.
    if (request.translate)
        frozen.translate = {};
    else
        frozen.translate = above == Matrix4() ? offset : rotatePivot - parts.rotatePivot;
    frozen.rotatePivot = rotatePivot - frozen.translate;
    // The scale leaves its pivot alone, so that only the rotation is between the two.
    const Matrix4 rotation = geometry::rotationMatrix(frozen.rotateAxis) *
                             geometry::rotationMatrix(frozen.rotate, frozen.rotateOrder);
    const bool isShared = parts.scalePivot == parts.rotatePivot && parts.scalePivotTranslate == Vec3{};
    frozen.scalePivot =
        isShared
            ? frozen.rotatePivot
            : geometry::transformVector(scalePivot - rotatePivot, rotation.transposed()) + frozen.rotatePivot;
    return frozen;
}

std::string freezeTransform(graph::Graph& graph, const Place& place, const FreezeRequest& request) {
    const NodeRef& node = place.node;
    const Found<Matrix4> above = changeAbove(graph, place);
    if (!above.ok()) return above.error;
    const TransformParts parts = nodes::transformParts(graph, node);
    if (above.value == Matrix4() && !hasWork(parts, request)) return {};
    if (!node->otherParents().empty()) return problem(graph, node, "is instanced and cannot be frozen.");
    const TransformParts frozen = frozenParts(parts, above.value, request);
    const std::pair<const char*, Vec3> values[] = {
        {"translate", frozen.translate},   {"rotate", frozen.rotate},    {"rotateAxis", frozen.rotateAxis},
        {"scale", frozen.scale},           {"shear", frozen.shear},      {"rotatePivot", frozen.rotatePivot},
        {"scalePivot", frozen.scalePivot}, {"rotatePivotTranslate", {}}, {"scalePivotTranslate", {}}};
    for (const auto& [attribute, value] : values) {
        std::string error = writeTriple(graph, node, attribute, value);
        if (!error.empty()) return error;
    }
    return {};
}

// Joints.

Matrix4 rotationOf(const Matrix4& matrix) {
    return geometry::rotationMatrix(geometry::decomposeTransform(matrix).rotate);
}

/// The rotation of a joint becomes its orientation.
std::string freezeJointRotation(graph::Graph& graph, const Place& place, const FreezeRequest& request) {
    const NodeRef& joint = place.node;
    const TransformParts parts = nodes::transformParts(graph, joint);
    const Matrix4 parentNow = parentRotation(graph, joint);
    const Matrix4 turned = rotationOf(place.parent) * parentNow.transposed();
    const bool isTurned = !geometry::isEquivalent(turned, Matrix4(), 1e-12);
    if (parts.rotate == Vec3{} && parts.rotateAxis == Vec3{} && !isTurned && !request.jointOrient) return {};
    const Matrix4 orient = request.jointOrient ? parentNow.transposed() : ownRotation(graph, joint) * turned;
    std::string error = writeTriple(graph, joint, "jointOrient", geometry::decomposeTransform(orient).rotate);
    for (const char* attribute : {"rotate", "rotateAxis"}) {
        if (error.empty()) error = writeTriple(graph, joint, attribute, {});
    }
    return error;
}

std::string freezeJoint(graph::Graph& graph, const Place& place, const FreezeRequest& request) {
    const NodeRef& joint = place.node;
    const Found<Matrix4> above = changeAbove(graph, place);
    if (!above.ok()) return above.error;
    std::string error;
    if (above.value != Matrix4()) {
        const TransformParts parts = nodes::transformParts(graph, joint);
        const Vec3 pivot = parts.rotatePivot + parts.rotatePivotTranslate;
        error = writeTriple(graph, joint, "translate",
                            geometry::transformPoint(pivot + parts.translate, above.value) - pivot);
    }
    if (error.empty() && request.rotate) error = freezeJointRotation(graph, place, request);
    if (error.empty() && request.scale) error = writeTriple(graph, joint, "scale", {1, 1, 1});
    if (error.empty() && request.scale) error = writeTriple(graph, joint, "shear", {});
    return error;
}

}  // namespace

std::string freezeTransforms(graph::Graph& graph, const NodeRef& top, const FreezeRequest& request) {
    std::vector<Place> places;
    graph::visitHierarchy(*top, [&](graph::Node& node) {
        const NodeRef ref = node.ref();
        const bool isTransform = node.isA("transform");
        places.push_back(
            {ref, nodes::worldMatrix(graph, ref), isTransform ? nodes::parentMatrix(graph, ref) : Matrix4()});
    });
    for (const Place& place : places) {
        std::string error;
        if (place.node->isA("joint"))
            error = freezeJoint(graph, place, request);
        else if (place.node->isA("transform"))
            error = freezeTransform(graph, place, request);
        else
            error = freezeShape(graph, place);
        if (!error.empty()) return error;
    }
    return {};
}

}  // namespace host::commands
