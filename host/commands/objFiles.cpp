#include "commands/objFiles.h"

#include <algorithm>
#include <filesystem>

#include "commands/meshSupport.h"
#include "geometry/objFile.h"
#include "geometry/textFile.h"
#include "graph/hierarchy.h"
#include "nodes/meshNode.h"
#include "nodes/transformNode.h"

namespace host::commands {

namespace {

using graph::NodeRef;

// Options.

struct Option {
    std::string name;
    std::string value;
};

/// Parses "mo=1;lo=0".
std::vector<Option> optionsOf(const std::string& text) {
    std::vector<Option> options;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find(';', from), text.size());
        const std::string part = text.substr(from, end - from);
        const std::size_t equals = std::min(part.find('='), part.size());
        if (!part.empty())
            options.push_back({part.substr(0, equals), part.substr(std::min(equals + 1, part.size()))});
        from = end + 1;
    }
    return options;
}

std::string notCovered(const Option& option) {
    return "file: The option " + option.name + '=' + option.value + " is not covered.";
}

/// Objects always become separate meshes. A file with only one object may also be imported as one mesh.
std::string importObstacle(const ParsedArguments& arguments, std::size_t objectCount) {
    for (const Option& option : optionsOf(arguments.text("options"))) {
        if (option.name != "mo" || (option.value != "1" && objectCount > 1)) return notCovered(option);
    }
    return {};
}

/// Groups may be asked for: faces here belong to none. Smoothing, materials and normals are not written.
std::string exportObstacle(const ParsedArguments& arguments) {
    for (const Option& option : optionsOf(arguments.text("options"))) {
        if (option.name == "groups" || option.name == "ptgroups") continue;
        const bool isKnown =
            option.name == "materials" || option.name == "smoothing" || option.name == "normals";
        if (!isKnown || option.value != "0") return notCovered(option);
    }
    return {};
}

/// Empty if the type that a call names, or else the file's suffix, is the expected one; otherwise the error.
std::string typeObstacle(const ParsedArguments& arguments, const std::string& path, const char* type) {
    const bool fits = arguments.isSet("type") ? arguments.text("type") == type
                                              : std::filesystem::u8path(path).extension() == ".obj";
    return fits ? std::string()
                : std::string("file: Files other than of type \"") + type + "\" are not covered.";
}

// Import.

/// Name for a mesh without one: that of its file.
std::string nameFor(const graph::Graph& graph, const geometry::ObjObject& object, const std::string& path) {
    std::string name = object.name.empty() ? std::filesystem::u8path(path).stem().u8string() : object.name;
    std::replace(name.begin(), name.end(), ':', '_');
    const Found<std::string> legal = legalName(graph, name);
    return legal.ok() ? legal.value : "polySurface1";
}

}  // namespace

CommandResult importObj(CommandContext& context, const ParsedArguments& arguments, const std::string& path) {
    graph::Graph& graph = context.graph;
    std::string error = typeObstacle(arguments, path, "OBJ");
    if (!error.empty()) return CommandResult::failure(error);
    const std::string space = arguments.text("namespace", ":");
    if (space != ":")
        return CommandResult::failure("file: Namespaces are not covered by this host: " + space);
    geometry::ObjResult file = geometry::readObjFile(path);
    if (!file.ok()) return CommandResult::failure(file.error);
    if (file.objects.empty()) return CommandResult::failure("file: " + path + " holds no mesh.");
    error = importObstacle(arguments, file.objects.size());
    if (!error.empty()) return CommandResult::failure(error);
    std::vector<std::string> names;
    for (geometry::ObjObject& object : file.objects) {
        const NodeRef shape =
            nodes::createMesh(graph, std::move(object.mesh), nameFor(graph, object, path), nullptr);
        shadeInitially(graph, shape);
        names.push_back(graph.fullPath(*shape->parent()));
        names.push_back(graph.fullPath(*shape));
    }
    return CommandResult::success(arguments.isSet("returnNewNodes") ? Value(std::move(names)) : Value(path));
}

// Export.

namespace {

/// Visible meshes at and below a node, each once.
void collectMeshes(graph::Graph& graph, const NodeRef& node, std::vector<NodeRef>& shapes) {
    graph::visitHierarchy(*node, [&](graph::Node& below) {
        if (!below.isA("mesh") || nodes::isIntermediate(graph, below)) return;
        const NodeRef shape = below.ref();
        if (std::find(shapes.begin(), shapes.end(), shape) == shapes.end()) shapes.push_back(shape);
    });
}

/// The data written for a shape: its points in world space, under the name of its transform.
geometry::ObjObject objectOf(graph::Graph& graph, const NodeRef& shape, const nodes::MeshPtr& mesh) {
    const geometry::Matrix4 world = nodes::worldMatrix(graph, shape);
    // Multiplying by the identity would change the sign of a zero.
    const bool isInPlace = world == geometry::Matrix4();
    return {shape->parent()->name(), isInPlace ? mesh->mesh : geometry::transformed(mesh->mesh, world), {}};
}

}  // namespace

CommandResult exportObj(CommandContext& context, const ParsedArguments& arguments, const std::string& path) {
    graph::Graph& graph = context.graph;
    std::string error = typeObstacle(arguments, path, "OBJexport");
    if (error.empty()) error = exportObstacle(arguments);
    if (!error.empty()) return CommandResult::failure(error);
    std::vector<NodeRef> shapes;
    if (arguments.isSet("exportSelected")) {
        if (graph.selection().empty()) return CommandResult::failure("Nothing is currently selected.");
        for (const graph::SelectionItem& item : graph.selection().items())
            collectMeshes(graph, item.node, shapes);
    } else {
        for (graph::Node* root : graph.roots())
            collectMeshes(graph, root->ref(), shapes);
    }
    std::vector<geometry::ObjObject> objects;
    for (const NodeRef& shape : shapes) {
        const nodes::MeshPtr mesh = nodes::meshOf(graph, shape);
        if (mesh != nullptr) objects.push_back(objectOf(graph, shape, mesh));
    }
    if (objects.empty()) return CommandResult::failure("file: There is no mesh to export.");
    std::error_code ignored;
    if (!arguments.isSet("force") && std::filesystem::exists(std::filesystem::u8path(path), ignored))
        return CommandResult::failure("file: " + path + " exists; -force replaces it.");
    error = geometry::writeTextFile(path, geometry::writeObj(objects));
    return error.empty() ? CommandResult::success(path) : CommandResult::failure(error);
}

}  // namespace host::commands
