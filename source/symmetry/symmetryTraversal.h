#pragma once

#include <vector>

#include "symmetry/symmetryMesh.h"

/// Finds where the mirrored halves of every shell of a mesh begin. Only this step uses positions; the walk
/// that follows (meshTopology.h) uses connectivity alone.

/// Where the two passes begin: over one shell, or over two shells that mirror each other.
struct SymmetryStart {
    int faceA = -1;  ///< of the first pass; -1 if no start was found
    int faceB = -1;  ///< of the second pass; -1 if no start was found
    int vertexA = -1;
    int vertexB = -1;   ///< with vertexA: the edge at which the first pass begins
    int vertexA2 = -1;  ///< with vertexB2: the edge of the second pass; -1 if both begin at the same edge
    int vertexB2 = -1;
    int shellFaces = 0;     ///< number of faces that each pass visits
    int shellVertices = 0;  ///< for display
};

struct SymmetryOptions {
    int verbose = 0;  ///< 0: shows nothing, 1: what fails, 2: everything
    bool selectsComponents = false;
};

/// Appends one start per shell or pair of shells for which the user gave none.
///
/// A single shell starts at an edge on the plane, a pair at a face and its mirror image. If no start is found
/// for a shell, a start with -1 is appended. Cost is linear, except for shells with equal face counts, which
/// are compared by their boxes.
/// @param starts     those that the user gave, one per shell; their counts are filled in, in the order of the
///                   shells
/// @param hasErrors  set to true if a start is missing or doubtful
void findSymmetryStarts(SymmetryMesh& mesh, const SymmetryOptions& options,
                        std::vector<SymmetryStart>& starts, bool& hasErrors);
