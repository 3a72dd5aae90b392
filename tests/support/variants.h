#pragma once

#include <string>
#include <vector>

#include "graph/variants.h"

/// The variants of the host that the module's tests run under. The environment variable DELVEN_HOST_VARIANT
/// names one; each Scene has it.

/// The names, in the order in which docs/testing.md lists them.
std::vector<std::string> variantNames();

/// A variant of the graph, and of what lies above it.
struct HostVariant : host::graph::Variants {
    /// New elements of the API's arrays have no value, as in the sanitizer builds.
    bool leavesArraysUnset = false;
};

/// What the variable says: the host as it is without it. A name that is none ends the program with a message.
const HostVariant& variant();
