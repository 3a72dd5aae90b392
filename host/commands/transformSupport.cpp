#include "commands/transformSupport.h"

#include <cmath>

#include "graph/instances.h"
#include "nodes/plugs.h"
#include "nodes/sets.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;

/// The angle nearest to `target` that differs from `angle` by whole turns.
double nearestTurn(double angle, double target) {
    const double turn = 2.0 * geometry::kPi;
    return angle + turn * std::round((target - angle) / turn);
}

double distance(const Vec3& a, const Vec3& b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z);
}

Vec3 nearestAngles(const Matrix4& rotation, geometry::RotateOrder order, const Vec3& present) {
    Vec3 first = geometry::eulerAngles(rotation, order);
    Vec3 second = geometry::alternateAngles(first, order);
    for (int axis = 0; axis < 3; ++axis) {
        first[axis] = nearestTurn(first[axis], present[axis]);
        second[axis] = nearestTurn(second[axis], present[axis]);
    }
    return distance(second, present) < distance(first, present) ? second : first;
}

}  // namespace

Placed Placed::parent() const {
    const graph::Instance above = graph::upwards(graph::SelectionItem{node, {}, {}, path}).at(1);
    return graph::SelectionItem{above.node->ref(), {}, {}, above.number};
}

Matrix4 worldMatrix(graph::Graph& graph, const Placed& node) {
    return nodes::worldMatrix(graph, node.node, node.path);
}

Matrix4 parentMatrix(graph::Graph& graph, const Placed& node) {
    return nodes::parentMatrix(graph, node.node, node.path);
}

Vec3 completed(const AxisValues& values, const Vec3& fallback) {
    return {values[0].value_or(fallback.x), values[1].value_or(fallback.y), values[2].value_or(fallback.z)};
}

std::string writeObstacle(const graph::Graph& graph, const graph::Plug& plug) {
    if (!isLocked(plug) && !hasSource(graph, plug)) return {};
    return "The attribute '" + graph.plugName(plug) + "' is locked or connected and cannot be modified.";
}

std::string writeTriple(graph::Graph& graph, const graph::NodeRef& transform, const char* attribute,
                        const Vec3& value) {
    const graph::Plug compound = transform->plug(attribute);
    const Vec3 present = nodes::tripleAt(graph, compound);
    for (int axis = 0; axis < 3; ++axis) {
        if (value[axis] == present[axis]) continue;
        std::string error = writeObstacle(graph, compound.child(axis));
        if (!error.empty()) return error;
    }
    for (int axis = 0; axis < 3; ++axis) {
        if (value[axis] != present[axis]) graph.setNumber(compound.child(axis), value[axis]);
    }
    return {};
}

std::string writeLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform, const Matrix4& matrix) {
    const geometry::TransformParts parts = nodes::partsWithMatrix(graph, transform, matrix);
    const std::pair<const char*, Vec3> values[] = {{"translate", parts.translate},
                                                   {"rotate", parts.rotate},
                                                   {"scale", parts.scale},
                                                   {"shear", parts.shear}};
    for (const auto& [attribute, wanted] : values) {
        const graph::Plug compound = transform->plug(attribute);
        const Vec3 present = nodes::tripleAt(graph, compound);
        Vec3 value = wanted;
        for (int axis = 0; axis < 3; ++axis) {
            const bool isRounding = std::abs(value[axis] - present[axis]) <= 1e-9;
            if (isRounding && !writeObstacle(graph, compound.child(axis)).empty())
                value[axis] = present[axis];
        }
        std::string error = writeTriple(graph, transform, attribute, value);
        if (!error.empty()) return error;
    }
    return {};
}

const char* inverseObstacle(const Matrix4& matrix, const char* flat) {
    for (int row = 0; row < 4; ++row) {
        if (!geometry::isFinite(matrix.row(row))) return "has a matrix with numbers that are not finite";
    }
    return flat;
}

Found<Matrix4> inverseFor(const graph::Graph& graph, const graph::NodeRef& node, const Matrix4& matrix,
                          const char* flat) {
    const geometry::InverseMatrix inverse = matrix.inverse();
    if (inverse.ok) return {inverse.matrix, {}};
    return {{},
            graph.uniqueName(*node) + ' ' + inverseObstacle(matrix, flat) +
                " and cannot be placed in the world."};
}

Found<Matrix4> worldToParent(graph::Graph& graph, const Placed& transform) {
    return inverseFor(graph, transform, parentMatrix(graph, transform));
}

Found<Matrix4> worldToObject(graph::Graph& graph, const Placed& node) {
    Found<Matrix4> toParent = worldToParent(graph, node);
    return toParent.ok() ? inverseFor(graph, node, worldMatrix(graph, node), "has a scale of 0") : toParent;
}

std::string moveInWorld(graph::Graph& graph, const Placed& transform, const Vec3& offset) {
    const Found<Matrix4> toParent = worldToParent(graph, transform);
    if (!toParent.ok()) return toParent.error;
    const Vec3 present = nodes::tripleAt(graph, transform->plug("translate"));
    return writeTriple(graph, transform, "translate",
                       present + geometry::transformVector(offset, toParent.value));
}

