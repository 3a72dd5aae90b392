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

/// Access to the data of blend shape nodes and meshes, shared by all commands.
///
/// A target is addressed by its weight index. A shape of that target, called item, is addressed by the item
/// index 5000 + 1000 * weight: 6000 is the full target, 5001 to 5999 are in-betweens. The deltas of an item
/// are two lists aligned by position: vertex indices and points (dx, dy, dz, 1). All functions use geometry
/// index 0 of the deformer. Main thread only.

/// Item index of the full target; the default of every command.
constexpr int kFullItem = 6000;

/// Target index that means the base weights of the deformer, in functions for weight lists.
constexpr int kBaseWeights = -1;

/// The plug inputTarget[0].inputTargetGroup[target]. The group need not exist.
MPlug getTargetGroupPlug(const MObject& blendShape, int target);

/// The component list plug of an item. The item need not exist.
/// @return the status of the look-up by name
MStatus getComponentsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug);

/// The delta points plug of an item. The item need not exist.
/// @return the status of the look-up by name
MStatus getPointsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug);

/// Indices of the deformer's weights, ascending.
MIntArray getWeightIndices(const MObject& blendShape);

/// Whether the deformer has a target: a weight or a group of this index. Does not create either.
bool hasTarget(const MObject& blendShape, int target);

/// Whether a target has an item. Does not create it.
bool hasTargetItem(const MObject& blendShape, int target, int item);

/// Whether a mesh is connected to an item. If so, the deltas are computed from that mesh whenever it changes.
bool isTargetItemLive(const MObject& blendShape, int target, int item);

/// Existing item indices of a target, ascending; empty if there are none.
MIntArray getTargetItemIndices(const MObject& blendShape, int target);

/// Makes the deformer compute its first geometry. Deltas that come from a connected target mesh do not exist
/// before.
void evaluateDeformer(const MObject& blendShape);

/// Vertex indices of an item in stored order; empty for an item that was never written.
MIntArray getTargetComponents(const MObject& blendShape, int target, int item);

/// All elements of a component list plug in stored order; nothing is sorted, duplicates are kept.
MIntArray componentListToIndices(const MPlug& componentList);

/// Replaces the vertices of a component list plug, in the given order: with setAttr, or with setValue if that
/// fails. Shows a warning if both fail.
void setComponentList(const MPlug& componentList, const MIntArray& vertices);

/// Replaces the vertex indices of an item, in the given order. The calling command does the undo.
/// @return the status of the plug look-up; whether the write succeeded is not known
MStatus setTargetComponents(const MObject& blendShape, int target, int item, const MIntArray& vertices);

/// Delta points of an item, aligned with getTargetComponents; empty for an item that was never
/// written.
MPointArray getTargetPoints(const MObject& blendShape, int target, int item);

/// Replaces the delta points of an item.
/// @return the status of the look-up or of the write
MStatus setTargetPoints(const MObject& blendShape, int target, int item, const MPointArray& points);

/// The plug of the weight list, one weight per vertex: targetWeights of a target, or baseWeights of the
/// deformer for kBaseWeights. Both are sparse: a missing element counts as 1.
MPlug getWeightsPlug(const MObject& blendShape, int target);

/// Replaces a weight list: clears it, then writes values[k] in single precision at vertices[k].
/// @return always success
MStatus setWeightValues(const MObject& blendShape, int target, const MIntArray& vertices,
                        const MDoubleArray& values);

/// Whether a target has a group. A target may have only a weight. Does not create a group.
bool hasTargetGroup(const MObject& blendShape, int target);

/// Removes an item of a target with everything in it. Removes nothing if the item cannot be removed.
void removeTargetItem(const MObject& blendShape, int target, int item);

/// Removes the group of a target with all its items.
void removeTargetGroup(const MObject& blendShape, int target);

/// The partner of each listed vertex in the vertex order map of a mesh. The mesh must have a map; callers
/// check that first.
///
/// @return one entry per given vertex; -1 for a vertex without partner or outside the map
MIntArray mapIndicesByVertexOrder(const MDagPath& mesh, const MIntArray& vertices);

/// The mirror partner of each listed vertex by position (symmetry/positionPartners.h), in the order given.
///
/// @param mesh       path of a mesh shape
/// @param axis       "x", "y" or "z"
/// @param tolerance  distance up to which two points count as equal, in the units of the mesh's parent space
/// @return one entry per vertex that has a partner: the array is shorter than the list if some have none
MIntArray mirrorIndicesByPosition(const MDagPath& mesh, const MString& axis, const MIntArray& vertices,
                                  double tolerance);

/// Vertex indices of component names such as "mesh.vtx[3]" and "mesh.vtx[4:7]", in the order given.
/// Duplicates are kept. A range that runs backwards gives nothing.
/// @param vertexCount  ranges are cut to 0 up to this count; single indices are not checked
MIntArray parseVertexComponents(const MStringArray& components,
                                int vertexCount = std::numeric_limits<int>::max());

/// Appends the tweak values (pnts) of the listed vertices to `points`, as (x, y, z, 1).
/// @return a failure, reported on the standard error stream, if the node has no such attribute
MStatus getTweakPoints(const MObject& mesh, const MIntArray& vertices, MPointArray& points);

/// Writes points[k] as the tweak value (pnts) of vertices[k].
/// @return a failure, reported on the standard error stream, if the node has no such attribute
MStatus setTweakPoints(const MObject& mesh, const MIntArray& vertices, const MPointArray& points);
