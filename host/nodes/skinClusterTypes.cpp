// The node type skinCluster: its attributes and its deformation.

#include <algorithm>
#include <array>

#include "nodes/deformation.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"
#include "nodes/skinWeights.h"

namespace host::nodes {

namespace {

using graph::enumeration;
using graph::number;
using graph::typed;
using graph::ValueKind;

constexpr double kClassicLinear = 0.0;
constexpr double kPostNormalization = 2.0;

/// An affine matrix without its last column: three numbers per row.
using AffineMatrix = std::array<double, 12>;

/// For each influence, by logical index, the matrix from the geometry's object space through the influence
/// and back.
struct InfluenceMatrices {
    std::vector<int> indices;
    std::vector<AffineMatrix> matrices;

    /// The identity for an index that never got a matrix.
    const AffineMatrix& at(int index) const {
        static constexpr AffineMatrix kIdentity{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
        // If there is no gap before an index, it is its own position.
        const auto guess = static_cast<std::size_t>(index);
        if (guess < indices.size() && indices[guess] == index) return matrices[guess];
        const auto found = std::lower_bound(indices.begin(), indices.end(), index);
        if (found == indices.end() || *found != index) return kIdentity;
        return matrices[static_cast<std::size_t>(found - indices.begin())];
    }
};

AffineMatrix affine(const geometry::Matrix4& matrix) {
    AffineMatrix result{};
    for (std::size_t k = 0; k < result.size(); ++k)
        result[k] = matrix.m[k / 3][k % 3];
    return result;
}

InfluenceMatrices influenceMatrices(graph::Graph& graph, const graph::NodeRef& node) {
    const geometry::Matrix4 toWorld = matrixOf(graph.data(node->plug("geomMatrix")));
    const geometry::Matrix4 fromWorld = toWorld.inverse().matrix;
    const graph::Plug current = node->plug("matrix");
    const graph::Plug atBind = node->plug("bindPreMatrix");
    InfluenceMatrices result;
    result.indices = graph.elements(current);
    for (const int index : result.indices) {
        const geometry::Matrix4 moved =
            matrixOf(graph.data(atBind.element(index))) * matrixOf(graph.data(current.element(index)));
        result.matrices.push_back(affine(toWorld * moved * fromWorld));
    }
    return result;
}

/// Moves a point by the blended matrices.
void movePoint(float* point, const AffineMatrix& blended, double envelope) {
    const std::array<double, 3> from{static_cast<double>(point[0]), static_cast<double>(point[1]),
                                     static_cast<double>(point[2])};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double to = from[0] * blended[axis] + from[1] * blended[3 + axis] +
                          from[2] * blended[6 + axis] + blended[9 + axis];
        point[axis] = static_cast<float>(from[axis] + envelope * (to - from[axis]));
    }
}

/// Classic linear skinning. A vertex without weights does not move.
void deformBySkin(Deformation& deformation) {
    graph::Graph& graph = deformation.graph;
    const graph::NodeRef& node = deformation.node;
    if (graph.number(node->plug("skinningMethod")) != kClassicLinear) {
        graph.messages().error(node->name() + ".skinningMethod: only classic linear is supported");
        return;
    }
    const bool normalizes = graph.number(node->plug("normalizeWeights")) == kPostNormalization;
    const InfluenceMatrices influences = influenceMatrices(graph, node);
    const int vertexCount = deformation.input.mesh.vertexCount();
    forEachWeightRow(node, [&](int vertex, const graph::NumberMulti& row) {
        if (vertex < 0 || vertex >= vertexCount) return;
        const std::vector<int>& indices = row.indices();
        const double* weights = row.find(indices.front());
        AffineMatrix blended{};
        double sum = 0.0;
        for (std::size_t k = 0; k < indices.size(); ++k) {
            const AffineMatrix& matrix = influences.at(indices[k]);
            for (std::size_t entry = 0; entry < blended.size(); ++entry)
                blended[entry] += weights[k] * matrix[entry];
            sum += weights[k];
        }
        if (sum == 0.0) return;
        if (normalizes) {
            for (double& entry : blended)
                entry /= sum;
        }
        movePoint(deformation.points.data() + 3 * static_cast<std::size_t>(vertex), blended,
                  deformation.envelope);
    });
}

graph::ComputedValue computeSkinCluster(graph::Graph& graph, const graph::Plug& output) {
    return computeDeformer(graph, output, deformBySkin);
}

}  // namespace

void addSkinClusterTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour skinning;
    skinning.compute = computeSkinCluster;
    types.add({"skinCluster",
               "geometryFilter",
               {graph::compound("weightList", "wl", {number("weights", "w").array()}).array(),
                typed("bindPreMatrix", "pm", "matrix").array(), typed("geomMatrix", "gm", "matrix"),
                typed("matrix", "ma", "matrix").array(), number("dropoff", "dpf").withDefault(4).array(),
                number("lockWeights", "lw", ValueKind::Bool).array(),
                number("maintainMaxInfluences", "mmi", ValueKind::Bool),
                number("maxInfluences", "mi", ValueKind::Int).withDefault(5),
                enumeration("normalizeWeights", "nw", {"None", "Interactive", "Post"}).withDefault(1),
                enumeration("skinningMethod", "skm", {"Classic linear", "Dual quaternion", "Weight blended"}),
                graph::triple("influenceColor", "ifcl", ValueKind::Float).array()},
               skinning});
}

}  // namespace host::nodes
