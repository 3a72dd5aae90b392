#include "symmetry/partnerLookup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "symmetry/mirrorPlaces.h"

namespace {

using Vector = std::array<double, 3>;

/// What is closer to the tolerance than this part of it is left to the host, whose arithmetic may differ.
constexpr double kMargin = 1e-6;
/// What two distances must differ by, as a part of the coordinates, to tell which is smaller: the host may
/// measure in single precision.
constexpr double kPrecision = 2e-6;
/// What a search in a grid may cost, for each vertex and face of the mesh.
constexpr std::size_t kSearchCost = 64;

bool isFinite(const PlainPoint& point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

Vector difference(const PlainPoint& a, const PlainPoint& b) {
    return {double{a[0]} - b[0], double{a[1]} - b[1], double{a[2]} - b[2]};
}

double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// Whether a point is farther than a distance from all that lies between the corners of a face, in whatever
/// triangles the host divides it. False also if that cannot be shown in a few steps.
///
/// Frank and Wolfe's search for the point of a convex hull closest to the origin: while it goes on, each step
/// gives a plane that the hull is beyond.
bool isFartherThan(double distance, const PlainPoint& point, IndexRange corners,
                   const std::vector<PlainPoint>& points) {
    constexpr int kSteps = 32;
    const auto away = [&](int corner) { return difference(points[static_cast<std::size_t>(corner)], point); };
    Vector nearest{};
    for (const int corner : corners) {
        const Vector place = away(corner);
        for (std::size_t axis = 0; axis < 3; ++axis)
            nearest[axis] += place[axis] / corners.size();
    }
    for (int step = 0; step < kSteps; ++step) {
        Vector foremost = nearest;
        double least = std::numeric_limits<double>::infinity();
        for (const int corner : corners) {
            const Vector place = away(corner);
            const double along = dot(place, nearest);
            if (along >= least) continue;
            least = along;
            foremost = place;
        }
        if (least > distance * std::sqrt(dot(nearest, nearest))) return true;
        const Vector back{nearest[0] - foremost[0], nearest[1] - foremost[1], nearest[2] - foremost[2]};
        const double length = dot(back, back);
        if (length <= 0.0) return false;
        const double part = std::min(1.0, std::max(0.0, dot(nearest, back) / length));
        for (std::size_t axis = 0; axis < 3; ++axis)
            nearest[axis] -= part * back[axis];
    }
    return false;
}

class Lookup {
  public:
    Lookup(const PartnerSpace& space, const std::vector<int>& asked)
        : space_(space),
          asked_(asked),
          reach_(space.tolerance * (1.0 + kMargin)),
          cornerReach_(static_cast<float>(reach_ * (1.0 + kMargin))),
          budget_(kSearchCost * (space.points.size() + static_cast<std::size_t>(space.faces.size()))),
          traits_(space.points.size(), 0),
          answers_(asked.size(), kUndecided) {}

    std::vector<int> answers() {
        if (!std::isfinite(reach_) || space_.tolerance <= 0.0 || !hasSurface()) return answers_;
        lookUpPlaces();
        lookAround();
        judgeFaces();
        judgeAnswers();
        return std::move(answers_);
    }

  private:
    /// An asked vertex with one vertex whose image is near it, and none whose image is at its place.
    struct Near {
        int number;  // in the list of asked vertices
        int partner;
        float distance;       // to the image of the partner, with all margins
        bool isAlone = true;  // no other face was found within the distance
    };
    /// What is known of a vertex as a partner.
    enum Trait : unsigned char {
        kWanted = 1,    // it may be the answer for a vertex
        kCornered = 2,  // one of its faces has area at it
        kCrowded = 4,   // one of its faces has another corner within the tolerance
        kBroken = 8     // one of its faces has a corner that is not finite
    };

    const PlainPoint& pointOf(int vertex) const { return space_.points[static_cast<std::size_t>(vertex)]; }
    unsigned char& traitsOf(int vertex) { return traits_[static_cast<std::size_t>(vertex)]; }
    bool isOnMesh(int vertex) const {
        return vertex >= 0 && static_cast<std::size_t>(vertex) < space_.points.size();
    }
    /// The mirror image of an asked vertex. Comparing it with the mesh is comparing the vertex with the image
    /// of the mesh.
    PlainPoint imageOf(int number) const {
        PlainPoint image = pointOf(asked_[static_cast<std::size_t>(number)]);
        image[space_.axis] = -image[space_.axis];
        return image;
    }
    bool isFiniteFace(IndexRange corners) const {
        return std::all_of(corners.begin(), corners.end(),
                           [this](int corner) { return isFinite(pointOf(corner)); });
    }

    /// Whether a face has area at one of its corners: the sides there are not on one line.
    bool hasAreaAt(IndexRange corners, int at) const {
        constexpr double kSine = 1e-6;  // less may be no area to the host
        const int count = corners.size();
        const PlainPoint& corner = pointOf(corners[at]);
        const Vector a = difference(pointOf(corners[at == 0 ? count - 1 : at - 1]), corner);
        const Vector b = difference(pointOf(corners[at + 1 == count ? 0 : at + 1]), corner);
        const Vector across{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
        return dot(across, across) > kSine * kSine * dot(a, a) * dot(b, b);
    }

    /// Whether every finite point has a closest face: a face with area that is finite.
    bool hasSurface() const {
        for (int face = 0; face < space_.faces.size(); ++face) {
            const IndexRange corners = space_.faces[face];
            if (!isFiniteFace(corners)) continue;
            for (int at = 0; at < corners.size(); ++at) {
                if (hasAreaAt(corners, at)) return true;
            }
        }
        return false;
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
            if (!isOnMesh(vertex)) {
                answers_[number] = kNoPartner;
                continue;
            }
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
        const PointGrid grid = gridOf(
            unmet_, [](int number) { return number; }, std::max(8.0 * reach_, usualFaceSize()));
        std::vector<int> found(unmet_.size(), MirrorPlaces::kNobody);
        std::size_t cost = 0;
        for (std::size_t vertex = 0; vertex < space_.points.size() && cost <= budget_; ++vertex) {
            const PlainPoint& point = space_.points[vertex];
            if (!isFinite(point)) continue;
            cost += grid.visit(grown(boxAt(point), reach_), [&](int number) {
                int& other = found[static_cast<std::size_t>(number)];
                other = other == MirrorPlaces::kNobody ? static_cast<int>(vertex) : MirrorPlaces::kSeveral;
            });
        }
        if (cost > budget_) return;
        near_.reserve(static_cast<std::size_t>(
            std::count_if(found.begin(), found.end(), [](int other) { return other >= 0; })));
        for (std::size_t k = 0; k < found.size(); ++k) {
            if (found[k] == MirrorPlaces::kNobody) answers_[static_cast<std::size_t>(unmet_[k])] = kNoPartner;
            if (found[k] >= 0) noteNear(unmet_[k], found[k]);
        }
    }

    /// A grid of the images of asked vertices.
    /// @param numberOf  gives the number of the asked vertex for an item
    template <class Item, class NumberOf>
    PointGrid gridOf(const std::vector<Item>& items, const NumberOf& numberOf, double cell) const {
        std::vector<PlainPoint> images;
        images.reserve(items.size());
        for (const Item& item : items)
            images.push_back(imageOf(numberOf(item)));
        return PointGrid(images, cell);
    }

    void noteNear(int number, int partner) {
        const PlainPoint image = imageOf(number);
        const Vector apart = difference(pointOf(partner), image);
        const double distance = std::sqrt(dot(apart, apart));
        if (distance > space_.tolerance * (1.0 - kMargin)) return;
        const double size = std::max({std::abs(image[0]), std::abs(image[1]), std::abs(image[2])});
        near_.push_back(
            {number, partner, static_cast<float>(distance * (1.0 + kMargin) + size * kPrecision)});
        traitsOf(partner) |= kWanted;
    }

    /// Half of the faces are about as large as this or larger.
    double usualFaceSize() const {
        constexpr int kSampleSize = 1000;
        const int step = 1 + space_.faces.size() / kSampleSize;
        std::vector<double> sizes;
        for (int face = 0; face < space_.faces.size(); face += step) {
            const IndexRange corners = space_.faces[face];
            if (corners.size() == 0 || !isFiniteFace(corners)) continue;
            const PlainBox box = boxOf(corners);
            double size = 0.0;
            for (std::size_t axis = 0; axis < 3; ++axis)
                size = std::max(size, box.maximum[axis] - box.minimum[axis]);
            sizes.push_back(size);
        }
        if (sizes.empty()) return 0.0;
        const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
        std::nth_element(sizes.begin(), middle, sizes.end());
        return *middle;
    }

    static PlainBox boxAt(const PlainPoint& point) {
        return {{point[0], point[1], point[2]}, {point[0], point[1], point[2]}};
    }
    PlainBox boxOf(IndexRange corners) const {
        PlainBox box = boxAt(pointOf(corners[0]));
        for (const int corner : corners)
            box.expand(pointOf(corner));
        return box;
    }
    static PlainBox grown(PlainBox box, double distance) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.minimum[axis] -= distance;
            box.maximum[axis] += distance;
        }
        return box;
    }

    /// Looks at every face once: what it says of its corners, and which near pairs it could come between.
    void judgeFaces() {
        double farthest = 0.0;
        for (const Near& pair : near_)
            farthest = std::max<double>(farthest, pair.distance);
        const PointGrid grid = gridOf(
            near_, [](const Near& pair) { return pair.number; }, 2.0 * std::max(farthest, usualFaceSize()));
        std::size_t cost = 0;
        std::vector<int> finite;
        for (int face = 0; face < space_.faces.size(); ++face) {
            IndexRange corners = space_.faces[face];
            const bool isWhole = isFiniteFace(corners);
            judgeCorners(corners, isWhole);
            if (near_.empty() || corners.size() == 0 || cost > budget_) continue;
            if (!isWhole) {
                // The host may keep a part of such a face.
                finite.clear();
                std::copy_if(corners.begin(), corners.end(), std::back_inserter(finite),
                             [this](int corner) { return isFinite(pointOf(corner)); });
                corners = {finite.data(), finite.data() + finite.size()};
                if (finite.empty()) continue;
            }
            cost += grid.visit(grown(boxOf(corners), farthest), [&](int number) {
                Near& pair = near_[static_cast<std::size_t>(number)];
                if (!pair.isAlone ||
                    std::find(corners.begin(), corners.end(), pair.partner) != corners.end()) {
                    return;
                }
                cost += static_cast<std::size_t>(corners.size());
                pair.isAlone = isFartherThan(pair.distance, imageOf(pair.number), corners, space_.points);
            });
        }
        if (cost > budget_) near_.clear();
    }

    void judgeCorners(IndexRange corners, bool isWhole) {
        bool isAnyWanted = false;
        for (int at = 0; at < corners.size(); ++at) {
            unsigned char& traits = traitsOf(corners[at]);
            if ((traits & kWanted) == 0) continue;
            isAnyWanted = true;
            if (!isWhole) traits |= kBroken;
            if (isWhole && (traits & kCornered) == 0 && hasAreaAt(corners, at)) traits |= kCornered;
        }
        if (isAnyWanted && isWhole) judgeDistances(corners);
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
        if (a == b || !areClose(a, b)) return;
        traitsOf(a) |= kCrowded;
        traitsOf(b) |= kCrowded;
    }

    /// The same for faces with so many corners that not every pair can be compared: sorts them along an axis.
    /// If many are close along it, all corners count as crowded.
    void judgeManyDistances(IndexRange corners) {
        constexpr std::size_t kFew = 32;
        const PlainBox box = boxOf(corners);
        std::size_t axis = 0;
        for (const std::size_t other : {1, 2}) {
            if (box.maximum[other] - box.minimum[other] > box.maximum[axis] - box.minimum[axis]) axis = other;
        }
        const auto coordinate = [&](int corner) { return pointOf(corner)[axis]; };
        std::vector<int> sorted(corners.begin(), corners.end());
        std::sort(sorted.begin(), sorted.end(), [&](int a, int b) { return coordinate(a) < coordinate(b); });
        for (std::size_t a = 0; a < sorted.size(); ++a) {
            for (std::size_t b = a + 1; b < sorted.size(); ++b) {
                if (double{coordinate(sorted[b])} - coordinate(sorted[a]) > reach_) break;
                if (b - a > kFew) {
                    for (const int corner : corners)
                        traitsOf(corner) |= kCrowded;
                    return;
                }
                judgeDistance(sorted[a], sorted[b]);
            }
        }
    }

    void judgeAnswers() {
        for (int& answer : answers_) {
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
    const double reach_;                 // how far an image may be on one axis and count as near
    const float cornerReach_;            // the same in single precision, with room for its errors
    const std::size_t budget_;           // for a search in a grid
    std::vector<unsigned char> traits_;  // per vertex
    std::vector<int> answers_;           // per asked vertex
    std::vector<int> unmet_;             // numbers of asked vertices at whose place no image is
    std::vector<Near> near_;
};

}  // namespace

std::vector<int> lookUpPartners(const PartnerSpace& space, const std::vector<int>& asked) {
    return Lookup(space, asked).answers();
}
