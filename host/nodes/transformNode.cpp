// The node types transform and joint: their attributes and matrices.

#include "nodes/transformNode.h"

#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::ValueKind;

graph::Plug named(const graph::NodeRef& node, std::string_view name) {
    return node->plug(name);
}

geometry::RotateOrder rotateOrderOf(graph::Graph& graph, const graph::NodeRef& transform) {
    const double value = graph.number(named(transform, "rotateOrder"));
    // A number from a connection may be out of range.
    return value >= 0.0 && value <= 5.0 ? static_cast<geometry::RotateOrder>(static_cast<int>(value))
                                        : geometry::RotateOrder::Xyz;
}

geometry::Matrix4 matrixAt(graph::Graph& graph, const graph::NodeRef& node, std::string_view name) {
    graph::Plug plug = named(node, name);
    return matrixOf(graph.data(plug.isArray() ? plug.element(0) : plug));
}

bool inheritsTransform(graph::Graph& graph, const graph::NodeRef& node) {
    return !node->isA("transform") || graph.number(named(node, "inheritsTransform")) != 0.0;
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

geometry::Matrix4 computeMatrix(graph::Graph& graph, const graph::NodeRef& node, std::string_view name) {
    if (name == "matrix") {
        return node->isA("transform") ? geometry::composeTransform(transformParts(graph, node))
                                      : geometry::Matrix4();
    }
    if (name == "parentMatrix") {
        if (node->parent() == nullptr) return {};
        return matrixAt(graph, node->parent()->ref(), "worldMatrix");
    }
    if (name == "worldMatrix") {
        computeAncestors(graph, node);
        const geometry::Matrix4 own = matrixAt(graph, node, "matrix");
        return inheritsTransform(graph, node) ? own * matrixAt(graph, node, "parentMatrix") : own;
    }
    if (name == "inverseMatrix") return matrixAt(graph, node, "matrix").inverse().matrix;
    if (name == "parentInverseMatrix") return matrixAt(graph, node, "parentMatrix").inverse().matrix;
    return matrixAt(graph, node, "worldMatrix").inverse().matrix;
}

AttributeSpec matrixOutput(const char* longName, const char* shortName) {
    return graph::typed(longName, shortName, "matrix").output();
}

AttributeSpec keyableTriple(const char* longName, const char* shortName, ValueKind kind, double value = 0.0) {
    AttributeSpec spec = graph::triple(longName, shortName, kind);
    for (AttributeSpec& child : spec.children) {
        child.isKeyable = true;
        child.defaultValue = value;
    }
    return spec;
}

AttributeSpec shear() {
    std::vector<AttributeSpec> children;
    for (const char* axes : {"XY", "XZ", "YZ"}) {
        std::string lower(axes);
        for (char& letter : lower)
            letter = static_cast<char>(letter - 'A' + 'a');
        children.push_back(graph::number(std::string("shear") + axes, "sh" + lower));
    }
    return graph::compound("shear", "sh", std::move(children));
}

AttributeSpec instObjGroups() {
    return graph::compound(
               "instObjGroups", "iog",
               {graph::compound("objectGroups", "og",
                                {graph::typed("objectGrpCompList", "gcl", "componentList"),
                                 graph::number("objectGroupId", "gid", ValueKind::Int).withDefault(-1),
                                 graph::number("objectGrpColor", "gco", ValueKind::Int)})
                    .array()})
        .array();
}

}  // namespace

graph::ComputedValue computeDagOutput(graph::Graph& graph, const graph::Plug& output) {
    return matrixData(computeMatrix(graph, output.node(), output.attribute().longName()));
}

geometry::TransformParts transformParts(graph::Graph& graph, const graph::NodeRef& transform) {
    const auto triple = [&](std::string_view name) { return tripleAt(graph, named(transform, name)); };
    geometry::TransformParts parts;
    parts.translate = triple("translate");
    parts.rotate = triple("rotate");
    parts.scale = triple("scale");
    parts.shear = triple("shear");
    parts.rotateOrder = rotateOrderOf(graph, transform);
    parts.rotateAxis = triple("rotateAxis");
    parts.scalePivot = triple("scalePivot");
    parts.scalePivotTranslate = triple("scalePivotTranslate");
    parts.rotatePivot = triple("rotatePivot");
    parts.rotatePivotTranslate = triple("rotatePivotTranslate");
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

geometry::Matrix4 worldMatrix(graph::Graph& graph, const graph::NodeRef& node) {
    return matrixAt(graph, node, "worldMatrix");
}

geometry::Matrix4 parentMatrix(graph::Graph& graph, const graph::NodeRef& node) {
    return matrixAt(graph, node, "parentMatrix");
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

void setLocalMatrix(graph::Graph& graph, const graph::NodeRef& transform, const geometry::Matrix4& matrix) {
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

void addDagTypes(graph::NodeTypes& types) {
    types.add({"node",
               "",
               {graph::message("message", "msg"), graph::number("caching", "cch", ValueKind::Bool),
                graph::number("frozen", "fzn", ValueKind::Bool),
                graph::number("isHistoricallyInteresting", "ihi", ValueKind::Enum).withDefault(2),
                graph::enumeration("nodeState", "nds", {"Normal", "HasNoEffect", "Blocking"})},
               {},
               true});
    types.add({"entity", "node", {}, {}, true});
    types.add(
        {"dagNode",
         "entity",
         {graph::number("visibility", "v", ValueKind::Bool).withDefault(1).keyable(),
          graph::number("intermediateObject", "io", ValueKind::Bool),
          graph::number("template", "tmp", ValueKind::Bool), instObjGroups(), matrixOutput("matrix", "m"),
          matrixOutput("inverseMatrix", "im"), matrixOutput("worldMatrix", "wm").array(),
          matrixOutput("worldInverseMatrix", "wim").array(), matrixOutput("parentMatrix", "pm").array(),
          matrixOutput("parentInverseMatrix", "pim").array()},
         {computeDagOutput},
         true});
    types.add({"transform",
               "dagNode",
               {keyableTriple("translate", "t", ValueKind::Distance),
                keyableTriple("rotate", "r", ValueKind::Angle),
                graph::enumeration("rotateOrder", "ro", {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"}),
                keyableTriple("scale", "s", ValueKind::Double, 1.0), shear(),
                graph::triple("rotatePivot", "rp", ValueKind::Distance),
                graph::triple("rotatePivotTranslate", "rpt", ValueKind::Distance),
                graph::triple("scalePivot", "sp", ValueKind::Distance),
                graph::triple("scalePivotTranslate", "spt", ValueKind::Distance),
                graph::triple("rotateAxis", "ra", ValueKind::Angle),
                graph::number("inheritsTransform", "it", ValueKind::Bool).withDefault(1)}});
    types.add({"joint",
               "transform",
               {keyableTriple("jointOrient", "jo", ValueKind::Angle),
                graph::number("segmentScaleCompensate", "ssc", ValueKind::Bool).withDefault(1),
                // The scale of the parent joint, whose inverse is applied.
                keyableTriple("inverseScale", "is", ValueKind::Double, 1.0),
                graph::number("radius", "radi", ValueKind::Float).withDefault(1).keyable(),
                graph::triple("objectColorRGB", "obcc", ValueKind::Float)}});
}

}  // namespace host::nodes
