#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

#include "symmetry/meshTopology.h"

/// Reads the corners of all faces from the host, face by face.
IndexLists gatherCorners(const MDagPath& mesh);

/// Reads the connectivity of a mesh from the host. Linear cost.
MeshTopology gatherTopology(const MDagPath& mesh);

/// Selects faces and vertices of a mesh, and nothing else. Numbers below 0 are left out.
void selectComponents(const MDagPath& mesh, const std::vector<int>& faces, const std::vector<int>& vertices);

/// A mesh as the search for its symmetry needs it: a copy of its connectivity and points, and a few queries
/// to the host.
///
/// The symmetry plane is where the coordinate of the axis is 0, in object space. Main thread only, but
/// topology() and shells() may be read on any thread. The constructor gathers everything once.
class SymmetryMesh {
  public:
    /// @param mesh       path of a mesh shape
    /// @param axis       0, 1 or 2
    /// @param tolerance  distance up to which two points count as equal, in object space; 0 means a hundredth
    ///                   of the mean length of every fifth edge
    SymmetryMesh(const MDagPath& mesh, int axis, double tolerance);

    const MDagPath& path() const { return path_; }
    int axis() const { return axis_; }
    /// The tolerance in use.
    double tolerance() const { return tolerance_; }
    const MeshTopology& topology() const { return topology_; }
    const Shells& shells() const { return shells_; }

    const MFloatPointArray& points() const { return points_; }
    MPoint point(int vertex) const { return MPoint(points_[static_cast<unsigned int>(vertex)]); }
    MPoint mirrored(const MPoint& point) const;
    bool isOnPlane(int vertex) const;
    bool areEquivalent(const MPoint& a, const MPoint& b) const { return a.isEquivalent(b, tolerance_); }

    /// The faces of an edge; empty for an edge that does not exist.
    IndexRange facesOf(int edge) const;

    /// The vertices that an edge connects to a vertex, and these edges. Both in the host's order.
    MIntArray neighbours(int vertex);
    MIntArray edgesAt(int vertex);

    /// The first neighbour on the plane, -1 if there is none.
    /// @return a failure, after a warning, for a vertex without neighbours
    MStatus findCentreNeighbour(int vertex, int& neighbour);

    /// Shows one line per face: a command that selects the shell of that face.
    void showShellCommands(const std::vector<int>& faces) const;

  private:
    double meanEdgeLength() const;

    MDagPath path_;
    int axis_;
    double tolerance_;
    MeshTopology topology_;
    Shells shells_;
    MFloatPointArray points_;
    MItMeshVertex vertices_;
};

/// The first two faces of an edge, in the host's order.
/// @param edge  need not exist
/// @return a failure, after a warning, for an edge with fewer than two faces
MStatus edgeFaces(const MDagPath& mesh, int edge, int& face0, int& face1);
