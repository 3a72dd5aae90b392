#include "symmetry/nearPairs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <set>

#include "symmetry/pointGrid.h"

namespace {

/// Compares pairs with faces in grids with cells of the size of the faces, one grid for each power of two.
class PairJudge {
  public:
    PairJudge(const PlainMesh& mesh, const PointOfNumber& pointOf, std::vector<NearPair>& pairs)
        : mesh_(mesh), pointOf_(pointOf), pairs_(pairs) {
        for (const NearPair& pair : pairs)
            farthest_ = std::max<double>(farthest_, pair.distance);
    }

    /// @return false if there are too many sizes of faces, or distances for which there is no cell
    bool judge() {
        constexpr std::size_t kMostLevels = 24;  // more is no mesh that anybody models
        if (std::isinf(farthest_)) return false;
        sortFaces();
        if (used_.size() > kMostLevels) return false;
        for (const std::int16_t level : used_)
            judgeLevel(level);
        return true;
    }

  private:
    static constexpr std::int16_t kNoLevel = std::numeric_limits<std::int16_t>::min();

    void sortFaces() {
        levels_.reserve(static_cast<std::size_t>(mesh_.faces.size()));
        std::int16_t last = kNoLevel;
        for (int face = 0; face < mesh_.faces.size(); ++face) {
            const IndexRange corners = finiteCorners(face);
            levels_.push_back(kNoLevel);
            if (corners.size() == 0) continue;
            const PlainBox box = mesh_.boxOf(corners);
            const double size = box.side(box.longestAxis()) + 2.0 * (farthest_ + marginOf(box));
            levels_.back() = static_cast<std::int16_t>(std::ilogb(size));
            if (levels_.back() != last) used_.insert(levels_.back());
            last = levels_.back();
        }
    }

    void judgeLevel(std::int16_t level) {
        PointGrid grid(
            pairs_.size(), [this](std::size_t k) { return pointOf_(pairs_[k].number); },
            std::ldexp(1.0, level + 1));
        for (int face = 0; face < mesh_.faces.size(); ++face) {
            if (levels_[static_cast<std::size_t>(face)] != level) continue;
            const IndexRange corners = finiteCorners(face);
            const PlainBox box = mesh_.boxOf(corners);
            const double margin = marginOf(box);
            grid.visit(box.grown(farthest_ + margin),
                       [&](int k) { judgePair(pairs_[static_cast<std::size_t>(k)], corners, margin); });
        }
        grid.visitMissed([&](int k) { pairs_[static_cast<std::size_t>(k)].isAlone = false; });
    }

    void judgePair(NearPair& pair, IndexRange corners, double margin) const {
        if (!pair.isAlone || std::find(corners.begin(), corners.end(), pair.vertex) != corners.end()) return;
        pair.isAlone = isFartherThan(pair.distance + margin, pointOf_(pair.number), mesh_, corners);
    }

    /// The finite corners of a face: the host may keep a part of a face with others. Valid until the next
    /// call.
    IndexRange finiteCorners(int face) {
        const IndexRange corners = mesh_.faces[face];
        if (mesh_.areFinite(corners)) return corners;
        finite_.clear();
        std::copy_if(corners.begin(), corners.end(), std::back_inserter(finite_),
                     [this](int corner) { return isFinite(mesh_.point(corner)); });
        return {finite_.data(), finite_.data() + finite_.size()};
    }

    /// How far the host may be wrong about the distance of a face in a box.
    static double marginOf(const PlainBox& box) { return kPrecision * box.reach(); }

    const PlainMesh mesh_;
    const PointOfNumber& pointOf_;
    std::vector<NearPair>& pairs_;
    double farthest_ = 0.0;  // the largest distance of a pair
    std::vector<std::int16_t>
        levels_;  // per face: its size, with what is near, lies between this power of two and the next
    std::set<std::int16_t> used_;
    std::vector<int> finite_;
};

}  // namespace

void judgeNearPairs(const PlainMesh& mesh, const PointOfNumber& pointOf, std::vector<NearPair>& pairs) {
    if (pairs.empty() || PairJudge(mesh, pointOf, pairs).judge()) return;
    for (NearPair& pair : pairs)
        pair.isAlone = false;
}
