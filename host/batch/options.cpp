#include "batch/options.h"

#include <optional>

namespace host::batch {

namespace {

/// Options that add an action.
struct ActionOption {
    const char* name;
    Action::Kind kind;
    const char* argument;  // null if it takes no argument
    const char* help;
};
constexpr ActionOption kActions[] = {
    {"-file", Action::Kind::ImportFile, "F", "open a scene (.ma), or import a mesh file (.obj)"},
    {"-script", Action::Kind::RunScript, "F", "run a MEL file; so does a bare argument that ends in .mel"},
    {"-command", Action::Kind::RunText, "TEXT", "run MEL text"},
    {"-prompt", Action::Kind::Prompt, nullptr,
     "read MEL from the terminal or from standard input (the default)"},
    {"-plugin", Action::Kind::LoadPlugin, "F", "load this plug-in instead of DELVENTools"}};

struct Setting {
    const char* name;
    const char* argument;
    const char* help;
};
constexpr Setting kSettings[] = {
    {"-noAutoloadPlugins", nullptr, "load only plug-ins that -plugin or a script names"},
    {"-log", "F", "copy all output to a file"},
    {"-help", nullptr, "this text"},
    {"-version", nullptr, "the version"}};

bool endsInMel(const std::string& word) {
    constexpr std::string_view kSuffix = ".mel";
    return word.size() > kSuffix.size() &&
           word.compare(word.size() - kSuffix.size(), kSuffix.size(), kSuffix) == 0;
}

/// The option that a word names. Some options have other names too, as in other programs.
std::string optionNamed(const std::string& word) {
    if (word == "-h" || word == "--help") return "-help";
    return word == "--version" ? "-version" : word;
}

const ActionOption* findAction(const std::string& name) {
    for (const ActionOption& option : kActions) {
        if (name == option.name) return &option;
    }
    return nullptr;
}

const Setting* findSetting(const std::string& name) {
    for (const Setting& setting : kSettings) {
        if (name == setting.name) return &setting;
    }
    return nullptr;
}

void applySetting(Options& options, const std::string& name, const std::string& argument) {
    if (name == "-log") options.logFile = argument;
    if (name == "-help") options.showsHelp = true;
    if (name == "-version") options.showsVersion = true;
    if (name == "-noAutoloadPlugins") options.autoloadsPlugins = false;
}

void appendRow(std::string& text, const char* name, const char* argument, const char* help) {
    std::string option = name;
    if (argument != nullptr) option += std::string(" ") + argument;
    option.resize(20, ' ');
    text += "  " + option + "  " + help + '\n';
}

}  // namespace

Options parseOptions(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const std::string word = optionNamed(words[at]);
        const ActionOption* action = findAction(word);
        const Setting* setting = findSetting(word);
        if (action == nullptr && setting == nullptr) {
            if (word.empty() || word.front() == '-' || !endsInMel(word)) {
                options.error = "unknown option '" + word + "'";
                return options;
            }
            options.actions.push_back({Action::Kind::RunScript, word});
            continue;
        }
        std::string argument;
        if ((action != nullptr ? action->argument : setting->argument) != nullptr) {
            if (++at == words.size()) {
                options.error = "option " + word + " needs an argument";
                return options;
            }
            argument = words[at];
        }
        if (action == nullptr) {
            applySetting(options, word, argument);
            continue;
        }
        if (action->kind == Action::Kind::LoadPlugin) options.autoloadsPlugins = false;
        options.actions.push_back({action->kind, argument});
    }
    if (options.actions.empty()) options.actions.push_back({Action::Kind::Prompt});
    return options;
}

std::string helpText() {
    std::string text = "usage: delvenbatch [option]...\n\nActions, run in the order given:\n";
    for (const ActionOption& option : kActions)
        appendRow(text, option.name, option.argument, option.help);
    text += "\nSettings:\n";
    for (const Setting& setting : kSettings)
        appendRow(text, setting.name, setting.argument, setting.help);
    text +=
        "\nExit status: 0 if everything succeeded, 1 if an action failed (later ones are not run) or output\n"
        "could not be written, 2 if the options were wrong, or the code given to `quit -exitCode`.\n";
    return text;
}

}  // namespace host::batch
