#include "scene/sceneUnits.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "text/units.h"

namespace host::scene {

namespace {

constexpr double kPi = 3.14159265358979323846;

bool setLength(SceneUnits& units, const std::string& name) {
    const std::optional<double> centimetres = text::centimetresPerUnit(name);
    if (centimetres) units.centimetres = *centimetres;
    return centimetres.has_value();
}

bool setAngle(SceneUnits& units, const std::string& name) {
    const std::optional<double> degrees = text::degreesPerUnit(name);
    if (degrees) units.radians = *degrees == 1.0 ? 0.0 : *degrees * (kPi / 180.0);
    return degrees.has_value();
}

bool setTime(SceneUnits& units, const std::string& name) {
    const std::optional<double> rate = text::unitsPerSecond(name);
    if (rate) units.framesPerSecond = *rate;
    return rate.has_value();
}

/// The degrees that read back as these radians, if there are any; otherwise the nearest ones.
double degreesOf(double radians) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double degrees = radians * (180.0 / kPi);
    for (const double candidate :
         {degrees, std::nextafter(degrees, kInfinity), std::nextafter(degrees, -kInfinity)}) {
        if (candidate * (kPi / 180.0) == radians) return candidate;
    }
    return degrees;
}

}  // namespace

double SceneUnits::toGraph(graph::ValueKind kind, double value) const {
    switch (kind) {
        case graph::ValueKind::Distance:
            return centimetres == 1.0 ? value : value * centimetres;
        case graph::ValueKind::Angle:
            return radians != 0.0 ? value * radians : value * (kPi / 180.0);
        case graph::ValueKind::Time:
            return value / framesPerSecond;
        default:
            return value;
    }
}

double SceneUnits::toFile(graph::ValueKind kind, double value) const {
    switch (kind) {
        case graph::ValueKind::Distance:
            return centimetres == 1.0 ? value : value / centimetres;
        case graph::ValueKind::Angle:
            return radians != 0.0 ? value / radians : degreesOf(value);
        case graph::ValueKind::Time:
            return value * framesPerSecond;
        default:
            return value;
    }
}

bool setUnit(SceneUnits& units, std::string_view flag, const std::string& name) {
    if (flag == "-l" || flag == "-linear") return setLength(units, name);
    if (flag == "-a" || flag == "-angle") return setAngle(units, name);
    if (flag == "-t" || flag == "-time") return setTime(units, name);
    return false;
}

}  // namespace host::scene
