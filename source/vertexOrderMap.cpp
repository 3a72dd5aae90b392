#include "vertexOrderMap.h"

#include <maya/MFnIntArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

MStatus findVertexOrderMap(const MDagPath& mesh, MPlug& plug) {
    MSelectionList list;
    const MStatus status = list.add(mesh.fullPathName() + ".dvVertexOrderMap");
    return status ? list.getPlug(0, plug) : status;
}

MIntArray readVertexOrderMap(const MPlug& plug) {
    MObject data;
    plug.getValue(data);
    MStatus status;
    MFnIntArrayData stored(data, &status);
    return status ? stored.array() : MIntArray();
}

MStatus writeVertexOrderMap(const MDagPath& mesh, const MIntArray& map) {
    MPlug plug;
    MStatus status = findVertexOrderMap(mesh, plug);
    if (!status) {
        MGlobal::executeCommand("addAttr -ln \"dvVertexOrderMap\" -sn \"dvvom\" -h 1 -dt Int32Array " +
                                mesh.fullPathName());
        status = findVertexOrderMap(mesh, plug);
    }
    if (!status) return status;
    MObject data = MFnIntArrayData().create(map);
    return plug.setValue(data);
}
