#include "platform/streams.h"

#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>
#endif

namespace host::platform {

void prepareStreams() {
#if !defined(_WIN32)
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) != -1) continue;
        // open() takes the lowest free number: this one. The wrong direction makes using it fail as before.
        const int wrongDirection = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        open("/dev/null", wrongDirection);
    }
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void writeToTerminal(const std::string& text) {
#if defined(_WIN32)
    const bool isTerminal = _isatty(_fileno(stderr)) != 0;
#else
    const bool isTerminal = isatty(STDERR_FILENO) != 0;
#endif
    if (!isTerminal) return;
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

}  // namespace host::platform
