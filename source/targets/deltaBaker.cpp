#include "targets/deltaBaker.h"

#include <maya/MDGModifier.h>
#include <maya/MFn.h>
#include <maya/MFnBlendShapeDeformer.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include <cstddef>

#include "common.h"
#include "scene/aliveObject.h"
#include "scene/guardEntry.h"
#include "targets/targetEditor.h"

namespace {

/// Whether a node is a helper: one of those that a host makes with a deformer, for groups of vertices or for
/// tweaks.
bool isHelper(const MObject& node) {
    const bool isSet = node.hasFn(MFn::kSet) && !node.hasFn(MFn::kShadingEngine);
    return isSet || node.hasFn(MFn::kTweak) || node.hasFn(MFn::kGroupParts) || node.hasFn(MFn::kGroupId);
}

bool contains(const std::vector<MObjectHandle>& nodes, const MObject& node) {
    for (const MObjectHandle& known : nodes) {
        if (known == node) return true;
    }
    return false;
}

/// The helper nodes that are connected to a deformer or to each other. The deformer works on our own copy, so
/// all of them belong to it.
std::vector<MObjectHandle> helpersOf(const MObject& deformer) {
    std::vector<MObjectHandle> nodes(1, MObjectHandle(deformer));
    for (std::size_t k = 0; k < nodes.size(); ++k) {
        MPlugArray plugs;
        MFnDependencyNode(nodes[k].object()).getConnections(plugs);
        for (unsigned int at = 0; at < plugs.length(); ++at) {
            MPlugArray others;
            plugs[at].connectedTo(others, true, true);
            for (unsigned int other = 0; other < others.length(); ++other) {
                MObject node = others[other].node();
                if (isHelper(node) && !contains(nodes, node)) nodes.emplace_back(node);
            }
        }
    }
    nodes.erase(nodes.begin());
    return nodes;
}

void disconnectTarget(const MObject& deformer) {
    if (deformer.isNull() || !isTargetItemLive(deformer, 0, kFullItem)) return;
    const MPlug geometry = getTargetGroupPlug(deformer, 0).child(0).elementByLogicalIndex(kFullItem).child(0);
    MDGModifier modifier;
    modifier.disconnect(geometry.source(), geometry);
    modifier.doIt();
}

void deleteIfAlive(const MObjectHandle& handle) {
    MObject node = aliveObject(handle);
    if (!node.isNull()) MGlobal::deleteNode(node);
}

}  // namespace

DeltaBaker::DeltaBaker(const MObject& original) {
    MFnMesh baseMesh;
    MObject base = baseMesh.copy(original, MObject::kNullObj);
    base_ = base;
    MFnMesh targetMesh;
    MObject target = targetMesh.copy(original, MObject::kNullObj);
    target_ = target;
    const MObject targetShape = targetMesh.object();

    MFnBlendShapeDeformer blendShape;
    MObject deformer = blendShape.create(base, MFnBlendShapeDeformer::kLocalOrigin);
    deformer_ = deformer;
    MObjectArray bases;
    blendShape.getBaseObjects(bases);
    // A deleted original, or one without geometry, has no deformer. Writing the deltas reports that.
    if (bases.length() > 0) blendShape.addTarget(bases[0], 0, targetShape, 1.0);
    blendShape.setWeight(0, 1.0F);
    if (!deformer.isNull()) helpers_ = helpersOf(deformer);
}

CallOutcome DeltaBaker::bake(const TargetDeltas& deltas) {
    const MObject deformer = aliveObject(deformer_);
    TargetEditor targets(deformer);
    // Deltas that are written while a mesh is connected may not stay.
    disconnectTarget(deformer);
    return targets.write(0, kFullItem, deltas);
}

void DeltaBaker::leaveInScene() {
    base_ = MObjectHandle();
    target_ = MObjectHandle();
    deformer_ = MObjectHandle();
    helpers_.clear();
}

MObject DeltaBaker::deformedShape() const {
    const MObject base = aliveObject(base_);
    return base.isNull() ? base : MFnDagNode(base).child(0);
}

DeltaBaker::~DeltaBaker() {
    guardEntry("The helper meshes of an extraction", [this] {
        deleteIfAlive(base_);
        deleteIfAlive(target_);
        // Usually deleted with the copies already.
        deleteIfAlive(deformer_);
        for (const MObjectHandle& helper : helpers_)
            deleteIfAlive(helper);
        return MStatus(MS::kSuccess);
    });
}
