#pragma once

#include <tbb/global_control.h>

#include <functional>
#include <optional>

/// Runs the two halves of a work side by side: on two threads, or one after the other if the process can
/// start no thread. No host types. Main thread only.
///
/// The halves must not depend on each other, nor write to the same data. So the result never depends on the
/// number of threads.
class SideBySide {
  public:
    /// @param isWorthThread  whether the work takes long enough for a second thread
    explicit SideBySide(bool isWorthThread = true);

    bool isThreaded() const { return isThreaded_; }
    /// Calls work(0) and work(1), and returns when both have ended. What they throw is thrown on.
    void run(const std::function<void(unsigned int)>& work) const;

  private:
    bool isThreaded_;
    std::optional<tbb::global_control> limit_;
};

/// Ends the threads. Call it before the module is unloaded: a thread that outlives the oneTBB library
/// crashes. Does nothing if no thread was started.
void endThreads();
