#include <tbb/parallel_for.h>

#include <algorithm>
#include <cmath>

#include "geometry/triangulate.h"
#include "render/caster.h"
#include "render/picture.h"

namespace host::render {

namespace {

using geometry::Vec3;

constexpr Color kBackground{0.2F, 0.2F, 0.2F};

/// A surface in camera space, cut into triangles.
struct Model {
    std::vector<Triangles> triangles;         // of each surface
    std::vector<std::vector<float>> normals;  // of its vertices, x y z
    std::vector<const std::vector<Color>*> colors;
};

bool isFinite(const geometry::Mesh& mesh, int vertex) {
    return geometry::isFinite(mesh.point(vertex));
}

Triangles trianglesOf(const Surface& surface, const geometry::Mesh& seen) {
    const geometry::Triangulation cut =
        surface.faces ? geometry::triangulate(seen, *surface.faces) : geometry::triangulate(seen);
    Triangles result;
    result.vertices.reserve(3 * cut.triangles.size());
    for (const std::array<int, 3>& triangle : cut.triangles) {
        if (!std::all_of(triangle.begin(), triangle.end(), [&](int v) { return isFinite(seen, v); }))
            continue;
        for (const int vertex : triangle)
            result.vertices.push_back(static_cast<unsigned>(vertex));
    }
    result.points.reserve(seen.points().size() + 3);
    result.points = seen.points();
    result.points.insert(result.points.end(), 3, 0.0F);
    return result;
}

Model modelOf(const std::vector<Surface>& surfaces, const View& view) {
    Model model;
    model.triangles.reserve(surfaces.size());
    model.normals.reserve(surfaces.size());
    model.colors.reserve(surfaces.size());
    for (const Surface& surface : surfaces) {
        const geometry::Mesh seen = geometry::transformed(surface.mesh, surface.world * view.toCamera);
        model.triangles.push_back(trianglesOf(surface, seen));
        model.normals.push_back(geometry::vertexNormals(seen));
        model.colors.push_back(&surface.colors);
    }
    return model;
}

/// The value at a hit of something that vertices have: three numbers each.
template <typename AtVertex>
Vec3 mixed(const Triangles& triangles, const Hit& hit, AtVertex&& atVertex) {
    const unsigned* corners = triangles.vertices.data() + std::size_t{3} * hit.triangle;
    const double first = 1.0 - static_cast<double>(hit.second) - static_cast<double>(hit.third);
    return atVertex(corners[0]) * first + atVertex(corners[1]) * static_cast<double>(hit.second) +
           atVertex(corners[2]) * static_cast<double>(hit.third);
}

Vec3 tripleAt(const std::vector<float>& numbers, unsigned index) {
    const float* from = numbers.data() + std::size_t{3} * index;
    return {from[0], from[1], from[2]};
}

Vec3 flatNormal(const Triangles& triangles, const Hit& hit) {
    const unsigned* corners = triangles.vertices.data() + std::size_t{3} * hit.triangle;
    const Vec3 first = tripleAt(triangles.points, corners[0]);
    return geometry::cross(tripleAt(triangles.points, corners[1]) - first,
                           tripleAt(triangles.points, corners[2]) - first);
}

/// What a ray sees: the colour where it hits, times the cosine of the angle to the light, which is where the
/// ray comes from.
Vec3 shaded(const Model& model, const Hit& hit, const Vec3& direction) {
    if (hit.surface < 0) return {kBackground[0], kBackground[1], kBackground[2]};
    const auto surface = static_cast<std::size_t>(hit.surface);
    const Triangles& triangles = model.triangles[surface];
    Vec3 normal = geometry::normalized(
        mixed(triangles, hit, [&](unsigned vertex) { return tripleAt(model.normals[surface], vertex); }));
    if (normal == Vec3{}) normal = geometry::normalized(flatNormal(triangles, hit));
    const double light = std::abs(geometry::dot(normal, geometry::normalized(direction)));
    const std::vector<Color>& colors = *model.colors[surface];
    const Vec3 albedo = mixed(triangles, hit, [&](unsigned vertex) {
        const Color& color = vertex < colors.size() ? colors[vertex] : kGrey;
        return Vec3{color[0], color[1], color[2]};
    });
    return albedo * light;
}

/// The ray through a place of the picture: -1 to 1 from left to right and from bottom to top.
Ray rayThrough(const View& view, double x, double y) {
    const Vec3 place{x * view.halfWidth, y * view.halfHeight, 0.0};
    const Vec3 forward{0.0, 0.0, -1.0};
    // Along both kinds of rays the depth grows by one with the direction.
    if (view.isOrthographic) return {place, forward, view.nearClip, view.farClip};
    return {{}, place + forward, view.nearClip, view.farClip};
}

std::uint8_t byteOf(double value) {
    // What is no number is black.
    return value > 0.0 ? static_cast<std::uint8_t>(std::lround(255.0 * std::min(value, 1.0))) : 0;
}

constexpr int kSamples = 2;  // in each direction of a pixel

void drawRow(const Model& model, const Caster& caster, const View& view, Picture& picture, int row) {
    std::uint8_t* to = picture.bytes.data() + std::size_t{3} * static_cast<std::size_t>(row) *
                                                  static_cast<std::size_t>(picture.width);
    for (int column = 0; column < picture.width; ++column) {
        Vec3 sum;
        for (int sample = 0; sample < kSamples * kSamples; ++sample) {
            const int step = sample / kSamples;
            const double x = column + (sample % kSamples + 0.5) / kSamples;
            const double y = row + (step + 0.5) / kSamples;
            const Ray ray = rayThrough(view, 2.0 * x / picture.width - 1.0, 1.0 - 2.0 * y / picture.height);
            sum += shaded(model, caster.cast(ray), ray.direction);
        }
        for (int channel = 0; channel < 3; ++channel)
            *to++ = byteOf(sum[channel] / (kSamples * kSamples));
    }
}

}  // namespace

bool canDraw() {
    return true;
}

Picture draw(const std::vector<Surface>& surfaces, const View& view, int width, int height) {
    const Model model = modelOf(surfaces, view);
    const Caster caster(model.triangles);
    Picture picture{width, height, {}, caster.error()};
    if (!picture.ok()) return picture;
    picture.bytes.resize(std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    tbb::parallel_for(0, height, [&](int row) { drawRow(model, caster, view, picture, row); });
    return picture;
}

}  // namespace host::render
