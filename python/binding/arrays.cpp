#include "binding/arrays.h"

#include <pybind11/numpy.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "binding/conversion.h"
#include "binding/host.h"
#include "commands/commandSupport.h"
#include "commands/meshSupport.h"
#include "commands/transformSupport.h"
#include "graph/names.h"
#include "nodes/blendShapeNode.h"
#include "nodes/meshNode.h"
#include "nodes/plugs.h"
#include "nodes/skinClusterNode.h"
#include "nodes/skinWeights.h"
#include "nodes/transformNode.h"

namespace py = pybind11;

namespace delven::python {

namespace {

namespace graph = host::graph;
namespace nodes = host::nodes;

template <typename Number>
using Array = py::array_t<Number, py::array::c_style>;

graph::Graph& scene() {
    return Host::current().graph();
}

template <typename Value>
Value found(host::commands::Found<Value> result) {
    if (result.ok()) return std::move(result.value);
    throw py::value_error(result.error);
}

/// The one node of a type that a name means.
graph::NodeRef nodeOf(const std::string& name, const char* type) {
    graph::NodeRef node = found(host::commands::findOneNode(scene(), name));
    if (!node->isA(type)) throw py::value_error(name + " is no " + type + ".");
    return node;
}

graph::NodeRef shapeOf(const std::string& name) {
    return found(host::commands::findMeshShape(scene(), name));
}

nodes::MeshPtr meshOf(const graph::NodeRef& shape) {
    host::commands::Found<nodes::MeshPtr> mesh = host::commands::evaluatedMesh(scene(), shape);
    if (!mesh.ok()) throw std::runtime_error(mesh.error);
    return std::move(mesh.value);
}

void checkCount(py::ssize_t given, std::size_t wanted, const std::string& what) {
    if (static_cast<std::size_t>(given) == wanted) return;
    throw py::value_error(what + " has " + std::to_string(wanted) + " entries, and " + std::to_string(given) +
                          " were given.");
}

// --- Points

py::object points(const std::string& name, bool inWorld) {
    const graph::NodeRef shape = shapeOf(name);
    const nodes::MeshPtr mesh = meshOf(shape);
    const std::vector<float>& from = mesh->mesh.points();
    Array<double> result({static_cast<py::ssize_t>(from.size() / 3), py::ssize_t{3}});
    double* to = result.mutable_data();
    std::copy(from.begin(), from.end(), to);
    if (!inWorld) return std::move(result);
    const host::geometry::Matrix4 world = nodes::worldMatrix(scene(), shape);
    for (std::size_t k = 0; k < from.size(); k += 3) {
        const host::geometry::Vec3 point =
            host::geometry::transformPoint({to[k], to[k + 1], to[k + 2]}, world);
        for (int axis = 0; axis < 3; ++axis)
            to[k + static_cast<std::size_t>(axis)] = point[axis];
    }
    return std::move(result);
}

/// A setter changes nothing if it may not change all.
void checkWritable(const graph::Plug& plug) {
    const std::string error = host::commands::writeObstacle(scene(), plug);
    if (!error.empty()) throw std::runtime_error(error);
}

void setPoints(const std::string& name, const Array<double>& given) {
    const graph::NodeRef shape = shapeOf(name);
    const std::size_t count = meshOf(shape)->mesh.points().size();
    checkCount(given.shape(0), count / 3, name);
    checkWritable(shape->plug("pnts"));
    // Points of a mesh with history become offsets.
    const graph::Plug mesh = shape->plug("inMesh");
    if (!scene().source(mesh)) checkWritable(mesh);
    std::vector<float> xyz(given.data(), given.data() + count);
    Host::current().asOneStep([&] { nodes::setMeshPoints(scene(), shape, std::move(xyz)); });
}

// --- Targets

/// Number of vertices of the first mesh that a blend shape deforms.
std::size_t vertexCount(const graph::NodeRef& blendShape) {
    const std::vector<graph::NodeRef> shapes = nodes::baseShapes(scene(), blendShape);
    if (shapes.empty()) throw std::runtime_error(scene().uniqueName(*blendShape) + " deforms no mesh.");
    return static_cast<std::size_t>(meshOf(shapes.front())->mesh.vertexCount());
}

/// Index of a target given by itself or by its name.
int targetOf(const graph::NodeRef& blendShape, py::handle target) {
    const std::vector<int> indices = nodes::weightIndices(scene(), blendShape);
    int index = -1;
    if (PyUnicode_Check(target.ptr()) != 0) {
        const graph::PlugKey* key = blendShape->aliases().find(textOf(target));
        if (key != nullptr && key->attribute->longName() == "weight") index = key->indices[0];
    } else {
        index = target.cast<int>();
    }
    if (std::find(indices.begin(), indices.end(), index) != indices.end()) return index;
    throw py::value_error(scene().uniqueName(*blendShape) + " has no target " +
                          std::string(py::repr(target)) + ".");
}

py::object deltas(const std::string& name, py::handle target, int item) {
    const graph::NodeRef blendShape = nodeOf(name, "blendShape");
    const graph::Plug plug = nodes::targetItemPlug(blendShape, 0, targetOf(blendShape, target), item);
    // A connected target has its deltas once it is evaluated.
    vertexCount(blendShape);
    const auto stored =
        graph::dataAs<graph::PointArrayData>(scene().data(nodes::childPlug(plug, nodes::kPointsTarget)));
    const auto components = graph::dataAs<graph::ComponentListData>(
        scene().data(nodes::childPlug(plug, nodes::kComponentsTarget)));
    const std::vector<int> vertices = components != nullptr ? components->flattened() : std::vector<int>();
    const std::size_t count = std::min(vertices.size(), stored != nullptr ? stored->value.size() : 0);
    Array<int> indices(static_cast<py::ssize_t>(count));
    Array<double> result({static_cast<py::ssize_t>(count), py::ssize_t{3}});
    std::copy_n(vertices.begin(), count, indices.mutable_data());
    double* to = result.mutable_data();
    for (std::size_t k = 0; k < count; ++k)
        to = std::copy_n(stored->value[k].begin(), 3, to);
    return py::make_tuple(std::move(indices), std::move(result));
}

void setDeltas(const std::string& name, py::handle target, const Array<int>& indices,
               const Array<double>& values, int item) {
    const graph::NodeRef blendShape = nodeOf(name, "blendShape");
    const graph::Plug plug = nodes::targetItemPlug(blendShape, 0, targetOf(blendShape, target), item);
    if (scene().source(nodes::childPlug(plug, nodes::kGeomTarget))) {
        throw std::runtime_error(
            "The target has a connected mesh, which gives it its deltas. Delete or "
            "disconnect the mesh first.");
    }
    for (const char* attribute : {nodes::kPointsTarget, nodes::kComponentsTarget})
        checkWritable(nodes::childPlug(plug, attribute));
    checkCount(values.shape(0), static_cast<std::size_t>(indices.shape(0)), "indices");
    const auto vertices = static_cast<int>(vertexCount(blendShape));
    const auto count = static_cast<std::size_t>(indices.shape(0));
    std::vector<graph::Point4> stored(count, {0, 0, 0, 1});
    auto components = std::make_shared<graph::ComponentListData>();
    for (std::size_t k = 0; k < count;) {
        const std::size_t first = k;
        for (; k < count && indices.data()[k] == indices.data()[first] + static_cast<int>(k - first); ++k)
            std::copy_n(values.data() + 3 * k, 3, stored[k].begin());
        const int last = indices.data()[k - 1];
        if (indices.data()[first] < 0 || last >= vertices)
            throw py::value_error(
                "The mesh has " + std::to_string(vertices) + " vertices, not one numbered " +
                std::to_string(indices.data()[first] < 0 ? indices.data()[first] : last) + ".");
        components->appendRun(graph::ComponentKind::Vertex, indices.data()[first], last);
    }
    Host::current().asOneStep([&] {
        scene().setData(nodes::childPlug(plug, nodes::kPointsTarget),
                        std::make_shared<graph::PointArrayData>(std::move(stored)));
        scene().setData(nodes::childPlug(plug, nodes::kComponentsTarget), std::move(components));
    });
}

/// The painted weights of a target, or the base weights for None.
graph::Plug weightsPlug(const graph::NodeRef& blendShape, py::handle target) {
    if (target.is_none()) return nodes::childPlug(blendShape->plug("inputTarget").element(0), "baseWeights");
    return nodes::childPlug(nodes::targetGroupPlug(blendShape, 0, targetOf(blendShape, target)),
                            "targetWeights");
}

py::object targetWeights(const std::string& name, py::handle target) {
    const graph::NodeRef blendShape = nodeOf(name, "blendShape");
    const graph::Plug plug = weightsPlug(blendShape, target);
    const std::size_t count = vertexCount(blendShape);
    Array<float> result(static_cast<py::ssize_t>(count));
    float* to = result.mutable_data();
    const graph::NumberMulti* stored = nodes::numbersOf(plug);
    const std::vector<int> none;
    const std::vector<int>& vertices = stored != nullptr ? stored->indices() : none;
    // The numbers of a multi lie one after the other.
    const double* const values =
        stored != nullptr && !vertices.empty() ? stored->find(vertices.front()) : nullptr;
    if (vertices.size() == count && count > 0 && static_cast<std::size_t>(vertices.back()) < count) {
        std::copy_n(values, count, to);
        return std::move(result);
    }
    std::fill_n(to, count, 1.0F);
    for (std::size_t k = 0; k < vertices.size(); ++k) {
        if (static_cast<std::size_t>(vertices[k]) < count) to[vertices[k]] = static_cast<float>(values[k]);
    }
    return std::move(result);
}

void setTargetWeights(const std::string& name, py::handle target, const Array<float>& given) {
    const graph::NodeRef blendShape = nodeOf(name, "blendShape");
    const graph::Plug plug = weightsPlug(blendShape, target);
    checkWritable(plug);
    checkCount(given.shape(0), vertexCount(blendShape), "The mesh");
    Host::current().asOneStep([&] {
        for (py::ssize_t vertex = 0; vertex < given.shape(0); ++vertex)
            scene().setNumber(plug.element(static_cast<int>(vertex)),
                              static_cast<double>(given.data()[vertex]));
    });
}

// --- Skins

std::size_t skinnedCount(const graph::NodeRef& skin) {
    const graph::NodeRef shape = nodes::skinnedShape(scene(), skin);
    if (shape == nullptr) throw std::runtime_error(scene().uniqueName(*skin) + " deforms no mesh.");
    return static_cast<std::size_t>(meshOf(shape)->mesh.vertexCount());
}

/// Column of each logical index of an influence; -1 for none.
std::vector<int> columnsOf(const std::vector<nodes::Influence>& influences) {
    std::vector<int> columns(influences.empty() ? 0 : static_cast<std::size_t>(influences.back().index) + 1,
                             -1);
    for (std::size_t k = 0; k < influences.size(); ++k)
        columns[static_cast<std::size_t>(influences[k].index)] = static_cast<int>(k);
    return columns;
}

py::object skinWeights(const std::string& name) {
    const graph::NodeRef skin = nodeOf(name, "skinCluster");
    const std::vector<nodes::Influence> influences = nodes::influencesOf(skin);
    const std::vector<int> columns = columnsOf(influences);
    const std::size_t count = skinnedCount(skin);
    const std::size_t width = influences.size();
    Array<double> result({static_cast<py::ssize_t>(count), static_cast<py::ssize_t>(width)});
    double* const to = result.mutable_data();
    std::fill_n(to, count * width, 0.0);
    nodes::forEachWeightRow(skin, [&](int vertex, const graph::NumberMulti& weights) {
        if (static_cast<std::size_t>(vertex) >= count) return;
        for (const int index : weights.indices()) {
            const bool isKnown = static_cast<std::size_t>(index) < columns.size() &&
                                 columns[static_cast<std::size_t>(index)] >= 0;
            if (isKnown)
                to[static_cast<std::size_t>(vertex) * width +
                   static_cast<std::size_t>(columns[static_cast<std::size_t>(index)])] = *weights.find(index);
        }
    });
    py::list names;
    for (const nodes::Influence& influence : influences)
        names.append(scene().uniqueName(*influence.node));
    return py::make_tuple(std::move(result), std::move(names));
}

void setSkinWeights(const std::string& name, const Array<double>& given) {
    const graph::NodeRef skin = nodeOf(name, "skinCluster");
    const std::vector<nodes::Influence> influences = nodes::influencesOf(skin);
    checkWritable(skin->plug("weightList"));
    checkCount(given.shape(0), skinnedCount(skin), "The mesh");
    checkCount(given.shape(1), influences.size(), "The list of influences");
    nodes::WeightRows rows;
    const double* weight = given.data();
    for (py::ssize_t vertex = 0; vertex < given.shape(0); ++vertex) {
        for (const nodes::Influence& influence : influences) {
            rows.influences.push_back(influence.index);
            rows.weights.push_back(*weight++);
        }
        rows.endRow(static_cast<int>(vertex));
    }
    Host::current().asOneStep([&] { nodes::setWeightRows(scene(), skin, rows); });
}

// --- The kit's data

py::object orderMap(const std::string& name) {
    const graph::NodeRef shape = shapeOf(name);
    const graph::Plug plug = shape->plug("dvVertexOrderMap");
    const auto map = plug ? graph::dataAs<graph::IntArrayData>(scene().data(plug)) : nullptr;
    if (map == nullptr) {
        throw py::value_error(scene().uniqueName(*shape) +
                              " has no vertex order map. Make one with dv_polyMapVertexOrder.");
    }
    Array<int> result(static_cast<py::ssize_t>(map->value.size()));
    std::copy(map->value.begin(), map->value.end(), result.mutable_data());
    return std::move(result);
}

py::object regions(const std::string& name) {
    constexpr int kRegions = 6;
    const graph::NodeRef node = nodeOf(name, "network");
    std::vector<std::shared_ptr<const graph::DoubleArrayData>> rows;
    std::size_t length = 0;
    for (int region = 0; region < kRegions; ++region) {
        const graph::Plug plug = node->plug("regionWeights" + std::to_string(region));
        if (!plug) throw py::value_error(name + " is no region node.");
        rows.push_back(graph::dataAs<graph::DoubleArrayData>(scene().data(plug)));
        length = std::max(length, rows.back() != nullptr ? rows.back()->value.size() : 0);
    }
    Array<double> result({py::ssize_t{kRegions}, static_cast<py::ssize_t>(length)});
    std::fill_n(result.mutable_data(), kRegions * length, 0.0);
    for (std::size_t region = 0; region < rows.size(); ++region) {
        if (rows[region] != nullptr)
            std::copy(rows[region]->value.begin(), rows[region]->value.end(),
                      result.mutable_data() + region * length);
    }
    return std::move(result);
}

}  // namespace

void defineArrays(py::module_& module) {
    module.def("points", points);
    module.def("set_points", setPoints);
    module.def("deltas", deltas);
    module.def("set_deltas", setDeltas);
    module.def("target_weights", targetWeights);
    module.def("set_target_weights", setTargetWeights);
    module.def("skin_weights", skinWeights);
    module.def("set_skin_weights", setSkinWeights);
    module.def("order_map", orderMap);
    module.def("regions", regions);
}

}  // namespace delven::python
