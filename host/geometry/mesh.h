#pragma once

#include <memory>
#include <string>
#include <vector>

#include "geometry/math.h"
#include "geometry/topology.h"

namespace host::geometry {

/// A polygon mesh: a shared topology and one point per vertex, in single precision.
///
/// Copying is cheap: copies share topology and points until one of them edits its points. Reading one mesh
/// object from several threads is safe. Editing it is not.
class Mesh {
  public:
    /// A mesh without vertices.
    Mesh();
    /// `points` holds x y z per vertex: three times the topology's vertex count.
    Mesh(TopologyPtr topology, std::vector<float> points);

    const Topology& topology() const { return *topology_; }
    const TopologyPtr& topologyPtr() const { return topology_; }
    int vertexCount() const { return topology_->vertexCount(); }
    int edgeCount() const { return topology_->edgeCount(); }
    int faceCount() const { return topology_->faceCount(); }

    /// x y z per vertex.
    const std::vector<float>& points() const { return *points_; }
    /// The points, for writing. The length must not change. They are copied first if another mesh shares
    /// them.
    std::vector<float>& editPoints();
    /// Replaces all points. Their number must not change.
    void setPoints(std::vector<float> points);

    Vec3 point(int vertex) const {
        const float* p = points_->data() + 3 * static_cast<std::size_t>(vertex);
        return {p[0], p[1], p[2]};
    }
    /// Rounds to single precision. For many points call editPoints() once.
    void setPoint(int vertex, const Vec3& point);

    /// Whether both meshes use the same block of points. Then their points are surely equal.
    bool sharesPointsWith(const Mesh& other) const { return points_ == other.points_; }

  private:
    TopologyPtr topology_;
    std::shared_ptr<std::vector<float>> points_;
};

/// A mesh, or why there is none.
struct MeshResult {
    Mesh mesh;
    std::string error;

    bool ok() const { return error.empty(); }
};

/// A mesh of points (x y z each), corner counts and a flat list of corners. Edges are numbered as by
/// Topology::fromFaces. Fails when that fails, if the length of `points` is not a multiple of three, and if a
/// point is not finite.
MeshResult createMesh(std::vector<float> points, const std::vector<int>& faceCounts,
                      std::vector<int> faceVertices);

/// One mesh of several, side by side. The numbers of each part follow those of the part before. Edge orders
/// are kept.
///
///
/// @param matrices  one per mesh, applied to its points; empty for no transformation
MeshResult uniteMeshes(const std::vector<Mesh>& meshes, const std::vector<Matrix4>& matrices = {});

/// The mesh with every point multiplied by `matrix`. The topology is shared.
Mesh transformed(const Mesh& mesh, const Matrix4& matrix);

/// Box of all points, with or without faces.
BoundingBox bounds(const Mesh& mesh);
/// Box of all points after multiplication by `matrix`.
BoundingBox bounds(const Mesh& mesh, const Matrix4& matrix);

/// Mean of the corners.
Vec3 faceCentre(const Mesh& mesh, int face);
double edgeLength(const Mesh& mesh, int edge);

/// Vector perpendicular to a face, as long as twice its area. Seen from its tip, the corners are
/// counter-clockwise. Zero if the face has no area.
Vec3 faceAreaVector(const Mesh& mesh, int face);
/// Unit normal; zero if the face has no area.
Vec3 faceNormal(const Mesh& mesh, int face);

enum class NormalWeighting { Uniform, Angle };

/// Unit normal per vertex, x y z each: the mean of the faces' normals, weighted equally or by their angle at
/// the vertex. Zero for vertices without a face that has an area.
std::vector<float> vertexNormals(const Mesh& mesh, NormalWeighting weighting = NormalWeighting::Angle);

}  // namespace host::geometry
