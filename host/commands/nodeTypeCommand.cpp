// The command nodeType.

#include <algorithm>
#include <map>

#include "commands/commandSupport.h"
#include "commands/commands.h"

namespace host::commands {

namespace {

struct ApiType {
    const char* nodeType;
    const char* name;
};

/// What the API calls the types. Those that derive from them and are not here have the same name.
constexpr ApiType kApiTypes[] = {
    {"aimConstraint", "kAimConstraint"},
    {"animCurve", "kAnimCurve"},
    {"animCurveTA", "kAnimCurveTimeToAngular"},
    {"animCurveTL", "kAnimCurveTimeToDistance"},
    {"animCurveTT", "kAnimCurveTimeToTime"},
    {"animCurveTU", "kAnimCurveTimeToUnitless"},
    {"animCurveUA", "kAnimCurveUnitlessToAngular"},
    {"animCurveUL", "kAnimCurveUnitlessToDistance"},
    {"animCurveUT", "kAnimCurveUnitlessToTime"},
    {"animCurveUU", "kAnimCurveUnitlessToUnitless"},
    {"blendShape", "kBlendShape"},
    {"blendWeighted", "kBlendWeighted"},
    {"camera", "kCamera"},
    {"condition", "kCondition"},
    {"constraint", "kConstraint"},
    {"dagNode", "kDagNode"},
    {"dagPose", "kDagPose"},
    {"displayLayer", "kDisplayLayer"},
    {"displayLayerManager", "kDisplayLayerManager"},
    {"geometryFilter", "kGeometryFilt"},
    {"geometryShape", "kGeometric"},
    {"groupId", "kGroupId"},
    {"groupParts", "kGroupParts"},
    {"hyperLayout", "kHyperLayout"},
    {"joint", "kJoint"},
    {"lambert", "kLambert"},
    {"lightLinker", "kLightLink"},
    {"locator", "kLocator"},
    {"materialInfo", "kMaterialInfo"},
    {"mesh", "kMesh"},
    {"multiplyDivide", "kMultiplyDivide"},
    {"network", "kAffect"},
    {"nodeGraphEditorInfo", "kNodeGraphEditorInfo"},
    {"objectSet", "kSet"},
    {"orientConstraint", "kOrientConstraint"},
    {"pairBlend", "kPairBlend"},
    {"parentConstraint", "kParentConstraint"},
    {"partition", "kPartition"},
    {"plusMinusAverage", "kPlusMinusAverage"},
    {"pointConstraint", "kPointConstraint"},
    {"polyCreator", "kPolyCreator"},
    {"polyCube", "kPolyCube"},
    {"polyPlane", "kPolyMesh"},
    {"polyPrimitive", "kPolyPrimitive"},
    {"polySphere", "kPolySphere"},
    {"polyTorus", "kPolyTorus"},
    {"polyUnite", "kPolyUnite"},
    {"reference", "kReference"},
    {"remapValue", "kRemapValue"},
    {"renderLayer", "kRenderLayer"},
    {"renderLayerManager", "kRenderLayerManager"},
    {"reverse", "kReverse"},
    {"scaleConstraint", "kScaleConstraint"},
    {"script", "kScript"},
    {"setRange", "kSetRange"},
    {"shadingEngine", "kShadingEngine"},
    {"shape", "kShape"},
    {"skinCluster", "kSkinClusterFilter"},
    {"surfaceShape", "kSurface"},
    {"time", "kTime"},
    {"transform", "kTransform"},
    {"tweak", "kTweak"},
    {"unitConversion", "kUnitConversion"},
    {"weightGeometryFilter", "kWeightGeometryFilt"},
};

std::string apiTypeName(const graph::NodeType& type) {
    for (const graph::NodeType* at = &type; at != nullptr; at = at->base()) {
        for (const ApiType& known : kApiTypes) {
            if (at->name() == known.nodeType) return known.name;
        }
    }
    return "kDependencyNode";
}

/// Types from the root down to the node's own.
std::vector<std::string> inheritance(const graph::NodeType& type) {
    std::vector<std::string> names;
    for (const graph::NodeType* at = &type; at != nullptr; at = at->base())
        names.push_back(at->name());
    std::reverse(names.begin(), names.end());
    return names;
}

/// A type and those that derive from it, each before its own ones; siblings by name.
std::vector<std::string> derivedTypes(const graph::NodeTypes& types, const graph::NodeType& type) {
    std::map<const graph::NodeType*, std::vector<const graph::NodeType*>> below;
    for (const graph::NodeType* each : types.all())
        below[each->base()].push_back(each);
    std::vector<std::string> names;
    std::vector<const graph::NodeType*> ahead{&type};
    while (!ahead.empty()) {
        const graph::NodeType* next = ahead.back();
        ahead.pop_back();
        names.push_back(next->name());
        const std::vector<const graph::NodeType*>& own = below[next];
        ahead.insert(ahead.end(), own.rbegin(), own.rend());
    }
    return names;
}

Found<const graph::NodeType*> typeMeant(graph::Graph& graph, const std::string& name, bool isTypeName) {
    if (isTypeName) {
        const graph::NodeType* type = graph.types().find(name);
        if (type == nullptr) return {nullptr, "nodeType: Unknown node type: " + name};
        return {type, {}};
    }
    const graph::NameMatches matches = graph::findAll(graph, name);
    if (matches.failure != graph::NameFailure::None) return {nullptr, matches.errorText(name)};
    return {&matches.items.front().node->type(), {}};
}

CommandResult nodeType(CommandContext& context, const ParsedArguments& arguments) {
    const Found<const graph::NodeType*> found =
        typeMeant(context.graph, arguments.objectNames().front(), arguments.isSet("isTypeName"));
    if (!found.ok()) return CommandResult::failure(found.error);
    const graph::NodeType& type = *found.value;
    if (arguments.isSet("apiType")) return CommandResult::success(apiTypeName(type));
    if (arguments.isSet("derived")) return CommandResult::success(derivedTypes(context.graph.types(), type));
    if (arguments.isSet("inherited")) return CommandResult::success(inheritance(type));
    return CommandResult::success(type.name());
}

}  // namespace

void registerNodeTypeCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("i", "inherited").flag("d", "derived").flag("api", "apiType").flag("itn", "isTypeName");
    syntax.objects(ObjectKind::Strings, 1, 1);
    registry.add("nodeType", syntax, nodeType);
}

}  // namespace host::commands
