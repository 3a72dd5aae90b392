// The node types that stand between a driver and what it drives: unitConversion, blendWeighted, pairBlend.

#include <cmath>
#include <string>

#include "geometry/rotationBlend.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::enumeration;
using graph::number;
using graph::ValueKind;

/// How many parts of a second a conversion factor counts times in. A factor is made for times that are whole
/// numbers of such parts: 6000 a second in older releases, 141120000 in newer ones. So from times to frames
/// it is 24 / 6000 or 24 / 141120000. Up to 400 frames a second the two kinds do not overlap, not even with
/// the factor for degrees in it.
/// @param factor  from times to numbers
double partsPerSecond(double factor) {
    constexpr double kSmallestOfOldReleases = 3e-6;
    return std::abs(factor) < kSmallestOfOldReleases ? 141120000.0 : 6000.0;
}

bool isTime(const graph::Plug& plug) {
    return plug && plug.attribute().kind() == ValueKind::Time;
}

/// Angles and distances pass as they are stored: in the same units as those for which the factor is made.
/// Times do not.
graph::ComputedValue computeConversion(graph::Graph& graph, const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    const graph::Plug input = node->plug("input");
    const double factor = graph.number(node->plug("conversionFactor"));
    const double value = graph.number(input) * factor;
    const std::vector<graph::Plug> readers = graph.destinations(output);
    const bool fromTime = isTime(graph.source(input));
    const bool toTime = !readers.empty() && isTime(readers.front());
    if (fromTime == toTime) return value;
    return fromTime ? value * partsPerSecond(factor) : value / partsPerSecond(1.0 / factor);
}

graph::ComputedValue computeWeightedSum(graph::Graph& graph, const graph::Plug& output) {
    const graph::Plug inputs = output.node()->plug("input");
    const graph::Plug weights = output.node()->plug("weight");
    double sum = 0.0;
    // The weight of an input without one is the default: 1.
    for (const int index : graph.elements(inputs))
        sum += graph.number(inputs.element(index)) * graph.number(weights.element(index));
    return sum;
}

/// The weight of the second input by a mode of a pairBlend.
double weightByMode(int mode, double weight) {
    constexpr int kFirstInput = 1;
    constexpr int kSecondInput = 2;
    if (mode == kFirstInput) return 0.0;
    return mode == kSecondInput ? 1.0 : weight;
}

graph::ComputedValue computePairBlend(graph::Graph& graph, const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    const int axis = output.attribute().ordinal();
    const bool isRotation = output.attribute().kind() == ValueKind::Angle;
    const std::string name = isRotation ? "inRotate" : "inTranslate";
    const std::string mode =
        isRotation ? std::string("rotateMode") : std::string("translate") + "XYZ"[axis] + "Mode";
    const graph::Plug first = node->plug(name + '1');
    const graph::Plug second = node->plug(name + '2');
    const double weight = weightByMode(choiceAt(graph, node->plug(mode)), graph.number(node->plug("weight")));
    if (isRotation && graph.number(node->plug("rotInterpolation")) == 1.0) {
        const int order = choiceAt(graph, node->plug("rotateOrder"));
        return geometry::blendAngles(
            tripleAt(graph, first), tripleAt(graph, second),
            order >= 0 && order <= 5 ? static_cast<geometry::RotateOrder>(order) : geometry::RotateOrder::Xyz,
            weight)[axis];
    }
    const double a = graph.number(first.child(axis));
    const double b = graph.number(second.child(axis));
    // Exactly one of the two at the ends.
    return weight == 1.0 ? b : a + weight * (b - a);
}

/// A compound inTranslate1 of inTranslateX1, inTranslateY1, inTranslateZ1 (it1 of itx1, ...).
AttributeSpec input(const std::string& longName, const std::string& shortName, char position,
                    ValueKind kind) {
    std::vector<AttributeSpec> children;
    for (const char axis : {'X', 'Y', 'Z'}) {
        const char lower = static_cast<char>(axis - 'X' + 'x');
        children.push_back(number(longName + axis + position, shortName + lower + position, kind).keyable());
    }
    return compound(longName + position, shortName + position, std::move(children));
}

std::vector<AttributeSpec> pairBlendAttributes() {
    std::vector<AttributeSpec> attributes;
    for (const char position : {'1', '2'}) {
        attributes.push_back(input("inTranslate", "it", position, ValueKind::Distance));
        attributes.push_back(input("inRotate", "ir", position, ValueKind::Angle));
    }
    attributes.push_back(number("weight", "w").withDefault(1).withRange(0, 1).keyable());
    attributes.push_back(enumeration("rotateOrder", "ro", {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"}));
    attributes.push_back(enumeration("rotInterpolation", "ri", {"Eulers", "Quaternions"}));
    // Which input the channels of the driven node show and edit. It does not change the result.
    attributes.push_back(number("currentDriver", "c", ValueKind::Int));
    const std::vector<std::string> modes{"Blend Inputs", "Input 1 Only", "Input 2 Only"};
    for (const auto& [longName, shortName] :
         {std::pair("translateXMode", "txm"), {"translateYMode", "tym"}, {"translateZMode", "tzm"}})
        attributes.push_back(enumeration(longName, shortName, modes));
    attributes.push_back(enumeration("rotateMode", "rm", modes));
    attributes.push_back(graph::triple("outTranslate", "ot", ValueKind::Distance).output());
    attributes.push_back(graph::triple("outRotate", "or", ValueKind::Angle).output());
    return attributes;
}

}  // namespace

void addDriverTypes(graph::NodeTypes& types) {
    types.add({"unitConversion",
               "node",
               {number("input", "i").keyable(), number("output", "o").output(),
                number("conversionFactor", "cf").withDefault(1)},
               {computeConversion},
               false,
               true});
    types.add({"blendWeighted",
               "node",
               {number("input", "i").keyable().array(),
                number("weight", "w").withDefault(1).keyable().array(), number("output", "o").output()},
               {computeWeightedSum}});
    types.add({"pairBlend", "node", pairBlendAttributes(), {computePairBlend}});
}

}  // namespace host::nodes
