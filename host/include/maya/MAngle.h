#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A value with its angular unit. The user's unit applies to the whole program. It is degrees at first.
class OPENMAYA_EXPORT MAngle {
  public:
    enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };

    MAngle() = default;
    MAngle(double angle, Unit angleUnit = kRadians) : value_(angle), unit_(angleUnit) {}

    Unit unit() const { return unit_; }
    double value() const { return value_; }
    /// Keeps the value: 1 degree becomes 1 radian. For kInvalid and kLast, fails and changes nothing.
    MStatus setUnit(Unit newUnit);
    MStatus setValue(double newValue);

    /// The angle in another unit; 0 for kInvalid and kLast.
    double as(Unit otherUnit) const;
    double asRadians() const { return as(kRadians); }
    double asDegrees() const { return as(kDegrees); }
    double asAngMinutes() const { return as(kAngMinutes); }
    double asAngSeconds() const { return as(kAngSeconds); }

    static Unit uiUnit();
    static MStatus setUIUnit(Unit newUnit);
    static Unit internalUnit() { return kRadians; }
    static double internalToUI(double internalValue);
    static double uiToInternal(double uiValue);

  private:
    double value_ = 0.0;
    Unit unit_ = kRadians;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
