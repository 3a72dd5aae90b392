#pragma once

#include <maya/MString.h>

/// The symmetry plane of a mesh: where one coordinate is 0, in object space.

/// The error of commands that accept nothing but the three axis texts; as scripts know it.
constexpr const char* kAxisError = "The axis string is not correcty defined. Use x, y, or z.";

/// Whether a text is "x", "y" or "z".
bool isAxisText(const MString& text);

/// The coordinate that an axis text names: 1 for "y", 2 for "z", 0 for anything else.
int axisIndex(const MString& text);

/// A value rounded to five decimals, halves away from zero: the precision in which weights are stored and
/// sides of the plane are told apart. Works in the precision of its argument; a coordinate of 0.000005 lies
/// beside the plane in single precision, and on it if it were widened first.
float round5(float value);
double round5(double value);
