#include "scene/plugAccess.h"

#include <maya/MFnDoubleArrayData.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

MPlug plugNamed(const MString& name) {
    MSelectionList list;
    MPlug plug;
    if (list.add(name)) list.getPlug(0, plug);
    return plug;
}

MIntArray existingIndices(const MPlug& array) {
    MIntArray indices;
    if (array.isNull()) return indices;
    MPlug plug = array;
    MStatus status;
    plug.getExistingArrayAttributeIndices(indices, &status);
    return status ? indices : MIntArray();
}

bool hasElement(const MPlug& array, int index) {
    const MIntArray indices = existingIndices(array);
    for (unsigned int k = 0; k < indices.length(); ++k) {
        if (indices[k] == index) return true;
    }
    return false;
}

bool isPlugPresent(const MPlug& plug) {
    MPlug at = plug;
    while (at.isElement() || at.isChild()) {
        if (at.isElement()) {
            const auto index = static_cast<int>(at.logicalIndex());
            at = at.array();
            if (!hasElement(at, index)) return false;
        } else {
            at = at.parent();
        }
    }
    return true;
}

MStatus clearElements(const MPlug& array) {
    // An empty array removes all elements at once.
    MObject empty = MFnDoubleArrayData().create(MDoubleArray());
    MPlug plug = array;
    return plug.setValue(empty);
}

void setElements(const MPlug& array, const MIntArray& indices, const MDoubleArray& values) {
    const unsigned int count = indices.length();
    for (unsigned int k = 0; k < count; ++k) {
        MPlug element = array.elementByLogicalIndex(static_cast<unsigned int>(indices[k]));
        element.setFloat(static_cast<float>(values[k]));
    }
}
