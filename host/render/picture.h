#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "geometry/mesh.h"
#include "render/view.h"

namespace host::render {

/// Red, green and blue from 0 to 1, linear.
using Color = std::array<float, 3>;

constexpr Color kGrey{0.5F, 0.5F, 0.5F};

/// A mesh to draw.
struct Surface {
    geometry::Mesh mesh{};
    geometry::Matrix4 world{};
    std::vector<Color> colors{};              ///< by vertex; all are grey if there are none
    std::optional<std::vector<int>> faces{};  ///< those to draw, if not all are
};

/// Red, green and blue, one byte each, in rows from the top.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes{};
    std::string error{};  ///< why there are no bytes

    bool ok() const { return error.empty(); }
};

/// Whether this host was built with what pictures need.
bool canDraw();

/// Casts four rays for each pixel. Both sides of a face are drawn, with smooth normals and a light at the
/// camera: what faces the camera has its own colour, what is seen from the side is black. Faces with a point
/// that is not finite are left out. The result does not depend on the number of threads.
/// @param width, height  at least 1
Picture draw(const std::vector<Surface>& surfaces, const View& view, int width, int height);

/// The bytes of a PNG file; empty if there is not enough memory.
std::string pngBytes(const Picture& picture);

}  // namespace host::render
