#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>

#include <cstddef>
#include <vector>

#include "meshTopology.h"
#include "symmetryShells.h"

/// Finds the face of a mesh that is closest to a point, for points that are expected near a certain shell.
///
/// The host's structure for such questions is dear to build. So a question is answered without it as long as
/// few faces come into consideration; once these answers have cost about as much, the structure is built,
/// once, for all that follow. The answers are the same either way: those of the host for the whole mesh.
class ClosestFaceSearch {
  public:
    /// All arguments must outlive the search.
    /// @param boxes  per shell a box that holds it
    ClosestFaceSearch(const MDagPath& mesh, const MeshTopology& topology, const Shells& shells,
                      const MFloatPointArray& points, std::vector<ShellBox> boxes);

    /// @param shell  where the closest face probably is; any other one only costs time
    /// @return a failure when the host's structure cannot be built or finds nothing
    MStatus find(const MPoint& point, int shell, int& face);

  private:
    double squaredDistanceToShell(const MPoint& point, int shell) const;
    void gatherFacesWithin(const MPoint& point, double squaredDistance);
    ShellBox boxOf(int face) const;
    bool areAllCornered(const MPoint& point) const;
    bool hasCorner(int face, const MPoint& point) const;
    MStatus findAmongNear(const MPoint& point, int& face) const;
    MStatus findInMesh(const MPoint& point, int& face);

    const MDagPath& mesh_;
    const MeshTopology& topology_;
    const Shells& shells_;
    const MFloatPointArray& points_;
    BoxIndex boxes_;
    std::vector<int> near_;  // the faces that the question at hand is about, ascending
    std::size_t work_ = 0;   // faces that were looked at so far
    MMeshIntersector intersector_;
};
