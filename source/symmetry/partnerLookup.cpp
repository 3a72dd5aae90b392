#include "symmetry/partnerLookup.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <set>
#include <utility>

#include "symmetry/mirrorPlaces.h"
#include "symmetry/pointGrid.h"

namespace {

/// What is closer to the tolerance than this part of it is left to the host, whose arithmetic may differ.
constexpr double kMargin = 1e-6;
/// What two distances must differ by, as a part of the coordinates, to tell which is smaller: the host may
/// measure in single precision.
constexpr double kPrecision = 1e-5;

/// A number that is larger, in single precision. Infinity for what does not fit.
float roundedUp(double value) {
    using Limits = std::numeric_limits<float>;
    const double fitting = std::min<double>(value, Limits::max());
    return std::nextafter(static_cast<float>(fitting), Limits::infinity());
}

class Lookup {
  public:
    Lookup(const PartnerSpace& space, const std::vector<int>& asked)
        : space_(space),
          asked_(asked),
          reach_(space.tolerance * (1.0 + kMargin)),
          cornerReach_(roundedUp(reach_ * (1.0 + kMargin))),
          traits_(space.points.size(), 0),
          answers_(asked.size(), kUndecided) {
        signs_[space.axis] = -1.0F;
    }

    std::vector<int> answers() {
        if (std::isfinite(reach_) && space_.tolerance > 0.0 && hasSurface()) {
            lookUpPlaces();
            lookAround();
            judgeFaces();
            judgeNear();
        }
        judgeAnswers();
        return std::move(answers_);
    }

  private:
    /// An asked vertex with one vertex whose image is near it, and none whose image is at its place.
    struct Near {
        int number;  // in the list of asked vertices
        int partner;
        float distance;       // to the image of the partner, with all margins
        bool isAlone = true;  // no other face comes within the distance
    };
    /// What is known of a vertex as a partner.
    enum Trait : unsigned char {
        kWanted = 1,    // it may be the answer for a vertex
        kCornered = 2,  // one of its faces has area at it
        kCrowded = 4,   // one of its faces has another corner within the tolerance
        kBroken = 8     // one of its faces has a corner that is not finite, or has it twice
    };

    const PlainPoint& pointOf(int vertex) const { return space_.points[static_cast<std::size_t>(vertex)]; }
    unsigned char& traitsOf(int vertex) { return traits_[static_cast<std::size_t>(vertex)]; }
    bool isOnMesh(int vertex) const {
        return vertex >= 0 && static_cast<std::size_t>(vertex) < space_.points.size();
    }
    /// The mirror image of an asked vertex. Comparing it with the mesh is comparing the vertex with the image
    /// of the mesh.
    PlainPoint imageOf(int number) const {
        const PlainPoint& point = pointOf(asked_[static_cast<std::size_t>(number)]);
        return {point[0] * signs_[0], point[1] * signs_[1], point[2] * signs_[2], 0.0F};
    }
    bool isFiniteFace(IndexRange corners) const {
        return std::all_of(corners.begin(), corners.end(),
                           [this](int corner) { return isFinite(pointOf(corner)); });
    }

    /// Whether a face has area at one of its corners: the sides there are not on one line.
    bool hasAreaAt(IndexRange corners, int at) const {
        constexpr double kSine = 1e-4;  // less may be no area to the host
        const int count = corners.size();
        const PlainPoint& corner = pointOf(corners[at]);
        const PlainVector a = difference(pointOf(corners[at == 0 ? count - 1 : at - 1]), corner);
        const PlainVector b = difference(pointOf(corners[at + 1 == count ? 0 : at + 1]), corner);
        const PlainVector across{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                                 a[0] * b[1] - a[1] * b[0]};
        return dot(across, across) > kSine * kSine * dot(a, a) * dot(b, b);
    }

