#pragma once

#include <maya/MTypes.h>

/// Puts two exported texts into the plug-in. They tell the host what the plug-in was built with. The host
/// does not load a plug-in without the first text.
///
/// Exactly one source file of a plug-in may do so. Every other one defines MNoVersionString before it
/// includes this.
#if !defined(MNoVersionString)
extern "C" {
PLUGIN_EXPORT char MApiVersion[] = "20250000";
PLUGIN_EXPORT char ADSK_PLUGIN_SIGNATURE[] = "headless 20250000";
}
#endif
