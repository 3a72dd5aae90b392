// The adjacency of a topology, computed on demand: lists of neighbours, and shells.

#include <algorithm>

#include "geometry/topology.h"

namespace host::geometry {

namespace {

/// Flat lists from a function that calls emit(item, value) for every entry, in the order that the entries
/// shall have. The function runs twice: to count and to fill.
template <typename ForEach>
IntLists buildLists(int itemCount, ForEach&& forEach) {
    IntLists lists;
    lists.offsets.assign(static_cast<std::size_t>(itemCount) + 1, 0);
    forEach([&](int item, int) { ++lists.offsets[item + 1]; });
    for (int i = 0; i < itemCount; ++i)
        lists.offsets[i + 1] += lists.offsets[i];
    lists.values.resize(lists.offsets.back());
    std::vector<int> next(lists.offsets.begin(), lists.offsets.end() - 1);
    forEach([&](int item, int value) { lists.values[next[item]++] = value; });
    return lists;
}

/// Calls emit(items[corner], face) for every corner of every face, but only once for an item that a face has
/// twice.
template <typename Emit>
void forEachUse(const Topology& topology, const std::vector<int>& items, int itemCount, Emit&& emit) {
    std::vector<int> lastFace(itemCount, -1);
    const std::vector<int>& offsets = topology.faceOffsets();
    for (int face = 0; face < topology.faceCount(); ++face) {
        for (int at = offsets[face]; at < offsets[face + 1]; ++at) {
            const int item = items[at];
            if (lastFace[item] == face) continue;
            lastFace[item] = face;
            emit(item, face);
        }
    }
}

/// Keeps the first of equal values, in order.
void removeRepeats(std::vector<int>& values) {
    std::vector<int> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end()) return;

    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    std::vector<bool> seen(sorted.size(), false);
    const auto isRepeat = [&](int value) {
        const auto at = std::lower_bound(sorted.begin(), sorted.end(), value) - sorted.begin();
        if (seen[at]) return true;
        seen[at] = true;
        return false;
    };
    std::size_t kept = 0;
    for (int value : values) {
        if (!isRepeat(value)) values[kept++] = value;
    }
    values.resize(kept);
}

Shells findShells(const Topology& topology) {
    Shells shells;
    const int faceCount = topology.faceCount();
    const IntLists& edgeFaces = topology.edgeFaces();
    shells.shellOfFace.assign(faceCount, -1);
    // Each edge is crossed only once: edges that many faces share would make the walk quadratic.
    std::vector<bool> crossed(topology.edgeCount(), false);
    std::vector<int> pending;
    int count = 0;
    for (int seed = 0; seed < faceCount; ++seed) {
        if (shells.shellOfFace[seed] >= 0) continue;
        shells.shellOfFace[seed] = count;
        pending.push_back(seed);
        while (!pending.empty()) {
            const int face = pending.back();
            pending.pop_back();
            for (int edge : topology.faceEdges(face)) {
                if (crossed[edge]) continue;
                crossed[edge] = true;
                for (int other : edgeFaces[edge]) {
                    if (shells.shellOfFace[other] >= 0) continue;
                    shells.shellOfFace[other] = count;
                    pending.push_back(other);
                }
            }
        }
        ++count;
    }

    shells.faces = buildLists(count, [&](auto&& emit) {
        for (int face = 0; face < faceCount; ++face)
            emit(shells.shellOfFace[face], face);
    });
    const IntLists& vertexFaces = topology.vertexFaces();
    shells.vertices = buildLists(count, [&](auto&& emit) {
        std::vector<int> lastVertex(count, -1);
        for (int vertex = 0; vertex < topology.vertexCount(); ++vertex) {
            for (int face : vertexFaces[vertex]) {
                const int shell = shells.shellOfFace[face];
                if (lastVertex[shell] == vertex) continue;
                lastVertex[shell] = vertex;
                emit(shell, vertex);
            }
        }
    });
    return shells;
}

}  // namespace

const IntLists& Topology::edgeFaces() const {
    std::call_once(lazyEdgeFaces_.once, [this] {
        lazyEdgeFaces_.value = buildLists(
            edgeCount(), [this](auto&& emit) { forEachUse(*this, faceEdges_, edgeCount(), emit); });
    });
    return lazyEdgeFaces_.value;
}

const IntLists& Topology::vertexEdges() const {
    std::call_once(lazyVertexEdges_.once, [this] {
        lazyVertexEdges_.value = buildLists(vertexCount_, [this](auto&& emit) {
            for (int edge = 0; edge < edgeCount(); ++edge) {
                emit(edges_[edge][0], edge);
                emit(edges_[edge][1], edge);
            }
        });
    });
    return lazyVertexEdges_.value;
}

const IntLists& Topology::vertexNeighbours() const {
    std::call_once(lazyVertexNeighbours_.once, [this] {
        lazyVertexNeighbours_.value = buildLists(vertexCount_, [this](auto&& emit) {
            for (const Edge& edge : edges_) {
                emit(edge[0], edge[1]);
                emit(edge[1], edge[0]);
            }
        });
    });
    return lazyVertexNeighbours_.value;
}

const IntLists& Topology::vertexFaces() const {
    std::call_once(lazyVertexFaces_.once, [this] {
        lazyVertexFaces_.value = buildLists(
            vertexCount_, [this](auto&& emit) { forEachUse(*this, faceVertices_, vertexCount_, emit); });
    });
    return lazyVertexFaces_.value;
}

std::vector<int> Topology::faceNeighbours(int face) const {
    std::vector<int> result;
    for (int edge : faceEdges(face)) {
        for (int other : edgeFaces(edge)) {
            if (other != face) result.push_back(other);
        }
    }
    removeRepeats(result);
    return result;
}

const Shells& Topology::shells() const {
    std::call_once(lazyShells_.once, [this] { lazyShells_.value = findShells(*this); });
    return lazyShells_.value;
}

int Topology::findEdge(int a, int b) const {
    const IntSpan neighbours = vertexNeighbours(a);
    const int* at = std::find(neighbours.begin(), neighbours.end(), b);
    return at == neighbours.end() ? -1 : vertexEdges(a)[static_cast<int>(at - neighbours.begin())];
}

}  // namespace host::geometry
