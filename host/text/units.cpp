#include "text/units.h"

#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "text/numbers.h"

namespace host::text {

namespace {

using Table = std::map<std::string_view, double>;

std::optional<double> entry(const Table& table, std::string_view name) {
    const auto found = table.find(name);
    return found != table.end() ? std::optional<double>(found->second) : std::nullopt;
}

/// Rates that have names. Others are spelled out: "120fps".
constexpr std::array<std::pair<std::string_view, double>, 16> kRates{{{"hour", 1.0 / 3600.0},
                                                                      {"min", 1.0 / 60.0},
                                                                      {"sec", 1.0},
                                                                      {"millisec", 1000.0},
                                                                      {"game", 15.0},
                                                                      {"film", 24.0},
                                                                      {"pal", 25.0},
                                                                      {"ntsc", 30.0},
                                                                      {"show", 48.0},
                                                                      {"palf", 50.0},
                                                                      {"ntscf", 60.0},
                                                                      {"23.976fps", 24000.0 / 1001.0},
                                                                      {"29.97fps", 30000.0 / 1001.0},
                                                                      {"29.97df", 30000.0 / 1001.0},
                                                                      {"47.952fps", 48000.0 / 1001.0},
                                                                      {"59.94fps", 60000.0 / 1001.0}}};

}  // namespace

std::optional<double> centimetresPerUnit(std::string_view name) {
    static const Table kCentimetres{
        {"mm", 0.1},   {"millimeter", 0.1}, {"cm", 1.0},      {"centimeter", 1.0},
        {"m", 100.0},  {"meter", 100.0},    {"km", 100000.0}, {"kilometer", 100000.0},
        {"in", 2.54},  {"inch", 2.54},      {"ft", 30.48},    {"foot", 30.48},
        {"yd", 91.44}, {"yard", 91.44},     {"mi", 160934.4}, {"mile", 160934.4}};
    return entry(kCentimetres, name);
}

std::optional<double> degreesPerUnit(std::string_view name) {
    constexpr double kRadian = 180.0 / 3.14159265358979323846;
    static const Table kDegrees{{"deg", 1.0}, {"degree", 1.0}, {"rad", kRadian}, {"radian", kRadian}};
    return entry(kDegrees, name);
}

std::optional<double> unitsPerSecond(std::string_view name) {
    for (const auto& [known, rate] : kRates) {
        if (known == name) return rate;
    }
    const auto rate = readNumber<double>(name);
    // Others are no rates of anything, and times would become infinite or zero.
    constexpr double kSlowest = 1e-4;
    constexpr double kFastest = 1e7;
    const bool isRate = rate.length > 0 && name.substr(rate.length) == "fps" && rate.value >= kSlowest &&
                        rate.value <= kFastest;
    return isRate ? std::optional<double>(rate.value) : std::nullopt;
}

std::string timeUnitName(double unitsPerSecond) {
    for (const auto& [name, rate] : kRates) {
        if (rate == unitsPerSecond) return std::string(name);
    }
    std::string name;
    appendShortest(name, unitsPerSecond);
    return name + "fps";
}

std::optional<double> readMeasure(std::string_view text, Quantity quantity) {
    const auto number = readNumber<double>(text);
    if (number.length == 0) return std::nullopt;
    const std::string_view unit = text.substr(number.length);
    std::optional<double> value;
    if (quantity == Quantity::Time) {
        if (const std::optional<double> rate = unitsPerSecond(unit)) value = number.value / *rate;
    } else {
        const auto factor = quantity == Quantity::Length ? centimetresPerUnit(unit) : degreesPerUnit(unit);
        if (factor) value = number.value * *factor;
    }
    // "inf" and "nan" are numbers, too, and others become infinite.
    return value && std::isfinite(*value) ? value : std::nullopt;
}

}  // namespace host::text
