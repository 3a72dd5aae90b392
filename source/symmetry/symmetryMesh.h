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

/// Connectivity of a mesh, gathered face by face and edge by edge from the host. Linear cost.
MeshTopology gatherTopology(const MDagPath& mesh);

/// Makes faces and vertices of a mesh the active selection, in place of what was selected. Numbers below
/// 0 stand for nothing.
void selectComponents(const MDagPath& mesh, const std::vector<int>& faces, const std::vector<int>& vertices);

/// A mesh as the search for its symmetry sees it: a snapshot of its connectivity and points, and the few
/// questions that go to the host.
///
/// The symmetry plane is where the coordinate of the axis is 0, in object space. For the main thread;
/// topology() and shells() may be read anywhere. Making one gathers everything once; nothing is looked up
/// twice.
class SymmetryMesh {
  public:
    /// @param mesh       path of a mesh shape
    /// @param axis       0, 1 or 2
    /// @param tolerance  distance up to which two points count as one, in object space; 0 asks for a
    ///                   hundredth of the mean length of every fifth edge
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

    /// The faces of an edge; none for an edge that does not exist.
    IndexRange facesOf(int edge) const;

    /// Vertices that an edge joins to a vertex, and these edges, in the host's order.
    MIntArray neighbours(int vertex);
    MIntArray edgesAt(int vertex);

    /// The first neighbour that lies on the plane, -1 when none does.
    /// @return a failure, after a warning, for a vertex without neighbours
    MStatus findCentreNeighbour(int vertex, int& neighbour);

    /// Shows one line per face that a user can run to select the shell of that face.
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
/// @return a failure, after a warning, for an edge with fewer
MStatus edgeFaces(const MDagPath& mesh, int edge, int& face0, int& face1);
