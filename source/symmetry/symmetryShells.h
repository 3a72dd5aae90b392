#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "symmetry/meshTopology.h"
#include "symmetry/plainPoints.h"

/// Which shells of a mesh mirror each other, judged by their face counts and bounding boxes. Plain numbers
/// only.

/// Finds the boxes that contain a point. If the boxes are spread out, a query costs little more than its
/// answer.
class BoxIndex {
  public:
    explicit BoxIndex(std::vector<PlainBox> boxes);

    /// The indices of the boxes that contain the point, ascending.
    std::vector<int> find(const PlainVector& point) const;

  private:
    std::vector<PlainBox> boxes_;
    std::size_t axis_ = 0;        // the axis along which the boxes are spread most
    std::vector<int> byMinimum_;  // box indices, sorted by their minimum along the axis
    std::vector<double> reach_;   // per place in byMinimum_: largest maximum of the boxes up to it
};

/// What a scan finds out about one shell.
struct ShellScan {
    int seed = 0;  ///< its lowest face
    int faceCount = 0;
    int vertexCount = 0;
    int markedFace = -1;  ///< the face of the user's start in this shell, -1 if there is none
    int candidate = -1;   ///< the vertex at which to search a centre edge, -1 if there is none
    PlainBox box;
};

/// What a scan needs to know about the mesh.
struct ScanInput {
    const MeshTopology& topology;
    const Shells& shells;
    int axis;
    std::function<PlainVector(int vertex)> point;
    std::function<bool(int vertex)> isOnPlane;
    std::function<bool(int vertex)> hasCentreNeighbour;
};

/// Scans every shell once, in the order of their lowest faces.
///
/// The candidate is the vertex nearest to the plane; among equals, the first in scan order (faces ascending,
/// corners in face order). Exception: while there is no candidate, a vertex on the plane counts only if it
/// has a neighbour on the plane, and then becomes the candidate. Its distance is not recorded, so the next
/// vertex replaces it. Deliberate (docs/compatibility.md): the maps that are stored in scenes depend on it.
/// @param markedFaces  a face of each shell for which the user gave a start. Such a shell is not scanned: its
///                     box is at the origin, and its candidate is that of the shell before
std::vector<ShellScan> scanShells(const ScanInput& input, const std::vector<int>& markedFaces);

/// The face counts of pairs, and of shells that are left over, each in the order of their first shell.
struct ShellCounts {
    std::vector<int> pairs;
    std::vector<int> singles;
};

/// Pairs shells with equal face counts: the first with the second, the third with the fourth, and so on.
/// Marked shells are left out.
ShellCounts pairCounts(const std::vector<ShellScan>& scans);

/// Returns the shells of a face count in groups that mirror each other.
class ShellGroups {
  public:
    /// @param scans  must outlive this object; marked shells are candidates, too
    ShellGroups(const std::vector<ShellScan>& scans, int axis);

    /// The first shell of this face count that is in no group yet, then, ascending, all others of that count
    /// that are in no group and whose box contains the mirrored centre of the first. Empty if no shell is
    /// left.
    std::vector<int> take(int faceCount);

  private:
    struct Queue {
        std::vector<int> shells;  // ascending
        std::size_t next = 0;     // shells before this place are in a group
    };

    const std::vector<ShellScan>& scans_;
    int axis_;
    BoxIndex boxes_;
    std::vector<char> isTaken_;
    std::unordered_map<int, Queue> queues_;  // by face count
};
