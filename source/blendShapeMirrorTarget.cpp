#include "blendShapeMirrorTarget.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <unordered_map>

#include "commandSupport.h"
#include "mirroredDeltas.h"
#include "symmetryPlane.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeMirrorTarget::kName,
        "Mirrors an existing blend shape target.",
        {{"-ax", "-axis", MSyntax::kString, "symmetry axis (optional, default: x)"},
         {"-dir", "-direction", MSyntax::kBoolean, "direction (optional, default: 1; positive to negative)"},
         {"-f", "-flip", MSyntax::kBoolean, "mirror the shape in place"},
         {"-ib", "-inbetween", MSyntax::kBoolean, "target is an in-between shape"},
         {"-m", "-mesh", MSyntax::kString, "deformed mesh"},
         {"-ob", "-orderBased", MSyntax::kString, "use the vertex order from the given mesh"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-sc", "-skipComponents", MSyntax::kString, "list of components which should not be mirrored"},
         {"-si", "-sourceIndex", MSyntax::kLong, "index of the source target channel"},
         {"-ti", "-targetIndex", MSyntax::kLong,
          "index of the destination target channel (optional, important for duplication)"},
         {"-tit", "-targetItem", MSyntax::kLong, "target item value"},
         {"-tn", "-targetName", MSyntax::kString,
          "name of the mirrored blend shape target (optional, important for duplication)"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.001)"},
         {"-tm", "-tweakMesh", MSyntax::kString,
          "name of the mesh the mirrored deltas should be applied to as tweaks"},
         {"-t", "-type", MSyntax::kLong,
          "mirror mode (0: mirror, 1: copy to opposite, 2: apply to opposite)"}},
        "dv_blendShapeMirrorTarget -ax <string> -dir <int> -f <int> -ib <int> -m <string> -om <string> "
        "-si <int> -t <int> -ti <int> -tn <string> -tol <float> -tit <int>",
        "int"};
    return command;
}

MStatus fail(const MString& text, const MStatus& status = MS::kSuccess) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, status);
}

}  // namespace

void* blendShapeMirrorTarget::creator() {
    return new blendShapeMirrorTarget();
}

MSyntax blendShapeMirrorTarget::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeMirrorTarget::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString originalName;
    MString orderName;
    MString tweakName;
    readFlags(database);
    readFlag(database, "-om", originalName);
    readFlag(database, "-ob", orderName);
    readFlag(database, "-tm", tweakName);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kZero, blendShape);
    if (!status) return status;
    if (originalName.length() == 0) return fail(kMeshError);
    MString error;
    if (!readSearchMeshes(originalName, orderName, tweakName, search_, tweakMesh_, error)) return fail(error);
    if (!isAxisText(search_.axis)) return fail(kAxisError);
    blendShape_ = blendShape;
    isChecked_ = true;
    return redoIt();
}

void blendShapeMirrorTarget::readFlags(const MArgDatabase& arguments) {
    readFlag(arguments, "-ax", search_.axis);
    readFlag(arguments, "-dir", isPositiveSource_);
    readFlag(arguments, "-f", flips_);
    readFlag(arguments, "-ib", isInBetween_);
    readFlag(arguments, "-m", mesh_);
    search_.isOrderBased = arguments.isFlagSet("-ob");
    readFlag(arguments, "-sc", skippedComponents_);
    readFlag(arguments, "-si", sourceTarget_);
    readFlag(arguments, "-ti", target_);
    readFlag(arguments, "-tit", item_);
    readFlag(arguments, "-tn", targetName_);
    readFlag(arguments, "-t", type_);
    readFlag(arguments, "-tol", search_.tolerance);
    // Kept in single precision, as the kit's option variables are.
    search_.tolerance = static_cast<float>(search_.tolerance);
}

MStatus blendShapeMirrorTarget::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    hasWritten_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !search_.mesh.isAlive()) {
        return fail(kBlendShapeOrMeshGone, MS::kFailure);
    }
    MStatus status = readSource(blendShape);
    if (!status) return status;
    MIntArray partners;
    MString error;
    if (!findPartners(search_, source_.vertices, partners, error)) {
        isChecked_ = false;
        return fail(error);
    }
    if (type_ == kNewTarget) status = addTarget(blendShape);
    if (!status) return fail("Unable to create the target " + targetName_ + ".", status);
    if (flips_) isPositiveSource_ = !isPositiveSource_;

    MFloatPointArray positions;
    MFnMesh(search_.mesh.path()).getPoints(positions, MSpace::kObject);
    MirrorRule rule;
    rule.axis = axisIndex(search_.axis);
    rule.isPositiveSource = isPositiveSource_;
    rule.mirrorsBothSides = flips_ || type_ >= kOtherTarget;
    rule.isInPlace = type_ == kInPlace;
    rule.tolerance = search_.tolerance * 0.1;
    const MirroredDeltas mirrored = mirrorDeltas(rule, source_, partners, positions);
    if (search_.isOrderBased) showSkippedComponents(mirrored.skippedCount);
    return write(blendShape, mirrored.deltas);
}

