#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

/// The object of a handle that a command keeps for undo and redo. Null if the node is not in the scene any
/// more, or if the handle was never set. A plain MObject cannot tell that its node was deleted.
inline MObject aliveObject(const MObjectHandle& handle) {
    return handle.isValid() ? handle.object() : MObject(MObject::kNullObj);
}
