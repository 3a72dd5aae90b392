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
    int triangle = -1;  ///< number within the face, as in triangulate()
    std::array<int, 3> vertices{};
    std::array<double, 3> barycentric{};  ///< weights of `vertices`, sum 1
    Vec3 point;                           ///< in the mesh's space
    Vec3 normal;  ///< unit normal of the triangle; if it has no area, of the face; zero if neither has one
    double squaredDistance = 0.0;
};

/// Which face a search returns when several are equally close: the lowest, the highest, or one that depends
/// only on a seed.
struct FaceTieRule {
    enum class Kind { Lowest, Highest, Shuffled };
    Kind kind = Kind::Lowest;
    std::uint32_t seed = 0;
};

/// Finds the point of a mesh's surface that is closest to a given point.
///
/// The tree is a snapshot: it does not see later edits of the mesh. Building costs n log n in triangles, a
/// query about log n. Queries may run on several threads. Distances are exact to double precision. Of equally
/// close places, the result is on the lowest face (or the one that the rule says), and there on the lowest
/// triangle. A triangle without area counts as the segment or point that it is. A triangle with a point that
/// is not finite is left out.
class ClosestPointTree {
  public:
    /// @param toMesh  transforms a query point into the mesh's space, in which distances are measured
    explicit ClosestPointTree(const Mesh& mesh, const Matrix4& toMesh = Matrix4(), FaceTieRule rule = {});
    /// A tree of the listed faces only, in any order. Numbers that are not faces are ignored.
    ClosestPointTree(const Mesh& mesh, const std::vector<int>& faces, const Matrix4& toMesh = Matrix4(),
                     FaceTieRule rule = {});

    /// Nothing if no face is within `maxDistance` (inclusive, in the mesh's space), or if `point` is not
    /// finite.
    std::optional<ClosestPoint> query(const Vec3& point,
                                      double maxDistance = std::numeric_limits<double>::infinity()) const;

  private:
    struct Snapshot;
    std::shared_ptr<const Snapshot> snapshot_;
};

}  // namespace host::geometry
