#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatPointArray.h>
#include <maya/MIntArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MObjectHandle.h>
#include <maya/MStatus.h>

#include <vector>

/// The mirror image of a mesh, and the search for mirror partners by position on it.
///
/// The image is a copy of the mesh under the same transform, hidden as an intermediate object, with
/// its object-space points mirrored. It is in the scene for as long as this object lives. For the
/// main thread.
class MirroredMesh {
  public:
    /// The answer of findPartner for a vertex without partner.
    static constexpr int kNoPartner = -1;

    /// @param mesh       path of a mesh shape
    /// @param axis       0, 1 or 2: the coordinate that changes its sign
    /// @param tolerance  distance up to which two points count as one, in the units around the
    ///                   mesh: it is divided by the mean of the transform's three scale factors for
    ///                   object space
    MirroredMesh(const MDagPath& mesh, int axis, double tolerance);
    ~MirroredMesh();
    MirroredMesh(const MirroredMesh&) = delete;
    MirroredMesh& operator=(const MirroredMesh&) = delete;

    /// Makes the image and the host's structure for closest points on it. O(n log n).
    /// @return a failure when the host cannot build one, as for a mesh without faces
    MStatus create();

    /// Leaves the image in the scene for good.
    void leaveInScene();

    /// The mesh itself.
    const MDagPath& mesh() const { return mesh_; }
    int axis() const { return axis_; }
    /// Object-space points of the mesh itself.
    const MFloatPointArray& points() const { return points_; }

    /// The partner of a vertex: of the corners of the image's face that is closest to the vertex,
    /// in face order, the first that lies where the vertex does.
    /// @param partner  kNoPartner when no corner does; unchanged after a failure
    /// @return a failure when the host finds no closest point, or when the mesh has no such vertex
    MStatus findPartner(int vertex, int& partner) const;

  private:
    MDagPath mesh_;
    int axis_;
    double tolerance_;  // in object space
    MFloatPointArray points_;
    MFloatPointArray mirroredPoints_;
    MObjectHandle image_;
    MMeshIntersector intersector_;
    std::vector<int> firstCorners_;  // of each face: where its corners begin, and one entry more
    MIntArray corners_;              // vertices, face by face
};
