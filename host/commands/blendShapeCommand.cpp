// The commands blendShape and deformableShape: creating and querying. blendShapeEdit.cpp does the edits.

#include <algorithm>

#include "commands/blendShapeEdit.h"
#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "nodes/deformers.h"
#include "nodes/plugs.h"

namespace host::commands {

namespace {

using graph::NodeRef;

// Create.

/// The shapes of the objects of a call: targets, then the base.
Found<std::vector<NodeRef>> shapesOf(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> objects = objectsOrSelection(context, arguments);
    if (!objects.ok()) return {{}, objects.error};
    Found<std::vector<NodeRef>> shapes;
    for (const graph::SelectionItem& item : objects.value) {
        if (!item.isWholeNode())
            return {{}, "blendShape: Blend shapes of components or attributes are not covered."};
        const Found<NodeRef> shape = meshShapeOf(context.graph, item.node);
        if (!shape.ok()) return {{}, "blendShape: " + shape.error};
        const Found<nodes::MeshPtr> mesh = evaluatedMesh(context.graph, shape.value);
        if (!mesh.ok()) return {{}, "blendShape: " + mesh.error};
        shapes.value.push_back(shape.value);
    }
    if (shapes.value.empty())
        return {{}, "blendShape: No deformable objects were named, and nothing is selected."};
    const auto base = shapes.value.end() - 1;
    if (std::find(shapes.value.begin(), base, *base) != base)
        return {{}, "blendShape: " + (*base)->name() + " cannot be its own target."};
    return shapes;
}

/// Moves a deformer from the end of a shape's chain to its front.
void moveToFront(graph::Graph& graph, const NodeRef& deformer, const NodeRef& shape) {
    const std::vector<NodeRef> chain = nodes::deformersOf(graph, shape);
    if (chain.size() < 2) return;
    const auto input = [&](const NodeRef& node) {
        return nodes::chainEntry(graph, node, nodes::geometryIndexOf(graph, node, shape));
    };
    const graph::Plug ownInput = input(deformer);
    const graph::Plug firstInput = input(chain.back());
    const graph::Plug lastOutput = graph.source(ownInput);
    const graph::Plug start = graph.source(firstInput);
    const graph::Plug ownOutput = graph.source(shape->plug("inMesh"));
    graph.connect(lastOutput, shape->plug("inMesh"));
    graph.connect(start, ownInput);
    graph.connect(ownOutput, firstInput);
}

CommandResult create(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    for (const char* flag : {"target", "remove", "inBetween"}) {
        if (arguments.isSet(flag))
            return CommandResult::failure(std::string("blendShape: -") + flag +
                                          " without -edit is not covered.");
    }
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    const Found<std::vector<NodeRef>> shapes = shapesOf(context, arguments);
    if (!shapes.ok()) return CommandResult::failure(shapes.error);
    const NodeRef base = shapes.value.back();
    const NodeRef blendShape = nodes::createDeformer(graph, "blendShape", {base}, name.value);
    if (arguments.isSet("frontOfChain")) moveToFront(graph, blendShape, base);
    std::string error = setBlendShapeOptions(graph, blendShape, arguments);
    if (!error.empty()) return CommandResult::failure(error);
    for (std::size_t k = 0; k + 1 < shapes.value.size(); ++k) {
        const nodes::TargetResult added =
            nodes::addTarget(graph, blendShape, 0, static_cast<int>(k), shapes.value[k], 1.0, false);
        if (!added.ok) return CommandResult::failure("blendShape: " + added.error + '.');
    }
    error = setBlendShapeWeights(graph, blendShape, arguments);
    if (!error.empty()) return CommandResult::failure(error);
    return CommandResult::success(std::vector<std::string>{blendShape->name()});
}

// Query.

/// Names of the targets in the order of their weights: the connected mesh, or else the alias.
std::vector<std::string> targetNames(graph::Graph& graph, const NodeRef& blendShape) {
    std::vector<std::string> names;
    for (const int index : nodes::weightIndices(graph, blendShape)) {
        const graph::Plug item = nodes::targetItemPlug(blendShape, 0, index, nodes::itemIndex(1.0));
        const graph::Plug source = graph.source(nodes::childPlug(item, nodes::kGeomTarget));
        const graph::Node* owner = source ? source.node()->parent() : nullptr;
        names.push_back(owner != nullptr
                            ? graph.uniqueName(*owner)
                            : blendShape->alias(blendShape->plug("weight").element(index).key()));
    }
    return names;
}

CommandResult query(CommandContext& context, const ParsedArguments& arguments, const NodeRef& blendShape) {
    graph::Graph& graph = context.graph;
    const auto number = [&](const char* attribute) { return graph.number(blendShape->plug(attribute)); };
    if (arguments.isSet("target")) return CommandResult::success(targetNames(graph, blendShape));
    if (arguments.isSet("weightCount"))
        return CommandResult::success(static_cast<int>(nodes::weightIndices(graph, blendShape).size()));
    if (arguments.isSet("geometry"))
        return CommandResult::success(uniqueNames(graph, nodes::baseShapes(graph, blendShape)));
    if (arguments.isSet("envelope")) return CommandResult::success(number("envelope"));
    if (arguments.isSet("topologyCheck")) return CommandResult::success(number("topologyCheck") != 0.0);
    if (arguments.isSet("origin")) return CommandResult::success(number("origin") == 0.0 ? "world" : "local");
    if (!arguments.isSet("weight")) return CommandResult::failure("blendShape: No flag says what to report.");
    std::vector<double> weights;
    for (const int index : nodes::weightIndices(graph, blendShape))
        weights.push_back(graph.number(blendShape->plug("weight").element(index)));
    return CommandResult::success(std::move(weights));
}

/// The one blend shape of an edit or a query.
Found<NodeRef> namedBlendShape(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> objects = objectsOrSelection(context, arguments);
    if (!objects.ok()) return {nullptr, objects.error};
    if (objects.value.size() != 1) return {nullptr, "blendShape: Exactly one blend shape must be given."};
    const NodeRef node = objects.value.front().node;
    if (!node->isA("blendShape"))
        return {nullptr, "blendShape: " + context.graph.uniqueName(*node) + " is no blend shape."};
    return {node, {}};
}

CommandResult blendShape(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isQuery() && !arguments.isEdit()) return create(context, arguments);
    const Found<NodeRef> node = namedBlendShape(context, arguments);
    if (!node.ok()) return CommandResult::failure(node.error);
    if (arguments.isQuery()) return query(context, arguments, node.value);
    const std::string error = editBlendShape(context.graph, node.value, arguments);
    return error.empty() ? CommandResult::success() : CommandResult::failure(error);
}

// The command deformableShape.

CommandResult deformableShape(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isSet("createTweakNode"))
        return CommandResult::failure("deformableShape: Only -createTweakNode is covered.");
    const Found<std::vector<graph::SelectionItem>> objects =
        meshObjects(context, arguments, "deformableShape");
    if (!objects.ok()) return CommandResult::failure(objects.error);
    std::vector<std::string> names;
    for (const NodeRef& shape : nodesOf(objects.value)) {
        const Found<nodes::MeshPtr> mesh = evaluatedMesh(context.graph, shape);
        if (!mesh.ok()) return CommandResult::failure("deformableShape: " + mesh.error);
        names.push_back(nodes::createTweakNode(context.graph, shape)->name());
    }
    return CommandResult::success(std::move(names));
}

}  // namespace

