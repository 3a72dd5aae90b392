// The node type remapValue: a number through a ramp of values and a ramp of colours.

#include <algorithm>

#include "nodes/plugs.h"
#include "nodes/ramp.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::number;
using graph::ValueKind;

/// The entries of a ramp; of a ramp of colours, one channel.
std::vector<RampEntry> rampOf(graph::Graph& graph, const graph::Plug& array, int channel) {
    std::vector<RampEntry> entries;
    for (const int index : graph.elements(array)) {
        const graph::Plug entry = array.element(index);
        const graph::Plug value = entry.child(1);
        entries.push_back({graph.number(entry.child(0)),
                           graph.number(value.isCompound() ? value.child(channel) : value),
                           static_cast<RampStep>(choiceAt(graph, entry.child(2)))});
    }
    return entries;
}

/// Where the input lies in its range, 0 to 1. A range that starts and ends at the same place is a step there.
double placeInRange(double value, double low, double high) {
    if (low == high) return value > low ? 1.0 : 0.0;
    return std::clamp((value - low) / (high - low), 0.0, 1.0);
}

graph::ComputedValue computeRemapped(graph::Graph& graph, const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    const auto at = [&](std::string_view name) { return graph.number(node->plug(name)); };
    const bool isColor = output.attribute().parent() != nullptr;
    const std::vector<RampEntry> ramp =
        rampOf(graph, node->plug(isColor ? "color" : "value"), output.attribute().ordinal());
    const double value = rampValue(ramp, placeInRange(at("inputValue"), at("inputMin"), at("inputMax")));
    const double low = at("outputMin");
    return static_cast<double>(static_cast<float>(low + value * (at("outputMax") - low)));
}

AttributeSpec plain(const char* longName, const char* shortName, double value = 0.0) {
    return number(longName, shortName, ValueKind::Float).withDefault(value);
}

AttributeSpec steps(const char* longName, const char* shortName) {
    return graph::enumeration(longName, shortName, {"None", "Linear", "Smooth", "Spline"});
}

}  // namespace

void addRemapTypes(graph::NodeTypes& types) {
    types.add({"remapValue",
               "node",
               {plain("inputValue", "i").keyable(), plain("inputMin", "imn").keyable(),
                plain("inputMax", "imx", 1.0).keyable(), plain("outputMin", "omn").keyable(),
                plain("outputMax", "omx", 1.0).keyable(),
                compound("value", "vl",
                         {plain("value_Position", "vlp"), plain("value_FloatValue", "vlfv"),
                          steps("value_Interp", "vli")})
                    .array(),
                compound("color", "cl",
                         {plain("color_Position", "clp"), keyableColor("color_Color", "clc"),
                          steps("color_Interp", "cli")})
                    .array(),
                plain("outValue", "ov").output(), keyableColor("outColor", "oc").output()},
               {computeRemapped}});
}

}  // namespace host::nodes
