#include "blendShapeSplitTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MPoint.h>

#include <algorithm>

#include "common.h"
#include "scene/aliveObject.h"
#include "symmetry/symmetryPlane.h"

namespace {

/// Widens the blend zone at its upper end, so that a zone of width 0 has a slope.
constexpr double kZoneMargin = 0.0001;

/// The vertices in ascending order, without duplicates.
MIntArray sorted(MIntArray vertices) {
    MFnSingleIndexedComponent component;
    component.create(MFn::kMeshVertComponent);
    component.addElements(vertices);
    MIntArray elements;
    component.getElements(elements);
    return elements;
}

}  // namespace

const CommandInfo& blendShapeSplitTarget::info() {
    static const CommandInfo description{
        kName,
        "Splits an existing blend shape target.",
        {{"-ax", "-axis", MSyntax::kString, "symmetry axis (optional, default: x)"},
         {"-b", "-blend", MSyntax::kDouble, "blend width value"},
         {"-c", "-center", MSyntax::kDouble, "split center position"},
         {"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-iv", "-invert", MSyntax::kLong, "switches between the positive or negative side"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.001)"}},
        "dv_blendShapeSplitTarget -ax <string> -b <float> -c <float> -i <int> -iv <int> -om <string> -tol "
        "<float>",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeSplitTarget::read(const MArgDatabase& arguments) {
    MString originalName;
    readFlag(arguments, "-ax", axis_);
    readFlag(arguments, "-b", blend_);
    readFlag(arguments, "-c", center_);
    readFlag(arguments, "-i", target_);
    readFlag(arguments, "-iv", sideFactor_);
    readFlag(arguments, "-om", originalName);
    readFlag(arguments, "-tol", tolerance_);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    if (!outcome.isDone()) return outcome;
    MObject original;
    outcome = readMeshShape(originalName, kMeshError, original);
    if (!outcome.isDone()) return outcome;
    if (!isAxisText(axis_)) return CallOutcome::refused(kAxisError);
    axisIndex_ = static_cast<unsigned int>(axisIndex(axis_));
    MDagPath path;
    MDagPath::getAPathTo(original, path);
    originalMesh_ = MeshObject(path);
    blendShape_ = blendShape;
    return outcome;
}

bool blendShapeSplitTarget::isBase() const {
    return target_ == kBaseWeights;
}

bool blendShapeSplitTarget::isHard() const {
    return round5(blend_) == 0.0;
}

CallOutcome blendShapeSplitTarget::edit() {
    hasHalved_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !originalMesh_.isAlive()) return CallOutcome::failed(kBlendShapeOrMeshGone);
    TargetEditor targets(blendShape);
    // The base weights are split at the vertices of target 0.
    CallOutcome outcome = targets.checkTarget(isBase() ? 0 : target_);
    if (!outcome.isDone()) return outcome;
    MFloatPointArray positions;
    MString error;
    if (!readMeshPoints(originalMesh_, positions, error)) return CallOutcome::refused(error);
    MIntArray listed;
    outcome = readVertices(targets, listed);
    if (!outcome.isDone()) return outcome;
    MIntArray vertices;
    MDoubleArray weights;
    for (unsigned int k = 0; k < listed.length(); ++k) {
        const auto vertex = static_cast<unsigned int>(listed[k]);
        // Deltas may list vertices that the mesh does not have.
        if (vertex >= positions.length()) continue;
        vertices.append(listed[k]);
        weights.append(weightAt(positions[vertex]));
    }
    if (isBase() && isHard()) {
        hasHalved_ = true;
        outcome = targets.write(0, kFullItem, halvedDeltas(positions));
        if (!outcome.isDone()) return outcome;
    }
    setWeightValues(blendShape, target_, vertices, weights);
    setResult(1);
    return outcome;
}

/// The vertices to split: those in the deltas of the target.
CallOutcome blendShapeSplitTarget::readVertices(TargetEditor& targets, MIntArray& vertices) {
    if (!isBase()) return readVerticesOfItems(targets, vertices);
    deltas_ = targets.read(0, kFullItem);
    CallOutcome outcome = targets.completeEmpty(0, kFullItem, deltas_);
    vertices = deltas_.vertices;
    return outcome;
}

CallOutcome blendShapeSplitTarget::readVerticesOfItems(TargetEditor& targets, MIntArray& vertices) const {
    const MObject& blendShape = targets.blendShape();
    const MIntArray items = getTargetItemIndices(blendShape, target_);
    for (unsigned int k = 0; k < items.length(); ++k) {
        MIntArray listed = targets.read(target_, items[k]).vertices;
        if (listed.length() == 0) {
            listed = MIntArray(1, 0);
            const MStatus status = setTargetComponents(blendShape, target_, items[k], listed);
            if (!status) return CallOutcome::failed("Error setting components for empty target.", status);
        }
        for (unsigned int element = 0; element < listed.length(); ++element)
            vertices.append(listed[element]);
    }
    vertices = sorted(vertices);
    return CallOutcome();
}

bool blendShapeSplitTarget::isOnPlane(const MFloatPoint& position) const {
    return ::isOnPlane(MPoint(position), axisIndex_, tolerance_);
}

double blendShapeSplitTarget::weightAt(const MFloatPoint& position) const {
    // In a hard split, a vertex on the plane belongs to both sides. The base weights keep it whole, because
    // its delta is halved instead.
    if (isHard() && isOnPlane(position)) return isBase() ? 1.0 : 0.5;
    const double low = center_ - blend_;
    const double high = center_ + blend_ + kZoneMargin;
    const double x = round5(static_cast<float>(sideFactor_) * position[axisIndex_]);
    if (low > x) return 0.0;
    if (x > high) return 1.0;
    return std::clamp(round5(1.0 - (high - x) / (2.0 * blend_ + kZoneMargin)), 0.0, 1.0);
}

/// The deltas of target 0. Those on the plane are halved and lose the part that leads away from the plane.
/// Deliberate: the delta of vertex v is at place v of the list, wherever v is among the vertices; zero beyond
/// the list.
TargetDeltas blendShapeSplitTarget::halvedDeltas(const MFloatPointArray& positions) const {
    TargetDeltas halved;
    for (unsigned int k = 0; k < deltas_.vertices.length(); ++k) {
        const int vertex = deltas_.vertices[k];
        const auto index = static_cast<unsigned int>(vertex);
        MPoint delta = deltas_.pointAt(index);
        if (index < positions.length() && isOnPlane(positions[index])) {
            delta = MPoint(delta.x * 0.5, delta.y * 0.5, delta.z * 0.5);
            delta[axisIndex_] = 0.0;
        }
        halved.append(vertex, delta);
    }
    return halved;
}

CallOutcome blendShapeSplitTarget::restore() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasHalved_ || blendShape.isNull()) return CallOutcome();
    hasHalved_ = false;
    TargetEditor targets(blendShape);
    targets.keepQuiet();
    return targets.write(0, kFullItem, deltas_);
}
