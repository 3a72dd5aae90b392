#include "geometry/topology.h"

#include <algorithm>
#include <utility>

namespace host::geometry {

namespace {

/// Finds the number of an edge by its two vertices, in either order.
///
/// An edge stands in a list at the one of its ends that fewer pairs use, in one array in the order of the
/// vertices. So what is near in the mesh is near in memory, and a vertex with very many edges has none of
/// them in its list. A search compares at most as many edges as the less used end has. On surfaces this is
/// linear; at worst, where every vertex is joined to every other, it is the number of edges to the power 1.5.
class EdgeTable {
  public:
    /// @param edges     the edges by their numbers; must outlive the table
    /// @param eachPair  calls its argument with the two vertices of every pair to be added, each time that it
    ///                  will be added
    template <class EachPair>
    EdgeTable(const std::vector<Edge>& edges, int vertexCount, const EachPair& eachPair)
        : edges_(edges),
          uses_(static_cast<std::size_t>(vertexCount), 0),
          starts_(static_cast<std::size_t>(vertexCount) + 1, 0) {
        eachPair([this](int a, int b) {
            ++uses_[a];
            ++uses_[b];
        });
        eachPair([this](int a, int b) { ++starts_[ownerOf(a, b) + 1]; });
        for (int vertex = 0; vertex < vertexCount; ++vertex)
            starts_[vertex + 1] += starts_[vertex];
        entries_.assign(static_cast<std::size_t>(starts_.back()), -1);
    }

    /// The edge of a and b, -1 if there is none.
    int find(int a, int b) const {
        const int owner = ownerOf(a, b);
        for (int at = starts_[owner]; at < starts_[owner + 1] && entries_[at] >= 0; ++at) {
            if (joins(entries_[at], a, b)) return entries_[at];
        }
        return -1;
    }

    /// The edge of a and b. If there is none, it is `edge` from now on.
    int add(int a, int b, int edge) {
        int at = starts_[ownerOf(a, b)];
        for (; entries_[at] >= 0; ++at) {
            if (joins(entries_[at], a, b)) return entries_[at];
        }
        entries_[at] = edge;
        return edge;
    }

  private:
    bool joins(int edge, int a, int b) const {
        const auto& [first, second] = edges_[edge];
        return (first == a && second == b) || (first == b && second == a);
    }

    int ownerOf(int a, int b) const {
        return uses_[a] != uses_[b] ? (uses_[a] < uses_[b] ? a : b) : std::min(a, b);
    }

