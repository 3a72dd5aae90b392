#include "geometry/triangulate.h"

#include <numeric>
#include <utility>

namespace host::geometry {

namespace {

struct Point2 {
    double x;
    double y;
};

/// Positive if a, b, c turn counter-clockwise.
double turn(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Corners of one face seen along its normal, counter-clockwise.
class FlatFace {
  public:
    void project(const Mesh& mesh, IntSpan corners, const Vec3& normal) {
        // The coordinate plane that shows most of the face. Its axes are swapped if the face would be seen
        // from behind.
        int drop = 0;
        for (int axis = 1; axis < 3; ++axis) {
            if (std::abs(normal[axis]) > std::abs(normal[drop])) drop = axis;
        }
        int u = (drop + 1) % 3;
        int v = (drop + 2) % 3;
        if (normal[drop] < 0.0) std::swap(u, v);
        points_.clear();
        for (int vertex : corners) {
            const Vec3 p = mesh.point(vertex);
            points_.push_back({p[u], p[v]});
        }
    }

    bool isConvex() const {
        const std::size_t count = points_.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (turn(points_[i], points_[(i + 1) % count], points_[(i + 2) % count]) < 0.0) return false;
        }
        return true;
    }

    /// Cuts off one ear after the other, always the first one found. emit(a, b, c) gets corner numbers.
    template <typename Emit>
    void cutEars(Emit&& emit) {
        rest_.resize(points_.size());
        std::iota(rest_.begin(), rest_.end(), 0);
        std::size_t at = 0;
        std::size_t tried = 0;
        while (rest_.size() > 3) {
            const std::size_t count = rest_.size();
            at %= count;
            // Without any ear, the face intersects itself or has no area: take the next corner, so that this
            // ends.
            if (!isEar(at) && tried < count) {
                ++at;
                ++tried;
                continue;
            }
            emit(rest_[(at + count - 1) % count], rest_[at], rest_[(at + 1) % count]);
            rest_.erase(rest_.begin() + static_cast<std::ptrdiff_t>(at));
            tried = 0;
        }
        emit(rest_[0], rest_[1], rest_[2]);
    }

  private:
    bool isEar(std::size_t at) const {
        const std::size_t count = rest_.size();
        const Point2& a = points_[rest_[(at + count - 1) % count]];
        const Point2& b = points_[rest_[at]];
        const Point2& c = points_[rest_[(at + 1) % count]];
        if (!(turn(a, b, c) > 0.0)) return false;
        for (std::size_t i = 2; i < count - 1; ++i) {
            const Point2& p = points_[rest_[(at + i) % count]];
            const bool isCorner = isAt(p, a) || isAt(p, b) || isAt(p, c);
            if (!isCorner && turn(a, b, p) >= 0.0 && turn(b, c, p) >= 0.0 && turn(c, a, p) >= 0.0)
                return false;
        }
        return true;
    }

    static bool isAt(const Point2& a, const Point2& b) { return a.x == b.x && a.y == b.y; }

    std::vector<Point2> points_;
    std::vector<int> rest_;
};

}  // namespace

Triangulation triangulate(const Mesh& mesh) {
    std::vector<int> faces(mesh.faceCount());
    std::iota(faces.begin(), faces.end(), 0);
    return triangulate(mesh, faces);
}

Triangulation triangulate(const Mesh& mesh, const std::vector<int>& faces) {
    const Topology& topology = mesh.topology();
    Triangulation result;
    result.faces = faces;
    result.offsets.reserve(faces.size() + 1);
    result.offsets.push_back(0);
    result.triangles.reserve(2 * faces.size());
    FlatFace flat;
    for (int face : faces) {
        const IntSpan corners = topology.faceVertices(face);
        const auto emit = [&](int a, int b, int c) {
            result.triangles.push_back({corners[a], corners[b], corners[c]});
        };
        bool fan = corners.size() == 3;
        if (!fan) {
            flat.project(mesh, corners, faceAreaVector(mesh, face));
            fan = flat.isConvex();
        }
        if (fan) {
            for (int corner = 2; corner < corners.size(); ++corner)
                emit(0, corner - 1, corner);
        } else {
            flat.cutEars(emit);
        }
        result.offsets.push_back(static_cast<int>(result.triangles.size()));
    }
    return result;
}

}  // namespace host::geometry