    /// Whether every finite point has a closest face, since there is a face that no host leaves out: it is
    /// finite, and at one of its corners it has area, in whatever triangles it is divided.
    bool hasSurface() const {
        constexpr int kFew = 16;
        for (int face = 0; face < space_.faces.size(); ++face) {
            const IndexRange corners = space_.faces[face];
            if (!isFiniteFace(corners)) continue;
            for (int at = 0; at < std::min(corners.size(), kFew); ++at) {
                if (hasAreaAt(corners, at) && isAloneAt(corners, at)) return true;
            }
        }
        return false;
    }

    /// Whether no other corner of a face is at the place of one.
    bool isAloneAt(IndexRange corners, int at) const {
        const PlainVector zero{};
        return std::count_if(corners.begin(), corners.end(), [&](int other) {
                   return difference(pointOf(other), pointOf(corners[at])) == zero;
               }) == 1;
    }

    /// Finds the one vertex whose image is exactly at the place of an asked vertex, and lists the asked
    /// vertices that no image meets.
    void lookUpPlaces() {
        std::vector<int> entries(space_.points.size(), MirrorPlaces::kNowhere);  // per vertex
        MirrorPlaces places(space_.points, space_.axis, asked_.size());
        std::vector<int> finite;
        finite.reserve(asked_.size());
        std::copy_if(asked_.begin(), asked_.end(), std::back_inserter(finite),
                     [this](int vertex) { return isOnMesh(vertex) && isFinite(pointOf(vertex)); });
        places.add(finite, entries);
        finite.clear();
        for (std::size_t vertex = 0; vertex < entries.size(); ++vertex) {
            const bool isOpen = entries[vertex] == MirrorPlaces::kNowhere;
            if (isOpen && isFinite(space_.points[vertex])) finite.push_back(static_cast<int>(vertex));
        }
        places.find(finite, entries);
        for (std::size_t vertex = 0; vertex < entries.size(); ++vertex) {
            if (entries[vertex] != MirrorPlaces::kNowhere)
                places.put(static_cast<int>(vertex), entries[vertex]);
        }
        unmet_.reserve(asked_.size());
        for (std::size_t number = 0; number < asked_.size(); ++number) {
            const int vertex = asked_[number];
            if (!isOnMesh(vertex)) continue;
            const int entry = entries[static_cast<std::size_t>(vertex)];
            if (entry == MirrorPlaces::kNowhere) continue;
            const int partner = places.acrossFrom(vertex, entry);
            if (partner == MirrorPlaces::kNobody) unmet_.push_back(static_cast<int>(number));
            if (partner < 0) continue;
            answers_[number] = partner;
            traitsOf(partner) |= kWanted;
        }
    }

    /// Tells the asked vertices that no image meets apart: no image near, one, or several.
    void lookAround() {
        if (unmet_.empty()) return;
        std::vector<int> found(unmet_.size(), MirrorPlaces::kNobody);
        PointGrid grid(
            unmet_.size(), [this](std::size_t k) { return imageOf(unmet_[k]); }, 8.0 * reach_);
        for (std::size_t vertex = 0; vertex < space_.points.size(); ++vertex) {
            const PlainPoint& point = space_.points[vertex];
            if (!isFinite(point)) continue;
            grid.visit(PlainBox::at(point).grown(reach_), [&](int k) {
                int& other = found[static_cast<std::size_t>(k)];
                other = other == MirrorPlaces::kNobody ? static_cast<int>(vertex) : MirrorPlaces::kSeveral;
            });
        }
        grid.visitMissed([&](int k) { found[static_cast<std::size_t>(k)] = MirrorPlaces::kSeveral; });
        near_.reserve(static_cast<std::size_t>(
            std::count_if(found.begin(), found.end(), [](int other) { return other >= 0; })));
        for (std::size_t k = 0; k < found.size(); ++k) {
            if (found[k] == MirrorPlaces::kNobody) answers_[static_cast<std::size_t>(unmet_[k])] = kNoPartner;
            if (found[k] >= 0) noteNear(unmet_[k], found[k]);
        }
        unmet_ = std::vector<int>();
    }

