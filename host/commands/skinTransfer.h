#pragma once

#include <optional>
#include <vector>

#include "commands/influenceMatch.h"
#include "geometry/mesh.h"

/// Copying the weights of one skin to the vertices of another, by where they are.
namespace host::commands {

/// A skin and its surface.
struct SkinSurface {
    graph::NodeRef skinCluster;
    geometry::Mesh mesh;  ///< in the space in which places are compared
};

struct TransferOptions {
    std::vector<InfluenceScheme> schemes{};
    std::optional<int> mirrorAxis{};  ///< 0 is x
    bool mirrorsToPositive = false;   ///< otherwise from the positive side to the negative
    bool usesVertices = false;        ///< the closest vertex instead of the closest point of the surface
    bool normalizes = false;
    bool copiesBlendWeights = true;
};

/// Gives vertices the weights that the source has at the closest place. Of a point within a face they are
/// those of the corners in proportion. Locked influences of the destination keep their weights. A vertex
/// keeps all of its weights if the matching influences have none at the closest place.
///
/// With a mirror axis the source is mirrored first, and only vertices beyond the plane, on the side that is
/// mirrored to, change. The source may be the destination.
/// Cost: n log n for the source's surface, log n for each vertex.
void transferWeights(graph::Graph& graph, const SkinSurface& source, const SkinSurface& destination,
                     const std::vector<int>& vertices, const TransferOptions& options);

}  // namespace host::commands
