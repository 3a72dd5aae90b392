#include "geometry/topology.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace host::geometry {

namespace {

/// Finds the number of an edge by its two vertices, in either order: open addressing over the edge list
/// itself.
class EdgeTable {
  public:
    EdgeTable(std::vector<Edge>& edges, std::size_t mostEdges) : edges_(edges) {
        std::size_t slots = 16;
        while (slots < mostEdges + mostEdges / 3)
            slots *= 2;
        slots_.assign(slots, -1);
    }

    /// The slot that holds the edge of a and b, or the free slot where it belongs.
    int& slotOf(int a, int b) {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = hash(a, b) & mask;
        while (slots_[at] >= 0 && !joins(edges_[slots_[at]], a, b))
            at = (at + 1) & mask;
        return slots_[at];
    }

  private:
    static bool joins(const Edge& edge, int a, int b) {
        return (edge[0] == a && edge[1] == b) || (edge[0] == b && edge[1] == a);
    }

    static std::size_t hash(int a, int b) {
        const auto low = static_cast<std::uint64_t>(std::min(a, b));
        const auto high = static_cast<std::uint64_t>(std::max(a, b));
        std::uint64_t h = (high << 32 | low) * 0x9E3779B97F4A7C15u;
        h ^= h >> 32;
        h *= 0xD6E8FEB86659FD93u;
        return static_cast<std::size_t>(h ^ (h >> 32));
    }

    std::vector<Edge>& edges_;
    std::vector<int> slots_;
};

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
    const std::vector<int>& corners = result->faceVertices_;
    result->faceEdges_.resize(corners.size());
    result->edges_.reserve(corners.size() / 2 + 1);
    EdgeTable table(result->edges_, corners.size());
    for (int face = 0; face < result->faceCount(); ++face) {
        const int first = result->faceOffsets_[face];
        const int last = result->faceOffsets_[face + 1] - 1;
        for (int at = first; at <= last; ++at) {
            const int a = corners[at];
            const int b = corners[at == last ? first : at + 1];
            int& slot = table.slotOf(a, b);
            if (slot < 0) {
                slot = result->edgeCount();
                result->edges_.push_back({a, b});
            }
            result->faceEdges_[at] = slot;
        }
    }
    result->edges_.shrink_to_fit();
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
    EdgeTable table(result->edges_, result->edges_.size());
    for (int edge = 0; edge < result->edgeCount(); ++edge) {
        const auto [a, b] = result->edges_[edge];
        const std::string what = "edge " + std::to_string(edge);
        for (int vertex : {a, b}) {
            if (vertex < 0 || vertex >= vertexCount) return failed(unknownVertex(what, vertex, vertexCount));
        }
        if (a == b) return failed(what + " has vertex " + std::to_string(a) + " at both ends");
        int& slot = table.slotOf(a, b);
        if (slot >= 0) {
            return failed("edges " + pairText(slot, edge) + " join the same vertices " + pairText(a, b));
        }
        slot = edge;
    }

    const std::vector<int>& corners = result->faceVertices_;
    result->faceEdges_.resize(corners.size());
    for (int face = 0; face < result->faceCount(); ++face) {
        const int first = result->faceOffsets_[face];
        const int last = result->faceOffsets_[face + 1] - 1;
        for (int at = first; at <= last; ++at) {
            const int next = corners[at == last ? first : at + 1];
            const int edge = table.slotOf(corners[at], next);
            if (edge < 0) {
                return failed(faceText(face) + " needs an edge between vertices " +
                              pairText(corners[at], next) + ", but there is none");
            }
            result->faceEdges_[at] = edge;
        }
    }
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
