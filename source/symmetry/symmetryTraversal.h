#pragma once

#include <vector>

#include "symmetry/symmetryMesh.h"

/// Finds where the mirrored halves of every shell of a mesh begin. Positions matter here only; the walk that
/// follows (meshTopology.h) goes by connectivity alone.

/// Where the two passes over one shell, or over two shells that mirror each other, begin.
struct SymmetryStart {
    int faceA = -1;  ///< of the first pass; -1 when no start was found
    int faceB = -1;  ///< of the second pass; -1 when no start was found
    int vertexA = -1;
    int vertexB = -1;   ///< with vertexA the edge that the first pass begins at
    int vertexA2 = -1;  ///< with vertexB2 that of the second pass; -1 where both begin at the same edge
    int vertexB2 = -1;
    int shellFaces = 0;     ///< faces that each pass visits
    int shellVertices = 0;  ///< for display
};

struct SymmetryOptions {
    int verbose = 0;  ///< 0 nothing, 1 what fails, 2 everything
    bool selectsComponents = false;
};

/// Appends one start per shell or pair of shells that the user gave none for.
///
/// Shells that reach over the plane start at an edge on it, pairs at a face and its mirror image. A shell
/// that no start is found for gets one with -1. Linear but for shells of equal face counts, which are
/// compared by their boxes.
/// @param starts     those that the user gave, one per shell; their counts are filled in, in the order of
///                   the shells
/// @param hasErrors  set to true when a start is missing or doubtful
void findSymmetryStarts(SymmetryMesh& mesh, const SymmetryOptions& options,
                        std::vector<SymmetryStart>& starts, bool& hasErrors);
