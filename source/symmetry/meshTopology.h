#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// Connectivity of a polygon mesh as plain numbers, and the walk over it that pairs mirrored vertices.
///
/// No host types: everything here works on what was gathered once, so it may run on any thread.

/// A read-only run of numbers inside somebody else's array.
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

/// One list of numbers per item, all in two arrays: list i is values[offsets[i]] .. values[offsets[i + 1]
/// - 1].
struct IndexLists {
    std::vector<int> offsets{0};
    std::vector<int> values;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    IndexRange operator[](int item) const {
        const auto at = static_cast<std::size_t>(item);
        return {values.data() + offsets[at], values.data() + offsets[at + 1]};
    }
    /// Ends the list that was appended to `values`.
    void endList() {
        // Named, to be appended in place.
        const auto end = static_cast<int>(values.size());
        offsets.push_back(end);
    }
};

using EdgeEnds = std::array<int, 2>;

/// What a host tells about a mesh, in the host's order.
struct MeshConnectivity {
    int vertexCount = 0;
    IndexLists faceVertices;     ///< per face its corners
    IndexLists faceEdges;        ///< per face its edges; edge k usually joins corner k and corner k + 1
    std::vector<EdgeEnds> ends;  ///< per edge its vertices
    IndexLists edgeFaces;  ///< per edge its faces: one on a border, more than two where it is not manifold
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

    /// What the walk reads of a face, one entry per edge.
    struct Corner {
        int vertex;      ///< where edge k begins; of use in a plain ring only
        int faceAcross;  ///< beyond edge k: the first of the edge's faces that is another one, -1 on a border
    };
    const Corner* corners(int face) const {
        return corners_.data() + connectivity_.faceEdges.offsets[static_cast<std::size_t>(face)];
    }
    /// Whether the corners of a face are all different and its edge k joins corner k and corner k + 1.
    bool isRing(int face) const { return isRing_[static_cast<std::size_t>(face)] != 0; }

  private:
    MeshConnectivity connectivity_;
    std::vector<Corner> corners_;  // one per entry of faceEdges
    std::vector<char> isRing_;
};

/// The pieces of a mesh, numbered by their lowest face. Faces are in one piece when a chain of shared edges
/// joins them; a shared vertex alone does not join.
struct Shells {
    std::vector<int> shellOfFace;
    IndexLists faces;  ///< per shell, ascending

    int count() const { return faces.size(); }
    /// Number of faces of the shell that holds a face.
    int faceCountAt(int face) const { return faces[shellOfFace[static_cast<std::size_t>(face)]].size(); }
    /// Lowest face of the shell that holds a face.
    int firstFaceAt(int face) const { return faces[shellOfFace[static_cast<std::size_t>(face)]][0]; }
};

/// Practically linear cost.
Shells findShells(const MeshTopology& topology);

/// One edge of a face as the walk around the face meets it.
struct RingEdge {
    int position = 0;  ///< among the edges of the face
    int first = -1;
    int second = -1;
};

/// Puts the edges of a face in the order in which one goes around it from the edge {a, b} in the direction
/// from a to b, for faces of any kind: where several edges could follow, the last in the face's order does.
///
/// An entry edge that the face does not have is left out and the others follow from b on; edges that cannot
/// be reached do not appear. Quadratic in the number of edges.
/// @param ends  per edge of the face its vertices
std::vector<RingEdge> orderFaceEdges(std::vector<EdgeEnds> ends, int a, int b);

/// Where one pass begins: a face, and an edge of it with its direction.
struct WalkStart {
    int face = -1;
    int first = -1;
    int second = -1;
};

/// Walks over shells face by face, breadth first. The orders that two walks give for the two halves of a
/// symmetric shell name mirrored vertices at the same position.
///
/// Keeps its marks from walk to walk, so a walk costs what its shell has, not what the mesh has. For use by
/// one thread at a time; the topology may be shared and must outlive the walker.
class ShellWalker {
  public:
    explicit ShellWalker(const MeshTopology& topology);

    /// @param faceCount  number of faces to visit
    /// @return false when the walk ran out of faces before it had visited so many
    bool walk(const WalkStart& start, int faceCount);

    /// The vertices in the order in which the last walk met them, each once.
    IndexRange order() const { return {order_.data(), order_.data() + orderCount_}; }

  private:
    void visitFace(const WalkStart& entry);
    bool visitRing(const WalkStart& entry);
    void meet(int vertex);
    void cross(int faceAcross, int first, int second);

    const MeshTopology& topology_;
    // A mark holds the number of the walk that met the item last. That of face -1, which stands beyond
    // every border, comes first.
    std::vector<unsigned int> vertexMarks_;
    std::vector<unsigned int> faceMarks_;
    unsigned int walk_ = 0;
    // Both have room for all vertices or faces and one entry over: an entry is written first and counted if
    // it is new, because a branch here is one that no processor can foresee.
    std::vector<int> order_;
    std::vector<WalkStart> queue_;
    std::size_t orderCount_ = 0;
    std::size_t queueCount_ = 0;
};
