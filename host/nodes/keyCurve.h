#pragma once

#include <functional>
#include <vector>

/// A curve through keys, on plain numbers: what an animCurve node computes.
///
/// Times are seconds if the curve is driven by the time, and otherwise plain numbers. Values are in the unit
/// that the graph stores for the curve's output: centimetres, radians, seconds or plain numbers. Tangents are
/// in the same two units.
namespace host::nodes {

/// The numbers of keyTanInType, keyTanOutType and tangentType. A number without a name counts as Auto.
enum class Tangent {
    Global = 0,  // what the curve says for all its keys; if it says Global too, Auto
    Fixed = 1,   // stored; every other tangent follows from the neighbours of the key
    Linear = 2,
    Flat = 3,
    Step = 5,  // on the outgoing side: the value stays until the next key
    Slow = 6,
    Fast = 7,
    Spline = 9,
    Clamped = 10,
    Plateau = 16,
    StepNext = 17,  // on the outgoing side: the value is that of the next key from here on
    Auto = 18,
};

/// The numbers of preInfinity and postInfinity.
enum class Infinity { Constant = 0, Linear = 1, Cycle = 3, CycleWithOffset = 4, Oscillate = 5 };

enum class Side { In, Out };

struct Key {
    double time = 0.0;
    double value = 0.0;
    int index = 0;  // of the element in keyTimeValue, to which the tangents belong
};

/// One side of a key as it is stored. x and y count for a Fixed tangent only.
///
/// In a weighted curve, (x, y) is three times the way from the key to its control point (outgoing side), or
/// from the control point to the key (incoming side). In any other curve only the slope y / x counts.
struct StoredTangent {
    Tangent type = Tangent::Auto;
    double x = 0.0;
    double y = 0.0;
};

struct KeyCurve {
    std::vector<Key> keys{};  // as orderKeys leaves them
    /// Called for the few keys around the evaluated place only.
    std::function<StoredTangent(int index, Side side)> tangent{};
    bool isWeighted = false;
    Infinity before = Infinity::Constant;
    Infinity after = Infinity::Constant;
};

/// Sorts keys by time. Keys that are not finite are left out; of several keys at the same time, the one with
/// the largest index stays. Linear if the keys are in order.
void orderKeys(std::vector<Key>& keys);

/// The value at a time; 0 if the curve has no keys. Finite whatever the tangents are, unless the curve itself
/// goes beyond the largest number. Logarithmic in the number of keys.
///
/// Where a curve cycles, the end of one cycle is the start of the next one.
double evaluate(const KeyCurve& curve, double time);

}  // namespace host::nodes
