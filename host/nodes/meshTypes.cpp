// The node types from shape to mesh: their attributes and outputs.

#include <algorithm>

#include "nodes/meshData.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::ValueKind;

/// @param letter  is used for the compound in its children's short names: "bbnx" for boundingBoxMinX
AttributeSpec boundOutput(const char* longName, const char* shortName, char letter) {
    std::vector<AttributeSpec> children;
    for (const char axis : {'X', 'Y', 'Z'}) {
        std::string childShort = {'b', 'b', letter, static_cast<char>(axis - 'X' + 'x')};
        children.push_back(graph::number(std::string(longName) + axis, childShort, ValueKind::Distance));
    }
    return graph::compound(longName, shortName, std::move(children));
}

/// Which channels a colour set shows. The numbers are those of the API.
AttributeSpec representation() {
    AttributeSpec spec = graph::enumeration("representation", "rprt", {"", "A", "", "RGB", "RGBA"});
    spec.defaultValue = 4.0;
    return spec;
}

/// `in` plus the shape's pnts; `in` itself if they change nothing.
MeshPtr withOffsets(const MeshPtr& in, const graph::NumberMulti* offsets) {
    if (in == nullptr || offsets == nullptr) return in;
    const std::vector<int>& vertices = offsets->indices();
    const double* values = offsets->find(vertices.front());
    geometry::Mesh mesh = in->mesh;
    std::vector<float>* points = nullptr;
    for (std::size_t k = 0; k < vertices.size(); ++k, values += 3) {
        if (vertices[k] < 0 || vertices[k] >= mesh.vertexCount()) continue;
        if (values[0] == 0.0 && values[1] == 0.0 && values[2] == 0.0) continue;
        if (points == nullptr) points = &mesh.editPoints();
        float* point = points->data() + 3 * static_cast<std::size_t>(vertices[k]);
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = static_cast<float>(static_cast<double>(point[axis]) + values[axis]);
    }
    if (points == nullptr) return in;
    return std::make_shared<MeshData>(std::move(mesh), in->groups);
}

/// `in` with the tags of a shape among its groups. They replace those of the same name.
MeshPtr withTags(graph::Graph& graph, const graph::NodeRef& shape, const MeshPtr& in) {
    const graph::Plug tags = shape->plug("componentTags");
    std::vector<ComponentGroup> groups = in->groups;
    for (const int index : graph.elements(tags)) {
        const graph::Plug tag = tags.element(index);
        ComponentGroup group{kTagId, textAt(graph, childPlug(tag, "componentTagName")), {}};
        group.components =
            graph::dataAs<graph::ComponentListData>(graph.data(childPlug(tag, "componentTagContents")));
        if (group.tag.empty()) continue;
        const auto same = std::find_if(groups.begin(), groups.end(),
                                       [&](const ComponentGroup& other) { return other.tag == group.tag; });
        if (same != groups.end()) {
            *same = std::move(group);
        } else {
            groups.push_back(std::move(group));
        }
    }
    return std::make_shared<MeshData>(in->mesh, std::move(groups));
}

MeshPtr computeMesh(graph::Graph& graph, const graph::NodeRef& shape) {
    // A shape that may be out of date must not become the origin of anything that is saved.
    if (const std::string source = graph.unevaluatedSource(*shape); !source.empty()) {
        graph.messages().error(graph.uniqueName(*shape) + " depends on " + source +
                               ", which is not evaluated.");
        return nullptr;
    }
    const graph::NumberMulti* offsets = numbersOf(shape->plug("pnts"));
    MeshPtr mesh = withOffsets(incomingMesh(graph, shape), offsets);
    const bool hasTags = mesh != nullptr && graph.elementCount(shape->plug("componentTags")) > 0;
    if (hasTags) mesh = withTags(graph, shape, mesh);
    if (offsets == nullptr && !hasTags) return mesh;
    auto& last = shape->extension();
    if (last == nullptr) last = std::make_shared<MeshPtr>();
    auto& lastMesh = *std::static_pointer_cast<MeshPtr>(last);
    return lastMesh = keepAddress(lastMesh, std::move(mesh));
}

double computeBound(graph::Graph& graph, const graph::Plug& output) {
    const MeshPtr data = meshOf(graph, output.node());
    if (data == nullptr) return 0.0;
    const geometry::BoundingBox box = geometry::bounds(data->mesh);
    const int axis = output.attribute().ordinal();
    const std::string& bound = output.attribute().parent()->longName();
    if (bound == "boundingBoxMin") return box.min[axis];
    return bound == "boundingBoxMax" ? box.max[axis] : box.size()[axis];
}

