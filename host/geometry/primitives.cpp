#include "geometry/primitives.h"

#include <algorithm>
#include <cassert>
#include <initializer_list>
#include <utility>

namespace host::geometry {

namespace {

/// Collects points, edges and faces in the order in which a primitive numbers them.
class MeshBuilder {
  public:
    void addPoint(double x, double y, double z) {
        for (double value : {x, y, z})
            points_.push_back(static_cast<float>(value));
    }
    void addEdge(int a, int b) { edges_.push_back({a, b}); }
    void addFace(std::initializer_list<int> corners) {
        faceCounts_.push_back(static_cast<int>(corners.size()));
        faceVertices_.insert(faceVertices_.end(), corners);
    }

    Mesh build() {
        const int vertexCount = static_cast<int>(points_.size() / 3);
        TopologyResult result =
            Topology::fromEdges(vertexCount, std::move(edges_), faceCounts_, std::move(faceVertices_));
        assert(result.ok());
        return {std::move(result.topology), std::move(points_)};
    }

  private:
    std::vector<float> points_;
    std::vector<Edge> edges_;
    std::vector<int> faceCounts_;
    std::vector<int> faceVertices_;
};

/// The edges along closed rings of `around` vertices each. Ring r begins at vertex r * around.
void addRingEdges(MeshBuilder& builder, int rings, int around) {
    for (int ring = 0; ring < rings; ++ring) {
        for (int i = 0; i < around; ++i) {
            builder.addEdge(ring * around + i, ring * around + (i + 1) % around);
        }
    }
}

/// A cube's surface: a belt of rows around the x axis (front, top, back, bottom), and the two sides inside
/// it.
class CubeGrid {
  public:
    explicit CubeGrid(const CubeOptions& options)
        : options_(options),
          nx_(std::max(1, options.subdivisionsX)),
          ny_(std::max(1, options.subdivisionsY)),
          nz_(std::max(1, options.subdivisionsZ)),
          rows_(2 * (ny_ + nz_)) {}

    Mesh build() {
        addPoints();
        addEdges();
        addFaces();
        return builder_.build();
    }

  private:
    int belt(int row, int column) const { return (row % rows_) * (nx_ + 1) + column; }

    /// Vertex on a side, `up` of ny rows from the bottom, `back` of nz columns from the front. At the border
    /// of the side it is on the belt. Otherwise it is in the side's own block, which the left side fills from
    /// the back.
    int side(bool right, int up, int back) const {
        const int column = right ? nx_ : 0;
        if (back == 0) return belt(up, column);
        if (up == ny_) return belt(ny_ + back, column);
        if (back == nz_) return belt(2 * ny_ + nz_ - up, column);
        if (up == 0) return belt(rows_ - back, column);
        const int block = rows_ * (nx_ + 1) + (right ? 0 : (ny_ - 1) * (nz_ - 1));
        return block + (up - 1) * (nz_ - 1) + (right ? back : nz_ - back) - 1;
    }

    void addPoint(int column, double up, double back) {
        builder_.addPoint(options_.width * (static_cast<double>(column) / nx_ - 0.5),
                          options_.height * (up / ny_ - 0.5), options_.depth * (0.5 - back / nz_));
    }

    void addPoints() {
        for (int row = 0; row < rows_; ++row) {
            const int onTop = row - ny_;
            const int onBack = onTop - nz_;
            const int onBottom = onBack - ny_;
            const int up = onTop <= 0 ? row : (onBack <= 0 ? ny_ : std::max(0, ny_ - onBack));
            const int back = onTop <= 0 ? 0 : (onBack <= 0 ? onTop : nz_ - std::max(0, onBottom));
            for (int column = 0; column <= nx_; ++column)
                addPoint(column, up, back);
        }
        for (bool right : {true, false}) {
            for (int up = 1; up < ny_; ++up) {
                for (int i = 1; i < nz_; ++i)
                    addPoint(right ? nx_ : 0, up, right ? i : nz_ - i);
            }
        }
    }

    void addEdges() {
        for (int row = 0; row < rows_; ++row) {
            for (int i = 0; i < nx_; ++i)
                builder_.addEdge(belt(row, i), belt(row, i + 1));
        }
        for (int row = 0; row < rows_; ++row) {
            for (int i = 0; i <= nx_; ++i)
                builder_.addEdge(belt(row, i), belt(row + 1, i));
        }
        for (bool right : {true, false}) {
            for (int up = 1; up < ny_; ++up) {
                for (int i = 0; i < nz_; ++i) {
                    builder_.addEdge(sideFrom(right, up, i), sideFrom(right, up, i + 1));
                }
            }
            for (int up = 0; up < ny_; ++up) {
                for (int i = 1; i < nz_; ++i) {
                    builder_.addEdge(sideFrom(right, up, i), sideFrom(right, up + 1, i));
                }
            }
        }
    }

