#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace host::geometry {

/// A read-only run of ints in an array that belongs to someone else; valid as long as that array.
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

/// One list of ints per item, in two flat arrays: list i is values[offsets[i] .. offsets[i + 1]).
struct IntLists {
    std::vector<int> offsets{0};
    std::vector<int> values;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    IntSpan operator[](int i) const { return {values.data() + offsets[i], offsets[i + 1] - offsets[i]}; }
};

/// The pieces of a mesh. Two faces are in one piece if a chain of shared edges joins them. A shared vertex
/// alone does not join them. Pieces are numbered by their lowest face. Vertices without a face belong to no
/// piece.
struct Shells {
    std::vector<int> shellOfFace;
    IntLists faces;     ///< per shell, ascending
    IntLists vertices;  ///< per shell, ascending; a vertex that two shells touch is in both

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

/// The largest number of vertices, of edges and of face corners. Twice this number still fits an int.
constexpr int kMostComponents = 1 << 30;

/// Connectivity of a polygon mesh: vertices, edges and faces as numbers, in flat arrays that never change.
///
/// A face has three corners or more. Edge k of a face joins its corners k and k + 1. Adjacency is computed
/// when it is first asked for, at a cost linear in the mesh, and kept. Every const function may run on
/// several threads. An item is named by its number, 0 <= number < count. Other numbers are the caller's fault
/// and are not checked.
class Topology {
  public:
    /// A topology without vertices, edges and faces.
    Topology();
    Topology(const Topology&) = delete;
    Topology& operator=(const Topology&) = delete;

    /// Topology of faces, given by corner counts and a flat list of corners.
    ///
    /// Faces and their corners are visited in order. An edge gets the next number, and its direction, where
    /// it first appears. Fails if a face has fewer than three corners, a corner is not a vertex, neighbouring
    /// corners have the same vertex, the corner list is shorter or longer than the counts say, or there are
    /// more than kMostComponents. Linear cost on surfaces. At worst, where every vertex is joined to every
    /// other, it is the number of edges to the power 1.5.
    static TopologyResult fromFaces(int vertexCount, const std::vector<int>& faceCounts,
                                    std::vector<int> faceVertices);

    /// Like fromFaces, with edges whose numbers and directions are given. Edges without a face are allowed.
    ///
    /// Also fails if a face needs an edge that is not in the list, or if the list has a pair of vertices
    /// twice.
    static TopologyResult fromEdges(int vertexCount, std::vector<Edge> edges,
                                    const std::vector<int>& faceCounts, std::vector<int> faceVertices);

    /// Several topologies side by side: the vertices, edges and faces of each follow those of the one before.
    /// Fails if there are more than kMostComponents.
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
    /// Whether the face's edge from corner `corner` to the next one runs against the edge's stored direction.
    bool isEdgeReversed(int face, int corner) const {
        const int at = faceOffsets_[face] + corner;
        return edges_[faceEdges_[at]][0] != faceVertices_[at];
    }

    /// Faces on an edge, each once, in the order in which they use it. A border edge has one, an inner edge
    /// two. An edge may also have none or more than two.
    IntSpan edgeFaces(int edge) const { return edgeFaces()[edge]; }
    const IntLists& edgeFaces() const;

    /// Edges at a vertex, ascending.
    IntSpan vertexEdges(int vertex) const { return vertexEdges()[vertex]; }
    const IntLists& vertexEdges() const;

    /// The other ends of vertexEdges(vertex), entry by entry.
    IntSpan vertexNeighbours(int vertex) const { return vertexNeighbours()[vertex]; }
    const IntLists& vertexNeighbours() const;

    /// Faces at a vertex, ascending, each once.
    IntSpan vertexFaces(int vertex) const { return vertexFaces()[vertex]; }
    const IntLists& vertexFaces() const;

    /// Faces that share an edge with a face, each once, in the order of the face's edges. Not kept: if n
    /// faces share an edge, all lists together have n * n entries. To walk over a mesh, use edgeFaces.
    std::vector<int> faceNeighbours(int face) const;

    const Shells& shells() const;

    /// Number of the edge that joins two vertices; -1 if none does. Costs as much as `a` has edges.
    int findEdge(int a, int b) const;

    /// Whether vertex counts are equal, edges have the same order and direction, and faces are the same.
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

/// Why these face lists do not make a topology; empty if they do. See Topology::fromFaces.
std::string validateFaces(int vertexCount, const std::vector<int>& faceCounts,
                          const std::vector<int>& faceVertices);

}  // namespace host::geometry
