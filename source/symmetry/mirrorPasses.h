#pragma once

#include <maya/MStatus.h>

#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/symmetryTraversal.h"

/// Walks the two halves of every start side by side and enters the pairs that they meet into a map.
///
/// The walks touch plain arrays only; what they have to say is shown by the calling thread after both
/// have ended. Starts without faces are left out.
/// @param map          vertex order map with an entry for every vertex; half filled in after a failure
/// @param walkedCount  set to the number of starts that were walked
/// @return a failure, after an error, at the first start where a walk ends early or the two halves differ
///         in size
MStatus walkStarts(const MeshTopology& topology, const std::vector<SymmetryStart>& starts,
                   std::vector<int>& map, int& walkedCount);

/// Ends the threads that the walks were run on, for a module that is about to be unloaded: a thread that
/// outlives the library of oneTBB crashes. Does nothing where none was started.
void endWalkThreads();
