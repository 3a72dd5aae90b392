// The node type camera: its attributes. Nothing here renders.

#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::number;
using graph::ValueKind;

AttributeSpec keyable(const char* longName, const char* shortName, double value,
                      ValueKind kind = ValueKind::Double) {
    return number(longName, shortName, kind).withDefault(value).keyable();
}

/// In inches, as the host keeps film: 36 by 24 millimetres.
AttributeSpec filmAperture() {
    constexpr double kInch = 25.4;
    return graph::compound("cameraAperture", "cap",
                           {keyable("horizontalFilmAperture", "hfa", 36.0 / kInch),
                            keyable("verticalFilmAperture", "vfa", 24.0 / kInch)});
}

AttributeSpec filmOffset() {
    return graph::compound(
        "filmOffset", "fio",
        {keyable("horizontalFilmOffset", "hfo", 0), keyable("verticalFilmOffset", "vfo", 0)});
}

std::vector<AttributeSpec> lens() {
    constexpr double kShutter = 2.51327412287183459077;  // 144 degrees
    return {filmAperture(),
            filmOffset(),
            keyable("filmFitOffset", "ffo", 0),
            graph::enumeration("filmFit", "ff", {"Fill", "Horizontal", "Vertical", "Overscan"}),
            keyable("lensSqueezeRatio", "lsr", 1),
            keyable("focalLength", "fl", 35),
            keyable("cameraScale", "cs", 1),
            keyable("fStop", "fs", 5.6),
            keyable("focusDistance", "fd", 5, ValueKind::Distance),
            keyable("shutterAngle", "sa", kShutter, ValueKind::Angle),
            keyable("centerOfInterest", "coi", 5, ValueKind::Distance),
            keyable("nearClipPlane", "ncp", 0.1, ValueKind::Distance),
            keyable("farClipPlane", "fcp", 10000, ValueKind::Distance),
            keyable("orthographicWidth", "ow", 10, ValueKind::Distance),
            flag("orthographic", "o"),
            graph::triple("tumblePivot", "tp", ValueKind::Distance),
            flag("depthOfField", "dof"),
            number("focusRegionScale", "frs").withDefault(1)};
}

std::vector<AttributeSpec> view() {
    return {flag("renderable", "rnd", true),
            text("imageName", "imn"),
            text("depthName", "den"),
            text("maskName", "man"),
            text("homeCommand", "hc"),
            number("overscan", "ovr").withDefault(1),
            flag("panZoomEnabled", "pze"),
            flag("renderPanZoom", "rpz"),
            keyable("horizontalPan", "hpn", 0),
            keyable("verticalPan", "vpn", 0),
            keyable("zoom", "zom", 1),
            flag("displayFilmGate", "dfg"),
            flag("displayGateMask", "dgm"),
            flag("displayResolution", "dr"),
            flag("displaySafeAction", "dsa"),
            flag("displaySafeTitle", "dst"),
            flag("displayFieldChart", "dfc"),
            color("backgroundColor", "col"),
            graph::message("imagePlane", "ip").array(),
            graph::message("bookmarks", "b").array()};
}

}  // namespace

void addCameraTypes(graph::NodeTypes& types) {
    std::vector<AttributeSpec> specs = lens();
    for (AttributeSpec& spec : view())
        specs.push_back(std::move(spec));
    types.add({"camera", "shape", std::move(specs)});
}

}  // namespace host::nodes
