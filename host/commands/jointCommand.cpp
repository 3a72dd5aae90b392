#include <optional>
#include <unordered_set>
#include <utility>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "commands/jointOrient.h"
#include "commands/transformSupport.h"
#include "graph/hierarchy.h"
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
    if (!arguments.isSet("relative")) {
        const Found<geometry::Matrix4> toParent = worldToParent(graph, joint);
        if (!toParent.ok()) return toParent.error;
        position = geometry::transformPoint(position, toParent.value);
    }
    return writeTriple(graph, joint, "translate", position);
}

std::string setNumberFlag(graph::Graph& graph, const NodeRef& joint, const char* attribute, double value) {
    std::string error = writeObstacle(graph, joint->plug(attribute));
    if (error.empty()) graph.setNumber(joint->plug(attribute), value);
    return error;
}

/// The flags that exist once for each axis, by their names without it.
constexpr const char* kAxes[] = {"X", "Y", "Z"};

std::string axisFlag(const char* flag, int axis) {
    return std::string(flag) + kAxes[axis];
}

/// Angles, limits of the rotation, stiffness and freedom.
std::string setAxisValues(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments) {
    std::string error;
    const auto set = [&](const graph::Plug& plug, double value) {
        if (error.empty()) error = writeObstacle(graph, plug);
        if (error.empty()) graph.setNumber(plug, value);
    };
    const auto child = [&](const char* attribute, int axis) { return joint->plug(attribute).child(axis); };
    const auto radians = [&](double degrees) {
        return fromScriptUnit(graph, graph::ValueKind::Angle, degrees);
    };
    for (int axis = 0; axis < 3; ++axis) {
        if (arguments.isSet(axisFlag("angle", axis))) {
            const graph::Plug angle = child("rotate", axis);
            const double value = radians(arguments.number(axisFlag("angle", axis)));
            set(angle, arguments.isSet("relative") ? graph.number(angle) + value : value);
        }
        const std::vector<Value>& limits = arguments.values(axisFlag("limit", axis));
        if (!limits.empty()) {
            set(child("minRotLimit", axis), radians(limits[0].toFloat()));
            set(child("maxRotLimit", axis), radians(limits[1].toFloat()));
        }
        const std::string enabling = axisFlag("limitSwitch", axis);
        if (!limits.empty() || arguments.isSet(enabling)) {
            const double isEnabled = arguments.boolean(enabling, true) ? 1.0 : 0.0;
            set(child("minRotLimitEnable", axis), isEnabled);
            set(child("maxRotLimitEnable", axis), isEnabled);
        }
        if (arguments.isSet(axisFlag("stiffness", axis)))
            set(child("stiffness", axis), arguments.number(axisFlag("stiffness", axis)));
        if (arguments.isSet("degreeOfFreedom")) {
            const bool isFree = arguments.text("degreeOfFreedom").find("xyz"[axis]) != std::string::npos;
            set(joint->plug(axisFlag("jointType", axis)), isFree ? 1.0 : 0.0);
        }
    }
    return error;
}

/// The value of a flag for one axis; nothing if none was asked for.
std::optional<Value> axisValue(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments) {
    const auto number = [&](const char* attribute, int axis) {
        return graph.number(joint->plug(attribute).child(axis));
    };
    const auto degrees = [&](const char* attribute, int axis) {
        return toScriptUnit(graph, graph::ValueKind::Angle, number(attribute, axis));
    };
    for (int axis = 0; axis < 3; ++axis) {
        if (arguments.isSet(axisFlag("angle", axis))) return Value(degrees("rotate", axis));
        if (arguments.isSet(axisFlag("limitSwitch", axis)))
            return Value(number("minRotLimitEnable", axis) != 0.0 &&
                         number("maxRotLimitEnable", axis) != 0.0);
        if (arguments.isSet(axisFlag("limit", axis)))
            return Value(std::vector<double>{degrees("minRotLimit", axis), degrees("maxRotLimit", axis)});
        if (arguments.isSet(axisFlag("stiffness", axis))) return Value(number("stiffness", axis));
    }
    if (!arguments.isSet("degreeOfFreedom")) return std::nullopt;
    std::string freedom;
    for (int axis = 0; axis < 3; ++axis) {
        if (graph.number(joint->plug(axisFlag("jointType", axis))) != 0.0) freedom += "xyz"[axis];
    }
    return Value(std::move(freedom));
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
    if (error.empty() && arguments.isSet("scaleOrientation"))
        error = writeTriple(graph, joint, "rotateAxis",
                            toRadians(vectorOf(arguments.values("scaleOrientation"))));
    if (error.empty()) error = setAxisValues(graph, joint, arguments);
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
    for (const char* flag : {"orientJoint", "secondaryAxisOrient", "zeroScaleOrient", "children", "component",
                             "setPreferredAngles", "assumePreferredAngles"}) {
        if (arguments.isSet(flag))
            return CommandResult::failure(std::string("joint: -") + flag + " needs -edit.");
    }
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
    if (arguments.isSet("scaleOrientation"))
        return CommandResult::success(listOf(toDegrees(nodes::tripleAt(graph, joint->plug("rotateAxis")))));
    if (arguments.isSet("name")) return CommandResult::success(graph.uniqueName(*joint));
    if (std::optional<Value> value = axisValue(graph, joint, arguments))
        return CommandResult::success(std::move(*value));
    return CommandResult::failure("joint: No flag says what to report.");
}

