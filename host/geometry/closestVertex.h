#pragma once

#include "geometry/mesh.h"
#include "geometry/triangleTree.h"

namespace host::geometry {

/// Finds the vertex of a mesh that is closest to a given point, of equally close ones the lowest.
///
/// A snapshot, like ClosestPointTree, with the same costs. Vertices whose point is not finite are left out.
class ClosestVertexTree {
  public:
    explicit ClosestVertexTree(const Mesh& mesh);

    /// -1 if the mesh has no vertex, or if `point` is not finite.
    int query(const Vec3& point) const;

  private:
    TriangleTree tree_;
};

}  // namespace host::geometry
