#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// No host types: everything works on data that was gathered before, so it can run on any thread.

/// A read-only range of numbers in an array that somebody else owns.
class IndexRange {
  public:
    IndexRange(const int* first, const int* last) : first_(first), last_(last) {}

    const int* begin() const { return first_; }
    const int* end() const { return last_; }
    int size() const { return static_cast<int>(last_ - first_); }
    int operator[](int position) const { return first_[position]; }

  private:
    const int* first_;
    const int* last_;
};

/// One list of numbers per item, stored in two arrays. List i begins at values[offsets[i]] and ends before
/// values[offsets[i + 1]].
struct IndexLists {
    std::vector<int> offsets{0};
    std::vector<int> values;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    IndexRange operator[](int item) const {
        const auto at = static_cast<std::size_t>(item);
        return {values.data() + offsets[at], values.data() + offsets[at + 1]};
    }
    /// Ends the list whose numbers were appended to `values`.
    void endList() {
        // A named value is appended in place, a temporary by a call.
        const auto end = static_cast<int>(values.size());
        offsets.push_back(end);
    }
};

using EdgeEnds = std::array<int, 2>;

/// The connectivity of a mesh as the host gives it, in the host's order.
struct MeshConnectivity {
    int vertexCount = 0;
    IndexLists faceVertices;     ///< per face: its corners
    IndexLists faceEdges;        ///< per face: its edges; edge k usually joins corner k and corner k + 1
    std::vector<EdgeEnds> ends;  ///< per edge: its two vertices
    IndexLists edgeFaces;        ///< per edge: its faces; one on a border, more than two if not manifold
};

/// Connectivity prepared for walking; never changes.
class MeshTopology {
  public:
    /// Linear cost.
    explicit MeshTopology(MeshConnectivity connectivity);

    int vertexCount() const { return connectivity_.vertexCount; }
    int faceCount() const { return connectivity_.faceEdges.size(); }
    IndexRange faceVertices(int face) const { return connectivity_.faceVertices[face]; }
    IndexRange faceEdges(int face) const { return connectivity_.faceEdges[face]; }
    const EdgeEnds& ends(int edge) const { return connectivity_.ends[static_cast<std::size_t>(edge)]; }
    const IndexLists& edgeFaces() const { return connectivity_.edgeFaces; }

    /// What the walk reads of a face. One entry per edge.
    struct Corner {
        int vertex;      ///< where edge k begins; -1 if the face is not a plain ring
        int faceAcross;  ///< the first other face at edge k, -1 on a border
    };
    const Corner* corners(int face) const {
        return corners_.data() + connectivity_.faceEdges.offsets[static_cast<std::size_t>(face)];
    }
    /// Whether a face is a plain ring: it has at least three corners, all different, and its edge k joins
    /// corner k and corner k + 1.
    bool isRing(int face) const { return isRing_[static_cast<std::size_t>(face)] != 0; }

  private:
    MeshConnectivity connectivity_;
    std::vector<Corner> corners_;  // one per entry of faceEdges
    std::vector<char> isRing_;
};

/// The pieces of a mesh, in the order of their lowest face. Two faces are in one piece if a chain of shared
/// edges connects them; a shared vertex alone does not.
struct Shells {
    std::vector<int> shellOfFace;
    IndexLists faces;  ///< per shell: its faces, ascending

    int count() const { return faces.size(); }
    /// Number of faces of the shell that contains a face.
    int faceCountAt(int face) const { return faces[shellOfFace[static_cast<std::size_t>(face)]].size(); }
    /// Lowest face of the shell that contains a face.
    int firstFaceAt(int face) const { return faces[shellOfFace[static_cast<std::size_t>(face)]][0]; }
};

/// Cost is practically linear.
Shells findShells(const MeshTopology& topology);

/// One edge of a face, in the direction in which the walk around the face meets it.
struct RingEdge {
    int position = 0;  ///< among the edges of the face
    int first = -1;
    int second = -1;
};

/// Sorts the edges of a face in the order of a walk around it, which starts at the edge {a, b} in the
/// direction from a to b. Works for faces of any kind: if several edges could follow, the last in the face's
/// order does.
///
/// If the face does not have the edge {a, b}, the others follow from b on. Edges that the walk cannot reach
/// are left out. Cost is quadratic in the number of edges.
/// @param ends  per edge of the face: its two vertices
std::vector<RingEdge> orderFaceEdges(std::vector<EdgeEnds> ends, int a, int b);

/// Where one pass begins: a face, and an edge of it with its direction.
struct WalkStart {
    int face = -1;
    int first = -1;
    int second = -1;
};

/// Walks over shells face by face, breadth first. Two walks over the two halves of a symmetric shell give
/// orders in which mirrored vertices have the same position.
///
/// The marks are kept between walks, so that the cost of a walk depends on the shell, not on the mesh. For
/// one thread at a time. The topology may be shared, and must outlive the walker.
class ShellWalker {
  public:
    explicit ShellWalker(const MeshTopology& topology);

    /// @param faceCount  number of faces to visit
    /// @return false if the walk found fewer faces
    bool walk(const WalkStart& start, int faceCount);

    /// The vertices in the order in which the last walk met them, each once. Valid until the next walk.
    IndexRange order() const { return {order_.data(), order_.data() + orderCount_}; }

  private:
    void visitFace(const WalkStart& entry);
    bool visitRing(const WalkStart& entry);
    void meet(int vertex);
    void cross(int faceAcross, int first, int second);

    const MeshTopology& topology_;
    // A mark holds the number of the last walk that met the item. The first face mark is for face -1, which
    // means no face beyond a border.
    std::vector<unsigned int> vertexMarks_;
    std::vector<unsigned int> faceMarks_;
    unsigned int walk_ = 0;
    // Both have room for all vertices or faces and one more entry. An entry is always written, and counted
    // only if it is new: a branch here would be unpredictable for the processor.
    std::vector<int> order_;
    std::vector<WalkStart> queue_;
    std::size_t orderCount_ = 0;
    std::size_t queueCount_ = 0;
};
