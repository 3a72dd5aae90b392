#include "symmetry/mirroredDeltas.h"

#include <maya/MFloatPoint.h>
#include <maya/MPoint.h>

#include <cstddef>
#include <vector>

#include "symmetry/symmetryPlane.h"

namespace {

class Mirror {
  public:
    Mirror(const MirrorRule& rule, const MFloatPointArray& positions, MirroredDeltas& result)
        : rule_(rule),
          axis_(static_cast<unsigned int>(rule.axis)),
          positions_(positions),
          isWritten_(positions.length(), 0),
          result_(result) {}

    void add(int vertex, const MPoint& delta, int partner) {
        if (!isOnMesh(vertex)) {
            if (rule_.isInPlace) own_.append(vertex, delta);
            ++result_.skippedCount;
            return;
        }
        const bool isSource = isOnSourceSide(vertex);
        if (!isSource && !rule_.mirrorsBothSides) return;
        MPoint mirrored = delta;
        mirrored[axis_] = -delta[axis_];
        if (isSource && rule_.isInPlace) {
            if (isOnPlane(vertex)) mirrored[axis_] = 0.0;
            own_.append(vertex, delta);
        }
        if (isOnMesh(partner)) {
            write(partner, mirrored);
        } else {
            ++result_.skippedCount;
        }
    }

    /// Adds what the source side keeps. To be called last.
    void addOwn() {
        for (unsigned int k = 0; k < own_.vertices.length(); ++k) {
            const int vertex = own_.vertices[k];
            if (isOnMesh(vertex) && isWritten_[static_cast<std::size_t>(vertex)] != 0) continue;
            write(vertex, own_.points[k]);
        }
    }

  private:
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

    void write(int vertex, const MPoint& delta) {
        result_.deltas.append(vertex, delta);
        if (isOnMesh(vertex)) isWritten_[static_cast<std::size_t>(vertex)] = 1;
    }

    const MirrorRule& rule_;
    unsigned int axis_;
    const MFloatPointArray& positions_;
    std::vector<char> isWritten_;  // per vertex of the mesh
    TargetDeltas own_;             // what the source side keeps if it receives no delta
    MirroredDeltas& result_;
};

}  // namespace

MirroredDeltas mirrorDeltas(const MirrorRule& rule, const TargetDeltas& source, const MIntArray& partners,
                            const MFloatPointArray& positions) {
    MirroredDeltas result;
    Mirror mirror(rule, positions, result);
    for (unsigned int k = 0; k < partners.length(); ++k)
        mirror.add(source.vertices[k], source.pointAt(k), partners[k]);
    mirror.addOwn();
    return result;
}
