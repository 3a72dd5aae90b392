#include "symmetry/vertexOrderMap.h"

#include <maya/MFnIntArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

MString vertexOrderMapName(const MDagPath& mesh) {
    return mesh.fullPathName() + ".dvVertexOrderMap";
}

MStatus findVertexOrderMap(const MDagPath& mesh, MPlug& plug) {
    MSelectionList list;
    const MStatus status = list.add(vertexOrderMapName(mesh));
    return status ? list.getPlug(0, plug) : status;
}

MIntArray readVertexOrderMap(const MPlug& plug) {
    MObject data;
    plug.getValue(data);
    MStatus status;
    MFnIntArrayData stored(data, &status);
    return status ? stored.array() : MIntArray();
}

MIntArray partnersInMap(const MIntArray& map, const MIntArray& vertices) {
    MIntArray partners(vertices.length(), kUnmapped);
    for (unsigned int k = 0; k < vertices.length(); ++k) {
        const auto vertex = static_cast<unsigned int>(vertices[k]);
        if (vertex < map.length()) partners[k] = map[vertex];
    }
    return partners;
}

bool readUsableVertexOrderMap(const MDagPath& mesh, unsigned int vertexCount, MIntArray& map,
                              MString& error) {
    MPlug plug;
    if (!findVertexOrderMap(mesh, plug)) {
        error = kMapError;
        return false;
    }
    map = readVertexOrderMap(plug);
    if (map.length() == vertexCount) return true;
    error = MString("The vertex order map has ") + map.length() + " entries for " + vertexCount +
            " vertices. Create it again with dv_polyMapVertexOrder.";
    return false;
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
