#pragma once

#include <maya/MColorArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

#include "scene/meshObject.h"
#include "weights/weightList.h"

/// Where a user paints how much of a sculpt is frozen. 1 is frozen, which is weight 0 of a target. If the
/// user's settings choose the host's own sculpting tools, it is the "freeze" attribute of the blend shape;
/// otherwise it is the blue of the mesh's vertex colours.
class PaintDisplay {
  public:
    /// Whether the user's settings choose the host's sculpting tools.
    static bool isFreezeAttributeUsed();

    /// @param mesh  needed only for vertex colours
    PaintDisplay(const MObject& blendShape, const MeshObject& mesh);

    /// The weights that the display shows, for vertices that are at least partly frozen, in ascending order.
    WeightList read() const;

    /// Shows values unchanged: here 1 is frozen. Vertex colours leave out vertices that the mesh does not
    /// have.
    /// @param error  why the values cannot be shown
    bool show(const WeightList& values, MString& error);

    /// Restores the vertex colours that the last show() replaced. An attribute is not restored.
    void restore();

  private:
    WeightList readColors() const;
    void showColors(const WeightList& values);

    bool usesAttribute_;
    MPlug freeze_;
    MeshObject mesh_;
    bool hasShown_ = false;  // the last show() set vertex colours
    bool hadColorSet_ = false;
    MColorArray before_;
};
