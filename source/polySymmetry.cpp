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

#include "scene/arrayEquality.h"
#include "symmetry/symmetryMesh.h"
#include "symmetry/symmetryPlane.h"
#include "symmetry/vertexOrderMap.h"

namespace {

/// The option variable with the tolerance that the mirror tools suggest.
constexpr const char* kToleranceVariable = "DELVENMirrorToleranceValue";

/// The file name and line in the report of a failed undo. Deliberate: docs/compatibility.md.
constexpr const char* kReportFile = "polySymmetry";
constexpr int kUndoLine = 683;

CallOutcome fail(const MString& error, const MStatus& status = MS::kFailure) {
    return CallOutcome::failed(error, status, ErrorSink::kCommand);
}

/// Moves the points on the target side to the mirror images of their partners. If a partner has moved
/// already, its new place counts.
void mirrorByMap(const MIntArray& map, int axis, int targetSide, MFloatPointArray& points) {
    const auto coordinate = static_cast<unsigned int>(axis);
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex) {
        const auto partner = static_cast<unsigned int>(map[vertex]);
        // Skips kUnmapped and any other number that is no vertex.
        if (partner >= points.length()) continue;
        if (planeSide(points[vertex][coordinate]) != targetSide) continue;
        points[vertex] = points[partner];
        points[vertex][coordinate] *= -1.0F;
    }
}

}  // namespace

