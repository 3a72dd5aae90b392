// The node type skinCluster: its attributes.

#include "nodes/deformation.h"
#include "nodes/schema.h"
#include "nodes/skinDeformation.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::enumeration;
using graph::number;
using graph::typed;
using graph::ValueKind;

graph::ComputedValue computeSkinCluster(graph::Graph& graph, const graph::Plug& output) {
    return computeDeformer(graph, output, deformBySkin);
}

}  // namespace

void addSkinClusterTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour skinning;
    skinning.compute = computeSkinCluster;
    types.add({"skinCluster",
               "geometryFilter",
               {graph::compound("weightList", "wl", {number("weights", "w").array()}).array(),
                matrix("bindPreMatrix", "pm").array(), matrix("geomMatrix", "gm"),
                matrix("matrix", "ma").array(), number("dropoff", "dpf").withDefault(4).array(),
                number("dropoffRate", "dr").withDefault(4), flag("lockWeights", "lw").array(),
                flag("maintainMaxInfluences", "mmi"), integer("maxInfluences", "mi", 5),
                enumeration("normalizeWeights", "nw", {"None", "Interactive", "Post"}).withDefault(1),
                enumeration("weightDistribution", "wd", {"Distance", "Neighbors"}),
                enumeration("bindMethod", "bm",
                            {"Closest distance", "Closest in hierarchy", "Heat Map", "Geodesic Voxel"}),
                graph::message("bindPose", "bp"),
                enumeration("skinningMethod", "skm", {"Classic linear", "Dual quaternion", "Weight blended"}),
                // By vertex: 0 is classic linear, 1 dual quaternion.
                number("blendWeights", "bw").array(), flag("dqsSupportNonRigid", "dqsnr"),
                graph::triple("dqsScale", "dqs", ValueKind::Double, 1.0), flag("useComponents", "uc"),
                flag("useComponentsMatrix", "ucm"), flag("deformUserNormals", "dun", true),
                typed("paintWeights", "ptw", "doubleArray"), graph::message("paintTrans", "ptt"),
                color("influenceColor", "ifcl").array()},
               skinning});
}

}  // namespace host::nodes
