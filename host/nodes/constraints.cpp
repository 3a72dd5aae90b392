#include "nodes/constraints.h"

#include "geometry/orientation.h"
#include "geometry/quaternion.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using geometry::Matrix4;
using geometry::Vec3;

/// What a constraint may compute. Each type computes one or two of them.
struct Channels {
    Vec3 translate;
    Vec3 rotate;
    Vec3 scale{1.0, 1.0, 1.0};
};

/// The names of a channel on the constrained transform, and of its output and its rest value on constraints.
struct Channel {
    const char* name;
    const char* output;
    const char* rest;
    Vec3 Channels::*value;
};

constexpr Channel kChannels[] = {{"translate", "constraintTranslate", "restTranslate", &Channels::translate},
                                 {"rotate", "constraintRotate", "restRotate", &Channels::rotate},
                                 {"scale", "constraintScale", "restScale", &Channels::scale}};

/// A target that counts. The sum of all weights is 1.
struct Target {
    graph::Plug plug;
    double weight = 0.0;
};

/// Reads the plugs of one constraint.
class Reader {
  public:
    Reader(graph::Graph& graph, const graph::NodeRef& node) : graph_(graph), node_(node) {}

    const graph::NodeRef& node() const { return node_; }
    double number(const char* name) const { return graph_.number(node_->plug(name)); }
    Vec3 triple(const char* name) const { return tripleAt(graph_, node_->plug(name)); }
    Matrix4 matrix(const char* name) const { return matrixOf(graph_.data(node_->plug(name))); }
    geometry::RotateOrder order(const char* name) const { return rotateOrderAt(graph_, node_->plug(name)); }

    bool isOn(const Target& target, const char* name) const {
        return graph_.number(childPlug(target.plug, name)) != 0.0;
    }
    Vec3 triple(const Target& target, const char* name) const {
        return tripleAt(graph_, childPlug(target.plug, name));
    }
    Matrix4 parentMatrix(const Target& target) const {
        return matrixOf(graph_.data(childPlug(target.plug, "targetParentMatrix")));
    }
    /// Rotation of a target below its parent.
    Matrix4 rotation(const Target& target) const {
        return geometry::rotationMatrix(triple(target, "targetRotate"),
                                        rotateOrderAt(graph_, childPlug(target.plug, "targetRotateOrder"))) *
               geometry::rotationMatrix(triple(target, "targetJointOrient"));
    }
    /// Where the rotate pivot of a target is below its parent.
    Vec3 pivot(const Target& target) const {
        return triple(target, "targetTranslate") + triple(target, "targetRotatePivot") +
               triple(target, "targetRotateTranslate");
    }
    Vec3 pivotInWorld(const Target& target) const {
        return geometry::transformPoint(pivot(target), parentMatrix(target));
    }
    /// From the rotate pivot of the constrained transform to its translation.
    Vec3 ownPivot() const { return triple("constraintRotatePivot") + triple("constraintRotateTranslate"); }

    std::vector<Target> targets() const {
        std::vector<Target> result;
        double sum = 0.0;
        const graph::Plug all = node_->plug("target");
        for (const int index : graph_.elements(all)) {
            const graph::Plug element = all.element(index);
            const double weight = graph_.number(childPlug(element, "targetWeight"));
            if (!(weight > 0.0)) continue;
            result.push_back({element, weight});
            sum += weight;
        }
        for (Target& target : result)
            target.weight /= sum;
        return result;
    }

  private:
    graph::Graph& graph_;
    const graph::NodeRef& node_;
};

/// The translation that brings the constrained rotate pivot to a point of the world.
Vec3 translationTo(const Reader& read, const Vec3& world) {
    return geometry::transformPoint(world, read.matrix("constraintParentInverseMatrix")) - read.ownPivot();
}

/// The angles that give the constrained transform a rotation in its parent's space.
Vec3 anglesOf(const Reader& read, const Matrix4& rotation) {
    const Matrix4 orient = geometry::rotationMatrix(read.triple("constraintJointOrient"));
    return geometry::eulerAngles(rotation * orient.transposed(), read.order("constraintRotateOrder"));
}

/// The same for a rotation in the world. The parent's scale does not turn anything.
Vec3 anglesInWorld(const Reader& read, const Matrix4& rotation) {
    const Matrix4 parent = read.matrix("constraintParentInverseMatrix").inverse().matrix;
    return anglesOf(read, rotation * geometry::rotationPart(parent).transposed());
}

