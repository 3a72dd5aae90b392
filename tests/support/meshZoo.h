#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "geometry/mesh.h"

/// Small generated meshes by property, for tests that try an algorithm on all of them.
///
/// The symmetry plane, where there is one, is x = 0. Coordinates of symmetric meshes are exact mirror images.
namespace zoo {

using host::geometry::Mesh;

struct NamedMesh {
    std::string name;
    Mesh mesh;

    /// How a test program prints it.
    friend void PrintTo(const NamedMesh& named, std::ostream* stream) { *stream << named.name; }
};

/// Side 1, symmetric; the numbering of the primitive command.
Mesh cube();
/// Radius 1, 8 around and 6 from pole to pole: two vertices with 8 edges.
Mesh sphereWithPoles();
/// `columns` x `rows` quads in the xz plane, each side 1 long, symmetric for every number of columns.
Mesh openGrid(int columns = 4, int rows = 3);
/// Triangles around vertex 0, not closed.
Mesh fan();
/// Three quads on one edge.
Mesh nonManifoldFin();
/// Two tetrahedra with one vertex in common and no edge.
Mesh twoShellsSharingVertex();
/// Two separate cubes, one either side of the plane, the right one's faces turned so that both face outward.
Mesh mirroredShellPair();
/// Three cubes in a row along z.
Mesh threeEqualShells();
/// A symmetric head-like sphere whose vertices and faces stand in a shuffled order; the same one on every
/// run.
Mesh shuffledHead();
/// A quad between vertices that no face uses: numbers 0, 3 and 6.
Mesh isolatedVertices();
Mesh singleFace();
/// Three vertices.
Mesh noFace();
/// A quad beside a face whose corners are on one line and one whose corners are at one place.
Mesh zeroAreaFaces();
/// A comb and an arrow head, each one n-gon in the xy plane.
Mesh concaveFaces();
/// Nothing at all.
Mesh nothing();

/// `mesh` with vertices and faces in an order drawn from `seed`; `newNumber`, when given, gets for each old
/// vertex the new one.
Mesh shuffled(const Mesh& mesh, unsigned seed, std::vector<int>* newNumber = nullptr);

/// All of the above.
std::vector<NamedMesh> allMeshes();

}  // namespace zoo
