// Mirror partners by this module and by a k-d tree of numpy and scipy: the same partners, side by side.

#include <maya/MFloatPointArray.h>
#include <maya/MFnMesh.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "checkedMesh.h"
#include "partnerFloor.h"
#include "rows.h"
#include "symmetry/positionPartners.h"
#include "table.h"

namespace {

constexpr int kRounds = 5;  // the best of these counts

/// Seconds, and the partner of each vertex; no partners if scipy is missing.
struct Found {
    double seconds = std::numeric_limits<double>::infinity();
    std::vector<int> partners;
};

Found findOurs(const MDagPath& mesh) {
    Found found;
    std::vector<int> all(static_cast<std::size_t>(MFnMesh(mesh).numVertices()));
    std::iota(all.begin(), all.end(), 0);
    for (int round = 0; round < kRounds; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        PositionPartners(mesh, 0, kPartnerTolerance).find(all, found.partners);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        found.seconds = std::min(found.seconds, time.count());
    }
    return found;
}

/// A Python that has scipy. Empty if there is none.
std::string python() {
    for (const char* candidate : {"python3", "/usr/bin/python3"}) {
        const std::string text = std::string(candidate) + " -c 'import scipy' 2>/dev/null";
        if (std::system(text.c_str()) == 0) return candidate;
    }
    return "";
}

Found findByScipy(const std::string& interpreter, const MDagPath& mesh) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::string unique = std::to_string(getpid());
    const std::string input = (folder / ("delvenBenchPoints" + unique)).string();
    const std::string output = (folder / ("delvenBenchPartners" + unique)).string();
    MFloatPointArray points;
    MFnMesh(mesh).getPoints(points);
    {
        std::ofstream file(input, std::ios::binary);
        for (const MFloatPoint& point : points)
            file.write(reinterpret_cast<const char*>(&point.x), 3 * sizeof(float));
    }
    Found found;
    const std::string text =
        interpreter + " " DELVEN_SOURCE_DIR "/bench/partnersByTree.py " + input + " " + output;
    for (int round = 0; round < kRounds; ++round) {
        double seconds = 0.0;
        FILE* process = popen(text.c_str(), "r");
        const bool isRead = process != nullptr && std::fscanf(process, "%lf", &seconds) == 1;
        if (process != nullptr) pclose(process);
        if (isRead) found.seconds = std::min(found.seconds, seconds);
    }
    std::ifstream file(output, std::ios::binary);
    for (int partner = 0; file.read(reinterpret_cast<char*>(&partner), sizeof partner);)
        found.partners.push_back(partner);
    std::filesystem::remove(input);
    std::filesystem::remove(output);
    return found;
}

}  // namespace

void printScipyTable() {
    constexpr double kLimit = 0.5;
    const std::string interpreter = python();
    if (interpreter.empty()) {
        std::printf("\nMirror partners by scipy: not measured, since no python3 here has scipy.\n");
        return;
    }
    std::printf("\nMirror partners of a head: milliseconds, ratio to scipy (limited at %d to %.1f)\n",
                kSizes.back(), kLimit);
    std::printf("%-28s %10s %12s %12s %8s %12s\n", "row", "vertices", "module", "scipy", "ratio",
                "differences");
    for (const bool isShuffled : {false, true}) {
        for (const int size : kSizes) {
            const CheckedForm form{CheckedForm::kHead, isShuffled};
            const MDagPath mesh = checkedMesh(size, form);
            const Found ours = findOurs(mesh);
            const Found theirs = findByScipy(interpreter, mesh);
            int differences =
                static_cast<int>(ours.partners.size()) - static_cast<int>(theirs.partners.size());
            for (std::size_t k = 0; k < std::min(ours.partners.size(), theirs.partners.size()); ++k)
                differences += ours.partners[k] != theirs.partners[k] ? 1 : 0;
            const double ratio = ours.seconds / theirs.seconds;
            std::printf("%-28s %10d %12.3f %12.3f %6.2f%s %12d%s\n", form.name().c_str(), size,
                        ours.seconds * 1e3, theirs.seconds * 1e3, ratio,
                        size == kSizes.back() && ratio > kLimit ? " !" : "  ", differences,
                        differences != 0 ? " !" : "");
        }
    }
}
