#include "scene/createdMesh.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

#include <utility>

#include "scene/aliveObject.h"

namespace {

void shadeLikeNew(const MObject& transform) {
    MGlobal::executeCommand(
        "sets -e -forceElement initialShadingGroup " + MFnDagNode(transform).fullPathName(), false, false);
}

/// The first shape below a transform. A new mesh has no other.
MObject shapeOf(const MObject& transform) {
    const MFnDagNode node(transform);
    return node.childCount() > 0 ? node.child(0) : MObject(MObject::kNullObj);
}

bool isShaded(const MObject& transform) {
    const MPlug groups = MFnDagNode(shapeOf(transform)).findPlug("instObjGroups", false);
    return groups.elementByLogicalIndex(0).isConnected();
}

}  // namespace

void CreatedMesh::set(const MObject& transform) {
    transform_ = transform;
    shadeLikeNew(transform);
}

MObject CreatedMesh::transform() const {
    return aliveObject(transform_);
}

void CreatedMesh::setPoints(MFloatPointArray& points) {
    MFnMesh(shapeOf(transform())).setPoints(points, MSpace::kObject);
}

void CreatedMesh::remove() {
    MObject node = transform();
    removal_.reset();
    if (node.isNull()) return;
    auto removal = std::make_unique<MDagModifier>();
    removal->deleteNode(node);
    if (removal->doIt() && transform().isNull()) {
        removal_ = std::move(removal);
        return;
    }
    node = transform();
    if (!node.isNull()) MGlobal::deleteNode(node);
}

bool CreatedMesh::bringBack() {
    if (removal_ == nullptr) return false;
    const bool isBack = removal_->undoIt() && !transform().isNull();
    if (isBack && !isShaded(transform())) shadeLikeNew(transform());
    return isBack;
}
