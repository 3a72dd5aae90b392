// The node types time, lambert and network.

#include "nodes/schema.h"

namespace host::nodes {

using graph::AttributeSpec;
using graph::ValueKind;

AttributeSpec color(const char* longName, const char* shortName, double value) {
    std::vector<AttributeSpec> children;
    for (const char channel : {'R', 'G', 'B'}) {
        const char lower = static_cast<char>(channel - 'A' + 'a');
        children.push_back(
            graph::number(std::string(longName) + channel, std::string(shortName) + lower, ValueKind::Float)
                .withDefault(value)
                .keyable());
    }
    return graph::compound(longName, shortName, std::move(children));
}

void addSceneTypes(graph::NodeTypes& types) {
    // The time slider sets it. Everything animated reads it.
    types.add({"time", "node", {graph::number("outTime", "o", ValueKind::Time)}});
    types.add({"network", "node"});
    types.add({"shadingDependNode", "node", {}, {}, true});
    types.add({"lambert",
               "shadingDependNode",
               {color("color", "c", 0.5), color("transparency", "it", 0.0),
                color("ambientColor", "ambc", 0.0), color("incandescence", "ic", 0.0),
                graph::number("diffuse", "dc", ValueKind::Float).withDefault(0.8).keyable(),
                // Nothing renders here. It only exists for connections.
                color("outColor", "oc", 0.0)}});
}

}  // namespace host::nodes
