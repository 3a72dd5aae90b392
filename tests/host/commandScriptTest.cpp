// Runs tests/mel/commands/*.mel. Blank lines separate the cases. Each case has a fresh scene in which its
// lines are run one by one. What a line has to show stands behind it:
//
//   // result: text     the value, as a result line prints it; without this comment any value will do
//   // error: text      the line fails with this error
//   // warning: text    a warning is shown
//
// A comment line "// cube: name" puts a shaded cube into the scene. A line that fails may not change the
// scene; one that makes an undo entry is undone and redone on the spot, and both must be exact.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "host/commandsFixture.h"

namespace commandstest {
namespace {

struct ScriptCase {
    std::string name;
    std::vector<std::string> lines;
};

void PrintTo(const ScriptCase& scriptCase, std::ostream* stream) {
    for (const std::string& line : scriptCase.lines)
        *stream << line << '\n';
}

std::vector<ScriptCase> casesOf(const std::filesystem::path& path) {
    std::vector<ScriptCase> cases;
    std::ifstream file(path);
    bool isOpen = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty()) {
            isOpen = false;
            continue;
        }
        if (!isOpen) cases.push_back({path.stem().string() + '_' + std::to_string(number), {}});
        isOpen = true;
        cases.back().lines.push_back(line);
    }
    return cases;
}

std::vector<ScriptCase> allCases() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(DELVEN_SOURCE_DIR "/tests/mel/commands"))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<ScriptCase> cases;
    for (const auto& path : paths) {
        std::vector<ScriptCase> more = casesOf(path);
        std::move(more.begin(), more.end(), std::back_inserter(cases));
    }
    return cases;
}

std::optional<std::string> announced(const std::string& line, const std::string& kind) {
    const std::string mark = "// " + kind + ":";
    const std::size_t at = line.find(mark);
    if (at == std::string::npos) return std::nullopt;
    const std::size_t start = line.find_first_not_of(' ', at + mark.size());
    return start == std::string::npos ? std::string() : line.substr(start);
}

void checkUndo(Host& host, const std::string& before, const std::string& line) {
    const std::string after = host.dump();
    ASSERT_TRUE(host.registry.undo()) << line;
    EXPECT_EQ(dumpDifference(before, host.dump()), "") << "after undo of: " << line;
    ASSERT_TRUE(host.registry.redo()) << line;
    EXPECT_EQ(dumpDifference(after, host.dump()), "") << "after redo of: " << line;
}

void runLine(Host& host, const std::string& line) {
    const std::string before = host.dump();
    const std::size_t entries = host.undoSize();
    const mel::RunResult result = host.run(line);
    const auto error = announced(line, "error");
    const auto warning = announced(line, "warning");
    EXPECT_EQ(host.shown.errors, error ? std::vector{*error} : std::vector<std::string>()) << line;
    EXPECT_EQ(host.shown.warnings, warning ? std::vector{*warning} : std::vector<std::string>()) << line;
    if (const auto value = announced(line, "result")) {
        EXPECT_EQ(result.value.toString(), *value) << line;
    }
    if (!result.ok) {
        EXPECT_EQ(dumpDifference(before, host.dump()), "") << "after the failure of: " << line;
        EXPECT_EQ(host.undoSize(), entries) << line;
    } else if (host.undoSize() == entries + 1) {
        checkUndo(host, before, line);
    }
}

class CommandScript : public testing::TestWithParam<ScriptCase> {};

TEST_P(CommandScript, ShowsWhatItAnnouncesAndUndoesExactly) {
    Host host;
    for (const std::string& line : GetParam().lines) {
        if (const auto name = announced(line, "cube")) {
            host.addCube(*name);
        } else {
            runLine(host, line);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandScript, testing::ValuesIn(allCases()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace commandstest
