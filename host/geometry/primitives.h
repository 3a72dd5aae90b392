#pragma once

#include "geometry/mesh.h"

/// Meshes of the primitive commands, axis y up, centred at the origin, faces turning outward. Subdivisions
/// below the least meaningful number are raised to it; that their product stays below kMostComponents is the
/// caller's part.
namespace host::geometry {

struct CubeOptions {
    double width = 1.0;   ///< along x
    double height = 1.0;  ///< along y
    double depth = 1.0;   ///< along z
    int subdivisionsX = 1;
    int subdivisionsY = 1;
    int subdivisionsZ = 1;
};

/// Rows around the x axis from the front's bottom over top and back to the bottom, then the insides of the
/// right and left side. Edges along x come first, row by row, then those from row to row.
Mesh makeCube(const CubeOptions& options = {});

struct SphereOptions {
    double radius = 1.0;
    int subdivisionsAxis = 20;    ///< around y, at least 3
    int subdivisionsHeight = 20;  ///< from pole to pole, at least 2
};

/// Rings from south to north, then the south and the north pole.
Mesh makeSphere(const SphereOptions& options = {});

struct PlaneOptions {
    double width = 1.0;   ///< along x
    double height = 1.0;  ///< along z
    int subdivisionsWidth = 10;
    int subdivisionsHeight = 10;
};

/// Rows along x, from the front (positive z) to the back; faces look up.
Mesh makePlane(const PlaneOptions& options = {});

struct TorusOptions {
    double radius = 1.0;
    double sectionRadius = 0.5;
    double twist = 0.0;           ///< radians by which the section's start is turned
    int subdivisionsAxis = 20;    ///< around y, at least 3
    int subdivisionsHeight = 20;  ///< around the section, at least 3
};

/// Rings around y; the first is the innermost one when there is no twist, the next lie above it.
Mesh makeTorus(const TorusOptions& options = {});

}  // namespace host::geometry
