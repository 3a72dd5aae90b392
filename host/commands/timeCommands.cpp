// The commands currentTime and playbackOptions.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "nodes/sceneTime.h"

namespace host::commands {

namespace {

constexpr graph::ValueKind kTimeKind = graph::ValueKind::Time;

CommandResult currentTime(CommandContext& context, const ParsedArguments& arguments) {
    graph::Graph& graph = context.graph;
    if (arguments.isQuery())
        return CommandResult::success(toScriptUnit(graph, kTimeKind, nodes::currentTime(graph)));
    // -update says whether what depends on the time is brought up to date at once. Without a view this
    // happens when something is read, in either case.
    if (arguments.objects().empty()) return CommandResult::failure("currentTime: A time must be given.");
    const Value& word = arguments.objects().front();
    const std::optional<double> wanted = mel::numberOf(word, kTime, graph.framesPerSecond());
    if (!wanted || !std::isfinite(*wanted))
        return CommandResult::failure("currentTime: '" + word.toString() + "' is no time.");
    const graph::Plug plug = nodes::timePlug(graph);
    if (isLocked(plug) || hasSource(graph, plug))
        return CommandResult::failure("currentTime: " + graph.plugName(plug) + " is locked or connected.");
    nodes::setCurrentTime(graph, fromScriptUnit(graph, kTimeKind, *wanted));
    return CommandResult::success(toScriptUnit(graph, kTimeKind, nodes::currentTime(graph)));
}

/// How the scene would play: the times, in frames, between which it does, those of the whole animation, and
/// what only a player uses.
struct Playback {
    double minTime = 1.0;
    double maxTime = 120.0;
    double animationStartTime = 1.0;
    double animationEndTime = 200.0;
    double by = 1.0;
    double playbackSpeed = 1.0;     // 0: every frame, as fast as possible
    double maxPlaybackSpeed = 0.0;  // 0: no limit
    std::string loop = "continuous";
    std::string view = "active";
};

/// How the present scene would play. No file keeps it.
struct ScenePlayback {
    Playback value{};
    std::weak_ptr<graph::Node> time{};  ///< the scene's time node, by which another scene is told

    Playback& of(graph::Graph& graph) {
        const graph::NodeRef now = nodes::timePlug(graph).node();
        if (time.lock() != now) *this = {{}, now};
        return value;
    }
};

constexpr struct {
    const char* shortName;
    const char* longName;
    ArgumentType unit;
    double Playback::*number;
} kNumberFlags[] = {
    {"min", "minTime", kTime, &Playback::minTime},
    {"max", "maxTime", kTime, &Playback::maxTime},
    {"ast", "animationStartTime", kTime, &Playback::animationStartTime},
    {"aet", "animationEndTime", kTime, &Playback::animationEndTime},
    {"by", "", kReal, &Playback::by},
    {"ps", "playbackSpeed", kReal, &Playback::playbackSpeed},
    {"mps", "maxPlaybackSpeed", kReal, &Playback::maxPlaybackSpeed},
};

constexpr struct {
    const char* shortName;
    const char* longName;
    std::string Playback::*choice;
    std::array<const char*, 3> choices;
} kChoiceFlags[] = {
    {"l", "loop", &Playback::loop, {"once", "oscillate", "continuous"}},
    {"v", "view", &Playback::view, {"all", "active", "active"}},
};

CommandResult queryPlayback(const graph::Graph& graph, const ParsedArguments& arguments,
                            const Playback& playback) {
    for (const auto& flag : kNumberFlags) {
        if (arguments.isSet(flag.shortName)) return CommandResult::success(playback.*flag.number);
    }
    for (const auto& flag : kChoiceFlags) {
        if (arguments.isSet(flag.shortName)) return CommandResult::success(playback.*flag.choice);
    }
    // Nothing ever plays, so this is the rate that is wanted.
    if (arguments.isSet("framesPerSecond")) return CommandResult::success(graph.framesPerSecond());
    return CommandResult::failure("playbackOptions: Nothing was asked for.");
}

CommandResult playbackOptions(CommandContext& context, const ParsedArguments& arguments,
                              const std::shared_ptr<ScenePlayback>& scene) {
    Playback& playback = scene->of(context.graph);
    if (arguments.isQuery()) return queryPlayback(context.graph, arguments, playback);
    if (arguments.flagsSet() == 0) return CommandResult::failure("playbackOptions: Nothing was asked for.");
    Playback wanted = playback;
    for (const auto& flag : kNumberFlags)
        wanted.*flag.number = arguments.number(flag.shortName, wanted.*flag.number);
    for (const auto& flag : kChoiceFlags) {
        const std::string choice = arguments.text(flag.longName, wanted.*flag.choice);
        if (std::find(flag.choices.begin(), flag.choices.end(), choice) == flag.choices.end())
            return CommandResult::failure("playbackOptions: '" + choice + "' is no choice of -" +
                                          flag.longName + '.');
        wanted.*flag.choice = choice;
    }
    const bool isFinite = std::all_of(std::begin(kNumberFlags), std::end(kNumberFlags),
                                      [&](const auto& flag) { return std::isfinite(wanted.*flag.number); });
    if (!isFinite) return CommandResult::failure("playbackOptions: Every number must be finite.");
    if (!(wanted.by > 0.0 && wanted.playbackSpeed >= 0.0 && wanted.maxPlaybackSpeed >= 0.0))
        return CommandResult::failure(
            "playbackOptions: The step must be positive, and a speed not negative.");
    if (!(wanted.minTime <= wanted.maxTime && wanted.animationStartTime <= wanted.animationEndTime))
        return CommandResult::failure("playbackOptions: A range must not end before it begins.");
    context.graph.recorder()->add([scene, before = playback](graph::Graph&) { scene->value = before; },
                                  [scene, wanted](graph::Graph&) { scene->value = wanted; });
    playback = wanted;
    return CommandResult::success();
}

}  // namespace

void registerTimeCommands(mel::CommandRegistry& registry) {
    Syntax time;
    time.flag("u", "update", {kSwitch}).objects(ObjectKind::Values, 0, 1).enableQuery().enableEdit();
    registry.add("currentTime", time, currentTime);

    Syntax playing;
    for (const auto& flag : kNumberFlags)
        playing.flag(flag.shortName, flag.longName, {flag.unit});
    for (const auto& flag : kChoiceFlags)
        playing.flag(flag.shortName, flag.longName, {kText});
    // Only playing could be blocked.
    playing.flag("fps", "framesPerSecond").flag("ba", "blockingAnim");
    playing.enableQuery().enableEdit();
    registry.add("playbackOptions", playing,
                 [scene = std::make_shared<ScenePlayback>()](CommandContext& context,
                                                             const ParsedArguments& arguments) {
                     return playbackOptions(context, arguments, scene);
                 });
}

}  // namespace host::commands
