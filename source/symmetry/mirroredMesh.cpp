#include "symmetry/mirroredMesh.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>

#include "scene/aliveObject.h"
#include "scene/guardEntry.h"
#include "symmetry/partnerLookup.h"

MirroredMesh::MirroredMesh(const MDagPath& mesh, int axis, double tolerance, const MFloatPointArray& points,
                           const IndexLists& faces)
    : mesh_(mesh), tolerance_(tolerance), points_(points), faces_(faces), mirroredPoints_(points) {
    for (unsigned int k = 0; k < mirroredPoints_.length(); ++k) {
        float& coordinate = mirroredPoints_[k][static_cast<unsigned int>(axis)];
        coordinate = -coordinate;
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
    if (vertex < 0 || static_cast<unsigned int>(vertex) >= points_.length()) return MS::kInvalidParameter;
    const MPoint point(points_[static_cast<unsigned int>(vertex)]);
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
