#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A value with its linear unit. The user's unit applies to the whole program. It is centimetres at first.
class OPENMAYA_EXPORT MDistance {
  public:
    enum Unit {
        kInvalid,
        kInches,
        kFeet,
        kYards,
        kMiles,
        kMillimeters,
        kCentimeters,
        kKilometers,
        kMeters,
        kLast
    };

    MDistance() = default;
    MDistance(double distance, Unit distanceUnit = kCentimeters) : value_(distance), unit_(distanceUnit) {}

    Unit unit() const { return unit_; }
    double value() const { return value_; }
    /// Keeps the value: 1 metre becomes 1 inch. For kInvalid and kLast, fails and changes nothing.
    MStatus setUnit(Unit newUnit);
    MStatus setValue(double newValue);

    /// The distance in another unit; 0 for kInvalid and kLast.
    double as(Unit otherUnit) const;
    double asInches() const { return as(kInches); }
    double asFeet() const { return as(kFeet); }
    double asYards() const { return as(kYards); }
    double asMiles() const { return as(kMiles); }
    double asMillimeters() const { return as(kMillimeters); }
    double asCentimeters() const { return as(kCentimeters); }
    double asKilometers() const { return as(kKilometers); }
    double asMeters() const { return as(kMeters); }

    static Unit uiUnit();
    static MStatus setUIUnit(Unit newUnit);
    static Unit internalUnit() { return kCentimeters; }
    static double internalToUI(double internalValue);
    static double uiToInternal(double uiValue);

  private:
    double value_ = 0.0;
    Unit unit_ = kCentimeters;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
