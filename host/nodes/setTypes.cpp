// The node types objectSet, shadingEngine and partition.

#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

void addSetTypes(graph::NodeTypes& types) {
    using graph::message;
    graph::NodeBehaviour grouping;
    // The set of a deformer's members is deleted with the deformer.
    grouping.diesWithSources = [](const graph::Attribute& attribute) {
        return attribute.longName() == "usedBy";
    };
    types.add(
        {"objectSet",
         "entity",
         {message("dagSetMembers", "dsm").array(), message("dnSetMembers", "dnsm").array(),
          message("groupNodes", "gn").array(), message("usedBy", "ub").array(), message("partition", "pa"),
          text("annotation", "an"), flag("isLayer", "il"), flag("verticesOnlySet", "vo"),
          flag("edgesOnlySet", "eo"), flag("facetsOnlySet", "fo"), flag("editPointsOnlySet", "epo"),
          flag("renderableOnlySet", "ro"), integer("memberWireframeColor", "mwc", -1)},
         grouping});
    types.add({"shadingEngine",
               "objectSet",
               {graph::triple("surfaceShader", "ss", graph::ValueKind::Float),
                graph::triple("volumeShader", "vs", graph::ValueKind::Float),
                graph::triple("displacementShader", "ds", graph::ValueKind::Float)}});
    types.add({"partition",
               "entity",
               {message("sets", "st").array(), integer("partitionType", "pt"), text("annotation", "an")}});
}

}  // namespace host::nodes
