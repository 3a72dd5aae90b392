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

/// Finds the face of a mesh that is closest to a point. If several are equally close, it is the lowest.
///
/// The host's structure for such questions takes longer to build than all other work of mapping a mesh. A
/// point that is a corner of all faces around it does not need the structure, because all of them are at
/// distance 0; the mirror image of a corner of a symmetric mesh is such a point. The structure is built once:
/// at the first point of another kind, or after these answers have cost as much as building it.
class ClosestFaceSearch {
  public:
    /// All references must outlive the search.
    /// @param boxes  one per shell, which contains the shell; no coordinate is NaN
    ClosestFaceSearch(const MDagPath& mesh, const MeshTopology& topology, const Shells& shells,
                      const MFloatPointArray& points, std::vector<PlainBox> boxes);

    /// @return a failure if the host's structure cannot be built or finds nothing
    MStatus find(const MPoint& point, int& face);

  private:
    int findAtCorner(const PlainVector& point);
    PlainVector place(int vertex) const;
    PlainBox boxOf(int face) const;
    bool hasCorner(int face, const PlainVector& point) const;

    const MDagPath& mesh_;
    const MeshTopology& topology_;
    const Shells& shells_;
    const MFloatPointArray& points_;
    BoxIndex boxes_;
    std::size_t work_ = 0;  // faces visited so far
    MMeshIntersector intersector_;
};
