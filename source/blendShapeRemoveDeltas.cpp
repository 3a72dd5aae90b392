#include "blendShapeRemoveDeltas.h"

#include <maya/MArgDatabase.h>
#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

#include <cstddef>
#include <vector>

#include "scene/aliveObject.h"

namespace {

/// A set of vertices of one mesh: one mark per vertex.
class VertexSet {
  public:
    VertexSet() = default;
    explicit VertexSet(int vertexCount) : marks_(static_cast<std::size_t>(vertexCount), 0) {}

    void add(int vertex) {
        marks_[static_cast<std::size_t>(vertex)] = 1;
        isEmpty_ = false;
    }
    bool isEmpty() const { return isEmpty_; }
    /// @param vertex  any number: deltas may list vertices that the mesh does not have
    bool contains(int vertex) const {
        const auto index = static_cast<std::size_t>(vertex);
        return index < marks_.size() && marks_[index] != 0;
    }

  private:
    std::vector<char> marks_;
    bool isEmpty_ = true;
};

/// The vertices of a component, or of its edges or faces.
VertexSet verticesOf(const MDagPath& mesh, MObject component) {
    VertexSet vertices(MFnMesh(mesh).numVertices());
    if (component.hasFn(MFn::kMeshVertComponent)) {
        for (MItMeshVertex vertex(mesh, component); !vertex.isDone(); vertex.next())
            vertices.add(vertex.index());
    } else if (component.hasFn(MFn::kMeshEdgeComponent)) {
        for (MItMeshEdge edge(mesh, component); !edge.isDone(); edge.next()) {
            vertices.add(edge.index(0));
            vertices.add(edge.index(1));
        }
    } else if (component.hasFn(MFn::kMeshPolygonComponent)) {
        MIntArray corners;
        for (MItMeshPolygon face(mesh, component); !face.isDone(); face.next()) {
            face.getVertices(corners);
            for (unsigned int k = 0; k < corners.length(); ++k)
                vertices.add(corners[k]);
        }
    }
    return vertices;
}

/// The vertices of the first selected object. Empty if it is not a component of a mesh.
VertexSet selectedVertices() {
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MDagPath path;
    MObject component;
    if (selection.isEmpty() || !selection.getDagPath(0, path, component) || component.isNull()) return {};
    return verticesOf(path, component);
}

TargetDeltas deltasWithout(const VertexSet& removed, const TargetDeltas& deltas) {
    TargetDeltas kept;
    for (unsigned int k = 0; k < deltas.vertices.length(); ++k) {
        if (!removed.contains(deltas.vertices[k])) kept.append(deltas.vertices[k], deltas.pointAt(k));
    }
    return kept;
}

}  // namespace

const CommandInfo& blendShapeRemoveDeltas::info() {
    static const CommandInfo description{
        kName,
        "Removes the blend shape deltas for the selected components.",
        {{"-i", "-index", MSyntax::kLong, "index of the source target channel"},
         {"-ti", "-targetItem", MSyntax::kLong, "target position"}},
        "dv_blendShapeRemoveDeltas -i <int> -ti <int>",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeRemoveDeltas::read(const MArgDatabase& arguments) {
    readFlag(arguments, "-i", target_);
    readFlag(arguments, "-ti", item_);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    blendShape_ = blendShape;
    return outcome;
}

CallOutcome blendShapeRemoveDeltas::edit() {
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) return CallOutcome::failed(kBlendShapeGone);
    TargetEditor targets(blendShape);
    CallOutcome outcome = targets.checkItem(target_, item_);
    if (!outcome.isDone()) return outcome;
    const VertexSet selected = selectedVertices();
    saved_.save(targets, target_, item_);
    // Empty lists make initialiseEmpty write a zero delta: the reset.
    outcome = selected.isEmpty() ? targets.initialiseEmpty(target_, item_, TargetDeltas())
                                 : targets.write(target_, item_, deltasWithout(selected, saved_.deltas()));
    if (outcome.isDone()) setResult(1);
    return outcome;
}

CallOutcome blendShapeRemoveDeltas::restore() {
    return saved_.restore();
}
