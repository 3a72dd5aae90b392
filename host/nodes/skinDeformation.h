#pragma once

#include "nodes/deformation.h"

/// How a skin cluster moves points: by its weights, and by the motions of its influences since they were
/// bound.
namespace host::nodes {

/// Moves the points by the skinCluster's skinningMethod. A vertex without weights does not move.
///
/// - Classic linear: by the weighted sum of the matrices.
/// - Dual quaternion: by the weighted sum of the rigid motions, which is rigid itself: it keeps distances
/// from a
///   common axis. With dqsSupportNonRigid the scale and shear of the influences come first, as a weighted
///   sum. Without it dqsScale takes their place.
/// - Weight blended: between the two, by the vertex's number in blendWeights.
void deformBySkin(Deformation& deformation);

}  // namespace host::nodes
