// MAngle, MDistance and MTime: values with units, and the user's units.

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include <atomic>
#include <cmath>

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {

// The user's units. Any thread may read them.
std::atomic<MAngle::Unit> angleUnit{MAngle::kDegrees};
std::atomic<MDistance::Unit> distanceUnit{MDistance::kCentimeters};

constexpr double kRadiansPerDegree = 0.017453292519943295769236907684886;

// The size of a unit in radians, centimetres or ticks; 0 if it is not a unit. Ticks divide every rate without
// a remainder, so that whole frames stay exact.

double sizeOf(MAngle::Unit unit) {
    switch (unit) {
        case MAngle::kRadians:
            return 1.0;
        case MAngle::kDegrees:
            return kRadiansPerDegree;
        case MAngle::kAngMinutes:
            return kRadiansPerDegree / 60.0;
        case MAngle::kAngSeconds:
            return kRadiansPerDegree / 3600.0;
        case MAngle::kInvalid:
        case MAngle::kLast:
            break;
    }
    return 0.0;
}

double sizeOf(MDistance::Unit unit) {
    switch (unit) {
        case MDistance::kInches:
            return 2.54;
        case MDistance::kFeet:
            return 30.48;
        case MDistance::kYards:
            return 91.44;
        case MDistance::kMiles:
            return 160934.4;
        case MDistance::kMillimeters:
            return 0.1;
        case MDistance::kCentimeters:
            return 1.0;
        case MDistance::kKilometers:
            return 100000.0;
        case MDistance::kMeters:
            return 100.0;
        case MDistance::kInvalid:
        case MDistance::kLast:
            break;
    }
    return 0.0;
}

constexpr double kTicksPerSecond = 141120000.0;

double framesPerSecond(MTime::Unit unit) {
    switch (unit) {
        case MTime::k2FPS:
            return 2.0;
        case MTime::k3FPS:
            return 3.0;
        case MTime::k4FPS:
            return 4.0;
        case MTime::k5FPS:
            return 5.0;
        case MTime::k6FPS:
            return 6.0;
        case MTime::k8FPS:
            return 8.0;
        case MTime::k10FPS:
            return 10.0;
        case MTime::k12FPS:
            return 12.0;
        case MTime::k15FPS:
            return 15.0;
        case MTime::k16FPS:
            return 16.0;
        case MTime::k20FPS:
            return 20.0;
        case MTime::k24FPS:
            return 24.0;
        case MTime::k25FPS:
            return 25.0;
        case MTime::k30FPS:
            return 30.0;
        case MTime::k40FPS:
            return 40.0;
        case MTime::k48FPS:
            return 48.0;
        case MTime::k50FPS:
            return 50.0;
        case MTime::k60FPS:
            return 60.0;
        case MTime::k75FPS:
            return 75.0;
        case MTime::k80FPS:
            return 80.0;
        case MTime::k100FPS:
            return 100.0;
        case MTime::k120FPS:
            return 120.0;
        case MTime::k90FPS:
            return 90.0;
        case MTime::k23_976FPS:
            return 24000.0 / 1001.0;
        case MTime::k29_97FPS:
        case MTime::k29_97DF:
            return 30000.0 / 1001.0;
        case MTime::k47_952FPS:
            return 48000.0 / 1001.0;
        case MTime::k59_94FPS:
            return 60000.0 / 1001.0;
        case MTime::k44100FPS:
            return 44100.0;
        case MTime::k48000FPS:
            return 48000.0;
        default:
            return 0.0;
    }
}

double sizeOf(MTime::Unit unit) {
    switch (unit) {
        case MTime::kInvalid:
            return 0.0;
        case MTime::kHours:
            return kTicksPerSecond * 3600.0;
        case MTime::kMinutes:
            return kTicksPerSecond * 60.0;
        case MTime::kSeconds:
            return kTicksPerSecond;
        case MTime::kMilliseconds:
            return kTicksPerSecond / 1000.0;
        default:
            break;
    }
    const double rate = framesPerSecond(unit);
    return rate > 0.0 ? kTicksPerSecond / rate : 0.0;
}

template <typename Unit>
double converted(double value, Unit from, Unit to) {
    if (from == to) return value;
    const double size = sizeOf(to);
    return size > 0.0 ? value * sizeOf(from) / size : 0.0;
}

/// Accepts a unit if it is one.
template <typename Target, typename Unit>
MStatus assignUnit(Target& target, Unit unit) {
    if (!(sizeOf(unit) > 0.0)) return MStatus::kInvalidParameter;
    target = unit;
    return MStatus::kSuccess;
}

double ticks(const MTime& time) {
    return std::round(time.value() * sizeOf(time.unit()));
}

}  // namespace

MStatus MAngle::setUnit(Unit newUnit) {
    return assignUnit(unit_, newUnit);
}

MStatus MAngle::setValue(double newValue) {
    value_ = newValue;
    return MStatus::kSuccess;
}

double MAngle::as(Unit otherUnit) const {
    return converted(value_, unit_, otherUnit);
}

MAngle::Unit MAngle::uiUnit() {
    return angleUnit;
}

MStatus MAngle::setUIUnit(Unit newUnit) {
    return assignUnit(angleUnit, newUnit);
}

double MAngle::internalToUI(double internalValue) {
    return converted(internalValue, internalUnit(), uiUnit());
}

double MAngle::uiToInternal(double uiValue) {
    return converted(uiValue, uiUnit(), internalUnit());
}

MStatus MDistance::setUnit(Unit newUnit) {
    return assignUnit(unit_, newUnit);
}

MStatus MDistance::setValue(double newValue) {
    value_ = newValue;
    return MStatus::kSuccess;
}

double MDistance::as(Unit otherUnit) const {
    return converted(value_, unit_, otherUnit);
}

MDistance::Unit MDistance::uiUnit() {
    return distanceUnit;
}

MStatus MDistance::setUIUnit(Unit newUnit) {
    return assignUnit(distanceUnit, newUnit);
}

double MDistance::internalToUI(double internalValue) {
    return converted(internalValue, internalUnit(), uiUnit());
}

double MDistance::uiToInternal(double uiValue) {
    return converted(uiValue, uiUnit(), internalUnit());
}

MStatus MTime::setUnit(Unit newUnit) {
    return assignUnit(unit_, newUnit);
}

MStatus MTime::setValue(double newValue) {
    value_ = newValue;
    return MStatus::kSuccess;
}

double MTime::as(Unit otherUnit) const {
    return converted(value_, unit_, otherUnit);
}

bool MTime::operator==(const MTime& other) const {
    return ticks(*this) == ticks(other);
}

bool MTime::operator!=(const MTime& other) const {
    return !(*this == other);
}

bool MTime::operator<(const MTime& other) const {
    return ticks(*this) < ticks(other);
}

bool MTime::operator<=(const MTime& other) const {
    return !(other < *this);
}

bool MTime::operator>(const MTime& other) const {
    return other < *this;
}

bool MTime::operator>=(const MTime& other) const {
    return !(*this < other);
}

MTime MTime::operator+(const MTime& other) const {
    return MTime(value_ + other.as(unit_), unit_);
}

MTime MTime::operator-(const MTime& other) const {
    return MTime(value_ - other.as(unit_), unit_);
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
