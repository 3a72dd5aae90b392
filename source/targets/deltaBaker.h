#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <vector>

#include "scene/callOutcome.h"
#include "scene/targetDeltas.h"

/// A throw-away blend shape on copies of a mesh, by which the host itself adds deltas to it. Everything that
/// it made leaves the scene with it: the copies, the deformer, and whatever nodes the host put beside that
/// one.
class DeltaBaker {
  public:
    /// @param original  a mesh shape
    explicit DeltaBaker(const MObject& original);
    ~DeltaBaker();
    DeltaBaker(const DeltaBaker&) = delete;
    DeltaBaker& operator=(const DeltaBaker&) = delete;

    /// Adds deltas to the copy, in full.
    CallOutcome bake(const TargetDeltas& deltas);

    /// Leaves everything in the scene for good.
    void leaveInScene();

    /// The copy with the deltas, as long as this object lives.
    MObject deformedShape() const;

  private:
    MObjectHandle base_;    // transform of the copy that is deformed
    MObjectHandle target_;  // transform of the copy that the deformer takes as its target
    MObjectHandle deformer_;
    std::vector<MObjectHandle> helpers_;  // nodes that came with the deformer
};
