#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A value with its unit of time. The user's unit applies to the whole program. It is film, 24 frames per
/// second, at first.
///
/// Comparisons and sums work on the times, not on the values. A sum has the unit of its left side.
class OPENMAYA_EXPORT MTime {
  public:
    enum Unit {
        kInvalid,
        kHours,
        kMinutes,
        kSeconds,
        kMilliseconds,
        k15FPS,
        kGames = k15FPS,
        k24FPS,
        kFilm = k24FPS,
        k25FPS,
        kPALFrame = k25FPS,
        k30FPS,
        kNTSCFrame = k30FPS,
        k48FPS,
        kShowScan = k48FPS,
        k50FPS,
        kPALField = k50FPS,
        k60FPS,
        kNTSCField = k60FPS,
        k2FPS,
        k3FPS,
        k4FPS,
        k5FPS,
        k6FPS,
        k8FPS,
        k10FPS,
        k12FPS,
        k16FPS,
        k20FPS,
        k40FPS,
        k75FPS,
        k80FPS,
        k100FPS,
        k120FPS,
        k23_976FPS,
        k29_97FPS,
        k29_97DF,
        k47_952FPS,
        k59_94FPS,
        k44100FPS,
        k48000FPS,
        k90FPS
    };

    MTime() = default;
    MTime(double time, Unit timeUnit = kFilm) : value_(time), unit_(timeUnit) {}

    Unit unit() const { return unit_; }
    double value() const { return value_; }
    /// Keeps the value: frame 24 becomes second 24. For kInvalid, fails and changes nothing.
    MStatus setUnit(Unit newUnit);
    MStatus setValue(double newValue);
    /// The time in another unit; 0 for kInvalid.
    double as(Unit otherUnit) const;

    bool operator==(const MTime& other) const;
    bool operator!=(const MTime& other) const;
    bool operator<(const MTime& other) const;
    bool operator<=(const MTime& other) const;
    bool operator>(const MTime& other) const;
    bool operator>=(const MTime& other) const;

    MTime operator+(const MTime& other) const;
    MTime operator-(const MTime& other) const;
    MTime operator+(double value) const { return MTime(value_ + value, unit_); }
    MTime operator-(double value) const { return MTime(value_ - value, unit_); }
    MTime operator*(double value) const { return MTime(value_ * value, unit_); }
    MTime operator/(double value) const { return MTime(value_ / value, unit_); }
    MTime& operator+=(const MTime& other) { return *this = *this + other; }
    MTime& operator-=(const MTime& other) { return *this = *this - other; }
    MTime& operator+=(double value) { return *this = *this + value; }
    MTime& operator-=(double value) { return *this = *this - value; }
    MTime& operator*=(double value) { return *this = *this * value; }
    MTime& operator/=(double value) { return *this = *this / value; }

    static Unit uiUnit();
    static MStatus setUIUnit(Unit newUnit);

  private:
    double value_ = 0.0;
    Unit unit_ = kSeconds;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
