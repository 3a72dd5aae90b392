#include "partnerFloor.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MMeshIntersector.h>
#include <maya/MPoint.h>

namespace {

constexpr auto kTolerance = static_cast<float>(kPartnerTolerance);

bool areClose(const MFloatPoint& a, const MFloatPoint& b) {
    const float x = a.x - b.x;
    const float y = a.y - b.y;
    const float z = a.z - b.z;
    return x * x + y * y + z * z <= kTolerance * kTolerance;
}

}  // namespace

std::vector<int> findPartnersBare(const MDagPath& mesh) {
    MFloatPointArray points;
    MFnMesh(mesh).getPoints(points);
    MFloatPointArray mirrored(points);
    for (MFloatPoint& point : mirrored)
        point.x = -point.x;
    MFnMesh copy;
    MObject image = copy.copy(mesh.node(), mesh.transform());
    copy.setPoints(mirrored);
    MIntArray counts;
    MIntArray corners;
    copy.getVertices(counts, corners);
    std::vector<unsigned int> offsets{0};
    offsets.reserve(counts.length() + std::size_t{1});
    for (const int count : counts)
        offsets.push_back(offsets.back() + static_cast<unsigned int>(count));
    MMeshIntersector intersector;
    intersector.create(image);
    std::vector<int> partners(points.length(), -1);
    MPointOnMesh closest;
    for (unsigned int vertex = 0; vertex < points.length(); ++vertex) {
        intersector.getClosestPoint(MPoint(points[vertex]), closest);
        const auto face = static_cast<std::size_t>(closest.faceIndex());
        for (unsigned int corner = offsets[face]; corner < offsets[face + 1]; ++corner) {
            if (!areClose(points[vertex], mirrored[static_cast<unsigned int>(corners[corner])])) continue;
            partners[vertex] = corners[corner];
            break;
        }
    }
    MGlobal::deleteNode(image);
    return partners;
}
