#pragma once

#include <maya/MPoint.h>
#include <maya/MString.h>

#include "files/rounding.h"

/// The symmetry plane of a mesh: where one coordinate is 0, in object space.

/// The error of commands that accept only the three axis texts. Spelling is deliberate:
/// docs/compatibility.md.
constexpr const char* kAxisError = "The axis string is not correcty defined. Use x, y, or z.";

/// Whether a text is "x", "y" or "z".
bool isAxisText(const MString& text);

/// The index of the coordinate that an axis text names: 1 for "y", 2 for "z", 0 for anything else.
int axisIndex(const MString& text);

/// Whether a point is no farther from the plane than the tolerance, compared as the host compares points.
bool isOnPlane(const MPoint& position, unsigned int axis, double tolerance);

/// The side of the plane on which a coordinate lies, after rounding to five decimals: 1, -1, or 0 on the
/// plane.
int planeSide(float coordinate);
