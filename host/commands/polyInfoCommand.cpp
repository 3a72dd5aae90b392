#include <algorithm>
#include <cstdio>

#include "commands/commands.h"
#include "commands/meshSupport.h"

namespace host::commands {

namespace {

using geometry::IntSpan;
using geometry::Topology;
using graph::ComponentKind;
using graph::SelectionItem;

/// One kind of table: a line per component, with the numbers of the adjacent components.
struct Table {
    const char* flag;
    ComponentKind kind;
    const char* word;
    IntSpan (*numbers)(const Topology&, int component);
    const char* ending;
};

IntSpan edgeEnds(const Topology& topology, int edge) {
    return {topology.edge(edge).data(), 2};
}

// Meshes of this host have no hard edges, so every edge is smooth.
constexpr Table kTables[] = {{"faceToVertex", ComponentKind::Face, "FACE",
                              [](const Topology& t, int face) { return t.faceVertices(face); }, " \n"},
                             {"faceToEdge", ComponentKind::Face, "FACE",
                              [](const Topology& t, int face) { return t.faceEdges(face); }, " \n"},
                             {"edgeToVertex", ComponentKind::Edge, "EDGE", edgeEnds, "  Smooth\n"},
                             {"edgeToFace", ComponentKind::Edge, "EDGE",
                              [](const Topology& t, int edge) { return t.edgeFaces(edge); }, " \n"},
                             {"vertexToEdge", ComponentKind::Vertex, "VERTEX",
                              [](const Topology& t, int vertex) { return t.vertexEdges(vertex); }, " \n"},
                             {"vertexToFace", ComponentKind::Vertex, "VERTEX",
                              [](const Topology& t, int vertex) { return t.vertexFaces(vertex); }, " \n"}};

void appendNumber(std::string& line, int number) {
    char text[16];
    const int length = std::snprintf(text, sizeof text, "%7d", number);
    line.append(text, static_cast<std::size_t>(length));
}

/// "FACE      0:      0      1      3      2 \n"
std::string tableLine(const Table& table, const Topology& topology, int component) {
    std::string line = table.word;
    appendNumber(line, component);
    line += ':';
    for (const int number : table.numbers(topology, component))
        appendNumber(line, number);
    return line + table.ending;
}

/// Lines for a whole object, or for components of the table's kind.
void appendLines(const Table& table, const Topology& topology, const SelectionItem& item,
                 std::vector<std::string>& lines) {
    const int count = componentCount(topology, table.kind);
    const graph::Component component =
        item.component ? *item.component : graph::Component::complete(table.kind, count);
    lines.reserve(lines.size() + static_cast<std::size_t>(component.count()));
    for (int run = 0; run < component.runCount(); ++run) {
        for (int number = component.run(run).first; number <= component.run(run).last; ++number)
            lines.push_back(tableLine(table, topology, number));
    }
}

/// Edges with more than two faces, or with two faces that run along them in the same direction.
std::vector<int> nonManifoldEdges(const Topology& topology) {
    const std::size_t edgeCount = static_cast<std::size_t>(topology.edgeCount());
    std::vector<int> uses[2] = {std::vector<int>(edgeCount), std::vector<int>(edgeCount)};
    for (int face = 0; face < topology.faceCount(); ++face) {
        const IntSpan edges = topology.faceEdges(face);
        for (int corner = 0; corner < edges.size(); ++corner)
            ++uses[topology.isEdgeReversed(face, corner) ? 1 : 0][static_cast<std::size_t>(edges[corner])];
    }
    std::vector<int> result;
    for (std::size_t edge = 0; edge < edgeCount; ++edge) {
        if (uses[0][edge] > 1 || uses[1][edge] > 1) result.push_back(static_cast<int>(edge));
    }
    return result;
}

/// Whether the faces at a vertex form several groups that no edge at the vertex joins.
bool hasSeveralFans(const Topology& topology, int vertex) {
    const IntSpan faces = topology.vertexFaces(vertex);
    if (faces.size() < 2) return false;
    std::vector<char> reached(static_cast<std::size_t>(faces.size()));
    std::vector<int> open{faces[0]};
    reached[0] = 1;
    int count = 1;
    while (!open.empty()) {
        const int face = open.back();
        open.pop_back();
        for (const int edge : topology.faceEdges(face)) {
            const geometry::Edge& ends = topology.edge(edge);
            if (ends[0] != vertex && ends[1] != vertex) continue;
            for (const int next : topology.edgeFaces(edge)) {
                const auto position = std::lower_bound(faces.begin(), faces.end(), next) - faces.begin();
                char& isReached = reached[static_cast<std::size_t>(position)];
                if (isReached != 0) continue;
                isReached = 1;
                ++count;
                open.push_back(next);
            }
        }
    }
    return count < faces.size();
}

/// Vertices whose faces do not form a single fan: ends of non-manifold edges, and points where fans touch.
std::vector<int> nonManifoldVertices(const Topology& topology) {
    std::vector<char> isFound(static_cast<std::size_t>(topology.vertexCount()));
    for (const int edge : nonManifoldEdges(topology)) {
        for (const int vertex : topology.edge(edge))
            isFound[static_cast<std::size_t>(vertex)] = 1;
    }
    std::vector<int> result;
    for (int vertex = 0; vertex < topology.vertexCount(); ++vertex) {
        if (isFound[static_cast<std::size_t>(vertex)] != 0 || hasSeveralFans(topology, vertex))
            result.push_back(vertex);
    }
    return result;
}

/// Names of the components that a search finds in an object, or among its named components.
void appendFound(const graph::Graph& graph, const SelectionItem& item, ComponentKind kind,
                 const std::vector<int>& found, std::vector<std::string>& names) {
    std::vector<int> wanted;
    for (const int number : found) {
        if (!item.component || item.component->contains(number)) wanted.push_back(number);
    }
    if (wanted.empty()) return;
    const SelectionItem result{item.node, {}, graph::Component::fromIndices(kind, std::move(wanted))};
    for (std::string& name : graph::itemNames(graph, result))
        names.push_back(std::move(name));
}

struct Search {
    const char* flag;
    ComponentKind kind;
    std::vector<int> (*find)(const Topology&);
};
constexpr Search kSearches[] = {{"nonManifoldEdges", ComponentKind::Edge, nonManifoldEdges},
                                {"nonManifoldVertices", ComponentKind::Vertex, nonManifoldVertices}};

/// A flag about components only works on components of its kind.
/// @return empty, or the error
template <typename Entry>
std::string misfit(const SelectionItem& item, const Entry& entry) {
    if (!item.component || item.component->kind() == entry.kind) return {};
    return std::string("polyInfo: -") + entry.flag + " of components of another kind is not covered.";
}

CommandResult polyInfo(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.flagsSet() == 0) return CommandResult::failure("polyInfo: No flag says what to report.");
    const Found<std::vector<SelectionItem>> objects = meshObjects(context, arguments, "polyInfo");
    if (!objects.ok()) return CommandResult::failure(objects.error);
    std::vector<std::string> lines;
    for (const SelectionItem& item : objects.value) {
        const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, item.node);
        if (!mesh.ok()) return CommandResult::failure("polyInfo: " + mesh.error);
        const Topology& topology = mesh.value->mesh.topology();
        for (const Table& table : kTables) {
            if (!arguments.isSet(table.flag)) continue;
            if (const std::string error = misfit(item, table); !error.empty())
                return CommandResult::failure(error);
            appendLines(table, topology, item, lines);
        }
        for (const Search& search : kSearches) {
            if (!arguments.isSet(search.flag)) continue;
            if (const std::string error = misfit(item, search); !error.empty())
                return CommandResult::failure(error);
            appendFound(graph, item, search.kind, search.find(topology), lines);
        }
    }
    return CommandResult::success(std::move(lines));
}

}  // namespace

void registerPolyInfoCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("fv", "faceToVertex").flag("fe", "faceToEdge").flag("ev", "edgeToVertex");
    syntax.flag("ef", "edgeToFace").flag("ve", "vertexToEdge").flag("vf", "vertexToFace");
    syntax.flag("nme", "nonManifoldEdges").flag("nmv", "nonManifoldVertices").objects(ObjectKind::Strings);
    registry.add(
        "polyInfo", syntax, polyInfo,
        "fn faceNormals ie invalidEdges iv invalidVertices lf laminaFaces nue nonManifoldUVEdges nuv "
        "nonManifoldUVs uvs uvSetName");
}

}  // namespace host::commands
