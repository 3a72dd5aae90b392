#pragma once

#include <maya/MDagPath.h>
#include <maya/MStatus.h>

#include <optional>
#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/mirroredMesh.h"
#include "symmetry/partnerLookup.h"

/// The mirror partners of vertices by position on one mesh.
///
/// What follows from the positions alone is looked up (partnerLookup.h). Only for other vertices is a
/// mirrored copy of the mesh made, and asked for the closest faces. Main thread only.
class PositionPartners {
  public:
    /// @param mesh       path of a mesh shape
    /// @param axis       0, 1 or 2: the coordinate that changes its sign
    /// @param tolerance  distance up to which two points count as equal, in the units of the mesh's parent
    ///                   space. For object space it is divided by the mean of the transform's three scale
    ///                   factors
    PositionPartners(const MDagPath& mesh, int axis, double tolerance);

    const MDagPath& mesh() const { return mesh_; }
    int axis() const { return axis_; }
    /// The points of the mesh in object space.
    const std::vector<PlainPoint>& points() const { return points_; }

    /// Finds the partners of the listed vertices.
    /// @param partners  one entry per vertex: its partner, kNoPartner, or kUndecided if the host finds no
    ///                  closest face for it. A number that is no vertex has no partner
    /// @return a failure if the host cannot make its structure for closest faces, for example for a mesh
    ///         without faces; the partners are then not set
    MStatus find(const std::vector<int>& vertices, std::vector<int>& partners);

    /// Leaves the mirrored copy in the scene, if one was made. Otherwise it goes with this object.
    void leaveCopyInScene();

  private:
    MDagPath mesh_;
    int axis_;
    double tolerance_;  // in object space
    std::vector<PlainPoint> points_;
    IndexLists faces_;
    std::optional<MirroredMesh> image_;
};
