#include "editTweakNode.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MSelectionList.h>

const CommandInfo& editTweakNode::info() {
    static const CommandInfo description{
        kName,
        "Bake and remove tweak node edits.",
        {{"-b", "-bake", MSyntax::kBoolean, "bake the edits to the original mesh"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"}},
        "dv_editTweakNode -b <int> -om <string>",
        "int",
        false,
        ErrorResult::kZero};
    return description;
}

CallOutcome editTweakNode::read(const MArgDatabase& arguments) {
    MString originalName;
    readFlag(arguments, "-b", isBaked_);
    readFlag(arguments, "-om", originalName);
    MObject tweak;
    CallOutcome outcome =
        readNode(arguments, MFn::kTweak, "No tweak node provided.", "The node is not a tweak node.", tweak);
    if (!outcome.isDone()) return outcome;
    tweakNode_ = MFnDependencyNode(tweak).name();
    outcome = readMeshShape(originalName, "The original mesh is not defined.", originalMesh_);
    if (!outcome.isDone()) return outcome;
    MSelectionList list;
    list.add(tweakNode_ + ".vlist[0].vertex");
    list.getPlug(0, edits_);
    return outcome;
}

CallOutcome editTweakNode::edit() {
    setResult(0);
    MFnMesh mesh(originalMesh_);
    MFloatPointArray points;
    MStatus status = mesh.getPoints(points, MSpace::kObject);
    unsigned int missing = 0;
    if (status) status = addEdits(points, missing);
    if (!status) return CallOutcome::failed("", status);
    if (isBaked_ && missing > 0) {
        // These edits would be lost, and the command cannot be undone.
        return CallOutcome::failed(MString("The original mesh has no vertices for ") + missing +
                                   " of the edits.");
    }
    // Setting the array to no data removes all its elements.
    MObject none;
    status = edits_.setValue(none);
    if (status && isBaked_) status = mesh.setPoints(points, MSpace::kObject);
    if (!status) return CallOutcome::failed("", status);
    setResult(1);
    return CallOutcome();
}

/// Adds each edit to the point of its vertex.
/// @param missing  number of edits of vertices that the mesh does not have
MStatus editTweakNode::addEdits(MFloatPointArray& points, unsigned int& missing) const {
    MIntArray vertices;
    MPlug(edits_).getExistingArrayAttributeIndices(vertices);
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        MStatus status;
        const MPlug edit = edits_.elementByPhysicalIndex(k, &status);
        if (!status) return status;
        const auto vertex = static_cast<unsigned int>(vertices[k]);
        if (vertex >= points.length()) {
            ++missing;
            continue;
        }
        MFloatPoint& point = points[vertex];
        point.x += static_cast<float>(edit.child(0).asDouble());
        point.y += static_cast<float>(edit.child(1).asDouble());
        point.z += static_cast<float>(edit.child(2).asDouble());
    }
    return MS::kSuccess;
}
