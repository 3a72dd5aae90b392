#include "scene/fileTypes.h"

#include <set>
#include <unordered_map>
#include <vector>

#include "scene/nodeStatements.h"

namespace host::scene {

namespace {

std::string leafOf(const std::string& path) {
    const std::size_t bar = path.rfind('|');
    return bar == std::string::npos ? path : path.substr(bar + 1);
}

bool isPosition(std::string_view path) {
    for (const std::string_view name : {"t", "r", "s", "tx", "ty", "tz", "rp", "sp", "rpt", "spt",
                                        "translate", "rotate", "scale", "rotatePivot", "scalePivot"}) {
        if (path == name) return true;
    }
    return false;
}

}  // namespace

FileTypes fileTypes(const SceneText& text, const graph::NodeTypes& known) {
    FileTypes types;
    std::unordered_map<std::string, std::string> typeOfNode;
    std::set<std::string> parents;
    FileType* current = nullptr;
    for (std::uint32_t k = 0; k < text.statements.size(); ++k) {
        const StatementKind kind = text.statements[k].kind;
        if (kind == StatementKind::SetAttr && current != nullptr && !current->isTransform) {
            const auto head = readSetHead(text.statement(k), text.form.isDoubleByte);
            if (head && isPosition(head->path)) current->isTransform = true;
        } else if (kind == StatementKind::Select) {
            current = nullptr;
        } else if (kind == StatementKind::CreateNode) {
            current = nullptr;
            const std::optional<NodeWords> words = readCreateNode(text.statement(k));
            if (!words) continue;
            if (!words->parent.empty()) parents.insert(leafOf(words->parent));
            const graph::NodeType* own = known.find(words->type);
            if (own != nullptr && !own->isKept()) continue;
            current = &types[words->type];
            if (!words->parent.empty()) current->isDag = true;
            typeOfNode[words->name] = words->type;
        }
    }
    for (const std::string& parent : parents) {
        const auto found = typeOfNode.find(parent);
        if (found != typeOfNode.end()) types[found->second].isDag = types[found->second].isTransform = true;
    }
    return types;
}

const graph::NodeType* nodeTypeFor(graph::NodeTypes& types, const std::string& name, const FileTypes& shown) {
    const graph::NodeType* known = types.find(name);
    if (known != nullptr && !known->isKept()) return known->isAbstract() ? nullptr : known;
    const auto found = shown.find(name);
    const FileType type = found != shown.end() ? found->second : FileType();
    const char* base = !type.isDag ? "node" : type.isTransform ? "transform" : "shape";
    if (known != nullptr && known->base()->name() == base) return known;
    graph::NodeTypeSpec spec;
    spec.name = name;
    spec.base = base;
    spec.isKept = true;
    return &types.add(std::move(spec));
}

std::optional<std::string> defaultTypeOf(std::string_view name) {
    static const std::map<std::string_view, std::string_view> kTypes{
        {"time1", "time"},
        {"sequenceManager1", "sequenceManager"},
        {"hardwareRenderingGlobals", "hardwareRenderingGlobals"},
        {"renderPartition", "partition"},
        {"renderGlobalsList1", "renderGlobalsList"},
        {"defaultShaderList1", "defaultShaderList"},
        {"postProcessList1", "postProcessList"},
        {"defaultRenderUtilityList1", "defaultRenderUtilityList"},
        {"defaultRenderingList1", "defaultRenderingList"},
        {"lightList1", "lightList"},
        {"defaultTextureList1", "defaultTextureList"},
        {"lambert1", "lambert"},
        {"standardSurface1", "standardSurface"},
        {"openPBRSurface1", "openPBRSurface"},
        {"particleCloud1", "particleCloud"},
        {"shaderGlow1", "shaderGlow"},
        {"initialShadingGroup", "shadingEngine"},
        {"initialParticleSE", "shadingEngine"},
        {"initialMaterialInfo", "materialInfo"},
        {"defaultRenderGlobals", "renderGlobals"},
        {"defaultRenderQuality", "renderQuality"},
        {"defaultResolution", "resolution"},
        {"defaultLightSet", "objectSet"},
        {"defaultObjectSet", "objectSet"},
        {"defaultLastHiddenSet", "objectSet"},
        {"defaultHideFaceDataSet", "objectSet"},
        {"defaultHardwareRenderGlobals", "hwRenderGlobals"},
        {"defaultViewColorManager", "viewColorManager"},
        {"defaultColorMgtGlobals", "colorManagementGlobals"},
        {"hardwareRenderGlobals", "hardwareRenderGlobals"},
        {"hwReflectionMap1", "hwReflectionMap"},
        {"characterPartition", "partition"},
        {"defaultHyperGraphInfo", "hyperGraphInfo"},
        {"hyperGraphInfo", "hyperGraphInfo"},
        {"hyperGraphLayout", "hyperLayout"},
        {"ikSystem", "ikSystem"},
        {"globalCacheControl", "globalCacheControl"},
        {"dynController1", "dynController"},
        {"strokeGlobals", "strokeGlobals"},
        {"lightLinker1", "lightLinker"},
        {"layerManager", "displayLayerManager"},
        {"defaultLayer", "displayLayer"},
        {"renderLayerManager", "renderLayerManager"},
        {"defaultRenderLayer", "renderLayer"},
        {"shapeEditorManager", "shapeEditorManager"},
        {"poseInterpolatorManager", "poseInterpolatorManager"}};
    const auto found = kTypes.find(name);
    return found != kTypes.end() ? std::optional(std::string(found->second)) : std::nullopt;
}

bool isDefaultNode(const graph::Node& node) {
    return defaultTypeOf(node.name()) == node.type().name();
}

}  // namespace host::scene
