#pragma once

#include <string>
#include <vector>

namespace host::batch {

struct Action {
    enum class Kind { ImportFile, RunScript, RunText, Prompt, LoadPlugin };

    Kind kind;
    std::string text{};  // file or script text
};

/// The parsed command line.
struct Options {
    std::vector<Action> actions{};  // in the given order; the prompt if none is given
    bool autoloadsPlugins = true;   // false with -plugin or -noAutoloadPlugins
    std::string logFile{};
    bool showsHelp = false;
    bool showsVersion = false;
    std::string error{};  // what is wrong with the usage; empty if nothing is
};

/// @param words  without the program's name
Options parseOptions(const std::vector<std::string>& words);

/// The text of -help.
std::string helpText();

}  // namespace host::batch
