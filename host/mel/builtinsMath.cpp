#include <algorithm>
#include <cmath>
#include <cstdint>

#include "mel/builtinTables.h"
#include "mel/evaluator.h"
#include "mel/operators.h"

namespace host::mel {

namespace {

constexpr double kPi = 3.14159265358979323846;

/// Functions of one float. An angle is in radians unless the name ends with `d`.
template <double (*function)(double)>
bool ofFloat(BuiltinCall& call) {
    const double result = function(call.argument(0).toFloat());
    if (!std::isfinite(result))
        return call.fail("Argument " + call.text(0) + " is outside the range of the function.");
    call.result = result;
    return true;
}

double truncated(double x) {
    return std::trunc(x);
}
double rounded(double x) {
    return std::round(x);
}
double degrees(double x) {
    return x * 180 / kPi;
}
double radians(double x) {
    return x * kPi / 180;
}
double sinDegrees(double x) {
    return std::sin(radians(x));
}
double cosDegrees(double x) {
    return std::cos(radians(x));
}
double tanDegrees(double x) {
    return std::tan(radians(x));
}
double asinDegrees(double x) {
    return degrees(std::asin(x));
}
double acosDegrees(double x) {
    return degrees(std::acos(x));
}
double atanDegrees(double x) {
    return degrees(std::atan(x));
}

bool absolute(BuiltinCall& call) {
    const Value& value = call.argument(0);
    if (value.kind() == Value::Kind::Int) {
        const auto bits = static_cast<unsigned>(value.toInt());
        call.result = static_cast<int>(value.toInt() < 0 ? 0u - bits : bits);
    } else if (const Vector* v = value.getIf<Vector>()) {
        call.result = Vector{std::fabs(v->x), std::fabs(v->y), std::fabs(v->z)};
    } else {
        call.result = std::fabs(value.toFloat());
    }
    return true;
}

bool sign(BuiltinCall& call) {
    const double value = call.argument(0).toFloat();
    call.result = value > 0 ? 1.0 : value < 0 ? -1.0 : 0.0;
    return true;
}

bool minimum(BuiltinCall& call) {
    const bool second = call.argument(1).toFloat() < call.argument(0).toFloat();
    call.result = call.argument(second ? 1 : 0);
    return true;
}

bool maximum(BuiltinCall& call) {
    const bool second = call.argument(1).toFloat() > call.argument(0).toFloat();
    call.result = call.argument(second ? 1 : 0);
    return true;
}

bool clampBetween(BuiltinCall& call) {
    const double low = call.argument(0).toFloat();
    const double high = call.argument(1).toFloat();
    const double value = call.argument(2).toFloat();
    call.result = call.argument(value < low ? 0 : value > high ? 1 : 2);
    return true;
}

bool power(BuiltinCall& call) {
    const double result = std::pow(call.argument(0).toFloat(), call.argument(1).toFloat());
    if (!std::isfinite(result)) return call.fail("Argument is outside the range of the function.");
    call.result = result;
    return true;
}

bool modulo(BuiltinCall& call) {
    const double divisor = call.argument(1).toFloat();
    if (divisor == 0) return call.fail("Modulo by zero.");
    call.result = std::fmod(call.argument(0).toFloat(), divisor);
    return true;
}

bool atan2Of(BuiltinCall& call) {
    call.result = std::atan2(call.argument(0).toFloat(), call.argument(1).toFloat());
    return true;
}

bool hypotOf(BuiltinCall& call) {
    call.result = std::hypot(call.argument(0).toFloat(), call.argument(1).toFloat());
    return true;
}

bool equivalent(BuiltinCall& call) {
    const double tolerance = call.count == 3 ? call.argument(2).toFloat() : 1e-10;
    call.result = std::fabs(call.argument(0).toFloat() - call.argument(1).toFloat()) <= tolerance;
    return true;
}

/// Both arguments as vectors, or an error.
bool vectors(BuiltinCall& call, std::size_t count, Vector* result) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::optional<Value> vector = call.argument(i).convertedTo(Value::Kind::Vector);
        if (!vector) return call.fail(conversionError(call.argument(i).kind(), Value::Kind::Vector));
        result[i] = *vector->getIf<Vector>();
    }
    return true;
}

double magnitude(const Vector& v) {
    return std::sqrt(dotProduct(v, v));
}

bool mag(BuiltinCall& call) {
    Vector v;
    if (!vectors(call, 1, &v)) return false;
    call.result = magnitude(v);
    return true;
}

bool unit(BuiltinCall& call) {
    Vector v;
    if (!vectors(call, 1, &v)) return false;
    const double length = magnitude(v);
    call.result = length == 0 ? v : Vector{v.x / length, v.y / length, v.z / length};
    return true;
}

bool dot(BuiltinCall& call) {
    Vector v[2];
    if (!vectors(call, 2, v)) return false;
    call.result = dotProduct(v[0], v[1]);
    return true;
}