/// Reads the deltas to be mirrored, and those that an existing destination has.
MStatus blendShapeMirrorTarget::readSource(const MObject& blendShape) {
    source_ = readDeltas(blendShape, sourceTarget_, item_);
    const MStatus status = completeEmptyDeltas(blendShape, sourceTarget_, item_, source_, ErrorResult::kZero);
    if (!status) return status;
    if (!search_.isOrderBased && skippedComponents_.length() > 0) removeSkippedComponents();
    if (type_ != kOtherTarget) return status;
    destination_ = readDeltas(blendShape, target_, item_);
    return initialiseEmptyDeltas(blendShape, target_, item_, destination_, ErrorResult::kZero);
}

/// A component that is named n times loses its last n entries.
void blendShapeMirrorTarget::removeSkippedComponents() {
    MStringArray names;
    skippedComponents_.split(' ', names);
    const MIntArray skipped = parseVertexComponents(names, MFnMesh(search_.mesh.path()).numVertices());
    std::unordered_map<int, int> counts;
    for (unsigned int k = 0; k < skipped.length(); ++k)
        ++counts[skipped[k]];
    std::vector<char> isKept(source_.vertices.length(), 1);
    for (unsigned int k = source_.vertices.length(); k-- > 0;) {
        const auto count = counts.find(source_.vertices[k]);
        if (count == counts.end() || count->second == 0) continue;
        --count->second;
        isKept[k] = 0;
    }
    TargetDeltas kept;
    for (unsigned int k = 0; k < source_.vertices.length(); ++k) {
        if (isKept[k] != 0) kept.append(source_.vertices[k], source_.pointAt(k));
    }
    source_ = kept;
}

/// Adds the target to the deformer, without deltas.
MStatus blendShapeMirrorTarget::addTarget(const MObject& blendShape) {
    MStatus status;
    MFnMesh copier;
    MObject copy = copier.copy(search_.mesh.path().node(), MObject::kNullObj, &status);
    if (!status) return status;
    MFnDagNode target(copy);
    target.setName(targetName_);
    targetName_ = target.name();
    // The path, because a node elsewhere may have the same name.
    const MString path = target.partialPathName();
    const double weight = (item_ - 5000) / 1000.0;
    status = MGlobal::executeCommand(MString("blendShape -e ") + (isInBetween_ ? "-ib" : "") + " -t " +
                                         mesh_ + " " + target_ + " " + path + " " + weight + " " +
                                         MFnDependencyNode(blendShape).name(),
                                     false, false);
    MGlobal::deleteNode(copy);
    return status;
}

MStatus blendShapeMirrorTarget::write(const MObject& blendShape, const TargetDeltas& mirrored) {
    hasWritten_ = true;
    tweakedVertices_.clear();
    MStatus status = writeDeltas(blendShape, target_, item_, mirrored, ErrorResult::kZero, "mirrored ");
    if (status && tweakMesh_.isAlive()) status = writeTweaks(mirrored);
    if (status) setResult(1);
    return status;
}

MStatus blendShapeMirrorTarget::writeTweaks(const TargetDeltas& mirrored) {
    const MObject mesh = tweakMesh_.path().node();
    tweaks_.clear();
    MStatus status = getTweakPoints(mesh, mirrored.vertices, tweaks_);
    if (!status) return fail("Error getting tweak data.", status);
    tweakedVertices_ = mirrored.vertices;
    status = setTweakPoints(mesh, mirrored.vertices, mirrored.points);
    return status ? status : fail("Error setting tweak data.", status);
}

MStatus blendShapeMirrorTarget::undoIt() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasWritten_) return MS::kSuccess;
    hasWritten_ = false;
    // The user may have deleted either node by hand.
    if (!blendShape.isNull()) {
        const MStatus status = restoreTarget(blendShape);
        if (!status) return status;
    }
    if (tweakedVertices_.length() == 0 || !tweakMesh_.isAlive()) return MS::kSuccess;
    const MStatus status = setTweakPoints(tweakMesh_.path().node(), tweakedVertices_, tweaks_);
    return status ? status : fail("Error setting tweak data.", status);
}

MStatus blendShapeMirrorTarget::restoreTarget(const MObject& blendShape) {
    if (type_ == kInPlace) return writeDeltas(blendShape, target_, item_, source_, ErrorResult::kNothing);
    if (type_ == kOtherTarget)
        return writeDeltas(blendShape, target_, item_, destination_, ErrorResult::kNothing);
    if (type_ != kNewTarget) return MS::kSuccess;
    MFnDependencyNode deformer(blendShape);
    const MString node = deformer.name();
    // Not always the name of the target: the host numbers an alias that another target has.
    const MString alias = deformer.plugsAlias(
        deformer.findPlug("weight", false).elementByLogicalIndex(static_cast<unsigned int>(target_)));
    const MString group = node + ".it[0].itg[" + target_ + "]";
    MString command;
    if (!isInBetween_) command += "removeMultiInstance -b 1 " + node + ".w[" + target_ + "];";
    command += "removeMultiInstance -b 1 " + group + ".iti[" + item_ + "];";
    if (!isInBetween_) command += "removeMultiInstance -b 1 " + group + ";";
    if (!isInBetween_ && alias.length() > 0) command += "aliasAttr -rm " + node + "." + alias + ";";
    return MGlobal::executeCommand(command, false, false);
}

bool blendShapeMirrorTarget::isUndoable() const {
    return true;
}
