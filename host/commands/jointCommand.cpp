#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/transformSupport.h"
#include "nodes/plugs.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using geometry::Vec3;
using graph::NodeRef;

Vec3 vectorOf(const std::vector<Value>& words) {
    return {words[0].toFloat(), words[1].toFloat(), words[2].toFloat()};
}

std::vector<double> listOf(const Vec3& value) {
    return {value.x, value.y, value.z};
}

/// -position is in world space unless -relative is given.
std::string setPosition(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments) {
    if (!arguments.isSet("position")) return {};
    Vec3 position = vectorOf(arguments.values("position"));
    if (!arguments.isSet("relative"))
        position = geometry::transformPoint(position, worldToParent(graph, joint));
    return writeTriple(graph, joint, "translate", position);
}

std::string setNumberFlag(graph::Graph& graph, const NodeRef& joint, const char* attribute, double value) {
    std::string error = writeObstacle(graph, joint->plug(attribute));
    if (error.empty()) graph.setNumber(joint->plug(attribute), value);
    return error;
}

/// What creating and editing have in common.
/// @return empty, or the error
std::string setValues(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments) {
    if (arguments.isSet("absolute") && arguments.isSet("relative"))
        return "joint: -absolute and -relative cannot be used together.";
    std::string error = setPosition(graph, joint, arguments);
    if (error.empty() && arguments.isSet("orientation"))
        error =
            writeTriple(graph, joint, "jointOrient", toRadians(vectorOf(arguments.values("orientation"))));
    if (error.empty() && arguments.isSet("scale"))
        error = writeTriple(graph, joint, "scale", vectorOf(arguments.values("scale")));
    if (error.empty() && arguments.isSet("radius"))
        error = setNumberFlag(graph, joint, "radius", arguments.number("radius"));
    if (error.empty() && arguments.isSet("scaleCompensate"))
        error = setNumberFlag(graph, joint, "segmentScaleCompensate", arguments.boolean("scaleCompensate"));
    return error;
}

/// The one transform that a new joint is put below; null for the top level.
Found<NodeRef> parentOf(CommandContext& context, const ParsedArguments& arguments) {
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return {nullptr, items.error};
    const bool isNamed = !arguments.objects().empty();
    if (items.value.size() == 1 && items.value.front().isWholeNode() &&
        items.value.front().node->isA("transform"))
        return {items.value.front().node, {}};
    if (isNamed) return {nullptr, "joint: A new joint goes below one transform."};
    return {};
}

CommandResult create(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    Found<std::string> name;
    if (arguments.isSet("name")) name = legalName(context.graph, arguments.text("name"));
    if (!name.ok()) return CommandResult::failure(name.error);
    const Found<NodeRef> parent = parentOf(context, arguments);
    if (!parent.ok()) return CommandResult::failure(parent.error);
    const NodeRef joint = graph.createNode(*graph.types().find("joint"), name.value, parent.value.get());
    nodes::compensateParentScale(graph, joint);
    const std::string error = setValues(graph, joint, arguments);
    if (!error.empty()) return CommandResult::failure(error);
    selectNodes(graph, {joint});
    return CommandResult::success(graph.uniqueName(*joint));
}

CommandResult query(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments) {
    if (arguments.isSet("position")) {
        const Vec3 position = arguments.isSet("relative") ? nodes::tripleAt(graph, joint->plug("translate"))
                                                          : nodes::worldMatrix(graph, joint).row(3);
        return CommandResult::success(listOf(position));
    }
    if (arguments.isSet("orientation")) {
        const Vec3 orient = nodes::tripleAt(graph, joint->plug("jointOrient"));
        return CommandResult::success(listOf(toDegrees(orient)));
    }
    if (arguments.isSet("scale"))
        return CommandResult::success(listOf(nodes::tripleAt(graph, joint->plug("scale"))));
    if (arguments.isSet("radius")) return CommandResult::success(graph.number(joint->plug("radius")));
    if (arguments.isSet("scaleCompensate"))
        return CommandResult::success(graph.number(joint->plug("segmentScaleCompensate")) != 0.0);
    if (arguments.isSet("name")) return CommandResult::success(graph.uniqueName(*joint));
    return CommandResult::failure("joint: No flag says what to report.");
}

CommandResult edit(graph::Graph& graph, const std::vector<NodeRef>& joints,
                   const ParsedArguments& arguments) {
    if (arguments.isSet("name")) return CommandResult::failure("joint: Use rename to name a joint.");
    for (const NodeRef& joint : joints) {
        const std::string error = setValues(graph, joint, arguments);
        if (!error.empty()) return CommandResult::failure(error);
    }
    return CommandResult::success();
}

CommandResult joint(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isQuery() && !arguments.isEdit()) return create(context, arguments);
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    const std::vector<NodeRef> joints = nodesOf(items.value);
    if (joints.empty()) return CommandResult::failure("joint: No joint was given, and nothing is selected.");
    for (const NodeRef& node : joints) {
        if (!node->isA("joint"))
            return CommandResult::failure("joint: " + context.graph.uniqueName(*node) + " is no joint.");
    }
    return arguments.isQuery() ? query(context.graph, joints.front(), arguments)
                               : edit(context.graph, joints, arguments);
}

}  // namespace

void registerJointCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("p", "position", {kLength, kLength, kLength}).flag("a", "absolute").flag("r", "relative");
    syntax.flag("n", "name", {kText}).flag("o", "orientation", {kAngle, kAngle, kAngle});
    syntax.flag("s", "scale", {kReal, kReal, kReal}).flag("rad", "radius", {kReal});
    syntax.flag("sc", "scaleCompensate", {kSwitch});
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add("joint", syntax, joint,
                 "ax angleX ay angleY az angleZ ap assumePreferredAngles ch children co component dof "
                 "degreeOfFreedom ex exists lsx limitSwitchX lsy limitSwitchY lsz limitSwitchZ lx limitX ly "
                 "limitY lz limitZ oj orientJoint sao secondaryAxisOrient so scaleOrientation spa "
                 "setPreferredAngles stx stiffnessX sty stiffnessY stz stiffnessZ sym symmetry sa "
                 "symmetryAxis zso zeroScaleOrient");
}

}  // namespace host::commands
