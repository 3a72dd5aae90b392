// The node types of display layers and render layers. They only hold values and connections.

#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::enumeration;

/// A member's drawOverride is connected to it: its children are in the same order.
AttributeSpec drawInfo() {
    return graph::compound(
        "drawInfo", "di",
        {enumeration("displayType", "dt", {"Normal", "Template", "Reference"}),
         enumeration("levelOfDetail", "lod", {"Full", "Bounding Box"}), flag("shading", "s", true),
         flag("texturing", "t", true), flag("playback", "p", true), flag("enabled", "e", true),
         flag("visibility", "v", true), flag("hideOnPlayback", "hpb"), flag("overrideRGBColors", "ovrgbf"),
         integer("color", "c"), color("overrideColorRGB", "ovrgb", "overrideColor#", "ovc#")});
}

}  // namespace

void addLayerTypes(graph::NodeTypes& types) {
    types.add({"displayLayer",
               "node",
               {integer("identification", "id"), integer("displayOrder", "do"), drawInfo(),
                graph::typed("ufeMembers", "ufem", "stringArray")}});
    types.add({"displayLayerManager",
               "node",
               {integer("currentDisplayLayer", "cdl"), integer("displayLayerId", "dli").array()}});
    types.add({"renderLayer",
               "node",
               {graph::compound("renderInfo", "ri",
                                {integer("identification", "rlid"), flag("renderable", "rndr", true),
                                 integer("color", "c")}),
                flag("global", "g"), integer("displayOrder", "do")}});
    types.add({"renderLayerManager",
               "node",
               {integer("currentRenderLayer", "crl"), integer("renderLayerId", "rlmi").array()}});
}

}  // namespace host::nodes
