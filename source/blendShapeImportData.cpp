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
#include "dataFile.h"
#include "targetDeltas.h"

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
        // The words of the export command; scripts that read help texts know them here, too.
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
    // Without a check of its own a call that the host could not read would seem to lack its flags.
    if (!argumentStatus()) return CallOutcome::failed("Error getting objects", argumentStatus());
    importsDeltas_ = arguments.isFlagSet("-d");
    remap_.destinations = readFlagUses<int>(arguments, "-di");
    readFlag(arguments, "-fn", fileName_);
    listsDeltas_ = arguments.isFlagSet("-ld");
    remaps_ = arguments.isFlagSet("-rm");
    remap_.sources = readFlagUses<int>(arguments, "-si");
    if (importsDeltas_) {
        const CallOutcome outcome = readBlendShape(arguments, blendShape_);
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
    if (importsDeltas_) {
        const MIntArray targets = getWeightIndices(blendShape_);
        for (unsigned int k = 0; k < targets.length(); ++k)
            existing_.insert(targets[k]);
    }
    TargetEditor targets(blendShape_);
    const std::vector<std::string> list =
        readTargetData(file.text(), remaps_ ? &remap_ : nullptr, [&](const TargetItem& item) {
            if (importsDeltas_) importItem(targets, item);
        });
    if (listsDeltas_) {
        setResult(toStringArray(list));
    } else {
        setResult(hasFailed_ ? 0 : 1);
    }
    return CallOutcome();
}

/// Writes an item of the file into the node, or shows why it cannot.
void blendShapeImportData::importItem(TargetEditor& targets, const TargetItem& item) {
    const unsigned int count = static_cast<unsigned int>(item.vertices.size());
    TargetDeltas deltas{MIntArray(item.vertices.data(), count), MPointArray(count)};
    for (unsigned int k = 0; k < count; ++k) {
        const std::array<double, 3>& point = item.points[k];
        deltas.points[k] = MPoint(point[0], point[1], point[2]);
    }
    const CallOutcome outcome = targets.write(item.target, item.item, deltas);
    if (!outcome.isDone()) {
        report(outcome);
        hasFailed_ = true;
        return;
    }
    if (existing_.insert(item.target).second) addWeight(item);
}

/// Gives a new target its alias and the weight 0. Both go through script commands, so that only
/// text that is harmless may become part of them.
void blendShapeImportData::addWeight(const TargetItem& item) {
    const MString plug = MFnDependencyNode(blendShape_).name() + ".w[" + item.target + "]";
    MGlobal::executeCommand(MString("aliasAttr ") + freeAlias(item).c_str() + " " + plug, false, false);
    MGlobal::executeCommand(MString("setAttr ") + plug + " 0", false, false);
}

/// The alias for a target, with the first number that makes it free on the node when it is taken,
/// be it by another target or by an attribute.
std::string blendShapeImportData::freeAlias(const TargetItem& item) const {
    const MFnDependencyNode node(blendShape_);
    const std::string wanted = legalAlias(item.name, item.target);
    std::string alias = wanted;
    MObject attribute;
    for (int number = 1; node.findAlias(alias.c_str(), attribute) || node.hasAttribute(alias.c_str());
         ++number)
        alias = wanted + std::to_string(number);
    return alias;
}
