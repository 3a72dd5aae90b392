#include "sculptExtractDeltaMesh.h"

#include <maya/MFloatPoint.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <algorithm>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        sculptExtractDeltaMesh::kName,
        "Generates a delta mesh based on the given sculpt result and the intermediate shape node.",
        {{"-c", "-compare", MSyntax::kNoArg, "compares if both meshes are identical"},
         {"-m", "-mesh", MSyntax::kString, "mesh with skin cluster"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"}},
        "dv_sculptExtractDeltaMesh -m <string> -om <string>",
        "int"};
    return command;
}

/// After an error in the arguments.
MStatus fail(const MString& text, const MStatus& status = MS::kSuccess) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, status);
}

/// Exactly, in the vertices that both have.
bool areEqual(const MFloatPointArray& left, const MFloatPointArray& right) {
    const unsigned int count = std::min(left.length(), right.length());
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        const MFloatPoint& a = left[vertex];
        const MFloatPoint& b = right[vertex];
        if (a.x != b.x || a.y != b.y || a.z != b.z) return false;
    }
    return true;
}

}  // namespace

void* sculptExtractDeltaMesh::creator() {
    return new sculptExtractDeltaMesh();
}

MSyntax sculptExtractDeltaMesh::newSyntax() {
    return makeSyntax(info());
}

MStatus sculptExtractDeltaMesh::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    MString meshName;
    MString originalName;
    compares_ = database.isFlagSet("-c");
    readFlag(database, "-m", meshName);
    readFlag(database, "-om", originalName);
    MSelectionList objects;
    const MStatus status = database.getObjects(objects);
    if (!status) return fail("Error getting objects", status);
    if (objects.isEmpty()) return fail("No target mesh provided.");
    MString error;
    if (!readMeshes(objects, meshName, originalName, error)) return fail(error);
    isChecked_ = true;
    return redoIt();
}

/// Sets the three meshes: the first of the objects is the sculpt.
bool sculptExtractDeltaMesh::readMeshes(const MSelectionList& objects, const MString& meshName,
                                        const MString& originalName, MString& error) {
    MSelectionList named;
    if (meshName.length() > 0) named.add(meshName);
    if (originalName.length() > 0) named.add(originalName);
    if (named.length() != 2) {
        error = "Mesh flag and target node must be defined.";
        return false;
    }
    MDagPath sculpt;
    MDagPath deformed;
    MDagPath intermediate;
    if (!readMeshShapeItem(objects, 0, sculpt, error) || !readMeshShapeItem(named, 0, deformed, error) ||
        !readMeshShapeItem(named, 1, intermediate, error)) {
        return false;
    }
    sculpt_ = MeshObject(sculpt);
    deformed_ = MeshObject(deformed);
    intermediate_ = MeshObject(intermediate);
    return true;
}

MStatus sculptExtractDeltaMesh::redoIt() {
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    created_ = MObjectHandle();
    if (!sculpt_.isAlive() || !deformed_.isAlive() || !intermediate_.isAlive()) {
        return fail("One of the meshes is not in the scene any more.", MS::kFailure);
    }
    MFloatPointArray points;
    unsigned int unsolved = 0;
    MString error;
    if (!readCorrective(points, unsolved, error)) {
        isChecked_ = false;
        return reportError(error, ErrorResult::kMinusOne, ErrorSink::kGlobal, MS::kSuccess);
    }
    if (unsolved > 0) {
        MGlobal::displayWarning(MString("The deformation has no inverse at ") + unsolved +
                                " of the sculpted vertices. Their corrective positions mean nothing.");
    }
    return create(points);
}

/// @param points    the corrective points
/// @param unsolved  number of vertices for which they mean nothing
/// @return whether there is anything to be extracted; otherwise the error says what is wrong
bool sculptExtractDeltaMesh::readCorrective(MFloatPointArray& points, unsigned int& unsolved,
                                            MString& error) const {
    ProbedDeformation deformation;
    MFloatPointArray sculpt;
    if (!readMeshPoints(deformed_, deformation.deformed, error) || !readMeshPoints(sculpt_, sculpt, error) ||
        !readMeshPoints(intermediate_, points, error)) {
        return false;
    }
    if (deformation.deformed.length() != points.length()) {
        error = "No shape extracted. The intermediate shape has a different vertex count.";
        return false;
    }
    if (compares_ && areEqual(deformation.deformed, sculpt)) {
        error = "No shape extracted. Both meshes are identical.";
        return false;
    }
    if (!probe(points, deformation, error)) return false;
    unsolved = solveCorrective(deformation, sculpt, points);
    return true;
}

/// Reads what becomes of the deformed mesh when the intermediate shape moves by one unit along each axis.
bool sculptExtractDeltaMesh::probe(const MFloatPointArray& rest, ProbedDeformation& deformation,
                                   MString& error) const {
    MFnMesh intermediate(intermediate_.path());
    MFloatPointArray moved(rest);
    bool isRead = true;
    for (unsigned int axis = 0; axis < 3 && isRead; ++axis) {
        for (unsigned int vertex = 0; vertex < moved.length(); ++vertex)
            moved[vertex][axis] += 1.0F;
        // A shape that does not take the points leaves no step, and so a deformation without inverse.
        intermediate.setPoints(moved, MSpace::kObject);
        isRead = readMeshPoints(deformed_, deformation.moved[axis], error);
        for (unsigned int vertex = 0; vertex < moved.length(); ++vertex)
            moved[vertex][axis] = rest[vertex][axis];
    }
    intermediate.setPoints(moved, MSpace::kObject);
    return isRead;
}

/// Makes the new mesh, shaded and named like an object that the user made.
MStatus sculptExtractDeltaMesh::create(MFloatPointArray& points) {
    MStatus status;
    MFnMesh mesh;
    const MObject created = mesh.copy(intermediate_.path().node(), MObject::kNullObj, &status);
    if (!status) return status;
    created_ = created;
    mesh.setPoints(points, MSpace::kObject);
    MFnDagNode transform(created);
    MGlobal::executeCommand("sets -e -forceElement initialShadingGroup " + transform.fullPathName(), false,
                            false);
    MDagPath sculpted = sculpt_.path();
    sculpted.pop();
    transform.setName(MFnDagNode(sculpted).name() + "_corrective");
    setResult(transform.name());
    return MS::kSuccess;
}

MStatus sculptExtractDeltaMesh::undoIt() {
    MObject created = aliveObject(created_);
    // The user may have deleted the mesh by hand.
    if (!created.isNull()) MGlobal::deleteNode(created);
    created_ = MObjectHandle();
    return MS::kSuccess;
}

bool sculptExtractDeltaMesh::isUndoable() const {
    return true;
}
