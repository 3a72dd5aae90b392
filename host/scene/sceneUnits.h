#pragma once

#include <string>

#include "graph/attribute.h"

namespace host::scene {

/// The units in which a file gives its numbers. The graph keeps centimetres, radians and seconds.
struct SceneUnits {
    double centimetres = 1.0;       ///< of one unit of length
    double radians = 0.0;           ///< of one unit of angle; 0 means degrees
    double framesPerSecond = 24.0;  ///< units of time in a second

    /// A number of the file as the graph keeps it, and the reverse.
    double toGraph(graph::ValueKind kind, double value) const;
    double toFile(graph::ValueKind kind, double value) const;

    bool operator==(const SceneUnits& other) const {
        return centimetres == other.centimetres && radians == other.radians &&
               framesPerSecond == other.framesPerSecond;
    }
};

/// Sets the unit that a flag of `currentUnit` names.
/// @param flag  "-l", "-a" or "-t", or their long names
/// @return false if the flag or the unit is not known
bool setUnit(SceneUnits& units, std::string_view flag, const std::string& name);

}  // namespace host::scene
