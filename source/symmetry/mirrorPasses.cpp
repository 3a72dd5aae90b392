#include "symmetry/mirrorPasses.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>
#include <tbb/blocked_range.h>
#include <tbb/global_control.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_group.h>

#include <array>
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

/// One of the two walks over a start. On its own cache lines, because both walks update their counters all
/// the time.
struct alignas(64) Pass {
    explicit Pass(const MeshTopology& topology) : walker(topology) {}

    ShellWalker walker;
    WalkStart start;
    bool isComplete = false;
};

using Passes = std::array<Pass, 2>;

void runSideBySide(Passes& passes, int faceCount, bool isThreaded) {
    if (!isThreaded) {
        for (Pass& pass : passes)
            pass.isComplete = pass.walker.walk(pass.start, faceCount);
        return;
    }
    tbb::task_group_context context;
    tbb::parallel_for(
        tbb::blocked_range<unsigned int>(0, 2, 1),
        [&](const tbb::blocked_range<unsigned int>& range) {
            for (unsigned int k = range.begin(); k != range.end(); ++k) {
                Pass& pass = passes[k];
                pass.isComplete = pass.walker.walk(pass.start, faceCount);
            }
        },
        tbb::auto_partitioner(), context);
}

/// Whether the process can start a thread. oneTBB does not recover if it cannot.
bool canStartThread() {
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void showShellIndex(std::size_t row) {
    MString text("Shell index: ");
    text += static_cast<int>(row);
    MGlobal::displayInfo(text);
}

void showFailedPass(const Pass& pass, std::size_t row, const char* which) {
    MGlobal::displayWarning("Failed to process all faces.");
    showShellIndex(row);
    MString vertices("Vertices: ");
    vertices += pass.start.first;
    vertices += " ";
    vertices += pass.start.second;
    MGlobal::displayInfo(vertices);
    MGlobal::displayError(MString("Error while iterating the mesh during the ") + which + " pass.");
}

void showDifferentCounts(const Passes& passes, std::size_t row) {
    showShellIndex(row);
    MString counts("Pass counts: ");
    counts += passes[0].walker.order().size();
    counts += ", ";
    counts += passes[1].walker.order().size();
    MGlobal::displayInfo(counts);
    MGlobal::displayError("Remapping failed because the two passes have a different vertex count.");
}

MStatus walkStart(const SymmetryStart& start, std::size_t row, bool isThreaded, Passes& passes) {
    passes[0].start = {start.faceA, start.vertexA, start.vertexB};
    passes[1].start = start.vertexA2 == -1 ? WalkStart{start.faceB, start.vertexA, start.vertexB}
                                           : WalkStart{start.faceB, start.vertexA2, start.vertexB2};
    runSideBySide(passes, start.shellFaces, isThreaded);
    if (!passes[0].isComplete) showFailedPass(passes[0], row, "first");
    if (!passes[1].isComplete) showFailedPass(passes[1], row, "second");
    if (!passes[0].isComplete || !passes[1].isComplete) return MS::kFailure;
    if (passes[0].walker.order().size() == passes[1].walker.order().size()) return MS::kSuccess;
    showDifferentCounts(passes, row);
    return MS::kFailure;
}

}  // namespace

MStatus walkStarts(const MeshTopology& topology, const std::vector<SymmetryStart>& starts,
                   std::vector<int>& map, int& walkedCount) {
    walkedCount = 0;
    Passes passes{Pass(topology), Pass(topology)};
    const bool isThreaded = canStartThread();
    // Two walks need one thread besides this one. More threads would only reach the system's limits.
    const tbb::global_control twoThreads(tbb::global_control::max_allowed_parallelism, 2);
    for (std::size_t row = 0; row < starts.size(); ++row) {
        if (starts[row].faceA == -1 || starts[row].faceB == -1) continue;
        const MStatus status = walkStart(starts[row], row, isThreaded, passes);
        if (!status) return status;
        const IndexRange first = passes[0].walker.order();
        const IndexRange second = passes[1].walker.order();
        for (int k = 0; k < first.size(); ++k) {
            map[static_cast<std::size_t>(second[k])] = first[k];
            map[static_cast<std::size_t>(first[k])] = second[k];
        }
        ++walkedCount;
    }
    return MS::kSuccess;
}

void endWalkThreads() {
    tbb::task_scheduler_handle threads{tbb::attach{}};
    // Refused while another module of the process uses the threads. Then that module keeps the library
    // loaded.
    tbb::finalize(threads, std::nothrow);
}
