// The commands of tools: setToolTo, currentCtx, contextInfo, headlessDrag.

#include <cmath>
#include <limits>
#include <memory>

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "mel/tools.h"

namespace host::commands {

namespace {

using mel::MouseEvent;
using mel::Tool;
using mel::ToolBox;

CommandResult unknownTool(const char* command, const std::string& name) {
    return CommandResult::failure(std::string(command) + ": There is no context '" + name + "'.");
}

CommandResult setToolTo(CommandContext& context, const ParsedArguments& arguments) {
    ToolBox& tools = context.registry.tools();
    const std::string name = arguments.arguments()[0].toString();
    const std::string previous = tools.currentName();
    if (tools.find(name) == nullptr) return unknownTool("setToolTo", name);
    if (name == previous) return CommandResult::success();
    // If the tool no longer exists when this is undone, nothing changes.
    context.graph.recorder()->add([&tools, previous](graph::Graph&) { tools.setCurrent(previous); },
                                  [&tools, name](graph::Graph&) { tools.setCurrent(name); });
    const graph::RecordingScope silent(context.graph, nullptr);
    tools.setCurrent(name);
    return CommandResult::success();
}

CommandResult currentCtx(CommandContext& context, const ParsedArguments&) {
    return CommandResult::success(context.registry.tools().currentName());
}

CommandResult contextInfo(CommandContext& context, const ParsedArguments& arguments) {
    const std::string name = arguments.arguments()[0].toString();
    const std::shared_ptr<Tool> tool = context.registry.tools().find(name);
    if (arguments.isSet("exists")) return CommandResult::success(tool != nullptr);
    if (tool == nullptr) return unknownTool("contextInfo", name);
    if (arguments.isSet("class")) return CommandResult::success(tool->className());
    if (arguments.isSet("title")) return CommandResult::success(tool->title());
    return CommandResult::failure("contextInfo: Nothing was asked for.");
}

// The command headlessDrag.

struct Place {
    short x = 0;
    short y = 0;
};

struct Drag {
    int button = 1;
    Place from{};
    Place to{};
    int steps = 1;
    MouseEvent::Viewport viewport = MouseEvent::Viewport::Viewport2;
};

Found<Place> placeOf(const ParsedArguments& arguments, const char* flag) {
    if (!arguments.isSet(flag))
        return {{}, std::string("headlessDrag: The flag -") + flag + " must be given."};
    constexpr int kSmallest = std::numeric_limits<short>::min();
    constexpr int kLargest = std::numeric_limits<short>::max();
    const std::vector<Value>& values = arguments.values(flag);
    const int x = values[0].toInt();
    const int y = values[1].toInt();
    if (x < kSmallest || x > kLargest || y < kSmallest || y > kLargest)
        return {{}, "headlessDrag: A position must lie between -32768 and 32767."};
    return {{static_cast<short>(x), static_cast<short>(y)}};
}

Found<Drag> dragOf(const ParsedArguments& arguments) {
    constexpr int kMostSteps = 100000;
    Drag drag;
    drag.button = arguments.integer("button", 1);
    drag.steps = arguments.integer("steps", 1);
    if (arguments.isSet("legacyViewport")) drag.viewport = MouseEvent::Viewport::Legacy;
    if (drag.button < 1 || drag.button > 3)
        return {{}, "headlessDrag: The button must be 1 (left), 2 (middle) or 3 (right)."};
    if (drag.steps < 0 || drag.steps > kMostSteps)
        return {{}, "headlessDrag: The number of steps must lie between 0 and 100000."};
    for (const char* flag : {"from", "to"}) {
        const Found<Place> place = placeOf(arguments, flag);
        if (!place.ok()) return {{}, place.error};
        (flag[0] == 'f' ? drag.from : drag.to) = place.value;
    }
    return {drag};
}

/// One coordinate of the position after a part of the way.
short between(short from, short to, double part) {
    return static_cast<short>(std::lround(from + (to - from) * part));
}

CommandResult play(ToolBox& tools, const Drag& drag) {
    const std::shared_ptr<Tool> tool = tools.current();
    const auto button = drag.button == 1 ? MouseEvent::Button::Left : MouseEvent::Button::Middle;
    // A tool that a handler replaced gets no more events, and the new tool gets none of a drag that began
    // before it.
    const auto send = [&](MouseEvent::Kind kind, double part) {
        const MouseEvent event{kind, button, between(drag.from.x, drag.to.x, part),
                               between(drag.from.y, drag.to.y, part), drag.viewport};
        return tools.current() != tool || tool->handle(event);
    };
    const CommandResult failed = CommandResult::failure("headlessDrag: The tool reports a failure.");
    if (!send(MouseEvent::Kind::Press, 0.0)) return failed;
    for (int step = 1; step <= drag.steps; ++step) {
        if (!send(MouseEvent::Kind::Drag, static_cast<double>(step) / drag.steps)) return failed;
    }
    return send(MouseEvent::Kind::Release, 1.0) ? CommandResult::success() : failed;
}

CommandResult headlessDrag(CommandContext& context, const ParsedArguments& arguments, bool& isPlaying) {
    const Found<Drag> drag = dragOf(arguments);
    if (!drag.ok()) return CommandResult::failure(drag.error);
    ToolBox& tools = context.registry.tools();
    if (!tools.current()->takesMouse())
        return CommandResult::failure("headlessDrag: Dragging with '" + tools.currentName() +
                                      "' is not covered by this host.");
    if (drag.value.button == 3) {
        context.graph.messages().warning(
            "headlessDrag: The right button opens the menu of the tool and does not reach the tool.");
        return CommandResult::success();
    }
    if (isPlaying) return CommandResult::failure("headlessDrag: The mouse is being dragged already.");
    isPlaying = true;
    CommandResult result = play(tools, drag.value);
    isPlaying = false;
    return result;
}

}  // namespace

void registerToolCommands(mel::CommandRegistry& registry) {
    Syntax naming;
    naming.addArgument(kText);
    registry.add("setToolTo", naming, setToolTo);
    registry.add("currentCtx", Syntax(), currentCtx);
    // Scripts set this tool when they have finished with another.
    registry.interpreter().setGlobalVariable("gSelect", ToolBox::kSelectTool);

    Syntax asking = naming;
    asking.flag("c", "class").flag("ex", "exists").flag("t", "title");
    registry.add("contextInfo", asking, contextInfo,
                 "ai1 apiImage1 esc escapeContext i1 image1 i2 image2 i3 image3");

    Syntax dragging;
    // "to" is too short for a long name.
    dragging.flag("b", "button", {kWhole})
        .flag("f", "from", {kWhole, kWhole})
        .flag("to", "", {kWhole, kWhole});
    dragging.flag("s", "steps", {kWhole}).flag("lv", "legacyViewport");
    registry.add("headlessDrag", dragging,
                 [isPlaying = false](CommandContext& context, const ParsedArguments& arguments) mutable {
                     return headlessDrag(context, arguments, isPlaying);
                 });
}

}  // namespace host::commands
