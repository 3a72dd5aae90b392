#include "blendShapeSplitTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MPoint.h>

#include <algorithm>

#include "commandSupport.h"
#include "common.h"
#include "symmetryPlane.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeSplitTarget::kName,
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
        "int"};
    return command;
}

/// Widens the blend zone a little beyond its upper end, so that a zone of width 0 has a slope.
constexpr double kZoneMargin = 0.0001;

MStatus fail(const MString& text, const MStatus& status = MS::kSuccess) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, status);
}

/// Vertices in ascending order, each once.
MIntArray sorted(MIntArray vertices) {
    MFnSingleIndexedComponent component;
    component.create(MFn::kMeshVertComponent);
    component.addElements(vertices);
    MIntArray elements;
    component.getElements(elements);
    return elements;
}

}  // namespace

void* blendShapeSplitTarget::creator() {
    return new blendShapeSplitTarget();
}

MSyntax blendShapeSplitTarget::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeSplitTarget::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString originalName;
    readFlag(database, "-ax", axis_);
    readFlag(database, "-b", blend_);
    readFlag(database, "-c", center_);
    readFlag(database, "-i", target_);
    readFlag(database, "-iv", sideFactor_);
    readFlag(database, "-om", originalName);
    readFlag(database, "-tol", tolerance_);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kZero, blendShape);
    if (!status) return status;
    MObject original;
    if (!getMeshShape(originalName, kMeshError, ErrorResult::kZero, original)) {
        return MS::kSuccess;
    }
    if (!isAxisText(axis_)) return fail(kAxisError);
    axisIndex_ = static_cast<unsigned int>(axisIndex(axis_));
    // Without this check a wrong index would count as done, and leave an empty target behind.
    if (!isBase() && getTargetItemIndices(blendShape, target_).length() == 0) {
        return fail(MFnDependencyNode(blendShape).name() + " has no target " + target_ + ".");
    }
    MDagPath path;
    MDagPath::getAPathTo(original, path);
    originalMesh_ = MeshObject(path);
    blendShape_ = blendShape;
    isChecked_ = true;
    return redoIt();
}

bool blendShapeSplitTarget::isBase() const {
    return target_ == kBaseWeights;
}

bool blendShapeSplitTarget::isHard() const {
    return round5(blend_) == 0.0;
}

MStatus blendShapeSplitTarget::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    hasHalved_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !originalMesh_.isAlive()) {
        return fail(kBlendShapeOrMeshGone, MS::kFailure);
    }
    MFloatPointArray positions;
    MString error;
    if (!readMeshPoints(originalMesh_, positions, error)) {
        isChecked_ = false;
        return fail(error);
    }
    MIntArray listed;
    MStatus status = readVertices(blendShape, listed);
    if (!status) return status;
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
        status = writeDeltas(blendShape, 0, kFullItem, halvedDeltas(positions), ErrorResult::kZero);
        if (!status) return status;
    }
    setWeightValues(blendShape, target_, vertices, weights);
    setResult(1);
    return MS::kSuccess;
}

/// The vertices that the split is about: those that the deltas of the target move.
MStatus blendShapeSplitTarget::readVertices(const MObject& blendShape, MIntArray& vertices) {
    if (!isBase()) return readVerticesOfItems(blendShape, vertices);
    deltas_ = readDeltas(blendShape, 0, kFullItem);
    const MStatus status = completeEmptyDeltas(blendShape, 0, kFullItem, deltas_, ErrorResult::kZero);
    vertices = deltas_.vertices;
    return status;
}

MStatus blendShapeSplitTarget::readVerticesOfItems(const MObject& blendShape, MIntArray& vertices) const {
    const MIntArray items = getTargetItemIndices(blendShape, target_);
    for (unsigned int k = 0; k < items.length(); ++k) {
        MIntArray listed = getTargetComponents(blendShape, target_, items[k]);
        if (listed.length() == 0) {
            listed = MIntArray(1, 0);
            const MStatus status = setTargetComponents(blendShape, target_, items[k], listed);
            if (!status) return fail("Error setting components for empty target.", status);
        }
        for (unsigned int element = 0; element < listed.length(); ++element)
            vertices.append(listed[element]);
    }
    vertices = sorted(vertices);
    return MS::kSuccess;
}

bool blendShapeSplitTarget::isOnPlane(const MFloatPoint& position) const {
    return ::isOnPlane(MPoint(position), axisIndex_, tolerance_);
}

double blendShapeSplitTarget::weightAt(const MFloatPoint& position) const {
    // In a hard split the two sides share a vertex on the plane; the base weights keep it whole.
    if (isHard() && isOnPlane(position)) return isBase() ? 1.0 : 0.5;
    const double low = center_ - blend_;
    const double high = center_ + blend_ + kZoneMargin;
    const double x = round5(static_cast<float>(sideFactor_) * position[axisIndex_]);
    if (low > x) return 0.0;
    if (x > high) return 1.0;
    return std::clamp(round5(1.0 - (high - x) / (2.0 * blend_ + kZoneMargin)), 0.0, 1.0);
}

/// The deltas of target 0 with those on the plane halved and put into it. The delta of vertex v is
/// the v-th of the list, as scripts know it, whatever place v has among the vertices; zero beyond
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

MStatus blendShapeSplitTarget::undoIt() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasHalved_ || blendShape.isNull()) return MS::kSuccess;
    hasHalved_ = false;
    return writeDeltas(blendShape, 0, kFullItem, deltas_, ErrorResult::kNothing);
}

bool blendShapeSplitTarget::isUndoable() const {
    return true;
}
