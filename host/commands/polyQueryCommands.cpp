// The commands polySelect and polyEvaluate.

#include <algorithm>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

#include "commands/commands.h"
#include "commands/meshSupport.h"

namespace host::commands {

namespace {

using graph::SelectionItem;

// The command polySelect.

/// Faces of the shells that contain the given faces, ascending.
Found<std::vector<int>> extendToShells(const geometry::Topology& topology, const ParsedArguments& arguments) {
    Found<std::vector<int>> faces;
    const geometry::Shells& shells = topology.shells();
    for (int use = 0; use < arguments.uses("extendToShell"); ++use) {
        const int face = arguments.values("extendToShell", use)[0].toInt();
        if (face < 0 || face >= topology.faceCount())
            return {{}, "polySelect: There is no face " + std::to_string(face) + '.'};
        const geometry::IntSpan shell = shells.faces[shells.shellOfFace[static_cast<std::size_t>(face)]];
        faces.value.insert(faces.value.end(), shell.begin(), shell.end());
    }
    std::sort(faces.value.begin(), faces.value.end());
    faces.value.erase(std::unique(faces.value.begin(), faces.value.end()), faces.value.end());
    return faces;
}

CommandResult polySelect(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (!arguments.isSet("extendToShell"))
        return CommandResult::failure("polySelect: Only -extendToShell is covered.");
    const Found<std::vector<SelectionItem>> objects = meshObjects(context, arguments, "polySelect");
    if (!objects.ok()) return CommandResult::failure(objects.error);
    const graph::NodeRef shape = objects.value.front().node;
    const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
    if (!mesh.ok()) return CommandResult::failure("polySelect: " + mesh.error);
    Found<std::vector<int>> faces = extendToShells(mesh.value->mesh.topology(), arguments);
    if (!faces.ok()) return CommandResult::failure(faces.error);
    const SelectionItem item{
        shape, {}, graph::Component::fromIndices(graph::ComponentKind::Face, faces.value)};
    if (!arguments.isSet("noSelection")) {
        graph::Selection selection;
        selection.add(item);
        graph.select(std::move(selection));
    }
    if (arguments.isSet("asSelectString")) return CommandResult::success(graph::itemNames(graph, item));
    return CommandResult::success(std::move(faces.value));
}

// The command polyEvaluate.

int triangleCount(const geometry::Topology& topology) {
    return topology.cornerCount() - 2 * topology.faceCount();
}

struct Count {
    const char* flag;
    int (*of)(const geometry::Topology&);
};
/// In the order of the numbers in the result of a call with several of them.
constexpr Count kCounts[] = {{"vertex", [](const geometry::Topology& t) { return t.vertexCount(); }},
                             {"edge", [](const geometry::Topology& t) { return t.edgeCount(); }},
                             {"face", [](const geometry::Topology& t) { return t.faceCount(); }},
                             {"triangle", triangleCount},
                             {"shell", [](const geometry::Topology& t) { return t.shells().count(); }}};

struct ComponentCount {
    const char* flag;
    graph::ComponentKind kind;
};
constexpr ComponentCount kComponentCounts[] = {{"vertexComponent", graph::ComponentKind::Vertex},
                                               {"edgeComponent", graph::ComponentKind::Edge},
                                               {"faceComponent", graph::ComponentKind::Face}};

struct Area {
    const char* flag;
    bool isInWorld;
    bool isPerFace;  // one number for each face that is given, by objects; else the sum of all faces
};
constexpr Area kAreas[] = {{"area", false, false},
                           {"worldArea", true, false},
                           {"faceArea", false, true},
                           {"worldFaceArea", true, true}};

/// What is evaluated: meshes, each once at each of its places that was named, and the items that named them.
struct Evaluated {
    std::vector<SelectionItem> items;
    std::vector<SelectionItem> shapes;  // whole nodes
    std::vector<nodes::MeshPtr> meshes;
};

int countOf(const Evaluated& evaluated, const Count& count) {
    return std::accumulate(
        evaluated.meshes.begin(), evaluated.meshes.end(), 0,
        [&](int sum, const nodes::MeshPtr& mesh) { return sum + count.of(mesh->mesh.topology()); });
}

int countOf(const Evaluated& evaluated, const ComponentCount& count) {
    return std::accumulate(evaluated.items.begin(), evaluated.items.end(), 0,
                           [&](int sum, const SelectionItem& item) {
                               const bool counts = item.component && item.component->kind() == count.kind;
                               return sum + (counts ? item.component->count() : 0);
                           });
}

/// What the given flags count, or all of them.
struct Counts {
    std::vector<std::string> names{};
    std::vector<int> numbers{};

