#pragma once

#include <maya/MDagModifier.h>
#include <maya/MFloatPointArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <memory>

/// A mesh that a command makes, with its transform at the top of the scene. Undo takes it out of the scene;
/// redo brings the same node back, so that later entries of the undo queue still find it.
class CreatedMesh {
  public:
    /// Takes over a new mesh and shades it like one that the user made.
    /// @param transform  of the mesh
    void set(const MObject& transform);

    /// The transform; null when there is none in the scene.
    MObject transform() const;

    /// Gives the mesh other points, in object space.
    void setPoints(MFloatPointArray& points);

    /// Takes the mesh out of the scene; nothing where the user has deleted it.
    void remove();

    /// Brings back what remove() took.
    /// @return whether the mesh is in the scene again; otherwise it has to be made anew
    bool bringBack();

  private:
    MObjectHandle transform_;
    std::unique_ptr<MDagModifier> removal_;  // kept to be taken back
};
