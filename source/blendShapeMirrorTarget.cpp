#include "blendShapeMirrorTarget.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <unordered_map>
#include <vector>

#include "scene/aliveObject.h"
#include "symmetry/symmetryPlane.h"
#include "targets/itemCompanions.h"

const CommandInfo& blendShapeMirrorTarget::info() {
    static const CommandInfo description{
        kName,
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
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeMirrorTarget::read(const MArgDatabase& arguments) {
    MString originalName;
    MString orderName;
    MString tweakName;
    readFlags(arguments);
    readFlag(arguments, "-om", originalName);
    readFlag(arguments, "-ob", orderName);
    readFlag(arguments, "-tm", tweakName);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    if (!outcome.isDone()) return outcome;
    if (originalName.length() == 0) return CallOutcome::refused(kMeshError);
    MString error;
    if (!readSearchMeshes(originalName, orderName, tweakName, search_, tweakMesh_, error)) {
        return CallOutcome::refused(error);
    }
    if (!isAxisText(search_.axis)) return CallOutcome::refused(kAxisError);
    if (type_ == kNewTarget && mesh_.length() == 0) {
        return CallOutcome::refused(
            "The -mesh flag is missing. It names the deformed mesh, which a new target needs.");
    }
    blendShape_ = blendShape;
    return outcome;
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
    // In single precision, like the option variables of the kit's scripts.
    search_.tolerance = static_cast<float>(search_.tolerance);
}

CallOutcome blendShapeMirrorTarget::edit() {
    hasWritten_ = false;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull() || !search_.mesh.isAlive()) return CallOutcome::failed(kBlendShapeOrMeshGone);
    TargetEditor targets(blendShape);
    CallOutcome outcome = checkTargets(targets);
    MirrorPartners search(search_);
    MString error;
    if (outcome.isDone() && !search.prepare(error)) return CallOutcome::refused(error);
    if (outcome.isDone()) outcome = readSource(targets);
    if (!outcome.isDone()) return outcome;
    MIntArray partners;
    if (!search.find(source_.vertices, partners, error)) {
        // Deliberate: a zero delta in an empty target stays. An in-between that was made for nothing is
        // removed.
        if (hasNewItem_) destination_.restore();
        return CallOutcome::refused(error);
    }
    if (type_ == kNewTarget) outcome = addTarget(blendShape);
    if (!outcome.isDone()) return outcome;
    if (flips_) isPositiveSource_ = !isPositiveSource_;
    const MirroredDeltas mirrored = mirror(partners);
    if (search_.isOrderBased) showSkippedComponents(mirrored.skippedCount);
    return write(targets, mirrored.deltas);
}

/// Checks that the source exists, and the destination unless it is a new target.
CallOutcome blendShapeMirrorTarget::checkTargets(const TargetEditor& targets) const {
    CallOutcome outcome = targets.checkItem(sourceTarget_, item_);
    const bool isNew = type_ == kNewTarget && target_ >= 0;
    return outcome.isDone() && !isNew ? targets.checkTarget(target_) : outcome;
}

/// Reads the deltas to mirror, and those of an existing destination.
CallOutcome blendShapeMirrorTarget::readSource(TargetEditor& targets) {
    source_ = targets.read(sourceTarget_, item_);
    CallOutcome outcome = targets.completeEmpty(sourceTarget_, item_, source_);
    if (!outcome.isDone()) return outcome;
    if (!search_.isOrderBased && skippedComponents_.length() > 0) removeSkippedComponents();
    hadGroup_ = hasTargetGroup(targets.blendShape(), target_);
    hasNewItem_ = item_ != kFullItem && !hasTargetItem(targets.blendShape(), target_, item_);
    if (type_ != kOtherTarget) return outcome;
    destination_.save(targets, target_, item_);
    return targets.initialiseEmpty(target_, item_, destination_.deltas());
}

/// A component that is named n times loses its last n entries, no more.
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
CallOutcome blendShapeMirrorTarget::addTarget(const MObject& blendShape) {
    MStatus status;
    MFnMesh copier;
    MObject copy = copier.copy(search_.mesh.path().node(), MObject::kNullObj, &status);
    if (!status) return CallOutcome::failed("Unable to create the target " + targetName_ + ".", status);
    MFnDagNode target(copy);
    target.setName(targetName_);
    targetName_ = target.name();
    // The path, because another node may have the same name.
    const MString path = target.partialPathName();
    const double weight = (item_ - 5000) / 1000.0;
    status = MGlobal::executeCommand(MString("blendShape -e ") + (isInBetween_ ? "-ib" : "") + " -t " +
                                         mesh_ + " " + target_ + " " + path + " " + weight + " " +
                                         MFnDependencyNode(blendShape).name(),
                                     false, false);
    MGlobal::deleteNode(copy);
    return status ? CallOutcome()
                  : CallOutcome::failed("Unable to create the target " + targetName_ + ".", status);
}

MirroredDeltas blendShapeMirrorTarget::mirror(const MIntArray& partners) const {
    MFloatPointArray positions;
    MFnMesh(search_.mesh.path()).getPoints(positions, MSpace::kObject);
    MirrorRule rule;
    rule.axis = axisIndex(search_.axis);
    rule.isPositiveSource = isPositiveSource_;
    rule.mirrorsBothSides = flips_ || type_ >= kOtherTarget;
    rule.isInPlace = type_ == kInPlace;
    rule.tolerance = search_.tolerance * 0.1;
    return mirrorDeltas(rule, source_, partners, positions);
}

CallOutcome blendShapeMirrorTarget::write(TargetEditor& targets, const TargetDeltas& mirrored) {
    hasWritten_ = true;
    tweakedVertices_.clear();
    CallOutcome outcome = targets.write(target_, item_, mirrored, "mirrored ");
    if (outcome.isDone() && tweakMesh_.isAlive()) outcome = writeTweaks(mirrored);
    if (outcome.isDone()) setResult(1);
    return outcome;
}

CallOutcome blendShapeMirrorTarget::writeTweaks(const TargetDeltas& mirrored) {
    const MObject mesh = tweakMesh_.path().node();
    tweaks_.clear();
    MStatus status = getTweakPoints(mesh, mirrored.vertices, tweaks_);
    if (!status) return CallOutcome::failed("Error getting tweak data.", status);
    tweakedVertices_ = mirrored.vertices;
    status = setTweakPoints(mesh, mirrored.vertices, mirrored.points);
    return status ? CallOutcome() : CallOutcome::failed("Error setting tweak data.", status);
}

CallOutcome blendShapeMirrorTarget::restore() {
    const MObject blendShape = aliveObject(blendShape_);
    if (!hasWritten_) return hasNewItem_ ? destination_.restore() : CallOutcome();
    hasWritten_ = false;
    // The user may have deleted either node by hand.
    CallOutcome outcome = blendShape.isNull() ? CallOutcome() : restoreTarget(blendShape);
    if (!outcome.isDone() || tweakedVertices_.length() == 0 || !tweakMesh_.isAlive()) return outcome;
    const MStatus status = setTweakPoints(tweakMesh_.path().node(), tweakedVertices_, tweaks_);
    return status ? CallOutcome() : CallOutcome::failed("Error setting tweak data.", status);
}

CallOutcome blendShapeMirrorTarget::restoreTarget(const MObject& blendShape) {
    if (type_ == kOtherTarget) return destination_.restore();
    if (type_ == kNewTarget) return removeTarget(blendShape);
    if (hasNewItem_) {
        removeTargetItem(blendShape, target_, item_);
        if (!hadGroup_) removeTargetGroup(blendShape, target_);
        return CallOutcome();
    }
    if (type_ != kInPlace) return CallOutcome();
    TargetEditor targets(blendShape);
    targets.keepQuiet();
    return targets.write(target_, item_, source_);
}

/// Removes the new target from the deformer.
CallOutcome blendShapeMirrorTarget::removeTarget(const MObject& blendShape) const {
    MFnDependencyNode deformer(blendShape);
    const MString node = deformer.name();
    // Not always the name of the target: the host adds a number if another target has the alias.
    const MString alias = deformer.plugsAlias(
        deformer.findPlug("weight", false).elementByLogicalIndex(static_cast<unsigned int>(target_)));
    const MString group = node + ".it[0].itg[" + target_ + "]";
    MString text;
    if (!isInBetween_) text += "removeMultiInstance -b 1 " + node + ".w[" + target_ + "];";
    text += "removeMultiInstance -b 1 " + group + ".iti[" + item_ + "];";
    if (!isInBetween_) text += "removeMultiInstance -b 1 " + group + ";";
    if (!isInBetween_ && alias.length() > 0) text += "aliasAttr -rm " + node + "." + alias + ";";
    const MStatus status = MGlobal::executeCommand(text, false, false);
    if (isInBetween_) ItemCompanions::removeInfo(blendShape, target_, item_);
    return status ? CallOutcome() : CallOutcome::failed("", status);
}
