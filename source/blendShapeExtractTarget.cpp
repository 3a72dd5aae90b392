#include "blendShapeExtractTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>

#include "scene/aliveObject.h"
#include "scene/meshObject.h"
#include "targets/deltaBaker.h"

namespace {

/// @param error  the mesh has no points. Not set for a deleted mesh, which DeltaBaker reports
bool hasPoints(const MObject& mesh, MString& error) {
    MDagPath path;
    MFloatPointArray points;
    return mesh.isNull() || !MDagPath::getAPathTo(mesh, path) ||
           readMeshPoints(MeshObject(path), points, error);
}

}  // namespace

const CommandInfo& blendShapeExtractTarget::info() {
    static const CommandInfo description{
        kName,
        "Extracts an existing blend shape target.",
        {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-ti", "-targetItem", MSyntax::kLong, "channel item to extract, i.e. 6000"}},
        "dv_blendShapeExtractTarget -i <int> -ti <int> -om <string>",
        "string",
        true,
        ErrorResult::kEmptyString};
    return description;
}

CallOutcome blendShapeExtractTarget::read(const MArgDatabase& arguments) {
    MString originalName;
    readFlag(arguments, "-i", target_);
    readFlag(arguments, "-om", originalName);
    readFlag(arguments, "-ti", item_);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    if (!outcome.isDone()) return outcome;
    MObject original;
    // Deliberate: errors of the mesh do not stop a script.
    outcome = readMeshShape(originalName, kMeshError, original);
    if (!outcome.isDone()) return outcome;
    blendShape_ = blendShape;
    originalMesh_ = original;
    return outcome;
}

CallOutcome blendShapeExtractTarget::edit() {
    return extract(false);
}

CallOutcome blendShapeExtractTarget::redo() {
    return extract(true);
}

/// @param bringsBack  whether the mesh of an earlier run is used again, if it exists
CallOutcome blendShapeExtractTarget::extract(bool bringsBack) {
    TargetDeltas deltas;
    MString error;
    if (!hasPoints(aliveObject(originalMesh_), error)) return CallOutcome::refused(error);
    CallOutcome outcome = readTarget(deltas);
    if (!outcome.isDone()) return outcome;
    DeltaBaker baker(aliveObject(originalMesh_));
    outcome = baker.bake(deltas);
    if (!outcome.isDone()) {
        // Deliberate: docs/compatibility.md.
        baker.leaveInScene();
        return outcome;
    }
    if (!bringsBack || !extracted_.bringBack()) return create(baker.deformedShape());
    MFloatPointArray points;
    MFnMesh(baker.deformedShape()).getPoints(points, MSpace::kObject);
    extracted_.setPoints(points);
    return outcome;
}

/// The deltas to extract. An empty item gets a zero delta, so that it is valid in the user's deformer;
/// `deltas` stays empty.
CallOutcome blendShapeExtractTarget::readTarget(TargetDeltas& deltas) const {
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) return CallOutcome::failed(kBlendShapeGone);
    TargetEditor targets(blendShape);
    CallOutcome outcome = targets.checkItem(target_, item_);
    if (!outcome.isDone()) return outcome;
    deltas = targets.read(target_, item_);
    return targets.initialiseEmpty(target_, item_, deltas);
}

/// Makes the new mesh. Deliberate: the result is the name that was asked for, not the name that the host
/// gave.
CallOutcome blendShapeExtractTarget::create(const MObject& deformed) {
    MFnMesh copier;
    extracted_.set(copier.copy(deformed, MObject::kNullObj));
    MFnDagNode mesh(extracted_.transform());
    const MString name = mesh.name() + "_" + item_;
    mesh.setName(name);
    setResult(name);
    return CallOutcome();
}

CallOutcome blendShapeExtractTarget::restore() {
    extracted_.remove();
    return CallOutcome();
}
