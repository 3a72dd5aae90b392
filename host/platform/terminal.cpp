#include "platform/terminal.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif
#if defined(DELVEN_HAVE_LIBEDIT)
#include <editline/readline.h>
#endif

namespace host::platform {

namespace {

bool isStandardInputATerminal() {
#if defined(_WIN32)
    return _isatty(_fileno(stdin)) != 0;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

std::optional<std::string> plainLine() {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

#if defined(DELVEN_HAVE_LIBEDIT)
std::optional<std::string> editedLine(const std::string& prompt) {
    char* typed = readline(prompt.c_str());
    if (typed == nullptr) {
        // The end was typed on the line of the prompt.
        std::cout << std::endl;
        return std::nullopt;
    }
    std::string line = typed;
    if (!line.empty()) add_history(typed);
    std::free(typed);
    return line;
}
#else
std::optional<std::string> editedLine(const std::string& prompt) {
    std::cout << prompt << std::flush;
    return plainLine();
}
#endif

}  // namespace

LineReader::LineReader() : isTerminal_(isStandardInputATerminal()) {}

std::optional<std::string> LineReader::read(const std::string& prompt) {
    return isTerminal_ ? editedLine(prompt) : plainLine();
}

}  // namespace host::platform
