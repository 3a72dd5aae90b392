#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "nodes/meshNode.h"
#include "walk/steps.h"

using namespace delven::walk;

namespace {

constexpr std::string_view kEndOfPart = "====\n";
constexpr int kManyVertices = 500;
constexpr std::size_t kManyCalls = 12;

/// What stands before the next mark, which is taken away with it.
std::string_view takePart(std::string_view& text) {
    const std::size_t end = std::min(text.find(kEndOfPart), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + kEndOfPart.size(), text.size()));
    return part;
}

void writeFile(const char* name, std::string_view content) {
    std::ofstream(name, std::ios::binary) << content;
}

void run(Walk& walk, const Line& line) {
    const std::optional<Finding> finding = walk.run(line);
    if (!finding) return;
    std::fprintf(stderr, "%s: %s\n%s", finding->kind.c_str(), finding->text.c_str(),
                 walk.transcript().c_str());
    std::abort();
}

/// The transform of the first mesh of a scene; empty when there is none, or it is too large to be quick.
std::string firstMesh(Scene& scene) {
    const auto meshes = scene.graph().nodesOfType("mesh");
    if (meshes.empty()) return {};
    const auto mesh = host::nodes::meshOf(scene.graph(), meshes.front());
    if (mesh == nullptr || mesh->mesh.vertexCount() == 0 || mesh->mesh.vertexCount() > kManyVertices)
        return {};
    return scene.graph().uniqueName(*meshes.front()->parent());
}

/// The files of an input, in a folder that goes with the program.
struct Folder {
    Folder() : path(std::filesystem::temp_directory_path() / ("delven-fuzz-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(path);
        std::filesystem::current_path(path);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path path;
};

}  // namespace

/// The fuzzer goes on writing to the counters of the plug-in, which must therefore stay.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return dlopen(Scene::pluginFile().c_str(), RTLD_NOW | RTLD_NODELETE) != nullptr ? 0 : 1;
}

/// An OBJ file, a line "====", a target file, a line "====", and our commands: two bytes each, which command
/// and the seed of what it is called with. The first mesh gets a deformer with the targets of the file; then
/// the commands run on it, with the checks of the walk.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    std::string_view text(reinterpret_cast<const char*>(data), size);
    writeFile("mesh.obj", takePart(text));
    writeFile("targets.json", takePart(text));

    Walk walk;
    Draw draw(1, walk.scene().graph());
    run(walk, {"file -i -type \"OBJ\" mesh.obj"});
    const std::string mesh = firstMesh(walk.scene());
    if (mesh.empty()) return 0;
    run(walk, {"duplicate -n fuzzed " + mesh});
    run(walk, {"move -r 0 1 0 fuzzed.vtx[0]"});
    run(walk, {"blendShape -n bs fuzzed " + mesh});
    run(walk, {"delete fuzzed; setAttr bs.w[0] 0.5"});
    run(walk, {"dv_blendShapeImportData -d -fn targets.json bs", false});
    for (std::size_t k = 0; k + 1 < std::min(text.size(), 2 * kManyCalls); k += 2) {
        draw.reseed(static_cast<unsigned char>(text[k + 1]));
        const Step& step = moduleSteps()[static_cast<unsigned char>(text[k]) % moduleSteps().size()];
        run(walk, lineOf(step, draw));
    }
    return 0;
}
