#pragma once

#include <maya/MStatus.h>

#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/symmetryTraversal.h"

/// Walks over the two halves of every start side by side, and writes the pairs that the walks meet into a
/// map.
///
/// The walks touch plain arrays only. Messages are shown by the calling thread after both walks have ended.
/// Starts without faces are left out.
/// @param map          vertex order map with an entry for every vertex; partly changed after a failure
/// @param walkedCount  set to the number of starts that were walked
/// @return a failure, after an error, at the first start whose walk ends early or whose halves differ in size
MStatus walkStarts(const MeshTopology& topology, const std::vector<SymmetryStart>& starts,
                   std::vector<int>& map, int& walkedCount);
