#include "commands/jointOrient.h"

#include <algorithm>
#include <utility>

#include "commands/transformSupport.h"
#include "nodes/plugs.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::NodeRef;

/// Directions whose sine is below this count as parallel.
constexpr double kParallel = 1e-6;

std::vector<NodeRef> jointsBelow(const NodeRef& joint) {
    std::vector<NodeRef> joints;
    for (graph::Node* child : joint->children()) {
        if (child->isA("joint")) joints.push_back(child->ref());
    }
    return joints;
}

Vec3 worldPlace(graph::Graph& graph, const NodeRef& node) {
    return nodes::worldMatrix(graph, node).row(3);
}

/// Matrix from directions in the world to the space in which a joint's orientation turns.
Found<Matrix4> toOrientSpace(graph::Graph& graph, const NodeRef& joint) {
    const Vec3 compensation = nodes::transformParts(graph, joint).inverseParentScale;
    Found<Matrix4> matrix = worldToParent(graph, joint);
    matrix.value =
        matrix.value * Matrix4::scaling({1.0 / compensation.x, 1.0 / compensation.y, 1.0 / compensation.z});
    return matrix;
}

/// The part of a direction that is perpendicular to a unit vector; zero if there is none worth the name.
Vec3 perpendicularPart(const Vec3& direction, const Vec3& unit) {
    const Vec3 whole = normalized(direction);
    const Vec3 rest = whole - unit * dot(whole, unit);
    return length(rest) > kParallel ? normalized(rest) : Vec3{};
}

/// The rotation whose axes[0] is `first` and whose axes[1] or axes[2] is the other direction.
Matrix4 frame(const std::array<int, 3>& axes, const Vec3& first, const Vec3& other, bool isSecond) {
    // Of an even order of letters the first two axes make the third, of an odd one they make its opposite.
    const bool isEven = (axes[1] - axes[0] + 3) % 3 == 1;
    std::array<Vec3, 3> rows;
    rows[static_cast<std::size_t>(axes[0])] = first;
    const Vec3 made = isSecond == isEven ? cross(first, other) : cross(other, first);
    rows[static_cast<std::size_t>(axes[isSecond ? 1 : 2])] = other;
    rows[static_cast<std::size_t>(axes[isSecond ? 2 : 1])] = made;
    Matrix4 matrix;
    for (std::size_t row = 0; row < 3; ++row)
        matrix.m[row] = {rows[row].x, rows[row].y, rows[row].z, 0.0};
    return matrix;
}

/// The orientation that points a joint to its child; nothing if it has none, or none that is elsewhere.
/// @param toSpace  see toOrientSpace
std::optional<Matrix4> pointedOrient(graph::Graph& graph, const NodeRef& joint, const Matrix4& toSpace,
                                     const JointOrienting& orienting) {
    const std::vector<NodeRef> children = jointsBelow(joint);
    if (children.empty()) return std::nullopt;
    const std::array<int, 3>& axes = *orienting.axes;
    const Vec3 here = worldPlace(graph, joint);
    const auto toward = [&](const NodeRef& child) {
        return geometry::transformVector(worldPlace(graph, child) - here, toSpace);
    };
    const Vec3 first = normalized(toward(children[0]));
    if (first == Vec3{}) return std::nullopt;
    if (orienting.up) {
        const Vec3 second = perpendicularPart(geometry::transformVector(*orienting.up, toSpace), first);
        return frame(axes, first, second == Vec3{} ? geometry::anyPerpendicular(first) : second, true);
    }
    Vec3 third;
    if (children.size() > 1) third = perpendicularPart(cross(first, normalized(toward(children[1]))), first);
    const Matrix4 present = geometry::rotationMatrix(nodes::transformParts(graph, joint).jointOrient);
    if (third == Vec3{}) third = perpendicularPart(present.row(axes[2]), first);
    return frame(axes, first, third == Vec3{} ? geometry::anyPerpendicular(first) : third, false);
}