/// The joints of a call and, with -children, all joints below them, parents first.
std::vector<NodeRef> withChildren(const std::vector<NodeRef>& joints) {
    std::vector<NodeRef> result;
    std::unordered_set<const graph::Node*> seen;
    for (const NodeRef& joint : joints) {
        graph::visitHierarchy(*joint, [&](graph::Node& node) {
            if (node.isA("joint") && seen.insert(&node).second) result.push_back(node.ref());
        });
    }
    return result;
}

std::string editOne(graph::Graph& graph, const NodeRef& joint, const ParsedArguments& arguments,
                    const std::optional<JointOrienting>& orienting) {
    std::string error;
    if (arguments.isSet("component")) {
        const KeptChildren kept(graph, joint);
        error = setValues(graph, joint, arguments);
        if (error.empty()) error = kept.restore(graph);
    } else {
        error = setValues(graph, joint, arguments);
    }
    if (error.empty() && arguments.isSet("assumePreferredAngles"))
        error = writeTriple(graph, joint, "rotate", nodes::tripleAt(graph, joint->plug("preferredAngle")));
    if (error.empty() && arguments.isSet("setPreferredAngles"))
        error = writeTriple(graph, joint, "preferredAngle", nodes::tripleAt(graph, joint->plug("rotate")));
    if (!error.empty()) return error;
    const bool zeroesScaleOrient = arguments.isSet("zeroScaleOrient");
    if (orienting) return orientJoint(graph, joint, *orienting, zeroesScaleOrient);
    if (!zeroesScaleOrient) return {};
    const KeptChildren kept(graph, joint);
    error = writeTriple(graph, joint, "rotateAxis", {});
    return error.empty() ? kept.restore(graph) : error;
}

CommandResult edit(graph::Graph& graph, const std::vector<NodeRef>& joints,
                   const ParsedArguments& arguments) {
    if (arguments.isSet("name")) return CommandResult::failure("joint: Use rename to name a joint.");
    if (arguments.isSet("secondaryAxisOrient") && !arguments.isSet("orientJoint"))
        return CommandResult::failure("joint: -secondaryAxisOrient needs -orientJoint.");
    std::optional<JointOrienting> orienting;
    if (arguments.isSet("orientJoint")) {
        const Found<JointOrienting> found =
            jointOrienting(arguments.text("orientJoint"), arguments.text("secondaryAxisOrient"));
        if (!found.ok()) return CommandResult::failure(found.error);
        orienting = found.value;
    }
    for (const NodeRef& joint : arguments.isSet("children") ? withChildren(joints) : joints) {
        std::string error = editOne(graph, joint, arguments, orienting);
        if (!error.empty()) return CommandResult::failure(std::move(error));
    }
    return CommandResult::success();
}

CommandResult joint(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isSet("exists")) {
        const Found<NodeRef> named = findOneNode(context.graph, arguments.text("exists"));
        return CommandResult::success(named.ok() && named.value->isA("joint"));
    }
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
    syntax.flag("so", "scaleOrientation", {kAngle, kAngle, kAngle}).flag("dof", "degreeOfFreedom", {kText});
    syntax.flag("ax", "angleX", {kAngle}).flag("ay", "angleY", {kAngle}).flag("az", "angleZ", {kAngle});
    syntax.flag("lx", "limitX", {kAngle, kAngle}).flag("ly", "limitY", {kAngle, kAngle});
    syntax.flag("lz", "limitZ", {kAngle, kAngle}).flag("lsx", "limitSwitchX", {kSwitch});
    syntax.flag("lsy", "limitSwitchY", {kSwitch}).flag("lsz", "limitSwitchZ", {kSwitch});
    syntax.flag("stx", "stiffnessX", {kReal}).flag("sty", "stiffnessY", {kReal});
    syntax.flag("stz", "stiffnessZ", {kReal}).flag("oj", "orientJoint", {kText});
    syntax.flag("sao", "secondaryAxisOrient", {kText}).flag("zso", "zeroScaleOrient");
    syntax.flag("ch", "children").flag("co", "component");
    syntax.flag("spa", "setPreferredAngles").flag("apa", "assumePreferredAngles");
    syntax.flag("ex", "exists", {kText}).makeQueryWithArguments("exists");
    syntax.enableQuery().enableEdit().objects(ObjectKind::Strings);
    registry.add("joint", syntax, joint, "sym symmetry sa symmetryAxis");
}

}  // namespace host::commands
