#pragma once

#include <maya/MArgList.h>

#include <vector>

#include "mel/value.h"

namespace host::api {

/// The words of MArgList.
struct ArgumentAccess {
    static std::vector<mel::Value>& words(MArgList& list);
    static const std::vector<mel::Value>& words(const MArgList& list);
};

}  // namespace host::api
