#include "symmetry/symmetryEdgeStart.h"

#include <maya/MGlobal.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MVector.h>

#include <cmath>
#include <cstddef>

namespace {

/// The side of an edge, seen from the plane, on which the chosen face lies.
enum class Side { kUnknown, kNearer, kFarther };

/// The places by which a face of an edge is chosen.
struct EdgePlaces {
    MPoint edge;
    std::array<MPoint, 2> faces;  // centres
};

EdgePlaces placesOf(const MDagPath& mesh, int edge, const IndexRange& faces) {
    EdgePlaces places;
    int previous = 0;
    MItMeshEdge edgeIterator(mesh);
    edgeIterator.setIndex(edge, previous);
    places.edge = edgeIterator.center(MSpace::kObject);
    MItMeshPolygon faceIterator(mesh);
    for (int k = 0; k < 2; ++k) {
        faceIterator.setIndex(faces[k], previous);
        places.faces[static_cast<std::size_t>(k)] = faceIterator.center(MSpace::kObject);
    }
    return places;
}

/// Distances from the plane.
struct Depths {
    Depths(const EdgePlaces& places, unsigned int axis)
        : edge(std::abs(places.edge[axis])),
          face0(std::abs(places.faces[0][axis])),
          face1(std::abs(places.faces[1][axis])) {}

    bool areFacesOnOneSide() const {
        return (face0 > edge && face1 > edge) || (face0 < edge && face1 < edge);
    }

    double edge, face0, face1;
};

/// The axis along which two points differ most; z if two axes are equal.
unsigned int dominantAxis(const MPoint& a, const MPoint& b) {
    const MVector direction = (a - b).normal();
    const double x = std::abs(direction.x);
    const double y = std::abs(direction.y);
    const double z = std::abs(direction.z);
    if (x > y && x > z) return 0;
    return y > x && y > z ? 1 : 2;
}

/// Chooses one of the first two faces of an edge. For the first edge it is the first face, and `side` is set
/// to its side. For the second edge it is the face on that side.
/// @return the face, -1 if there is no clear choice
int chooseFace(const SymmetryMesh& mesh, int edge, Side& side) {
    const IndexRange faces = mesh.facesOf(edge);
    if (faces.size() < 2) return -1;
    const EdgePlaces places = placesOf(mesh.path(), edge, faces);
    Depths depths(places, static_cast<unsigned int>(mesh.axis()));
    if (depths.areFacesOnOneSide()) depths = Depths(places, dominantAxis(places.faces[0], places.faces[1]));
    if (depths.face0 == depths.edge) return -1;
    const Side found = depths.face0 > depths.edge ? Side::kFarther : Side::kNearer;
    if (side == Side::kUnknown) side = found;
    return faces[side == found ? 0 : 1];
}

/// Sets the vertices of a start whose faces are known, so that the two passes turn in opposite directions.
bool orient(const SymmetryMesh& mesh, const EdgeEnds& first, const EdgeEnds& second, SymmetryStart& start) {
    const int orientationA = orientationInFace(mesh.topology().faceVertices(start.faceA), first);
    const int orientationB = orientationInFace(mesh.topology().faceVertices(start.faceB), second);
    if (orientationA == 0 || orientationB == 0) return false;
    const bool isReversed = orientationA == orientationB;
    start.vertexA = first[0];
    start.vertexB = first[1];
    start.vertexA2 = second[isReversed ? 1 : 0];
    start.vertexB2 = second[isReversed ? 0 : 1];
    return true;
}

}  // namespace

MStatus centreEdgeStart(const MDagPath& mesh, int edge, SymmetryStart& start) {
    const MStatus status = edgeFaces(mesh, edge, start.faceA, start.faceB);
    if (!status) return status;
    int previous = 0;
    MItMeshEdge iterator(mesh);
    iterator.setIndex(edge, previous);
    start.vertexA = iterator.index(0);
    start.vertexB = iterator.index(1);
    return status;
}

MStatus addEdgePairStart(SymmetryMesh& mesh, const std::array<int, 2>& edges, const SymmetryOptions& options,
                         std::vector<SymmetryStart>& starts, bool& hasErrors) {
    SymmetryStart start;
    Side side = Side::kUnknown;
    start.faceA = chooseFace(mesh, edges[0], side);
    start.faceB = chooseFace(mesh, edges[1], side);
    const IndexRange facesOfFirst = mesh.facesOf(edges[0]);
    if (facesOfFirst.size() > 0) start.shellFaces = mesh.shells().faceCountAt(facesOfFirst[0]);
    if (start.faceA != -1 && start.faceB != -1 &&
        orient(mesh, mesh.topology().ends(edges[0]), mesh.topology().ends(edges[1]), start)) {
        if (options.selectsComponents) {
            selectComponents(mesh.path(), {start.faceA, start.faceB}, {start.vertexA, start.vertexA2});
        }
        starts.push_back(start);
        return MS::kSuccess;
    }
    if (facesOfFirst.size() == 0 && mesh.facesOf(edges[1]).size() == 0) {
        MGlobal::displayError("The edge is not connected to any faces.");
        return MS::kFailure;
    }
    if (options.verbose != 0) {
        MGlobal::displayInfo("Unable to find all necessary symmetry components for a shell pair.");
        MGlobal::displayInfo("Use the following command to indicate the affected shell:");
        if (facesOfFirst.size() > 0) mesh.showShellCommands({facesOfFirst[0]});
    }
    hasErrors = true;
    starts.push_back(start);
    return MS::kSuccess;
}

int orientationInFace(IndexRange vertices, const EdgeEnds& ends) {
    const int size = vertices.size();
    for (int k = 0; k < size; ++k) {
        const int next = vertices[k + 1 < size ? k + 1 : 0];
        if (vertices[k] == ends[0] && next == ends[1]) return 1;
        if (vertices[k] == ends[1] && next == ends[0]) return -1;
    }
    return 0;
}
