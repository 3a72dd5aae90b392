#include "nodes/blendShapeTargets.h"

#include <algorithm>
#include <cstdint>

#include "nodes/blendShapeNode.h"

namespace host::nodes {

std::vector<ItemShare> itemShares(const std::vector<int>& items, double weight) {
    const int zero = itemIndex(0.0);
    std::vector<int> stops = items;
    const auto place = std::lower_bound(stops.begin(), stops.end(), zero);
    const bool hasOwnZero = place != stops.end() && *place == zero;
    if (!hasOwnZero) stops.insert(place, zero);
    if (stops.size() == 1) {
        return hasOwnZero ? std::vector<ItemShare>{{zero, 1.0}} : std::vector<ItemShare>{};
    }
    std::size_t upper = 1;
    while (upper + 1 < stops.size() && itemWeight(stops[upper]) < weight)
        ++upper;
    const int from = stops[upper - 1];
    const int to = stops[upper];
    const double along = (weight - itemWeight(from)) / (itemWeight(to) - itemWeight(from));
    std::vector<ItemShare> shares;
    for (const ItemShare share : {ItemShare{from, 1.0 - along}, ItemShare{to, along}}) {
        if (share.share != 0.0 && (share.item != zero || hasOwnZero)) shares.push_back(share);
    }
    return shares;
}

std::pair<graph::DataPtr, graph::DataPtr> sparseDeltas(const geometry::Mesh& base,
                                                       const geometry::Mesh& target) {
    std::vector<graph::Point4> points;
    auto components = std::make_shared<graph::ComponentListData>();
    const int count = std::min(base.vertexCount(), target.vertexCount());
    const float* from = base.points().data();
    const float* to = target.points().data();
    int runStart = -1;
    for (int vertex = 0; vertex <= count; ++vertex, from += 3, to += 3) {
        const bool differs = vertex < count && (from[0] != to[0] || from[1] != to[1] || from[2] != to[2]);
        if (differs) {
            points.push_back({static_cast<double>(to[0]) - static_cast<double>(from[0]),
                              static_cast<double>(to[1]) - static_cast<double>(from[1]),
                              static_cast<double>(to[2]) - static_cast<double>(from[2]), 1.0});
            if (runStart < 0) runStart = vertex;
        } else if (runStart >= 0) {
            components->appendRun(graph::ComponentKind::Vertex, runStart, vertex - 1);
            runStart = -1;
        }
    }
    return {std::make_shared<graph::PointArrayData>(std::move(points)), std::move(components)};
}

void addDeltas(const graph::PointArrayData& points, const graph::ComponentListData& components, double scale,
               const graph::NumberMulti* weights, std::vector<double>& sums) {
    const int vertexCount = static_cast<int>(sums.size() / 3);
    auto point = points.value.begin();
    const auto end = points.value.end();
    for (int entry = 0; entry < components.size() && point != end; ++entry) {
        if (components.kind(entry) != graph::ComponentKind::Vertex) continue;
        const auto [first, last] = components.runs(entry);
        for (const graph::Run* run = first; run != last && point != end; ++run) {
            const bool isAll = run->last < run->first;
            const int stop = isAll ? vertexCount - 1 : run->last;
            // The largest int may be listed: the count goes one further.
            std::int64_t listed = isAll ? 0 : run->first;
            for (; listed <= stop && point != end; ++listed, ++point) {
                const int vertex = static_cast<int>(listed);
                if (vertex < 0 || vertex >= vertexCount) continue;
                const double* weight = weights != nullptr ? weights->find(vertex) : nullptr;
                const double factor = weight != nullptr ? scale * *weight : scale;
                double* sum = sums.data() + 3 * static_cast<std::size_t>(vertex);
                for (std::size_t axis = 0; axis < 3; ++axis)
                    sum[axis] += factor * (*point)[axis];
            }
        }
    }
}

}  // namespace host::nodes
