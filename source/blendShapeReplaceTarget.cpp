#include "blendShapeReplaceTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>

#include "scene/aliveObject.h"

const CommandInfo& blendShapeReplaceTarget::info() {
    static const CommandInfo description{
        kName,
        "Replaces an existing blend shape target.",
        {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-m", "-mesh", MSyntax::kString, "target mesh"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-ti",
          "-targetItem",
          MSyntax::kLong,
          "channel value to replace",
          false,
          {nullptr, nullptr, "<float>"}}},
        "dv_blendShapeReplaceTarget -i <int> -m <string> -om <string> -ti <float>",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeReplaceTarget::read(const MArgDatabase& arguments) {
    MString newName;
    MString originalName;
    readFlag(arguments, "-i", target_);
    readFlag(arguments, "-m", newName);
    readFlag(arguments, "-om", originalName);
    readFlag(arguments, "-ti", item_);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    if (!outcome.isDone()) return outcome;
    MString error;
    if (!readMeshes(newName, originalName, error)) return CallOutcome::refused(error);
    blendShape_ = blendShape;
    return outcome;
}

/// Sets the two meshes from their names, which must be names of mesh shapes.
bool blendShapeReplaceTarget::readMeshes(const MString& newName, const MString& originalName,
                                         MString& error) {
    MSelectionList list;
    if (newName.length() > 0) list.add(newName);
    if (originalName.length() > 0) list.add(originalName);
    if (list.length() != 2) {
        error = "Mesh flag and original mesh flag must be defined.";
        return false;
    }
    MDagPath paths[2];
    for (unsigned int k = 0; k < 2; ++k) {
        if (!readMeshShapeItem(list, k, paths[k], error)) {
            // Deliberate: docs/compatibility.md.
            error = itemName(list, 0) + " is not a mesh object.";
            return false;
        }
    }
    newMesh_ = MeshObject(paths[0]);
    originalMesh_ = MeshObject(paths[1]);
    return true;
}

CallOutcome blendShapeReplaceTarget::edit() {
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !newMesh_.isAlive() || !originalMesh_.isAlive()) {
        return CallOutcome::failed("The blend shape node or one of the meshes is not in the scene any more.");
    }
    TargetEditor targets(blendShape);
    CallOutcome outcome = targets.checkTarget(target_);
    if (!outcome.isDone()) return outcome;
    TargetDeltas difference;
    MString error;
    if (!findDifference(difference, error)) return CallOutcome::refused(error);
    saved_.save(targets, target_, item_);
    outcome = targets.initialiseEmpty(target_, item_, saved_.deltas());
    if (outcome.isDone()) outcome = targets.write(target_, item_, difference);
    if (outcome.isDone()) setResult(1);
    return outcome;
}

/// The differences between the meshes, for the vertices that differ.
bool blendShapeReplaceTarget::findDifference(TargetDeltas& difference, MString& error) const {
    MFloatPointArray moved;
    MFloatPointArray original;
    if (!readMeshPoints(newMesh_, moved, error) || !readMeshPoints(originalMesh_, original, error))
        return false;
    if (moved.length() < original.length()) {
        error = newMesh_.path().partialPathName() + " has fewer vertices than " +
                originalMesh_.path().partialPathName() + ".";
        return false;
    }
    for (unsigned int vertex = 0; vertex < original.length(); ++vertex) {
        const MFloatPoint& to = moved[vertex];
        const MFloatPoint& from = original[vertex];
        // In single precision, like both meshes, so that equal points give exactly 0.
        const float x = to.x - from.x;
        const float y = to.y - from.y;
        const float z = to.z - from.z;
        if (x == 0.0F && y == 0.0F && z == 0.0F) continue;
        difference.append(static_cast<int>(vertex), MPoint(x, y, z));
    }
    return true;
}

CallOutcome blendShapeReplaceTarget::restore() {
    return saved_.restore();
}
