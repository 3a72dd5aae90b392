// Time against size: the module's work beside its floor, and the host's own. Google Benchmark's flags
// (--benchmark_filter=...) choose rows.

#include <benchmark/benchmark.h>

#include <string>

#include "rows.h"
#include "table.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    addTargetDataRows();
    addDataFileRows();
    addExtractionRows();
    addEditRows();
    addSceneRows();
    addSceneFileRows();
    addVertexOrderRows();
    addSculptRows();
    addSymmetryRows();
    addClosestFaceRows();
    addMirrorRows();
    addWeightRows();
    addRegionRows();
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTable();
    const std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.empty() || filter == "." || filter.find("scipy") != std::string::npos) printScipyTable();
    return 0;
}
