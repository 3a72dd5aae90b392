#pragma once

#include <maya/MFnBase.h>
#include <maya/MFnDagNode.h>

namespace host::api {

/// The object to which a function set is attached.
struct FunctionSetAccess {
    static const MObject& object(const MFnBase& functionSet) { return functionSet.object_; }
    static bool hasPath(const MFnDagNode& functionSet) { return functionSet.hasPath_; }
};

}  // namespace host::api
