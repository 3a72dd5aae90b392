#include "commands/xformQuery.h"

#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Matrix4;
using geometry::Vec3;
using graph::SelectionItem;

void append(std::vector<double>& numbers, const Vec3& value) {
    numbers.insert(numbers.end(), {value.x, value.y, value.z});
}

using Numbers = std::vector<double>;
using QueryFunction = void (*)(graph::Graph&, const Placed&, bool world, Numbers&);

struct Query {
    const char* flag;
    QueryFunction run;
};

geometry::TransformParts worldParts(graph::Graph& graph, const Placed& node) {
    const geometry::RotateOrder order = nodes::transformParts(graph, node).rotateOrder;
    return geometry::decomposeTransform(worldMatrix(graph, node), order);
}

geometry::TransformParts partsIn(graph::Graph& graph, const Placed& node, bool world) {
    return world ? worldParts(graph, node) : nodes::transformParts(graph, node);
}

constexpr Query kQueries[] = {
    {"translation", [](graph::Graph& graph, const Placed& node, bool world,
                       Numbers& out) { append(out, partsIn(graph, node, world).translate); }},
    {"rotation", [](graph::Graph& graph, const Placed& node, bool world,
                    Numbers& out) { append(out, toDegrees(partsIn(graph, node, world).rotate)); }},
    {"scale", [](graph::Graph& graph, const Placed& node, bool world,
                 Numbers& out) { append(out, partsIn(graph, node, world).scale); }},
    {"shear", [](graph::Graph& graph, const Placed& node, bool world,
                 Numbers& out) { append(out, partsIn(graph, node, world).shear); }},
    {"matrix",
     [](graph::Graph& graph, const Placed& node, bool world, Numbers& out) {
         const Matrix4 matrix = world ? worldMatrix(graph, node) : nodes::localMatrix(graph, node);
         for (const auto& row : matrix.m)
             out.insert(out.end(), row.begin(), row.end());
     }},
    {"rotatePivot",
     [](graph::Graph& graph, const Placed& node, bool world, Numbers& out) {
         append(out,
                world ? rotatePivotInWorld(graph, node) : nodes::transformParts(graph, node).rotatePivot);
     }},
    {"scalePivot",
     [](graph::Graph& graph, const Placed& node, bool world, Numbers& out) {
         append(out, world ? scalePivotInWorld(graph, node) : nodes::transformParts(graph, node).scalePivot);
     }},
    {"boundingBox", nullptr}};  // the only answer that may not exist: see appendBox

void appendPoints(graph::Graph& graph, const SelectionItem& item, bool world, Numbers& numbers) {
    const nodes::MeshPtr mesh = nodes::meshOf(graph, item.node);
    const Matrix4 matrix = world ? worldMatrix(graph, item) : Matrix4();
    const std::vector<int> vertices = verticesOf(mesh, *item.component);
    numbers.reserve(numbers.size() + 3 * vertices.size());
    for (const int vertex : vertices) {
        const Vec3 point = mesh->mesh.point(vertex);
        append(numbers, world ? geometry::transformPoint(point, matrix) : point);
    }
}

/// Appends the minimum and maximum of what is at and below a transform.
/// @return empty, or the error
std::string appendBox(graph::Graph& graph, const Placed& node, bool world, Numbers& numbers) {
    Found<Matrix4> toSpace;
    if (!world) toSpace = worldToParent(graph, node);
    if (!toSpace.ok()) return toSpace.error;
    geometry::BoundingBox box;
    expandBox(graph, node, toSpace.value, box);
    append(numbers, box.min);
    append(numbers, box.max);
    return {};
}

/// Appends the value for one item.
/// @return empty, or the error
std::string appendAnswer(graph::Graph& graph, const SelectionItem& item, const Query& query, bool world,
                         Numbers& numbers) {
    if (item.component) {
        if (query.flag != std::string_view("translation"))
            return std::string("xform: -") + query.flag + " of components is not covered.";
        appendPoints(graph, item, world, numbers);
        return {};
    }
    const Placed node = item.node->isA("shape") ? Placed(item).parent() : Placed(item);
    if (item.plug || !node->isA("transform"))
        return "xform: " + graph::itemName(graph, item) + " is neither a transform nor points of a mesh.";
    if (query.run == nullptr) return appendBox(graph, node, world, numbers);
    query.run(graph, node, world, numbers);
    return {};
}

}  // namespace

void expandBox(graph::Graph& graph, const Placed& node, const Matrix4& toSpace, geometry::BoundingBox& box) {
    visitMeshes(graph, node, [&](const Placed& shape, const geometry::Mesh& mesh) {
        box.expand(geometry::bounds(mesh).transformed(worldMatrix(graph, shape) * toSpace));
    });
}

CommandResult queryXform(CommandContext& context, const ParsedArguments& arguments,
                         const std::vector<SelectionItem>& items) {
    if (arguments.isSet("rotateOrder")) {
        const graph::Node& node = *items.front().node;
        if (!node.isA("transform"))
            return CommandResult::failure("xform: -rotateOrder of this object is not covered.");
        const auto order = nodes::transformParts(context.graph, items.front().node).rotateOrder;
        return CommandResult::success(kRotateOrderNames[static_cast<int>(order)]);
    }
    for (const Query& query : kQueries) {
        if (!arguments.isSet(query.flag)) continue;
        Numbers numbers;
        for (const SelectionItem& item : items) {
            std::string error =
                appendAnswer(context.graph, item, query, arguments.isSet("worldSpace"), numbers);
            if (!error.empty()) return CommandResult::failure(std::move(error));
        }
        return CommandResult::success(std::move(numbers));
    }
    return CommandResult::failure("xform: No flag says what to report.");
}

CommandResult pointPosition(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const bool isPoint = items.value.size() == 1 && items.value.front().component &&
                         items.value.front().component->kind() == graph::ComponentKind::Vertex &&
                         items.value.front().component->count() == 1;
    Numbers numbers;
    if (isPoint) appendPoints(context.graph, items.value.front(), !arguments.isSet("local"), numbers);
    if (numbers.empty()) return CommandResult::failure("pointPosition: Exactly one vertex must be given.");
    return CommandResult::success(std::move(numbers));
}

}  // namespace host::commands
