#pragma once

#include <cstdint>

namespace host::graph {

/// Which face a search for the closest one returns when several are equally close.
enum class FaceTie { First, Last, Random };

/// Names that the API and `duplicate` give to the copies of an object "head1".
enum class CopyNames {
    NextNumber,  // head2
    Default,     // polySurface1, for every object
    Appended     // head1_copy1, with a shape that is not named after its transform
};

/// In which order the neighbours of a vertex, an edge or a face are listed.
enum class NeighbourOrder { Ascending, Descending, Rotated };

/// How the host behaves where it is not known for sure how Maya behaves. The default values here are what
/// this project holds most likely. The program always uses them. Tests set others, to show that the module
/// does not depend on them. Set them before the scene is used.
struct Variants {
    /// Reading the value of an array element through a plug of the API makes the element exist.
    bool readingCreates = false;
    CopyNames copyNames = CopyNames::NextNumber;
    FaceTie faceTie = FaceTie::First;
    std::uint32_t seed = 1;  // for random choices
    NeighbourOrder neighbourOrder = NeighbourOrder::Ascending;
    /// Deformers are chained with groupParts, groupId, tweak and objectSet nodes, as without component tags.
    bool hasLegacyChains = false;
    /// A plug of the API fails for good once its node, or an element on its path, is removed. One that came
    /// from a connection also fails once the connection is broken (RemovalLog).
    bool plugsExpire = false;
    /// Tools get the events of the legacy viewport, through the handlers for that viewport.
    bool callsLegacyHandlers = true;
    /// Deltas that are written while a target mesh is connected, before the first evaluation, are lost at
    /// that evaluation.
    bool losesEarlyDeltas = false;
    /// Disconnecting a target mesh stores its last deltas at once, evaluated or not. Otherwise the next
    /// evaluation stores them.
    bool takesDeltasOnDisconnect = true;
    /// Adding a name that several objects have to a selection list adds all of them. Otherwise it fails.
    bool addsEveryNamesake = false;
    /// A command is not called if its arguments cannot be parsed.
    bool refusesArgumentsFirst = false;
    /// A modifier that deletes a node also deletes its transform, if that holds nothing else.
    bool deletesEmptyParents = true;
};

}  // namespace host::graph