void registerBlendShapeCommands(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("n", "name", {kText}).flag("foc", "frontOfChain").flag("o", "origin", {kText});
    syntax.flag("tc", "topologyCheck", {kSwitch}).flag("en", "envelope", {kReal});
    syntax.multiUseFlag("w", "weight", {ArgumentType::Unsigned, kReal});
    // The type is not a whole number, because that would bring a weight index that is too large into range
    // without an error.
    syntax.multiUseFlag("t", "target", {kText, kWhole, kText, kReal});
    syntax.flag("ib", "inBetween").flag("ibt", "inBetweenType", {kText}).flag("rm", "remove");
    syntax.flag("wc", "weightCount", {ArgumentType::Unsigned}).multiUseFlag("g", "geometry", {kText});
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add("blendShape", syntax, blendShape,
                 "af after ar afterReference bf before cd copyDelta cid copyInBetweenDelta dt "
                 "deformerTools ex exclusive ft flipTarget gi geometryIndices ibi inBetweenIndex ihs "
                 "includeHiddenSelections mgs mergeSource mgt mergeTarget md mirrorDirection mt "
                 "mirrorTarget ng normalizationGroup par parallel pr prune rtd resetTargetDelta sp split "
                 "sd suppressDialog sa symmetryAxis se symmetryEdge ss symmetrySpace ts tangentSpace tr "
                 "transform uct useComponentTags");

    Syntax deformable;
    deformable.flag("ct", "createTweakNode").objects(ObjectKind::Strings);
    registry.add("deformableShape", deformable, deformableShape,
                 "ch chain cog createOriginalGeometry dc deformationChain og originalGeometry tw tweaks q "
                 "query");
}

}  // namespace host::commands
