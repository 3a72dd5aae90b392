#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Units of measurement as scripts and scene files name them.
namespace host::text {

/// How many centimetres a unit of length has ("in", "meter"); nothing if the unit is not known.
std::optional<double> centimetresPerUnit(std::string_view name);
/// How many degrees a unit of angle has ("rad", "degree"); nothing if the unit is not known.
std::optional<double> degreesPerUnit(std::string_view name);
/// How many of a unit of time make a second ("film", "sec", "120fps"); nothing if the unit is not known.
std::optional<double> unitsPerSecond(std::string_view name);
/// The name of a unit of time of which this many make a second: "film", "ntsc", "120fps".
std::string timeUnitName(double unitsPerSecond);

enum class Quantity { Length, Angle, Time };

/// Reads a number with its unit: "1in", "-45deg", "2sec".
/// @return centimetres, degrees or seconds; nothing for any other text, and for a number without unit
std::optional<double> readMeasure(std::string_view text, Quantity quantity);

}  // namespace host::text
