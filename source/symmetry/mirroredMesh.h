#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MObjectHandle.h>
#include <maya/MStatus.h>

#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/plainPoints.h"

/// The mirror image of a mesh, and the search for mirror partners by position on it.
///
/// The image is a copy of the mesh under the same transform, with mirrored object-space points. It is an
/// intermediate object, so it is not visible. It exists in the scene as long as this object lives. Main
/// thread only.
class MirroredMesh {
  public:
    /// @param mesh       path of a mesh shape
    /// @param axis       0, 1 or 2: the coordinate that changes its sign
    /// @param tolerance  distance up to which two points count as equal, in object space
    /// @param points     of the mesh, in object space
    /// @param faces      per face of the mesh: its corners. Must outlive this object, like the points
    MirroredMesh(const MDagPath& mesh, int axis, double tolerance, const std::vector<PlainPoint>& points,
                 const IndexLists& faces);
    ~MirroredMesh();
    MirroredMesh(const MirroredMesh&) = delete;
    MirroredMesh& operator=(const MirroredMesh&) = delete;

    /// Makes the image, and the host's structure for closest points on it. O(n log n).
    /// @return a failure if the host cannot build the structure, for example for a mesh without faces
    MStatus create();

    /// Leaves the image in the scene for good.
    void leaveInScene();

    /// The partner of a vertex: take the face of the image that is closest to the vertex; the partner is the
    /// first of its corners, in face order, that is at the same place as the vertex.
    /// @param partner  kNoPartner if there is no such corner; unchanged after a failure
    /// @return a failure if the host finds no closest point, or if the mesh has no such vertex
    MStatus findPartner(int vertex, int& partner) const;

  private:
    MDagPath mesh_;
    double tolerance_;
    const std::vector<PlainPoint>& points_;
    const IndexLists& faces_;
    MFloatPointArray mirroredPoints_;
    MObjectHandle image_;
    MMeshIntersector intersector_;
};