    void addFaces() {
        for (int row = 0; row < rows_; ++row) {
            for (int i = 0; i < nx_; ++i) {
                builder_.addFace({belt(row, i), belt(row, i + 1), belt(row + 1, i + 1), belt(row + 1, i)});
            }
        }
        for (bool right : {true, false}) {
            for (int up = 0; up < ny_; ++up) {
                for (int i = 0; i < nz_; ++i) {
                    builder_.addFace({sideFrom(right, up, i), sideFrom(right, up, i + 1),
                                      sideFrom(right, up + 1, i + 1), sideFrom(right, up + 1, i)});
                }
            }
        }
    }

    /// Like side(), but counted from the column where the side's faces begin: at the front on the right side,
    /// at the back on the left one.
    int sideFrom(bool right, int up, int i) const { return side(right, up, right ? i : nz_ - i); }

    const CubeOptions& options_;
    int nx_;
    int ny_;
    int nz_;
    int rows_;
    MeshBuilder builder_;
};

}  // namespace

Mesh makeCube(const CubeOptions& options) {
    return CubeGrid(options).build();
}

Mesh makeSphere(const SphereOptions& options) {
    const int around = std::max(3, options.subdivisionsAxis);
    const int rings = std::max(2, options.subdivisionsHeight) - 1;
    const int south = rings * around;
    const int north = south + 1;
    MeshBuilder builder;
    for (int ring = 1; ring <= rings; ++ring) {
        const double latitude = kPi * (static_cast<double>(ring) / (rings + 1) - 0.5);
        const double ringRadius = options.radius * std::cos(latitude);
        for (int i = 1; i <= around; ++i) {
            const double angle = 2.0 * kPi * i / around;
            builder.addPoint(ringRadius * std::cos(angle), options.radius * std::sin(latitude),
                             -ringRadius * std::sin(angle));
        }
    }
    builder.addPoint(0.0, -options.radius, 0.0);
    builder.addPoint(0.0, options.radius, 0.0);

    addRingEdges(builder, rings, around);
    for (int i = 0; i < south - around; ++i)
        builder.addEdge(i, i + around);
    for (int i = 0; i < around; ++i)
        builder.addEdge(south, i);
    for (int i = 0; i < around; ++i)
        builder.addEdge(south - around + i, north);

    for (int ring = 0; ring + 1 < rings; ++ring) {
        for (int i = 0; i < around; ++i) {
            const int here = ring * around + i;
            const int next = ring * around + (i + 1) % around;
            builder.addFace({here, next, next + around, here + around});
        }
    }
    for (int i = 0; i < around; ++i)
        builder.addFace({(i + 1) % around, i, south});
    for (int i = 0; i < around; ++i) {
        builder.addFace({south - around + i, south - around + (i + 1) % around, north});
    }
    return builder.build();
}

Mesh makePlane(const PlaneOptions& options) {
    const int columns = std::max(1, options.subdivisionsWidth);
    const int rows = std::max(1, options.subdivisionsHeight);
    const auto at = [columns](int row, int column) { return row * (columns + 1) + column; };
    MeshBuilder builder;
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            builder.addPoint(options.width * (static_cast<double>(column) / columns - 0.5), 0.0,
                             options.height * (0.5 - static_cast<double>(row) / rows));
        }
    }
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            if (column < columns) builder.addEdge(at(row, column), at(row, column + 1));
            if (row < rows) builder.addEdge(at(row, column), at(row + 1, column));
        }
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            builder.addFace(
                {at(row, column), at(row, column + 1), at(row + 1, column + 1), at(row + 1, column)});
        }
    }
    return builder.build();
}

Mesh makeTorus(const TorusOptions& options) {
    const int around = std::max(3, options.subdivisionsAxis);
    const int rings = std::max(3, options.subdivisionsHeight);
    const int count = around * rings;
    MeshBuilder builder;
    for (int ring = 0; ring < rings; ++ring) {
        const double section = options.twist + kPi - 2.0 * kPi * ring / rings;
        const double ringRadius = options.radius + options.sectionRadius * std::cos(section);
        for (int i = 1; i <= around; ++i) {
            const double angle = 2.0 * kPi * i / around;
            builder.addPoint(ringRadius * std::cos(angle), options.sectionRadius * std::sin(section),
                             -ringRadius * std::sin(angle));
        }
    }
    addRingEdges(builder, rings, around);
    for (int i = 0; i < count; ++i)
        builder.addEdge(i, (i + around) % count);
    for (int ring = 0; ring < rings; ++ring) {
        for (int i = 0; i < around; ++i) {
            const int here = ring * around + i;
            const int next = ring * around + (i + 1) % around;
            builder.addFace({next, here, (here + around) % count, (next + around) % count});
        }
    }
    return builder.build();
}

}  // namespace host::geometry
