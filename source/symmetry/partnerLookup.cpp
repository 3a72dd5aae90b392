#include "symmetry/partnerLookup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "symmetry/cornerTraits.h"
#include "symmetry/mirrorPlaces.h"
#include "symmetry/nearPairs.h"
#include "symmetry/pointGrid.h"
#include "symmetry/sideBySide.h"

namespace {

/// What is closer to the tolerance than this part of it is left to the host, whose arithmetic may differ.
constexpr double kMargin = 1e-6;

/// With fewer vertices, starting a second thread takes longer than what it saves.
constexpr std::size_t kManyVertices = 20'000;

class Lookup {
  public:
    Lookup(const PartnerSpace& space, const std::vector<int>& asked)
        : space_(space),
          mesh_(space.mesh),
          asked_(asked),
          reach_(space.tolerance * (1.0 + kMargin)),
          traits_(space.mesh, reach_),
          answers_(asked.size(), kUndecided),
          threads_(asked.size() >= kManyVertices) {
        signs_[space.axis] = -1.0F;
    }

    std::vector<int> answers() {
        if (std::isfinite(reach_) && space_.tolerance > 0.0 && hasSurface(mesh_)) {
            lookUpPlaces();
            lookAround();
            traits_.judge(!near_.empty(), threads_);
            judgePlaces();
            judgeNear();
        }
        for (std::size_t number = 0; number < asked_.size(); ++number) {
            if (!mesh_.has(asked_[number])) answers_[number] = kNoPartner;
        }
        return std::move(answers_);
    }

  private:
    /// The mirror image of an asked vertex. Comparing it with the mesh is comparing the vertex with the image
    /// of the mesh.
    PlainPoint imageOf(int number) const {
        const PlainPoint& point = mesh_.point(asked_[static_cast<std::size_t>(number)]);
        return {point[0] * signs_[0], point[1] * signs_[1], point[2] * signs_[2], 0.0F};
    }

    /// Finds the one vertex whose image is exactly at the place of an asked vertex, and lists the asked
    /// vertices that no image meets.
    void lookUpPlaces() {
        std::vector<int> entries(mesh_.points.size(), MirrorPlaces::kNowhere);  // per vertex
        MirrorPlaces places(mesh_.points, space_.axis, asked_.size());
        threads_.run([&](unsigned int half) { places.add(half, asked_, entries); });
        std::vector<int> others;
        for (std::size_t vertex = 0; vertex < entries.size(); ++vertex) {
            if (entries[vertex] == MirrorPlaces::kNowhere) others.push_back(static_cast<int>(vertex));
        }
        threads_.run([&](unsigned int half) { places.addIfKnown(half, others, entries); });
        threads_.run([&](unsigned int half) {
            const std::size_t middle = asked_.size() / 2;
            const std::size_t end = half == 0 ? middle : asked_.size();
            for (std::size_t number = half == 0 ? 0 : middle; number < end; ++number)
                answers_[number] = acrossFrom(asked_[number], places, entries);
        });
        unmet_.reserve(asked_.size());
        for (std::size_t number = 0; number < asked_.size(); ++number) {
            int& answer = answers_[number];
            if (answer >= 0) traits_.want(answer);
            if (answer != MirrorPlaces::kNobody) continue;
            unmet_.push_back(static_cast<int>(number));
            answer = kUndecided;
        }
    }

    /// The vertex whose image is at the place of a vertex, or MirrorPlaces::kNobody. kUndecided for several,
    /// and if the vertex has no place.
    int acrossFrom(int vertex, const MirrorPlaces& places, const std::vector<int>& entries) const {
        if (!mesh_.has(vertex)) return kUndecided;
        const int entry = entries[static_cast<std::size_t>(vertex)];
        if (entry == MirrorPlaces::kNowhere) return kUndecided;
        const int partner = places.acrossFrom(vertex, entry);
        return partner == MirrorPlaces::kSeveral ? kUndecided : partner;
    }

    /// Tells the asked vertices that no image meets apart: no image near, one, or several.
    void lookAround() {
        if (unmet_.empty()) return;
        std::vector<int> found(unmet_.size(), MirrorPlaces::kNobody);
        PointGrid grid(
            unmet_.size(), [this](std::size_t k) { return imageOf(unmet_[k]); }, 8.0 * reach_);
        for (std::size_t vertex = 0; vertex < mesh_.points.size(); ++vertex) {
            const PlainPoint& point = mesh_.points[vertex];
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
        unmet_ = std::vector<int>();  // gives its memory back
    }

    void noteNear(int number, int partner) {
        const PlainVector apart = difference(mesh_.point(partner), imageOf(number));
        const double distance = std::sqrt(dot(apart, apart));
        if (distance > space_.tolerance * (1.0 - kMargin)) return;
        near_.push_back({number, partner, roundedUp(distance * (1.0 + kMargin))});
        traits_.want(partner);
    }

    /// Every face around an image gives the same answer if it has the image on its surface, and no other
    /// corner could count as being at its place.
    void judgePlaces() {
        for (int& answer : answers_) {
            const bool isSafe = answer < 0 || (traits_.isOnSurface(answer) && !traits_.isCrowded(answer));
            if (!isSafe) answer = kUndecided;
        }
    }

    /// The faces around an image near by are no farther than the image. If all others are, the closest one is
    /// among them, and no other of its corners is within the tolerance.
    void judgeNear() {
        for (NearPair& pair : near_)
            pair.distance = roundedUp(pair.distance + kPrecision * traits_.extentOf(pair.vertex));
        judgeNearPairs(
            mesh_, [this](int number) { return imageOf(number); }, near_);
        for (const NearPair& pair : near_) {
            if (!pair.isAlone || !traits_.isOnSurface(pair.vertex)) continue;
            answers_[static_cast<std::size_t>(pair.number)] = pair.vertex;
        }
    }

    const PartnerSpace& space_;
    const PlainMesh mesh_;
    const std::vector<int>& asked_;
    const double reach_;                            // how far an image may be on one axis and count as near
    std::array<float, 3> signs_{1.0F, 1.0F, 1.0F};  // what the coordinates of an image are multiplied by
    CornerTraits traits_;
    std::vector<int> answers_;  // per asked vertex
    std::vector<int> unmet_;    // numbers of asked vertices at whose place no image is
    std::vector<NearPair> near_;
    const SideBySide threads_;
};

}  // namespace

std::vector<int> lookUpPartners(const PartnerSpace& space, const std::vector<int>& asked) {
    return Lookup(space, asked).answers();
}