    void noteNear(int number, int partner) {
        const PlainVector apart = difference(pointOf(partner), imageOf(number));
        const double distance = std::sqrt(dot(apart, apart));
        if (distance > space_.tolerance * (1.0 - kMargin)) return;
        near_.push_back({number, partner, roundedUp(distance * (1.0 + kMargin))});
        traitsOf(partner) |= kWanted;
    }

    /// Looks at every face once, for what it says of its corners.
    void judgeFaces() {
        if (!near_.empty()) extents_.resize(space_.points.size());
        for (int face = 0; face < space_.faces.size(); ++face)
            judgeCorners(space_.faces[face]);
        for (Near& pair : near_) {
            const double extent = extents_[static_cast<std::size_t>(pair.partner)];
            pair.distance = roundedUp(pair.distance + kPrecision * extent);
        }
        extents_ = std::vector<float>();
    }

    /// Looks for faces that could be closer to the vertex of a near pair than the faces around its partner
    /// are: in grids with cells of the size of the faces, one grid for each power of two.
    void judgeNear() {
        constexpr std::size_t kMostLevels = 24;  // more is no mesh that anybody models
        constexpr std::int16_t kNoLevel = std::numeric_limits<std::int16_t>::min();
        if (near_.empty()) return;
        double farthest = 0.0;
        for (const Near& pair : near_)
            farthest = std::max<double>(farthest, pair.distance);
        if (std::isinf(farthest)) {  // no cell is as large
            near_.clear();
            return;
        }
        std::vector<std::int16_t> levels;  // per face: its size lies between this power of two and the next
        std::set<std::int16_t> used;
        levels.reserve(static_cast<std::size_t>(space_.faces.size()));
        for (int face = 0; face < space_.faces.size(); ++face) {
            const std::vector<int>& corners = finiteCorners(face);
            levels.push_back(kNoLevel);
            if (corners.empty()) continue;
            const PlainBox box = boxAround(corners, farthest);
            const auto level = static_cast<std::int16_t>(std::ilogb(box.side(box.longestAxis())));
            if (used.empty() || level != levels[levels.size() - 2]) used.insert(level);
            levels.back() = level;
        }
        if (used.size() > kMostLevels) {
            near_.clear();
            return;
        }
        for (const std::int16_t level : used) {
            PointGrid grid(
                near_.size(), [this](std::size_t k) { return imageOf(near_[k].number); },
                std::ldexp(1.0, level + 1));
            for (int face = 0; face < space_.faces.size(); ++face) {
                if (levels[static_cast<std::size_t>(face)] != level) continue;
                const std::vector<int>& corners = finiteCorners(face);
                const PlainBox box = boxAround(corners, farthest);
                grid.visit(box, [&](int k) { judgePair(near_[static_cast<std::size_t>(k)], corners, box); });
            }
            grid.visitMissed([&](int k) { near_[static_cast<std::size_t>(k)].isAlone = false; });
        }
    }

    /// The finite corners of a face: the host may keep a part of a face with others. Valid until the next
    /// call.
    const std::vector<int>& finiteCorners(int face) {
        const IndexRange corners = space_.faces[face];
        corners_.clear();
        std::copy_if(corners.begin(), corners.end(), std::back_inserter(corners_),
                     [this](int corner) { return isFinite(pointOf(corner)); });
        return corners_;
    }

    /// A box of all that is no farther from some corners than a distance, as far as the host can tell.
    PlainBox boxAround(const std::vector<int>& corners, double distance) const {
        const PlainBox box = boxOf({corners.data(), corners.data() + corners.size()});
        return box.grown(distance + kPrecision * box.reach());
    }
    PlainBox boxOf(IndexRange corners) const {
        PlainBox box = PlainBox::at(pointOf(corners[0]));
        for (const int corner : corners)
            box.expand(pointOf(corner));
        return box;
    }

