#pragma once

#include <maya/MColorArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

#include "scene/meshObject.h"
#include "weights/weightList.h"

/// Where a user paints how much of a sculpt is frozen: 1 is frozen, which is the weight 0 of a
/// target. Either the "freeze" attribute of the blend shape, where the kit uses the host's own
/// sculpting tools, or the blue of the mesh's vertex colours.
class PaintDisplay {
  public:
    /// Whether the kit uses the host's tools; so the user's settings say.
    static bool isFreezeAttributeUsed();

    /// @param mesh  needed for vertex colours only
    PaintDisplay(const MObject& blendShape, const MeshObject& mesh);

    /// The weights that the display stands for, at vertices that are frozen in part at least, by
    /// ascending vertex.
    WeightList read() const;

    /// Displays values as they are. Vertices that the mesh does not have are left out.
    /// @param error  why there is nowhere to show them
    bool show(const WeightList& values, MString& error);

    /// Puts back the vertex colours that the last show() replaced; the attribute stays as it is.
    void restore();

  private:
    WeightList readColors() const;
    void showColors(const WeightList& values);

    bool usesAttribute_;
    MPlug freeze_;
    MeshObject mesh_;
    bool hasShown_ = false;  // colours
    bool hadColorSet_ = false;
    MColorArray before_;
};
