#include "blendShapeImportData.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>

#include <array>
#include <vector>

#include "common.h"
#include "files/dataFile.h"
#include "targets/targetEditor.h"

namespace {

MStringArray toStringArray(const std::vector<std::string>& texts) {
    MStringArray array;
    for (const std::string& text : texts)
        array.append(text.c_str());
    return array;
}

}  // namespace

const CommandInfo& blendShapeImportData::info() {
    static const CommandInfo description{
        kName,
        // Deliberate: docs/compatibility.md.
        "Export blend shape targets to a json file.",
        {{"-d", "-delta", MSyntax::kNoArg, "import deltas"},
         {"-di", "-destinationIndex", MSyntax::kLong, "destination target index for -remap (multi use)",
          true},
         {"-fn", "-fileName", MSyntax::kString, "file name for import"},
         {"-ld", "-listDeltas", MSyntax::kNoArg, "return a list with all delta items of the file"},
         {"-rm", "-remap", MSyntax::kNoArg, "remap indices"},
         {"-si", "-sourceIndex", MSyntax::kLong, "source target index for -remap (multi use)", true}},
        "dv_blendShapeImportData -d -fn <string>",
        "int",
        false,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeImportData::read(const MArgDatabase& arguments) {
    // Without this check, a call whose arguments the host could not parse would seem to lack its flags.
    if (!argumentStatus()) return CallOutcome::failed("Error getting objects", argumentStatus());
    importsDeltas_ = arguments.isFlagSet("-d");
    remap_.destinations = readFlagUses<int>(arguments, "-di");
    readFlag(arguments, "-fn", fileName_);
    listsDeltas_ = arguments.isFlagSet("-ld");
    remaps_ = arguments.isFlagSet("-rm");
    remap_.sources = readFlagUses<int>(arguments, "-si");
    if (importsDeltas_) {
        CallOutcome outcome = readBlendShape(arguments, blendShape_);
        if (!outcome.isDone()) return outcome;
    }
    if (remaps_ && remap_.sources.size() != remap_.destinations.size()) {
        return CallOutcome::refused("The number of indices for source and destination needs to match.");
    }
    if (!importsDeltas_ && !listsDeltas_) return CallOutcome::refused("No operation mode defined.");
    return fileName_.length() > 0 ? CallOutcome() : CallOutcome::refused("Missing export file path.");
}

CallOutcome blendShapeImportData::edit() {
    FileContent file;
    if (!file.read(fileName_.asUTF8())) return CallOutcome::refused("Unable to open file for reading.");
    if (importsDeltas_) readTargets();
    TargetEditor targets(blendShape_);
    const TargetDataContent content =
        readTargetData(file.text(), remaps_ ? &remap_ : nullptr, [&](const TargetItem& item) {
            if (importsDeltas_) importItem(targets, item);
        });
    showWhatIsLeftOut(content.refusedCount);
    if (listsDeltas_) {
        setResult(toStringArray(content.entries));
    } else {
        setResult(hasItems_ && !hasFailed_ ? 1 : 0);
    }
    return CallOutcome();
}

/// Looks up once what the node has. Asking for each target would take quadratic time.
void blendShapeImportData::readTargets() {
    const MIntArray targets = getWeightIndices(blendShape_);
    for (unsigned int k = 0; k < targets.length(); ++k)
        weights_.insert(targets[k]);
    MStringArray aliases;
    MFnDependencyNode(blendShape_).getAliasList(aliases);
    // The list alternates between an alias and its attribute.
    for (unsigned int k = 0; k < aliases.length(); k += 2)
        aliases_.insert(aliases[k].asChar());
}

void blendShapeImportData::showWhatIsLeftOut(int refusedCount) const {
    if (refusedCount > 0) {
        MGlobal::displayWarning(MString("Skipped ") + refusedCount + " indices of " + fileName_ +
                                " that are negative or too large.");
    }
    if (importsDeltas_ && !hasItems_) {
        MGlobal::displayWarning(fileName_ + (remaps_ ? " holds no deltas of the source indices to import."
                                                     : " holds no deltas to import."));
    }
}

/// Writes an item of the file into the node, or shows why this is not possible.
void blendShapeImportData::importItem(TargetEditor& targets, const TargetItem& item) {
    // Unusable entries must not empty an existing item.
    if (item.vertices.empty() && item.hasDropped) {
        MGlobal::displayWarning(MString("Skipped position ") + item.item + " of index " + item.target +
                                " of " + fileName_ + ", which holds no usable delta.");
        return;
    }
    hasItems_ = true;
    const unsigned int count = static_cast<unsigned int>(item.vertices.size());
    TargetDeltas deltas{MIntArray(item.vertices.data(), count), MPointArray(count)};
    for (unsigned int k = 0; k < count; ++k) {
        const std::array<double, 3>& point = item.points[k];
        deltas.points[k] = MPoint(point[0], point[1], point[2]);
    }
    CallOutcome outcome = targets.write(item.target, item.item, deltas);
    if (!outcome.isDone()) {
        report(outcome);
        hasFailed_ = true;
        return;
    }
    if (weights_.insert(item.target).second) addWeight(item);
}

/// Gives a target without weight an alias and the weight 0. Both become part of a script command, so only
/// harmless text may be used.
void blendShapeImportData::addWeight(const TargetItem& item) {
    const MString plug = MFnDependencyNode(blendShape_).name() + ".w[" + item.target + "]";
    MGlobal::executeCommand(MString("aliasAttr ") + freeAlias(item).c_str() + " " + plug, false, false);
    MGlobal::executeCommand(MString("setAttr ") + plug + " 0", false, false);
}

/// The alias for a target. If another target or an attribute has it, the first number that makes it unique is
/// added.
std::string blendShapeImportData::freeAlias(const TargetItem& item) {
    const MFnDependencyNode node(blendShape_);
    const std::string wanted = legalAlias(item.name, item.target);
    int& number = nextNumbers_[wanted];
    std::string alias = number == 0 ? wanted : wanted + std::to_string(number);
    while (aliases_.count(alias) > 0 || node.hasAttribute(alias.c_str()))
        alias = wanted + std::to_string(++number);
    aliases_.insert(alias);
    return alias;
}
