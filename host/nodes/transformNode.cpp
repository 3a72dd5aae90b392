// The matrices of transforms and joints.

#include "nodes/transformNode.h"

#include <algorithm>

#include "graph/instances.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

graph::Plug named(const graph::NodeRef& node, std::string_view name) {
    return node->plug(name);
}

geometry::Matrix4 matrixAt(graph::Graph& graph, const graph::NodeRef& node, std::string_view name,
                           std::size_t instance = 0) {
    graph::Plug plug = named(node, name);
    return matrixOf(graph.data(plug.isArray() ? plug.element(static_cast<int>(instance)) : plug));
}

bool inheritsTransform(graph::Graph& graph, const graph::NodeRef& node) {
    return !node->isA("transform") || graph.number(named(node, "inheritsTransform")) != 0.0;
}

/// Whether nothing was ever set or connected below a plug. The many attributes that are hardly ever used cost
/// one look-up each then.
bool isUntouched(const graph::Plug& plug) {
    const graph::Slot* slot = plug.node()->slot(plug.key());
    if (slot != nullptr && !slot->empty()) return false;
    if (plug.node()->hasIncoming(plug.attribute())) return false;
    for (const auto& child : plug.attribute().children()) {
        if (plug.node()->hasIncoming(*child)) return false;
    }
    return true;
}

/// What a transform's limits are called, and the value that each is about.
struct Limit {
    const char* value;
    const char* enable;
    geometry::Vec3 geometry::TransformParts::*part;
    bool isLowest;
};

constexpr Limit kLimits[] = {
    {"minTransLimit", "minTransLimitEnable", &geometry::TransformParts::translate, true},
    {"maxTransLimit", "maxTransLimitEnable", &geometry::TransformParts::translate, false},
    {"minRotLimit", "minRotLimitEnable", &geometry::TransformParts::rotate, true},
    {"maxRotLimit", "maxRotLimitEnable", &geometry::TransformParts::rotate, false},
    {"minScaleLimit", "minScaleLimitEnable", &geometry::TransformParts::scale, true},
    {"maxScaleLimit", "maxScaleLimitEnable", &geometry::TransformParts::scale, false}};

/// Where both limits of a value count and cross, the highest one wins.
void applyLimits(graph::Graph& graph, const graph::NodeRef& transform, geometry::TransformParts& parts) {
    for (const Limit& limit : kLimits) {
        const graph::Plug enable = named(transform, limit.enable);
        if (isUntouched(enable)) continue;
        const geometry::Vec3 bound = tripleAt(graph, named(transform, limit.value));
        geometry::Vec3& value = parts.*limit.part;
        for (int axis = 0; axis < 3; ++axis) {
            if (graph.number(enable.child(axis)) == 0.0) continue;
            value[axis] =
                limit.isLowest ? std::max(value[axis], bound[axis]) : std::min(value[axis], bound[axis]);
        }
    }
}

/// The identity for a node that has none.
geometry::Matrix4 offsetMatrix(graph::Graph& graph, const graph::NodeRef& node) {
    const graph::Plug offset = named(node, "offsetParentMatrix");
    return offset && !isUntouched(offset) ? matrixOf(graph.data(offset)) : geometry::Matrix4();
}

/// Computes the world matrices above a node from the top, so that each one finds its parent's. Hierarchies
/// may be deeper than the machine's stack.
void computeAncestors(graph::Graph& graph, const graph::NodeRef& node) {
    std::vector<graph::NodeRef> ahead;
    graph::NodeRef at = node;
    while (inheritsTransform(graph, at) && at->parent() != nullptr) {
        at = at->parent()->ref();
        if (graph.isCurrent(named(at, "worldMatrix").element(0))) break;
        ahead.push_back(at);
    }
    for (; !ahead.empty(); ahead.pop_back())
        matrixAt(graph, ahead.back(), "worldMatrix");
}

/// The world matrix of the first of these nodes, each of which is below the next one. The own matrices are
/// read as outputs, so that their changes are told.
geometry::Matrix4 worldAlong(graph::Graph& graph, const std::vector<graph::Instance>& upwards,
                             std::size_t from) {
    geometry::Matrix4 world;
    for (std::size_t k = from; k < upwards.size(); ++k) {
        const graph::NodeRef node = upwards[k].node->ref();
        world = world * matrixAt(graph, node, "matrix") * offsetMatrix(graph, node);
        if (!inheritsTransform(graph, node)) break;
    }
    return world;
}

/// The same outputs as those of computeMatrix, for another instance than the first.
geometry::Matrix4 computeInstance(graph::Graph& graph, const graph::NodeRef& node, std::string_view name,
                                  const std::vector<graph::Instance>& upwards) {
    const bool isWorld = name == "worldMatrix" || name == "worldInverseMatrix";
    const bool isInverse = name == "worldInverseMatrix" || name == "parentInverseMatrix";
    const geometry::Matrix4 matrix =
        isWorld ? worldAlong(graph, upwards, 0) : offsetMatrix(graph, node) * worldAlong(graph, upwards, 1);
    return isInverse ? matrix.inverse().matrix : matrix;
}

geometry::Matrix4 computeMatrix(graph::Graph& graph, const graph::NodeRef& node, std::string_view name) {
    if (name == "matrix") {
        return node->isA("transform") ? geometry::composeTransform(transformParts(graph, node))
                                      : geometry::Matrix4();
    }
    if (name == "parentMatrix") {
        const geometry::Matrix4 offset = offsetMatrix(graph, node);
        return node->parent() != nullptr ? offset * matrixAt(graph, node->parent()->ref(), "worldMatrix")
                                         : offset;
    }
    if (name == "worldMatrix") {
        computeAncestors(graph, node);
        const geometry::Matrix4 own = matrixAt(graph, node, "matrix");
        return own * (inheritsTransform(graph, node) ? matrixAt(graph, node, "parentMatrix")
                                                     : offsetMatrix(graph, node));
    }
    if (name == "inverseMatrix") return matrixAt(graph, node, "matrix").inverse().matrix;
    if (name == "parentInverseMatrix") return matrixAt(graph, node, "parentMatrix").inverse().matrix;
    return matrixAt(graph, node, "worldMatrix").inverse().matrix;
}

}  // namespace

