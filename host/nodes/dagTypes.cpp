// The node types from node to joint: their attributes.

#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::enumeration;
using graph::number;
using graph::ValueKind;

AttributeSpec matrixOutput(const char* longName, const char* shortName) {
    return matrix(longName, shortName).output();
}

AttributeSpec keyableTriple(const char* longName, const char* shortName, ValueKind kind, double value = 0.0) {
    return keyableChildren(graph::triple(longName, shortName, kind, value));
}

AttributeSpec shear() {
    return graph::compound("shear", "sh",
                           {number("shearXY", "shxy"), number("shearXZ", "shxz"), number("shearYZ", "shyz")});
}

AttributeSpec instObjGroups() {
    return graph::compound(
               "instObjGroups", "iog",
               {graph::compound("objectGroups", "og",
                                {graph::typed("objectGrpCompList", "gcl", "componentList"),
                                 integer("objectGroupId", "gid", -1), integer("objectGrpColor", "gco")})
                    .array()})
        .array();
}

/// A display layer's drawInfo is connected here: its children are in the same order.
AttributeSpec drawOverride() {
    return graph::compound("drawOverride", "do",
                           {enumeration("overrideDisplayType", "ovdt", {"Normal", "Template", "Reference"}),
                            enumeration("overrideLevelOfDetail", "ovlod", {"Full", "Bounding Box"}),
                            flag("overrideShading", "ovs", true), flag("overrideTexturing", "ovt", true),
                            flag("overridePlayback", "ovp", true), flag("overrideEnabled", "ove"),
                            flag("overrideVisibility", "ovv", true), flag("hideOnPlayback", "hpb"),
                            flag("overrideRGBColors", "ovrgbf"), integer("overrideColor", "ovc"),
                            color("overrideColorRGB", "ovrgb", "overrideColor#", "ovc#")});
}

AttributeSpec renderLayerInfo() {
    return graph::compound("renderLayerInfo", "rlio",
                           {integer("renderLayerId", "rli"), flag("renderLayerRenderable", "rlr", true),
                            integer("renderLayerColor", "rlc")})
        .array();
}

/// Lowest and highest values that a transform may have, and whether they count.
std::vector<AttributeSpec> limits() {
    constexpr double kTurn = 0.78539816339744830962;  // 45 degrees
    const auto values = [](const char* longName, const char* shortName, const char* childLong,
                           const char* childShort, ValueKind kind, double value) {
        return axisTriple(longName, shortName, childLong, childShort, kind, value);
    };
    const auto enables = [](const char* longName, const char* shortName, const char* childLong,
                            const char* childShort) {
        return axisTriple(longName, shortName, childLong, childShort, ValueKind::Bool);
    };
    return {values("minTransLimit", "mntl", "minTrans#Limit", "mt#l", ValueKind::Distance, -1),
            values("maxTransLimit", "mxtl", "maxTrans#Limit", "xt#l", ValueKind::Distance, 1),
            enables("minTransLimitEnable", "mtle", "minTrans#LimitEnable", "mt#e"),
            enables("maxTransLimitEnable", "xtle", "maxTrans#LimitEnable", "xt#e"),
            values("minRotLimit", "mnrl", "minRot#Limit", "mr#l", ValueKind::Angle, -kTurn),
            values("maxRotLimit", "mxrl", "maxRot#Limit", "xr#l", ValueKind::Angle, kTurn),
            enables("minRotLimitEnable", "mrle", "minRot#LimitEnable", "mr#e"),
            enables("maxRotLimitEnable", "xrle", "maxRot#LimitEnable", "xr#e"),
            values("minScaleLimit", "mnsl", "minScale#Limit", "ms#l", ValueKind::Double, -1),
            values("maxScaleLimit", "mxsl", "maxScale#Limit", "xs#l", ValueKind::Double, 1),
            enables("minScaleLimitEnable", "msle", "minScale#LimitEnable", "ms#e"),
            enables("maxScaleLimitEnable", "xsle", "maxScale#LimitEnable", "xs#e")};
}

