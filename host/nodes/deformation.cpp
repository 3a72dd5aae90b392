#include "nodes/deformation.h"

#include <algorithm>
#include <optional>

#include "nodes/plugs.h"

namespace host::nodes {

namespace {

/// nodeState of a node that passes its input through unchanged.
constexpr double kHasNoEffect = 1.0;

/// The vertices that components of a mesh have.
class Members {
  public:
    explicit Members(const geometry::Topology& topology)
        : topology_(topology), isMember_(static_cast<std::size_t>(topology.vertexCount()), false) {}

    void add(graph::ComponentKind kind, int component) {
        if (kind == graph::ComponentKind::Vertex) {
            add(component);
        } else if (kind == graph::ComponentKind::Edge) {
            for (const int vertex : topology_.edge(component))
                add(vertex);
        } else if (kind == graph::ComponentKind::Face) {
            for (const int vertex : topology_.faceVertices(component))
                add(vertex);
        }
    }
    int count(graph::ComponentKind kind) const {
        if (kind == graph::ComponentKind::Edge) return topology_.edgeCount();
        return kind == graph::ComponentKind::Face ? topology_.faceCount() : topology_.vertexCount();
    }
    std::vector<bool> take() { return std::move(isMember_); }

  private:
    void add(int vertex) { isMember_[static_cast<std::size_t>(vertex)] = true; }

    const geometry::Topology& topology_;
    std::vector<bool> isMember_;
};

/// Which vertices a component list names. Runs that end before they start ("vtx[*]") name all there are.
std::vector<bool> verticesIn(const graph::ComponentListData& components, const geometry::Topology& topology) {
    Members members(topology);
    for (int entry = 0; entry < components.size(); ++entry) {
        const graph::ComponentKind kind = components.kind(entry);
        const int count = members.count(kind);
        const auto [first, last] = components.runs(entry);
        for (const graph::Run* run = first; run != last; ++run) {
            const bool isAll = run->last < run->first;
            const int end = isAll ? count : std::min(run->last, count - 1) + 1;
            for (int component = isAll ? 0 : std::max(run->first, 0); component < end; ++component)
                members.add(kind, component);
        }
    }
    return members.take();
}

/// Which vertices the deformer owns: those of its group, else those of its tag expression. Nothing means all
/// vertices.
std::optional<std::vector<bool>> membership(graph::Graph& graph, const graph::Plug& input,
                                            const MeshData& mesh) {
    const auto find = [&](int id, const std::string& tag) {
        return std::find_if(mesh.groups.begin(), mesh.groups.end(),
                            [&](const ComponentGroup& group) { return group.id == id && group.tag == tag; });
    };
    const graph::Plug groupId = childPlug(input, "groupId");
    if (graph.source(groupId)) {
        const auto group = find(static_cast<int>(graph.number(groupId)), {});
        if (group == mesh.groups.end() || group->components == nullptr) return std::nullopt;
        return verticesIn(*group->components, mesh.mesh.topology());
    }
    const graph::Plug tags = childPlug(input, "componentTagExpression");
    const std::string expression = textAt(graph, tags);
    if (expression.empty() || expression == "*") return std::nullopt;
    const auto tag = find(kTagId, expression);
    if (tag != mesh.groups.end() && tag->components != nullptr)
        return verticesIn(*tag->components, mesh.mesh.topology());
    graph.messages().error(
        graph.plugName(tags) + ": '" + expression +
        "' is not a component tag of the geometry, so the deformer moves nothing. Only '*' "
        "and names of tags are evaluated, without operators.");
    return Members(mesh.mesh.topology()).take();
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
