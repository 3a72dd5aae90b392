#include "polySymmetry.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshVertex.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <cstddef>

#include "commandSupport.h"
#include "mirroredMesh.h"
#include "symmetryMesh.h"
#include "symmetryPlane.h"
#include "vertexOrderMap.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        polySymmetry::kName,
        "Checks for mesh symmetry. Returns 1 if the mesh is symmetrical.",
        {{"-atm", "-addToMap", MSyntax::kNoArg, "add the symmetry ids to the vertex order map"},
         {"-aom", "-applyOrderMap", MSyntax::kString, "name of the mesh with the symmetry map"},
         {"-ax", "-axis", MSyntax::kString, "symmetry axis (optional, default: x)"},
         {"-dir", "-direction", MSyntax::kBoolean, "direction (optional, default: 1; positive to negative)"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.001)"}},
        "dv_polySymmetry -a <int> -ax <string> -dir <int> -tol <float> polyName",
        "int"};
    return command;
}

/// The option variable in which the mirror tools look for the tolerance to suggest.
constexpr const char* kToleranceVariable = "DELVENMirrorToleranceValue";

/// The name and the line that a failing undo is reported with; users look for them in their logs.
constexpr const char* kReportFile = "polySymmetry";
constexpr int kUndoLine = 683;

/// The result where the stored map does not fit the mesh.
constexpr int kUnusableMap = -1;

MStatus fail(const MString& text, const MStatus& status = MS::kFailure) {
    return reportError(text, ErrorResult::kNothing, ErrorSink::kCommand, status);
}

/// Gives the points on the target side the place that their partners' mirror images have. Partners
/// that have moved already count where they are now.
void mirrorByMap(const MIntArray& map, int axis, int targetSide, MFloatPointArray& points) {
    const auto coordinate = static_cast<unsigned int>(axis);
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex) {
        const auto partner = static_cast<unsigned int>(map[vertex]);
        // Also for kUnmapped and whatever else is no vertex.
        if (partner >= points.length()) continue;
        if (planeSide(points[vertex][coordinate]) != targetSide) continue;
        points[vertex] = points[partner];
        points[vertex][coordinate] *= -1.0F;
    }
}

}  // namespace

void* polySymmetry::creator() {
    return new polySymmetry();
}

MSyntax polySymmetry::newSyntax() {
    return makeSyntax(info());
}

MStatus polySymmetry::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    addsToMap_ = database.isFlagSet("-atm");
    appliesMap_ = database.isFlagSet("-aom");
    MString sourceName;
    readFlag(database, "-aom", sourceName);
    readFlag(database, "-ax", axis_);
    readFlag(database, "-dir", isPositiveSource_);
    readFlag(database, "-tol", tolerance_);
    MSelectionList objects;
    MStatus status = database.getObjects(objects);
    if (status && sourceName.length() > 0) status = objects.add(sourceName);
    if (!status) return fail("Error getting objects", status);
    if (objects.isEmpty()) return fail("No mesh provided.");
    status = readObjects(objects);
    if (!status) return status;
    if (!isAxisText(axis_)) return fail(kAxisError);
    isChecked_ = true;
    return redoIt();
}

/// The first object is the mesh; of the others, which must be meshes too, the last is where a map
/// comes from.
MStatus polySymmetry::readObjects(const MSelectionList& objects) {
    for (unsigned int k = 0; k < objects.length(); ++k) {
        MDagPath path;
        MString error;
        if (!readMeshItem(objects, k, path, error)) return fail(error);
        (k == 0 ? mesh_ : mapSource_) = MeshObject(path);
    }
    readComponent(objects);
    return MS::kSuccess;
}

/// Only the first element matters: it stands for its shell.
void polySymmetry::readComponent(const MSelectionList& objects) {
    MDagPath path;
    MObject component;
    objects.getDagPath(0, path, component);
    for (const MFn::Type type :
         {MFn::kMeshVertComponent, MFn::kMeshEdgeComponent, MFn::kMeshPolygonComponent}) {
        if (!component.hasFn(type)) continue;
        componentType_ = type;
        firstElement_ = MFnSingleIndexedComponent(component).element(0);
    }
}

MStatus polySymmetry::redoIt() {
    // A call that answered -help may still be queued.
    if (!isChecked_) return MS::kSuccess;
    if (!mesh_.isAlive()) return fail("No mesh provided.");
    MFnMesh(mesh_.path()).getPoints(savedPoints_, MSpace::kObject);
    return appliesMap_ ? applyMap() : check();
}

MStatus polySymmetry::applyMap() {
    if (!mapSource_.isAlive()) return fail(kMapError);
    MFloatPointArray points(savedPoints_);
    MIntArray map;
    MString error;
    if (!readUsableVertexOrderMap(mapSource_.path(), points.length(), map, error)) return fail(error);
    mirrorByMap(map, axisIndex(axis_), targetSide(), points);
    const MStatus status = MFnMesh(mesh_.path()).setPoints(points, MSpace::kObject);
    if (status) setResult(1);
    return status;
}

