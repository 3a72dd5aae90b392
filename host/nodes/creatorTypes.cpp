// The node types of construction history: polyCube and the other primitives, polyUnite.

#include "geometry/primitives.h"
#include "nodes/meshData.h"
#include "nodes/plugs.h"
#include "nodes/schema.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::ValueKind;

/// A mesh from the attributes of a construction history node; null if it cannot be made.
using MeshFunction = MeshPtr (*)(graph::Graph& graph, const graph::NodeRef& node);

/// Reads the numbers of one node by name.
class Numbers {
  public:
    Numbers(graph::Graph& graph, const graph::NodeRef& node) : graph_(graph), node_(node) {}
    double operator()(std::string_view name) const { return graph_.number(node_->plug(name)); }
    /// A number of subdivisions, limited to what can be built in reasonable memory.
    int count(std::string_view name) const {
        constexpr double kMost = 4000.0;
        const double value = (*this)(name);
        return static_cast<int>(value < 1.0 ? 1.0 : (value > kMost ? kMost : value));
    }

  private:
    graph::Graph& graph_;
    const graph::NodeRef& node_;
};

MeshPtr cube(graph::Graph& graph, const graph::NodeRef& node) {
    const Numbers value(graph, node);
    geometry::CubeOptions options;
    options.width = value("width");
    options.height = value("height");
    options.depth = value("depth");
    options.subdivisionsX = value.count("subdivisionsWidth");
    options.subdivisionsY = value.count("subdivisionsHeight");
    options.subdivisionsZ = value.count("subdivisionsDepth");
    return std::make_shared<MeshData>(geometry::makeCube(options));
}

MeshPtr sphere(graph::Graph& graph, const graph::NodeRef& node) {
    const Numbers value(graph, node);
    geometry::SphereOptions options;
    options.radius = value("radius");
    options.subdivisionsAxis = value.count("subdivisionsAxis");
    options.subdivisionsHeight = value.count("subdivisionsHeight");
    return std::make_shared<MeshData>(geometry::makeSphere(options));
}

MeshPtr plane(graph::Graph& graph, const graph::NodeRef& node) {
    const Numbers value(graph, node);
    geometry::PlaneOptions options;
    options.width = value("width");
    options.height = value("height");
    options.subdivisionsWidth = value.count("subdivisionsWidth");
    options.subdivisionsHeight = value.count("subdivisionsHeight");
    return std::make_shared<MeshData>(geometry::makePlane(options));
}

MeshPtr torus(graph::Graph& graph, const graph::NodeRef& node) {
    const Numbers value(graph, node);
    geometry::TorusOptions options;
    options.radius = value("radius");
    options.sectionRadius = value("sectionRadius");
    options.twist = value("twist");
    options.subdivisionsAxis = value.count("subdivisionsAxis");
    options.subdivisionsHeight = value.count("subdivisionsHeight");
    return std::make_shared<MeshData>(geometry::makeTorus(options));
}

MeshPtr united(graph::Graph& graph, const graph::NodeRef& node) {
    const graph::Plug inputs = node->plug("inputPoly");
    const graph::Plug matrices = node->plug("inputMat");
    std::vector<geometry::Mesh> meshes;
    std::vector<geometry::Matrix4> places;
    for (const int index : graph.elements(inputs)) {
        const auto part = graph::dataAs<MeshData>(graph.data(inputs.element(index)));
        if (part == nullptr) continue;
        meshes.push_back(part->mesh);
        places.push_back(matrixOf(graph.data(matrices.element(index))));
    }
    geometry::MeshResult result = geometry::uniteMeshes(meshes, places);
    if (!result.ok()) {
        graph.messages().error(node->name() + ": " + result.error);
        return nullptr;
    }
    return std::make_shared<MeshData>(std::move(result.mesh));
}

/// The type's behaviour, with its mesh function. A mesh equal to the last one keeps its address: any change
/// upstream, such as a moved transform, asks for a new one.
graph::NodeBehaviour making(MeshFunction make) {
    graph::NodeBehaviour behaviour;
    behaviour.compute = [make](graph::Graph& graph, const graph::Plug& output) -> graph::ComputedValue {
        MeshPtr fresh = make(graph, output.node());
        auto& memory = output.node()->extension();
        if (memory == nullptr) memory = std::make_shared<MeshPtr>();
        MeshPtr& last = *std::static_pointer_cast<MeshPtr>(memory);
        if (last != nullptr && fresh != nullptr && last->mesh.topology().isSameAs(fresh->mesh.topology())) {
            fresh =
                std::make_shared<MeshData>(geometry::Mesh(last->mesh.topologyPtr(), fresh->mesh.points()));
        }
        return last = keepAddress(last, std::move(fresh));
    };
    return behaviour;
}

AttributeSpec size(const char* longName, const char* shortName, double value) {
    return graph::number(longName, shortName, ValueKind::Distance).withDefault(value).keyable();
}

AttributeSpec steps(const char* longName, const char* shortName, int value) {
    return graph::number(longName, shortName, ValueKind::Int).withDefault(value).keyable();
}

}  // namespace

void addCreatorTypes(graph::NodeTypes& types) {
    types.add({"polyBase", "node", {graph::typed("output", "out", "mesh").output()}, {}, true, true});
    types.add({"polyCreator", "polyBase", {}, {}, true});
    types.add({"polyPrimitive", "polyCreator", {}, {}, true});
    types.add({"polyCube",
               "polyPrimitive",
               {size("width", "w", 1), size("height", "h", 1), size("depth", "d", 1),
                steps("subdivisionsWidth", "sw", 1), steps("subdivisionsHeight", "sh", 1),
                steps("subdivisionsDepth", "sd", 1)},
               making(cube)});
    types.add(
        {"polySphere",
         "polyPrimitive",
         {size("radius", "r", 1), steps("subdivisionsAxis", "sa", 20), steps("subdivisionsHeight", "sh", 20)},
         making(sphere)});
    types.add({"polyPlane",
               "polyPrimitive",
               {size("width", "w", 1), size("height", "h", 1), steps("subdivisionsWidth", "sw", 10),
                steps("subdivisionsHeight", "sh", 10)},
               making(plane)});
    types.add({"polyTorus",
               "polyPrimitive",
               {size("radius", "r", 1), size("sectionRadius", "sr", 0.5),
                graph::number("twist", "tw", ValueKind::Angle).keyable(), steps("subdivisionsAxis", "sa", 20),
                steps("subdivisionsHeight", "sh", 20)},
               making(torus)});
    types.add(
        {"polyUnite",
         "polyCreator",
         {graph::typed("inputPoly", "ip", "mesh").array(), graph::typed("inputMat", "im", "matrix").array()},
         making(united)});
}

}  // namespace host::nodes
