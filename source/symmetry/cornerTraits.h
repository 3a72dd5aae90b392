#pragma once

#include <cmath>
#include <vector>

#include "symmetry/plainPoints.h"
#include "symmetry/sideBySide.h"

/// What the faces of a mesh say about some of its vertices as mirror partners. No host types.
class CornerTraits {
  public:
    /// @param mesh   must outlive this object
    /// @param reach  distance on every axis up to which two corners may count as one place
    CornerTraits(const PlainMesh& mesh, double reach);

    /// Names a vertex to be judged. To be called before judge().
    void want(int vertex) { traitsOf(vertex) |= kWanted; }

    /// Looks at every face once. Linear cost, except that the corners of a face are sorted if they are many.
    /// @param measures  whether extentOf() will be asked
    /// @param threads   for the two halves of the faces
    void judge(bool measures, const SideBySide& threads);

    /// Whether the faces around a vertex have it on their surface, in whatever triangles the host divides
    /// them: all are finite and have it once, and one has area at it.
    bool isOnSurface(int vertex) const { return (traitsOf(vertex) & (kCornered | kBroken)) == kCornered; }
    /// Whether a face around a vertex has another corner within the reach.
    bool isCrowded(int vertex) const { return (traitsOf(vertex) & kCrowded) != 0; }
    /// The largest coordinate of the faces around a vertex, without its sign.
    float extentOf(int vertex) const { return extents_[static_cast<std::size_t>(vertex)]; }

  private:
    enum Trait : unsigned char {
        kWanted = 1,
        kCornered = 2,  // one of its faces has area at it
        kCrowded = 4,
        kBroken = 8  // one of its faces has a corner that is not finite, or has it twice
    };

    unsigned char& traitsOf(int vertex) { return traits_[static_cast<std::size_t>(vertex)]; }
    unsigned char traitsOf(int vertex) const { return traits_[static_cast<std::size_t>(vertex)]; }
    void judgeFaces(int first, int end);
    void judgeFace(IndexRange corners);
    void merge(const CornerTraits& other);
    void judgeDistances(IndexRange corners);
    void judgeManyDistances(IndexRange corners);
    void judgeDistance(int a, int b) {
        if (!areClose(a, b)) return;
        traitsOf(a) |= a == b ? kBroken : kCrowded;
        if (a != b) traitsOf(b) |= kCrowded;
    }
    bool areClose(int a, int b) const {
        const PlainPoint& first = mesh_.point(a);
        const PlainPoint& second = mesh_.point(b);
        // One by one: that the first axis tells them apart can mostly be foreseen.
        return std::abs(first[0] - second[0]) <= reach_ && std::abs(first[1] - second[1]) <= reach_ &&
               std::abs(first[2] - second[2]) <= reach_;
    }
    void noteExtent(IndexRange corners);

    const PlainMesh mesh_;
    // In single precision, which takes a third of the time. Longer than the reach by more than the rounding
    // of differences.
    const float reach_;
    std::vector<unsigned char> traits_;  // per vertex
    std::vector<float> extents_;         // per vertex; empty if they are not measured
};

/// Whether every finite point has a closest face, since there is a face that no host leaves out: it is
/// finite, and at one of its corners it has area, in whatever triangles it is divided.
bool hasSurface(const PlainMesh& mesh);
