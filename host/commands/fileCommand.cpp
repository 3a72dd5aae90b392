#include <algorithm>
#include <filesystem>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "geometry/objFile.h"
#include "geometry/textFile.h"
#include "graph/hierarchy.h"
#include "nodes/meshNode.h"
#include "nodes/registerTypes.h"
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
std::string nameFor(const geometry::ObjObject& object, const std::string& path) {
    std::string name = object.name.empty() ? std::filesystem::u8path(path).stem().u8string() : object.name;
    std::replace(name.begin(), name.end(), ':', '_');
    const Found<std::string> legal = legalName(name);
    return legal.ok() ? legal.value : "polySurface1";
}

/// Every object of the file becomes a mesh of its own. Groups are dropped: they only divide its faces.
CommandResult importFile(CommandContext& context, const ParsedArguments& arguments, const std::string& path) {
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
            nodes::createMesh(graph, std::move(object.mesh), nameFor(object, path), nullptr);
        shadeInitially(graph, shape);
        names.push_back(graph.fullPath(*shape->parent()));
        names.push_back(graph.fullPath(*shape));
    }
    return CommandResult::success(arguments.isSet("returnNewNodes") ? Value(std::move(names)) : Value(path));
}

// Export.

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

CommandResult exportFile(CommandContext& context, const ParsedArguments& arguments, const std::string& path) {
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

// New.

/// An empty scene with new default nodes. Neither this nor anything before it can be undone.
CommandResult newScene(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    const std::vector<NodeRef> nodes = graph.nodes();
    const bool isUsed =
        graph.undoQueue().canUndo() ||
        std::any_of(nodes.begin(), nodes.end(), [](const NodeRef& node) { return !isDefaultNode(*node); });
    if (isUsed && !arguments.isSet("force")) return CommandResult::failure("Unsaved changes.");
    const graph::RecordingScope silent(graph, nullptr);
    graph.select({});
    graph.deleteNodes(nodes);
    graph.undoQueue().clear();
    host::nodes::setUpScene(graph);
    return CommandResult::success("untitled");
}

CommandResult file(CommandContext& context, const ParsedArguments& arguments) {
    if (arguments.isQuery()) {
        if (arguments.isSet("sceneName")) return CommandResult::success("");
        return CommandResult::failure("file: Only -sceneName is covered in query mode.");
    }
    int actions = 0;
    for (const char* flag : {"import", "exportSelected", "exportAll", "newFile"})
        actions += arguments.isSet(flag) ? 1 : 0;
    if (actions != 1)
        return CommandResult::failure(
            "file: Exactly one of -import, -exportSelected, -exportAll and -newFile is needed.");
    const std::vector<std::string> names = arguments.objectNames();
    if (arguments.isSet("newFile")) {
        if (!names.empty()) return CommandResult::failure("file: A name for a new scene is not covered.");
        return newScene(context, arguments);
    }
    if (names.empty()) return CommandResult::failure("file: No file was named.");
    return arguments.isSet("import") ? importFile(context, arguments, names.front())
                                     : exportFile(context, arguments, names.front());
}

}  // namespace

void registerFileCommand(mel::CommandRegistry& registry) {
    Syntax syntax;
    syntax.flag("i", "import").flag("es", "exportSelected").flag("ea", "exportAll").flag("new", "newFile");
    syntax.flag("f", "force").flag("typ", "type", {kText}).flag("op", "options", {kText});
    syntax.flag("rnn", "returnNewNodes").flag("ns", "namespace", {kText}).flag("sn", "sceneName");
    // There are no versions, references and namespaces that these flags could affect.
    syntax.flag("iv", "ignoreVersion").flag("pr", "preserveReferences");
    syntax.flag("mnc", "mergeNamespacesOnClash", {kSwitch});
    syntax.enableQuery().objects(ObjectKind::Strings, 0, 1);
    registry.add("file", syntax, file,
                 "o open s save rn rename r reference rr removeReference ur unloadReference lr "
                 "loadReference lrd loadReferenceDepth dr deferReference ex exists exn expandName l list "
                 "loc location mf modified amf anyModified ch constructionHistory chn channels con "
                 "constraints exp expressions sh shader ra renameAll rpr renamingPrefix gr groupReference "
                 "gn groupName pmt prompt dns defaultNamespace uns usingNamespaces sa selectAll");
}

}  // namespace host::commands