Matrix4 ownRotation(graph::Graph& graph, const graph::NodeRef& transform) {
    const geometry::TransformParts parts = nodes::transformParts(graph, transform);
    return geometry::rotationMatrix(parts.rotateAxis) *
           geometry::rotationMatrix(parts.rotate, parts.rotateOrder) *
           geometry::rotationMatrix(parts.jointOrient);
}

Matrix4 parentRotation(graph::Graph& graph, const Placed& transform) {
    const geometry::TransformParts parts = geometry::decomposeTransform(parentMatrix(graph, transform));
    return geometry::rotationMatrix(parts.rotate);
}

std::string setOwnRotation(graph::Graph& graph, const graph::NodeRef& transform, const Matrix4& rotation) {
    const geometry::TransformParts parts = nodes::transformParts(graph, transform);
    const Matrix4 plain = geometry::rotationMatrix(parts.rotateAxis).transposed() * rotation *
                          geometry::rotationMatrix(parts.jointOrient).transposed();
    return writeTriple(graph, transform, "rotate", nearestAngles(plain, parts.rotateOrder, parts.rotate));
}

std::string setWorldRotation(graph::Graph& graph, const Placed& transform, const Matrix4& rotation) {
    // The rotation of a parent without extent is arbitrary.
    const Found<Matrix4> toParent = worldToParent(graph, transform);
    if (!toParent.ok()) return toParent.error;
    return setOwnRotation(graph, transform, rotation * parentRotation(graph, transform).transposed());
}

Chain::Chain(const graph::SelectionItem& item) {
    for (const graph::Instance& place : graph::upwards(item))
        nodes.push_back(place.node->ref());
}

Placed Chain::place() const {
    std::vector<graph::Node*> chain;
    chain.reserve(nodes.size());
    for (const graph::NodeRef& at : nodes)
        chain.push_back(at.get());
    return graph::SelectionItem{node(), {}, {}, graph::InstanceNumbers().at(chain).number};
}

Chain Chain::below(const graph::NodeRef& child) const {
    Chain chain;
    chain.nodes.push_back(child);
    chain.nodes.insert(chain.nodes.end(), nodes.begin(), nodes.end());
    return chain;
}

std::string moveBelow(graph::Graph& graph, const Chain& chain, const Chain& parent, bool isRelative) {
    const graph::NodeRef node = chain.node();
    graph::Node* to = parent.node().get();
    if (chain.parent() != node->parent()) {
        graph.removeInstance(*node, chain.parent());
        graph.addInstance(*node, to);
        return {};
    }
    const bool keepsPlace = !isRelative && node->isA("transform") && node->otherParents().empty();
    const Matrix4 world = keepsPlace ? worldMatrix(graph, chain.place()) : Matrix4();
    graph.reparent(*node, to);
    nodes::compensateParentScale(graph, node);
    if (!keepsPlace) return {};
    const Matrix4 local = world * parentMatrix(graph, parent.below(node).place()).inverse().matrix;
    // A node that is already in the right place keeps its exact values.
    if (geometry::isEquivalent(local, nodes::localMatrix(graph, node), 1e-12)) return {};
    for (const char* attribute : {"translate", "rotate", "scale", "shear"}) {
        const graph::Plug compound = node->plug(attribute);
        for (int axis = 0; axis < 3; ++axis) {
            if (isLocked(compound.child(axis)))
                return "The attribute '" + graph.plugName(compound.child(axis)) +
                       "' is locked, so that the object would not keep its place. Unlock it, or add "
                       "-relative.";
        }
    }
    nodes::setLocalMatrix(graph, node, local);
    return {};
}

graph::Node* parentAt(const graph::SelectionItem& item) {
    const std::vector<graph::Instance> upwards = graph::upwards(item);
    return upwards.size() > 1 ? upwards[1].node : nullptr;
}

void takeInstance(graph::Graph& graph, const graph::NodeRef& node, graph::Node* parent) {
    graph.removeInstance(*node, parent);
    nodes::compensateParentScale(graph, node);
    nodes::shadeInstances(graph, node);
}

Vec3 rotatePivotInWorld(graph::Graph& graph, const Placed& transform) {
    const geometry::TransformParts parts = nodes::transformParts(graph, transform);
    return geometry::transformPoint(parts.rotatePivot + parts.rotatePivotTranslate + parts.translate,
                                    parentMatrix(graph, transform));
}

Vec3 scalePivotInWorld(graph::Graph& graph, const Placed& transform) {
    // Scaling does not move its pivot, so the pivot is transformed by the matrix like any point.
    return geometry::transformPoint(nodes::transformParts(graph, transform).scalePivot,
                                    worldMatrix(graph, transform));
}

Vec3 toRadians(const Vec3& degrees) {
    const auto radians = [](double angle) { return angle * (geometry::kPi / 180.0); };
    return {radians(degrees.x), radians(degrees.y), radians(degrees.z)};
}

Vec3 toDegrees(const Vec3& radians) {
    const auto degrees = [](double angle) { return angle * (180.0 / geometry::kPi); };
    return {degrees(radians.x), degrees(radians.y), degrees(radians.z)};
}

}  // namespace host::commands
