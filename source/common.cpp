#include "common.h"

#include <maya/MFnComponentListData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

#include <algorithm>
#include <string>
#include <vector>

#include "scene/arrayEquality.h"
#include "scene/plugAccess.h"
#include "symmetry/mirrorPartners.h"
#include "symmetry/symmetryPlane.h"
#include "symmetry/vertexOrderMap.h"

namespace {

/// The name of this file in reports of failed host calls.
constexpr const char* kFileName = "common";

/// @param line  the line of the caller, for the report of a failure
MStatus findPlugByName(const MString& name, int line, MPlug& plug) {
    // A name that matches nothing leaves the list empty: getPlug reports it.
    MSelectionList list;
    list.add(name);
    const MStatus status = list.getPlug(0, plug);
    if (!status) status.perror(MString(kFileName) + ", line " + line + ", plug " + name);
    return status;
}

MPlug getInputTargetPlug(const MObject& blendShape) {
    return MFnDependencyNode(blendShape).findPlug("inputTarget", false).elementByLogicalIndex(0);
}

MPlug getTargetItemPlug(const MObject& blendShape, int target, int item) {
    return getTargetGroupPlug(blendShape, target)
        .child(0)
        .elementByLogicalIndex(static_cast<unsigned int>(item));
}

/// The child index of inputGeomTarget in an item.
constexpr unsigned int kGeometryOfItem = 0;

/// The vertices as component list data. Each ascending run becomes a component, because the host sorts the
/// elements of a component.
MObject componentListData(const MIntArray& vertices) {
    MFnComponentListData list;
    MObject data = list.create();
    const unsigned int count = vertices.length();
    for (unsigned int first = 0, end = 0; first < count; first = end) {
        MIntArray run;
        do {
            run.append(vertices[end++]);
        } while (end < count && vertices[end] > vertices[end - 1]);
        MFnSingleIndexedComponent component;
        MObject object = component.create(MFn::kMeshVertComponent);
        component.addElements(run);
        list.add(object);
    }
    return data;
}

/// The pnts plug of a mesh shape. Reports a failure if there is none.
MStatus findTweakPlug(const MObject& mesh, MPlug& plug) {
    MStatus status;
    plug = MFnDependencyNode(mesh).findPlug("pnts", false, &status);
    if (!status) status.pAPIerror(kFileName, __LINE__);
    return status;
}

}  // namespace

MPlug getTargetGroupPlug(const MObject& blendShape, int target) {
    return getInputTargetPlug(blendShape).child(0).elementByLogicalIndex(static_cast<unsigned int>(target));
}

MStatus getComponentsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug) {
    return findPlugByName(getTargetItemPlug(blendShape, target, item).name() + ".inputComponentsTarget",
                          __LINE__, plug);
}

MStatus getPointsTargetPlug(const MObject& blendShape, int target, int item, MPlug& plug) {
    return findPlugByName(getTargetItemPlug(blendShape, target, item).name() + ".inputPointsTarget", __LINE__,
                          plug);
}

MIntArray getWeightIndices(const MObject& blendShape) {
    return existingIndices(MFnDependencyNode(blendShape).findPlug("weight", false));
}

bool hasTarget(const MObject& blendShape, int target) {
    return hasElement(MFnDependencyNode(blendShape).findPlug("weight", false), target) ||
           hasTargetGroup(blendShape, target);
}

bool hasTargetGroup(const MObject& blendShape, int target) {
    return hasElement(getInputTargetPlug(blendShape).child(0), target);
}

bool hasTargetItem(const MObject& blendShape, int target, int item) {
    return hasElement(getTargetGroupPlug(blendShape, target).child(0), item);
}

bool isTargetItemLive(const MObject& blendShape, int target, int item) {
    // Asking for a plug of a missing item could create the item.
    return hasTargetItem(blendShape, target, item) &&
           getTargetItemPlug(blendShape, target, item).child(kGeometryOfItem).isConnected();
}

MIntArray getTargetItemIndices(const MObject& blendShape, int target) {
    return existingIndices(getTargetGroupPlug(blendShape, target).child(0));
}

void evaluateDeformer(const MObject& blendShape) {
    const MPlug outputs = MFnDependencyNode(blendShape).findPlug("outputGeometry", false);
    if (!hasElement(outputs, 0)) return;
    // Reading the output makes the deformer compute it.
    MObject geometry;
    outputs.elementByLogicalIndex(0).getValue(geometry);
}

MIntArray getTargetComponents(const MObject& blendShape, int target, int item) {
    MPlug plug;
    // Only for an existing item, so that a query creates nothing.
    if (!hasTargetItem(blendShape, target, item)) return {};
    if (!getComponentsTargetPlug(blendShape, target, item, plug)) return {};
    return componentListToIndices(plug);
}

MIntArray componentListToIndices(const MPlug& componentList) {
    MObject data;
    componentList.getValue(data);
    MStatus status;
    const MFnComponentListData list(data, &status);
    if (!status) return MIntArray();
    const unsigned int length = list.length();
    // Mostly an entry is one vertex: then nothing need grow.
    std::vector<int> indices;
    indices.reserve(length);
    for (unsigned int k = 0; k < length; ++k) {
        MObject object = list[k];
        const MFnSingleIndexedComponent component(object);
        const int count = component.elementCount();
        for (int e = 0; e < count; ++e)
            indices.push_back(component.element(e));
    }
    return MIntArray(indices.data(), static_cast<unsigned int>(indices.size()));
}