    const std::vector<Edge>& edges_;
    std::vector<int> uses_;     // per vertex: in how many pairs it is
    std::vector<int> starts_;   // per vertex: its first entry; one more for the end
    std::vector<int> entries_;  // edges; -1 where one is free
};

/// Calls visit(place of its first corner, a, b) for every side of every face.
/// @param offsets  per face: the place of its first corner; one more for the end
template <class Visit>
void forEachSide(const std::vector<int>& offsets, const std::vector<int>& corners, const Visit& visit) {
    for (std::size_t face = 0; face + 1 < offsets.size(); ++face) {
        const int last = offsets[face + 1] - 1;
        for (int at = offsets[face]; at < last; ++at)
            visit(at, corners[at], corners[at + 1]);
        visit(last, corners[last], corners[offsets[face]]);
    }
}

std::vector<int> offsetsOf(const std::vector<int>& faceCounts) {
    std::vector<int> offsets(faceCounts.size() + 1, 0);
    for (std::size_t i = 0; i < faceCounts.size(); ++i)
        offsets[i + 1] = offsets[i] + faceCounts[i];
    return offsets;
}

TopologyResult failed(std::string error) {
    return {nullptr, std::move(error)};
}

bool isTooMany(std::size_t count) {
    return count > static_cast<std::size_t>(kMostComponents);
}

std::string faceText(std::size_t face) {
    return "face " + std::to_string(face);
}

std::string unknownVertex(const std::string& what, int vertex, int vertexCount) {
    return what + " refers to vertex " + std::to_string(vertex) + ", but there are " +
           std::to_string(vertexCount) + " vertices";
}

std::string pairText(int a, int b) {
    return std::to_string(a) + " and " + std::to_string(b);
}

}  // namespace

std::string validateFaces(int vertexCount, const std::vector<int>& faceCounts,
                          const std::vector<int>& faceVertices) {
    if (vertexCount < 0) return "the vertex count " + std::to_string(vertexCount) + " is negative";
    if (vertexCount > kMostComponents) return "there are too many vertices";
    if (isTooMany(faceVertices.size()) || isTooMany(faceCounts.size()))
        return "there are too many face corners";
    std::size_t at = 0;
    for (std::size_t face = 0; face < faceCounts.size(); ++face) {
        const int count = faceCounts[face];
        if (count < 3) return faceText(face) + " has " + std::to_string(count) + " corners, fewer than 3";
        if (static_cast<std::size_t>(count) > faceVertices.size() - at) {
            return "the corner list ends within " + faceText(face);
        }
        int previous = faceVertices[at + count - 1];
        for (int corner = 0; corner < count; ++corner) {
            const int vertex = faceVertices[at + corner];
            if (vertex < 0 || vertex >= vertexCount) {
                return unknownVertex(faceText(face), vertex, vertexCount);
            }
            if (vertex == previous) {
                return faceText(face) + " has vertex " + std::to_string(vertex) +
                       " at two neighbouring corners";
            }
            previous = vertex;
        }
        at += count;
    }
    if (at != faceVertices.size()) return "the corner list is longer than the faces' corner counts";
    return {};
}

Topology::Topology() = default;

TopologyResult Topology::fromFaces(int vertexCount, const std::vector<int>& faceCounts,
                                   std::vector<int> faceVertices) {
    std::string error = validateFaces(vertexCount, faceCounts, faceVertices);
    if (!error.empty()) return failed(std::move(error));

    auto result = std::make_shared<Topology>();
    result->vertexCount_ = vertexCount;
    result->faceOffsets_ = offsetsOf(faceCounts);
    result->faceVertices_ = std::move(faceVertices);
    result->faceEdges_.resize(result->faceVertices_.size());
    result->edges_.reserve(result->faceVertices_.size() / 2 + 1);
    EdgeTable table(result->edges_, vertexCount, [&](const auto& use) {
        forEachSide(result->faceOffsets_, result->faceVertices_, [&](int, int a, int b) { use(a, b); });
    });
    forEachSide(result->faceOffsets_, result->faceVertices_, [&](int at, int a, int b) {
        const int edge = table.add(a, b, result->edgeCount());
        if (edge == result->edgeCount()) result->edges_.push_back({a, b});
        result->faceEdges_[at] = edge;
    });
    // Making room smaller copies the edges. On a closed mesh there is none to give back.
    if (result->edges_.size() < result->edges_.capacity() / 8 * 7) result->edges_.shrink_to_fit();
    return {result, {}};
}

TopologyResult Topology::fromEdges(int vertexCount, std::vector<Edge> edges,
                                   const std::vector<int>& faceCounts, std::vector<int> faceVertices) {
    std::string error = validateFaces(vertexCount, faceCounts, faceVertices);
    if (!error.empty()) return failed(std::move(error));
    if (isTooMany(edges.size())) return failed("there are too many edges");

    auto result = std::make_shared<Topology>();
    result->vertexCount_ = vertexCount;
    result->faceOffsets_ = offsetsOf(faceCounts);
    result->faceVertices_ = std::move(faceVertices);
    result->edges_ = std::move(edges);
    for (int edge = 0; edge < result->edgeCount(); ++edge) {
        const auto [a, b] = result->edges_[edge];
        const std::string what = "edge " + std::to_string(edge);
        for (int vertex : {a, b}) {
            if (vertex < 0 || vertex >= vertexCount) return failed(unknownVertex(what, vertex, vertexCount));
        }
        if (a == b) return failed(what + " has vertex " + std::to_string(a) + " at both ends");
    }
    EdgeTable table(result->edges_, vertexCount, [&](const auto& use) {
        for (const auto& [a, b] : result->edges_)
            use(a, b);
    });
    for (int edge = 0; edge < result->edgeCount(); ++edge) {
        const auto [a, b] = result->edges_[edge];
        const int known = table.add(a, b, edge);
        if (known != edge) {
            return failed("edges " + pairText(known, edge) + " join the same vertices " + pairText(a, b));
        }
    }

    result->faceEdges_.resize(result->faceVertices_.size());
    forEachSide(result->faceOffsets_, result->faceVertices_, [&](int at, int a, int b) {
        const int edge = table.find(a, b);
        if (edge < 0 && error.empty()) {
            const auto face = std::upper_bound(result->faceOffsets_.begin(), result->faceOffsets_.end(), at);
            error = faceText(static_cast<std::size_t>(face - result->faceOffsets_.begin() - 1)) +
                    " needs an edge between vertices " + pairText(a, b) + ", but there is none";
        }
        result->faceEdges_[at] = edge;
    });
    if (!error.empty()) return failed(std::move(error));
    return {result, {}};
}

TopologyResult Topology::unite(const std::vector<TopologyPtr>& parts) {
    std::size_t vertexCount = 0;
    std::size_t edgeCount = 0;
    std::size_t faceCount = 0;
    std::size_t cornerCount = 0;
    for (const TopologyPtr& part : parts) {
        vertexCount += static_cast<std::size_t>(part->vertexCount());
        edgeCount += part->edges_.size();
        faceCount += static_cast<std::size_t>(part->faceCount());
        cornerCount += part->faceVertices_.size();
    }
    if (isTooMany(vertexCount) || isTooMany(edgeCount) || isTooMany(cornerCount)) {
        return failed("the united mesh has too many components");
    }

    auto result = std::make_shared<Topology>();
    result->edges_.reserve(edgeCount);
    result->faceOffsets_.reserve(faceCount + 1);
    result->faceVertices_.reserve(cornerCount);
    result->faceEdges_.reserve(cornerCount);
    for (const TopologyPtr& part : parts) {
        const int firstVertex = result->vertexCount_;
        const int firstEdge = result->edgeCount();
        const int firstCorner = result->cornerCount();
        for (const Edge& edge : part->edges_) {
            result->edges_.push_back({edge[0] + firstVertex, edge[1] + firstVertex});
        }
        for (int face = 0; face < part->faceCount(); ++face) {
            result->faceOffsets_.push_back(part->faceOffsets_[face + 1] + firstCorner);
        }
        for (int vertex : part->faceVertices_)
            result->faceVertices_.push_back(vertex + firstVertex);
        for (int edge : part->faceEdges_)
            result->faceEdges_.push_back(edge + firstEdge);
        result->vertexCount_ += part->vertexCount();
    }
    return {result, {}};
}

bool Topology::isSameAs(const Topology& other) const {
    return this == &other || (vertexCount_ == other.vertexCount_ && edges_ == other.edges_ &&
                              faceOffsets_ == other.faceOffsets_ && faceVertices_ == other.faceVertices_);
}

}  // namespace host::geometry