    /// "vertex=8 edge=12 ..."
    std::string text() const {
        std::string result;
        for (std::size_t k = 0; k < names.size(); ++k) {
            if (k > 0) result += ' ';
            result.append(names[k]).append("=").append(std::to_string(numbers[k]));
        }
        return result;
    }
};

Counts countsOf(const Evaluated& evaluated, const ParsedArguments& arguments, bool all) {
    Counts counts;
    const auto append = [&](const auto& count) {
        if (!all && !arguments.isSet(count.flag)) return;
        counts.names.emplace_back(count.flag);
        counts.numbers.push_back(countOf(evaluated, count));
    };
    for (const Count& count : kCounts)
        append(count);
    for (const ComponentCount& count : kComponentCounts)
        append(count);
    return counts;
}

/// Minimum and maximum on x, then on y, then on z, in world space. Unless it must be accurate, this is the
/// box of the object's own box, transformed to world space.
std::vector<double> boundingBox(graph::Graph& graph, const Evaluated& evaluated, bool isAccurate) {
    geometry::BoundingBox box;
    for (std::size_t k = 0; k < evaluated.shapes.size(); ++k) {
        const geometry::Matrix4 world = worldMatrix(graph, evaluated.shapes[k]);
        const geometry::Mesh& mesh = evaluated.meshes[k]->mesh;
        box.expand(isAccurate ? geometry::bounds(mesh, world) : geometry::bounds(mesh).transformed(world));
    }
    return {box.min.x, box.max.x, box.min.y, box.max.y, box.min.z, box.max.z};
}

/// The faces that items name of a shape: all of them if one names it as a whole.
std::vector<int> namedFaces(const std::vector<SelectionItem>& items, const SelectionItem& shape,
                            int faceCount) {
    std::vector<int> faces;
    for (const SelectionItem& item : items) {
        if (item.isSameObject(shape)) {
            faces.resize(static_cast<std::size_t>(faceCount));
            std::iota(faces.begin(), faces.end(), 0);
            break;
        }
        if (item.node == shape.node && item.path == shape.path &&
            item.component->kind() == graph::ComponentKind::Face)
            faces = item.component->elements();
    }
    return faces;
}

std::vector<double> areasOf(graph::Graph& graph, const Evaluated& evaluated, const Area& area) {
    std::vector<double> areas;
    for (std::size_t k = 0; k < evaluated.shapes.size(); ++k) {
        const SelectionItem& shape = evaluated.shapes[k];
        const geometry::Mesh& own = evaluated.meshes[k]->mesh;
        const geometry::Mesh mesh = area.isInWorld ? meshInWorld(graph, shape, own) : own;
        const auto areaOf = [&](int face) {
            return geometry::length(geometry::faceAreaVector(mesh, face)) / 2;
        };
        const std::vector<SelectionItem> whole{shape};
        const std::vector<int> faces =
            namedFaces(area.isPerFace ? evaluated.items : whole, shape, mesh.faceCount());
        std::transform(faces.begin(), faces.end(), std::back_inserter(areas), areaOf);
    }
    if (!area.isPerFace) areas = {std::accumulate(areas.begin(), areas.end(), 0.0)};
    return areas;
}

/// The answer to the flags that ask for areas; nothing if there is none.
std::optional<CommandResult> areaAnswer(graph::Graph& graph, const Evaluated& evaluated,
                                        const ParsedArguments& arguments) {
    mel::ResultForm form;
    std::vector<double> numbers;
    for (const Area& area : kAreas) {
        if (!arguments.isSet(area.flag)) continue;
        if (area.isPerFace && arguments.flagsSet() > 1)
            return CommandResult::failure(std::string("polyEvaluate: -") + area.flag +
                                          " beside other flags is not covered.");
        const std::vector<double> areas = areasOf(graph, evaluated, area);
        numbers.insert(numbers.end(), areas.begin(), areas.end());
        if (!area.isPerFace) form.keys.emplace_back(area.flag);
    }
    const auto isAsked = [&](const Area& area) { return arguments.isSet(area.flag); };
    if (std::none_of(std::begin(kAreas), std::end(kAreas), isAsked)) return std::nullopt;
    if (form.keys.size() < static_cast<std::size_t>(arguments.flagsSet()) && !form.keys.empty())
        return CommandResult::failure("polyEvaluate: Areas beside other numbers are not covered.");
    return CommandResult::success(std::move(numbers)).with(std::move(form));
}

Found<Evaluated> evaluatedObjects(CommandContext& context, const ParsedArguments& arguments) {
    Found<std::vector<SelectionItem>> objects = placedMeshObjects(context, arguments, "polyEvaluate");
    if (!objects.ok()) return {{}, objects.error};
    graph::Selection shapes;
    for (const SelectionItem& item : objects.value)
        shapes.add({item.node, {}, {}, item.path});
    Found<Evaluated> found{{{}, shapes.items(), {}}, {}};
    for (const SelectionItem& shape : shapes.items()) {
        Found<nodes::MeshPtr> mesh = evaluatedMesh(context.graph, shape.node);
        if (!mesh.ok()) return {{}, "polyEvaluate: " + mesh.error};
        found.value.meshes.push_back(std::move(mesh.value));
    }
    found.value.items = std::move(objects.value);
    return found;
}

CommandResult polyEvaluate(CommandContext& context, const ParsedArguments& arguments) {
    const Found<Evaluated> evaluated = evaluatedObjects(context, arguments);
    if (!evaluated.ok()) return CommandResult::failure(evaluated.error);
    if (auto answer = areaAnswer(context.graph, evaluated.value, arguments)) return std::move(*answer);
    Counts counts = countsOf(evaluated.value, arguments, false);
    mel::ResultForm form;
    if (arguments.isSet("boundingBox")) {
        if (!counts.numbers.empty())
            return CommandResult::failure("polyEvaluate: -boundingBox beside other flags is not covered.");
        form.tupleWidth = 2;
        form.isTuple = true;
        return CommandResult::success(
                   boundingBox(context.graph, evaluated.value, arguments.isSet("accurateEvaluation")))
            .with(std::move(form));
    }
    const bool isAll = counts.numbers.empty();
    if (isAll) counts = countsOf(evaluated.value, arguments, true);
    if (arguments.isSet("format")) return CommandResult::success(counts.text());
    form.keys = counts.names;
    if (!isAll) return CommandResult::success(std::move(counts.numbers)).with(std::move(form));
    const std::string text = counts.text();
    form.instead = Value(std::move(counts.numbers));
    return CommandResult::success(text).with(std::move(form));
}

}  // namespace

void registerPolyQueryCommands(mel::CommandRegistry& registry) {
    Syntax select;
    select.multiUseFlag("ets", "extendToShell", {kWhole}).flag("ns", "noSelection");
    select.flag("ass", "asSelectString").flag("r", "replace").objects(ObjectKind::Strings, 0, 1);
    registry.add("polySelect", select, polySelect,
                 "add d deselect tgl toggle eb edgeBorder ebp edgeBorderPath bpt edgeBorderPattern el "
                 "edgeLoop elb edgeLoopOrBorder lbp edgeLoopOrBorderPattern elp edgeLoopPath lpt "
                 "edgeLoopPattern er edgeRing erp edgeRingPath rpt edgeRingPattern euv edgeUVLoopOrBorder "
                 "en everyN sep shortestEdgePath spu shortestEdgePathUV sfp shortestFacePath q query");

    Syntax evaluate;
    evaluate.flag("v", "vertex").flag("e", "edge").flag("f", "face").flag("t", "triangle");
    evaluate.flag("s", "shell").flag("vc", "vertexComponent").flag("ec", "edgeComponent");
    evaluate.flag("fc", "faceComponent").flag("b", "boundingBox").flag("ae", "accurateEvaluation");
    for (const auto& [shortName, longName] : {std::pair("a", "area"), std::pair("wa", "worldArea"),
                                              std::pair("fa", "faceArea"), std::pair("wfa", "worldFaceArea")})
        evaluate.flag(shortName, longName);
    evaluate.flag("fmt", "format").objects(ObjectKind::Strings);
    registry.add("polyEvaluate", evaluate, polyEvaluate,
                 "as activeShells aus activeUVShells b2 boundingBox2d bc boundingBoxComponent bc2 "
                 "boundingBoxComponent2d tc triangleComponent uv uvcoord uva uvArea uvc uvComponent uep "
                 "uvEdgePairs ufa uvFaceArea uvs uvSetName us uvShell usi uvShellIds uis uvsInShell");
}

}  // namespace host::commands