Vec3 anglesOf(const Matrix4& rotation) {
    return geometry::eulerAngles(rotation, geometry::RotateOrder::Xyz);
}

}  // namespace

KeptChildren::KeptChildren(graph::Graph& graph, const NodeRef& parent) {
    for (graph::Node* child : parent->children()) {
        if (!child->isA("transform")) continue;
        const NodeRef node = child->ref();
        children_.push_back({node, nodes::worldMatrix(graph, node), parentRotation(graph, node)});
    }
}

std::string KeptChildren::restore(graph::Graph& graph) const {
    for (const Child& child : children_) {
        // What did not move keeps its exact values.
        if (geometry::isEquivalent(nodes::worldMatrix(graph, child.node), child.world, 1e-12)) continue;
        const Found<Matrix4> toParent = worldToParent(graph, child.node);
        if (!toParent.ok()) return toParent.error;
        if (!child.node->isA("joint")) {
            std::string error = writeLocalMatrix(graph, child.node, child.world * toParent.value);
            if (!error.empty()) return error;
            continue;
        }
        const Matrix4 turned = child.parentRotation * parentRotation(graph, child.node).transposed();
        std::string error;
        if (!geometry::isEquivalent(turned, Matrix4(), 1e-12)) {
            const Vec3 orient = nodes::tripleAt(graph, child.node->plug("jointOrient"));
            error = writeTriple(graph, child.node, "jointOrient",
                                anglesOf(geometry::rotationMatrix(orient) * turned));
        }
        if (error.empty())
            error = moveInWorld(graph, child.node, child.world.row(3) - worldPlace(graph, child.node));
        if (!error.empty()) return error;
    }
    return {};
}

Found<JointOrienting> jointOrienting(const std::string& axes, const std::string& secondary) {
    JointOrienting orienting;
    if (axes != "none") {
        std::string sorted = axes;
        std::sort(sorted.begin(), sorted.end());
        if (sorted != "xyz")
            return {{}, "joint: -orientJoint takes none or an order of axes like xyz, not " + axes + '.'};
        orienting.axes = {axes[0] - 'x', axes[1] - 'x', axes[2] - 'x'};
    }
    if (secondary.empty() || secondary == "none") return {orienting, {}};
    const std::string direction = secondary.substr(1);
    const int axis = secondary[0] - 'x';
    if (axis < 0 || axis > 2 || (direction != "up" && direction != "down"))
        return {{}, "joint: -secondaryAxisOrient takes none or a direction like yup, not " + secondary + '.'};
    orienting.up = Vec3{};
    (*orienting.up)[axis] = direction == "up" ? 1.0 : -1.0;
    return {orienting, {}};
}

std::string orientJoint(graph::Graph& graph, const NodeRef& joint, const JointOrienting& orienting,
                        bool zeroesScaleOrient) {
    const geometry::TransformParts parts = nodes::transformParts(graph, joint);
    // The rotation is between the orientation and the axes of the scale, so it has to be none.
    if (parts.rotate != Vec3{})
        return "joint: Cannot orient " + graph.uniqueName(*joint) + " which has non-zero rotations.";
    const Found<Matrix4> toSpace = toOrientSpace(graph, joint);
    if (!toSpace.ok()) return toSpace.error;
    const Matrix4 present = geometry::rotationMatrix(parts.jointOrient);
    const Matrix4 wanted =
        orienting.axes ? pointedOrient(graph, joint, toSpace.value, orienting).value_or(present) : Matrix4();
    const Matrix4 scaleAxes = geometry::rotationMatrix(parts.rotateAxis) * present * wanted.transposed();
    const KeptChildren kept(graph, joint);
    std::string error = writeTriple(graph, joint, "jointOrient", anglesOf(wanted));
    if (error.empty())
        error = writeTriple(graph, joint, "rotateAxis", zeroesScaleOrient ? Vec3{} : anglesOf(scaleAxes));
    return error.empty() ? kept.restore(graph) : error;
}

}  // namespace host::commands
