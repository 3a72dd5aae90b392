#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

/// The object behind a handle that a command keeps from do to undo and redo: null when its node is not in the
/// scene any more (or never was set). A plain MObject cannot be asked that once its node is gone.
inline MObject aliveObject(const MObjectHandle& handle) {
    return handle.isValid() ? handle.object() : MObject(MObject::kNullObj);
}
