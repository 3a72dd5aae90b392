#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "symmetry/meshTopology.h"

/// Which shells of a mesh mirror each other, judged by their face counts and bounding boxes. Plain
/// numbers only.

using ShellPoint = std::array<double, 3>;

/// An axis-aligned box.
struct ShellBox {
    ShellPoint minimum{};
    ShellPoint maximum{};

    /// Coordinates that are no numbers are passed over.
    void expand(const ShellPoint& point);
    /// The sides belong to the box.
    bool contains(const ShellPoint& point) const;
};

/// Finds boxes around a point. A question costs little more than its answer when the boxes are spread out.
class BoxIndex {
  public:
    explicit BoxIndex(std::vector<ShellBox> boxes);

    /// The numbers of the boxes that contain the point, ascending.
    std::vector<int> find(const ShellPoint& point) const;

  private:
    std::vector<ShellBox> boxes_;
    std::size_t axis_ = 0;        // along which the boxes are spread most
    std::vector<int> byMinimum_;  // box numbers by where they begin along the axis
    std::vector<double> reach_;   // how far any of the boxes up to a place in byMinimum_ reaches
};

/// What a scan notes of one shell.
struct ShellScan {
    int seed = 0;  ///< its lowest face
    int faceCount = 0;
    int vertexCount = 0;
    int markedFace = -1;  ///< the face that the user's start of this shell names, -1 when there is none
    int candidate = -1;   ///< the vertex that a centre edge is looked for at, -1 when there is none
    ShellBox box;
};

/// What a scan needs to know of the mesh.
struct ScanInput {
    const MeshTopology& topology;
    const Shells& shells;
    int axis;
    std::function<ShellPoint(int vertex)> point;
    std::function<bool(int vertex)> isOnPlane;
    std::function<bool(int vertex)> hasCentreNeighbour;
};

/// Scans every shell once, in the order of their lowest faces.
///
/// The candidate is the vertex nearest the plane, the first among equals in scan order (faces ascending,
/// corners in face order). A vertex on the plane that has a neighbour there is taken at once when there
/// is no candidate yet; it does not count as a smallest distance, so the next vertex replaces it. This is
/// deliberate: the starts that are found, and with them the maps that are stored in scenes, depend on it.
/// @param markedFaces  a face of each shell that the user gave a start for. Such a shell is not scanned:
///                     its box is at the origin and its candidate that of the shell before
std::vector<ShellScan> scanShells(const ScanInput& input, const std::vector<int>& markedFaces);

/// Face counts of pairs, and of shells that are left over, each in the order of their first shell.
struct ShellCounts {
    std::vector<int> pairs;
    std::vector<int> singles;
};

/// Pairs the first shell of a count with the second, the third with the fourth and so on. Marked shells
/// are left out.
ShellCounts pairCounts(const std::vector<ShellScan>& scans);

/// Hands out the shells of a face count in groups that mirror each other.
class ShellGroups {
  public:
    /// @param scans  marked shells are among the candidates
    ShellGroups(const std::vector<ShellScan>& scans, int axis);

    /// The first shell of this count that is in no group yet, and all others of them whose box contains its
    /// mirrored centre, ascending; empty when none is left.
    std::vector<int> take(int faceCount);

  private:
    struct Queue {
        std::vector<int> shells;  // ascending
        std::size_t next = 0;     // those before are in a group
    };

    const std::vector<ShellScan>& scans_;
    int axis_;
    BoxIndex boxes_;
    std::vector<char> isTaken_;
    std::unordered_map<int, Queue> queues_;  // per face count
};
