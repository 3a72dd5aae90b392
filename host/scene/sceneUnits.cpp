#include "scene/sceneUnits.h"

#include <map>
#include <string_view>

#include "text/numbers.h"

namespace host::scene {

namespace {

constexpr double kPi = 3.14159265358979323846;

bool setLength(SceneUnits& units, const std::string& name) {
    static const std::map<std::string_view, double> kCentimetres{
        {"mm", 0.1},   {"millimeter", 0.1}, {"cm", 1.0},      {"centimeter", 1.0},
        {"m", 100.0},  {"meter", 100.0},    {"km", 100000.0}, {"kilometer", 100000.0},
        {"in", 2.54},  {"inch", 2.54},      {"ft", 30.48},    {"foot", 30.48},
        {"yd", 91.44}, {"yard", 91.44},     {"mi", 160934.4}, {"mile", 160934.4}};
    const auto found = kCentimetres.find(name);
    if (found != kCentimetres.end()) units.centimetres = found->second;
    return found != kCentimetres.end();
}

bool setAngle(SceneUnits& units, const std::string& name) {
    if (name == "deg" || name == "degree") {
        units.radians = 0.0;
    } else if (name == "rad" || name == "radian") {
        units.radians = 1.0;
    } else {
        return false;
    }
    return true;
}

/// Rates that have names. Others are spelled out: "120fps".
constexpr std::pair<std::string_view, double> kRates[] = {{"hour", 1.0 / 3600.0},
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
                                                          {"59.94fps", 60000.0 / 1001.0}};

bool setTime(SceneUnits& units, const std::string& name) {
    for (const auto& [known, framesPerSecond] : kRates) {
        if (known != name) continue;
        units.framesPerSecond = framesPerSecond;
        return true;
    }
    const auto rate = text::readNumber<double>(name);
    if (rate.length == 0 || name.substr(rate.length) != "fps" || !(rate.value > 0.0)) return false;
    units.framesPerSecond = rate.value;
    return true;
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
            return radians != 0.0 ? value / radians : value * (180.0 / kPi);
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

std::string timeUnitName(double framesPerSecond) {
    for (const auto& [name, rate] : kRates) {
        if (rate == framesPerSecond) return std::string(name);
    }
    std::string name;
    text::appendShortest(name, framesPerSecond);
    return name + "fps";
}

}  // namespace host::scene