void setComponentList(const MPlug& componentList, const MIntArray& vertices) {
    const unsigned int count = vertices.length();
    std::string text = std::string("setAttr ") + componentList.name().asChar() + " -type componentList " +
                       std::to_string(count) + ' ';
    // Room for seven digits, which long lists have, so that the text need not grow.
    text.reserve(text.size() + count * std::string("vtx[1234567] ").size() + 1);
    for (unsigned int k = 0; k < count; ++k) {
        text += "vtx[";
        text += std::to_string(vertices[k]);
        text += "] ";
    }
    // An empty list reads "0", two blanks and the semicolon.
    text += count == 0 ? " ;" : ";";
    if (MGlobal::executeCommand(text.c_str(), false, false)) return;
    // The host may refuse a long statement; data has no such limit.
    MObject data = componentListData(vertices);
    MPlug plug = componentList;
    if (plug.setValue(data) || areEqual(componentListToIndices(plug), vertices)) return;
    MGlobal::displayWarning("The vertex list " + plug.name() +
                            " could not be written. The vertices and the deltas of this item do not belong " +
                            "together any more. Unlock the attribute and edit the target again.");
}

MStatus setTargetComponents(const MObject& blendShape, int target, int item, const MIntArray& vertices) {
    MPlug plug;
    const MStatus status = getComponentsTargetPlug(blendShape, target, item, plug);
    if (status) setComponentList(plug, vertices);
    return status;
}

MPointArray getTargetPoints(const MObject& blendShape, int target, int item) {
    MPointArray points;
    MPlug plug;
    if (!hasTargetItem(blendShape, target, item)) return points;
    if (!getPointsTargetPlug(blendShape, target, item, plug)) return points;
    MObject data;
    plug.getValue(data);
    MStatus status;
    const MFnPointArrayData stored(data, &status);
    if (status) stored.copyTo(points);
    return points;
}

MStatus setTargetPoints(const MObject& blendShape, int target, int item, const MPointArray& points) {
    MPlug plug;
    const MStatus status = getPointsTargetPlug(blendShape, target, item, plug);
    if (!status) return status;
    MObject data = MFnPointArrayData().create(points);
    return plug.setValue(data);
}

MPlug getWeightsPlug(const MObject& blendShape, int target) {
    MPlug plug;
    if (target == kBaseWeights) {
        findPlugByName(getInputTargetPlug(blendShape).name() + ".baseWeights", __LINE__, plug);
    } else {
        findPlugByName(getTargetGroupPlug(blendShape, target).name() + ".targetWeights", __LINE__, plug);
    }
    return plug;
}

MStatus setWeightValues(const MObject& blendShape, int target, const MIntArray& vertices,
                        const MDoubleArray& values) {
    const MPlug plug = getWeightsPlug(blendShape, target);
    clearElements(plug);
    setElements(plug, vertices, values);
    return MS::kSuccess;
}

void removeTargetItem(const MObject& blendShape, int target, int item) {
    MGlobal::executeCommand("removeMultiInstance -b 1 " + MFnDependencyNode(blendShape).name() +
                                ".it[0].itg[" + target + "].iti[" + item + "]",
                            false, false);
}

void removeTargetGroup(const MObject& blendShape, int target) {
    MGlobal::executeCommand(
        "removeMultiInstance -b 1 " + MFnDependencyNode(blendShape).name() + ".it[0].itg[" + target + "]",
        false, false);
}

MIntArray mapIndicesByVertexOrder(const MDagPath& mesh, const MIntArray& vertices) {
    MPlug plug;
    findPlugByName(vertexOrderMapName(mesh), __LINE__, plug);
    return partnersInMap(readVertexOrderMap(plug), vertices);
}

MIntArray mirrorIndicesByPosition(const MDagPath& mesh, const MString& axis, const MIntArray& vertices,
                                  double tolerance) {
    return partnersByPosition(mesh, axisIndex(axis), vertices, tolerance);
}

MIntArray parseVertexComponents(const MStringArray& components, int vertexCount) {
    MIntArray vertices;
    for (unsigned int k = 0; k < components.length(); ++k) {
        MStringArray parts;
        components[k].split('.', parts);
        if (parts.length() < 2) continue;
        // "vtx[3:7]": the text between the brackets.
        const MString range = parts[1].substring(4, static_cast<int>(parts[1].length()) - 2);
        MStringArray ends;
        range.split(':', ends);
        if (ends.length() == 1) vertices.append(ends[0].asInt());
        if (ends.length() != 2) continue;
        const int end = std::min(ends[1].asInt(), vertexCount - 1);
        for (int vertex = std::max(ends[0].asInt(), 0); vertex <= end; ++vertex)
            vertices.append(vertex);
    }
    return vertices;
}

MStatus getTweakPoints(const MObject& mesh, const MIntArray& vertices, MPointArray& points) {
    MPlug plug;
    const MStatus status = findTweakPlug(mesh, plug);
    if (!status) return status;
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        const MPlug element = plug.elementByLogicalIndex(static_cast<unsigned int>(vertices[k]));
        points.append(
            MPoint(element.child(0).asDouble(), element.child(1).asDouble(), element.child(2).asDouble()));
    }
    return status;
}

MStatus setTweakPoints(const MObject& mesh, const MIntArray& vertices, const MPointArray& points) {
    MPlug plug;
    const MStatus status = findTweakPlug(mesh, plug);
    if (!status) return status;
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        const MPlug element = plug.elementByLogicalIndex(static_cast<unsigned int>(vertices[k]));
        element.child(0).setDouble(points[k].x);
        element.child(1).setDouble(points[k].y);
        element.child(2).setDouble(points[k].z);
    }
    return status;
}
