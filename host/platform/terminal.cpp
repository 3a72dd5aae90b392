#include "platform/terminal.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "platform/interrupt.h"

#if defined(_WIN32)
#include <io.h>
#else
#include <poll.h>
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
    // A line that does not fit in memory is not the end of the input: the failed allocation is passed on.
    std::cin.exceptions(std::ios::badbit);
    try {
        if (!std::getline(std::cin, line)) return std::nullopt;
    } catch (const std::ios_base::failure&) {
        return std::nullopt;
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

/// Waits for typed keys.
/// @return false if an interrupt came first
bool awaitKeys() {
#if defined(_WIN32)
    return true;  // an interrupt ends the reading itself
#else
    constexpr int kMilliseconds = 200;  // an interrupt just before the wait is seen after it
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!interruptFlag()) {
        if (poll(&input, 1, kMilliseconds) > 0) return true;
    }
    return false;
#endif
}

std::optional<std::string> promptedLine(const std::string& prompt) {
    std::cout << prompt << std::flush;
    std::optional<std::string> line;
    if (awaitKeys()) line = plainLine();
    if (line) return line;
    std::cout << std::endl;
    // An interrupt may look like the end of the input, but is not.
    if (interruptFlag()) std::cin.clear();
    return std::nullopt;
}

#if defined(DELVEN_HAVE_LIBEDIT)

struct TypedLine {
    char* text = nullptr;  // null at the end of the input
    bool isWhole = false;
};
TypedLine typed;

void takeTypedLine(char* text) {
    typed = {text, true};
    // Before the terminal is given back, so that what a script prints looks as usual.
    rl_callback_handler_remove();
}

/// Key by key: the library's own wait would continue after an interrupt.
std::optional<std::string> editedLine(const std::string& prompt) {
    rl_catch_signals = 0;
    typed = {};
    rl_callback_handler_install(prompt.c_str(), takeTypedLine);
    while (!typed.isWhole && awaitKeys())
        rl_callback_read_char();
    if (!typed.isWhole) rl_callback_handler_remove();
    if (typed.text == nullptr) {
        // The end of the input, or the interrupt, was typed on the line of the prompt.
        std::cout << std::endl;
        return std::nullopt;
    }
    std::string line = typed.text;
    if (!line.empty()) add_history(typed.text);
    std::free(typed.text);
    return line;
}

/// Without editing if the terminal cannot show it.
std::optional<std::string> typedLine(const std::string& prompt) {
    return isatty(STDOUT_FILENO) != 0 ? editedLine(prompt) : promptedLine(prompt);
}

#else

std::optional<std::string> typedLine(const std::string& prompt) {
    return promptedLine(prompt);
}

#endif

}  // namespace

LineReader::LineReader() : isTerminal_(isStandardInputATerminal()) {}

std::optional<std::string> LineReader::read(const std::string& prompt) {
    return isTerminal_ ? typedLine(prompt) : plainLine();
}

}  // namespace host::platform
