// The node types animCurveTL ... animCurveUU: curves of the time or of a plain number.
//
// What is stored, in the units of the graph: keyTime in seconds (T) or as a plain number (U); keyValue like
// the output, in centimetres (L), radians (A), seconds (T) or as a plain number (U). The coordinates of
// tangents have no unit of their own and are never converted: x is in seconds or a plain number, y in
// centimetres, radians, seconds or a plain number, also in scene files that are in other units.

#include "nodes/keyCurve.h"
#include "nodes/plugs.h"
#include "nodes/sceneTime.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::enumeration;
using graph::number;
using graph::ValueKind;

bool isTimed(const graph::NodeRef& curve) {
    return curve->plug("input").attribute().kind() == ValueKind::Time;
}

/// A curve of the time follows the scene's time unless something else drives it.
double inputOf(graph::Graph& graph, const graph::NodeRef& node) {
    const graph::Plug input = node->plug("input");
    if (!isTimed(node)) return graph.number(input);
    return wholeSteps(graph.source(input) ? graph.number(input) : graph.unconnectedNumber(timePlug(graph)));
}

std::vector<Key> keysOf(graph::Graph& graph, const graph::NodeRef& node) {
    const graph::Plug array = node->plug("keyTimeValue");
    const auto& parts = array.attribute().children();
    std::vector<Key> keys;
    if (node->hasIncoming(*parts[0]) || node->hasIncoming(*parts[1])) {
        for (const int index : graph.elements(array)) {
            const graph::Plug key = array.element(index);
            keys.push_back({graph.number(key.child(0)), graph.number(key.child(1)), index});
        }
    } else if (const graph::NumberMulti* numbers = numbersOf(array)) {
        const std::vector<int>& indices = numbers->indices();
        const double* at = numbers->find(indices.front());
        keys.reserve(indices.size());
        for (std::size_t k = 0; k < indices.size(); ++k)
            keys.push_back({at[2 * k], at[2 * k + 1], indices[k]});
    }
    if (isTimed(node)) {
        for (Key& key : keys)
            key.time = wholeSteps(key.time);
    }
    orderKeys(keys);
    return keys;
}

Tangent tangentAt(graph::Graph& graph, const graph::Plug& plug) {
    return static_cast<Tangent>(choiceAt(graph, plug));
}

Infinity infinityAt(graph::Graph& graph, const graph::Plug& plug) {
    return static_cast<Infinity>(choiceAt(graph, plug));
}

StoredTangent tangentOf(graph::Graph& graph, const graph::NodeRef& node, int index, Side side) {
    const bool isIn = side == Side::In;
    const auto part = [&](std::string_view in, std::string_view out) {
        return node->plug(isIn ? in : out).element(index);
    };
    StoredTangent stored{tangentAt(graph, part("keyTanInType", "keyTanOutType"))};
    if (stored.type == Tangent::Global) stored.type = tangentAt(graph, node->plug("tangentType"));
    if (stored.type != Tangent::Fixed) return stored;
    stored.x = graph.number(part("keyTanInX", "keyTanOutX"));
    stored.y = graph.number(part("keyTanInY", "keyTanOutY"));
    return stored;
}

graph::ComputedValue computeCurve(graph::Graph& graph, const graph::Plug& output) {
    const graph::NodeRef& node = output.node();
    KeyCurve curve;
    curve.keys = keysOf(graph, node);
    curve.tangent = [&graph, &node](int index, Side side) { return tangentOf(graph, node, index, side); };
    curve.isWeighted = graph.number(node->plug("weightedTangents")) != 0.0;
    curve.before = infinityAt(graph, node->plug("preInfinity"));
    curve.after = infinityAt(graph, node->plug("postInfinity"));
    return evaluate(curve, inputOf(graph, node));
}

/// What a unitConversion yields depends on whether it feeds a time: see computeConversion.
void tellSource(graph::Graph& graph, const graph::Plug& destination) {
    if (const graph::Plug source = graph.source(destination)) graph.markDirty(*source.node());
}

AttributeSpec tangentTypes(const char* longName, const char* shortName) {
    return enumeration(longName, shortName,
                       {"Global", "Fixed", "Linear", "Flat", "", "Step", "Slow", "Fast", "", "Spline",
                        "Clamped", "", "", "", "", "", "Plateau", "StepNext", "Auto"});
}

AttributeSpec infinity(const char* longName, const char* shortName) {
    return enumeration(longName, shortName,
                       {"Constant", "Linear", "", "Cycle", "Cycle with Offset", "Oscillate"});
}

AttributeSpec coordinate(const char* longName, const char* shortName) {
    return number(longName, shortName, ValueKind::Float).array();
}

std::vector<AttributeSpec> commonAttributes() {
    return {tangentTypes("tangentType", "tan"),
            // Scenes say so only where it is off.
            flag("weightedTangents", "wgt", true), tangentTypes("keyTanInType", "kit").array(),
            tangentTypes("keyTanOutType", "kot").array(), coordinate("keyTanInX", "kix"),
            coordinate("keyTanInY", "kiy"), coordinate("keyTanOutX", "kox"), coordinate("keyTanOutY", "koy"),
            flag("keyTanLocked", "ktl", true).array(), flag("keyWeightLocked", "kwl").array(),
            flag("keyBreakdown", "kbd").array(), flag("keyTickDrawSpecial", "ktds").array(),
            infinity("preInfinity", "pre"), infinity("postInfinity", "pst"), flag("useCurveColor", "ucc"),
            keyableColor("curveColor", "cc")};
}

}  // namespace

void addAnimCurveTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour behaviour;
    behaviour.compute = computeCurve;
    behaviour.connected = tellSource;
    types.add({"animCurve", "node", commonAttributes(), behaviour, true, true});
    struct Unit {
        char letter;
        ValueKind kind;
    };
    for (const Unit from : {Unit{'T', ValueKind::Time}, Unit{'U', ValueKind::Double}}) {
        for (const Unit to : {Unit{'A', ValueKind::Angle}, Unit{'L', ValueKind::Distance},
                              Unit{'T', ValueKind::Time}, Unit{'U', ValueKind::Double}}) {
            types.add({std::string("animCurve") + from.letter + to.letter,
                       "animCurve",
                       {number("input", "i", from.kind), number("output", "o", to.kind).output(),
                        compound("keyTimeValue", "ktv",
                                 {number("keyTime", "kt", from.kind), number("keyValue", "kv", to.kind)})
                            .array()}});
        }
    }
}

}  // namespace host::nodes
