#include "symmetry/symmetryMesh.h"

#include <maya/MFn.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

#include <cstddef>
#include <utility>

#include "symmetry/symmetryPlane.h"

namespace {

void append(IndexLists& lists, const MIntArray& list) {
    const unsigned int length = list.length();
    for (unsigned int k = 0; k < length; ++k) {
        // A named value is appended in place, a temporary by a call.
        const int value = list[k];
        lists.values.push_back(value);
    }
    lists.endList();
}

void reserve(IndexLists& lists, int count, int values) {
    lists.offsets.reserve(static_cast<std::size_t>(count) + 1);
    lists.values.reserve(static_cast<std::size_t>(values));
}

MFloatPointArray objectPoints(const MDagPath& mesh) {
    MFloatPointArray points;
    MFnMesh(mesh).getPoints(points, MSpace::kObject);
    return points;
}

/// Adds components of one type to a selection.
void addComponents(MSelectionList& list, const MDagPath& mesh, MFn::Type type,
                   const std::vector<int>& indices) {
    MIntArray elements;
    for (const int index : indices) {
        if (index >= 0) elements.append(index);
    }
    if (elements.length() == 0) return;
    MFnSingleIndexedComponent component;
    const MObject object = component.create(type);
    component.addElements(elements);
    list.add(mesh, object);
}

}  // namespace

IndexLists gatherCorners(const MDagPath& mesh) {
    MIntArray counts;
    MIntArray corners;
    MFnMesh(mesh).getVertices(counts, corners);
    IndexLists lists;
    lists.values.resize(corners.length());
    if (!lists.values.empty()) corners.get(lists.values.data());
    lists.offsets.reserve(counts.length() + std::size_t{1});
    for (unsigned int face = 0; face < counts.length(); ++face)
        lists.offsets.push_back(lists.offsets.back() + counts[face]);
    return lists;
}

MeshTopology gatherTopology(const MDagPath& mesh) {
    const MFnMesh counts(mesh);
    const int faceCount = counts.numPolygons();
    const int edgeCount = counts.numEdges();
    const int cornerCount = counts.numFaceVertices();
    MeshConnectivity gathered;
    gathered.vertexCount = counts.numVertices();
    gathered.faceVertices = gatherCorners(mesh);
    reserve(gathered.faceEdges, faceCount, cornerCount);
    gathered.ends.reserve(static_cast<std::size_t>(edgeCount));
    reserve(gathered.edgeFaces, edgeCount, cornerCount);
    MIntArray list;
    // On some hosts an iterator over a mesh without faces or edges is not valid.
    if (faceCount > 0) {
        MItMeshPolygon face(mesh);
        for (int k = 0; k < faceCount; ++k, face.next()) {
            face.getEdges(list);
            append(gathered.faceEdges, list);
        }
    }
    if (edgeCount > 0) {
        MItMeshEdge edge(mesh);
        for (int k = 0; k < edgeCount; ++k, edge.next()) {
            gathered.ends.push_back({edge.index(0), edge.index(1)});
            edge.getConnectedFaces(list);
            append(gathered.edgeFaces, list);
        }
    }
    return MeshTopology(std::move(gathered));
}

void selectComponents(const MDagPath& mesh, const std::vector<int>& faces, const std::vector<int>& vertices) {
    MSelectionList list;
    addComponents(list, mesh, MFn::kMeshPolygonComponent, faces);
    addComponents(list, mesh, MFn::kMeshVertComponent, vertices);
    MGlobal::setActiveSelectionList(list);
}

SymmetryMesh::SymmetryMesh(const MDagPath& mesh, int axis, double tolerance)
    : path_(mesh),
      axis_(axis),
      tolerance_(tolerance),
      topology_(gatherTopology(mesh)),
      shells_(findShells(topology_)),
      points_(objectPoints(mesh)),
      vertices_(mesh) {
    if (tolerance_ == 0.0) tolerance_ = meanEdgeLength() / 100.0;
}

/// The mean of a sample, which is enough for a tolerance. 0 for a mesh without edges.
double SymmetryMesh::meanEdgeLength() const {
    constexpr int kStep = 5;
    const int edgeCount = topology_.edgeFaces().size();
    double sum = 0.0;
    for (int edge = 0; edge < edgeCount; edge += kStep)
        sum += point(topology_.ends(edge)[0]).distanceTo(point(topology_.ends(edge)[1]));
    const int sampleCount = (edgeCount - 1) / kStep + 1;
    return sum / sampleCount;
}

MPoint SymmetryMesh::mirrored(const MPoint& point) const {
    MPoint result(point);
    result[static_cast<unsigned int>(axis_)] *= -1.0;
    return result;
}

bool SymmetryMesh::isOnPlane(int vertex) const {
    return ::isOnPlane(point(vertex), static_cast<unsigned int>(axis_), tolerance_);
}

IndexRange SymmetryMesh::facesOf(int edge) const {
    const IndexLists& edgeFaces = topology_.edgeFaces();
    if (edge < 0 || edge >= edgeFaces.size()) return {nullptr, nullptr};
    return edgeFaces[edge];
}

MIntArray SymmetryMesh::neighbours(int vertex) {
    MIntArray result;
    int previous = 0;
    if (vertices_.setIndex(vertex, previous)) vertices_.getConnectedVertices(result);
    return result;
}

MIntArray SymmetryMesh::edgesAt(int vertex) {
    MIntArray result;
    int previous = 0;
    if (vertices_.setIndex(vertex, previous)) vertices_.getConnectedEdges(result);
    return result;
}

MStatus SymmetryMesh::findCentreNeighbour(int vertex, int& neighbour) {
    neighbour = -1;
    const MIntArray candidates = neighbours(vertex);
    if (candidates.length() == 0) {
        MGlobal::displayWarning("The shell vertex is not connected to any vertices.");
        return MS::kFailure;
    }
    for (unsigned int k = 0; k < candidates.length() && neighbour == -1; ++k) {
        if (isOnPlane(candidates[k])) neighbour = candidates[k];
    }
    return MS::kSuccess;
}

void SymmetryMesh::showShellCommands(const std::vector<int>& faces) const {
    for (const int face : faces) {
        MString text("polySelect -extendToShell ");
        text += face;
        MGlobal::displayInfo(text + " " + path_.partialPathName() + ";");
    }
}

MStatus edgeFaces(const MDagPath& mesh, int edge, int& face0, int& face1) {
    MIntArray faces;
    int previous = 0;
    MItMeshEdge iterator(mesh);
    if (iterator.setIndex(edge, previous)) iterator.getConnectedFaces(faces);
    if (faces.length() < 2) {
        MGlobal::displayWarning(faces.length() == 0 ? "The symmetry edge is not connected to any faces."
                                                    : "The symmetry edge must be connected to two faces.");
        return MS::kFailure;
    }
    face0 = faces[0];
    face1 = faces[1];
    return MS::kSuccess;
}
