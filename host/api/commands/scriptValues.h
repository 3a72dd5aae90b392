#pragma once

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <string>
#include <vector>

#include "mel/value.h"

namespace host::api {

MCommandResult::Type typeOf(const mel::Value& value);

// Converts a script value of exactly the type of `result`. A value of another type is a failure and changes
// nothing.
MStatus convert(const mel::Value& value, int& result);
MStatus convert(const mel::Value& value, double& result);
MStatus convert(const mel::Value& value, MString& result);
MStatus convert(const mel::Value& value, MIntArray& result);
MStatus convert(const mel::Value& value, MDoubleArray& result);
MStatus convert(const mel::Value& value, MStringArray& result);

mel::Value toValue(const MIntArray& array);
mel::Value toValue(const MDoubleArray& array);
mel::Value toValue(const MStringArray& array);

}  // namespace host::api
