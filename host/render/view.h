#pragma once

#include "geometry/math.h"

/// Pictures of meshes: rays are cast from a camera, and what they hit is shaded.
namespace host::render {

/// How the part of the film that a picture shows follows from the shapes of both.
enum class FilmFit { Fill, Horizontal, Vertical, Overscan };

/// What a camera is set to. Lengths of the film are in inches, the focal length is in millimetres, all others
/// are in centimetres.
struct Lens {
    bool isOrthographic = false;
    double orthographicWidth = 10.0;  ///< of what the picture shows
    double focalLength = 35.0;
    double filmWidth = 36.0 / 25.4;
    double filmHeight = 24.0 / 25.4;
    double cameraScale = 1.0;  ///< of what is seen: 2 shows twice the width
    FilmFit filmFit = FilmFit::Fill;
    double nearClip = 0.1;
    double farClip = 10000.0;
};

/// What a camera sees in a picture.
///
/// Camera space has x to the right, y up, and the camera looks along -z, so that points in front of it have a
/// negative z.
struct View {
    geometry::Matrix4 toCamera;  ///< from world space to camera space; a rotation and a translation
    bool isOrthographic = false;
    /// Half of the picture's sides: at distance 1, or at every distance of an orthographic camera.
    double halfWidth = 1.0;
    double halfHeight = 1.0;
    double nearClip = 0.1;
    double farClip = 10000.0;
};

/// @param camera  from the camera's space to world space; its scale does not count
/// @param aspect  width of the picture divided by its height
View viewOf(const geometry::Matrix4& camera, const Lens& lens, double aspect);

}  // namespace host::render
