#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "blendShapeEditWeights.h"
#include "blendShapeExportData.h"
#include "blendShapeExtractTarget.h"
#include "blendShapeImportData.h"
#include "blendShapeMirrorTarget.h"
#include "blendShapeRemoveDeltas.h"
#include "blendShapeReplaceTarget.h"
#include "blendShapeSetInbetweenPosition.h"
#include "blendShapeSplitTarget.h"
#include "compareDraggerTool.h"
#include "displayMessage.h"
#include "editRegionMap.h"
#include "editTweakNode.h"
#include "getBlendShapeIndices.h"
#include "getComponentList.h"
#include "meshEvaluate.h"
#include "polyMapVertexOrder.h"
#include "polySymmetry.h"
#include "reorderRotation.h"
#include "sculptExtractDeltaMesh.h"
#include "symmetry/sideBySide.h"

namespace {

constexpr const char* kProduct = "DELVENTools";
constexpr const char* kVendor = "DELVENTools developers";
constexpr const char* kVersion = "5.10.0";
constexpr const char* kRequiredApi = "Any";

using CompareToolCommand = DELVENCompareDraggerToolContextCommand;

struct Registration {
    const char* name;
    MCreatorFunction creator;
    MCreateSyntaxFunction newSyntax;
};

template <typename Command>
constexpr Registration registrationOf() {
    return {Command::kName, Command::creator, Command::newSyntax};
}

/// All commands, in the order in which they are registered and removed.
constexpr Registration kCommands[] = {
    registrationOf<blendShapeEditWeights>(),
    registrationOf<blendShapeExportData>(),
    registrationOf<blendShapeExtractTarget>(),
    registrationOf<blendShapeImportData>(),
    registrationOf<blendShapeMirrorTarget>(),
    registrationOf<blendShapeRemoveDeltas>(),
    registrationOf<blendShapeReplaceTarget>(),
    registrationOf<blendShapeSetInbetweenPosition>(),
    registrationOf<blendShapeSplitTarget>(),
    registrationOf<displayMessage>(),
    registrationOf<editRegionMap>(),
    registrationOf<editTweakNode>(),
    registrationOf<getBlendShapeIndices>(),
    registrationOf<getComponentList>(),
    registrationOf<meshEvaluate>(),
    registrationOf<polyMapVertexOrder>(),
    registrationOf<polySymmetry>(),
    registrationOf<reorderRotation>(),
    registrationOf<sculptExtractDeltaMesh>(),
};

MStatus registerAll(MObject& object) {
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi);
    MStatus status;
    for (const Registration& command : kCommands) {
        status = plugin.registerCommand(command.name, command.creator, command.newSyntax);
        if (!status) status.perror(MString("Register ") + command.name + " command failed.");
    }
    status = plugin.registerContextCommand(CompareToolCommand::kName, CompareToolCommand::creator);
    if (!status) status.perror(MString("Register ") + CompareToolCommand::kName + " command failed.");
    return status;
}

MStatus deregisterAll(MObject& object) {
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi);
    MStatus status;
    for (const Registration& command : kCommands) {
        status = plugin.deregisterCommand(command.name);
        if (!status) status.perror(MString("Deregister ") + command.name + " command failed.");
    }
    status = plugin.deregisterContextCommand(CompareToolCommand::kName);
    if (!status) status.perror(MString("Deregister ") + CompareToolCommand::kName + " command failed.");
    endThreads();
    return status;
}

}  // namespace

/// Registers all commands, that of the compare tool last. If one fails, for example because its name is
/// taken, the others are registered all the same. The status is that of the last.
PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
    return guardEntry(kProduct, [&] { return registerAll(object); });
}

/// Removes all commands in the same order. The status is that of the last.
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    return guardEntry(kProduct, [&] { return deregisterAll(object); });
}