graph::ComputedValue computeDagOutput(graph::Graph& graph, const graph::Plug& output) {
    const std::string& name = output.attribute().longName();
    const int number = output.isElement() ? output.logicalIndex() : 0;
    if (number > 0 && graph.hasInstances()) {
        const std::vector<graph::Instance> upwards =
            graph::upwards({output.node().get(), static_cast<std::size_t>(number)});
        if (!upwards.empty()) return matrixData(computeInstance(graph, output.node(), name, upwards));
    }
    return matrixData(computeMatrix(graph, output.node(), name));
}

geometry::TransformParts transformParts(graph::Graph& graph, const graph::NodeRef& transform) {
    const auto triple = [&](std::string_view name) { return tripleAt(graph, named(transform, name)); };
    geometry::TransformParts parts;
    parts.translate = triple("translate");
    parts.rotate = triple("rotate");
    parts.scale = triple("scale");
    parts.shear = triple("shear");
    parts.rotateOrder = rotateOrderAt(graph, named(transform, "rotateOrder"));
    parts.rotateAxis = triple("rotateAxis");
    parts.scalePivot = triple("scalePivot");
    parts.scalePivotTranslate = triple("scalePivotTranslate");
    parts.rotatePivot = triple("rotatePivot");
    parts.rotatePivotTranslate = triple("rotatePivotTranslate");
    applyLimits(graph, transform, parts);
    if (!transform->isA("joint")) return parts;
    parts.jointOrient = triple("jointOrient");
    if (graph.number(named(transform, "segmentScaleCompensate")) == 0.0) return parts;
    const geometry::Vec3 parentScale = triple("inverseScale");
    for (int axis = 0; axis < 3; ++axis)
        parts.inverseParentScale[axis] = parentScale[axis] != 0.0 ? 1.0 / parentScale[axis] : 1.0;
    return parts;
}

geometry::Matrix4 localMatrix(graph::Graph& graph, const graph::NodeRef& node) {
    return matrixAt(graph, node, "matrix");
}

geometry::Matrix4 worldMatrix(graph::Graph& graph, const graph::NodeRef& node, std::size_t instance) {
    return matrixAt(graph, node, "worldMatrix", instance);
}

geometry::Matrix4 parentMatrix(graph::Graph& graph, const graph::NodeRef& node, std::size_t instance) {
    return matrixAt(graph, node, "parentMatrix", instance);
}

void setTranslation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value) {
    setTripleAt(graph, named(transform, "translate"), value);
}

void setRotation(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& radians) {
    setTripleAt(graph, named(transform, "rotate"), radians);
}

void setScale(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value) {
    setTripleAt(graph, named(transform, "scale"), value);
}

void setShear(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Vec3& value) {
    setTripleAt(graph, named(transform, "shear"), value);
}

void setRotateOrder(graph::Graph& graph, const graph::NodeRef& transform, geometry::RotateOrder order) {
    graph.setNumber(named(transform, "rotateOrder"), static_cast<double>(order));
}

geometry::TransformParts partsWithMatrix(graph::Graph& graph, const graph::NodeRef& transform,
                                         const geometry::Matrix4& matrix) {
    geometry::TransformParts parts = transformParts(graph, transform);
    const geometry::Vec3& compensation = parts.inverseParentScale;
    const geometry::Matrix4 parentScale =
        geometry::Matrix4::scaling({1.0 / compensation.x, 1.0 / compensation.y, 1.0 / compensation.z});
    const geometry::TransformParts plain =
        geometry::decomposeTransform(matrix * parentScale, parts.rotateOrder);
    // Rotate axis and joint orient are applied before and after the rotation: both must be divided out.
    const bool isPlain = parts.rotateAxis == geometry::Vec3() && parts.jointOrient == geometry::Vec3();
    parts.rotate = isPlain
                       ? plain.rotate
                       : geometry::eulerAngles(geometry::rotationMatrix(parts.rotateAxis).transposed() *
                                                   geometry::rotationMatrix(plain.rotate, parts.rotateOrder) *
                                                   geometry::rotationMatrix(parts.jointOrient).transposed(),
                                               parts.rotateOrder);
    parts.scale = plain.scale;
    parts.shear = plain.shear;
    parts.translate = {};
    parts.translate = matrix.row(3) - geometry::composeTransform(parts).row(3);
    return parts;
}

void setLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Matrix4& matrix) {
    const geometry::TransformParts parts = partsWithMatrix(graph, transform, matrix);
    setTranslation(graph, transform, parts.translate);
    setRotation(graph, transform, parts.rotate);
    setScale(graph, transform, parts.scale);
    setShear(graph, transform, parts.shear);
}

void compensateParentScale(graph::Graph& graph, const graph::NodeRef& joint) {
    const graph::Plug inverseScale = named(joint, "inverseScale");
    if (!inverseScale) return;
    graph::Node* parent = joint->parent();
    if (parent != nullptr && parent->isA("joint")) {
        const graph::Plug scale = parent->plug("scale");
        if (graph.source(inverseScale) != scale) graph.connect(scale, inverseScale);
    } else if (graph.source(inverseScale)) {
        graph.disconnect(inverseScale);
        setTripleAt(graph, inverseScale, {1.0, 1.0, 1.0});
    }
}

}  // namespace host::nodes
