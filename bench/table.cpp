#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "peakMemory.h"

const std::vector<int> kSizes{10'000, 100'000, 1'000'000};
const char* const kFileBytes = "file";
const char* const kNumbers = "numbers";

namespace {

// Factors that the rows are held to; the table marks what exceeds them.
constexpr double kModuleGrowth = 1.2;  // of the floor's growth, from size to size
constexpr double kHostGrowth = 1.5;    // of the growth in size
constexpr double kFileGrowth = 1.2;    // of the time per byte, to the largest size
constexpr double kFileMemory = 1.5;    // of the file's size, beside
constexpr double kFileMemoryBase = 100.0;
constexpr double kMegabyte = 1048576.0;
constexpr int kRepetitions = 5;  // the best of these counts
constexpr const char* kMemory = "MB";

enum class RowKind { kModule, kHost, kFile };

struct Row {
    std::string name;
    RowKind kind;
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
    rows().push_back({name, RowKind::kModule, factor});
    // Side by side, so that whatever else the machine does meets both alike.
    add("floor", name, floor);
    add("module", name, module);
}

void addHostRow(const std::string& name, const Work& work) {
    rows().push_back({name, RowKind::kHost, 0.0});
    add("host", name, work);
}

void addFileRow(const std::string& name, const Work& work, const Work& floor, double factor) {
    rows().push_back({name, RowKind::kFile, factor});
    if (floor) add("floor", name, floor);
    add("file", name, work);
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const std::string name = run.run_name.function_name;
        const double seconds = run.real_accumulated_time /
                               static_cast<double>(std::max<benchmark::IterationCount>(run.iterations, 1));
        const auto counter = [&run](const char* of) {
            const auto found = run.counters.find(of);
            return found == run.counters.end() ? std::nan("") : found->second.value;
        };
        const double megabytes = counter(kMemory);
        const auto [at, isNew] =
            best_.try_emplace(name, Best{seconds, megabytes, counter(kFileBytes), counter(kNumbers)});
        if (isNew) continue;
        at->second.seconds = std::min(at->second.seconds, seconds);
        // The first round makes the scene.
        at->second.megabytes = std::fmin(at->second.megabytes, megabytes);
    }
}

TableReporter::Best TableReporter::best(const std::string& kind, const std::string& name, int size) const {
    const auto found = best_.find(benchmarkName(kind, name, size));
    const double none = std::nan("");
    return found == best_.end() ? Best{none, none, none, none} : found->second;
}

void TableReporter::printTable() const {
    printModuleRows();
    printHostRows();
    printFileRows();
}

void TableReporter::printModuleRows() const {
    std::printf(
        "\nModule rows: milliseconds, ratio to the floor (limited at %d), growth of the ratio since the "
        "size before (at most %.1f), peak of memory in megabytes\n",
        kSizes.back(), kModuleGrowth);
    std::printf("%-28s %10s %12s %12s %8s %8s %8s %8s\n", "row", "vertices", "module", "floor", "ratio",
                "growth", "MB", "floor MB");
    for (const Row& row : rows()) {
        if (row.kind != RowKind::kModule) continue;
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
}

void TableReporter::printHostRows() const {
    std::printf(
        "\nHost rows: milliseconds, nanoseconds a vertex, growth against the growth in size (at most %.1f)\n",
        kHostGrowth);
    std::printf("%-28s %10s %12s %12s %8s\n", "row", "vertices", "time", "per vertex", "growth");
    for (const Row& row : rows()) {
        if (row.kind != RowKind::kHost) continue;
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

void TableReporter::printFileRows() const {
    std::printf(
        "\nFile rows: milliseconds, ratio to the floor, nanoseconds a byte or a number, their growth since "
        "the "
        "size before (at most %.1f at the largest), peak of memory in megabytes and its limit\n",
        kFileGrowth);
    std::printf("%-28s %10s %12s %12s %8s %8s %8s %8s %8s\n", "row", "file MB", "time", "floor", "ratio",
                "ns each", "growth", "MB", "limit");
    for (const Row& row : rows()) {
        if (row.kind != RowKind::kFile) continue;
        double before = std::nan("");
        for (const int size : kSizes) {
            const Best file = best("file", row.name, size);
            const Best floor = best("floor", row.name, size);
            const double ratio = file.seconds / floor.seconds;
            const double each = file.seconds / (std::isnan(file.numbers) ? file.fileBytes : file.numbers);
            const double growth = each / before;
            before = each;
            if (std::isnan(each)) continue;
            const bool isLimited = row.factor > 0.0;
            const bool isLast = size == kSizes.back();
            const double megabytes = file.fileBytes / kMegabyte;
            const double most = isLimited ? kFileMemory * megabytes + kFileMemoryBase : std::nan("");
            std::printf("%-28s %10.1f %12.3f %12.3f %6.2f%s %8.2f %6.2f%s %6.1f%s %8.1f\n", row.name.c_str(),
                        megabytes, file.seconds * 1e3, floor.seconds * 1e3, ratio,
                        mark(isLimited && isLast && ratio > row.factor), each * 1e9, growth,
                        mark(isLimited && isLast && growth > kFileGrowth), file.megabytes,
                        mark(file.megabytes > most), most);
        }
    }
}
