#include "runtime/runtime.h"

#include <filesystem>
#include <system_error>

#include "commands/commands.h"
#include "nodes/defaultCameras.h"
#include "nodes/registerTypes.h"
#include "platform/interrupt.h"
#include "platform/library.h"
#include "platform/libraryFolder.h"

namespace host::runtime {

namespace {

/// Path of the kit's plug-in; empty if it is not beside the library.
std::string ownPlugin() {
    const std::filesystem::path folder = std::filesystem::u8path(platform::libraryFolder());
    for (const std::string& suffix : platform::pluginSuffixes()) {
        const std::filesystem::path file = folder / ("DELVENTools" + suffix);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) return file.u8string();
    }
    return {};
}

}  // namespace

Runtime::Runtime(mel::Output& output, graph::MessageSink& messages, const graph::Variants& variants)
    : commands_(graph_, output), session_(commands_), loader_(session_) {
    graph_.setMessages(messages);
    graph_.setVariants(variants);
    nodes::registerTypes(graph_.types());
    nodes::setUpScene(graph_);
    nodes::addDefaultCameras(graph_);
    commands::registerCommands(commands_);
    commands_.interpreter().setInterruptFlag(platform::interruptFlag());
}

bool Runtime::hasOwnPlugin() {
    return !ownPlugin().empty();
}

mel::CommandResult Runtime::loadOwnPlugin() {
    const std::string file = ownPlugin();
    if (file.empty()) return mel::CommandResult::failure("DELVENTools was not found beside the host.");
    return loader_.load(file);
}

}  // namespace host::runtime
