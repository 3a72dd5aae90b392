#include "closestFace.h"

#include <maya/MFnMesh.h>
#include <maya/MFnMeshData.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Building the host's structure costs about as much as looking at every face of the mesh so many times.
constexpr std::size_t kBuildCost = 32;

/// The host's structure for a few faces costs about as much as looking at so many.
constexpr std::size_t kSmallBuildCost = 4000;

/// Faces that are farther by no more than rounding come into consideration too.
constexpr double kSlack = 1e-9;

ShellPoint coordinates(const MPoint& point) {
    return {point.x, point.y, point.z};
}

MStatus closestFace(const MMeshIntersector& intersector, const MPoint& point, int& face) {
    MPointOnMesh closest;
    const MStatus status = intersector.getClosestPoint(point, closest);
    if (status) face = closest.faceIndex();
    return status;
}

}  // namespace

ClosestFaceSearch::ClosestFaceSearch(const MDagPath& mesh, const MeshTopology& topology, const Shells& shells,
                                     const MFloatPointArray& points, std::vector<ShellBox> boxes)
    : mesh_(mesh), topology_(topology), shells_(shells), points_(points), boxes_(std::move(boxes)) {}

MStatus ClosestFaceSearch::find(const MPoint& point, int shell, int& face) {
    const auto faceCount = static_cast<std::size_t>(topology_.faceCount());
    if (intersector_.isCreated() || work_ > kBuildCost * faceCount) return findInMesh(point, face);
    gatherFacesWithin(point, squaredDistanceToShell(point, shell));
    if (near_.empty()) return findInMesh(point, face);
    // At distance 0 of all of them, the lowest is closest.
    if (near_.size() == 1 || areAllCornered(point)) {
        face = near_.front();
        return MS::kSuccess;
    }
    work_ += kSmallBuildCost + near_.size() * kBuildCost;
    return work_ <= kBuildCost * faceCount && findAmongNear(point, face) ? MS::kSuccess
                                                                         : findInMesh(point, face);
}

/// To the closest corner of a face, so no less than to the closest face.
double ClosestFaceSearch::squaredDistanceToShell(const MPoint& point, int shell) const {
    double closest = std::numeric_limits<double>::infinity();
    for (const int face : shells_.faces[shell]) {
        for (const int vertex : topology_.faceVertices(face)) {
            const MFloatPoint& corner = points_[static_cast<unsigned int>(vertex)];
            const double x = corner.x - point.x;
            const double y = corner.y - point.y;
            const double z = corner.z - point.z;
            closest = std::min(closest, x * x + y * y + z * z);
        }
        if (closest == 0.0) break;
    }
    return closest;
}

/// Gathers the faces whose boxes are near enough.
void ClosestFaceSearch::gatherFacesWithin(const MPoint& point, double squaredDistance) {
    const double limit = squaredDistance * (1.0 + kSlack);
    const ShellPoint place = coordinates(point);
    near_.clear();
    for (const int shell : boxes_.find(place, limit)) {
        work_ += static_cast<std::size_t>(shells_.faces[shell].size());
        for (const int face : shells_.faces[shell]) {
            if (boxOf(face).squaredDistanceTo(place) <= limit) near_.push_back(face);
        }
    }
    std::sort(near_.begin(), near_.end());
}

ShellBox ClosestFaceSearch::boxOf(int face) const {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    ShellBox box{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    for (const int vertex : topology_.faceVertices(face)) {
        const MFloatPoint& corner = points_[static_cast<unsigned int>(vertex)];
        const ShellPoint place{corner.x, corner.y, corner.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.minimum[axis] = std::min(box.minimum[axis], place[axis]);
            box.maximum[axis] = std::max(box.maximum[axis], place[axis]);
        }
    }
    return box;
}

/// Whether the point is a corner of each near face.
bool ClosestFaceSearch::areAllCornered(const MPoint& point) const {
    return std::all_of(near_.begin(), near_.end(), [&](int face) { return hasCorner(face, point); });
}

bool ClosestFaceSearch::hasCorner(int face, const MPoint& point) const {
    const IndexRange vertices = topology_.faceVertices(face);
    return std::any_of(vertices.begin(), vertices.end(), [&](int vertex) {
        const MFloatPoint& corner = points_[static_cast<unsigned int>(vertex)];
        return corner.x == point.x && corner.y == point.y && corner.z == point.z;
    });
}

/// Asks the host about the near faces alone, as a mesh of their own that is no part of the scene.
MStatus ClosestFaceSearch::findAmongNear(const MPoint& point, int& face) const {
    MFloatPointArray corners;
    MIntArray counts;
    MIntArray connects;
    for (const int nearFace : near_) {
        const IndexRange vertices = topology_.faceVertices(nearFace);
        counts.append(vertices.size());
        for (const int vertex : vertices) {
            connects.append(static_cast<int>(corners.length()));
            corners.append(points_[static_cast<unsigned int>(vertex)]);
        }
    }
    MStatus status;
    MObject data = MFnMeshData().create(&status);
    if (!status) return status;
    MFnMesh().create(static_cast<int>(corners.length()), static_cast<int>(counts.length()), corners, counts,
                     connects, data, &status);
    if (!status) return status;
    MMeshIntersector intersector;
    status = intersector.create(data, MMatrix::identity);
    if (!status) return status;
    int position = -1;
    status = closestFace(intersector, point, position);
    if (status) face = near_[static_cast<std::size_t>(position)];
    return status;
}

MStatus ClosestFaceSearch::findInMesh(const MPoint& point, int& face) {
    if (!intersector_.isCreated()) {
        MObject mesh = mesh_.node();
        const MStatus status = intersector_.create(mesh, MMatrix::identity);
        if (!status) return status;
    }
    return closestFace(intersector_, point, face);
}