/// Rotations of the targets in the world as one.
Matrix4 blended(const Reader& read, const std::vector<geometry::WeightedRotation>& rotations) {
    const double number = read.number("interpType");
    const auto method = number >= 0.0 && number <= 4.0
                            ? static_cast<geometry::RotationBlend>(static_cast<int>(number))
                            : geometry::RotationBlend::Average;
    const Matrix4 last = geometry::rotationMatrix(read.triple("lastTargetRotation"));
    return geometry::toMatrix(geometry::blendRotations(rotations, method, geometry::quaternionOf(last)));
}

Channels pointChannels(const Reader& read, const std::vector<Target>& targets) {
    Vec3 world;
    for (const Target& target : targets)
        world += target.weight * read.pivotInWorld(target);
    Channels result;
    result.translate = translationTo(read, world) + read.triple("offset");
    return result;
}

Channels orientChannels(const Reader& read, const std::vector<Target>& targets) {
    std::vector<geometry::WeightedRotation> rotations;
    for (const Target& target : targets) {
        const Matrix4 world = read.rotation(target) * read.parentMatrix(target);
        rotations.push_back({geometry::quaternionOf(geometry::rotationPart(world)), target.weight});
    }
    const Matrix4 offset = geometry::rotationMatrix(read.triple("offset"));
    Channels result;
    result.rotate = anglesInWorld(read, offset * blended(read, rotations));
    return result;
}

/// From the space of a target about its rotate pivot to the world.
Matrix4 targetFrame(const Reader& read, const Target& target) {
    Matrix4 frame = Matrix4::scaling(read.triple(target, "targetScale")) * read.rotation(target);
    if (read.isOn(target, "targetScaleCompensate")) {
        Vec3 inverse = read.triple(target, "targetInverseScale");
        for (int axis = 0; axis < 3; ++axis)
            inverse[axis] = inverse[axis] != 0.0 ? 1.0 / inverse[axis] : 1.0;
        frame = frame * Matrix4::scaling(inverse);
    }
    return frame * Matrix4::translation(read.pivot(target)) * read.parentMatrix(target);
}

/// The constrained transform follows as if it were below the target, at the target's offset, but without its
/// scale.
Channels parentChannels(const Reader& read, const std::vector<Target>& targets) {
    Vec3 world;
    std::vector<geometry::WeightedRotation> rotations;
    for (const Target& target : targets) {
        const Matrix4 frame = targetFrame(read, target);
        world +=
            target.weight * geometry::transformPoint(read.triple(target, "targetOffsetTranslate"), frame);
        const Matrix4 turned = geometry::rotationMatrix(read.triple(target, "targetOffsetRotate")) *
                               geometry::rotationPart(frame);
        rotations.push_back({geometry::quaternionOf(turned), target.weight});
    }
    Channels result;
    result.translate = translationTo(read, world);
    result.rotate = anglesInWorld(read, blended(read, rotations));
    return result;
}

Channels scaleChannels(const Reader& read, const std::vector<Target>& targets) {
    const Matrix4 toParent = read.matrix("constraintParentInverseMatrix");
    const bool isCompensated = read.number("constraintScaleCompensate") != 0.0;
    const Vec3 parentScale = isCompensated ? read.triple("inverseScale") : Vec3{1.0, 1.0, 1.0};
    const Matrix4 uncompensated = toParent * Matrix4::scaling(parentScale);
    const Vec3 offset = read.triple("offset");
    Channels result;
    result.scale = {};
    for (const Target& target : targets) {
        const Matrix4 between = read.parentMatrix(target) * uncompensated;
        const Vec3 scale = read.triple(target, "targetScale");
        for (int axis = 0; axis < 3; ++axis) {
            result.scale[axis] +=
                target.weight * offset[axis] * scale[axis] * geometry::length(between.row(axis));
        }
    }
    return result;
}

