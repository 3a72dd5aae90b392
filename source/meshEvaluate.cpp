#include "meshEvaluate.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include "commandSupport.h"
#include "meshObject.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        meshEvaluate::kName,
        "Get the shape or intermediate shape nodes of a mesh.",
        {{"-i", "-intermediate", MSyntax::kNoArg, "get the intermediate shape node"}},
        "dv_meshEvaluate",
        "int"};
    return command;
}

MStatus fail(const MString& text, ErrorSink sink = ErrorSink::kGlobal, const MStatus& status = MS::kFailure) {
    return reportError(text, ErrorResult::kEmptyString, sink, status);
}

/// The mesh children of a transform, in their order.
MObjectArray meshChildren(const MDagPath& transform) {
    MObjectArray children;
    for (unsigned int k = 0; k < transform.childCount(); ++k) {
        const MObject child = transform.child(k);
        if (child.hasFn(MFn::kMesh)) children.append(child);
    }
    return children;
}

/// Those of mesh shapes that are intermediate, or those that are not.
MObjectArray chosenShapes(const MObjectArray& shapes, bool isIntermediate) {
    MObjectArray chosen;
    for (unsigned int k = 0; k < shapes.length(); ++k) {
        if (MFnDagNode(shapes[k]).isIntermediateObject() == isIntermediate) chosen.append(shapes[k]);
    }
    return chosen;
}

bool feedsAnything(const MObject& node) {
    MPlugArray connected;
    MFnDependencyNode(node).getConnections(connected);
    for (unsigned int k = 0; k < connected.length(); ++k) {
        if (connected[k].isSource()) return true;
    }
    return false;
}

/// The first element of an array plug that is there; null when there is none.
MPlug firstElement(const MPlug& array) {
    for (unsigned int k = 0; k < array.numElements(); ++k) {
        const MPlug element = array.elementByPhysicalIndex(k);
        if (!element.isNull()) return element;
    }
    return MPlug();
}

}  // namespace

void* meshEvaluate::creator() {
    return new meshEvaluate();
}

MSyntax meshEvaluate::newSyntax() {
    return makeSyntax(info());
}

MStatus meshEvaluate::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    isIntermediate_ = database.isFlagSet("-i");
    MSelectionList objects;
    const MStatus status = database.getObjects(objects);
    if (!status) return fail("Error getting objects", ErrorSink::kGlobal, status);
    if (objects.isEmpty()) return fail("No mesh node provided.", ErrorSink::kCommand);
    MString error;
    if (!readMeshItem(objects, 0, shape_, error)) return fail(error);
    transform_ = shape_;
    if (!transform_.pop()) return fail(shape_.partialPathName() + " has no parent node.");
    return redoIt();
}

MStatus meshEvaluate::redoIt() {
    MObject found;
    const MStatus status = isIntermediate_ ? findIntermediate(found) : findShape(found);
    if (!status) return status;
    setResult(MFnDagNode(found).fullPathName());
    return MS::kSuccess;
}

MStatus meshEvaluate::findShape(MObject& found) const {
    const MObjectArray shapes = chosenShapes(meshChildren(transform_), false);
    if (shapes.length() > 1) return fail(shape_.partialPathName() + " has more than one shape node.");
    if (shapes.length() == 0) return MS::kFailure;
    found = shapes[0];
    return MS::kSuccess;
}

MStatus meshEvaluate::findIntermediate(MObject& found) const {
    const MObjectArray children = meshChildren(transform_);
    const MObjectArray shapes = chosenShapes(children, false);
    if (shapes.length() > 1) return fail(shape_.partialPathName() + " has more than one shape node.");
    const MObject shape = shapes.length() == 1 ? shapes[0] : shape_.node();
    const MStatus status = children.length() == 1 ? findDistantIntermediate(shape, found)
                                                  : findCandidate(shape, children, found);
    if (!status) return status;
    if (found.isNull()) return fail(transform_.partialPathName() + " has no shape node.");
    return MS::kSuccess;
}

/// The intermediate shape of a shape that has none beside it: up the chain of deformers.
/// @param found  null after a success when the chain begins with something else
MStatus meshEvaluate::findDistantIntermediate(const MObject& shape, MObject& found) const {
    MStatus status;
    const MPlug location = MFnDependencyNode(shape).findPlug("tweakLocation", false, &status);
    if (!status) return fail(MFnDependencyNode(shape).name() + " has no tweak location attribute.");
    const MPlug tweak = location.source();
    if (tweak.isNull()) {
        found = shape;
        return MS::kSuccess;
    }
    const MPlug input = firstElement(MFnDependencyNode(tweak.node()).findPlug("input", false));
    if (input.isNull() || input.numChildren() == 0) return MS::kFailure;
    const MPlug parts = input.child(0).source();
    if (parts.isNull()) return fail(transform_.partialPathName() + " has no intermediate shape node.");
    const MPlug geometry = MFnDependencyNode(parts.node()).findPlug("inputGeometry", false, &status);
    const MPlug source = status ? geometry.source() : MPlug();
    if (source.isNull()) return MS::kSuccess;
    const MFnDagNode original(source.node());
    if (!original.isIntermediateObject() || original.parentCount() == 0) return MS::kSuccess;
    const MString formerName = original.fullPathName();
    MDagModifier modifier;
    modifier.reparentNode(source.node(), transform_.node());
    status = modifier.doIt();
    if (!status) return status;
    MGlobal::displayWarning("The intermediate shape " + formerName + " is not a child of " +
                            transform_.fullPathName() + " and has been re-parented.");
    found = source.node();
    return MS::kSuccess;
}

/// The intermediate shape among the children: the one with the vertices of the shape that feeds something;
/// the shape when there is none.
MStatus meshEvaluate::findCandidate(const MObject& shape, const MObjectArray& children,
                                    MObject& found) const {
    const int vertexCount = MFnMesh(shape).numVertices();
    const MObjectArray intermediates = chosenShapes(children, true);
    MObjectArray candidates;
    for (unsigned int k = 0; k < intermediates.length(); ++k) {
        const bool isAlike = MFnMesh(intermediates[k]).numVertices() == vertexCount;
        if (isAlike && feedsAnything(intermediates[k])) candidates.append(intermediates[k]);
    }
    if (candidates.length() < 2) {
        found = candidates.length() == 1 ? candidates[0] : shape;
        return MS::kSuccess;
    }
    for (unsigned int k = 0; k < candidates.length(); ++k) {
        MGlobal::displayInfo("Possible excessive intermediate: " +
                             MFnDependencyNode(candidates[k]).absoluteName());
    }
    MGlobal::displayInfo(
        "Please remove all unnecessary shape nodes.\n"
        "A deformed mesh usually has only two shape nodes; the deformed shape and the original shape.");
    // Deliberate, grammar included: scripts look for this text.
    return fail(shape_.partialPathName() +
                " has no too many intermediate shape nodes. See script editor for details.");
}

MStatus meshEvaluate::undoIt() {
    return MS::kSuccess;
}

bool meshEvaluate::isUndoable() const {
    return false;
}
