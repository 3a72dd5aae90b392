#include "symmetry/mirrorPasses.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <array>
#include <cstddef>

#include "symmetry/sideBySide.h"

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

MStatus walkStart(const SymmetryStart& start, std::size_t row, const SideBySide& threads, Passes& passes) {
    passes[0].start = {start.faceA, start.vertexA, start.vertexB};
    passes[1].start = start.vertexA2 == -1 ? WalkStart{start.faceB, start.vertexA, start.vertexB}
                                           : WalkStart{start.faceB, start.vertexA2, start.vertexB2};
    threads.run([&](unsigned int k) {
        passes[k].isComplete = passes[k].walker.walk(passes[k].start, start.shellFaces);
    });
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
    const SideBySide threads;
    for (std::size_t row = 0; row < starts.size(); ++row) {
        if (starts[row].faceA == -1 || starts[row].faceB == -1) continue;
        const MStatus status = walkStart(starts[row], row, threads, passes);
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
