#pragma once

#include <maya/MApiNamespace.h>

/// Version numbers, integer types and linkage macros that every header of the API shares.

#if defined(NT_PLUGIN)
// What any header of the API defines for a plug-in on Windows.
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#if !defined(_USE_MATH_DEFINES)
#define _USE_MATH_DEFINES
#endif
#define uint unsigned int
#define strcasecmp stricmp
#endif

#define MAYA_API_VERSION 20250000
#define MAYA_APP_VERSION 2025

#if defined(_WIN32)
typedef long long MInt64;  // in Microsoft's headers also __int64
typedef unsigned long long MUint64;
#else
typedef long MInt64;
typedef unsigned long MUint64;
#endif
typedef int int2[2];

// DELVEN_HOST_BUILD is set while the host itself is compiled. In a plug-in these are imports.
#if defined(_WIN32)
#if defined(DELVEN_HOST_BUILD)
#define OPENMAYA_EXPORT __declspec(dllexport)
#else
#define OPENMAYA_EXPORT __declspec(dllimport)
#endif
#if defined(_MSC_VER)
// Private members of the standard library's class templates are not part of the interface.
#pragma warning(disable : 4251)
#endif
#else
#define OPENMAYA_EXPORT __attribute__((visibility("default")))
#endif

/// Marks what a plug-in exports to the host.
#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#define OPENMAYAANIM_EXPORT OPENMAYA_EXPORT
#define OPENMAYAFX_EXPORT OPENMAYA_EXPORT
#define OPENMAYARENDER_EXPORT OPENMAYA_EXPORT
#define OPENMAYAUI_EXPORT OPENMAYA_EXPORT

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The space in which coordinates are given.
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
