#pragma once

#include <maya/MTypes.h>

/// Puts two exported texts into the plug-in, by which the host sees what the plug-in was built with. It loads
/// none without the first.
///
/// Exactly one source file of a plug-in may do so; every other one defines MNoVersionString before it
/// includes this.
#if !defined(MNoVersionString)
extern "C" {
PLUGIN_EXPORT char MApiVersion[] = "20250000";
PLUGIN_EXPORT char ADSK_PLUGIN_SIGNATURE[] = "headless 20250000";
}
#endif
