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

namespace {

constexpr const char* kVendor = "DELVENTools developers";
constexpr const char* kVersion = "5.10.0";
constexpr const char* kRequiredApi = "Any";

using CompareToolCommand = DELVENCompareDraggerToolContextCommand;

struct Registration {
    const char* name;
    MCreatorFunction creator;
    MCreateSyntaxFunction newSyntax;
};

/// All commands, in the order in which they are registered and removed.
constexpr Registration kCommands[] = {
    {blendShapeEditWeights::kName, blendShapeEditWeights::creator, blendShapeEditWeights::newSyntax},
    {blendShapeExportData::kName, blendShapeExportData::creator, blendShapeExportData::newSyntax},
    {blendShapeExtractTarget::kName, blendShapeExtractTarget::creator, blendShapeExtractTarget::newSyntax},
    {blendShapeImportData::kName, blendShapeImportData::creator, blendShapeImportData::newSyntax},
    {blendShapeMirrorTarget::kName, blendShapeMirrorTarget::creator, blendShapeMirrorTarget::newSyntax},
    {blendShapeRemoveDeltas::kName, blendShapeRemoveDeltas::creator, blendShapeRemoveDeltas::newSyntax},
    {blendShapeReplaceTarget::kName, blendShapeReplaceTarget::creator, blendShapeReplaceTarget::newSyntax},
    {blendShapeSetInbetweenPosition::kName, blendShapeSetInbetweenPosition::creator,
     blendShapeSetInbetweenPosition::newSyntax},
    {blendShapeSplitTarget::kName, blendShapeSplitTarget::creator, blendShapeSplitTarget::newSyntax},
    {displayMessage::kName, displayMessage::creator, displayMessage::newSyntax},
    {editRegionMap::kName, editRegionMap::creator, editRegionMap::newSyntax},
    {editTweakNode::kName, editTweakNode::creator, editTweakNode::newSyntax},
    {getBlendShapeIndices::kName, getBlendShapeIndices::creator, getBlendShapeIndices::newSyntax},
    {getComponentList::kName, getComponentList::creator, getComponentList::newSyntax},
    {meshEvaluate::kName, meshEvaluate::creator, meshEvaluate::newSyntax},
    {polyMapVertexOrder::kName, polyMapVertexOrder::creator, polyMapVertexOrder::newSyntax},
    {polySymmetry::kName, polySymmetry::creator, polySymmetry::newSyntax},
    {reorderRotation::kName, reorderRotation::creator, reorderRotation::newSyntax},
    {sculptExtractDeltaMesh::kName, sculptExtractDeltaMesh::creator, sculptExtractDeltaMesh::newSyntax},
};

}  // namespace

/// Registers every command, the one that makes the compare tool last. One that fails (its name is taken) does
/// not keep the others from being offered; the status is that of the last.
PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
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

/// Removes them in the same order; the status is that of the last.
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi);
    MStatus status;
    for (const Registration& command : kCommands) {
        status = plugin.deregisterCommand(command.name);
        if (!status) status.perror(MString("Deregister ") + command.name + " command failed.");
    }
    status = plugin.deregisterContextCommand(CompareToolCommand::kName);
    if (!status) status.perror(MString("Deregister ") + CompareToolCommand::kName + " command failed.");
    return status;
}
