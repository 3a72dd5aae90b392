#include "nodes/defaultCameras.h"

#include <algorithm>
#include <array>
#include <string>

#include "geometry/math.h"
#include "graph/data.h"
#include "nodes/plugs.h"

namespace host::nodes {

namespace {

constexpr double kFar = 1000.1;  // how far from the origin the cameras of a plane stand

/// Where the host puts its cameras. Angles in degrees.
struct DefaultCamera {
    const char* name;
    std::array<double, 3> translate;
    std::array<double, 3> rotate;
    const char* view;  // the letter of the command viewSet
};

constexpr DefaultCamera kCameras[] = {
    {"persp", {28, 21, 28}, {-27.938352729602379, 45, 0}, "p"},
    {"top", {0, kFar, 0}, {-90, 0, 0}, "t"},
    {"front", {0, 0, kFar}, {0, 0, 0}, "f"},
    {"side", {kFar, 0, 0}, {0, 90, 0}, "s"},
};

void setTriple(graph::Graph& graph, const graph::Plug& plug, const std::array<double, 3>& values,
               double unit) {
    for (int axis = 0; axis < 3; ++axis)
        graph.setNumber(plug.child(axis), values[static_cast<std::size_t>(axis)] * unit);
}

void setText(graph::Graph& graph, const graph::NodeRef& node, const char* attribute, std::string text) {
    graph.setData(node->plug(attribute), std::make_shared<const graph::StringData>(std::move(text)));
}

void setUpCamera(graph::Graph& graph, const graph::NodeRef& shape, const DefaultCamera& camera) {
    const std::string name = camera.name;
    setText(graph, shape, "imageName", name);
    setText(graph, shape, "depthName", name + "_depth");
    setText(graph, shape, "maskName", name + "_mask");
    setText(graph, shape, "homeCommand", std::string("viewSet -") + camera.view + " %camera");
    if (name == "persp") {
        graph.setNumber(shape->plug("centerOfInterest"), 44.82186966202994);
        return;
    }
    graph.setNumber(shape->plug("centerOfInterest"), kFar);
    graph.setNumber(shape->plug("renderable"), 0);
    graph.setNumber(shape->plug("orthographic"), 1);
    graph.setNumber(shape->plug("orthographicWidth"), 30);
}

}  // namespace

void addDefaultCameras(graph::Graph& graph) {
    const graph::RecordingScope silent(graph, nullptr);
    for (const DefaultCamera& camera : kCameras) {
        const graph::NodeRef transform = graph.createNode(*graph.types().find("transform"), camera.name);
        setTriple(graph, transform->plug("translate"), camera.translate, 1.0);
        setTriple(graph, transform->plug("rotate"), camera.rotate, geometry::kPi / 180.0);
        graph.setNumber(transform->plug("visibility"), 0);
        const graph::NodeRef shape = graph.createNode(*graph.types().find("camera"),
                                                      std::string(camera.name) + "Shape", transform.get());
        setUpCamera(graph, shape, camera);
    }
}

bool isDefaultCamera(const graph::Node& node) {
    const graph::Node* transform = node.isA("camera") ? node.parent() : &node;
    if (transform == nullptr || transform->parent() != nullptr || !transform->isA("transform")) return false;
    const auto& children = transform->children();
    return std::any_of(std::begin(kCameras), std::end(kCameras),
                       [&](const DefaultCamera& camera) { return transform->name() == camera.name; }) &&
           std::any_of(children.begin(), children.end(),
                       [](const graph::Node* child) { return child->isA("camera"); });
}

}  // namespace host::nodes
