#include "platform/interrupt.h"

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#else
#include <csignal>
#endif

namespace host::platform {

namespace {

std::atomic<bool> isInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may set no other flag");

#if defined(_WIN32)
BOOL WINAPI noteInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT) return FALSE;
    isInterrupted = true;
    return TRUE;
}
#else
struct sigaction previous;

void noteInterrupt(int) {
    isInterrupted = true;
}
#endif

}  // namespace

std::atomic<bool>& interruptFlag() {
    return isInterrupted;
}

InterruptGuard::InterruptGuard() {
#if defined(_WIN32)
    SetConsoleCtrlHandler(noteInterrupt, TRUE);
#else
    // Without SA_RESTART, so that an interrupt also ends waiting for the terminal.
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, nullptr, &previous);
    // A program that was started in the background must not be interrupted.
    if (previous.sa_handler != SIG_IGN) sigaction(SIGINT, &action, nullptr);
#endif
}

InterruptGuard::~InterruptGuard() {
#if defined(_WIN32)
    SetConsoleCtrlHandler(noteInterrupt, FALSE);
#else
    sigaction(SIGINT, &previous, nullptr);
#endif
}

}  // namespace host::platform
