#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include "blendShapeExtractTarget.h"
#include "getBlendShapeIndices.h"
#include "polyMapVertexOrder.h"

namespace {

constexpr const char* kVendor = "DELVENTools developers";
constexpr const char* kVersion = "5.10.0";
constexpr const char* kRequiredApi = "Any";

struct Registration {
    const char* name;
    MCreatorFunction creator;
    MCreateSyntaxFunction newSyntax;
};

/// All commands, in the order in which they are registered and removed.
constexpr Registration kCommands[] = {
    {blendShapeExtractTarget::kName, blendShapeExtractTarget::creator, blendShapeExtractTarget::newSyntax},
    {getBlendShapeIndices::kName, getBlendShapeIndices::creator, getBlendShapeIndices::newSyntax},
    {polyMapVertexOrder::kName, polyMapVertexOrder::creator, polyMapVertexOrder::newSyntax},
};

}  // namespace

/// Registers every command. One that fails (its name is taken) does not keep the others from being offered;
/// the status is that of the last.
PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi);
    MStatus status;
    for (const Registration& command : kCommands) {
        status = plugin.registerCommand(command.name, command.creator, command.newSyntax);
        if (!status) status.perror(MString("Register ") + command.name + " command failed.");
    }
    return status;
}

/// Removes every command; the status is that of the last.
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi);
    MStatus status;
    for (const Registration& command : kCommands) {
        status = plugin.deregisterCommand(command.name);
        if (!status) status.perror(MString("Deregister ") + command.name + " command failed.");
    }
    return status;
}
