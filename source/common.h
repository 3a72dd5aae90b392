#pragma once

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <limits>

/// Access to the data of blend-shape nodes and meshes that all commands share.
///
/// A target is addressed by its weight index t, one shape of it by the item index 5000 + 1000 *
/// weight (6000 is the full target, 5001 to 5999 are in-betweens). The deltas of an item are two
/// lists aligned by position: vertex indices and points (dx, dy, dz, 1). Everything works on
/// geometry index 0 of the deformer. Main thread only.

/// Item index of the full target, the default of every command.
constexpr int kFullItem = 6000;

/// Target index that stands for the deformer's base weights where a weight list is addressed.
constexpr int kBaseWeights = -1;

/// The plug inputTarget[0].inputTargetGroup[target]; the group need not exist.
MPlug getTargetGroupPlug(const MObject& blendShape, int target);

/// The component list plug of an item; the item need not exist.
/// @return the status of the look-up by name
MStatus getComponentsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug);

/// The delta points plug of an item; the item need not exist.
/// @return the status of the look-up by name
MStatus getPointsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug);

/// Indices of the deformer's weights, ascending.
MIntArray getWeightIndices(const MObject& blendShape);

/// Whether the deformer has a target: a weight or a group of this index. Asking makes nothing.
bool hasTarget(const MObject& blendShape, int target);

/// Whether a target has an item. Asking makes nothing.
bool hasTargetItem(const MObject& blendShape, int target, int item);

/// Whether a mesh is connected to an item: its deltas come from there whenever that mesh changes.
bool isTargetItemLive(const MObject& blendShape, int target, int item);

/// Existing item indices of a target, ascending; empty when it has none.
MIntArray getTargetItemIndices(const MObject& blendShape, int target);

/// Lets the deformer compute its first geometry. The deltas of a connected target mesh exist only afterwards.
void evaluateDeformer(const MObject& blendShape);

/// Vertex indices of an item in stored order; empty for an item that was never written.
MIntArray getTargetComponents(const MObject& blendShape, int target, int item);

/// All elements of a component list plug in stored order; nothing is sorted, duplicates are kept.
MIntArray componentListToIndices(const MPlug& componentList);

/// Replaces the vertices of a component list plug, in the given order, by script or else by data. Where
/// neither is possible, a warning says so.
void setComponentList(const MPlug& componentList, const MIntArray& vertices);

/// Replaces the vertex indices of an item, in the given order. Recorded nowhere: the calling
/// command undoes it.
/// @return the status of the plug look-up; that of the write is not known
MStatus setTargetComponents(const MObject& blendShape, int target, int item, const MIntArray& vertices);

/// Delta points of an item, aligned with getTargetComponents; empty for an item that was never
/// written.
MPointArray getTargetPoints(const MObject& blendShape, int target, int item);

/// Replaces the delta points of an item.
/// @return the status of the look-up or of the write
MStatus setTargetPoints(const MObject& blendShape, int target, int item, const MPointArray& points);

/// The per-vertex weight list of a target (targetWeights), or of the deformer for kBaseWeights
/// (baseWeights). Both are sparse: a missing element counts as 1.
MPlug getWeightsPlug(const MObject& blendShape, int target);

/// Replaces a weight list: clears it, then writes values[k] in single precision at vertices[k].
/// @return always success
MStatus setWeightValues(const MObject& blendShape, int target, const MIntArray& vertices,
                        const MDoubleArray& values);

/// Whether a target has a group of its own; one that has only a weight has none yet. Asking makes nothing.
bool hasTargetGroup(const MObject& blendShape, int target);

/// Removes an item of a target with all that it holds, or nothing where it cannot be removed.
void removeTargetItem(const MObject& blendShape, int target, int item);

/// Removes the group of a target with all its items.
void removeTargetGroup(const MObject& blendShape, int target);

/// Partner of each listed vertex by the vertex order map of a mesh.
///
/// The mesh must carry a map; commands test for it first.
/// @return one entry per given vertex; -1 for a vertex without partner or outside the map
MIntArray mapIndicesByVertexOrder(const MDagPath& mesh, const MIntArray& vertices);

/// Mirror partner of each listed vertex by position (symmetry/mirroredMesh.h), in the order given. The
/// mirrored copy that it takes is gone afterwards.
///
/// @param mesh       path of a mesh shape
/// @param axis       "x", "y" or "z"
/// @param tolerance  distance up to which two points count as one, in the units around the mesh
/// @return one entry per vertex that has a partner: shorter than the list when some have none
MIntArray mirrorIndicesByPosition(const MDagPath& mesh, const MString& axis, const MIntArray& vertices,
                                  double tolerance);

/// Vertex indices of component names such as "mesh.vtx[3]" and "mesh.vtx[4:7]", in the order given,
/// duplicates kept. A range that runs backwards yields nothing.
/// @param vertexCount  ranges end before it and begin at 0, whatever users have typed
MIntArray parseVertexComponents(const MStringArray& components,
                                int vertexCount = std::numeric_limits<int>::max());

/// Appends the tweak values (pnts) of the listed vertices to `points`, as (x, y, z, 1).
/// @return a failure, reported on the standard error stream, when the node has no such attribute
MStatus getTweakPoints(const MObject& mesh, const MIntArray& vertices, MPointArray& points);

/// Writes points[k] as the tweak value (pnts) of vertices[k].
/// @return a failure, reported on the standard error stream, when the node has no such attribute
MStatus setTweakPoints(const MObject& mesh, const MIntArray& vertices, const MPointArray& points);
