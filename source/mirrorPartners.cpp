#include "mirrorPartners.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <vector>

#include "common.h"
#include "vertexOrderMap.h"

namespace {

/// Whether the order mesh has a map with an entry for every vertex of the mesh.
bool hasUsableMap(const PartnerSearch& search, MString& error) {
    if (!search.orderMesh.isAlive()) {
        error = kMapError;
        return false;
    }
    MIntArray map;
    return readUsableVertexOrderMap(search.orderMesh.path(),
                                    static_cast<unsigned int>(MFnMesh(search.mesh.path()).numVertices()), map,
                                    error);
}

MString countMismatch(unsigned int vertexCount, unsigned int partnerCount) {
    if (vertexCount <= partnerCount) {
        return "Found too many mirrored points. Please reduce the tolerance when working in smaller scale.";
    }
    return MString("Unable to find ") + (vertexCount - partnerCount) +
           " mirrored points. Please increase the tolerance to account for non-symmetrical points.";
}

}  // namespace

bool readSearchMeshes(const MString& name, const MString& orderName, const MString& furtherName,
                      PartnerSearch& search, MeshObject& further, MString& error) {
    const bool isOrderMeshNamed = search.isOrderBased && orderName.length() > 0 && orderName != name;
    MStringArray names;
    if (name.length() > 0) names.append(name);
    if (isOrderMeshNamed) names.append(orderName);
    if (furtherName.length() > 0) names.append(furtherName);
    std::vector<MeshObject> meshes;
    if (!readMeshNames(names, meshes, error)) return false;
    if (meshes.empty()) return true;
    search.mesh = meshes[0];
    search.orderMesh = meshes.size() > 1 ? meshes[1] : meshes[0];
    if (meshes.size() > 2) further = meshes[2];
    return true;
}

bool checkSearch(const PartnerSearch& search, MString& error) {
    if (!search.mesh.isAlive()) {
        error = kMeshError;
        return false;
    }
    MFloatPointArray points;
    return search.isOrderBased ? hasUsableMap(search, error) : readMeshPoints(search.mesh, points, error);
}

bool findPartners(const PartnerSearch& search, const MIntArray& vertices, MIntArray& partners,
                  MString& error) {
    if (search.isOrderBased) {
        partners = mapIndicesByVertexOrder(search.orderMesh.path(), vertices);
        return true;
    }
    partners = mirrorIndicesByPosition(search.mesh.path(), search.axis, vertices, search.tolerance);
    if (partners.length() == vertices.length()) return true;
    error = countMismatch(vertices.length(), partners.length());
    return false;
}

void showSkippedComponents(unsigned int count) {
    if (count == 0) return;
    MGlobal::displayInfo(MString("Skipped ") + count + " asymmetrical components.");
}
