#pragma once

#include <maya/MDagModifier.h>
#include <maya/MFloatPointArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <memory>

/// A mesh that a command makes, with its transform at the top of the scene. Undo removes it from the scene.
/// Redo brings the same node back, so that later entries of the undo queue still find it.
class CreatedMesh {
  public:
    /// Takes over a new mesh and gives it the default shading of a new object.
    void set(const MObject& transform);

    /// The transform; null if it is not in the scene.
    MObject transform() const;

    /// Replaces the points of the mesh, in object space.
    void setPoints(MFloatPointArray& points);

    /// Removes the mesh from the scene. Does nothing if the user has deleted it.
    void remove();

    /// Brings back what remove() removed.
    /// @return whether the mesh is in the scene again; if not, it must be made anew
    bool bringBack();

  private:
    MObjectHandle transform_;
    std::unique_ptr<MDagModifier> removal_;  // kept for bringBack()
};
