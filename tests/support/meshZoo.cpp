#include "support/meshZoo.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <utility>

#include "geometry/primitives.h"

namespace zoo {

using namespace host::geometry;

namespace {

/// A zoo animal that cannot be built is a fault of the zoo.
Mesh built(MeshResult result) {
    if (!result.ok()) {
        std::fprintf(stderr, "mesh zoo: %s\n", result.error.c_str());
        std::abort();
    }
    return std::move(result.mesh);
}

Mesh meshOf(std::vector<float> points, const std::vector<std::vector<int>>& faces) {
    std::vector<int> counts;
    std::vector<int> corners;
    for (const std::vector<int>& face : faces) {
        counts.push_back(static_cast<int>(face.size()));
        corners.insert(corners.end(), face.begin(), face.end());
    }
    return built(createMesh(std::move(points), counts, std::move(corners)));
}

std::vector<std::vector<int>> facesOf(const Mesh& mesh) {
    std::vector<std::vector<int>> faces;
    for (int face = 0; face < mesh.faceCount(); ++face) {
        const IntSpan corners = mesh.topology().faceVertices(face);
        faces.emplace_back(corners.begin(), corners.end());
    }
    return faces;
}

/// Random numbers that are the same with every standard library.
class Random {
  public:
    explicit Random(unsigned seed) : state_(seed * 2654435761u + 1u) {}

    std::vector<int> permutation(int count) {
        std::vector<int> result(static_cast<std::size_t>(count));
        std::iota(result.begin(), result.end(), 0);
        for (int i = count - 1; i > 0; --i)
            std::swap(result[i], result[next() % static_cast<unsigned>(i + 1)]);
        return result;
    }

  private:
    unsigned next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<unsigned>(state_ >> 33);
    }

    std::uint64_t state_;
};

/// The mesh seen in the plane x = 0, faces turned so that they still face outward.
Mesh mirrored(const Mesh& mesh) {
    std::vector<float> points = mesh.points();
    for (std::size_t i = 0; i < points.size(); i += 3)
        points[i] = -points[i];
    std::vector<std::vector<int>> faces = facesOf(mesh);
    for (std::vector<int>& face : faces)
        std::reverse(face.begin(), face.end());
    return meshOf(std::move(points), faces);
}

/// Half the grid's sphere is the exact mirror image of the other: its points come from the half with x > 0.
Mesh symmetricHead() {
    const int around = 12;
    Mesh head = makeSphere({1.0, around, 8});
    std::vector<float>& points = head.editPoints();
    const int rings = (head.vertexCount() - 2) / around;
    for (int ring = 0; ring < rings; ++ring) {
        for (int i = 0; i < around; ++i) {
            // Vertex i of a ring stands at angle i + 1 of `around`; its mirror image at half a turn minus
            // that.
            const int partner = (around / 2 - 2 - i + 2 * around) % around;
            const std::size_t here = 3 * static_cast<std::size_t>(ring * around + i);
            const std::size_t there = 3 * static_cast<std::size_t>(ring * around + partner);
            if (here == there) points[here] = 0.0F;
            if (points[here] <= 0.0F) continue;
            points[here + 2] *= points[here + 2] > 0.0F ? 1.25F : 1.0F;
            points[there] = -points[here];
            points[there + 1] = points[here + 1];
            points[there + 2] = points[here + 2];
        }
    }
    return head;
}

}  // namespace

Mesh cube() {
    return makeCube();
}

Mesh sphereWithPoles() {
    return makeSphere({1.0, 8, 6});
}

Mesh openGrid(int columns, int rows) {
    PlaneOptions options;
    options.width = columns;
    options.height = rows;
    options.subdivisionsWidth = columns;
    options.subdivisionsHeight = rows;
    return makePlane(options);
}

Mesh fan() {
    return meshOf({0, 0, 0, 2, 0, 0, 1.5F, 1, 0.25F, 0, 2, 0.5F, -1.5F, 1, 0.25F, -2, 0, 0},
                  {{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}});
}

Mesh nonManifoldFin() {
    return meshOf({0, 0, 0, 0, 0, 1, 1, 0, 1, 1, 0, 0, -1, 0, 1, -1, 0, 0, 0, 1, 1, 0, 1, 0},
                  {{0, 1, 2, 3}, {1, 0, 5, 4}, {0, 1, 6, 7}});
}

