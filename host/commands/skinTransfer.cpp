#include "commands/skinTransfer.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "commands/skinSupport.h"
#include "geometry/closestPoint.h"
#include "geometry/closestVertex.h"
#include "nodes/plugs.h"

namespace host::commands {

namespace {

using geometry::Mesh;
using geometry::Vec3;
using nodes::WeightRows;

/// Points closer to the mirror plane than this part of the mesh's size are on it.
constexpr double kPlaneTolerance = 1e-6;

/// Vertices and their shares in a place of a surface.
struct Place {
    std::array<int, 3> vertices{};
    std::array<double, 3> shares{};
};

/// Where a surface is closest to points.
class PlaceFinder {
  public:
    PlaceFinder(const Mesh& mesh, bool usesVertices) {
        if (usesVertices)
            vertices_.emplace(mesh);
        else
            surface_.emplace(mesh);
    }

    std::optional<Place> find(const Vec3& point) const {
        if (vertices_) {
            const int vertex = vertices_->query(point);
            return vertex < 0 ? std::nullopt : std::optional(Place{{vertex, 0, 0}, {1.0, 0.0, 0.0}});
        }
        const std::optional<geometry::ClosestPoint> closest = surface_->query(point);
        if (!closest) return std::nullopt;
        return Place{closest->vertices, closest->barycentric};
    }

  private:
    std::optional<geometry::ClosestPointTree> surface_;
    std::optional<geometry::ClosestVertexTree> vertices_;
};

/// The weights of a skin by the positions that its influences match.
class SourceWeights {
  public:
    SourceWeights(WeightRows rows, int vertexCount, const std::vector<nodes::Influence>& influences,
                  const std::vector<int>& matches)
        : rows_(std::move(rows)), rowOf_(static_cast<std::size_t>(vertexCount), kNone) {
        for (std::size_t row = 0; row < rows_.vertices.size(); ++row) {
            const int vertex = rows_.vertices[row];
            if (vertex >= 0 && vertex < vertexCount) rowOf_[static_cast<std::size_t>(vertex)] = row;
        }
        for (int& influence : rows_.influences) {
            const auto found = std::lower_bound(
                influences.begin(), influences.end(), influence,
                [](const nodes::Influence& present, int index) { return present.index < index; });
            const bool isKnown = found != influences.end() && found->index == influence;
            influence = isKnown ? matches[static_cast<std::size_t>(found - influences.begin())] : -1;
        }
    }

