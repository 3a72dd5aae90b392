#pragma once

#include <memory>
#include <string>
#include <vector>

#include "geometry/math.h"
#include "geometry/topology.h"

namespace host::geometry {

/// A polygon mesh: a shared topology and one point per vertex, single precision.
///
/// A copy costs nothing: topology and points are shared until one side edits its points. Reading one mesh
/// object from several threads is safe, editing it is not.
class Mesh {
  public:
    /// The mesh without a vertex.
    Mesh();
    /// `points` holds x y z per vertex, so three times the topology's vertex count.
    Mesh(TopologyPtr topology, std::vector<float> points);

    const Topology& topology() const { return *topology_; }
    const TopologyPtr& topologyPtr() const { return topology_; }
    int vertexCount() const { return topology_->vertexCount(); }
    int edgeCount() const { return topology_->edgeCount(); }
    int faceCount() const { return topology_->faceCount(); }

    /// x y z per vertex.
    const std::vector<float>& points() const { return *points_; }
    /// The points to write to; its length must stay. Copies them first when another mesh shares them.
    std::vector<float>& editPoints();
    /// Replaces all points; as many as before.
    void setPoints(std::vector<float> points);

    Vec3 point(int vertex) const {
        const float* p = points_->data() + 3 * static_cast<std::size_t>(vertex);
        return {p[0], p[1], p[2]};
    }
    /// Rounds to single precision. For many points take editPoints() once.
    void setPoint(int vertex, const Vec3& point);

    /// Both meshes use one block of points, so they are surely the same.
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

/// Mesh of points (x y z each), corner counts and a flat list of corners; edges numbered as
/// Topology::fromFaces does. Fails as that does, and on points that are no multiple of three or not finite.
MeshResult createMesh(std::vector<float> points, const std::vector<int>& faceCounts,
                      std::vector<int> faceVertices);

/// The meshes side by side in one, each part's numbers after those of the one before, edge orders kept.
///
/// @param matrices  one per mesh, applied to its points; empty for none
MeshResult uniteMeshes(const std::vector<Mesh>& meshes, const std::vector<Matrix4>& matrices = {});

/// The mesh with every point multiplied by `matrix`; the topology is shared.
Mesh transformed(const Mesh& mesh, const Matrix4& matrix);

/// Box of all points, faces or not.
BoundingBox bounds(const Mesh& mesh);
/// Box of all points after multiplication by `matrix`.
BoundingBox bounds(const Mesh& mesh, const Matrix4& matrix);

/// Mean of the corners.
Vec3 faceCentre(const Mesh& mesh, int face);
double edgeLength(const Mesh& mesh, int edge);

/// Twice the area vector of a face: perpendicular to it, counter-clockwise corners seen from its tip. Zero
/// where the face has no area.
Vec3 faceAreaVector(const Mesh& mesh, int face);
/// Unit normal, zero where the face has no area.
Vec3 faceNormal(const Mesh& mesh, int face);

enum class NormalWeighting { Uniform, Angle };

/// Unit normal per vertex, x y z each: the faces' normals, equal or by their angle at the vertex. Zero for
/// vertices without a face that has an area.
std::vector<float> vertexNormals(const Mesh& mesh, NormalWeighting weighting = NormalWeighting::Angle);

}  // namespace host::geometry
