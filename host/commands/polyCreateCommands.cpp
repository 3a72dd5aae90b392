// The commands that make meshes: polyCube, polySphere, polyPlane, polyTorus, polyUnite.

#include <algorithm>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "nodes/deformers.h"
#include "nodes/meshNode.h"

namespace host::commands {

namespace {

using graph::NodeRef;

/// A flag that sets a number of the history node.
struct NumberFlag {
    const char* shortName;
    const char* longName;
    const char* attribute;
    ArgumentType unit;
};

struct Primitive {
    const char* command;  // and node type
    const char* transformName;
    std::vector<NumberFlag> flags;
};

const std::vector<Primitive>& primitives() {
    static const NumberFlag kRadius{"r", "radius", "radius", kLength};
    static const NumberFlag kWidth{"w", "width", "width", kLength};
    static const NumberFlag kHeight{"h", "height", "height", kLength};
    static const std::vector<NumberFlag> kRound{{"sa", "subdivisionsAxis", "subdivisionsAxis", kWhole},
                                                {"sx", "subdivisionsX", "subdivisionsAxis", kWhole},
                                                {"sh", "subdivisionsHeight", "subdivisionsHeight", kWhole},
                                                {"sy", "subdivisionsY", "subdivisionsHeight", kWhole}};
    static const std::vector<NumberFlag> kFlat{{"sw", "subdivisionsWidth", "subdivisionsWidth", kWhole},
                                               {"sx", "subdivisionsX", "subdivisionsWidth", kWhole},
                                               {"sh", "subdivisionsHeight", "subdivisionsHeight", kWhole},
                                               {"sy", "subdivisionsY", "subdivisionsHeight", kWhole}};
    const auto with = [](std::vector<NumberFlag> flags, const std::vector<NumberFlag>& more) {
        flags.insert(flags.end(), more.begin(), more.end());
        return flags;
    };
    static const std::vector<Primitive> kAll{
        {"polyCube", "pCube1",
         with({kWidth,
               kHeight,
               {"d", "depth", "depth", kLength},
               {"sd", "subdivisionsDepth", "subdivisionsDepth", kWhole},
               {"sz", "subdivisionsZ", "subdivisionsDepth", kWhole}},
              kFlat)},
        {"polySphere", "pSphere1", with({kRadius}, kRound)},
        {"polyPlane", "pPlane1", with({kWidth, kHeight}, kFlat)},
        {"polyTorus", "pTorus1",
         with({kRadius, {"sr", "sectionRadius", "sectionRadius", kLength}, {"tw", "twist", "twist", kAngle}},
              kRound)}};
    return kAll;
}

// Primitives.

/// Sets the numbers that flags give.
/// @return empty, or the error
std::string setNumbers(graph::Graph& graph, const NodeRef& history, const Primitive& primitive,
                       const ParsedArguments& arguments) {
    for (const NumberFlag& flag : primitive.flags) {
        if (!arguments.isSet(flag.longName)) continue;
        const graph::Plug plug = history->plug(flag.attribute);
        std::string error = writeObstacle(graph, plug);
        if (!error.empty()) return error;
        graph.setNumber(plug,
                        fromScriptUnit(graph, plug.attribute().kind(), arguments.number(flag.longName)));
    }
    return {};
}

/// The history node with a name: itself, or the one that made the mesh of that name.
Found<NodeRef> findHistory(graph::Graph& graph, const std::string& name, const Primitive& primitive) {
    const Found<NodeRef> node = findOneNode(graph, name);
    if (!node.ok() || node.value->isA(primitive.command)) return node;
    if (NodeRef shape = nodes::shapeOf(graph, node.value); shape != nullptr && shape->isA("mesh")) {
        if (const NodeRef original = nodes::originalShape(graph, shape)) shape = original;
        const graph::Plug source = graph.source(shape->plug("inMesh"));
        if (source && source.node()->isA(primitive.command)) return {source.node(), {}};
    }
    return {nullptr, std::string(primitive.command) + ": " + name + " has no history of this kind."};
}

CommandResult editPrimitive(CommandContext& context, const ParsedArguments& arguments,
                            const Primitive& primitive) {
    const std::string prefix = std::string(primitive.command) + ": ";
    const std::vector<std::string> names = arguments.objectNames();
    if (names.size() != 1) return CommandResult::failure(prefix + "One object must be named.");
    const Found<NodeRef> history = findHistory(context.graph, names.front(), primitive);
    if (!history.ok()) return CommandResult::failure(history.error);
    if (arguments.isEdit()) {
        const std::string error = setNumbers(context.graph, history.value, primitive, arguments);
        return error.empty() ? CommandResult::success() : CommandResult::failure(error);
    }
    for (const NumberFlag& flag : primitive.flags) {
        if (!arguments.isSet(flag.longName)) continue;
        const graph::Plug plug = history.value->plug(flag.attribute);
        const double value = toScriptUnit(context.graph, plug.attribute().kind(), context.graph.number(plug));
        const bool isWhole = plug.attribute().kind() == graph::ValueKind::Int;
        return CommandResult::success(isWhole ? Value(static_cast<int>(value)) : Value(value));
    }
    return CommandResult::failure(prefix + "No flag says what to report.");
}

bool isAxisUp(const ParsedArguments& arguments) {
    if (!arguments.isSet("axis")) return true;
    const std::vector<Value>& axis = arguments.values("axis");
    return axis[0].toFloat() == 0.0 && axis[1].toFloat() > 0.0 && axis[2].toFloat() == 0.0;
}

/// Connects the shape to a history node. Without construction history, only the resulting mesh is kept.
void finishMesh(graph::Graph& graph, const NodeRef& history, const NodeRef& shape, bool keepsHistory) {
    graph.connect(history->plug("output"), shape->plug("inMesh"));
    if (!keepsHistory) graph.deleteNodes({history});
    shadeInitially(graph, shape);
    selectNodes(graph, {shape->parent()->ref()});
}

CommandResult namesOf(const graph::Graph& graph, const NodeRef& shape, const NodeRef& history) {
    std::vector<std::string> names{graph.uniqueName(*shape->parent())};
    if (history->isAlive()) names.push_back(history->name());
    return CommandResult::success(std::move(names));
}

CommandResult createPrimitive(CommandContext& context, const ParsedArguments& arguments,
                              const Primitive& primitive) {
    graph::Graph& graph = context.graph;
    Found<std::string> name{graph.wholeName(primitive.transformName), {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    if (!isAxisUp(arguments))
        return CommandResult::failure(std::string(primitive.command) +
                                      ": An axis other than 0 1 0 is not covered.");
    const NodeRef shape = createEmptyMesh(graph, name.value);
    const NodeRef history = graph.createNode(*graph.types().find(primitive.command));
    const std::string error = setNumbers(graph, history, primitive, arguments);
    if (!error.empty()) return CommandResult::failure(error);
    finishMesh(graph, history, shape, arguments.boolean("constructionHistory", true));
    return namesOf(graph, shape, history);
}

void registerPrimitive(mel::CommandRegistry& registry, const Primitive& primitive) {
    Syntax syntax;
    for (const NumberFlag& flag : primitive.flags)
        syntax.flag(flag.shortName, flag.longName, {flag.unit});
    syntax.flag("n", "name", {kText}).flag("ch", "constructionHistory", {kSwitch});
    // No command of this host reads texture coordinates, so any value of createUVs is accepted.
    syntax.flag("ax", "axis", {kReal, kReal, kReal}).flag("cuv", "createUVs", {kWhole});
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add(
        primitive.command, syntax,
        [&primitive](CommandContext& context, const ParsedArguments& arguments) {
            if (arguments.isQuery() || arguments.isEdit())
                return editPrimitive(context, arguments, primitive);
            if (!arguments.objects().empty())
                return CommandResult::failure(std::string(primitive.command) +
                                              ": Too many objects or values.");
            return createPrimitive(context, arguments, primitive);
        },
        "cch caching nds nodeState o object tx texture");
}

// The command polyUnite.

/// Deletes what a united mesh replaces: shapes, and transforms that held nothing else.
void deleteSources(graph::Graph& graph, const std::vector<NodeRef>& shapes) {
    std::vector<NodeRef> gone;
    for (const NodeRef& shape : shapes) {
        const auto& siblings = shape->parent()->children();
        const bool isAlone = std::all_of(siblings.begin(), siblings.end(),
                                         [](const graph::Node* child) { return child->isA("shape"); });
        gone.push_back(isAlone ? shape->parent()->ref() : shape);
    }
    graph.deleteNodes(gone);
}

void connectSources(graph::Graph& graph, const NodeRef& unite, const std::vector<NodeRef>& shapes) {
    for (std::size_t k = 0; k < shapes.size(); ++k) {
        const int index = static_cast<int>(k);
        graph.connect(shapes[k]->plug("worldMesh").element(0), unite->plug("inputPoly").element(index));
        graph.connect(shapes[k]->plug("worldMatrix").element(0), unite->plug("inputMat").element(index));
    }
}

CommandResult polyUnite(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const Found<std::vector<graph::SelectionItem>> objects = meshObjects(context, arguments, "polyUnite");
    if (!objects.ok()) return CommandResult::failure(objects.error);
    const std::vector<NodeRef> shapes = nodesOf(objects.value);
    if (shapes.size() < 2)
        return CommandResult::failure("polyUnite: At least two polygonal objects are needed.");
    for (const NodeRef& shape : shapes) {
        const Found<nodes::MeshPtr> mesh = evaluatedMesh(graph, shape);
        if (!mesh.ok()) return CommandResult::failure("polyUnite: " + mesh.error);
    }
    Found<std::string> name{"polySurface1", {}};
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    const NodeRef shape = createEmptyMesh(graph, name.value);
    const NodeRef unite = graph.createNode(*graph.types().find("polyUnite"));
    connectSources(graph, unite, shapes);
    if (graph.data(unite->plug("output")) == nullptr) return CommandResult::failureShown();
    const bool keepsHistory = arguments.boolean("constructionHistory", true);
    finishMesh(graph, unite, shape, keepsHistory);
    if (!keepsHistory) {
        deleteSources(graph, shapes);
    } else {
        for (const NodeRef& source : shapes)
            nodes::setIntermediate(graph, source, true);
    }
    return namesOf(graph, shape, unite);
}

}  // namespace

void registerPolyCreateCommands(mel::CommandRegistry& registry) {
    for (const Primitive& primitive : primitives())
        registerPrimitive(registry, primitive);

    Syntax unite;
    unite.flag("n", "name", {kText}).flag("ch", "constructionHistory", {kSwitch});
    unite.objects(ObjectKind::Strings);
    registry.add("polyUnite", unite, polyUnite,
                 "cch caching cp centerPivot muv mergeUVSets nds nodeState op objectPivot e edit q query");
}

}  // namespace host::commands
