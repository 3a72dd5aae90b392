#include "polyMapVertexOrder.h"

#include <maya/MArgDatabase.h>
#include <maya/MFn.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <cstddef>
#include <vector>

#include "scene/meshObject.h"
#include "symmetry/mirrorPasses.h"
#include "symmetry/symmetryEdgeStart.h"
#include "symmetry/symmetryMesh.h"
#include "symmetry/symmetryPlane.h"
#include "symmetry/vertexOrderMap.h"

namespace {

/// The file name and lines in reports of edges without two faces. Deliberate: docs/compatibility.md.
constexpr const char* kReportFile = "polyMapVertexOrder";
constexpr int kBuildLine = 342;
constexpr int kExtendLine = 385;

/// The result if there is no usable map, or if nothing could be mapped.
constexpr int kNoMap = -1;

CallOutcome fail(const MString& error, const MStatus& status = MS::kFailure) {
    return CallOutcome::failed(error, status, ErrorSink::kCommand);
}

}  // namespace

const CommandInfo& polyMapVertexOrder::info() {
    static const CommandInfo description{
        kName,
        "Creates a reversed vertex order and stores it on the given target mesh.",
        {{"-atm", "-addToMap", MSyntax::kNoArg, "add to the map based on two selected edges"},
         {"-a", "-axis", MSyntax::kString, "symmetry axis"},
         {"-ck", "-check", MSyntax::kNoArg,
          "check if all mapping indices are set; selects the symmetric components if vertices are selected"},
         {"-ct", "-copyTo", MSyntax::kString, "copy the vertex mapping to the given mesh"},
         {"-sl", "-select", MSyntax::kNoArg, "select all found components"},
         {"-sm", "-selectMapped", MSyntax::kNoArg, "select all mapped components"},
         {"-su", "-selectUnmapped", MSyntax::kNoArg, "select all unmapped components"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.0001)"},
         {"-v", "-verbose", MSyntax::kLong,
          "output info to the script editor (0: none, 1: simple, 2: full)"}},
        "dv_polyMapVertexOrder -a <string> -tol <float> polyName",
        "int"};
    return description;
}

CallOutcome polyMapVertexOrder::read(const MArgDatabase& arguments) {
    readFlags(arguments);
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return fail("Error getting objects", status);
    return objects.isEmpty() ? fail("No mesh provided.") : readMesh(objects);
}

void polyMapVertexOrder::readFlags(const MArgDatabase& arguments) {
    mode_ = readMode(arguments);
    addsToMap_ = arguments.isFlagSet("-atm");
    readFlag(arguments, "-a", axis_);
    readFlag(arguments, "-ct", copyTarget_);
    selectsFound_ = arguments.isFlagSet("-sl");
    readFlag(arguments, "-tol", tolerance_);
    readFlag(arguments, "-v", verbose_);
}

polyMapVertexOrder::Mode polyMapVertexOrder::readMode(const MArgDatabase& arguments) {
    if (arguments.isFlagSet("-ck")) return Mode::kCheck;
    if (arguments.isFlagSet("-sm")) return Mode::kSelectMapped;
    if (arguments.isFlagSet("-su")) return Mode::kSelectUnmapped;
    if (arguments.isFlagSet("-ct")) return Mode::kCopy;
    return arguments.isFlagSet("-atm") ? Mode::kExtend : Mode::kBuild;
}

/// Reads the mesh and its components from the first object. Further objects are ignored.
CallOutcome polyMapVertexOrder::readMesh(const MSelectionList& objects) {
    MString error;
    if (!readMeshItem(objects, 0, mesh_, error)) return fail(error);
    MDagPath path;
    MObject component;
    objects.getDagPath(0, path, component);
    readComponent(component);
    return CallOutcome();
}

void polyMapVertexOrder::readComponent(MObject& component) {
    areVerticesSelected_ = component.hasFn(MFn::kMeshVertComponent);
    if (areVerticesSelected_) MFnSingleIndexedComponent(component).getElements(selectedVertices_);
    if (component.hasFn(MFn::kMeshEdgeComponent)) {
        MFnSingleIndexedComponent(component).getElements(selectedEdges_);
    }
}

CallOutcome polyMapVertexOrder::edit() {
    std::vector<SymmetryStart> starts;
    CallOutcome outcome = startAtSelectedEdges(starts);
    if (!outcome.isDone()) return outcome;
    MPlug plug;
    const bool hasMap = findVertexOrderMap(mesh_, plug);
    const MIntArray map = hasMap ? readVertexOrderMap(plug) : MIntArray();
    const bool builds = mode_ == Mode::kExtend || mode_ == Mode::kBuild;
    return builds ? buildMap(starts, map) : query(hasMap, map);
}

/// A start for every selected edge; with -addToMap, only for a single edge. Deliberate: in every mode, even
/// if it does not use the starts (docs/compatibility.md).
CallOutcome polyMapVertexOrder::startAtSelectedEdges(std::vector<SymmetryStart>& starts) const {
    if (addsToMap_ && selectedEdges_.length() != 1) return CallOutcome();
    for (unsigned int k = 0; k < selectedEdges_.length(); ++k) {
        SymmetryStart start;
        const MStatus status = centreEdgeStart(mesh_, selectedEdges_[k], start);
        if (!status) {
            status.pAPIerror(kReportFile, addsToMap_ ? kExtendLine : kBuildLine);
            return CallOutcome::failed("", status);
        }
        starts.push_back(start);
    }
    return CallOutcome();
}

