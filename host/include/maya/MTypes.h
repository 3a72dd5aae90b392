#pragma once

#include <maya/MApiNamespace.h>

/// Version numbers, integer types and linkage macros that every header of the API shares.

#define MAYA_API_VERSION 20250000
#define MAYA_APP_VERSION 2025

typedef long long MInt64;
typedef unsigned long long MUint64;
typedef int int2[2];

// DELVEN_HOST_BUILD is set while the host itself is compiled; a plug-in sees imports.
#if defined(_WIN32)
#if defined(DELVEN_HOST_BUILD)
#define OPENMAYA_EXPORT __declspec(dllexport)
#else
#define OPENMAYA_EXPORT __declspec(dllimport)
#endif
#if defined(_MSC_VER)
// Private members of the standard library's class templates are no part of the interface.
#pragma warning(disable : 4251)
#endif
#else
#define OPENMAYA_EXPORT __attribute__((visibility("default")))
#endif

/// Marks what a plug-in shows to the host.
#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

#define OPENMAYAANIM_EXPORT OPENMAYA_EXPORT
#define OPENMAYAFX_EXPORT OPENMAYA_EXPORT
#define OPENMAYARENDER_EXPORT OPENMAYA_EXPORT
#define OPENMAYAUI_EXPORT OPENMAYA_EXPORT
