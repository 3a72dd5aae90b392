#include "sculptExtractDeltaMesh.h"

#include <maya/MArgDatabase.h>
#include <maya/MFloatPoint.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <algorithm>

namespace {

/// Exactly equal, in the vertices that both have.
bool areEqual(const MFloatPointArray& left, const MFloatPointArray& right) {
    const unsigned int count = std::min(left.length(), right.length());
    for (unsigned int vertex = 0; vertex < count; ++vertex) {
        const MFloatPoint& a = left[vertex];
        const MFloatPoint& b = right[vertex];
        if (a.x != b.x || a.y != b.y || a.z != b.z) return false;
    }
    return true;
}

/// Restores the points of a mesh in its destructor.
class KeptPoints {
  public:
    KeptPoints(MFnMesh& mesh, const MFloatPointArray& points) : mesh_(mesh), points_(points) {}
    ~KeptPoints() {
        guardEntry("The points of the intermediate shape",
                   [this] { return mesh_.setPoints(points_, MSpace::kObject); });
    }
    KeptPoints(const KeptPoints&) = delete;
    KeptPoints& operator=(const KeptPoints&) = delete;

  private:
    MFnMesh& mesh_;
    MFloatPointArray points_;
};

}  // namespace

const CommandInfo& sculptExtractDeltaMesh::info() {
    static const CommandInfo description{
        kName,
        "Generates a delta mesh based on the given sculpt result and the intermediate shape node.",
        {{"-c", "-compare", MSyntax::kNoArg, "compares if both meshes are identical"},
         {"-m", "-mesh", MSyntax::kString, "mesh with skin cluster"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"}},
        "dv_sculptExtractDeltaMesh -m <string> -om <string>",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome sculptExtractDeltaMesh::read(const MArgDatabase& arguments) {
    MString meshName;
    MString originalName;
    compares_ = arguments.isFlagSet("-c");
    readFlag(arguments, "-m", meshName);
    readFlag(arguments, "-om", originalName);
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return CallOutcome::failed("Error getting objects", status);
    if (objects.isEmpty()) return CallOutcome::refused("No target mesh provided.");
    MString error;
    return readMeshes(objects, meshName, originalName, error) ? CallOutcome() : CallOutcome::refused(error);
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

CallOutcome sculptExtractDeltaMesh::edit() {
    MFloatPointArray points;
    CallOutcome outcome = extract(points);
    return outcome.isDone() ? create(points) : outcome;
}

CallOutcome sculptExtractDeltaMesh::redo() {
    MFloatPointArray points;
    CallOutcome outcome = extract(points);
    if (!outcome.isDone()) return outcome;
    if (!created_.bringBack()) return create(points);
    created_.setPoints(points);
    return outcome;
}

/// Makes the new mesh and names it after the sculpt.
CallOutcome sculptExtractDeltaMesh::create(MFloatPointArray& points) {
    MStatus status;
    MFnMesh mesh;
    const MObject created = mesh.copy(intermediate_.path().node(), MObject::kNullObj, &status);
    if (!status) return CallOutcome::failed("The intermediate shape cannot be copied.", status);
    mesh.setPoints(points, MSpace::kObject);
    created_.set(created);
    MDagPath sculpted = sculpt_.path();
    sculpted.pop();
    MFnDagNode transform(created);
    transform.setName(MFnDagNode(sculpted).name() + "_corrective");
    setResult(transform.name());
    return CallOutcome();
}

/// The points of the corrective shape. Shows a warning if some have no meaning.
CallOutcome sculptExtractDeltaMesh::extract(MFloatPointArray& points) const {
    if (!sculpt_.isAlive() || !deformed_.isAlive() || !intermediate_.isAlive()) {
        return CallOutcome::failed("One of the meshes is not in the scene any more.");
    }
    unsigned int unsolved = 0;
    MString error;
    if (!readCorrective(points, unsolved, error)) {
        return CallOutcome::refused(error).withResult(ErrorResult::kMinusOne);
    }
    if (unsolved > 0) {
        MGlobal::displayWarning(MString("The deformation has no inverse at ") + unsolved +
                                " of the sculpted vertices. Their corrective positions mean nothing.");
    }
    return CallOutcome();
}

/// @param points    the corrective points
/// @param unsolved  number of vertices whose corrective point has no meaning
/// @return false if nothing can be extracted; `error` then says why
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

/// Reads the deformed points after moving the intermediate shape by one unit along each axis.
bool sculptExtractDeltaMesh::probe(const MFloatPointArray& rest, ProbedDeformation& deformation,
                                   MString& error) const {
    MFnMesh intermediate(intermediate_.path());
    const KeptPoints kept(intermediate, rest);
    MFloatPointArray moved(rest);
    for (unsigned int axis = 0; axis < 3; ++axis) {
        for (unsigned int vertex = 0; vertex < moved.length(); ++vertex)
            moved[vertex][axis] += 1.0F;
        // If the shape refuses the points, nothing moves, and the deformation has no inverse.
        intermediate.setPoints(moved, MSpace::kObject);
        if (!readMeshPoints(deformed_, deformation.moved[axis], error)) return false;
        for (unsigned int vertex = 0; vertex < moved.length(); ++vertex)
            moved[vertex][axis] = rest[vertex][axis];
    }
    return true;
}

CallOutcome sculptExtractDeltaMesh::restore() {
    created_.remove();
    return CallOutcome();
}
