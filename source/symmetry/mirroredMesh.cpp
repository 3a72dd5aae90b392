#include "symmetry/mirroredMesh.h"

#include <maya/MFloatPoint.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>

#include <cstddef>

#include "scene/aliveObject.h"
#include "scene/guardEntry.h"
#include "symmetry/partnerLookup.h"

MirroredMesh::MirroredMesh(const MDagPath& mesh, int axis, double tolerance,
                           const std::vector<PlainPoint>& points, const IndexLists& faces)
    : mesh_(mesh), tolerance_(tolerance), points_(points), faces_(faces) {
    mirroredPoints_.setLength(static_cast<unsigned int>(points.size()));
    for (unsigned int vertex = 0; vertex < mirroredPoints_.length(); ++vertex) {
        MFloatPoint image(points[vertex].data());
        image[static_cast<unsigned int>(axis)] *= -1.0F;
        mirroredPoints_[vertex] = image;
    }
}

MirroredMesh::~MirroredMesh() {
    guardEntry("The mirrored copy of a mesh", [this] {
        MObject image = aliveObject(image_);
        return image.isNull() ? MStatus(MS::kSuccess) : MGlobal::deleteNode(image);
    });
}

MStatus MirroredMesh::create() {
    MFnMesh copier;
    MObject image = copier.copy(mesh_.node(), mesh_.transform());
    image_ = image;
    MFnDependencyNode(image).findPlug("intermediateObject", false).setBool(true);
    MFnMesh(image).setPoints(mirroredPoints_, MSpace::kObject);
    return intersector_.create(image, MMatrix::identity);
}

void MirroredMesh::leaveInScene() {
    image_ = MObjectHandle();
}

MStatus MirroredMesh::findPartner(int vertex, int& partner) const {
    if (vertex < 0 || static_cast<std::size_t>(vertex) >= points_.size()) return MS::kInvalidParameter;
    const PlainPoint& place = points_[static_cast<std::size_t>(vertex)];
    const MPoint point(place[0], place[1], place[2], place[3]);
    MPointOnMesh closest;
    const MStatus status = intersector_.getClosestPoint(point, closest);
    if (!status) return status;
    partner = kNoPartner;
    for (const int candidate : faces_[closest.faceIndex()]) {
        if (!point.isEquivalent(MPoint(mirroredPoints_[static_cast<unsigned int>(candidate)]), tolerance_)) {
            continue;
        }
        partner = candidate;
        break;
    }
    return status;
}
