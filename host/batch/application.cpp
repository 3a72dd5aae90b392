#include "batch/application.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "batch/outputCommand.h"
#include "batch/prompt.h"
#include "commands/commands.h"
#include "geometry/textFile.h"
#include "nodes/defaultCameras.h"
#include "nodes/registerTypes.h"
#include "platform/interrupt.h"
#include "platform/library.h"
#include "platform/program.h"

namespace host::batch {

Application::Application(Console& console)
    : console_(console), registry_(graph_, console), session_(registry_), loader_(session_) {
    graph_.setMessages(console);
    nodes::registerTypes(graph_.types());
    nodes::setUpScene(graph_);
    nodes::addDefaultCameras(graph_);
    commands::registerCommands(registry_);
    registerOutputCommand(registry_, console_);
    registry_.interpreter().setInterruptFlag(platform::interruptFlag());
    console_.follow(&registry_.interpreter());
}

Application::~Application() {
    console_.follow(nullptr);
}

bool Application::loadOwnPlugin() {
    const std::filesystem::path folder = std::filesystem::u8path(platform::programFolder());
    for (const std::string& suffix : platform::pluginSuffixes()) {
        const std::filesystem::path file = folder / ("DELVENTools" + suffix);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) return succeeded(loader_.load(file.u8string()));
    }
    console_.warning("DELVENTools was not found beside the program.");
    return true;
}

bool Application::run(const Action& action) {
    switch (action.kind) {
        case Action::Kind::ImportFile:
            return importFile(action.text);
        case Action::Kind::RunScript:
            return runScript(action.text);
        case Action::Kind::RunText:
            return runText(action.text);
        case Action::Kind::Prompt:
            return runPrompt(registry_, console_);
        case Action::Kind::LoadPlugin:
            return succeeded(loader_.load(action.text));
    }
    return false;
}

bool Application::succeeded(const mel::CommandResult& result) {
    if (!result.ok && !result.errorShown) console_.error(result.error);
    return result.ok;
}

bool Application::importFile(const std::string& path) {
    std::string suffix = std::filesystem::u8path(path).extension().u8string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const bool isScene = suffix == ".ma" || suffix == ".mb";
    return succeeded(isScene
                         ? registry_.interpreter().callCommand("file", {"-open", "-force", path})
                         : registry_.interpreter().callCommand("file", {"-import", "-type", "OBJ", path}));
}

bool Application::runText(const std::string& text) {
    mel::RunOptions options;
    options.echoSingleCall = true;
    return registry_.run(text, {}, options).ok;
}

bool Application::runScript(const std::string& path) {
    const geometry::FileText script = geometry::readTextFile(path);
    if (!script.ok()) {
        console_.error(script.error);
        return false;
    }
    return registry_.run(script.text, path).ok;
}

}  // namespace host::batch
