#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "geometry/math.h"

namespace host::render {

/// Corners of the triangles of a surface, in camera space.
struct Triangles {
    std::vector<float> points;       ///< x y z of each vertex, and of one more that nothing uses
    std::vector<unsigned> vertices;  ///< three of each triangle
};

/// A ray in camera space. Distances count in lengths of `direction`.
struct Ray {
    geometry::Vec3 origin;
    geometry::Vec3 direction;
    double nearest = 0.0;
    double farthest = 0.0;
};

struct Hit {
    int surface = -1;  ///< -1 for none
    unsigned triangle = 0;
    float second = 0.0F;  ///< shares of the triangle's second and third corner
    float third = 0.0F;
};

/// Finds what rays hit first. The results are the same for any number of threads and on every processor of a
/// kind: the ray caster is told which instructions to use.
class Caster {
  public:
    /// The list and its content must stay.
    explicit Caster(const std::vector<Triangles>& surfaces);
    ~Caster();
    Caster(const Caster&) = delete;
    Caster& operator=(const Caster&) = delete;

    /// Why nothing can be cast; empty if all is well.
    const std::string& error() const { return error_; }
    /// May run on several threads.
    Hit cast(const Ray& ray) const;

  private:
    struct Scene;
    std::unique_ptr<Scene> scene_;
    std::string error_{};
};

}  // namespace host::render
