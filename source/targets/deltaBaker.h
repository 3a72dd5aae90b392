#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <vector>

#include "scene/callOutcome.h"
#include "scene/targetDeltas.h"

/// A temporary blend shape on copies of a mesh, with which the host adds deltas to the mesh. The destructor
/// deletes everything that was made: the copies, the deformer, and the nodes that the host made with it.
class DeltaBaker {
  public:
    /// @param original  a mesh shape
    explicit DeltaBaker(const MObject& original);
    ~DeltaBaker();
    DeltaBaker(const DeltaBaker&) = delete;
    DeltaBaker& operator=(const DeltaBaker&) = delete;

    /// Adds deltas to the copy, with weight 1.
    CallOutcome bake(const TargetDeltas& deltas);

    /// Keeps everything in the scene for good.
    void leaveInScene();

    /// The copy with the deltas. Valid as long as this object exists.
    MObject deformedShape() const;

  private:
    MObjectHandle base_;    // transform of the copy that is deformed
    MObjectHandle target_;  // transform of the copy that is the target
    MObjectHandle deformer_;
    std::vector<MObjectHandle> helpers_;  // nodes that the host made with the deformer
};
