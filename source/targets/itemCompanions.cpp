#include "targets/itemCompanions.h"

#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include "common.h"
#include "scene/aliveObject.h"
#include "scene/plugAccess.h"

namespace {

MString itemName(const MObject& blendShape, int target, int item) {
    return MFnDependencyNode(blendShape).name() + ".inputTarget[0].inputTargetGroup[" + target +
           "].inputTargetItem[" + item + "]";
}

MString infoName(const MObject& blendShape, int target, int item) {
    return MFnDependencyNode(blendShape).name() + ".inbetweenInfoGroup[" + target + "].inbetweenInfo[" +
           item + "]";
}

MPointArray pointsOf(const MPlug& plug) {
    MPointArray points;
    MObject data;
    if (plug.isNull() || !plug.getValue(data)) return points;
    MStatus status;
    const MFnPointArrayData stored(data, &status);
    if (status) stored.copyTo(points);
    return points;
}

bool hasInfo(const MObject& blendShape, int target, int item) {
    const MString group = MFnDependencyNode(blendShape).name() + ".inbetweenInfoGroup";
    return hasElement(plugNamed(group), target) &&
           hasElement(plugNamed(group + "[" + target + "].inbetweenInfo"), item);
}

}  // namespace

void ItemCompanions::read(const MObject& blendShape, int target, int item) {
    *this = ItemCompanions();
    const MString name = itemName(blendShape, target, item);
    const MPlug vertices = plugNamed(name + ".inputRelativeComponentsTarget");
    if (!vertices.isNull()) relativeVertices_ = componentListToIndices(vertices);
    relativePoints_ = pointsOf(plugNamed(name + ".inputRelativePointsTarget"));
    const MPlug geometry = plugNamed(name + ".inputGeomTarget");
    const MPlug source = geometry.isNull() ? MPlug() : geometry.source();
    if (!source.isNull()) {
        MObject mesh = source.node();
        mesh_ = mesh;
        meshOutput_ = source.partialName(false, true, true, false, false, true);
    }
    if (hasInfo(blendShape, target, item)) readInfo(blendShape, target, item);
}

void ItemCompanions::readInfo(const MObject& blendShape, int target, int item) {
    const MString info = infoName(blendShape, target, item);
    hasInfo_ = true;
    type_ = plugNamed(info + ".inbetweenTargetType").asInt();
    name_ = plugNamed(info + ".inbetweenTargetName").asString();
    interpolation_ = plugNamed(info + ".interpolation").asInt();
    isVisible_ = plugNamed(info + ".inbetweenVisibility").asBool();
    MPlug curve = plugNamed(info + ".interpolationCurve");
    if (curve.isNull()) return;
    curve.getExistingArrayAttributeIndices(curveIndices_);
    for (unsigned int k = 0; k < curveIndices_.length(); ++k) {
        const MPlug point = curve.elementByPhysicalIndex(k);
        curve_.append(point.child(0).asFloat());
        curve_.append(point.child(1).asFloat());
    }
}

void ItemCompanions::write(const MObject& blendShape, int target, int item) const {
    const MString name = itemName(blendShape, target, item);
    if (relativeVertices_.length() > 0)
        setComponentList(plugNamed(name + ".inputRelativeComponentsTarget"), relativeVertices_);
    if (relativePoints_.length() > 0) {
        MPlug points = plugNamed(name + ".inputRelativePointsTarget");
        MObject data = MFnPointArrayData().create(relativePoints_);
        points.setValue(data);
    }
    if (hasInfo_) writeInfo(blendShape, target, item);
    const MObject mesh = aliveObject(mesh_);
    if (mesh.isNull()) return;
    const MString node =
        mesh.hasFn(MFn::kDagNode) ? MFnDagNode(mesh).fullPathName() : MFnDependencyNode(mesh).name();
    const MStatus status = MGlobal::executeCommand(
        "connectAttr -f " + node + "." + meshOutput_ + " " + name + ".inputGeomTarget", false, false);
    if (!status) {
        MGlobal::displayWarning("The target mesh " + node + " could not be connected to " + name +
                                ". Its deltas are there, but do not follow it any more.");
    }
}

/// Does not set attributes that have their default, like the host.
void ItemCompanions::writeInfo(const MObject& blendShape, int target, int item) const {
    const MString info = infoName(blendShape, target, item);
    const bool isAllDefault =
        name_.length() == 0 && interpolation_ == 0 && isVisible_ && curveIndices_.length() == 0;
    if (type_ != 0 || isAllDefault) plugNamed(info + ".inbetweenTargetType").setInt(type_);
    if (name_.length() > 0) plugNamed(info + ".inbetweenTargetName").setString(name_);
    if (interpolation_ != 0) plugNamed(info + ".interpolation").setInt(interpolation_);
    if (!isVisible_) plugNamed(info + ".inbetweenVisibility").setBool(isVisible_);
    const MPlug curve = plugNamed(info + ".interpolationCurve");
    for (unsigned int k = 0; k < curveIndices_.length() && !curve.isNull(); ++k) {
        const MPlug point = curve.elementByLogicalIndex(static_cast<unsigned int>(curveIndices_[k]));
        point.child(0).setFloat(curve_[2 * k]);
        point.child(1).setFloat(curve_[2 * k + 1]);
    }
}

void ItemCompanions::removeInfo(const MObject& blendShape, int target, int item) {
    if (!hasInfo(blendShape, target, item)) return;
    MGlobal::executeCommand("removeMultiInstance -b 1 " + infoName(blendShape, target, item), false, false);
}
