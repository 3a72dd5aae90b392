#include "targetFloors.h"

#include <maya/MFnComponentListData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>

#include <charconv>
#include <string>

namespace {

constexpr unsigned int kPoints = 3;
constexpr unsigned int kComponents = 4;

MPlug itemChild(const MObject& blendShape, int item, unsigned int child) {
    return targetGroup(blendShape)
        .child(0)
        .elementByLogicalIndex(static_cast<unsigned int>(item))
        .child(child);
}

}  // namespace

MPlug targetGroup(const MObject& blendShape) {
    return MFnDependencyNode(blendShape)
        .findPlug("inputTarget", false)
        .elementByLogicalIndex(0)
        .child(0)
        .elementByLogicalIndex(0);
}

void writeDeltasBare(const MObject& blendShape, const MIntArray& vertices, const MPointArray& points,
                     int item) {
    std::string text = std::string("setAttr ") + itemChild(blendShape, item, kComponents).name().asChar() +
                       " -type componentList " + std::to_string(vertices.length());
    text.reserve(text.size() + vertices.length() * 13 + 1);
    char digits[16];
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, vertices[k]);
        text.append(" vtx[").append(digits, end.ptr).append("]");
    }
    text += ';';
    MGlobal::executeCommand(text.c_str(), false, false);
    MObject data = MFnPointArrayData().create(points);
    itemChild(blendShape, item, kPoints).setValue(data);
}

void readDeltasBare(const MObject& blendShape, MIntArray& vertices, MPointArray& points) {
    const MFnComponentListData list(itemChild(blendShape, kFullItem, kComponents).asMObject());
    const unsigned int length = list.length();
    for (unsigned int k = 0; k < length; ++k) {
        MObject object = list[k];
        const MFnSingleIndexedComponent component(object);
        const int count = component.elementCount();
        for (int e = 0; e < count; ++e)
            vertices.append(component.element(e));
    }
    MFnPointArrayData(itemChild(blendShape, kFullItem, kPoints).asMObject()).copyTo(points);
}
