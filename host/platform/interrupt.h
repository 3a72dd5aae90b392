#pragma once

#include <atomic>

namespace host::platform {

/// Set when the user interrupts the program (Ctrl-C) while an InterruptGuard exists. The code that acts on it
/// clears it.
std::atomic<bool>& interruptFlag();

/// While it exists, an interrupt sets the flag instead of ending the program. Only one may exist at a time.
class InterruptGuard {
  public:
    InterruptGuard();
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
};

}  // namespace host::platform
