// The host's search for the closest face, at the mirrored place of every vertex.

#include "geometry/closestPoint.h"
#include "geometry/primitives.h"
#include "rows.h"
#include "support/meshZoo.h"
#include "table.h"

#include <cmath>
#include <map>
#include <vector>

namespace {

using host::geometry::ClosestPointTree;
using host::geometry::Vec3;
using zoo::Mesh;

/// A bent square sheet of about so many vertices, numbered row by row.
Mesh sheet(int vertices) {
    const int side = static_cast<int>(std::lround(std::sqrt(static_cast<double>(vertices)))) - 1;
    Mesh mesh = zoo::openGrid(side, side);
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        Vec3 point = mesh.point(vertex);
        point.y = 0.2 / side * (point.x * point.x + point.z * point.z);
        mesh.setPoint(vertex, point);
    }
    return mesh;
}

/// Spheres in one place.
Mesh coincidentSpheres(int vertices) {
    const Mesh sphere = host::geometry::makeSphere({1.0, 20, 20});
    const auto count = static_cast<std::size_t>(vertices / sphere.vertexCount());
    return host::geometry::uniteMeshes(std::vector<Mesh>(count, sphere)).mesh;
}

Mesh shuffledSheet(int vertices) {
    return zoo::shuffled(sheet(vertices), 1);
}

/// A row that builds the tree and asks it once for each vertex of a mesh.
Work searching(Mesh (*make)(int)) {
    return [make](benchmark::State& state, int size) {
        state.PauseTiming();
        static std::map<std::pair<Mesh (*)(int), int>, Mesh> meshes;
        const auto found = meshes.find({make, size});
        const Mesh& mesh = found != meshes.end()
                               ? found->second
                               : meshes.emplace(std::pair(make, size), make(size)).first->second;
        state.ResumeTiming();
        const ClosestPointTree tree(mesh);
        for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
            const Vec3 point = mesh.point(vertex);
            benchmark::DoNotOptimize(tree.query({-point.x, point.y, point.z}));
        }
    };
}

}  // namespace

void addClosestFaceRows() {
    addHostRow("closest face, in order", searching(sheet));
    addHostRow("closest face, shuffled", searching(shuffledSheet));
    addHostRow("closest face, one place", searching(coincidentSpheres));
}
