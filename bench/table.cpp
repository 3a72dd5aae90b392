#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "peakMemory.h"

const std::vector<int> kSizes{10'000, 100'000, 1'000'000};

namespace {

// Factors that the rows are held to; the table marks what exceeds them.
constexpr double kModuleGrowth = 1.2;  // of the floor's growth, from size to size
constexpr double kHostGrowth = 1.5;    // of the growth in size
constexpr int kRepetitions = 5;        // the best of these counts
constexpr const char* kMemory = "MB";

struct Row {
    std::string name;
    bool isModule;
    double factor = 0.0;  // of the floor, at the largest size
};

std::vector<Row>& rows() {
    static std::vector<Row> list;
    return list;
}

std::string benchmarkName(const std::string& kind, const std::string& name, int size) {
    return kind + '/' + name + '/' + std::to_string(size);
}

void add(const std::string& kind, const std::string& name, const Work& work) {
    for (const int size : kSizes) {
        benchmark::RegisterBenchmark(benchmarkName(kind, name, size).c_str(),
                                     [work, size](benchmark::State& state) {
                                         const PeakMemory memory;
                                         for ([[maybe_unused]] auto round : state)
                                             work(state, size);
                                         state.counters[kMemory] = memory.megabytes();
                                     })
            ->Unit(benchmark::kMillisecond)
            ->MinTime(0.05)
            ->Repetitions(kRepetitions)
            ->ReportAggregatesOnly(false);
    }
}

const char* mark(bool isExceeded) {
    return isExceeded ? " !" : "  ";
}

}  // namespace

void addModuleRow(const std::string& name, const Work& module, const Work& floor, double factor) {
    rows().push_back({name, true, factor});
    // Side by side, so that whatever else the machine does meets both alike.
    add("floor", name, floor);
    add("module", name, module);
}

void addHostRow(const std::string& name, const Work& work) {
    rows().push_back({name, false, 0.0});
    add("host", name, work);
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const std::string name = run.run_name.function_name;
        const double seconds = run.real_accumulated_time /
                               static_cast<double>(std::max<benchmark::IterationCount>(run.iterations, 1));
        const auto memory = run.counters.find(kMemory);
        const double megabytes = memory == run.counters.end() ? std::nan("") : memory->second.value;
        const auto [at, isNew] = best_.try_emplace(name, Best{seconds, megabytes});
        if (isNew) continue;
        at->second.seconds = std::min(at->second.seconds, seconds);
        // The first round makes the scene.
        at->second.megabytes = std::fmin(at->second.megabytes, megabytes);
    }
}

void TableReporter::printTable() const {
    const auto best = [&](const std::string& kind, const std::string& name, int size) {
        const auto found = best_.find(benchmarkName(kind, name, size));
        return found == best_.end() ? Best{std::nan(""), std::nan("")} : found->second;
    };
    std::printf(
        "\nModule rows: milliseconds, ratio to the floor (limited at %d), growth of the ratio since the "
        "size before (at most %.1f), peak of memory in megabytes\n",
        kSizes.back(), kModuleGrowth);
    std::printf("%-28s %10s %12s %12s %8s %8s %8s %8s\n", "row", "vertices", "module", "floor", "ratio",
                "growth", "MB", "floor MB");
    for (const Row& row : rows()) {
        if (!row.isModule) continue;
        double before = std::nan("");
        for (const int size : kSizes) {
            const Best module = best("module", row.name, size);
            const Best floor = best("floor", row.name, size);
            const double ratio = module.seconds / floor.seconds;
            const double growth = ratio / before;
            before = ratio;
            if (std::isnan(ratio)) continue;
            std::printf("%-28s %10d %12.3f %12.3f %6.2f%s %6.2f%s %8.1f %8.1f\n", row.name.c_str(), size,
                        module.seconds * 1e3, floor.seconds * 1e3, ratio,
                        mark(size == kSizes.back() && ratio > row.factor), growth,
                        mark(growth > kModuleGrowth), module.megabytes, floor.megabytes);
        }
    }
    std::printf(
        "\nHost rows: milliseconds, nanoseconds a vertex, growth against the growth in size (at most %.1f)\n",
        kHostGrowth);
    std::printf("%-28s %10s %12s %12s %8s\n", "row", "vertices", "time", "per vertex", "growth");
    for (const Row& row : rows()) {
        if (row.isModule) continue;
        double before = std::nan("");
        for (const int size : kSizes) {
            const double each = best("host", row.name, size).seconds / size;
            const double growth = each / before;
            before = each;
            if (std::isnan(each)) continue;
            std::printf("%-28s %10d %12.3f %12.1f %6.2f%s\n", row.name.c_str(), size, each * size * 1e3,
                        each * 1e9, growth, mark(growth > kHostGrowth));
        }
    }
}
