// The node type blendShape: its attributes and its deformation.

#include "nodes/blendShapeNode.h"
#include "nodes/blendShapeTargets.h"
#include "nodes/deformation.h"
#include "nodes/liveTargets.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::enumeration;
using graph::number;
using graph::typed;
using graph::ValueKind;

constexpr double kWorldOrigin = 0.0;
constexpr double kRelativeInBetween = 1.0;

/// Adds the items of one target at its weight.
void addTargetDeltas(Deformation& deformation, const graph::Plug& group, double weight,
                     std::vector<double>& sums) {
    graph::Graph& graph = deformation.graph;
    const graph::Plug items = childPlug(group, "inputTargetItem");
    const graph::NumberMulti* vertexWeights = numbersOf(childPlug(group, "targetWeights"));
    for (const ItemShare& share : itemShares(graph.elements(items), weight)) {
        const graph::Plug item = items.element(share.item);
        const auto points = graph::dataAs<graph::PointArrayData>(graph.data(childPlug(item, kPointsTarget)));
        const auto components =
            graph::dataAs<graph::ComponentListData>(graph.data(childPlug(item, kComponentsTarget)));
        if (points == nullptr || components == nullptr) continue;
        if (sums.empty()) sums.resize(deformation.points.size());
        addDeltas(*points, *components, share.share, vertexWeights, sums);
    }
}

/// Warns about settings of the node that this host does not evaluate.
void reportUncovered(Deformation& deformation) {
    graph::Graph& graph = deformation.graph;
    const graph::NodeRef& node = deformation.node;
    if (graph.number(node->plug("origin")) == kWorldOrigin)
        graph.messages().error(node->name() + ".origin: only local is supported");
    const graph::Plug groups = node->plug("inbetweenInfoGroup");
    for (const int target : graph.elements(groups)) {
        const graph::Plug infos = childPlug(groups.element(target), "inbetweenInfo");
        for (const int item : graph.elements(infos)) {
            const graph::Plug type = childPlug(infos.element(item), "inbetweenTargetType");
            if (graph.number(type) == kRelativeInBetween)
                graph.messages().error(graph.plugName(type) + ": only absolute in-betweens are supported");
        }
    }
}

void deformByTargets(Deformation& deformation) {
    graph::Graph& graph = deformation.graph;
    const graph::NodeRef& node = deformation.node;
    reportUncovered(deformation);
    const bool allowsNegative = graph.number(node->plug("supportNegativeWeights")) != 0.0;
    const graph::Plug base = node->plug("inputTarget").element(deformation.geometryIndex);
    const graph::Plug groups = childPlug(base, "inputTargetGroup");
    const graph::Plug weights = node->plug("weight");
    std::vector<double> sums;
    for (const int target : graph.elements(groups)) {
        const double weight = graph.number(weights.element(target));
        if (weight < 0.0 && !allowsNegative) continue;
        addTargetDeltas(deformation, groups.element(target), weight, sums);
    }
    if (sums.empty()) return;
    const graph::NumberMulti* baseWeights = numbersOf(childPlug(base, "baseWeights"));
    for (std::size_t k = 0; k < sums.size(); k += 3) {
        const double* weight = baseWeights != nullptr ? baseWeights->find(static_cast<int>(k / 3)) : nullptr;
        const double factor = weight != nullptr ? deformation.envelope * *weight : deformation.envelope;
        for (std::size_t part = k; part < k + 3; ++part) {
            // Coordinates without a delta keep the sign of their zero.
            if (sums[part] == 0.0) continue;
            deformation.points[part] =
                static_cast<float>(static_cast<double>(deformation.points[part]) + factor * sums[part]);
        }
    }
}

graph::ComputedValue computeBlendShape(graph::Graph& graph, const graph::Plug& output) {
    // Needed even if the envelope or the node state leaves the geometry unchanged: the node is evaluated all
    // the same.
    takeLiveDeltas(graph, output.node(), output.logicalIndex());
    return computeDeformer(graph, output, deformByTargets);
}

AttributeSpec weights(const char* longName, const char* shortName) {
    return number(longName, shortName, ValueKind::Float).withDefault(1).array();
}

