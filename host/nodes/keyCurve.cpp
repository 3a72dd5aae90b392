// Curves through keys: tangents, segments, and what lies beyond the keys.

#include "nodes/keyCurve.h"

#include <algorithm>
#include <cmath>

namespace host::nodes {

namespace {

/// The slope of a vertical tangent: the tangent of 89.99999 degrees.
constexpr double kSteepest = 5729577.9485;
/// Neighbours whose values differ by no more than this make a clamped tangent linear.
constexpr double kClose = 0.05;

struct Vector2 {
    double x = 0.0;
    double y = 0.0;
};

double slopeOf(const Vector2& direction) {
    if (direction.y == 0.0) return 0.0;
    if (std::abs(direction.y) > std::abs(direction.x) * kSteepest)
        return std::copysign(kSteepest, direction.y);
    return direction.y / direction.x;
}

double slopeBetween(const Key& a, const Key& b) {
    return (b.value - a.value) / (b.time - a.time);
}

/// What a tangent that is not stored follows from.
struct Neighbourhood {
    double own = 0.0;     // slope to the neighbour on the side of the tangent
    double other = 0.0;   // slope to the neighbour on the other side
    double across = 0.0;  // slope between the two neighbours
    double rise = 0.0;    // difference of value to the neighbour on the side of the tangent
    bool isEnd = false;   // one neighbour is missing: the other one counts for all
};

Neighbourhood neighbourhood(const std::vector<Key>& keys, std::size_t at, Side side) {
    Neighbourhood result;
    const bool hasLeft = at > 0;
    const bool hasRight = at + 1 < keys.size();
    result.isEnd = !hasLeft || !hasRight;
    if (!hasLeft && !hasRight) return result;
    const Key& left = keys[hasLeft ? at - 1 : at];
    const Key& right = keys[hasRight ? at + 1 : at];
    result.across = slopeBetween(left, right);
    const double toLeft = hasLeft ? slopeBetween(left, keys[at]) : result.across;
    const double toRight = hasRight ? slopeBetween(keys[at], right) : result.across;
    const bool isIn = side == Side::In;
    result.own = isIn ? toLeft : toRight;
    result.other = isIn ? toRight : toLeft;
    result.rise = isIn ? keys[at].value - left.value : right.value - keys[at].value;
    return result;
}

/// Flat at hills, valleys and ends. Elsewhere no steeper than three times the flatter side, which keeps both
/// segments between the values of their keys.
double slopeWithoutOvershoot(const Neighbourhood& around) {
    const bool isUp = around.own > 0.0 && around.other > 0.0;
    const bool isDown = around.own < 0.0 && around.other < 0.0;
    if (around.isEnd || (!isUp && !isDown)) return 0.0;
    const double limit = 3.0 * std::min(std::abs(around.own), std::abs(around.other));
    return std::clamp(around.across, -limit, limit);
}

double slopeByType(Tangent type, const Neighbourhood& around) {
    switch (type) {
        case Tangent::Linear:
            return around.own;
        case Tangent::Fast:
            // Between a slow and a fast tangent the curve is a parabola.
            return 2.0 * around.own;
        case Tangent::Spline:
            return around.across;
        case Tangent::Clamped:
            return std::abs(around.rise) <= kClose ? around.own : around.across;
        case Tangent::Flat:
        case Tangent::Slow:
        case Tangent::Step:
        case Tangent::StepNext:
            return 0.0;
        default:
            return slopeWithoutOvershoot(around);
    }
}

/// Tangent of a key in a segment of the given length, in the meaning of StoredTangent for a weighted curve.
Vector2 tangentIn(const KeyCurve& curve, std::size_t at, Side side, double length) {
    const StoredTangent stored = curve.tangent(curve.keys[at].index, side);
    if (stored.type != Tangent::Fixed)
        return {length, length * slopeByType(stored.type, neighbourhood(curve.keys, at, side))};
    if (!std::isfinite(stored.x) || !std::isfinite(stored.y)) return {length, 0.0};
    if (curve.isWeighted) return {std::max(stored.x, 0.0), stored.y};
    return {length, length * slopeOf({stored.x, stored.y})};
}

/// A cubic from `start` to `end` with these derivatives at its ends, at s in 0 .. 1.
double cubicAt(double s, double start, double end, double atStart, double atEnd) {
    const double rest = 1.0 - s;
    return start + (end - start) * s * s * (3.0 - 2.0 * s) + s * rest * (atStart * rest - atEnd * s);
}

/// Where a weighted segment reaches the part u of its length.
/// @param out, in  the tangents' part of the length, such that the time never runs back
double parameterAt(double u, double out, double in) {
    constexpr int kMaxSteps = 100;
    double low = 0.0;
    double high = 1.0;
    double s = u;
    for (int step = 0; step < kMaxSteps; ++step) {
        const double error = cubicAt(s, 0.0, 1.0, out, in) - u;
        if (error == 0.0) break;
        (error > 0.0 ? high : low) = s;
        const double rest = 1.0 - s;
        const double speed = 6.0 * s * rest + out * rest * (1.0 - 3.0 * s) - in * s * (2.0 - 3.0 * s);
        double next = s - error / speed;
        if (!(next > low && next < high)) next = 0.5 * (low + high);
        if (next == s) break;
        s = next;
    }
    return s;
}

/// Shortens both tangents of a segment, if needed, so that the time does not run back between them.
///
/// With control points at a and 1 - d of the length, the derivative of the time is that of a quadratic with
/// the coefficients a, 1 - a - d and d. It is nowhere negative if 1 - a - d >= -sqrt(a * d).
void keepTimeForward(Vector2& out, Vector2& in, double length) {
    const double a = out.x / (3.0 * length);
    const double d = in.x / (3.0 * length);
    // Not the root of a * d, which may be too large or too small for a number.
    const double excess = a + d - std::sqrt(a) * std::sqrt(d);
    if (excess <= 1.0) return;
    out = {out.x / excess, out.y / excess};
    in = {in.x / excess, in.y / excess};
}

/// @param left  position of the key before the time; the key after it exists
double valueInSegment(const KeyCurve& curve, std::size_t left, double time) {
    const Key& a = curve.keys[left];
    const Key& b = curve.keys[left + 1];
    const Tangent leaving = curve.tangent(a.index, Side::Out).type;
    if (leaving == Tangent::Step) return a.value;
    if (leaving == Tangent::StepNext) return b.value;
    const double length = b.time - a.time;
    Vector2 out = tangentIn(curve, left, Side::Out, length);
    Vector2 in = tangentIn(curve, left + 1, Side::In, length);
    double s = (time - a.time) / length;
    if (out.x != length || in.x != length) {
        keepTimeForward(out, in, length);
        s = parameterAt(s, out.x / length, in.x / length);
    }
    const double value = cubicAt(s, a.value, b.value, out.y, in.y);
    // Keys may be so close together that slopes between them are no numbers.
    return std::isfinite(value) ? value : a.value;
}

/// @param time  not before the first key and not after the last
double valueBetweenKeys(const KeyCurve& curve, double time) {
    const auto next = std::upper_bound(curve.keys.begin(), curve.keys.end(), time,
                                       [](double wanted, const Key& key) { return wanted < key.time; });
    const auto left = static_cast<std::size_t>(next - curve.keys.begin()) - 1;
    if (next == curve.keys.end() || curve.keys[left].time == time) return curve.keys[left].value;
    return valueInSegment(curve, left, time);
}

/// The time of a key that is this close, otherwise the time itself.
double snappedToKey(const std::vector<Key>& keys, double time, double slack) {
    const auto near = std::lower_bound(keys.begin(), keys.end(), time - slack,
                                       [](const Key& key, double wanted) { return key.time < wanted; });
    return near != keys.end() && near->time <= time + slack ? near->time : time;
}

double valueOfCycle(const KeyCurve& curve, Infinity infinity, double time) {
    // What is calculated must not miss the start of a cycle, or a step at a key, by the last digits.
    constexpr double kSlack = 1e-9;
    const Key& first = curve.keys.front();
    const Key& last = curve.keys.back();
    const double length = last.time - first.time;
    const double cycles = std::floor((time - first.time) / length + kSlack);
    double offset = std::clamp(time - first.time - cycles * length, 0.0, length);
    if (infinity == Infinity::Oscillate && std::fmod(cycles, 2.0) != 0.0) offset = length - offset;
    const double inside = std::min(first.time + offset, last.time);
    const double value = valueBetweenKeys(curve, snappedToKey(curve.keys, inside, kSlack * length));
    return infinity == Infinity::CycleWithOffset ? value + cycles * (last.value - first.value) : value;
}

double valueBeyond(const KeyCurve& curve, double time) {
    const bool isBefore = time < curve.keys.front().time;
    const std::size_t at = isBefore ? 0 : curve.keys.size() - 1;
    const Infinity infinity = isBefore ? curve.before : curve.after;
    const Key& end = curve.keys[at];
    switch (infinity) {
        case Infinity::Linear:
            return end.value +
                   (time - end.time) * slopeOf(tangentIn(curve, at, isBefore ? Side::In : Side::Out, 1.0));
        case Infinity::Cycle:
        case Infinity::CycleWithOffset:
        case Infinity::Oscillate:
            return curve.keys.size() > 1 ? valueOfCycle(curve, infinity, time) : end.value;
        default:
            return end.value;
    }
}

}  // namespace

void orderKeys(std::vector<Key>& keys) {
    const auto isBroken = [](const Key& key) {
        return !std::isfinite(key.time) || !std::isfinite(key.value);
    };
    keys.erase(std::remove_if(keys.begin(), keys.end(), isBroken), keys.end());
    const auto isLate = [](const Key& a, const Key& b) { return a.time >= b.time; };
    if (std::adjacent_find(keys.begin(), keys.end(), isLate) == keys.end()) return;
    std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
        return a.time != b.time ? a.time < b.time : a.index > b.index;
    });
    const auto isSameTime = [](const Key& a, const Key& b) { return a.time == b.time; };
    keys.erase(std::unique(keys.begin(), keys.end(), isSameTime), keys.end());
}

double evaluate(const KeyCurve& curve, double time) {
    if (curve.keys.empty()) return 0.0;
    const Key& first = curve.keys.front();
    const Key& last = curve.keys.back();
    if (!std::isfinite(time)) return time > 0.0 ? last.value : first.value;
    if (time >= first.time && time <= last.time) return valueBetweenKeys(curve, time);
    return valueBeyond(curve, time);
}

}  // namespace host::nodes
