// Seeded random walks over the commands of the host and of the module.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "walk/child.h"
#include "walk/steps.h"

namespace {

using namespace delven::walk;

constexpr const char* kUsage =
    "usage: delvenwalk [-seed N] [-seeds COUNT | -seconds N] [-lines COUNT] [-keep FOLDER]\n"
    "       delvenwalk -replay FILE_OR_FOLDER...\n"
    "\n"
    "  -seed N         the first seed (1)\n"
    "  -seeds COUNT    how many seeds (20)\n"
    "  -seconds N      as many seeds as fit in this time\n"
    "  -lines COUNT    lines a seed (120)\n"
    "  -keep FOLDER    write the shortest lines of each finding to FOLDER/walk-<seed>.mel\n"
    "  -replay ...     run the lines of these files, with the same checks\n"
    "  -show SEED      print the lines of one seed instead\n";

struct Options {
    unsigned int firstSeed = 1;
    int seeds = 20;
    int seconds = 0;
    int lines = 120;
    std::string keep;
    bool shows = false;
    std::vector<std::string> files;
};

Line drawnOnce(Draw& draw) {
    constexpr int kManyNodes = 70;
    if (draw.nodeCount() > kManyNodes) return {"delete " + draw.node("transform") + ' ' + draw.anyNode()};
    if (draw.oneIn(6)) return {draw.anyOf({"undo", "undo", "redo"})};
    const bool isOurs = draw.has("blendShape") ? draw.oneIn(2) : draw.oneIn(10);
    if (!draw.has("blendShape") && draw.oneIn(8)) return {blendShapeOnNew(draw)};
    if (isOurs && !draw.oneIn(20)) {
        // Most of our calls are exact only where no target mesh is connected.
        const std::string line = draw.disconnection();
        if (!line.empty()) return {line};
    }
    const std::vector<Step>& steps = isOurs ? moduleSteps() : hostSteps();
    const Step& step = steps[static_cast<std::size_t>(draw.below(static_cast<int>(steps.size())))];
    return lineOf(step, draw);
}

/// What lacks a node is worth a try now and then.
Line drawn(Draw& draw) {
    Line line = drawnOnce(draw);
    for (int turn = 0; turn < 5 && line.text.find(Draw::kMissing) != std::string::npos; ++turn)
        line = drawnOnce(draw);
    return line;
}

std::vector<Line> startOf(unsigned int seed) {
    if (seed % 3 == 0) return {};
    std::vector<Line> lines = faceScene();
    if (seed % 3 == 2) {
        lines.push_back(
            {"select -clear; string $j = `joint -p -1 0 0`; joint -p 1 0.5 0; skinCluster $j base; select "
             "-clear"});
    }
    return lines;
}

Report walkedFrom(unsigned int seed, int count) {
    const std::vector<Line> start = startOf(seed);
    std::optional<Draw> draw;
    std::size_t at = 0;
    return walked([&](Scene& scene) -> std::optional<Line> {
        if (!draw) draw.emplace(seed, scene.graph());
        if (at == static_cast<std::size_t>(count)) return std::nullopt;
        ++at;
        return at <= start.size() ? start[at - 1] : drawn(*draw);
    });
}

std::string written(const std::vector<Line>& lines) {
    std::string text;
    for (const Line& line : lines)
        text += line.written() + '\n';
    return text;
}

void show(const Finding& finding) {
    constexpr std::size_t kMuch = 6000;
    std::cout << "finding: " << finding.kind << '\n' << finding.text.substr(0, kMuch) << '\n';
}

void explain(unsigned int seed, const Report& report, const std::string& keep) {
    constexpr int kTries = 300;
    std::cout << "\nseed " << seed << ", line " << report.lines.size() << '\n';
    const std::vector<Line> lines = shrunk(report, kTries);
    const std::string text = written(lines);
    const Report smallest = walked(lines);
    show(smallest.finding ? *smallest.finding : *report.finding);
    std::cout << "by these lines:\n" << text << std::flush;
    if (!keep.empty()) std::ofstream(keep + "/walk-" + std::to_string(seed) + ".mel") << text;
}

int walkSeeds(const Options& options) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    long lines = 0;
    long failures = 0;
    int cycles = 0;
    int found = 0;
    unsigned int seed = options.firstSeed;
    const auto goesOn = [&] {
        return options.seconds > 0 ? std::chrono::steady_clock::now() < end
                                   : seed < options.firstSeed + static_cast<unsigned int>(options.seeds);
    };
    for (; goesOn() && found < 10; ++seed) {
        const Report report = walkedFrom(seed, options.lines);
        lines += static_cast<long>(report.lines.size());
        failures += report.failures;
        cycles += report.hadCycle ? 1 : 0;
        if (!report.finding) continue;
        ++found;
        explain(seed, report, options.keep);
    }
    std::cout << "seeds " << options.firstSeed << " to " << seed - 1 << ", " << lines << " lines ("
              << failures << " of them failed, as they may), " << cycles
              << " seeds compared up to a cycle of nodes only, " << found << " findings\n";
    return found == 0 ? 0 : 1;
}

int showLines(const Options& options) {
    const Report report = walkedFrom(options.firstSeed, options.lines);
    std::cout << written(report.lines);
    return 0;
}

std::vector<std::string> filesIn(const std::string& path) {
    if (!std::filesystem::is_directory(path)) return {path};
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        files.push_back(entry.path().string());
    return files;
}

int replay(const std::vector<std::string>& paths) {
    int found = 0;
    int count = 0;
    for (const std::string& path : paths) {
        for (const std::string& file : filesIn(path)) {
            std::ifstream stream(file);
            std::vector<Line> lines;
            for (std::string line; std::getline(stream, line);)
                lines.push_back(Line::read(line));
            ++count;
            const Report report = walked(lines);
            if (!report.finding) continue;
            ++found;
            std::cout << file << '\n';
            show(*report.finding);
        }
    }
    std::cout << count << " files, " << found << " findings\n";
    return found == 0 && count > 0 ? 0 : 1;
}

/// @return false when they are wrong
bool readOptions(const std::vector<std::string>& words, Options& options) {
    for (std::size_t k = 0; k < words.size(); ++k) {
        if (words[k] == "-replay") {
            options.files.assign(words.begin() + static_cast<std::ptrdiff_t>(k) + 1, words.end());
            return !options.files.empty();
        }
        if (k + 1 == words.size()) return false;
        const std::string& value = words[++k];
        if (words[k - 1] == "-keep") {
            options.keep = value;
            continue;
        }
        const int number = std::atoi(value.c_str());
        if (number <= 0) return false;
        if (words[k - 1] == "-seed")
            options.firstSeed = static_cast<unsigned int>(number);
        else if (words[k - 1] == "-seeds")
            options.seeds = number;
        else if (words[k - 1] == "-seconds")
            options.seconds = number;
        else if (words[k - 1] == "-lines")
            options.lines = number;
        else if (words[k - 1] == "-show")
            options.firstSeed = static_cast<unsigned int>(number), options.shows = true;
        else
            return false;
    }
    return true;
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!readOptions({words + 1, words + count}, options)) {
        std::cerr << kUsage;
        return 2;
    }
    if (!options.files.empty()) return replay(options.files);
    return options.shows ? showLines(options) : walkSeeds(options);
}
