#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Mesh sizes, in vertices, at which every row is measured.
extern const std::vector<int> kSizes;

/// What a row does in one round, on the scene of its size. `state` lets it stop the clock around
/// preparations.
using Work = std::function<void(benchmark::State& state, int vertices)>;

/// A row of the module: its time against a floor, the fewest host calls that give the same result,
/// measured in the same run.
/// @param factor  how many times its floor the row may cost at the largest size
void addModuleRow(const std::string& name, const Work& module, const Work& floor, double factor = 1.3);

/// A row of the host alone: its time per vertex.
void addHostRow(const std::string& name, const Work& work);

/// Counters by which the work of a row about files says how much it did: the size of the file, and how many
/// numbers it read, if that is what its time is to be divided by.
extern const char* const kFileBytes;
extern const char* const kNumbers;

/// A row of the host about a file: its time against a floor measured in the same run, its time per byte or
/// per number, and its peak of memory against the size of the file. The sizes are those of the mesh in it.
/// @param floor   none: nothing of the row is limited
/// @param factor  how many times its floor the row may cost at the largest size
void addFileRow(const std::string& name, const Work& work, const Work& floor = {}, double factor = 0.0);

/// Prints Google Benchmark's lines as they come and keeps the best time of each row and size; the table
/// at the end compares them.
class TableReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void printTable() const;

  private:
    struct Best {
        double seconds;    // a round
        double megabytes;  // the peak of memory
        double fileBytes;
        double numbers;
    };
    Best best(const std::string& kind, const std::string& name, int size) const;
    void printModuleRows() const;
    void printHostRows() const;
    void printFileRows() const;

    std::map<std::string, Best> best_;  // by benchmark name
};
