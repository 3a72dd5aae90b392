#include "batch/application.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "batch/outputCommand.h"
#include "batch/prompt.h"
#include "geometry/textFile.h"

namespace host::batch {

Application::Application(Console& console) : console_(console), runtime_(console, console) {
    registerOutputCommand(runtime_.commands(), console_);
    console_.follow(&runtime_.commands().interpreter());
}

Application::~Application() {
    console_.follow(nullptr);
}

bool Application::loadOwnPlugin() {
    if (runtime::Runtime::hasOwnPlugin()) return succeeded(runtime_.loadOwnPlugin());
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
            return runPrompt(runtime_.commands(), console_);
        case Action::Kind::LoadPlugin:
            return succeeded(runtime_.plugins().load(action.text));
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
    return succeeded(
        isScene ? runtime_.commands().interpreter().callCommand("file", {"-open", "-force", path})
                : runtime_.commands().interpreter().callCommand("file", {"-import", "-type", "OBJ", path}));
}

bool Application::runText(const std::string& text) {
    mel::RunOptions options;
    options.echoSingleCall = true;
    return runtime_.commands().run(text, {}, options).ok;
}

bool Application::runScript(const std::string& path) {
    const geometry::FileText script = geometry::readTextFile(path);
    if (!script.ok()) {
        console_.error(script.error);
        return false;
    }
    return runtime_.commands().run(script.text, path).ok;
}

}  // namespace host::batch
