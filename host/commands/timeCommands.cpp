// The commands currentTime and playbackOptions.

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
    if (arguments.isSet("update") && !arguments.boolean("update"))
        return CommandResult::failure(
            "currentTime: A change that updates nothing is not covered by this host.");
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

/// The times, in frames, between which the scene plays, and those of the whole animation.
struct PlaybackRange {
    double minTime = 1.0;
    double maxTime = 120.0;
    double animationStartTime = 1.0;
    double animationEndTime = 200.0;
};

constexpr struct {
    const char* shortName;
    const char* longName;
    double PlaybackRange::*time;
} kRangeFlags[] = {
    {"min", "minTime", &PlaybackRange::minTime},
    {"max", "maxTime", &PlaybackRange::maxTime},
    {"ast", "animationStartTime", &PlaybackRange::animationStartTime},
    {"aet", "animationEndTime", &PlaybackRange::animationEndTime},
};

CommandResult playbackOptions(CommandContext& context, const ParsedArguments& arguments,
                              const std::shared_ptr<PlaybackRange>& range) {
    PlaybackRange wanted = *range;
    for (const auto& flag : kRangeFlags) {
        if (!arguments.isSet(flag.longName)) continue;
        if (arguments.isQuery()) return CommandResult::success(wanted.*flag.time);
        wanted.*flag.time = arguments.number(flag.longName);
    }
    if (arguments.flagsSet() == 0) return CommandResult::failure("playbackOptions: Nothing was asked for.");
    if (!(wanted.minTime <= wanted.maxTime && wanted.animationStartTime <= wanted.animationEndTime))
        return CommandResult::failure("playbackOptions: A range must not end before it begins.");
    context.graph.recorder()->add([range, before = *range](graph::Graph&) { *range = before; },
                                  [range, wanted](graph::Graph&) { *range = wanted; });
    *range = wanted;
    return CommandResult::success();
}

}  // namespace

void registerTimeCommands(mel::CommandRegistry& registry) {
    Syntax time;
    time.flag("u", "update", {kSwitch}).objects(ObjectKind::Values, 0, 1).enableQuery().enableEdit();
    registry.add("currentTime", time, currentTime);

    Syntax range;
    for (const auto& flag : kRangeFlags)
        range.flag(flag.shortName, flag.longName, {kTime});
    range.enableQuery().enableEdit();
    registry.add(
        "playbackOptions", range,
        [state = std::make_shared<PlaybackRange>()](CommandContext& context,
                                                    const ParsedArguments& arguments) {
            return playbackOptions(context, arguments, state);
        },
        "ba blockingAnim by fps framesPerSecond l loop mps maxPlaybackSpeed ps playbackSpeed v view");
}

}  // namespace host::commands
