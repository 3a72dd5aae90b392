#include "symmetry/mirrorPartners.h"

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <vector>

#include "symmetry/positionPartners.h"
#include "symmetry/symmetryPlane.h"
#include "symmetry/vertexOrderMap.h"

namespace {

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

MIntArray partnersByPosition(const MDagPath& mesh, int axis, const MIntArray& vertices, double tolerance) {
    std::vector<int> asked(vertices.length());
    if (!asked.empty()) vertices.get(asked.data());
    std::vector<int> found;
    if (!PositionPartners(mesh, axis, tolerance).find(asked, found)) return MIntArray();
    found.erase(std::remove_if(found.begin(), found.end(), [](int partner) { return partner < 0; }),
                found.end());
    return MIntArray(found.data(), static_cast<unsigned int>(found.size()));
}

bool MirrorPartners::prepare(MString& error) {
    if (!search_.mesh.isAlive()) {
        error = kMeshError;
        return false;
    }
    if (!search_.isOrderBased) {
        MFloatPointArray points;
        return readMeshPoints(search_.mesh, points, error);
    }
    if (!search_.orderMesh.isAlive()) {
        error = kMapError;
        return false;
    }
    const auto vertexCount = static_cast<unsigned int>(MFnMesh(search_.mesh.path()).numVertices());
    return readUsableVertexOrderMap(search_.orderMesh.path(), vertexCount, map_, error);
}

bool MirrorPartners::find(const MIntArray& vertices, MIntArray& partners, MString& error) const {
    if (search_.isOrderBased) {
        partners = partnersInMap(map_, vertices);
        return true;
    }
    partners = partnersByPosition(search_.mesh.path(), axisIndex(search_.axis), vertices, search_.tolerance);
    if (partners.length() == vertices.length()) return true;
    error = countMismatch(vertices.length(), partners.length());
    return false;
}

void showSkippedComponents(unsigned int count) {
    if (count == 0) return;
    MGlobal::displayInfo(MString("Skipped ") + count + " asymmetrical components.");
}
