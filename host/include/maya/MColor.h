#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A colour as red, green, blue and alpha; opaque black by default. Arithmetic does not change alpha.
class OPENMAYA_EXPORT MColor {
  public:
    MColor() = default;
    MColor(float rr, float gg, float bb = 0.0f, float aa = 1.0f) : r(rr), g(gg), b(bb), a(aa) {}

    float operator()(unsigned int i) const { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    float operator[](unsigned int i) const { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    float& operator()(unsigned int i) { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    float& operator[](unsigned int i) { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    /// Red, green and blue.
    bool get(float color[3]) const;

    MColor operator+(const MColor& other) const { return MColor(r + other.r, g + other.g, b + other.b, a); }
    MColor operator-(const MColor& other) const { return MColor(r - other.r, g - other.g, b - other.b, a); }
    MColor operator*(float scale) const { return MColor(r * scale, g * scale, b * scale, a); }
    MColor operator/(float scale) const { return MColor(r / scale, g / scale, b / scale, a); }
    MColor& operator+=(const MColor& other) { return *this = *this + other; }
    MColor& operator*=(float scale) { return *this = *this * scale; }
    MColor& operator/=(float scale) { return *this = *this / scale; }
    bool operator==(const MColor& other) const;
    bool operator!=(const MColor& other) const;

    static const MColor kOpaqueBlack;

    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;
};

OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MColor& color);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