    /// The weights at a place, in `weights`.
    void read(const Place& place, std::vector<double>& weights) const {
        std::fill(weights.begin(), weights.end(), 0.0);
        for (std::size_t corner = 0; corner < place.vertices.size(); ++corner) {
            const std::size_t row = rowOf_[static_cast<std::size_t>(place.vertices[corner])];
            if (row == kNone || place.shares[corner] == 0.0) continue;
            for (std::size_t k = rows_.starts[row]; k < rows_.starts[row + 1]; ++k) {
                if (rows_.influences[k] < 0) continue;
                weights[static_cast<std::size_t>(rows_.influences[k])] +=
                    place.shares[corner] * rows_.weights[k];
            }
        }
    }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    WeightRows rows_;
    std::vector<std::size_t> rowOf_;
};

/// Positions among an editor's weights instead of among the connected influences.
std::vector<int> editorPositions(std::vector<int> matches, const std::vector<nodes::Influence>& influences,
                                 const WeightEditor& editor) {
    for (int& match : matches) {
        if (match < 0) continue;
        const auto& indices = editor.influences();
        const auto found = std::lower_bound(indices.begin(), indices.end(),
                                            influences[static_cast<std::size_t>(match)].index);
        match = static_cast<int>(found - indices.begin());
    }
    return matches;
}

/// The vertices that a call changes, of those that were given.
std::vector<int> verticesToChange(const Mesh& mesh, const std::vector<int>& vertices,
                                  const TransferOptions& options) {
    if (!options.mirrorAxis) return vertices;
    const double size = length(geometry::bounds(mesh).size());
    std::vector<int> result;
    for (const int vertex : vertices) {
        const double place = mesh.point(vertex)[*options.mirrorAxis];
        if ((options.mirrorsToPositive ? place : -place) > kPlaneTolerance * size) result.push_back(vertex);
    }
    return result;
}

Mesh mirrored(const Mesh& mesh, std::optional<int> axis) {
    if (!axis) return mesh;
    Vec3 factors{1.0, 1.0, 1.0};
    factors[*axis] = -1.0;
    return geometry::transformed(mesh, geometry::Matrix4::scaling(factors));
}

/// Copies the shares of dual quaternion skinning, which are 0 where nothing is stored.
void transferBlendWeights(graph::Graph& graph, const SkinSurface& source, const SkinSurface& destination,
                          const std::vector<int>& vertices, const std::vector<std::optional<Place>>& places) {
    const graph::NumberMulti* stored = nodes::numbersOf(source.skinCluster->plug("blendWeights"));
    const graph::Plug target = destination.skinCluster->plug("blendWeights");
    if (stored == nullptr && nodes::numbersOf(target) == nullptr) return;
    std::vector<double> shares(static_cast<std::size_t>(source.mesh.vertexCount()), 0.0);
    for (std::size_t vertex = 0; stored != nullptr && vertex < shares.size(); ++vertex)
        stored->read(static_cast<int>(vertex), &shares[vertex]);
    for (std::size_t k = 0; k < vertices.size(); ++k) {
        if (!places[k]) continue;
        double share = 0.0;
        for (std::size_t corner = 0; corner < 3; ++corner)
            share +=
                places[k]->shares[corner] * shares[static_cast<std::size_t>(places[k]->vertices[corner])];
        const graph::Plug element = target.element(vertices[k]);
        if (share != graph.number(element)) graph.setNumber(element, share);
    }
}

void scaleToOne(std::vector<double>& weights) {
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    if (sum == 0.0) return;
    for (double& weight : weights)
        weight /= sum;
}

}  // namespace

void transferWeights(graph::Graph& graph, const SkinSurface& source, const SkinSurface& destination,
                     const std::vector<int>& vertices, const TransferOptions& options) {
    const std::vector<nodes::Influence> from = nodes::influencesOf(source.skinCluster);
    const std::vector<nodes::Influence> to = nodes::influencesOf(destination.skinCluster);
    // What is normalized after the fact may have any sum.
    const bool isInteractive = graph.number(destination.skinCluster->plug("normalizeWeights")) == 1.0;
    WeightEditor editor(graph, destination.skinCluster, options.normalizes || isInteractive);
    const std::vector<int> matches =
        editorPositions(matchInfluences(graph, from, to, options.schemes, options.mirrorAxis), to, editor);
    const SourceWeights weightsThere(nodes::weightRows(source.skinCluster), source.mesh.vertexCount(), from,
                                     matches);
    const PlaceFinder finder(mirrored(source.mesh, options.mirrorAxis), options.usesVertices);
    const std::vector<int> changed = verticesToChange(destination.mesh, vertices, options);
    std::vector<std::optional<Place>> places;
    places.reserve(changed.size());
    std::vector<double> weights(editor.influences().size());
    for (const int vertex : changed) {
        places.push_back(finder.find(destination.mesh.point(vertex)));
        if (!places.back()) continue;
        weightsThere.read(*places.back(), weights);
        const bool isEmpty = std::all_of(weights.begin(), weights.end(), [](double w) { return w == 0.0; });
        if (isEmpty) continue;
        if (options.normalizes) scaleToOne(weights);
        editor.set(vertex, weights, std::vector<nodes::WeightRole>(weights.size(), nodes::WeightRole::Free));
    }
    if (options.copiesBlendWeights) transferBlendWeights(graph, source, destination, changed, places);
    editor.write();
}

}  // namespace host::commands
