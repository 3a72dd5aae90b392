#pragma once

#include <cstdint>

namespace host::graph {

/// Which of the equally close faces of a mesh a search for the closest one answers.
enum class FaceTie { First, Last, Random };

/// Names of the copies that the API and `duplicate` make of an object "head1".
enum class CopyNames {
    NextNumber,  // head2
    Default,     // polySurface1, whatever was copied
    Appended     // head1_copy1, and a shape that is not named after its transform
};

/// In which order the neighbours of a vertex, an edge or a face are listed.
enum class NeighbourOrder { Ascending, Descending, Rotated };

/// How the host behaves where it is not established how Maya does. The values here are what this project
/// holds most likely, and what the program always has; tests set others, to show that the module does not
/// depend on them. Set them before the scene is used.
struct Variants {
    /// Asking an element of an array for its value through a plug of the API makes the element exist.
    bool readingCreates = false;
    CopyNames copyNames = CopyNames::NextNumber;
    FaceTie faceTie = FaceTie::First;
    std::uint32_t seed = 1;  // of what is random
    NeighbourOrder neighbourOrder = NeighbourOrder::Ascending;
    /// Deformers are chained with groupParts, groupId, tweak and objectSet nodes, as without component tags.
    bool hasLegacyChains = false;
    /// A plug of the API fails for good once its node, or an element on its path, went; one that came from a
    /// connection also once that was broken (RemovalLog).
    bool plugsExpire = false;
    /// Tools get the events of the legacy viewport through the handlers of that viewport.
    bool callsLegacyHandlers = true;
    /// Deltas written while a target mesh is connected, before the first evaluation, are lost with that.
    bool losesEarlyDeltas = false;
    /// A target mesh that is disconnected leaves its last deltas at once, evaluated or not; otherwise the
    /// next evaluation makes them.
    bool takesDeltasOnDisconnect = true;
    /// Adding a name that several objects have to a selection list adds them all; otherwise that fails.
    bool addsEveryNamesake = false;
    /// A command whose arguments cannot be parsed is not called at all.
    bool refusesArgumentsFirst = false;
    /// A node that a modifier deletes takes a transform along that holds nothing else.
    bool deletesEmptyParents = true;
};

}  // namespace host::graph
