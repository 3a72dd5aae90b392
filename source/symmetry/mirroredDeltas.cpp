#include "symmetry/mirroredDeltas.h"

#include <maya/MFloatPoint.h>
#include <maya/MPoint.h>

#include <cstddef>
#include <vector>

#include "symmetry/symmetryPlane.h"

namespace {

/// What becomes of a delta on its way.
enum class Change : unsigned char { kNone, kMirrored, kFlattened };

/// Notes first which delta goes where, so that the result is made at its final length.
class Mirror {
  public:
    Mirror(const MirrorRule& rule, const TargetDeltas& source, const MFloatPointArray& positions)
        : rule_(rule),
          axis_(static_cast<unsigned int>(rule.axis)),
          source_(source),
          positions_(positions),
          isWritten_(positions.length(), 0) {
        vertices_.reserve(source.vertices.length());
        origins_.reserve(source.vertices.length());
    }

    /// @param entry  of the source
    void add(unsigned int entry, int partner) {
        const int vertex = source_.vertices[entry];
        if (!isOnMesh(vertex)) {
            if (rule_.isInPlace) own_.push_back(entry);
            ++skippedCount_;
            return;
        }
        const bool isSource = isOnSourceSide(vertex);
        if (!isSource && !rule_.mirrorsBothSides) return;
        const bool keeps = isSource && rule_.isInPlace;
        if (keeps) own_.push_back(entry);
        if (isOnMesh(partner)) {
            write(partner, {entry, keeps && isOnPlane(vertex) ? Change::kFlattened : Change::kMirrored});
        } else {
            ++skippedCount_;
        }
    }

    /// The deltas that were added, followed by what the source side keeps.
    MirroredDeltas result() {
        for (const unsigned int entry : own_) {
            const int vertex = source_.vertices[entry];
            if (isOnMesh(vertex) && isWritten_[static_cast<std::size_t>(vertex)] != 0) continue;
            write(vertex, {entry, Change::kNone});
        }
        const auto count = static_cast<unsigned int>(vertices_.size());
        MirroredDeltas result{{MIntArray(vertices_.data(), count), MPointArray(count)}, skippedCount_};
        for (unsigned int k = 0; k < count; ++k)
            result.deltas.points[k] = changed(origins_[k]);
        return result;
    }

  private:
    struct Origin {
        unsigned int entry;
        Change change;
    };

    MPoint changed(const Origin& origin) const {
        MPoint delta = source_.pointAt(origin.entry);
        if (origin.change != Change::kNone)
            delta[axis_] = origin.change == Change::kFlattened ? 0.0 : -delta[axis_];
        return delta;
    }

    bool isOnMesh(int vertex) const {
        return vertex >= 0 && static_cast<unsigned int>(vertex) < positions_.length();
    }

    float coordinate(int vertex) const { return positions_[static_cast<unsigned int>(vertex)][axis_]; }

    bool isOnSourceSide(int vertex) const {
        const double side = coordinate(vertex);
        return rule_.isPositiveSource ? !(side < -rule_.tolerance) : !(side > rule_.tolerance);
    }

    bool isOnPlane(int vertex) const {
        return ::isOnPlane(MPoint(positions_[static_cast<unsigned int>(vertex)]), axis_, rule_.tolerance);
    }

    void write(int vertex, const Origin& origin) {
        vertices_.push_back(vertex);
        origins_.push_back(origin);
        if (isOnMesh(vertex)) isWritten_[static_cast<std::size_t>(vertex)] = 1;
    }

    const MirrorRule& rule_;
    unsigned int axis_;
    const TargetDeltas& source_;
    const MFloatPointArray& positions_;
    std::vector<char> isWritten_;    // per vertex of the mesh
    std::vector<unsigned int> own_;  // entries that the source side keeps if it receives no delta
    std::vector<int> vertices_;      // of the result
    std::vector<Origin> origins_;    // of the result's deltas
    unsigned int skippedCount_ = 0;
};

}  // namespace

MirroredDeltas mirrorDeltas(const MirrorRule& rule, const TargetDeltas& source, const MIntArray& partners,
                            const MFloatPointArray& positions) {
    Mirror mirror(rule, source, positions);
    for (unsigned int k = 0; k < partners.length(); ++k)
        mirror.add(k, partners[k]);
    return mirror.result();
}
