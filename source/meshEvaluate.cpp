#include "meshEvaluate.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagModifier.h>
#include <maya/MFn.h>
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

/// More nodes than any chain has: one that runs in a circle has no end.
constexpr int kLongestChain = 10000;

/// The input from which a deformer, a groupParts node or the like makes an output; null for other nodes.
MPlug geometryInput(const MPlug& output) {
    const MObject node = output.node();
    const MFnDependencyNode maker(node);
    if (node.hasFn(MFn::kGeometryFilt)) {
        // Each of its outputs has an input of the same index.
        if (!output.isElement()) return MPlug();
        return maker.findPlug("input", false).elementByLogicalIndex(output.logicalIndex()).child(0);
    }
    MStatus status;
    const MPlug single = maker.findPlug("inputGeometry", false, &status);
    return status ? single : MPlug();
}

/// The nearest mesh up the chain from the output of a node; null when the chain begins with something else.
MObject meshBefore(MPlug output) {
    for (int step = 0; step < kLongestChain && !output.isNull(); ++step) {
        if (output.node().hasFn(MFn::kMesh)) return output.node();
        const MPlug input = geometryInput(output);
        output = input.isNull() ? MPlug() : input.source();
    }
    return MObject::kNullObj;
}

/// The mesh that the deformers of a shape begin with; null for a shape without deformers.
MObject originOf(const MObject& shape) {
    const MPlug output = MFnDependencyNode(shape).findPlug("inMesh", false).source();
    const bool isDeformed = !output.isNull() && output.node().hasFn(MFn::kGeometryFilt);
    return isDeformed ? meshBefore(output) : MObject(MObject::kNullObj);
}

/// Whether a visible shape beside an intermediate one is made from it: that is where it belongs then.
bool isInPlace(const MObject& original) {
    MDagPath parent;
    if (!MDagPath::getAPathTo(original, parent) || !parent.pop()) return false;
    const MObjectArray shapes = chosenShapes(meshChildren(parent), false);
    for (unsigned int k = 0; k < shapes.length(); ++k) {
        if (originOf(shapes[k]) == original) return true;
    }
    return false;
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
    MObject item;
    objects.getDependNode(0, item);
    if (item.hasFn(MFn::kTransform)) {
        // The first child, even if it is an intermediate shape before the visible one: messages name it.
        shape_.pop();
        shape_.push(MFnDagNode(item).child(0));
    }
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
/// @param found  null after a success when a tweak node's chain begins with something else
MStatus meshEvaluate::findDistantIntermediate(const MObject& shape, MObject& found) const {
    MStatus status;
    const MFnDependencyNode shapeNode(shape);
    const MPlug location = shapeNode.findPlug("tweakLocation", false, &status);
    if (!status) return fail(shapeNode.name() + " has no tweak location attribute.");
    const MPlug tweak = location.source();
    if (tweak.isNull()) {
        // With component tags a deformed mesh needs no tweak node.
        const MObject original = originOf(shape);
        status = isInPlace(original) ? MStatus(MS::kSuccess) : takeIntermediate(original, found);
        if (status && found.isNull()) found = shape;
        return status;
    }
    const MPlug input = firstElement(MFnDependencyNode(tweak.node()).findPlug("input", false));
    if (input.isNull() || input.numChildren() == 0) return MS::kFailure;
    const MPlug source = input.child(0).source();
    if (source.isNull()) return fail(transform_.partialPathName() + " has no intermediate shape node.");
    return takeIntermediate(meshBefore(source), found);
}

/// Moves an intermediate shape from another transform to that of the mesh.
/// @param original  may be null, or no intermediate shape: `found` stays as it is then
MStatus meshEvaluate::takeIntermediate(const MObject& original, MObject& found) const {
    if (original.isNull()) return MS::kSuccess;
    const MFnDagNode node(original);
    if (!node.isIntermediateObject() || node.parentCount() == 0) return MS::kSuccess;
    const MString formerName = node.fullPathName();
    MDagModifier modifier;
    modifier.reparentNode(original, transform_.node());
    const MStatus status = modifier.doIt();
    if (!status) return status;
    MGlobal::displayWarning("The intermediate shape " + formerName + " is not a child of " +
                            transform_.fullPathName() + " and has been re-parented.");
    found = original;
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
