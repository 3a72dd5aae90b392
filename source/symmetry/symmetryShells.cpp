#include "symmetry/symmetryShells.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Visits the vertices of shells, one shell after the other.
class ShellScanner {
  public:
    explicit ShellScanner(const ScanInput& input)
        : input_(input), seenIn_(at(input.topology.vertexCount()), -1) {}

    void scan(int shell, ShellScan& result) {
        result.candidate = -1;
        smallestDistance_ = -1.0;
        for (const int face : input_.shells.faces[shell]) {
            for (const int vertex : input_.topology.faceVertices(face)) {
                if (seenIn_[at(vertex)] == shell) continue;
                seenIn_[at(vertex)] = shell;
                visit(vertex, result);
            }
        }
    }

  private:
    void visit(int vertex, ShellScan& result) {
        const PlainVector point = input_.point(vertex);
        if (result.vertexCount == 0) result.box = {point, point};
        ++result.vertexCount;
        result.box.expand(point);
        const double distance = std::abs(point[at(input_.axis)]);
        if (result.candidate == -1 && input_.isOnPlane(vertex)) {
            if (input_.hasCentreNeighbour(vertex)) result.candidate = vertex;
        } else if (smallestDistance_ == -1.0 || distance < smallestDistance_) {
            smallestDistance_ = distance;
            result.candidate = vertex;
        }
    }

    const ScanInput& input_;
    std::vector<int> seenIn_;  // per vertex: the last shell that visited it
    double smallestDistance_ = -1.0;
};

PlainVector mirroredCentre(const PlainBox& box, int axis) {
    PlainVector centre;
    for (std::size_t k = 0; k < 3; ++k)
        centre[k] = box.minimum[k] + (box.maximum[k] - box.minimum[k]) / 2.0;
    centre[at(axis)] *= -1.0;
    return centre;
}

std::vector<PlainBox> boxesOf(const std::vector<ShellScan>& scans) {
    std::vector<PlainBox> boxes;
    boxes.reserve(scans.size());
    for (const ShellScan& scan : scans)
        boxes.push_back(scan.box);
    return boxes;
}

/// The axis along which the minima of the boxes are spread most.
std::size_t widestAxis(const std::vector<PlainBox>& boxes) {
    std::size_t widest = 0;
    double width = -1.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto [first, last] = std::minmax_element(
            boxes.begin(), boxes.end(),
            [axis](const PlainBox& a, const PlainBox& b) { return a.minimum[axis] < b.minimum[axis]; });
        if (first == boxes.end() || last->minimum[axis] - first->minimum[axis] <= width) continue;
        width = last->minimum[axis] - first->minimum[axis];
        widest = axis;
    }
    return widest;
}

}  // namespace

BoxIndex::BoxIndex(std::vector<PlainBox> boxes) : boxes_(std::move(boxes)), axis_(widestAxis(boxes_)) {
    // NaN cannot be sorted. Such a box contains no point anyway.
    for (PlainBox& box : boxes_) {
        if (std::isnan(box.minimum[axis_])) box.minimum[axis_] = std::numeric_limits<double>::infinity();
    }
    byMinimum_.resize(boxes_.size());
    std::iota(byMinimum_.begin(), byMinimum_.end(), 0);
    std::sort(byMinimum_.begin(), byMinimum_.end(),
              [&](int a, int b) { return boxes_[at(a)].minimum[axis_] < boxes_[at(b)].minimum[axis_]; });
    double reach = -std::numeric_limits<double>::infinity();
    for (const int box : byMinimum_) {
        reach = std::max(reach, boxes_[at(box)].maximum[axis_]);
        reach_.push_back(reach);
    }
}

std::vector<int> BoxIndex::find(const PlainVector& point) const {
    const auto end = std::partition_point(byMinimum_.begin(), byMinimum_.end(), [&](int box) {
        return boxes_[at(box)].minimum[axis_] <= point[axis_];
    });
    std::vector<int> found;
    for (auto k = end - byMinimum_.begin(); k > 0 && reach_[static_cast<std::size_t>(k - 1)] >= point[axis_];
         --k) {
        const int box = byMinimum_[static_cast<std::size_t>(k - 1)];
        if (boxes_[at(box)].contains(point)) found.push_back(box);
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<ShellScan> scanShells(const ScanInput& input, const std::vector<int>& markedFaces) {
    const Shells& shells = input.shells;
    std::vector<ShellScan> scans(at(shells.count()));
    // If a shell has several starts, the first counts.
    for (const int face : markedFaces) {
        ShellScan& scan = scans[at(shells.shellOfFace[at(face)])];
        if (scan.markedFace == -1) scan.markedFace = face;
    }
    ShellScanner scanner(input);
    int candidate = -1;
    for (int shell = 0; shell < shells.count(); ++shell) {
        ShellScan& scan = scans[at(shell)];
        scan.seed = shells.faces[shell][0];
        scan.faceCount = shells.faces[shell].size();
        scan.candidate = candidate;
        if (scan.markedFace == -1) scanner.scan(shell, scan);
        candidate = scan.candidate;
    }
    return scans;
}

ShellCounts pairCounts(const std::vector<ShellScan>& scans) {
    std::unordered_map<int, int> remaining;  // by face count: the shells still to come
    for (const ShellScan& scan : scans) {
        if (scan.markedFace == -1) ++remaining[scan.faceCount];
    }
    ShellCounts counts;
    std::unordered_map<int, bool> isWaiting;  // by face count: the last shell has no partner yet
    for (const ShellScan& scan : scans) {
        if (scan.markedFace != -1) continue;
        const int left = --remaining[scan.faceCount];
        bool& waiting = isWaiting[scan.faceCount];
        if (waiting) {
            waiting = false;
        } else if (left > 0) {
            waiting = true;
            counts.pairs.push_back(scan.faceCount);
        } else {
            counts.singles.push_back(scan.faceCount);
        }
    }
    return counts;
}

ShellGroups::ShellGroups(const std::vector<ShellScan>& scans, int axis)
    : scans_(scans), axis_(axis), boxes_(boxesOf(scans)), isTaken_(scans.size(), 0) {
    for (std::size_t shell = 0; shell < scans.size(); ++shell)
        queues_[scans[shell].faceCount].shells.push_back(static_cast<int>(shell));
}

std::vector<int> ShellGroups::take(int faceCount) {
    Queue& queue = queues_[faceCount];
    while (queue.next < queue.shells.size() && isTaken_[at(queue.shells[queue.next])] != 0)
        ++queue.next;
    if (queue.next == queue.shells.size()) return {};
    const int first = queue.shells[queue.next];
    isTaken_[at(first)] = 1;
    std::vector<int> group{first};
    for (const int shell : boxes_.find(mirroredCentre(scans_[at(first)].box, axis_))) {
        if (scans_[at(shell)].faceCount != faceCount || isTaken_[at(shell)] != 0) continue;
        isTaken_[at(shell)] = 1;
        group.push_back(shell);
    }
    return group;
}
