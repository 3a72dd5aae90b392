// The commands playblast and headlessIsolate.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>

#include "commands/commands.h"
#include "commands/meshSupport.h"
#include "commands/nodeStates.h"
#include "commands/transformSupport.h"
#include "commands/viewState.h"
#include "geometry/textFile.h"
#include "nodes/meshColors.h"
#include "nodes/plugs.h"
#include "nodes/sceneTime.h"
#include "render/picture.h"

namespace host::commands {

namespace {

using graph::NodeRef;

constexpr int kLargestSide = 8192;
/// A frame's file is named by its number, and a range may be anything.
constexpr std::size_t kMostFrames = 100000;

/// What a call asks for.
struct Shots {
    int width = 0;
    int height = 0;
    std::vector<double> frames{};
    std::vector<std::string> files{};  ///< one for each frame
    std::string answer{};              ///< the files' name as it is returned
};

/// The colours that a shape shows in its current set; empty if it shows none.
std::vector<render::Color> shownColors(graph::Graph& graph, const NodeRef& shape) {
    if (graph.number(shape->plug("displayColors")) == 0.0) return {};
    std::vector<render::Color> result;
    for (const nodes::Color& color : nodes::vertexColors(graph, shape)) {
        const bool isUnset = color == nodes::kUnsetColor;
        result.push_back(isUnset ? render::kGrey : render::Color{color[0], color[1], color[2]});
    }
    return result;
}

/// The faces of a shape that are isolated; nothing if none of it are.
std::optional<std::vector<int>> isolatedFaces(const ViewState& view, const Placed& shape) {
    for (const auto& [node, faces] : view.isolated) {
        if (node.lock() == shape.node) return faces.elements();
    }
    return std::nullopt;
}

std::vector<render::Surface> surfacesOf(graph::Graph& graph, const ViewState& view) {
    const bool isIsolated = std::any_of(view.isolated.begin(), view.isolated.end(), [](const auto& entry) {
        const NodeRef shape = entry.first.lock();
        return shape != nullptr && shape->isAlive();
    });
    std::vector<render::Surface> surfaces;
    for (graph::Node* root : graph.roots()) {
        visitMeshes(graph, root->ref(), [&](const Placed& shape, const geometry::Mesh& mesh) {
            if (!isVisible(graph, {shape.node, {}, {}, shape.path})) return;
            std::optional<std::vector<int>> faces = isolatedFaces(view, shape);
            if (isIsolated && !faces) return;
            // They may be older than the mesh.
            if (faces)
                faces->erase(std::lower_bound(faces->begin(), faces->end(), mesh.faceCount()), faces->end());
            surfaces.push_back(
                {mesh, worldMatrix(graph, shape), shownColors(graph, shape), std::move(faces)});
        });
    }
    return surfaces;
}

/// Sides of the pictures in pixels.
/// @return empty, or the error
std::string readSize(const ParsedArguments& arguments, Shots& shots) {
    constexpr int kWidth = 960;
    constexpr int kHeight = 540;
    constexpr int kPercent = 50;
    const int percent = arguments.integer("percent", kPercent);
    if (percent < 10 || percent > 100) return "playblast: -percent is from 10 to 100.";
    int width = arguments.integer("width", kWidth);
    int height = arguments.integer("height", kHeight);
    if (arguments.isSet("widthHeight")) {
        width = arguments.values("widthHeight")[0].toInt();
        height = arguments.values("widthHeight")[1].toInt();
    }
    const auto scaled = [&](int side) { return static_cast<double>(side) * percent / 100.0; };
    if (scaled(width) < 1.0 || scaled(height) < 1.0)
        return "playblast: A picture needs a width and a height.";
    if (scaled(width) > kLargestSide || scaled(height) > kLargestSide)
        return "playblast: A picture may have up to " + std::to_string(kLargestSide) + " pixels a side.";
    shots.width = static_cast<int>(scaled(width));
    shots.height = static_cast<int>(scaled(height));
    return {};
}

/// A number that playbackOptions knows.
double playbackTime(CommandContext& context, const char* flag) {
    const CommandResult answer =
        context.registry.call("playbackOptions", {Value("-query"), Value(flag)}, context.interpreter);
    return answer.value.toFloat();
}

/// @return empty, or the error
std::string readFrames(CommandContext& context, const ParsedArguments& arguments, Shots& shots) {
    for (int use = 0; use < arguments.uses("frame"); ++use)
        shots.frames.push_back(arguments.values("frame", use)[0].toFloat());
    if (shots.frames.empty()) {
        const double first =
            arguments.isSet("startTime") ? arguments.number("startTime") : playbackTime(context, "-min");
        const double last =
            arguments.isSet("endTime") ? arguments.number("endTime") : playbackTime(context, "-max");
        if (!(last - first < static_cast<double>(kMostFrames)))
            return "playblast: These are too many frames.";
        for (double frame = first; frame <= last; ++frame)
            shots.frames.push_back(frame);
    }
    const bool isWrong = std::any_of(shots.frames.begin(), shots.frames.end(),
                                     [](double frame) { return !(std::abs(frame) < 1e9); });
    if (isWrong || shots.frames.empty()) return "playblast: There is no frame to draw.";
    return {};
}

std::string padded(long long number, int digits) {
    std::string text = std::to_string(std::abs(number));
    if (static_cast<int>(text.size()) < digits)
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return number < 0 ? '-' + text : text;
}

/// @return empty, or the error
std::string nameFiles(const ParsedArguments& arguments, Shots& shots) {
    if (arguments.isSet("completeFilename")) {
        if (shots.frames.size() != 1)
            return "playblast: -completeFilename names one file. Give one -frame, or use -filename.";
        shots.answer = arguments.text("completeFilename");
        shots.files.push_back(shots.answer);
    } else if (arguments.isSet("filename")) {
        const std::string stem = arguments.text("filename");
        const int digits = std::clamp(arguments.integer("framePadding", 4), 1, 20);
        // Frames that are given one by one are counted, unless their own numbers are wanted.
        const bool isCounted = arguments.isSet("indexFromZero") ||
                               (arguments.isSet("frame") && !arguments.isSet("rawFrameNumbers"));
        long long count = 0;
        for (const double frame : shots.frames)
            shots.files.push_back(stem + '.' + padded(isCounted ? count++ : std::llround(frame), digits) +
                                  ".png");
        shots.answer = stem + '.' + std::string(static_cast<std::size_t>(digits), '#') + ".png";
    } else {
        return "playblast: Name the pictures with -filename or -completeFilename.";
    }
    for (const std::string& file : shots.files) {
        std::error_code problem;
        if (!arguments.isSet("forceOverwrite") && std::filesystem::exists(file, problem))
            return "playblast: " + file + " is there already. Add -forceOverwrite to replace it.";
    }
    return {};
}

/// Why a call cannot be answered at all; empty if it can.
std::string formatProblem(const ParsedArguments& arguments) {
    if (!render::canDraw())
        return "playblast: Pictures are not covered by this host: it was built without Embree or libpng.";
    if (const std::string format = arguments.text("format", "movie"); format != "image")
        return "playblast: The format '" + format + "' is not covered by this host. Use -format \"image\".";
    if (const std::string form = arguments.text("compression", "png"); form != "png")
        return "playblast: The compression '" + form +
               "' is not covered by this host. Use -compression \"png\".";
    return {};
}

/// Draws one frame into its file.
/// @return empty, or the error
std::string shoot(graph::Graph& graph, const ViewState& view, const NodeRef& camera, const Shots& shots,
                  std::size_t frame) {
    const nodes::TimeScope scope(graph, fromScriptUnit(graph, graph::ValueKind::Time, shots.frames[frame]));
    const double aspect = static_cast<double>(shots.width) / shots.height;
    const Found<render::Lens> lens = lensOf(graph, camera);
    if (!lens.ok()) return "playblast: " + lens.error;
    const render::View seen = render::viewOf(worldMatrix(graph, Placed(camera).parent()), lens.value, aspect);
    const render::Picture picture = render::draw(surfacesOf(graph, view), seen, shots.width, shots.height);
    if (!picture.ok()) return "playblast: " + picture.error;
    const std::string bytes = render::pngBytes(picture);
    if (bytes.empty()) return "playblast: There is not enough memory for a picture.";
    const std::string error = geometry::writeTextFile(shots.files[frame], bytes);
    return error.empty() ? error : "playblast: " + error;
}

CommandResult playblast(CommandContext& context, const ParsedArguments& arguments, const ViewState& view) {
    Shots shots;
    std::string error = formatProblem(arguments);
    if (error.empty()) error = readSize(arguments, shots);
    if (error.empty()) error = readFrames(context, arguments, shots);
    if (error.empty()) error = nameFiles(arguments, shots);
    if (!error.empty()) return CommandResult::failure(error);
    const Found<NodeRef> camera = viewCamera(context.graph, view);
    if (!camera.ok()) return CommandResult::failure(camera.error);
    if (hasSource(context.graph, nodes::timePlug(context.graph)))
        return CommandResult::failure(
            "playblast: The time of the scene is connected, so no frame can be chosen.");
    for (std::size_t frame = 0; frame < shots.frames.size(); ++frame) {
        error = shoot(context.graph, view, camera.value, shots, frame);
        if (!error.empty()) return CommandResult::failure(error);
    }
    return CommandResult::success(shots.answer);
}

CommandResult headlessIsolate(CommandContext& context, const ParsedArguments& arguments, ViewState& view) {
    if (arguments.isSet("clear")) {
        view.isolated.clear();
        return CommandResult::success();
    }
    const Found<std::vector<graph::SelectionItem>> items = objectsOrSelection(context, arguments);
    if (!items.ok()) return CommandResult::failure(items.error);
    if (items.value.empty())
        return CommandResult::failure("headlessIsolate: Give faces, or -clear to draw everything again.");
    std::vector<std::pair<std::weak_ptr<graph::Node>, graph::Component>> isolated;
    for (const graph::SelectionItem& item : items.value) {
        if (!item.component || item.component->kind() != graph::ComponentKind::Face)
            return CommandResult::failure("headlessIsolate: " + graph::itemName(context.graph, item) +
                                          " are no faces.");
        const auto same = std::find_if(isolated.begin(), isolated.end(),
                                       [&](const auto& entry) { return entry.first.lock() == item.node; });
        if (same == isolated.end()) {
            isolated.emplace_back(item.node, *item.component);
        } else {
            same->second.merge(*item.component);
        }
    }
    view.isolated = std::move(isolated);
    return CommandResult::success();
}

}  // namespace

void registerPlayblastCommands(mel::CommandRegistry& registry, const std::shared_ptr<ViewState>& view) {
    Syntax syntax;
    syntax.flag("fmt", "format", {kText}).flag("c", "compression", {kText});
    syntax.multiUseFlag("fr", "frame", {kTime})
        .flag("st", "startTime", {kTime})
        .flag("et", "endTime", {kTime});
    syntax.flag("f", "filename", {kText}).flag("cf", "completeFilename", {kText});
    syntax.flag("fp", "framePadding", {kWhole}).flag("rfn", "rawFrameNumbers").flag("ifz", "indexFromZero");
    syntax.flag("fo", "forceOverwrite").flag("wh", "widthHeight", {kWhole, kWhole});
    syntax.flag("w", "width", {kWhole}).flag("h", "height", {kWhole}).flag("p", "percent", {kWhole});
    // There is no window, whose ornaments could be shown or hidden, and what is written is exact.
    syntax.flag("v", "viewer", {kSwitch}).flag("os", "offScreen").flag("orn", "showOrnaments", {kSwitch});
    syntax.flag("cc", "clearCache", {kSwitch}).flag("qlt", "quality", {kWhole});
    registry.add(
        "playblast", syntax,
        [view](CommandContext& context, const ParsedArguments& arguments) {
            return playblast(context, arguments, *view);
        },
        "ae activeEditor co codecOptions csd combineSound epn editorPanelName opt options rf replaceFilename "
        "s sound sqt sequenceTime uts useTraxSounds");

    Syntax isolating;
    isolating.flag("cl", "clear").objects(ObjectKind::Strings);
    registry.add("headlessIsolate", isolating,
                 [view](CommandContext& context, const ParsedArguments& arguments) {
                     return headlessIsolate(context, arguments, *view);
                 });
}

}  // namespace host::commands
