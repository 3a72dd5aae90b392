#include "symmetry/sideBySide.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_group.h>

#include <cstddef>
#include <exception>
#include <new>
#include <thread>

// Releases before oneTBB define their version in these headers. Code that is built with them needs the older
// library.
#if defined(TBB_INTERFACE_VERSION)
static_assert(TBB_INTERFACE_VERSION >= 12000,
              "These <tbb/...> headers are older than oneTBB, perhaps those of Maya's developer kit. Put the "
              "include folder of oneTBB before that of the kit; with CMake, name oneTBB's folder in "
              "CMAKE_PREFIX_PATH.");
#endif

namespace {

/// Whether the process can start a thread. oneTBB does not recover if it cannot.
bool canStartThread() {
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

SideBySide::SideBySide(bool isWorthThread) : isThreaded_(isWorthThread && canStartThread()) {
    // Two halves need one thread besides this one. More threads would only reach the system's limits.
    if (isThreaded_) limit_.emplace(tbb::global_control::max_allowed_parallelism, std::size_t{2});
}

void SideBySide::run(const std::function<void(unsigned int)>& work) const {
    if (!isThreaded_) {
        work(0);
        work(1);
        return;
    }
    tbb::task_group_context context;
    tbb::parallel_for(
        tbb::blocked_range<unsigned int>(0, 2, 1),
        [&](const tbb::blocked_range<unsigned int>& range) {
            for (unsigned int half = range.begin(); half != range.end(); ++half)
                work(half);
        },
        tbb::auto_partitioner(), context);
}

void endThreads() {
    tbb::task_scheduler_handle threads{tbb::attach{}};
    // Refused while another module of the process uses the threads. Then that module keeps the library
    // loaded.
    tbb::finalize(threads, std::nothrow);
}
