#pragma once

#include <maya/MDagPath.h>
#include <maya/MIntArray.h>
#include <maya/MString.h>

#include "scene/meshObject.h"

/// How a command finds mirror partners: by position on one mesh, or through the vertex order map of
/// another of the same topology (or of the same mesh).
struct PartnerSearch {
    MString axis = "x";
    double tolerance = 0.001;  // for positions, in the units around the mesh
    bool isOrderBased = false;
    MeshObject mesh;
    MeshObject orderMesh;
};

/// Reads the meshes of a search. The order mesh is looked at only for a search that is order-based.
///
/// The names are resolved in this order: mesh, order mesh where it is another, further one. What
/// stands second is the order mesh, what stands third the further one, whatever it was given as.
/// @param orderName    "" for the mesh itself
/// @param furtherName  "" for none
/// @param error        what is wrong with one of them
bool readSearchMeshes(const MString& name, const MString& orderName, const MString& furtherName,
                      PartnerSearch& search, MeshObject& further, MString& error);

/// The partner of each listed vertex by position (mirroredMesh.h), in the order given. The mirrored copy that
/// it takes is gone afterwards.
/// @return one entry per vertex that has a partner: shorter than the list when some have none
MIntArray partnersByPosition(const MDagPath& mesh, int axis, const MIntArray& vertices, double tolerance);

/// One run of a search.
class MirrorPartners {
  public:
    /// @param search  has to outlive this object
    explicit MirrorPartners(const PartnerSearch& search) : search_(search) {}

    /// Whether there is something to search: for a search by position the mesh has points, for an
    /// order-based one the map, which is read here, was made for this vertex count. To be asked before a
    /// command changes anything.
    bool prepare(MString& error);

    /// The mirror partner of each listed vertex, after prepare.
    /// @param partners  one entry per vertex; -1 for a vertex without partner: by position none is
    /// @param error     why the partners cannot be had: the positions do not give one for each vertex
    bool find(const MIntArray& vertices, MIntArray& partners, MString& error) const;

  private:
    const PartnerSearch& search_;
    MIntArray map_;  // of an order-based search
};

/// Tells how many vertices had no entry in the map; nothing when all had one.
void showSkippedComponents(unsigned int count);
