#pragma once

#include <array>
#include <vector>

#include "geometry/mesh.h"

namespace host::geometry {

/// Faces cut into triangles: face i of the list has triangles offsets[i] .. offsets[i + 1] - 1, corners - 2
/// of them.
struct Triangulation {
    std::vector<int> faces;                     ///< the faces, in the order that was asked for
    std::vector<int> offsets;                   ///< one more than faces
    std::vector<std::array<int, 3>> triangles;  ///< vertex numbers, in the direction of the face
};

/// Triangles of every face, or of `faces` in that order.
///
/// A convex face becomes a fan from its first corner. A concave one is cut by ears. A face that intersects
/// itself or has no area still gives corners - 2 triangles, some of them without area. The cost is linear,
/// except for concave faces: there it is usually quadratic in the corners of the face.
Triangulation triangulate(const Mesh& mesh);
Triangulation triangulate(const Mesh& mesh, const std::vector<int>& faces);

}  // namespace host::geometry
