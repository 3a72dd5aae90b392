// Node types that most saved scenes contain and that compute nothing: they hold values and connections for
// the tools that made them.

#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::enumeration;
using graph::message;
using graph::number;
using graph::typed;
using graph::ValueKind;

/// Which lights shine on which objects.
AttributeSpec lightLink(const char* longName, const char* shortName, const char* light,
                        const char* lightShort, const char* object, const char* objectShort) {
    return compound(longName, shortName, {message(light, lightShort), message(object, objectShort)}).array();
}

/// Where a node is drawn in an editor.
std::vector<AttributeSpec> nodePlace() {
    return {number("positionX", "x", ValueKind::Float), number("positionY", "y", ValueKind::Float),
            integer("nodeVisualState", "nvs"), message("dependNode", "dn")};
}

AttributeSpec corner(const char* longName, const char* shortName) {
    const std::string name(longName);
    const std::string brief(shortName);
    return compound(name, brief, {number(name + 'X', brief + 'x'), number(name + 'Y', brief + 'y')});
}

void addEditorTypes(graph::NodeTypes& types) {
    types.add({"nodeGraphEditorInfo",
               "node",
               {compound("tabGraphInfo", "tgi",
                         {text("tabName", "tn"), corner("viewRectLow", "vl"), corner("viewRectHigh", "vh"),
                          compound("nodeInfo", "ni", nodePlace()).array()})
                    .array()}});
    std::vector<AttributeSpec> place = nodePlace();
    place.push_back(flag("isFreeform", "isf"));
    place.push_back(flag("isCollapsed", "isc"));
    types.add(
        {"hyperLayout",
         "node",
         {flag("allNodesFreeform", "anf"), compound("hyperPosition", "hyp", std::move(place)).array()}});
    types.add(
        {"shapeEditorManager",
         "node",
         {integer("blendShapeParent", "bspr").array(),
          // What a directory shows follows from the editor, which is not here: everything.
          flag("outBlendShapeVisibility", "obsv", true).array(),
          compound("blendShapeDirectory", "bsdt", {typed("childIndices", "bscd", "Int32Array")}).array()}});
    types.add({"poseInterpolatorManager", "node"});
}

}  // namespace

void addSavedTypes(graph::NodeTypes& types) {
    // Where joints were when a skin was bound, or at another time. `world` stands for "no parent".
    types.add({"dagPose",
               "node",
               {matrix("worldMatrix", "wm").array(), matrix("xformMatrix", "xm").array(),
                message("members", "m").array(), message("parents", "p").array(), flag("global", "g").array(),
                flag("bindPose", "bp"), message("world", "w")}});
    types.add({"script",
               "node",
               {text("before", "b"), text("after", "a"),
                enumeration("scriptType", "st",
                            {"Demand", "Open/Close", "GUI Open/Close", "UI Configuration", "Software Render",
                             "Software Frame Render", "Scene Configuration", "Time Changed"}),
                enumeration("sourceType", "stp", {"MEL", "Python"}), flag("ignoreReferenceEdits", "ire")}});
    // A placeholder has the kind of what it is connected to. Scenes give it the number 0.
    types.add({"reference",
               "node",
               {text("fileNames", "fn").array(), number("placeHolderList", "phl").array(),
                typed("edits", "ed", "dataReferenceEdits"), text("proxyTag", "ptag"),
                message("sharedReference", "sr"), flag("locked", "lk")}});
    types.add(
        {"lightLinker",
         "node",
         {lightLink("link", "lnk", "light", "llnk", "object", "olnk"),
          lightLink("shadowLink", "slnk", "shadowLight", "sllk", "shadowObject", "solk"),
          lightLink("ignore", "ign", "lightIgnored", "lign", "objectIgnored", "oign"),
          lightLink("shadowIgnore", "sign", "shadowLightIgnored", "slig", "shadowObjectIgnored", "soig")}});
    types.add({"materialInfo",
               "node",
               {message("shadingGroup", "sg"), message("material", "m"), message("texture", "t").array()}});
    addEditorTypes(types);
}

}  // namespace host::nodes
