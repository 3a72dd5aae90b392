#include "blendShapeReplaceTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeReplaceTarget::kName,
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
        "int"};
    return command;
}

MStatus fail(const MString& text, const MStatus& status = MS::kSuccess) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, status);
}

}  // namespace

void* blendShapeReplaceTarget::creator() {
    return new blendShapeReplaceTarget();
}

MSyntax blendShapeReplaceTarget::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeReplaceTarget::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString newName;
    MString originalName;
    readFlag(database, "-i", target_);
    readFlag(database, "-m", newName);
    readFlag(database, "-om", originalName);
    readFlag(database, "-ti", item_);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kZero, blendShape);
    if (!status) return status;
    MString error;
    if (!readMeshes(newName, originalName, error)) return fail(error);
    blendShape_ = blendShape;
    isChecked_ = true;
    return redoIt();
}

/// Sets the two meshes from the names, which must stand for mesh shapes.
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
            // Deliberate: always the name of the new mesh, also when the original is none. Scripts compare
            // it.
            error = itemName(list, 0) + " is not a mesh object.";
            return false;
        }
    }
    newMesh_ = MeshObject(paths[0]);
    originalMesh_ = MeshObject(paths[1]);
    return true;
}

MStatus blendShapeReplaceTarget::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    hasWritten_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !newMesh_.isAlive() || !originalMesh_.isAlive()) {
        return fail("The blend shape node or one of the meshes is not in the scene any more.", MS::kFailure);
    }
    TargetDeltas difference;
    MString error;
    if (!findDifference(difference, error)) {
        isChecked_ = false;
        return fail(error);
    }
    saved_ = readDeltas(blendShape, target_, item_);
    hasWritten_ = true;
    MStatus status = initialiseEmptyDeltas(blendShape, target_, item_, saved_, ErrorResult::kZero);
    if (status) status = writeDeltas(blendShape, target_, item_, difference, ErrorResult::kZero);
    if (status) setResult(1);
    return status;
}

/// The vertices in which the meshes differ, and how.
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
        // In single precision, as both are kept: what is exactly equal has no delta.
        const float x = to.x - from.x;
        const float y = to.y - from.y;
        const float z = to.z - from.z;
        if (x == 0.0F && y == 0.0F && z == 0.0F) continue;
        difference.append(static_cast<int>(vertex), MPoint(x, y, z));
    }
    return true;
}

MStatus blendShapeReplaceTarget::undoIt() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasWritten_ || blendShape.isNull()) return MS::kSuccess;
    hasWritten_ = false;
    return writeDeltas(blendShape, target_, item_, saved_, ErrorResult::kNothing);
}

bool blendShapeReplaceTarget::isUndoable() const {
    return true;
}
