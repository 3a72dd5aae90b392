#pragma once

#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// In which space coordinates are given.
class OPENMAYA_EXPORT MSpace {
  public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,      ///< relative to the transform
        kPreTransform = 2,   ///< before the transform is applied
        kPostTransform = 3,  ///< after it
        kWorld = 4,
        kObject = kPreTransform,
        kLast = 5
    };
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
