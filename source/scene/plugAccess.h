#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// Queries of plugs that create no elements, and writing to arrays of numbers. Main thread only.

/// A plug by its name, "node.attribute". Null if there is none, for example in a host without the attribute.
MPlug plugNamed(const MString& name);

/// Indices of the existing elements of an array plug, ascending. Empty for a null plug.
MIntArray existingIndices(const MPlug& array);

/// Whether an array plug has an element of this index.
bool hasElement(const MPlug& array, int index);

/// Whether the data of a plug exists: in every array above the plug, its element exists. The host gives a
/// plug by name even if its element does not exist, and reading such a plug could create the element.
bool isPlugPresent(const MPlug& plug);

/// Removes all elements of an array plug of numbers.
/// @return a failure if they cannot be removed, for example because they are locked
MStatus clearElements(const MPlug& array);

/// Sets elements of an array plug of floats, in single precision and in the order given.
void setElements(const MPlug& array, const MIntArray& indices, const MDoubleArray& values);
