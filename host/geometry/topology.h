#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace host::geometry {

/// A read-only run of ints inside somebody else's array; valid as long as that array.
class IntSpan {
  public:
    IntSpan() = default;
    IntSpan(const int* first, int count) : first_(first), count_(count) {}
    IntSpan(const std::vector<int>& values)
        : first_(values.data()), count_(static_cast<int>(values.size())) {}

    const int* begin() const { return first_; }
    const int* end() const { return first_ + count_; }
    const int* data() const { return first_; }
    int size() const { return count_; }
    bool empty() const { return count_ == 0; }
    int operator[](int i) const { return first_[i]; }

  private:
    const int* first_ = nullptr;
    int count_ = 0;
};

/// One list of ints per item in two flat arrays: list i is values[offsets[i] .. offsets[i + 1]).
struct IntLists {
    std::vector<int> offsets{0};
    std::vector<int> values;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    IntSpan operator[](int i) const { return {values.data() + offsets[i], offsets[i + 1] - offsets[i]}; }
};

/// The pieces of a mesh. Two faces are in one piece when a chain of shared edges joins them; a shared vertex
/// alone does not join. Pieces are numbered by their lowest face. Vertices without a face belong to no piece.
struct Shells {
    std::vector<int> shellOfFace;
    IntLists faces;     ///< per shell, ascending
    IntLists vertices;  ///< per shell, ascending; a vertex that two shells touch stands in both

    int count() const { return faces.size(); }
};

using Edge = std::array<int, 2>;

class Topology;
using TopologyPtr = std::shared_ptr<const Topology>;

/// A topology, or why there is none.
struct TopologyResult {
    TopologyPtr topology;
    std::string error;

    bool ok() const { return topology != nullptr; }
};

/// Vertices, edges and face corners are at most this many each; their numbers and twice as many fit an int.
constexpr int kMostComponents = 1 << 30;

/// Connectivity of a polygon mesh: vertices, edges and faces as numbers, in flat arrays that never change.
///
/// A face has three corners or more. Edge k of a face joins its corner k and corner k + 1. Adjacency is
/// derived when it is first asked for, at a cost linear in the mesh, and kept; every const function may run
/// on several threads. An item is named by its number, 0 <= number < count; other numbers are the caller's
/// fault and not checked.
class Topology {
  public:
    /// No vertex, edge or face.
    Topology();
    Topology(const Topology&) = delete;
    Topology& operator=(const Topology&) = delete;

    /// Topology of faces given by corner counts and a flat list of corners.
    ///
    /// Faces are walked in order and corners in order; an edge gets the next number, and its direction, where
    /// it first appears. Fails on a face with fewer than three corners, a corner that is no vertex, the same
    /// vertex at two neighbouring corners, a corner list that is shorter or longer than the counts say, and
    /// more than kMostComponents. Linear cost.
    static TopologyResult fromFaces(int vertexCount, const std::vector<int>& faceCounts,
                                    std::vector<int> faceVertices);

    /// As fromFaces with edges whose numbers and directions are given; edges without a face may be among
    /// them.
    ///
    /// Fails also when a face needs an edge that is not in the list, or the list has a pair of vertices
    /// twice.
    static TopologyResult fromEdges(int vertexCount, std::vector<Edge> edges,
                                    const std::vector<int>& faceCounts, std::vector<int> faceVertices);

    /// Several topologies side by side: the vertices, edges and faces of each after those of the one before.
    /// Fails when there are more than kMostComponents.
    static TopologyResult unite(const std::vector<TopologyPtr>& parts);

    int vertexCount() const { return vertexCount_; }
    int edgeCount() const { return static_cast<int>(edges_.size()); }
    int faceCount() const { return static_cast<int>(faceOffsets_.size()) - 1; }
    /// Number of corners of all faces together.
    int cornerCount() const { return static_cast<int>(faceVertices_.size()); }

    /// Vertex numbers of an edge in its stored direction.
    const Edge& edge(int edge) const { return edges_[edge]; }
    const std::vector<Edge>& edges() const { return edges_; }

    /// Corner c of face f is entry faceOffsets()[f] + c of faceVertices() and faceEdges().
    const std::vector<int>& faceOffsets() const { return faceOffsets_; }
    const std::vector<int>& faceVertices() const { return faceVertices_; }
    const std::vector<int>& faceEdges() const { return faceEdges_; }
    int faceSize(int face) const { return faceOffsets_[face + 1] - faceOffsets_[face]; }
    IntSpan faceVertices(int face) const {
        return {faceVertices_.data() + faceOffsets_[face], faceSize(face)};
    }
    IntSpan faceEdges(int face) const { return {faceEdges_.data() + faceOffsets_[face], faceSize(face)}; }
    /// True when the face walks its edge from corner `corner` on against the edge's stored direction.
    bool isEdgeReversed(int face, int corner) const {
        const int at = faceOffsets_[face] + corner;
        return edges_[faceEdges_[at]][0] != faceVertices_[at];
    }

    /// Faces on an edge, each once, in the order in which they use it: one on a border, two inside, none or
    /// more than two elsewhere.
    IntSpan edgeFaces(int edge) const { return edgeFaces()[edge]; }
    const IntLists& edgeFaces() const;

    /// Edges at a vertex, ascending.
    IntSpan vertexEdges(int vertex) const { return vertexEdges()[vertex]; }
    const IntLists& vertexEdges() const;

    /// Other ends of vertexEdges(vertex), entry by entry.
    IntSpan vertexNeighbours(int vertex) const { return vertexNeighbours()[vertex]; }
    const IntLists& vertexNeighbours() const;

    /// Faces at a vertex, ascending, each once.
    IntSpan vertexFaces(int vertex) const { return vertexFaces()[vertex]; }
    const IntLists& vertexFaces() const;

    /// Faces that share an edge with a face, each once, in the order of the face's edges. Not kept: where n
    /// faces share an edge all lists together have n * n entries. To walk over a mesh use edgeFaces.
    std::vector<int> faceNeighbours(int face) const;

    const Shells& shells() const;

    /// Number of the edge that joins two vertices, -1 when none does. Costs the edges at `a`.
    int findEdge(int a, int b) const;

    /// Same vertex count, edges in the same order and direction, and same faces.
    bool isSameAs(const Topology& other) const;

  private:
    template <typename T>
    struct Lazy {
        mutable std::once_flag once;
        mutable T value;
    };

    int vertexCount_ = 0;
    std::vector<Edge> edges_;
    std::vector<int> faceOffsets_{0};
    std::vector<int> faceVertices_;
    std::vector<int> faceEdges_;

    Lazy<IntLists> lazyEdgeFaces_;
    Lazy<IntLists> lazyVertexEdges_;
    Lazy<IntLists> lazyVertexNeighbours_;
    Lazy<IntLists> lazyVertexFaces_;
    Lazy<Shells> lazyShells_;
};

/// Why these face lists make no topology, empty when they do; see Topology::fromFaces.
std::string validateFaces(int vertexCount, const std::vector<int>& faceCounts,
                          const std::vector<int>& faceVertices);

}  // namespace host::geometry
