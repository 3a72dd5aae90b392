#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MString.h>

#include "scene/meshObject.h"

/// How a command finds mirror partners: by position on one mesh, or through the vertex order map of the same
/// mesh or of another mesh with the same topology.
struct PartnerSearch {
    MString axis = "x";
    double tolerance = 0.001;  // for positions, in the units of the mesh's parent space
    bool isOrderBased = false;
    MeshObject mesh;
    MeshObject orderMesh;
};

/// Reads the meshes of a search. The order mesh is used only if the search is order-based.
///
/// Empty names are left out, and so is an order mesh with the name of the mesh. The remaining names are used
/// by their position alone: the first is the mesh, the second the order mesh, the third the further one. If
/// there is no second, the order mesh is the mesh itself. If there is no name at all, nothing is set.
/// @param orderName    "" for the mesh itself
/// @param furtherName  "" for none
/// @param error        what is wrong with one of them
bool readSearchMeshes(const MString& name, const MString& orderName, const MString& furtherName,
                      PartnerSearch& search, MeshObject& further, MString& error);

/// The partner of each listed vertex by position (positionPartners.h), in the order given.
/// @return one entry per vertex that has a partner: the array is shorter than the list if some have none
MIntArray partnersByPosition(const MDagPath& mesh, int axis, const MIntArray& vertices, double tolerance);

/// One run of a search.
class MirrorPartners {
  public:
    /// @param search  must outlive this object
    explicit MirrorPartners(const PartnerSearch& search) : search_(search) {}

    /// Whether the search is possible. By position, the mesh must have points. Order-based, the map must
    /// exist and fit the vertex count of the mesh; it is read here. Call this before the command changes
    /// anything.
    bool prepare(MString& error);

    /// The mirror partner of each listed vertex. Call prepare first.
    /// @param partners  one entry per vertex; order-based, -1 for a vertex without partner
    /// @param error     by position: some vertices have no partner
    bool find(const MIntArray& vertices, MIntArray& partners, MString& error) const;

  private:
    const PartnerSearch& search_;
    MIntArray map_;  // of an order-based search
};

/// Shows how many vertices had no usable partner. Shows nothing for 0.
void showSkippedComponents(unsigned int count);
