#include "editTweakNode.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MSelectionList.h>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        editTweakNode::kName,
        "Bake and remove tweak node edits.",
        {{"-b", "-bake", MSyntax::kBoolean, "bake the edits to the original mesh"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"}},
        "dv_editTweakNode -b <int> -om <string>",
        "int"};
    return command;
}

}  // namespace

void* editTweakNode::creator() {
    return new editTweakNode();
}

MSyntax editTweakNode::newSyntax() {
    return makeSyntax(info());
}

MStatus editTweakNode::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString originalName;
    readFlag(database, "-b", isBaked_);
    readFlag(database, "-om", originalName);
    MObject tweak;
    const MStatus status = getNode(database, MFn::kTweak, "No tweak node provided.",
                                   "The node is not a tweak node.", ErrorResult::kZero, tweak);
    if (!status) return status;
    tweakNode_ = MFnDependencyNode(tweak).name();
    if (!getMeshShape(originalName, "The original mesh is not defined.", ErrorResult::kZero, originalMesh_)) {
        return MS::kSuccess;
    }
    MSelectionList list;
    list.add(tweakNode_ + ".vlist[0].vertex");
    list.getPlug(0, edits_);
    return redoIt();
}

MStatus editTweakNode::redoIt() {
    setResult(0);
    MFnMesh mesh(originalMesh_);
    MFloatPointArray points;
    MStatus status = mesh.getPoints(points, MSpace::kObject);
    unsigned int missing = 0;
    if (status) status = addEdits(points, missing);
    if (!status) return status;
    if (isBaked_ && missing > 0) {
        // They would be lost, and the command cannot be undone.
        return reportError(MString("The original mesh has no vertices for ") + missing + " of the edits.",
                           ErrorResult::kZero, ErrorSink::kGlobal, MS::kFailure);
    }
    // No data in place of the array removes all its elements.
    MObject none;
    status = edits_.setValue(none);
    if (status && isBaked_) status = mesh.setPoints(points, MSpace::kObject);
    if (status) setResult(1);
    return status;
}

/// Adds the edits to the points of the mesh that they belong to.
/// @param missing  number of edits of vertices that the mesh does not have
MStatus editTweakNode::addEdits(MFloatPointArray& points, unsigned int& missing) const {
    MIntArray vertices;
    edits_.getExistingArrayAttributeIndices(vertices);
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

MStatus editTweakNode::undoIt() {
    return MS::kSuccess;
}

bool editTweakNode::isUndoable() const {
    return false;
}
