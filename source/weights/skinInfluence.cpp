#include "weights/skinInfluence.h"

#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MSelectionList.h>

#include "scene/aliveObject.h"

namespace {

MIntArray allBelow(unsigned int count) {
    MIntArray numbers(count, 0);
    for (unsigned int k = 0; k < count; ++k)
        numbers[k] = static_cast<int>(k);
    return numbers;
}

}  // namespace

bool SkinInfluence::find(const MString& skinCluster, const MeshObject& mesh, int influence, MString& error) {
    MSelectionList list;
    list.add(skinCluster);
    MObject node;
    list.getDependNode(0, node);
    if (!node.hasFn(MFn::kSkinClusterFilter)) {
        error = skinCluster + " is not a skin cluster.";
        return false;
    }
    MDagPathArray paths;
    const unsigned int count = MFnSkinCluster(node).influenceObjects(paths);
    if (influence < 0 || static_cast<unsigned int>(influence) >= count) {
        error = skinCluster + " has no influence " + influence + ".";
        return false;
    }
    if (!mesh.isAlive()) {
        error = "The skin mesh is not defined.";
        return false;
    }
    skinCluster_ = node;
    mesh_ = mesh;
    influence_ = static_cast<unsigned int>(influence);
    influences_ = allBelow(count);
    return true;
}

MStatus SkinInfluence::read(unsigned int vertexCount, WeightList& weights) const {
    Block block = makeBlock(allBelow(vertexCount));
    const MStatus status = readBlock(block);
    if (!status) return status;
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex) {
        weights.append(static_cast<int>(vertex), block.weights[vertex * influences_.length() + influence_]);
    }
    return status;
}

MStatus SkinInfluence::write(unsigned int vertexCount, const WeightList& weights) {
    const unsigned int count = influences_.length();
    before_ = Block();
    MStatus status;
    if (weights.vertices.length() != vertexCount) {
        Block all = makeBlock(allBelow(vertexCount));
        status = readBlock(all);
        if (!status) return status;
        before_ = all;
        for (unsigned int vertex = 0; vertex < vertexCount; ++vertex)
            all.weights[vertex * count + influence_] = 0.0;
        status = writeBlock(all);
        if (!status) return status;
    }
    Block listed = makeBlock(weights.vertices);
    status = readBlock(listed);
    if (!status) return status;
    if (before_.component.isNull()) before_ = listed;
    for (unsigned int k = 0; k < weights.vertices.length(); ++k)
        listed.weights[k * count + influence_] = weights.values[k];
    return writeBlock(listed);
}

MStatus SkinInfluence::restore() {
    // The user may have deleted either node by hand.
    if (before_.component.isNull() || aliveObject(skinCluster_).isNull() || !mesh_.isAlive())
        return MS::kSuccess;
    return writeBlock(before_);
}

SkinInfluence::Block SkinInfluence::makeBlock(MIntArray vertices) const {
    Block block;
    MFnSingleIndexedComponent component;
    block.component = component.create(MFn::kMeshVertComponent);
    component.addElements(vertices);
    return block;
}

MStatus SkinInfluence::readBlock(Block& block) const {
    unsigned int count = 0;
    MObject node = aliveObject(skinCluster_);
    const MStatus status =
        MFnSkinCluster(node).getWeights(mesh_.path(), block.component, block.weights, count);
    return status && count != influences_.length() ? MStatus(MS::kFailure) : status;
}

MStatus SkinInfluence::writeBlock(Block& block) {
    MObject node = aliveObject(skinCluster_);
    return MFnSkinCluster(node).setWeights(mesh_.path(), block.component, influences_, block.weights, true);
}