std::vector<AttributeSpec> transformAttributes() {
    std::vector<AttributeSpec> specs{
        keyableTriple("translate", "t", ValueKind::Distance), keyableTriple("rotate", "r", ValueKind::Angle),
        enumeration("rotateOrder", "ro", {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"}),
        keyableTriple("scale", "s", ValueKind::Double, 1.0), shear(),
        graph::triple("rotatePivot", "rp", ValueKind::Distance),
        graph::triple("rotatePivotTranslate", "rpt", ValueKind::Distance),
        graph::triple("scalePivot", "sp", ValueKind::Distance),
        graph::triple("scalePivotTranslate", "spt", ValueKind::Distance),
        graph::triple("rotateAxis", "ra", ValueKind::Angle), flag("inheritsTransform", "it", true),
        // Applied after the transform's own matrix and before its parent's.
        matrix("offsetParentMatrix", "opm"),
        graph::compound(
            "rotateQuaternion", "rq",
            {number("rotateQuaternionX", "rqx"), number("rotateQuaternionY", "rqy"),
             number("rotateQuaternionZ", "rqz"), number("rotateQuaternionW", "rqw").withDefault(1)}),
        flag("displayHandle", "dh"), graph::triple("selectHandle", "hdl", ValueKind::Distance),
        flag("displayScalePivot", "dsp"), flag("displayRotatePivot", "drp"), flag("displayLocalAxis", "dla"),
        integer("showManipDefault", "smd"), graph::message("specifiedManipLocation", "sml")};
    for (AttributeSpec& limit : limits())
        specs.push_back(std::move(limit));
    return specs;
}

AttributeSpec jointLabel() {
    return enumeration(
        "type", "typ",
        {"None",    "Root",         "Hip",           "Knee",        "Foot",         "Toe",
         "Spine",   "Neck",         "Head",          "Collar",      "Shoulder",     "Elbow",
         "Hand",    "Finger",       "Thumb",         "PropA",       "PropB",        "PropC",
         "Other",   "Index Finger", "Middle Finger", "Ring Finger", "Pinky Finger", "Extra Finger",
         "Big Toe", "Index Toe",    "Middle Toe",    "Ring Toe",    "Pinky Toe",    "Extra Toe"});
}

}  // namespace

void addDagTypes(graph::NodeTypes& types) {
    types.add({"node",
               "",
               {graph::message("message", "msg"), flag("caching", "cch"), flag("frozen", "fzn"),
                number("isHistoricallyInteresting", "ihi", ValueKind::Enum).withDefault(2),
                enumeration("nodeState", "nds", {"Normal", "HasNoEffect", "Blocking"}),
                text("binMembership", "bnm")},
               {},
               true});
    types.add({"entity", "node", {}, {}, true});
    types.add({"dagNode",
               "entity",
               {flag("visibility", "v", true).keyable(),
                flag("intermediateObject", "io"),
                flag("template", "tmp"),
                flag("ghosting", "gh"),
                instObjGroups(),
                matrixOutput("matrix", "m"),
                matrixOutput("inverseMatrix", "im"),
                matrixOutput("worldMatrix", "wm").array(),
                matrixOutput("worldInverseMatrix", "wim").array(),
                matrixOutput("parentMatrix", "pm").array(),
                matrixOutput("parentInverseMatrix", "pim").array(),
                integer("useObjectColor", "uoc"),
                integer("objectColor", "oc"),
                color("objectColorRGB", "obcc", "objectColor#", "obc#"),
                color("wireColorRGB", "wfcc", "wireColor#", "wfc#"),
                drawOverride(),
                flag("lodVisibility", "lodv", true),
                renderLayerInfo(),
                flag("selectionChildHighlighting", "sch", true),
                flag("hiddenInOutliner", "hio"),
                flag("useOutlinerColor", "uocol"),
                color("outlinerColor", "oclr"),
                text("iconName", "icn")},
               {computeDagOutput},
               true});
    types.add({"transform", "dagNode", transformAttributes()});
    types.add(
        {"joint",
         "transform",
         {keyableTriple("jointOrient", "jo", ValueKind::Angle), flag("segmentScaleCompensate", "ssc", true),
          // The scale of the parent joint, whose inverse is applied.
          keyableTriple("inverseScale", "is", ValueKind::Double, 1.0),
          number("radius", "radi", ValueKind::Float).withDefault(1).keyable(),
          // The world matrix in the bind pose. Nothing here computes with it.
          matrix("bindPose", "bps"), graph::triple("preferredAngle", "pa", ValueKind::Angle),
          graph::triple("stiffness", "st"), flag("jointTypeX", "jtx", true), flag("jointTypeY", "jty", true),
          flag("jointTypeZ", "jtz", true),
          enumeration("drawStyle", "ds", {"Bone", "Multi-child as Box", "None"}), flag("drawLabel", "dl"),
          enumeration("side", "sd", {"Center", "Left", "Right", "None"}), jointLabel(),
          text("otherType", "otp")}});
}

}  // namespace host::nodes
