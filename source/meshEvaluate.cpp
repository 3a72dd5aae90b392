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

#include "scene/meshObject.h"

namespace {

/// The mesh children of a transform, in their order.
MObjectArray meshChildren(const MDagPath& transform) {
    MObjectArray children;
    for (unsigned int k = 0; k < transform.childCount(); ++k) {
        const MObject child = transform.child(k);
        if (child.hasFn(MFn::kMesh)) children.append(child);
    }
    return children;
}

/// The intermediate shapes in a list, or the others.
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

/// The first existing element of an array plug; null if there is none.
MPlug firstElement(const MPlug& array) {
    for (unsigned int k = 0; k < array.numElements(); ++k) {
        const MPlug element = array.elementByPhysicalIndex(k);
        if (!element.isNull()) return element;
    }
    return MPlug();
}

/// More nodes than any chain has. A chain that runs in a circle would not end.
constexpr int kLongestChain = 10000;

/// The input from which a deformer, a groupParts node or a similar node computes an output. Null for other
/// nodes.
MPlug geometryInput(const MPlug& output) {
    const MObject node = output.node();
    const MFnDependencyNode maker(node);
    if (node.hasFn(MFn::kGeometryFilt)) {
        // Each output has an input of the same index.
        if (!output.isElement()) return MPlug();
        return maker.findPlug("input", false).elementByLogicalIndex(output.logicalIndex()).child(0);
    }
    MStatus status;
    const MPlug single = maker.findPlug("inputGeometry", false, &status);
    return status ? single : MPlug();
}

/// The nearest mesh upstream of an output. Null if the chain begins with something else.
MObject meshBefore(MPlug output) {
    for (int step = 0; step < kLongestChain && !output.isNull(); ++step) {
        if (output.node().hasFn(MFn::kMesh)) return output.node();
        const MPlug input = geometryInput(output);
        output = input.isNull() ? MPlug() : input.source();
    }
    return MObject::kNullObj;
}

/// The mesh at the beginning of the deformers of a shape. Null for a shape without deformers.
MObject originOf(const MObject& shape) {
    const MPlug output = MFnDependencyNode(shape).findPlug("inMesh", false).source();
    const bool isDeformed = !output.isNull() && output.node().hasFn(MFn::kGeometryFilt);
    return isDeformed ? meshBefore(output) : MObject(MObject::kNullObj);
}

/// Whether an intermediate shape has the same transform as a visible shape that is made from it. Then it is
/// where it belongs.
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

const CommandInfo& meshEvaluate::info() {
    static const CommandInfo description{
        kName,
        "Get the shape or intermediate shape nodes of a mesh.",
        {{"-i", "-intermediate", MSyntax::kNoArg, "get the intermediate shape node"}},
        "dv_meshEvaluate",
        "int",
        false,
        ErrorResult::kEmptyString};
    return description;
}

CallOutcome meshEvaluate::read(const MArgDatabase& arguments) {
    isIntermediate_ = arguments.isFlagSet("-i");
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return CallOutcome::failed("Error getting objects", status);
    if (objects.isEmpty()) {
        return CallOutcome::failed("No mesh node provided.", MS::kFailure, ErrorSink::kCommand);
    }
    MString error;
    if (!readMeshItem(objects, 0, shape_, error)) return CallOutcome::failed(error);
    MObject item;
    objects.getDependNode(0, item);
    if (item.hasFn(MFn::kTransform)) {
        // The first child, even if it is an intermediate shape: messages name it.
        shape_.pop();
        shape_.push(MFnDagNode(item).child(0));
    }
    transform_ = shape_;
    if (!transform_.pop()) return CallOutcome::failed(shape_.partialPathName() + " has no parent node.");
    return CallOutcome();
}

CallOutcome meshEvaluate::edit() {
    MObject found;
    CallOutcome outcome = isIntermediate_ ? findIntermediate(found) : findShape(found);
    if (outcome.isDone()) setResult(MFnDagNode(found).fullPathName());
    return outcome;
}

CallOutcome meshEvaluate::findShape(MObject& found) const {
    const MObjectArray shapes = chosenShapes(meshChildren(transform_), false);
    if (shapes.length() > 1)
        return CallOutcome::failed(shape_.partialPathName() + " has more than one shape node.");
    if (shapes.length() == 0) return CallOutcome::failed("");
    found = shapes[0];
    return CallOutcome();
}

CallOutcome meshEvaluate::findIntermediate(MObject& found) const {
    const MObjectArray children = meshChildren(transform_);
    const MObjectArray shapes = chosenShapes(children, false);
    if (shapes.length() > 1)
        return CallOutcome::failed(shape_.partialPathName() + " has more than one shape node.");
    const MObject shape = shapes.length() == 1 ? shapes[0] : shape_.node();
    CallOutcome outcome = children.length() == 1 ? findDistantIntermediate(shape, found)
                                                 : findCandidate(shape, children, found);
    if (outcome.isDone() && found.isNull())
        return CallOutcome::failed(transform_.partialPathName() + " has no shape node.");
    return outcome;
}

/// The intermediate shape of a shape without one below the same transform: found along the chain of
/// deformers.
/// @param found  null after a success if there is a tweak node and its chain does not begin with an
///               intermediate shape
CallOutcome meshEvaluate::findDistantIntermediate(const MObject& shape, MObject& found) const {
    MStatus status;
    const MFnDependencyNode shapeNode(shape);
    const MPlug location = shapeNode.findPlug("tweakLocation", false, &status);
    if (!status) return CallOutcome::failed(shapeNode.name() + " has no tweak location attribute.");
    const MPlug tweak = location.source();
    if (tweak.isNull()) {
        // With component tags a deformed mesh needs no tweak node.
        const MObject original = originOf(shape);
        CallOutcome outcome = isInPlace(original) ? CallOutcome() : takeIntermediate(original, found);
        if (outcome.isDone() && found.isNull()) found = shape;
        return outcome;
    }
    const MPlug input = firstElement(MFnDependencyNode(tweak.node()).findPlug("input", false));
    if (input.isNull() || input.numChildren() == 0) return CallOutcome::failed("");
    const MPlug source = input.child(0).source();
    if (source.isNull())
        return CallOutcome::failed(transform_.partialPathName() + " has no intermediate shape node.");
    return takeIntermediate(meshBefore(source), found);
}

/// Moves an intermediate shape from another transform below that of the mesh.
/// @param original  if null, or not an intermediate shape, `found` does not change
CallOutcome meshEvaluate::takeIntermediate(const MObject& original, MObject& found) const {
    if (original.isNull()) return CallOutcome();
    const MFnDagNode node(original);
    if (!node.isIntermediateObject() || node.parentCount() == 0) return CallOutcome();
    const MString formerName = node.fullPathName();
    MDagModifier modifier;
    modifier.reparentNode(original, transform_.node());
    const MStatus status = modifier.doIt();
    if (!status)
        return CallOutcome::failed("The intermediate shape " + formerName + " cannot be moved.", status);
    MGlobal::displayWarning("The intermediate shape " + formerName + " is not a child of " +
                            transform_.fullPathName() + " and has been re-parented.");
    found = original;
    return CallOutcome();
}

/// The intermediate shape among the children: the one that feeds something and has the same vertex count as
/// the shape. The shape itself if there is none.
CallOutcome meshEvaluate::findCandidate(const MObject& shape, const MObjectArray& children,
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
        return CallOutcome();
    }
    for (unsigned int k = 0; k < candidates.length(); ++k) {
        MGlobal::displayInfo("Possible excessive intermediate: " +
                             MFnDependencyNode(candidates[k]).absoluteName());
    }
    MGlobal::displayInfo(
        "Please remove all unnecessary shape nodes.\n"
        "A deformed mesh usually has only two shape nodes; the deformed shape and the original shape.");
    // Deliberate: docs/compatibility.md.
    return CallOutcome::failed(shape_.partialPathName() +
                               " has no too many intermediate shape nodes. See script editor for details.");
}
