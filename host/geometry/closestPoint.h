#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "geometry/math.h"
#include "geometry/mesh.h"

namespace host::geometry {

struct ClosestPoint {
    int face = -1;
    int triangle = -1;  ///< of the face, as triangulate() numbers them
    std::array<int, 3> vertices{};
    std::array<double, 3> barycentric{};  ///< weights of `vertices`, sum 1
    Vec3 point;                           ///< in the mesh's space
    Vec3 normal;  ///< unit normal of the triangle, else of the face; zero without area
    double squaredDistance = 0.0;
};

/// Which of equally close faces a search answers: the lowest, the highest, or one that only a seed decides.
struct FaceTieRule {
    enum class Kind { Lowest, Highest, Shuffled };
    Kind kind = Kind::Lowest;
    std::uint32_t seed = 0;
};

/// Finds the point of a mesh's surface that is closest to a given one.
///
/// A snapshot: later edits of the mesh are not seen. Building costs n log n in triangles, a query about log
/// n; queries may run on several threads. Distances are exact to double precision. Of equally close places
/// the lowest face (or what the rule says), and in it the lowest triangle, is reported. Triangles without
/// area are found as the segment or point that they are; triangles with a point that is not finite are left
/// out.
class ClosestPointTree {
  public:
    /// @param toMesh  takes a query point into the mesh's space, where distances are measured
    explicit ClosestPointTree(const Mesh& mesh, const Matrix4& toMesh = Matrix4(), FaceTieRule rule = {});
    /// Of the listed faces only, in any order; numbers that are no face are ignored.
    ClosestPointTree(const Mesh& mesh, const std::vector<int>& faces, const Matrix4& toMesh = Matrix4(),
                     FaceTieRule rule = {});

    /// Nothing when no face is within `maxDistance` (inclusive, in the mesh's space), or `point` is not
    /// finite.
    std::optional<ClosestPoint> query(const Vec3& point,
                                      double maxDistance = std::numeric_limits<double>::infinity()) const;

  private:
    struct Snapshot;
    std::shared_ptr<const Snapshot> snapshot_;
};

}  // namespace host::geometry
