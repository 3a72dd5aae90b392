#include "symmetry/closestFace.h"

#include <maya/MMatrix.h>
#include <maya/MObject.h>

#include <limits>
#include <utility>

namespace {

/// Building the host's structure costs about as much as visiting every face this many times.
constexpr std::size_t kBuildCost = 32;

}  // namespace

ClosestFaceSearch::ClosestFaceSearch(const MDagPath& mesh, const MeshTopology& topology, const Shells& shells,
                                     const MFloatPointArray& points, std::vector<PlainBox> boxes)
    : mesh_(mesh), topology_(topology), shells_(shells), points_(points), boxes_(std::move(boxes)) {}

MStatus ClosestFaceSearch::find(const MPoint& point, int& face) {
    if (!intersector_.isCreated()) {
        face = findAtCorner({point.x, point.y, point.z});
        if (face != -1) return MS::kSuccess;
        MObject mesh = mesh_.node();
        const MStatus status = intersector_.create(mesh, MMatrix::identity);
        if (!status) return status;
    }
    MPointOnMesh closest;
    const MStatus status = intersector_.getClosestPoint(point, closest);
    if (status) face = closest.faceIndex();
    return status;
}

/// The lowest of the faces around a point, if the point is a corner of all of them. -1 if it is not, or if
/// the searches have cost too much.
int ClosestFaceSearch::findAtCorner(const PlainVector& point) {
    if (work_ > kBuildCost * static_cast<std::size_t>(topology_.faceCount())) return -1;
    int lowest = -1;
    for (const int shell : boxes_.find(point)) {
        const IndexRange faces = shells_.faces[shell];
        work_ += static_cast<std::size_t>(faces.size());
        for (const int face : faces) {
            if (!boxOf(face).contains(point)) continue;
            if (!hasCorner(face, point)) return -1;
            if (lowest == -1 || face < lowest) lowest = face;
        }
    }
    return lowest;
}

PlainVector ClosestFaceSearch::place(int vertex) const {
    const MFloatPoint& point = points_[static_cast<unsigned int>(vertex)];
    return {point.x, point.y, point.z};
}

PlainBox ClosestFaceSearch::boxOf(int face) const {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    PlainBox box{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    for (const int vertex : topology_.faceVertices(face))
        box.expand(place(vertex));
    return box;
}

/// False for a face with a corner that is not finite: the host may leave out such a part of the mesh.
bool ClosestFaceSearch::hasCorner(int face, const PlainVector& point) const {
    bool isCorner = false;
    for (const int vertex : topology_.faceVertices(face)) {
        if (!isFinite(place(vertex))) return false;
        isCorner |= place(vertex) == point;
    }
    return isCorner;
}