    void judgePair(Near& pair, const std::vector<int>& corners, const PlainBox& box) const {
        if (!pair.isAlone || std::find(corners.begin(), corners.end(), pair.partner) != corners.end()) return;
        pair.isAlone = isFartherThan(pair.distance + kPrecision * box.reach(), imageOf(pair.number),
                                     {corners.data(), corners.data() + corners.size()}, space_.points);
    }

    void judgeCorners(IndexRange corners) {
        const bool isWhole = isFiniteFace(corners);
        bool isAnyWanted = false;
        for (int at = 0; at < corners.size(); ++at) {
            unsigned char& traits = traitsOf(corners[at]);
            if ((traits & kWanted) == 0) continue;
            isAnyWanted = true;
            if (!isWhole) traits |= kBroken;
            if (isWhole && (traits & kCornered) == 0 && hasAreaAt(corners, at)) traits |= kCornered;
        }
        if (!isAnyWanted || !isWhole) return;
        judgeDistances(corners);
        if (!extents_.empty()) noteExtent(corners);
    }

    /// Notes how far from the origin the faces of a vertex reach.
    void noteExtent(IndexRange corners) {
        const float extent = roundedUp(boxOf(corners).reach());
        for (const int corner : corners) {
            float& largest = extents_[static_cast<std::size_t>(corner)];
            largest = std::max(largest, extent);
        }
    }

    bool areClose(int a, int b) const {
        const PlainPoint& first = pointOf(a);
        const PlainPoint& second = pointOf(b);
        // One by one: that the first axis tells them apart can mostly be foreseen.
        return std::abs(first[0] - second[0]) <= cornerReach_ &&
               std::abs(first[1] - second[1]) <= cornerReach_ &&
               std::abs(first[2] - second[2]) <= cornerReach_;
    }

    /// Marks the corners of a face that are close to another one.
    void judgeDistances(IndexRange corners) {
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

    void judgeDistance(int a, int b) {
        if (!areClose(a, b)) return;
        traitsOf(a) |= a == b ? kBroken : kCrowded;
        if (a != b) traitsOf(b) |= kCrowded;
    }

    /// The same for faces with so many corners that not every pair can be compared: sorts them along an axis.
    /// If many are close along it, the face says nothing about any of its corners.
    void judgeManyDistances(IndexRange corners) {
        constexpr std::size_t kFew = 32;
        const std::size_t axis = boxOf(corners).longestAxis();
        const auto coordinate = [&](int corner) { return pointOf(corner)[axis]; };
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

    void judgeAnswers() {
        for (std::size_t number = 0; number < asked_.size(); ++number) {
            int& answer = answers_[number];
            if (!isOnMesh(asked_[number])) answer = kNoPartner;
            if (answer >= 0 && (traitsOf(answer) & (kCornered | kCrowded | kBroken)) != kCornered)
                answer = kUndecided;
        }
        for (const Near& pair : near_) {
            const bool isSafe = (traitsOf(pair.partner) & (kCornered | kBroken)) == kCornered;
            if (isSafe && pair.isAlone) answers_[static_cast<std::size_t>(pair.number)] = pair.partner;
        }
    }

    const PartnerSpace& space_;
    const std::vector<int>& asked_;
    const double reach_;  // how far an image may be on one axis and count as near
    // The same for corners of a face, in single precision, which takes a third of the time. Longer by more
    // than the rounding of their differences.
    const float cornerReach_;
    std::array<float, 3> signs_{1.0F, 1.0F, 1.0F};  // what the coordinates of an image are multiplied by
    std::vector<unsigned char> traits_;             // per vertex
    std::vector<int> answers_;                      // per asked vertex
    std::vector<int> unmet_;                        // numbers of asked vertices at whose place no image is
    std::vector<Near> near_;
    std::vector<float> extents_;  // per vertex; empty if there are no near pairs
    std::vector<int> corners_;    // of the face that is looked at
};

}  // namespace

std::vector<int> lookUpPartners(const PartnerSpace& space, const std::vector<int>& asked) {
    return Lookup(space, asked).answers();
}