Mesh twoShellsSharingVertex() {
    return meshOf({0, 0, 0, 1, 0, 0, 1, 1, 0, 1, 0, 1, -1, 0, 0, -1, 1, 0, -1, 0, 1},
                  {{0, 1, 2}, {0, 3, 1}, {0, 2, 3}, {1, 3, 2}, {0, 5, 4}, {0, 4, 6}, {0, 6, 5}, {4, 5, 6}});
}

Mesh mirroredShellPair() {
    const Mesh right =
        transformed(makeCube({1.0, 1.0, 1.0, 2, 1, 1}), Matrix4::translation({2.0, 0.5, 0.25}));
    return built(uniteMeshes({right, mirrored(right)}));
}

Mesh threeEqualShells() {
    return built(uniteMeshes({cube(), cube(), cube()},
                             {Matrix4(), Matrix4::translation({0, 0, 2}), Matrix4::translation({0, 0, 4})}));
}

Mesh shuffledHead() {
    return shuffled(symmetricHead(), 7);
}

Mesh isolatedVertices() {
    return meshOf({5, 5, 5, 0, 0, 0, 1, 0, 0, -5, 5, 5, 1, 1, 0, 0, 1, 0, 0, -5, 0}, {{1, 2, 4, 5}});
}

Mesh singleFace() {
    return meshOf({-1, 0, 1, 1, 0, 1, 1, 0, -1, -1, 0, -1}, {{0, 1, 2, 3}});
}

Mesh noFace() {
    return meshOf({0, 0, 0, 1, 2, 3, -1, 2, 3}, {});
}

Mesh zeroAreaFaces() {
    return meshOf({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0, 3, 0, 0, 4, 4, 4, 4, 4, 4, 4, 4, 4},
                  {{0, 1, 2, 3}, {1, 4, 5}, {6, 7, 8}});
}

Mesh concaveFaces() {
    return meshOf({0, 0, 0, 5, 0, 0, 5, 3, 0, 4, 3, 0, 4,  1, 0, 3,  1, 0, 3,  3, 0, 2,  3, 0,
                   2, 1, 0, 1, 1, 0, 1, 3, 0, 0, 3, 0, -4, 0, 0, -2, 1, 0, -4, 2, 0, -3, 1, 0},
                  {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, {12, 13, 14, 15}});
}

Mesh nothing() {
    return {};
}

Mesh shuffled(const Mesh& mesh, unsigned seed, std::vector<int>* newNumber) {
    Random random(seed);
    const std::vector<int> order = random.permutation(mesh.vertexCount());
    std::vector<float> points(mesh.points().size());
    for (int vertex = 0; vertex < mesh.vertexCount(); ++vertex) {
        std::copy_n(mesh.points().begin() + 3 * static_cast<std::ptrdiff_t>(vertex), 3,
                    points.begin() + 3 * static_cast<std::ptrdiff_t>(order[vertex]));
    }
    const std::vector<std::vector<int>> faces = facesOf(mesh);
    std::vector<std::vector<int>> newFaces;
    for (int face : random.permutation(mesh.faceCount())) {
        newFaces.push_back(faces[face]);
        for (int& vertex : newFaces.back())
            vertex = order[vertex];
    }
    if (newNumber != nullptr) *newNumber = order;
    return meshOf(std::move(points), newFaces);
}

std::vector<NamedMesh> allMeshes() {
    return {{"cube", cube()},
            {"sphereWithPoles", sphereWithPoles()},
            {"openGrid", openGrid()},
            {"fan", fan()},
            {"nonManifoldFin", nonManifoldFin()},
            {"twoShellsSharingVertex", twoShellsSharingVertex()},
            {"mirroredShellPair", mirroredShellPair()},
            {"threeEqualShells", threeEqualShells()},
            {"shuffledHead", shuffledHead()},
            {"isolatedVertices", isolatedVertices()},
            {"singleFace", singleFace()},
            {"noFace", noFace()},
            {"zeroAreaFaces", zeroAreaFaces()},
            {"concaveFaces", concaveFaces()},
            {"nothing", nothing()}};
}

}  // namespace zoo
