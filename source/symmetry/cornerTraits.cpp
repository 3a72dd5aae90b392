#include "symmetry/cornerTraits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

/// Part of a distance that covers the rounding of differences.
constexpr double kRounding = 1e-6;

/// Whether a face has area at one of its corners: the sides there are not on one line.
bool hasAreaAt(const PlainMesh& mesh, IndexRange corners, int at) {
    constexpr double kSine = 1e-4;  // less may be no area to the host
    const int count = corners.size();
    const PlainPoint& corner = mesh.point(corners[at]);
    const PlainVector a = difference(mesh.point(corners[at == 0 ? count - 1 : at - 1]), corner);
    const PlainVector b = difference(mesh.point(corners[at + 1 == count ? 0 : at + 1]), corner);
    const PlainVector across{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    return dot(across, across) > kSine * kSine * dot(a, a) * dot(b, b);
}

/// Whether no other corner of a face is at the place of one.
bool isAloneAt(const PlainMesh& mesh, IndexRange corners, int at) {
    const PlainVector zero{};
    return std::count_if(corners.begin(), corners.end(), [&](int other) {
               return difference(mesh.point(other), mesh.point(corners[at])) == zero;
           }) == 1;
}

}  // namespace

CornerTraits::CornerTraits(const PlainMesh& mesh, double reach)
    : mesh_(mesh), reach_(roundedUp(reach * (1.0 + kRounding))), traits_(mesh.points.size(), 0) {}

// What judge() does for a face is inlined there, which saves about a sixth of a look-up.

/// Marks the corners of a face that are close to another one.
inline void CornerTraits::judgeDistances(IndexRange corners) {
    constexpr int kFew = 16;
    if (corners.size() > kFew) {
        judgeManyDistances(corners);
        return;
    }
    for (int a = 1; a < corners.size(); ++a) {
        for (int b = 0; b < a; ++b)
            judgeDistance(corners[a], corners[b]);
    }
}

inline void CornerTraits::judgeFace(IndexRange corners) {
    const bool isWhole = mesh_.areFinite(corners);
    bool isAnyWanted = false;
    for (int at = 0; at < corners.size(); ++at) {
        unsigned char& traits = traitsOf(corners[at]);
        if ((traits & kWanted) == 0) continue;
        isAnyWanted = true;
        if (!isWhole) traits |= kBroken;
        if (isWhole && (traits & kCornered) == 0 && hasAreaAt(mesh_, corners, at)) traits |= kCornered;
    }
    if (!isAnyWanted || !isWhole) return;
    judgeDistances(corners);
    if (!extents_.empty()) noteExtent(corners);
}

inline void CornerTraits::judgeFaces(int first, int end) {
    for (int face = first; face < end; ++face)
        judgeFace(mesh_.faces[face]);
}

void CornerTraits::judge(bool measures, const SideBySide& threads) {
    if (measures) extents_.assign(mesh_.points.size(), 0.0F);
    const int count = mesh_.faces.size();
    if (!threads.isThreaded()) {
        judgeFaces(0, count);
        return;
    }
    // The faces of a vertex can be in both halves, so each half makes its own notes.
    CornerTraits other(*this);
    threads.run([&](unsigned int half) {
        if (half == 0) judgeFaces(0, count / 2);
        if (half == 1) other.judgeFaces(count / 2, count);
    });
    merge(other);
}

/// Adds what was noted of other faces.
void CornerTraits::merge(const CornerTraits& other) {
    for (std::size_t vertex = 0; vertex < traits_.size(); ++vertex)
        traits_[vertex] = static_cast<unsigned char>(traits_[vertex] | other.traits_[vertex]);
    for (std::size_t vertex = 0; vertex < extents_.size(); ++vertex)
        extents_[vertex] = std::max(extents_[vertex], other.extents_[vertex]);
}

/// Marks the close corners of a face with so many that not every pair can be compared: sorts them along an
/// axis.
/// If many are close along it, the face says nothing about any of its corners.
void CornerTraits::judgeManyDistances(IndexRange corners) {
    constexpr std::size_t kFew = 32;
    const std::size_t axis = mesh_.boxOf(corners).longestAxis();
    const auto coordinate = [&](int corner) { return mesh_.point(corner)[axis]; };
    std::vector<int> sorted(corners.begin(), corners.end());
    std::sort(sorted.begin(), sorted.end(), [&](int a, int b) { return coordinate(a) < coordinate(b); });
    for (std::size_t a = 0; a < sorted.size(); ++a) {
        for (std::size_t b = a + 1; b < sorted.size(); ++b) {
            if (double{coordinate(sorted[b])} - coordinate(sorted[a]) > reach_) break;
            if (b - a > kFew) {
                for (const int corner : corners)
                    traitsOf(corner) |= kBroken;
                return;
            }
            judgeDistance(sorted[a], sorted[b]);
        }
    }
}

/// Notes how far from the origin the faces of a vertex reach.
void CornerTraits::noteExtent(IndexRange corners) {
    const float extent = roundedUp(mesh_.boxOf(corners).reach());
    for (const int corner : corners) {
        float& largest = extents_[static_cast<std::size_t>(corner)];
        largest = std::max(largest, extent);
    }
}

bool hasSurface(const PlainMesh& mesh) {
    constexpr int kFew = 16;
    for (int face = 0; face < mesh.faces.size(); ++face) {
        const IndexRange corners = mesh.faces[face];
        if (!mesh.areFinite(corners)) continue;
        for (int at = 0; at < std::min(corners.size(), kFew); ++at) {
            if (hasAreaAt(mesh, corners, at) && isAloneAt(mesh, corners, at)) return true;
        }
    }
    return false;
}
