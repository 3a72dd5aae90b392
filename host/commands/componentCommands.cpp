// The command polyListComponentConversion.

#include <algorithm>
#include <map>
#include <optional>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/meshSupport.h"

namespace host::commands {

namespace {

using graph::ComponentKind;

/// Calls visit(a, b) for each pair of a component of one kind and one of another that touch.
template <typename Visit>
void visitPairs(const geometry::Topology& topology, ComponentKind from, ComponentKind to, Visit&& visit) {
    if (from == to) {
        for (int element = 0; element < componentCount(topology, from); ++element)
            visit(element, element);
        return;
    }
    const auto is = [&](ComponentKind a, ComponentKind b) {
        return (from == a && to == b) || (from == b && to == a);
    };
    // In each branch the first is of the kind that has fewer dimensions.
    const bool isSwapped = static_cast<int>(from) > static_cast<int>(to);
    const auto pair = [&](int low, int high) { isSwapped ? visit(high, low) : visit(low, high); };
    if (is(ComponentKind::Vertex, ComponentKind::Edge)) {
        for (int edge = 0; edge < topology.edgeCount(); ++edge) {
            for (const int vertex : topology.edge(edge))
                pair(vertex, edge);
        }
        return;
    }
    const bool hasVertices = is(ComponentKind::Vertex, ComponentKind::Face);
    for (int face = 0; face < topology.faceCount(); ++face) {
        for (const int low : hasVertices ? topology.faceVertices(face) : topology.faceEdges(face))
            pair(low, face);
    }
}

enum class Extent { Any, Internal, Border };

/// The components of a kind that touch the given ones: all, those that touch no others, or those that do.
std::vector<int> converted(const geometry::Topology& topology, const graph::Component& given,
                           ComponentKind to, Extent extent) {
    std::vector<bool> isGiven(static_cast<std::size_t>(componentCount(topology, given.kind())), false);
    for (const int element : given.elements())
        isGiven[static_cast<std::size_t>(element)] = true;
    const auto count = static_cast<std::size_t>(componentCount(topology, to));
    std::vector<int> touched(count, 0);
    std::vector<int> all(count, 0);
    visitPairs(topology, given.kind(), to, [&](int source, int target) {
        ++all[static_cast<std::size_t>(target)];
        touched[static_cast<std::size_t>(target)] += isGiven[static_cast<std::size_t>(source)] ? 1 : 0;
    });
    std::vector<int> result;
    for (std::size_t k = 0; k < count; ++k) {
        const bool isInternal = touched[k] == all[k];
        if (touched[k] == 0 || (extent == Extent::Internal && !isInternal)) continue;
        if (extent != Extent::Border || !isInternal) result.push_back(static_cast<int>(k));
    }
    return result;
}

struct KindFlag {
    const char* from;
    const char* to;
    ComponentKind kind;
};
constexpr KindFlag kKindFlags[] = {{"fromVertex", "toVertex", ComponentKind::Vertex},
                                   {"fromEdge", "toEdge", ComponentKind::Edge},
                                   {"fromFace", "toFace", ComponentKind::Face}};

CommandResult convert(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> items =
        meshObjects(context, arguments, "polyListComponentConversion");
    if (!items.ok()) return CommandResult::failure(items.error);
    std::vector<ComponentKind> from;
    std::optional<ComponentKind> to;
    for (const KindFlag& flag : kKindFlags) {
        if (arguments.isSet(flag.from)) from.push_back(flag.kind);
        if (!arguments.isSet(flag.to)) continue;
        if (to) return CommandResult::failure("polyListComponentConversion: Give one kind to convert to.");
        to = flag.kind;
    }
    const Extent extent = arguments.isSet("internal") ? Extent::Internal
                          : arguments.isSet("border") ? Extent::Border
                                                      : Extent::Any;
    graph::Selection result;
    for (const graph::SelectionItem& item : items.value) {
        const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, item.node);
        if (!mesh.ok()) return CommandResult::failure("polyListComponentConversion: " + mesh.error);
        const geometry::Topology& topology = mesh.value->mesh.topology();
        const graph::Component given =
            item.component ? *item.component
                           : graph::Component::complete(ComponentKind::Face, topology.faceCount());
        const bool isTaken = from.empty() || !item.component ||
                             std::find(from.begin(), from.end(), given.kind()) != from.end();
        if (!isTaken) continue;
        if (!to) {
            result.add({item.node, {}, {}});
            continue;
        }
        graph::Component component =
            graph::Component::fromIndices(*to, converted(topology, given, *to, extent));
        if (!component.empty()) result.add({item.node, {}, std::move(component)});
    }
    std::vector<std::string> names;
    for (const graph::SelectionItem& item : result.items()) {
        const graph::Node* transform = item.node->parent();
        if (item.isWholeNode() && transform != nullptr) {
            names.push_back(graph.uniqueName(*transform));
            continue;
        }
        for (std::string& name : graph::itemNames(graph, item))
            names.push_back(std::move(name));
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerComponentCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("fv", "fromVertex").flag("fe", "fromEdge").flag("ff", "fromFace");
    syntax.flag("tv", "toVertex").flag("te", "toEdge").flag("tf", "toFace");
    syntax.flag("in", "internal").flag("bo", "border").objects(ObjectKind::Strings);
    registry.add("polyListComponentConversion", syntax, convert,
                 "fuv fromUV fvf fromVertexFace tuv toUV tvf toVertexFace uvs uvShell uvb uvShellBorder");
}

}  // namespace host::commands