graph::ComputedValue computeMeshOutput(graph::Graph& graph, const graph::Plug& output) {
    const std::string& name = output.attribute().longName();
    if (name == "outMesh") return computeMesh(graph, output.node());
    // A shape's world mesh is its object-space mesh: callers that need world space have the matrices.
    if (name == "worldMesh") return graph.data(output.node()->plug("outMesh"));
    if (output.attribute().path().front()->longName() == "boundingBox") return computeBound(graph, output);
    return computeDagOutput(graph, output);
}

/// An intermediate shape at the start of a deformer chain is deleted with its chain. A live target of a blend
/// shape is not.
bool isOriginal(const graph::Node& shape) {
    const graph::Attribute* intermediate = shape.findAttribute("intermediateObject");
    if (shape.storedNumber({intermediate, {}, 0}) == 0.0) return false;
    for (const auto& [key, links] : shape.outgoing()) {
        for (const graph::Link& link : links) {
            const std::string& fed = link.key.attribute->longName();
            if (fed == "originalGeometry" || fed == "inputGeometry" || fed == "inMesh") return true;
        }
    }
    return false;
}

}  // namespace

void MeshData::describe(std::string& text) const {
    const geometry::Topology& topology = mesh.topology();
    text += " points";
    graph::appendText(text, mesh.points());
    text += " faces";
    for (const auto* list : {&topology.faceOffsets(), &topology.faceVertices(), &topology.faceEdges()})
        graph::appendDigest(text, list->data(), list->size() * sizeof(int));
    for (const ComponentGroup& group : groups) {
        text += group.tag.empty() ? " group " + std::to_string(group.id) : " tag " + group.tag;
        if (group.components != nullptr) group.components->describe(text);
    }
}

bool isSameMesh(const MeshPtr& a, const MeshPtr& b) {
    if (a == b) return true;
    if (a == nullptr || b == nullptr || a->mesh.topologyPtr() != b->mesh.topologyPtr()) return false;
    return a->mesh.sharesPointsWith(b->mesh) || a->mesh.points() == b->mesh.points();
}

MeshPtr keepAddress(const MeshPtr& last, MeshPtr fresh) {
    if (!isSameMesh(last, fresh)) return fresh;
    return last != nullptr && last->groups == fresh->groups ? last : fresh;
}

void addMeshTypes(graph::NodeTypes& types) {
    graph::NodeBehaviour meshing;
    meshing.compute = computeMeshOutput;
    meshing.isService = isOriginal;
    types.add({"shape", "dagNode", {}, {}, true});
    types.add({"geometryShape", "shape", {}, {}, true});
    types.add({"locator",
               "geometryShape",
               {graph::triple("localPosition", "lp", ValueKind::Distance),
                graph::triple("localScale", "los", ValueKind::Double, 1.0)}});
    types.add({"deformableShape",
               "geometryShape",
               // Names the tweak element that edits of single vertices go to; the value has no meaning.
               {graph::message("tweakLocation", "twl")},
               {},
               true});
    types.add({"controlPoint", "deformableShape", {}, {}, true});
    types.add({"surfaceShape", "controlPoint", {}, {}, true});
    types.add({"mesh",
               "surfaceShape",
               {graph::compound(
                    "boundingBox", "bb",
                    {boundOutput("boundingBoxMin", "bbmn", 'n'), boundOutput("boundingBoxMax", "bbmx", 'x'),
                     boundOutput("boundingBoxSize", "bbsi", 's')})
                    .output(),
                graph::typed("inMesh", "i", "mesh").hidden(),
                graph::typed("outMesh", "o", "mesh").output().hidden(),
                graph::typed("worldMesh", "w", "mesh").output().array().hidden(),
                graph::compound("pnts", "pt",
                                {graph::number("pntx", "px", ValueKind::Float),
                                 graph::number("pnty", "py", ValueKind::Float),
                                 graph::number("pntz", "pz", ValueKind::Float)})
                    .array(),
                graph::number("displayColors", "dcol", ValueKind::Bool),
                graph::typed("currentColorSet", "ccls", "string"),
                graph::compound("colorSet", "clst",
                                {graph::typed("colorName", "clsn", "string"),
                                 graph::number("clamped", "clam", ValueKind::Bool), representation(),
                                 graph::typed("vertexColors", "vxcl", "vertexColors").hidden()})
                    .array(),
                graph::compound("componentTags", "gtag",
                                {graph::typed("componentTagName", "gtagnm", "string"),
                                 graph::typed("componentTagContents", "gtagcmp", "componentList")})
                    .array()},
               meshing});
}

}  // namespace host::nodes
