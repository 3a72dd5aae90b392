#include "weights/paintDisplay.h"

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MStatus.h>

#include "scene/plugAccess.h"
#include "symmetry/symmetryPlane.h"

namespace {

/// The value for a vertex without colour.
const MColor kNoColor(-1.0F, -1.0F, -1.0F, -1.0F);

MColor paintColor(double value) {
    const auto v = static_cast<float>(value);
    return MColor(0.4F * v, 0.7F * v, v, 1.0F);
}

/// The weights for painted values, without vertices that are not painted.
WeightList unfrozen(const WeightList& painted) {
    WeightList weights;
    for (unsigned int k = 0; k < painted.vertices.length(); ++k) {
        if (round5(painted.values[k]) > 0.0) weights.append(painted.vertices[k], 1.0 - painted.values[k]);
    }
    return weights;
}

}  // namespace

bool PaintDisplay::isFreezeAttributeUsed() {
    return MGlobal::optionVarIntValue("DELVENUseMayaSculptTool") != 0;
}

PaintDisplay::PaintDisplay(const MObject& blendShape, const MeshObject& mesh)
    : usesAttribute_(isFreezeAttributeUsed()), mesh_(mesh) {
    MStatus status;
    const MPlug plug = MFnDependencyNode(blendShape).findPlug("freeze", false, &status);
    if (status) freeze_ = plug;
}

WeightList PaintDisplay::read() const {
    if (!usesAttribute_) return unfrozen(readColors());
    return freeze_.isNull() ? WeightList() : unfrozen(readWeights(freeze_));
}

WeightList PaintDisplay::readColors() const {
    WeightList painted;
    if (!mesh_.isAlive()) return painted;
    MColorArray colors;
    if (!MFnMesh(mesh_.path()).getVertexColors(colors, nullptr, &kNoColor)) return painted;
    for (unsigned int vertex = 0; vertex < colors.length(); ++vertex)
        painted.append(static_cast<int>(vertex), colors[vertex].b);
    return painted;
}

bool PaintDisplay::show(const WeightList& values, MString& error) {
    hasShown_ = false;
    if (!usesAttribute_) {
        if (mesh_.isAlive()) {
            showColors(values);
            return true;
        }
        error = kMeshError;
        return false;
    }
    if (freeze_.isNull()) {
        error = "The blend shape node has no attribute \"freeze\" to paint on.";
        return false;
    }
    clearElements(freeze_);
    setElements(freeze_, values.vertices, values.values);
    return true;
}

void PaintDisplay::showColors(const WeightList& values) {
    MFnMesh mesh(mesh_.path());
    hadColorSet_ = mesh.numColorSets() > 0;
    before_.clear();
    if (hadColorSet_) mesh.getVertexColors(before_, nullptr, &kNoColor);
    hasShown_ = true;
    const auto vertexCount = static_cast<unsigned int>(mesh.numVertices());
    MColorArray colors;
    MIntArray vertices;
    for (unsigned int k = 0; k < values.vertices.length(); ++k) {
        if (static_cast<unsigned int>(values.vertices[k]) >= vertexCount) continue;
        vertices.append(values.vertices[k]);
        colors.append(paintColor(values.values[k]));
    }
    mesh.setVertexColors(colors, vertices);
}

void PaintDisplay::restore() {
    if (!hasShown_ || !mesh_.isAlive()) return;
    hasShown_ = false;
    MFnMesh mesh(mesh_.path());
    if (!hadColorSet_) {
        // There was no colour set before: delete the new one.
        mesh.deleteColorSet(mesh.currentColorSetName());
        return;
    }
    MColorArray colors;
    MIntArray colored;
    MIntArray bare;
    for (unsigned int vertex = 0; vertex < before_.length(); ++vertex) {
        if (before_[vertex] == kNoColor) {
            bare.append(static_cast<int>(vertex));
        } else {
            colored.append(static_cast<int>(vertex));
            colors.append(before_[vertex]);
        }
    }
    mesh.removeVertexColors(bare);
    mesh.setVertexColors(colors, colored);
}
