#include "symmetry/meshTopology.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Without branches: the processor could not predict the direction of the edge.
bool joins(const EdgeEnds& ends, int a, int b) {
    const bool isForward = ((ends[0] ^ a) | (ends[1] ^ b)) == 0;
    const bool isBackward = ((ends[0] ^ b) | (ends[1] ^ a)) == 0;
    return isForward || isBackward;
}

/// Whether all numbers of a list are different.
bool areDifferent(const IndexRange& values) {
    constexpr int kFew = 8;
    if (values.size() > kFew) {
        std::vector<int> sorted(values.begin(), values.end());
        std::sort(sorted.begin(), sorted.end());
        return std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
    }
    for (int k = 1; k < values.size(); ++k) {
        for (int j = 0; j < k; ++j) {
            if (values[j] == values[k]) return false;
        }
    }
    return true;
}

bool isPlainRing(const MeshConnectivity& mesh, int face) {
    const IndexRange vertices = mesh.faceVertices[face];
    const IndexRange edges = mesh.faceEdges[face];
    const int size = edges.size();
    if (size < 3 || vertices.size() != size) return false;
    for (int k = 0; k < size; ++k) {
        if (!joins(mesh.ends[at(edges[k])], vertices[k], vertices[k + 1 < size ? k + 1 : 0])) return false;
    }
    return areDifferent(vertices);
}

/// The first face of an edge other than `face`, -1 if there is none.
int faceAcross(const IndexRange& faces, int face) {
    if (faces.size() == 2) {
        // Without a branch, which would be unpredictable. The result is the face itself if it is on both
        // sides of the edge.
        const int other = faces[0] ^ faces[1] ^ face;
        return other == face ? -1 : other;
    }
    const int* other = std::find_if(faces.begin(), faces.end(), [face](int f) { return f != face; });
    return other == faces.end() ? -1 : *other;
}

/// The lowest face of the set that contains a face. Shortens the path for later calls.
int rootOf(std::vector<int>& parents, int face) {
    while (parents[at(face)] != face) {
        parents[at(face)] = parents[at(parents[at(face)])];
        face = parents[at(face)];
    }
    return face;
}

}  // namespace

MeshTopology::MeshTopology(MeshConnectivity connectivity)
    : connectivity_(std::move(connectivity)),
      corners_(connectivity_.faceEdges.values.size()),
      isRing_(at(connectivity_.faceEdges.size())) {
    Corner* corner = corners_.data();
    for (int face = 0; face < faceCount(); ++face) {
        const bool isRing = isPlainRing(connectivity_, face);
        isRing_[at(face)] = isRing ? 1 : 0;
        const IndexRange vertices = faceVertices(face);
        const IndexRange edges = faceEdges(face);
        for (int k = 0; k < edges.size(); ++k)
            *corner++ = {isRing ? vertices[k] : -1, faceAcross(connectivity_.edgeFaces[edges[k]], face)};
    }
}

Shells findShells(const MeshTopology& topology) {
    const int faceCount = topology.faceCount();
    std::vector<int> parents(at(faceCount));
    std::iota(parents.begin(), parents.end(), 0);
    const IndexLists& edgeFaces = topology.edgeFaces();
    for (int edge = 0; edge < edgeFaces.size(); ++edge) {
        const IndexRange faces = edgeFaces[edge];
        for (int k = 1; k < faces.size(); ++k) {
            const int a = rootOf(parents, faces[k - 1]);
            const int b = rootOf(parents, faces[k]);
            parents[at(std::max(a, b))] = std::min(a, b);
        }
    }
    Shells shells;
    shells.shellOfFace.resize(at(faceCount));
    std::vector<int> sizes;
    for (int face = 0; face < faceCount; ++face) {
        // A root is the lowest face of its set, so its shell is known before the other faces of the set are
        // visited.
        const int root = rootOf(parents, face);
        if (root == face) sizes.push_back(0);
        const int shell = root == face ? static_cast<int>(sizes.size()) - 1 : shells.shellOfFace[at(root)];
        shells.shellOfFace[at(face)] = shell;
        ++sizes[at(shell)];
    }
    std::vector<int>& offsets = shells.faces.offsets;
    for (const int size : sizes)
        offsets.push_back(offsets.back() + size);
    std::vector<int> next(offsets.begin(), offsets.end() - 1);
    shells.faces.values.resize(at(faceCount));
    for (int face = 0; face < faceCount; ++face)
        shells.faces.values[at(next[at(shells.shellOfFace[at(face)])]++)] = face;
    return shells;
}

