#include "geometry/mesh.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace host::geometry {

namespace {

/// One topology for all meshes without vertices, so that making such a mesh allocates none.
const TopologyPtr& emptyTopology() {
    static const TopologyPtr topology = std::make_shared<Topology>();
    return topology;
}

void writePoint(float* to, const Vec3& point) {
    to[0] = static_cast<float>(point.x);
    to[1] = static_cast<float>(point.y);
    to[2] = static_cast<float>(point.z);
}

bool isFinitePoints(const std::vector<float>& points) {
    return std::all_of(points.begin(), points.end(), [](float value) { return std::isfinite(value); });
}

/// Angle between two directions. Accurate near 0 and pi too.
double angleBetween(const Vec3& a, const Vec3& b) {
    return std::atan2(length(cross(a, b)), dot(a, b));
}

}  // namespace

Mesh::Mesh() : topology_(emptyTopology()), points_(std::make_shared<std::vector<float>>()) {}

Mesh::Mesh(TopologyPtr topology, std::vector<float> points)
    : topology_(std::move(topology)), points_(std::make_shared<std::vector<float>>(std::move(points))) {
    assert(points_->size() == 3 * static_cast<std::size_t>(vertexCount()));
}

std::vector<float>& Mesh::editPoints() {
    if (points_.use_count() > 1) points_ = std::make_shared<std::vector<float>>(*points_);
    return *points_;
}

void Mesh::setPoints(std::vector<float> points) {
    assert(points.size() == points_->size());
    points_ = std::make_shared<std::vector<float>>(std::move(points));
}

void Mesh::setPoint(int vertex, const Vec3& point) {
    writePoint(editPoints().data() + 3 * static_cast<std::size_t>(vertex), point);
}

MeshResult createMesh(std::vector<float> points, const std::vector<int>& faceCounts,
                      std::vector<int> faceVertices) {
    if (points.size() % 3 != 0) return {Mesh(), "the points are no multiple of three numbers"};
    if (points.size() / 3 > static_cast<std::size_t>(kMostComponents)) {
        return {Mesh(), "there are too many vertices"};
    }
    if (!isFinitePoints(points)) return {Mesh(), "a point is not finite"};
    const int vertexCount = static_cast<int>(points.size() / 3);
    TopologyResult built = Topology::fromFaces(vertexCount, faceCounts, std::move(faceVertices));
    if (!built.ok()) return {Mesh(), std::move(built.error)};
    return {Mesh(std::move(built.topology), std::move(points)), {}};
}

MeshResult uniteMeshes(const std::vector<Mesh>& meshes, const std::vector<Matrix4>& matrices) {
    assert(matrices.empty() || matrices.size() == meshes.size());
    std::vector<TopologyPtr> parts;
    parts.reserve(meshes.size());
    for (const Mesh& mesh : meshes)
        parts.push_back(mesh.topologyPtr());
    TopologyResult united = Topology::unite(parts);
    if (!united.ok()) return {Mesh(), std::move(united.error)};

    std::vector<float> points;
    points.reserve(3 * static_cast<std::size_t>(united.topology->vertexCount()));
    for (std::size_t i = 0; i < meshes.size(); ++i) {
        const Mesh part = matrices.empty() ? meshes[i] : transformed(meshes[i], matrices[i]);
        points.insert(points.end(), part.points().begin(), part.points().end());
    }
    return {Mesh(std::move(united.topology), std::move(points)), {}};
}

Mesh transformed(const Mesh& mesh, const Matrix4& matrix) {
    if (matrix == Matrix4()) return mesh;
    std::vector<float> points(mesh.points().size());
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        writePoint(points.data() + 3 * static_cast<std::size_t>(vertex),
                   transformPoint(mesh.point(vertex), matrix));
    }
    return {mesh.topologyPtr(), std::move(points)};
}

BoundingBox bounds(const Mesh& mesh) {
    BoundingBox box;
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex)
        box.expand(mesh.point(vertex));
    return box;
}

BoundingBox bounds(const Mesh& mesh, const Matrix4& matrix) {
    BoundingBox box;
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        box.expand(transformPoint(mesh.point(vertex), matrix));
    }
    return box;
}

Vec3 faceCentre(const Mesh& mesh, int face) {
    Vec3 sum;
    const IntSpan corners = mesh.topology().faceVertices(face);
    for (int vertex : corners)
        sum += mesh.point(vertex);
    return sum * (1.0 / corners.size());
}

double edgeLength(const Mesh& mesh, int edge) {
    const auto [a, b] = mesh.topology().edge(edge);
    return length(mesh.point(b) - mesh.point(a));
}

Vec3 faceAreaVector(const Mesh& mesh, int face) {
    // Relative to the first corner: far from the origin, the plain sum of products would lose the digits that
    // matter.
    const IntSpan corners = mesh.topology().faceVertices(face);
    const Vec3 origin = mesh.point(corners[0]);
    Vec3 sum;
    Vec3 previous = mesh.point(corners[1]) - origin;
    for (int corner = 2; corner < corners.size(); ++corner) {
        const Vec3 next = mesh.point(corners[corner]) - origin;
        sum += cross(previous, next);
        previous = next;
    }
    return sum;
}

Vec3 faceNormal(const Mesh& mesh, int face) {
    return normalized(faceAreaVector(mesh, face));
}

std::vector<float> vertexNormals(const Mesh& mesh, NormalWeighting weighting) {
    const Topology& topology = mesh.topology();
    std::vector<Vec3> sums(topology.vertexCount());
    for (int face = 0; face < topology.faceCount(); ++face) {
        const IntSpan corners = topology.faceVertices(face);
        const Vec3 normal = faceNormal(mesh, face);
        const int count = corners.size();
        for (int corner = 0; corner < count; ++corner) {
            double weight = 1.0;
            if (weighting == NormalWeighting::Angle) {
                const Vec3 at = mesh.point(corners[corner]);
                weight = angleBetween(mesh.point(corners[(corner + 1) % count]) - at,
                                      mesh.point(corners[(corner + count - 1) % count]) - at);
            }
            sums[corners[corner]] += normal * weight;
        }
    }
    std::vector<float> normals(mesh.points().size());
    for (std::size_t vertex = 0; vertex < sums.size(); ++vertex) {
        writePoint(normals.data() + 3 * vertex, normalized(sums[vertex]));
    }
    return normals;
}

}  // namespace host::geometry
