#include "render/view.h"

namespace host::render {

using geometry::Matrix4;
using geometry::Vec3;

namespace {

/// The inverse of the camera's rotation and translation. What it looks along stays, what is up is put right.
Matrix4 cameraSpace(const Matrix4& camera) {
    const Vec3 back = geometry::normalized(camera.row(2));
    const Vec3 right = geometry::normalized(geometry::cross(camera.row(1), back));
    const Vec3 up = geometry::cross(back, right);
    const Vec3 eye = camera.row(3);
    Matrix4 matrix;
    for (int axis = 0; axis < 3; ++axis) {
        const auto row = static_cast<std::size_t>(axis);
        matrix.m[row] = {right[axis], up[axis], back[axis], 0.0};
    }
    matrix.m[3] = {-geometry::dot(eye, right), -geometry::dot(eye, up), -geometry::dot(eye, back), 1.0};
    return matrix;
}

/// Whether the sides of the film, and not its top and bottom, are those of the picture.
bool fitsWidth(const Lens& lens, double aspect) {
    const bool isWider = aspect * lens.filmHeight > lens.filmWidth;
    switch (lens.filmFit) {
        case FilmFit::Horizontal:
            return true;
        case FilmFit::Vertical:
            return false;
        case FilmFit::Overscan:
            return !isWider;
        case FilmFit::Fill:
            break;
    }
    return isWider;
}

}  // namespace

View viewOf(const Matrix4& camera, const Lens& lens, double aspect) {
    View view;
    view.toCamera = cameraSpace(camera);
    view.isOrthographic = lens.isOrthographic;
    view.nearClip = lens.nearClip;
    view.farClip = lens.farClip;
    constexpr double kInch = 25.4;  // millimetres
    const double scale = lens.cameraScale * kInch / (2.0 * lens.focalLength);
    if (lens.isOrthographic) {
        view.halfWidth = lens.orthographicWidth * lens.cameraScale / 2.0;
        view.halfHeight = view.halfWidth / aspect;
    } else if (fitsWidth(lens, aspect)) {
        view.halfWidth = lens.filmWidth * scale;
        view.halfHeight = view.halfWidth / aspect;
    } else {
        view.halfHeight = lens.filmHeight * scale;
        view.halfWidth = view.halfHeight * aspect;
    }
    return view;
}

}  // namespace host::render
