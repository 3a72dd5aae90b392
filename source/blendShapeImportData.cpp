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

#include "commandSupport.h"
#include "common.h"
#include "dataFile.h"
#include "targetDeltas.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeImportData::kName,
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
        "int"};
    return command;
}

MStatus fail(const char* text) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, MS::kSuccess);
}

MStringArray toStringArray(const std::vector<std::string>& texts) {
    MStringArray array;
    for (const std::string& text : texts)
        array.append(text.c_str());
    return array;
}

}  // namespace

void* blendShapeImportData::creator() {
    return new blendShapeImportData();
}

MSyntax blendShapeImportData::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeImportData::doIt(const MArgList& arguments) {
    MStatus status;
    const MArgDatabase database(syntax(), arguments, &status);
    // Without a check of its own a call that the host could not read would seem to lack its flags.
    if (!status) return reportError("Error getting objects", ErrorResult::kZero, ErrorSink::kGlobal, status);
    if (answerHelp(database, info())) return MS::kSuccess;
    importsDeltas_ = database.isFlagSet("-d");
    remap_.destinations = readFlagUses<int>(database, "-di");
    readFlag(database, "-fn", fileName_);
    listsDeltas_ = database.isFlagSet("-ld");
    remaps_ = database.isFlagSet("-rm");
    remap_.sources = readFlagUses<int>(database, "-si");
    if (importsDeltas_) {
        status = getBlendShapeNode(database, ErrorResult::kZero, blendShape_);
        if (!status) return status;
    }
    if (remaps_ && remap_.sources.size() != remap_.destinations.size()) {
        return fail("The number of indices for source and destination needs to match.");
    }
    if (!importsDeltas_ && !listsDeltas_) return fail("No operation mode defined.");
    if (fileName_.length() == 0) return fail("Missing export file path.");
    return redoIt();
}

MStatus blendShapeImportData::redoIt() {
    FileContent file;
    if (!file.read(fileName_.asUTF8())) return fail("Unable to open file for reading.");
    if (importsDeltas_) {
        const MIntArray targets = getTargetIndices(blendShape_);
        for (unsigned int k = 0; k < targets.length(); ++k)
            existing_.insert(targets[k]);
    }
    const std::vector<std::string> list =
        readTargetData(file.text(), remaps_ ? &remap_ : nullptr, [this](const TargetItem& item) {
            if (importsDeltas_) importItem(item);
        });
    if (listsDeltas_) {
        setResult(toStringArray(list));
    } else {
        setResult(hasFailed_ ? 0 : 1);
    }
    return MS::kSuccess;
}

/// Writes an item of the file into the node. A failure is reported by the writing itself.
void blendShapeImportData::importItem(const TargetItem& item) {
    const unsigned int count = static_cast<unsigned int>(item.vertices.size());
    TargetDeltas deltas{MIntArray(item.vertices.data(), count), MPointArray(count)};
    for (unsigned int k = 0; k < count; ++k) {
        const std::array<double, 3>& point = item.points[k];
        deltas.points[k] = MPoint(point[0], point[1], point[2]);
    }
    if (!writeDeltas(blendShape_, item.target, item.item, deltas, ErrorResult::kZero)) {
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

MStatus blendShapeImportData::undoIt() {
    return MS::kSuccess;
}

bool blendShapeImportData::isUndoable() const {
    return false;
}
