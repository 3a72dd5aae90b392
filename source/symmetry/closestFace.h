#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>

#include <cstddef>
#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/symmetryShells.h"

/// Finds the face of a mesh that is closest to a point; of equally close ones the lowest.
///
/// The host's structure for such questions takes longer to build than all else that maps a mesh. A point that
/// is a corner of the faces around it, as the mirror image of a corner of a symmetric mesh is, needs none:
/// all of them are at distance 0. The structure is built, once, for the first point of another kind, and when
/// these answers have cost as much as building it.
class ClosestFaceSearch {
  public:
    /// All arguments must outlive the search.
    /// @param boxes  per shell a box that holds it, without coordinates that are no numbers
    ClosestFaceSearch(const MDagPath& mesh, const MeshTopology& topology, const Shells& shells,
                      const MFloatPointArray& points, std::vector<ShellBox> boxes);

    /// @return a failure when the host's structure cannot be built or finds nothing
    MStatus find(const MPoint& point, int& face);

  private:
    int findAtCorner(const ShellPoint& point);
    ShellPoint place(int vertex) const;
    ShellBox boxOf(int face) const;
    bool hasCorner(int face, const ShellPoint& point) const;

    const MDagPath& mesh_;
    const MeshTopology& topology_;
    const Shells& shells_;
    const MFloatPointArray& points_;
    BoxIndex boxes_;
    std::size_t work_ = 0;  // faces that were looked at so far
    MMeshIntersector intersector_;
};
