// The node types time, lambert and network.

#include "nodes/sceneTime.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

using graph::ValueKind;

void addSceneTypes(graph::NodeTypes& types) {
    // The time slider sets it. Everything animated reads it.
    graph::NodeBehaviour timing;
    timing.dependents = curvesOfTime;
    types.add({"time", "node", {graph::number("outTime", "o", ValueKind::Time)}, timing});
    types.add({"network", "node"});
    types.add({"shadingDependNode", "node", {}, {}, true});
    types.add({"lambert",
               "shadingDependNode",
               {keyableColor("color", "c", 0.5), keyableColor("transparency", "it", 0.0),
                keyableColor("ambientColor", "ambc", 0.0), keyableColor("incandescence", "ic", 0.0),
                graph::number("diffuse", "dc", ValueKind::Float).withDefault(0.8).keyable(),
                // Nothing renders here. It only exists for connections.
                keyableColor("outColor", "oc", 0.0)}});
}

}  // namespace host::nodes
