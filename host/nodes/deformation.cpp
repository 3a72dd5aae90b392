#include "nodes/deformation.h"

#include <algorithm>
#include <optional>

#include "nodes/plugs.h"

namespace host::nodes {

namespace {

/// nodeState of a node that passes its input through unchanged.
constexpr double kHasNoEffect = 1.0;

/// The group that an input belongs to; null if it takes the whole geometry.
const VertexGroup* groupOf(const MeshData& mesh, int id) {
    const auto found = std::find_if(mesh.groups.begin(), mesh.groups.end(),
                                    [&](const VertexGroup& group) { return group.id == id; });
    return found != mesh.groups.end() ? &*found : nullptr;
}

/// Which vertices the deformer owns: those of its group, else those of its tag expression. Nothing means all
/// vertices.
std::optional<std::vector<bool>> membership(graph::Graph& graph, const graph::Plug& input,
                                            const MeshData& mesh) {
    const graph::Plug groupId = childPlug(input, "groupId");
    if (graph.source(groupId)) {
        const VertexGroup* group = groupOf(mesh, static_cast<int>(graph.number(groupId)));
        if (group == nullptr || group->components == nullptr) return std::nullopt;
        return verticesIn(*group->components, mesh.mesh.vertexCount());
    }
    const graph::Plug tags = childPlug(input, "componentTagExpression");
    const std::string expression = textAt(graph, tags);
    if (expression.empty() || expression == "*") return std::nullopt;
    graph.messages().error(graph.plugName(tags) + ": the expression '" + expression +
                           "' is not supported, only '*' is");
    return std::vector<bool>(static_cast<std::size_t>(mesh.mesh.vertexCount()), false);
}

void restoreOutside(const std::vector<bool>& owned, const std::vector<float>& from,
                    std::vector<float>& points) {
    for (std::size_t vertex = 0; vertex < owned.size(); ++vertex) {
        if (owned[vertex]) continue;
        std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(3 * vertex), 3,
                    points.begin() + static_cast<std::ptrdiff_t>(3 * vertex));
    }
}

}  // namespace

DeformerMemory& deformerMemory(graph::Node& node) {
    auto& extension = node.extension();
    if (extension == nullptr) extension = std::make_shared<DeformerMemory>();
    return *std::static_pointer_cast<DeformerMemory>(extension);
}

std::vector<bool> verticesIn(const graph::ComponentListData& components, int vertexCount) {
    std::vector<bool> result(static_cast<std::size_t>(vertexCount), false);
    for (int entry = 0; entry < components.size(); ++entry) {
        if (components.kind(entry) != graph::ComponentKind::Vertex) continue;
        const auto [first, last] = components.runs(entry);
        for (const graph::Run* run = first; run != last; ++run) {
            const bool isAll = run->last < run->first;
            const int from = isAll ? 0 : std::max(run->first, 0);
            const int end = isAll ? vertexCount : std::min(run->last + 1, vertexCount);
            for (int vertex = from; vertex < end; ++vertex)
                result[static_cast<std::size_t>(vertex)] = true;
        }
    }
    return result;
}

graph::ComputedValue computeDeformer(graph::Graph& graph, const graph::Plug& output, DeformFunction deform) {
    const graph::NodeRef& node = output.node();
    const int index = output.logicalIndex();
    const graph::Plug input = node->plug("input").element(index);
    const MeshPtr in = graph::dataAs<MeshData>(graph.data(childPlug(input, "inputGeometry")));
    if (in == nullptr) return graph::DataPtr();
    const double envelope = graph.number(node->plug("envelope"));
    if (envelope == 0.0 || graph.number(node->plug("nodeState")) == kHasNoEffect) return in;
    const std::optional<std::vector<bool>> owned = membership(graph, input, *in);
    std::vector<float> points = in->mesh.points();
    Deformation deformation{graph, node, index, envelope, *in, points};
    deform(deformation);
    if (owned) restoreOutside(*owned, in->mesh.points(), points);
    if (points == in->mesh.points()) return in;
    MeshPtr& last = deformerMemory(*node).lastOutputs[index];
    geometry::Mesh mesh(in->mesh.topologyPtr(), std::move(points));
    return last = keepAddress(last, std::make_shared<MeshData>(std::move(mesh), in->groups));
}

}  // namespace host::nodes