std::vector<RingEdge> orderFaceEdges(std::vector<EdgeEnds> ends, int a, int b) {
    std::vector<RingEdge> ring;
    std::vector<int> remaining(ends.size());
    std::iota(remaining.begin(), remaining.end(), 0);
    for (std::size_t sweep = 0; sweep < ends.size(); ++sweep) {
        EdgeEnds next{-1, -1};
        std::size_t kept = 0;
        for (const int position : remaining) {
            const EdgeEnds& edge = ends[at(position)];
            if (joins(edge, a, b)) {
                ring.push_back({position, a, b});
                continue;
            }
            remaining[kept++] = position;
            if (edge[0] == b) {
                next = {b, edge[1]};
            } else if (edge[1] == b) {
                next = {b, edge[0]};
            }
        }
        remaining.resize(kept);
        a = next[0];
        b = next[1];
    }
    return ring;
}

ShellWalker::ShellWalker(const MeshTopology& topology)
    : topology_(topology),
      vertexMarks_(at(topology.vertexCount()), 0U),
      faceMarks_(at(topology.faceCount()) + 1, 0U),
      order_(at(topology.vertexCount()) + 1),
      queue_(at(topology.faceCount()) + 1) {}

bool ShellWalker::walk(const WalkStart& start, int faceCount) {
    ++walk_;
    orderCount_ = 0;
    queueCount_ = 0;
    faceMarks_[0] = walk_;
    cross(start.face, start.first, start.second);
    for (std::size_t visited = 0; visited < at(faceCount); ++visited) {
        if (visited >= queueCount_) return false;
        visitFace(queue_[visited]);
    }
    return true;
}

void ShellWalker::visitFace(const WalkStart& entry) {
    if (topology_.isRing(entry.face) && visitRing(entry)) return;
    std::vector<EdgeEnds> ends;
    for (const int edge : topology_.faceEdges(entry.face))
        ends.push_back(topology_.ends(edge));
    const MeshTopology::Corner* corners = topology_.corners(entry.face);
    for (const RingEdge& edge : orderFaceEdges(std::move(ends), entry.first, entry.second)) {
        meet(edge.first);
        meet(edge.second);
        cross(corners[edge.position].faceAcross, edge.first, edge.second);
    }
}

/// Visits a plain ring as orderFaceEdges orders it, without sorting.
/// @return false if the face does not have the entry edge
bool ShellWalker::visitRing(const WalkStart& entry) {
    const MeshTopology::Corner* corners = topology_.corners(entry.face);
    const int last = topology_.faceEdges(entry.face).size() - 1;
    const auto after = [last](int corner) { return corner < last ? corner + 1 : 0; };
    const auto before = [last](int corner) { return corner > 0 ? corner - 1 : last; };
    int corner = 0;
    while (corners[corner].vertex != entry.first) {
        if (++corner > last) return false;
    }
    const bool isForward = corners[after(corner)].vertex == entry.second;
    if (!isForward && corners[before(corner)].vertex != entry.second) return false;
    // Of each edge only the second vertex can be new: the first is the second of the edge before.
    meet(entry.first);
    for (int k = 0; k <= last; ++k) {
        const int next = isForward ? after(corner) : before(corner);
        meet(corners[next].vertex);
        cross(corners[isForward ? corner : next].faceAcross, corners[corner].vertex, corners[next].vertex);
        corner = next;
    }
    return true;
}

void ShellWalker::meet(int vertex) {
    order_[orderCount_] = vertex;
    unsigned int& mark = vertexMarks_[at(vertex)];
    orderCount_ += mark == walk_ ? 0 : 1;
    mark = walk_;
}

void ShellWalker::cross(int faceAcross, int first, int second) {
    queue_[queueCount_] = {faceAcross, first, second};
    unsigned int& mark = faceMarks_[at(faceAcross + 1)];
    queueCount_ += mark == walk_ ? 0 : 1;
    mark = walk_;
}