/// Which way is up for the constrained transform, in its parent's space. Zero if nothing says so.
/// @param place  of its rotate pivot, in its parent's space
Vec3 upDirection(const Reader& read, const Vec3& place, const Matrix4& toParent) {
    enum UpType { Scene, Object, ObjectRotation, Vector };
    switch (static_cast<int>(read.number("worldUpType"))) {
        case Scene:
            return geometry::transformVector({0.0, 1.0, 0.0}, toParent);
        case Object:
            return geometry::transformPoint(read.matrix("worldUpMatrix").row(3), toParent) - place;
        case ObjectRotation:
            return geometry::transformVector(
                geometry::transformVector(read.triple("worldUpVector"), read.matrix("worldUpMatrix")),
                toParent);
        case Vector:
            return geometry::transformVector(read.triple("worldUpVector"), toParent);
        default:
            return {};
    }
}

/// In the parent's space, so that the aim is exact also below a parent that is scaled unevenly.
Channels aimChannels(const Reader& read, const std::vector<Target>& targets) {
    Vec3 world;
    for (const Target& target : targets)
        world += target.weight * read.pivotInWorld(target);
    const Matrix4 toParent = read.matrix("constraintParentInverseMatrix");
    const Vec3 place = read.triple("constraintTranslate") + read.ownPivot();
    const Vec3 direction = geometry::transformPoint(world, toParent) - place;
    const Matrix4 offset = geometry::rotationMatrix(read.triple("offset"));
    Channels result;
    result.rotate =
        anglesOf(read, offset * geometry::aimRotation(read.triple("aimVector"), read.triple("upVector"),
                                                      direction, upDirection(read, place, toParent)));
    return result;
}

/// What the constrained transform has stored.
Channels storedChannels(graph::Graph& graph, const graph::NodeRef& node) {
    Channels result;
    if (node->parent() == nullptr || !node->parent()->isA("transform")) return result;
    const graph::NodeRef constrained = node->parent()->ref();
    // Reading an output makes the node tell of its next change. Reading what it stores does not.
    graph.data(constrained->plug("parentInverseMatrix").element(0));
    for (const Channel& channel : kChannels) {
        const graph::Plug stored = constrained->plug(channel.name);
        for (int axis = 0; axis < 3; ++axis)
            (result.*channel.value)[axis] = constrained->storedNumber(stored.child(axis).key());
    }
    return result;
}

Channels restChannels(const Reader& read) {
    Channels result;
    for (const Channel& channel : kChannels) {
        if (read.node()->findAttribute(channel.rest) != nullptr)
            result.*channel.value = read.triple(channel.rest);
    }
    return result;
}

Channels channelsOf(graph::Graph& graph, const graph::NodeRef& node) {
    const Reader read(graph, node);
    if (read.number("lockOutput") != 0.0 || read.number("nodeState") != 0.0)
        return storedChannels(graph, node);
    const std::vector<Target> targets = read.targets();
    if (targets.empty())
        return read.number("enableRestPosition") != 0.0 ? restChannels(read) : storedChannels(graph, node);
    if (node->isA("pointConstraint")) return pointChannels(read, targets);
    if (node->isA("orientConstraint")) return orientChannels(read, targets);
    if (node->isA("parentConstraint")) return parentChannels(read, targets);
    if (node->isA("scaleConstraint")) return scaleChannels(read, targets);
    return aimChannels(read, targets);
}

/// Whether an output of the node was computed since its last change, so that what the node remembers is of
/// today.
bool isRemembered(graph::Graph& graph, const graph::NodeRef& node) {
    if (node->extension() == nullptr) return false;
    for (const Channel& channel : kChannels) {
        const graph::Plug compound = node->plug(channel.output);
        if (!compound || !compound.attribute().isOutput()) continue;
        for (int axis = 0; axis < 3; ++axis) {
            if (graph.isCurrent(compound.child(axis))) return true;
        }
    }
    return false;
}

}  // namespace

graph::ComputedValue computeConstraint(graph::Graph& graph, const graph::Plug& output) {
    const graph::Attribute* compound = output.attribute().parent();
    if (compound == nullptr) return computeDagOutput(graph, output);
    const graph::NodeRef& node = output.node();
    // Up to six outputs are read one by one. The first one computes them all.
    if (!isRemembered(graph, node)) node->extension() = std::make_shared<Channels>(channelsOf(graph, node));
    const Channels& channels = *std::static_pointer_cast<Channels>(node->extension());
    for (const Channel& channel : kChannels) {
        if (compound->longName() == channel.output)
            return (channels.*channel.value)[output.attribute().ordinal()];
    }
    return 0.0;
}

}  // namespace host::nodes
