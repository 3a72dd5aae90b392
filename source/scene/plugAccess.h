#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// Questions about plugs that make nothing, and writing to arrays of numbers. Main thread only.

/// A plug by its name, "node.attribute"; null where there is none, as in a host without the attribute.
MPlug plugNamed(const MString& name);

/// Indices of the elements that an array plug has, ascending; none for a null plug.
MIntArray existingIndices(const MPlug& array);

/// Whether an array plug has an element of this index.
bool hasElement(const MPlug& array, int index);

/// Whether a plug stands for data that exists: no array that it lies in lacks its element. A plug can be
/// asked for by name before its element exists; reading it could make the element.
bool isPlugPresent(const MPlug& plug);

/// Removes all elements of an array plug of numbers.
/// @return a failure where they are locked, say
MStatus clearElements(const MPlug& array);

/// Sets elements of an array plug of floats to values, in single precision and in the order given.
void setElements(const MPlug& array, const MIntArray& indices, const MDoubleArray& values);