const CommandInfo& polySymmetry::info() {
    static const CommandInfo description{
        kName,
        "Checks for mesh symmetry. Returns 1 if the mesh is symmetrical.",
        {{"-atm", "-addToMap", MSyntax::kNoArg, "add the symmetry ids to the vertex order map"},
         {"-aom", "-applyOrderMap", MSyntax::kString, "name of the mesh with the symmetry map"},
         {"-ax", "-axis", MSyntax::kString, "symmetry axis (optional, default: x)"},
         {"-dir", "-direction", MSyntax::kBoolean, "direction (optional, default: 1; positive to negative)"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.001)"}},
        "dv_polySymmetry -a <int> -ax <string> -dir <int> -tol <float> polyName",
        "int",
        true};
    return description;
}

CallOutcome polySymmetry::read(const MArgDatabase& arguments) {
    addsToMap_ = arguments.isFlagSet("-atm");
    appliesMap_ = arguments.isFlagSet("-aom");
    MString sourceName;
    readFlag(arguments, "-aom", sourceName);
    readFlag(arguments, "-ax", axis_);
    readFlag(arguments, "-dir", isPositiveSource_);
    readFlag(arguments, "-tol", tolerance_);
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return fail("Error getting objects", status);
    if (sourceName.length() > 0 && !objects.add(sourceName)) {
        return fail("The -applyOrderMap flag names " + sourceName + ", which matches no node, or several.");
    }
    if (objects.isEmpty()) return fail("No mesh provided.");
    CallOutcome outcome = readObjects(objects);
    return outcome.isDone() && !isAxisText(axis_) ? fail(kAxisError) : outcome;
}

/// The first object is the mesh. The last of the others is the source of the map. All objects must be meshes.
CallOutcome polySymmetry::readObjects(const MSelectionList& objects) {
    for (unsigned int k = 0; k < objects.length(); ++k) {
        MDagPath path;
        MString error;
        if (!readMeshItem(objects, k, path, error)) return fail(error);
        (k == 0 ? mesh_ : mapSource_) = MeshObject(path);
    }
    readComponent(objects);
    return CallOutcome();
}

/// Only the first element matters: it names a shell.
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

CallOutcome polySymmetry::edit() {
    if (!mesh_.isAlive()) return fail("No mesh provided.");
    MString error;
    if (!readMeshPoints(mesh_, savedPoints_, error)) return fail(error);
    hasSavedPoints_ = true;
    return appliesMap_ ? applyMap() : check();
}

CallOutcome polySymmetry::applyMap() {
    if (!mapSource_.isAlive()) return fail(kMapError);
    MFloatPointArray points(savedPoints_);
    MIntArray map;
    MString error;
    if (!readUsableVertexOrderMap(mapSource_.path(), points.length(), map, error)) return fail(error);
    mirrorByMap(map, axisIndex(axis_), targetSide(), points);
    const MStatus status = MFnMesh(mesh_.path()).setPoints(points, MSpace::kObject);
    if (!status) return CallOutcome::failed("", status);
    setResult(1);
    return CallOutcome();
}

CallOutcome polySymmetry::check() {
    SymmetryFindings findings;
    CallOutcome outcome = findPartners(restrictedVertices(), findings);
    if (!outcome.isDone()) return outcome;
    setResult(findings.asymmetric.empty() ? 1 : 0);
    if (!addsToMap_) showFindings(findings.asymmetric);
    MGlobal::setOptionVarValue(kToleranceVariable, findings.neighbourDistance / 10.0);
    return outcome;
}

/// The vertices of the shell that the user selected, ascending. Empty if the whole mesh is to be checked.
std::vector<int> polySymmetry::restrictedVertices() const {
    std::vector<int> vertices;
    const int face = firstFace();
    if (face < 0) return vertices;
    MString text("polySelect -noSelection -ets ");
    text += face;
    MIntArray faces;
    MGlobal::executeCommand(text + " " + mesh_.path().fullPathName(), faces, false, false);
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

/// A face at the first selected element, -1 if there is none.
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

/// Searches for partners, and writes the map if asked to.
CallOutcome polySymmetry::findPartners(const std::vector<int>& restricted, SymmetryFindings& findings) const {
    PositionPartners search(mesh_.path(), axisIndex(axis_), tolerance_);
    if (!checkPositions(search, targetSide(), restricted, findings)) {
        // Deliberate: docs/compatibility.md.
        search.leaveCopyInScene();
        return fail("Failed to create intersector.");
    }
    std::vector<int> map;
    CallOutcome outcome = readMap(restricted, map);
    if (!outcome.isDone()) return outcome;
    enterPartners(findings, map);
    if (!addsToMap_) return outcome;
    const MStatus status =
        writeVertexOrderMap(mesh_.path(), MIntArray(map.data(), static_cast<unsigned int>(map.size())));
    return status ? outcome : CallOutcome::failed("", status);
}

/// The map to enter partners in. It is empty, or the stored map if that is to be extended; then the vertices
/// of a restricted check are unmapped first.
CallOutcome polySymmetry::readMap(const std::vector<int>& restricted, std::vector<int>& map) const {
    map.assign(static_cast<std::size_t>(MFnMesh(mesh_.path()).numVertices()), kUnmapped);
    MPlug plug;
    if (!addsToMap_ || !findVertexOrderMap(mesh_.path(), plug)) return CallOutcome();
    const MIntArray stored = readVertexOrderMap(plug);
    if (stored.length() != map.size()) {
        return fail("Unable to extend the order mapping because the vertex count has changed.")
            .withResult(ErrorResult::kMinusOne);
    }
    if (!map.empty()) stored.get(map.data());
    for (const int vertex : restricted)
        map[static_cast<std::size_t>(vertex)] = kUnmapped;
    return CallOutcome();
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

CallOutcome polySymmetry::restore() {
    if (!hasSavedPoints_) return CallOutcome();
    hasSavedPoints_ = false;
    MStatus status(MS::kFailure);
    if (mesh_.isAlive()) {
        MFloatPointArray points;
        MFnMesh mesh(mesh_.path());
        mesh.getPoints(points, MSpace::kObject);
        // Points that have not changed are not set: setting them would bake tweaks into them.
        if (areEqual(points, savedPoints_)) return CallOutcome();
        status = mesh.setPoints(savedPoints_, MSpace::kObject);
    }
    if (status) return CallOutcome();
    status.pAPIerror(kReportFile, kUndoLine);
    return CallOutcome::failed("", status);
}
