#pragma once

#include "geometry/mesh.h"

/// Meshes of the primitive commands: y is up, the centre is the origin, faces point outward. Subdivisions
/// below the smallest useful number are raised to it. The caller makes sure that their product stays below
/// kMostComponents.
namespace host::geometry {

struct CubeOptions {
    double width = 1.0;   ///< along x
    double height = 1.0;  ///< along y
    double depth = 1.0;   ///< along z
    int subdivisionsX = 1;
    int subdivisionsY = 1;
    int subdivisionsZ = 1;
};

/// Rows around the x axis, from the bottom of the front over top and back to the bottom; then the inner
/// vertices of the right and of the left side. Edges along x come first, row by row, then the edges from row
/// to row.
Mesh makeCube(const CubeOptions& options = {});

struct SphereOptions {
    double radius = 1.0;
    int subdivisionsAxis = 20;    ///< around y, at least 3
    int subdivisionsHeight = 20;  ///< from pole to pole, at least 2
};

/// Rings from south to north, then the south pole and the north pole.
Mesh makeSphere(const SphereOptions& options = {});

struct PlaneOptions {
    double width = 1.0;   ///< along x
    double height = 1.0;  ///< along z
    int subdivisionsWidth = 10;
    int subdivisionsHeight = 10;
};

/// Rows along x, from the front (positive z) to the back. Faces look up.
Mesh makePlane(const PlaneOptions& options = {});

struct TorusOptions {
    double radius = 1.0;
    double sectionRadius = 0.5;
    double twist = 0.0;           ///< in radians: how far the start of the section is turned
    int subdivisionsAxis = 20;    ///< around y, at least 3
    int subdivisionsHeight = 20;  ///< around the section, at least 3
};

/// Rings around y. Without twist, the first ring is the innermost one, and the next ones are above it.
Mesh makeTorus(const TorusOptions& options = {});

}  // namespace host::geometry