AttributeSpec targetItem() {
    return compound(
               "inputTargetItem", "iti",
               {typed(kGeomTarget, "igt", "mesh"), typed("inputRelativePointsTarget", "irp", "pointArray"),
                typed("inputRelativeComponentsTarget", "irc", "componentList"),
                typed(kPointsTarget, "ipt", "pointArray").watched(),
                typed(kComponentsTarget, "ict", "componentList").watched()})
        .array();
}

AttributeSpec targetGroup() {
    return compound("inputTargetGroup", "itg",
                    {targetItem(), weights("targetWeights", "tw"),
                     number("normalizationId", "nid", ValueKind::Int),
                     enumeration("postDeformersMode", "pdm", {"None", "Tangent space", "Transform space"}),
                     typed("targetBindMatrix", "bmx", "matrix"), typed("targetMatrix", "tmx", "matrix")})
        .array();
}

AttributeSpec sculptTweaks() {
    return compound(
        "sculptTargetTweaks", "stt",
        {compound("vertex", "vt",
                  {number("xVertex", "vx", ValueKind::Float), number("yVertex", "vy", ValueKind::Float),
                   number("zVertex", "vz", ValueKind::Float)})
             .array(),
         compound("controlPoints", "cp",
                  {number("xValue", "xv"), number("yValue", "yv"), number("zValue", "zv")})
             .array()});
}

AttributeSpec inputTarget() {
    return compound("inputTarget", "it",
                    {targetGroup(), weights("baseWeights", "bw"),
                     compound("normalizationGroup", "ng",
                              {flag("normalizationUseWeights", "nuw"),
                               number("normalizationWeights", "nw", ValueKind::Float).array()})
                         .array(),
                     weights("paintTargetWeights", "pwt"), number("paintTargetIndex", "pti", ValueKind::Int),
                     number("sculptTargetIndex", "sti", ValueKind::Int).withDefault(-1),
                     number("sculptInbetweenWeight", "siw", ValueKind::Float).withDefault(1), sculptTweaks(),
                     typed("deformMatrix", "dmx", "matrix"), typed("deformMatrixModified", "dmxm", "matrix")})
        .array();
}

AttributeSpec inBetweenInfo() {
    AttributeSpec curve = compound("interpolationCurve", "itc",
                                   {number("interpolationCurve_Position", "itcp", ValueKind::Float),
                                    number("interpolationCurve_FloatValue", "itcfv", ValueKind::Float)})
                              .array();
    return compound("inbetweenInfoGroup", "ibig",
                    {compound("inbetweenInfo", "ibi",
                              {enumeration("inbetweenTargetType", "ibtt", {"Absolute", "Relative"}),
                               typed("inbetweenTargetName", "ibtn", "string"),
                               enumeration("interpolation", "itp", {"Linear", "Smooth", "Spline"}),
                               std::move(curve), flag("inbetweenVisibility", "ibvs", true)})
                         .array()})
        .array();
}

AttributeSpec targetDirectory() {
    return compound("targetDirectory", "tgdt",
                    {typed("childIndices", "cid", "Int32Array"), typed("directoryName", "dtn", "string"),
                     number("parentIndex", "pnid", ValueKind::Int), flag("directoryVisibility", "dvs", true),
                     flag("directoryParentVisibility", "dpvs", true),
                     number("directoryWeight", "dwgh", ValueKind::Float).withDefault(1)})
        .array();
}

}  // namespace

void addBlendShapeTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour blending;
    blending.compute = computeBlendShape;
    blending.connected = liveTargetConnected;
    blending.disconnecting = liveTargetDisconnecting;
    blending.writing = liveDeltasWriting;
    types.add(
        {"blendShape",
         "weightGeometryFilter",
         {number("weight", "w", ValueKind::Float).keyable().array(),
          enumeration("origin", "or", {"world", "local"}).withDefault(1), flag("topologyCheck", "tc", true),
          flag("supportNegativeWeights", "sn"),
          enumeration("deformationOrder", "dfo", {"Pre-deformation", "Post-deformation"}), inputTarget(),
          inBetweenInfo(), targetDirectory(), flag("targetVisibility", "tgvs", true).array(),
          flag("targetParentVisibility", "tpvs", true).array(),
          number("parentDirectory", "pndr", ValueKind::Int).array(),
          number("midLayerId", "mlid", ValueKind::Int), number("midLayerParent", "mlpr", ValueKind::Int)},
         blending});
}

}  // namespace host::nodes
