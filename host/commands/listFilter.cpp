#include "commands/listFilter.h"

#include <algorithm>
#include <array>

#include "nodes/meshNode.h"

namespace host::commands {

namespace {

/// Flags for the nodes of a type and of those that derive from it.
struct Kind {
    const char* shortName;
    const char* flag;
    const char* type;
};
constexpr Kind kKinds[] = {{"s", "shapes", "shape"},           {"g", "geometry", "geometryShape"},
                           {"tr", "transforms", "transform"},  {"mat", "materials", "lambert"},
                           {"set", "sets", "objectSet"},       {"ca", "cameras", "camera"},
                           {"pr", "partitions", "partition"},  {"rf", "references", "reference"},
                           {"con", "containers", "container"}, {"pl", "planes", "sketchPlane"}};
/// Types that only files bring. They are not known by what they derive from.
constexpr std::array kLights{"ambientLight", "areaLight", "directionalLight",
                             "pointLight",   "spotLight", "volumeLight"};
constexpr std::array kTextures{
    "bulge",   "brownian", "checker",      "cloth",  "cloud",       "crater",  "envBall",    "envChrome",
    "envCube", "envSky",   "envSphere",    "file",   "fractal",     "granite", "grid",       "layeredTexture",
    "leather", "marble",   "mountain",     "movie",  "noise",       "ocean",   "psdFileTex", "ramp",
    "rock",    "snow",     "solidFractal", "stucco", "volumeNoise", "water",   "wood"};

}  // namespace

void addFilterFlags(Syntax& syntax) {
    for (const Kind& kind : kKinds)
        syntax.flag(kind.shortName, kind.flag);
    for (const NodeState& state : kNodeStates)
        syntax.flag(state.shortName, state.flag);
    syntax.flag("lt", "lights").flag("tex", "textures").flag("nt", "nodeTypes");
    syntax.flag("io", "intermediateObjects").flag("ni", "noIntermediate");
    syntax.multiUseFlag("typ", "type", {kText}).multiUseFlag("et", "exactType", {kText});
    syntax.multiUseFlag("ext", "excludeType", {kText});
}

ListFilter filterOf(const ParsedArguments& arguments) {
    ListFilter filter;
    filter.kinds = texts(arguments, "type");
    filter.exactTypes = texts(arguments, "exactType");
    filter.excludedTypes = texts(arguments, "excludeType");
    for (const Kind& kind : kKinds) {
        if (arguments.isSet(kind.flag)) filter.kinds.emplace_back(kind.type);
    }
    if (arguments.isSet("lights"))
        filter.exactTypes.insert(filter.exactTypes.end(), kLights.begin(), kLights.end());
    if (arguments.isSet("textures"))
        filter.exactTypes.insert(filter.exactTypes.end(), kTextures.begin(), kTextures.end());
    for (const NodeState& state : kNodeStates) {
        if (arguments.isSet(state.flag)) filter.states.push_back(&state);
    }
    filter.intermediateOnly = arguments.isSet("intermediateObjects");
    filter.noIntermediate = arguments.isSet("noIntermediate");
    filter.dagOnly = arguments.isSet("dagObjects") || filter.intermediateOnly;
    return filter;
}

bool passes(graph::Graph& graph, const ListFilter& filter, const graph::SelectionItem& item) {
    const graph::Node& node = *item.node;
    const auto isOf = [&](const std::string& type) { return node.isA(type); };
    const auto isExactly = [&](const std::string& type) { return node.type().name() == type; };
    if (filter.dagOnly && !node.type().isDag()) return false;
    if (filter.isTyped() && !std::any_of(filter.kinds.begin(), filter.kinds.end(), isOf) &&
        !std::any_of(filter.exactTypes.begin(), filter.exactTypes.end(), isExactly))
        return false;
    if (std::any_of(filter.excludedTypes.begin(), filter.excludedTypes.end(), isOf)) return false;
    const bool isHidden = nodes::isIntermediate(graph, node);
    if (filter.intermediateOnly && !(isHidden && node.isA("shape"))) return false;
    if (filter.noIntermediate && isHidden) return false;
    return std::all_of(filter.states.begin(), filter.states.end(),
                       [&](const NodeState* state) { return state->isTrue(graph, item); });
}

}  // namespace host::commands
