#pragma once

#include <maya/MTypes.h>

/// Puts the API version that a plug-in was built with into the plug-in, as a text that can be found in the
/// binary.
///
/// Exactly one source file of a plug-in may do so; every other one defines MNoVersionString before it
/// includes this.
#if !defined(MNoVersionString)
char MApiVersion[] = "20250000";
#endif