MStatus polySymmetry::check() {
    SymmetryFindings findings;
    const MStatus status = findPartners(restrictedVertices(), findings);
    if (!status) return status;
    setResult(findings.asymmetric.empty() ? 1 : 0);
    if (!addsToMap_) showFindings(findings.asymmetric);
    MGlobal::setOptionVarValue(kToleranceVariable, findings.neighbourDistance / 10.0);
    return MS::kSuccess;
}

/// The vertices of the shell that the user pointed at, ascending; empty when the check is for all.
std::vector<int> polySymmetry::restrictedVertices() const {
    std::vector<int> vertices;
    const int face = firstFace();
    if (face < 0) return vertices;
    MString command("polySelect -noSelection -ets ");
    command += face;
    MIntArray faces;
    MGlobal::executeCommand(command + " " + mesh_.path().fullPathName(), faces, false, false);
    const MFnMesh mesh(mesh_.path());
    std::vector<char> isInShell(static_cast<std::size_t>(mesh.numVertices()), 0);
    MIntArray corners;
    for (unsigned int k = 0; k < faces.length(); ++k) {
        mesh.getPolygonVertices(faces[k], corners);
        for (unsigned int corner = 0; corner < corners.length(); ++corner)
            isInShell[static_cast<std::size_t>(corners[corner])] = 1;
    }
    for (std::size_t vertex = 0; vertex < isInShell.size(); ++vertex) {
        if (isInShell[vertex] != 0) vertices.push_back(static_cast<int>(vertex));
    }
    return vertices;
}

/// A face at the element that the user named first; -1 where there is none.
int polySymmetry::firstFace() const {
    MIntArray faces;
    int previous = 0;
    if (componentType_ == MFn::kMeshPolygonComponent) return firstElement_;
    if (componentType_ == MFn::kMeshVertComponent) {
        MItMeshVertex vertex(mesh_.path());
        if (vertex.setIndex(firstElement_, previous)) vertex.getConnectedFaces(faces);
    }
    if (componentType_ == MFn::kMeshEdgeComponent) {
        MItMeshEdge edge(mesh_.path());
        if (edge.setIndex(firstElement_, previous)) edge.getConnectedFaces(faces);
    }
    return faces.length() > 0 ? faces[0] : -1;
}

/// Looks every vertex up on a mirrored copy of the mesh, which is gone afterwards, and writes the
/// map where that was asked for.
MStatus polySymmetry::findPartners(const std::vector<int>& restricted, SymmetryFindings& findings) const {
    MirroredMesh image(mesh_.path(), axisIndex(axis_), tolerance_);
    if (!image.create()) {
        // Deliberate: scripts expect the copy that could not be searched to stay.
        image.leaveInScene();
        return fail("Failed to create intersector.");
    }
    std::vector<int> map;
    const MStatus status = readMap(restricted, map);
    if (!status) return status;
    findings = checkPositions(image, targetSide(), restricted, map);
    return addsToMap_ ? writeVertexOrderMap(mesh_.path(),
                                            MIntArray(map.data(), static_cast<unsigned int>(map.size())))
                      : MStatus(MS::kSuccess);
}

/// The map that partners are entered in: the stored one, if it is to be extended, without the
/// vertices that the check is restricted to.
MStatus polySymmetry::readMap(const std::vector<int>& restricted, std::vector<int>& map) const {
    map.assign(static_cast<std::size_t>(MFnMesh(mesh_.path()).numVertices()), kUnmapped);
    MPlug plug;
    if (!addsToMap_ || !findVertexOrderMap(mesh_.path(), plug)) return MS::kSuccess;
    const MIntArray stored = readVertexOrderMap(plug);
    if (stored.length() != map.size()) {
        setResult(kUnusableMap);
        return fail("Unable to extend the order mapping because the vertex count has changed.");
    }
    if (!map.empty()) stored.get(map.data());
    for (const int vertex : restricted)
        map[static_cast<std::size_t>(vertex)] = kUnmapped;
    return MS::kSuccess;
}

void polySymmetry::showFindings(const std::vector<int>& asymmetric) const {
    if (asymmetric.empty()) {
        MGlobal::displayInfo("The mesh is symmetrical");
        return;
    }
    selectComponents(mesh_.path(), {}, asymmetric);
    MString text("Asymmetrical vertices found: ");
    text += static_cast<unsigned int>(asymmetric.size());
    MGlobal::displayInfo(text);
}

MStatus polySymmetry::undoIt() {
    // A call that answered -help may still be queued.
    if (!isChecked_) return MS::kSuccess;
    MStatus status(MS::kFailure);
    if (mesh_.isAlive()) status = MFnMesh(mesh_.path()).setPoints(savedPoints_, MSpace::kObject);
    if (!status) status.pAPIerror(kReportFile, kUndoLine);
    return status;
}

bool polySymmetry::isUndoable() const {
    return true;
}