bool cross(BuiltinCall& call) {
    Vector v[2];
    if (!vectors(call, 2, v)) return false;
    call.result = crossProduct(v[0], v[1]);
    return true;
}

bool angle(BuiltinCall& call) {
    Vector v[2];
    if (!vectors(call, 2, v)) return false;
    call.result = std::atan2(magnitude(crossProduct(v[0], v[1])), dotProduct(v[0], v[1]));
    return true;
}

/// rot(vector, axis, angle): rotates about the axis by an angle in radians, counter-clockwise seen from its
/// tip.
bool rotate(BuiltinCall& call) {
    Vector v[2];
    if (!vectors(call, 2, v)) return false;
    const double length = magnitude(v[1]);
    if (length == 0) {
        call.result = v[0];
        return true;
    }
    const Vector axis{v[1].x / length, v[1].y / length, v[1].z / length};
    const double c = std::cos(call.argument(2).toFloat());
    const double s = std::sin(call.argument(2).toFloat());
    const Vector side = crossProduct(axis, v[0]);
    const double along = dotProduct(axis, v[0]) * (1 - c);
    call.result = Vector{v[0].x * c + side.x * s + axis.x * along, v[0].y * c + side.y * s + axis.y * along,
                         v[0].z * c + side.z * s + axis.z * along};
    return true;
}

/// A number from 0 up to, but not including, 1. The generator is our own, so that every platform gives the
/// same sequence.
double nextRandom(std::uint64_t& state) {
    state += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    mixed ^= mixed >> 31;
    return static_cast<double>(mixed >> 11) / 9007199254740992.0;
}

bool rand(BuiltinCall& call) {
    std::uint64_t& state = call.evaluator.randomState();
    if (const Vector* v = call.argument(0).getIf<Vector>(); v && call.count == 1) {
        const double x = v->x * nextRandom(state);
        const double y = v->y * nextRandom(state);
        const double z = v->z * nextRandom(state);
        call.result = Vector{x, y, z};
        return true;
    }
    const double low = call.count == 2 ? call.argument(0).toFloat() : 0;
    const double high = call.argument(call.count - 1).toFloat();
    call.result = low + (high - low) * nextRandom(state);
    return true;
}

bool seed(BuiltinCall& call) {
    call.result = call.argument(0).toInt();
    call.evaluator.randomState() = static_cast<std::uint64_t>(call.argument(0).toInt());
    return true;
}

}  // namespace

const std::vector<BuiltinFunction>& mathBuiltins() {
    static const std::vector<BuiltinFunction> kTable = {
        {"abs", 1, 1, absolute},
        {"sqrt", 1, 1, ofFloat<std::sqrt>},
        {"exp", 1, 1, ofFloat<std::exp>},
        {"log", 1, 1, ofFloat<std::log>},
        {"log10", 1, 1, ofFloat<std::log10>},
        {"floor", 1, 1, ofFloat<std::floor>},
        {"ceil", 1, 1, ofFloat<std::ceil>},
        {"trunc", 1, 1, ofFloat<truncated>},
        {"round", 1, 1, ofFloat<rounded>},
        {"sin", 1, 1, ofFloat<std::sin>},
        {"cos", 1, 1, ofFloat<std::cos>},
        {"tan", 1, 1, ofFloat<std::tan>},
        {"asin", 1, 1, ofFloat<std::asin>},
        {"acos", 1, 1, ofFloat<std::acos>},
        {"atan", 1, 1, ofFloat<std::atan>},
        {"sind", 1, 1, ofFloat<sinDegrees>},
        {"cosd", 1, 1, ofFloat<cosDegrees>},
        {"tand", 1, 1, ofFloat<tanDegrees>},
        {"asind", 1, 1, ofFloat<asinDegrees>},
        {"acosd", 1, 1, ofFloat<acosDegrees>},
        {"atand", 1, 1, ofFloat<atanDegrees>},
        {"deg_to_rad", 1, 1, ofFloat<radians>},
        {"rad_to_deg", 1, 1, ofFloat<degrees>},
        {"pow", 2, 2, power},
        {"fmod", 2, 2, modulo},
        {"atan2", 2, 2, atan2Of},
        {"hypot", 2, 2, hypotOf},
        {"sign", 1, 1, sign},
        {"min", 2, 2, minimum},
        {"max", 2, 2, maximum},
        {"clamp", 3, 3, clampBetween},
        {"equivalent", 2, 2, equivalent},
        {"equivalentTol", 3, 3, equivalent},
        {"mag", 1, 1, mag},
        {"unit", 1, 1, unit},
        {"dot", 2, 2, dot},
        {"cross", 2, 2, cross},
        {"angle", 2, 2, angle},
        {"rot", 3, 3, rotate},
        {"rand", 1, 2, rand},
        {"seed", 1, 1, seed},
    };
    return kTable;
}

}  // namespace host::mel
