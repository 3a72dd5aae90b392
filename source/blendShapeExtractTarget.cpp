#include "blendShapeExtractTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MObjectArray.h>

#include "commandSupport.h"
#include "meshObject.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeExtractTarget::kName,
        "Extracts an existing blend shape target.",
        {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-ti", "-targetItem", MSyntax::kLong, "channel item to extract, i.e. 6000"}},
        "dv_blendShapeExtractTarget -i <int> -ti <int> -om <string>",
        "string"};
    return command;
}

}  // namespace

void* blendShapeExtractTarget::creator() {
    return new blendShapeExtractTarget();
}

MSyntax blendShapeExtractTarget::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeExtractTarget::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString originalName;
    readFlag(database, "-i", target_);
    readFlag(database, "-om", originalName);
    readFlag(database, "-ti", item_);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kEmptyString, blendShape);
    if (!status) return status;
    MObject original;
    // The checks of the mesh end the command without an error status; scripts depend on that.
    if (!getMeshShape(originalName, kMeshError, ErrorResult::kEmptyString, original)) {
        return MS::kSuccess;
    }
    blendShape_ = blendShape;
    originalMesh_ = original;
    isChecked_ = true;
    return redoIt();
}

MStatus blendShapeExtractTarget::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    extracted_ = MObjectHandle();
    const MObject blendShape = aliveObject(blendShape_);
    // An empty item gets a zero delta, so that the user's deformer holds a valid item afterwards; what is
    // extracted stays empty.
    const TargetDeltas deltas = readDeltas(blendShape, target_, item_);
    MStatus status = initialiseEmptyDeltas(blendShape, target_, item_, deltas, ErrorResult::kEmptyString);
    if (!status) return status;
    MObject extracted;
    status = extract(deltas, extracted);
    if (!status) return status;
    extracted_ = extracted;
    present(extracted);
    return MS::kSuccess;
}

/// Bakes the deltas into a new mesh, with the help of a blend shape on copies of the original mesh that
/// are gone afterwards.
MStatus blendShapeExtractTarget::extract(const TargetDeltas& deltas, MObject& extracted) {
    const MObject original = aliveObject(originalMesh_);
    MFnMesh baseMesh;
    MObject base = baseMesh.copy(original, MObject::kNullObj);
    MFnMesh targetMesh;
    MObject target = targetMesh.copy(original, MObject::kNullObj);
    const MObject targetShape = targetMesh.object();

    MFnBlendShapeDeformer deformer;
    const MObject node = deformer.create(base, MFnBlendShapeDeformer::kLocalOrigin);
    MObjectArray bases;
    deformer.getBaseObjects(bases);
    // An original that is gone or holds no geometry has no deformer; writing the deltas reports it.
    if (bases.length() > 0) deformer.addTarget(bases[0], 0, targetShape, 1.0);
    deformer.setWeight(0, 1.0F);
    // The target mesh stays connected; the deltas that are written now count in its place.
    const MStatus status = writeDeltas(node, 0, kFullItem, deltas, ErrorResult::kEmptyString);
    if (!status) return status;

    MFnMesh extractedMesh;
    extracted = extractedMesh.copy(MFnDagNode(base).child(0), MObject::kNullObj);
    MGlobal::deleteNode(base);
    MGlobal::deleteNode(target);
    return MS::kSuccess;
}

/// Shades and names the new mesh like an object that the user made. The result is the name asked for, not
/// what the host may make of it.
void blendShapeExtractTarget::present(const MObject& extracted) {
    MFnDagNode mesh(extracted);
    MGlobal::executeCommand("sets -e -forceElement initialShadingGroup " + mesh.fullPathName(), false, false);
    const MString name = mesh.name() + "_" + item_;
    mesh.setName(name);
    setResult(name);
}

MStatus blendShapeExtractTarget::undoIt() {
    MObject extracted = aliveObject(extracted_);
    // The user may have deleted the mesh by hand.
    if (!extracted.isNull()) MGlobal::deleteNode(extracted);
    extracted_ = MObjectHandle();
    return MS::kSuccess;
}

bool blendShapeExtractTarget::isUndoable() const {
    return true;
}