CallOutcome polyMapVertexOrder::query(bool hasMap, const MIntArray& map) {
    const bool isUsable =
        hasMap && map.length() > 0 && map.length() == static_cast<unsigned int>(MFnMesh(mesh_).numVertices());
    if (!isUsable) {
        setResult(kNoMap);
        return CallOutcome();
    }
    if (mode_ == Mode::kCopy) return copyMap(map);
    if (mode_ != Mode::kCheck || areVerticesSelected_) {
        select(map);
        return CallOutcome();
    }
    int unmapped = 0;
    for (unsigned int k = 0; k < map.length(); ++k)
        unmapped += map[k] == kUnmapped ? 1 : 0;
    setResult(unmapped);
    return CallOutcome();
}

/// The other mesh must be given by the name of its shape. Its vertex count does not matter.
CallOutcome polyMapVertexOrder::copyMap(const MIntArray& map) const {
    MSelectionList list;
    list.add(copyTarget_);
    MObject node;
    list.getDependNode(0, node);
    if (!node.hasFn(MFn::kMesh)) return fail(copyTarget_ + " is not a mesh object.");
    MDagPath target;
    list.getDagPath(0, target);
    const MStatus status = writeVertexOrderMap(target, map);
    if (!status) return CallOutcome::failed("", status);
    setResult(1);
    return CallOutcome();
}

/// Selects the selected vertices with their partners, or all mapped vertices, or all unmapped ones.
void polyMapVertexOrder::select(const MIntArray& map) const {
    std::vector<int> vertices;
    if (mode_ == Mode::kCheck) {
        for (unsigned int k = 0; k < selectedVertices_.length(); ++k) {
            const auto vertex = static_cast<unsigned int>(selectedVertices_[k]);
            // A selection can contain vertices that a mesh with history does not have any more.
            if (vertex >= map.length()) continue;
            vertices.push_back(selectedVertices_[k]);
            vertices.push_back(map[vertex]);
        }
    } else {
        for (unsigned int k = 0; k < map.length(); ++k) {
            if ((map[k] != kUnmapped) == (mode_ == Mode::kSelectMapped))
                vertices.push_back(static_cast<int>(k));
        }
    }
    selectComponents(mesh_, {}, vertices);
}

CallOutcome polyMapVertexOrder::buildMap(std::vector<SymmetryStart>& starts, const MIntArray& stored) {
    SymmetryMesh mesh(mesh_, axisIndex(axis_), tolerance_);
    bool hasErrors = false;
    MStatus status = findStarts(mesh, starts, hasErrors);
    if (!status) return CallOutcome::failed("", status);
    const auto vertexCount = static_cast<std::size_t>(mesh.topology().vertexCount());
    const bool extends = mode_ == Mode::kExtend;
    if (extends && stored.length() != vertexCount) {
        return fail("Unable to extend the order mapping because the vertex count has changed.")
            .withResult(ErrorResult::kMinusOne);
    }
    std::vector<int> map(vertexCount, kUnmapped);
    if (extends && vertexCount > 0) stored.get(map.data());
    int walkedCount = 0;
    status = walkStarts(mesh.topology(), starts, map, walkedCount);
    if (status) {
        status = writeVertexOrderMap(mesh_, MIntArray(map.data(), static_cast<unsigned int>(vertexCount)));
    }
    if (!status) return CallOutcome::failed("", status);
    setResult(extends || walkedCount > 0 ? 1 : kNoMap);
    if (hasErrors) showHowToGetDetails(mesh.tolerance());
    return CallOutcome();
}

MStatus polyMapVertexOrder::findStarts(SymmetryMesh& mesh, std::vector<SymmetryStart>& starts,
                                       bool& hasErrors) const {
    const SymmetryOptions options{verbose_, selectsFound_};
    if (mode_ == Mode::kBuild) {
        findSymmetryStarts(mesh, options, starts, hasErrors);
    } else if (selectedEdges_.length() == 2) {
        return addEdgePairStart(mesh, {selectedEdges_[0], selectedEdges_[1]}, options, starts, hasErrors);
    } else if (!starts.empty()) {
        starts[0].shellFaces = mesh.shells().faceCountAt(starts[0].faceA);
    }
    return MS::kSuccess;
}

void polyMapVertexOrder::showHowToGetDetails(double tolerance) const {
    MGlobal::displayInfo("One or more errors occurred while mapping the mesh.");
    MGlobal::displayInfo(
        "To receive more info on the failed components reload the unmapped mesh and run the following "
        "command:");
    MGlobal::displayInfo("dv_polyMapVertexOrder -axis " + axis_ + " -tolerance " + tolerance +
                         " -verbose 1;");
    MGlobal::displayInfo("For full details set the verbose flag to 2.");
    MGlobal::displayWarning("Not all vertices have been mapped. See script editor for details.");
}

/// Changes nothing. Returns a failure if there is no map.
CallOutcome polyMapVertexOrder::restore() {
    MPlug plug;
    const MStatus status = findVertexOrderMap(mesh_, plug);
    return status ? CallOutcome() : CallOutcome::failed("", status);
}
