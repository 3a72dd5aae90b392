// Runs tests/mel/scripts/*.mel. A file is a list of cases with blank lines between them, or, when its first
// line is
// "// each line", one case a line. A case says at the ends of its lines what it has to show, in order:
//
//   // expect: text     a line of printed text        // result: text     the value that the case ends with
//   // error: 2.5: text an error at line 2, column 5  // warning: 2.5: text   // info: text
//
// Lines count from the first line of the case. What is not announced may not appear.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "mel/lexer.h"
#include "mel/scriptHost.h"

namespace host::mel::test {
namespace {

struct ScriptCase {
    std::string name;
    std::string text;
    std::string printed;
    std::vector<std::string> errors;
    std::vector<std::string> warnings;
    std::vector<std::string> infos;
    std::vector<std::string> results;
};

void takeExpectation(ScriptCase& scriptCase, const std::string& line) {
    const auto after = [&](const std::string& mark) -> std::optional<std::string> {
        const std::size_t found = line.find("// " + mark + ":");
        if (found == std::string::npos) return std::nullopt;
        const std::size_t start = found + mark.size() + 4;
        return line.substr(start + (start < line.size() ? 1 : 0));
    };
    if (const auto text = after("expect")) scriptCase.printed += *text + "\n";
    if (const auto text = after("error")) scriptCase.errors.push_back(*text);
    if (const auto text = after("warning")) scriptCase.warnings.push_back(*text);
    if (const auto text = after("info")) scriptCase.infos.push_back(*text);
    if (const auto text = after("result")) scriptCase.results.push_back(*text);
}

void readCases(const std::filesystem::path& path, std::vector<ScriptCase>& cases) {
    std::ifstream file(path);
    std::string line;
    bool eachLine = false;
    bool open = false;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line == "// each line") {
            eachLine = true;
        } else if (line.empty()) {
            open = false;
        } else {
            if (!open || eachLine) {
                cases.emplace_back();
                cases.back().name = path.stem().string() + "_" + std::to_string(number);
            }
            open = true;
            cases.back().text += line + "\n";
            takeExpectation(cases.back(), line);
        }
    }
}

std::vector<ScriptCase> allCases() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(DELVEN_SOURCE_DIR "/tests/mel/scripts"))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<ScriptCase> cases;
    for (const auto& file : files)
        readCases(file, cases);
    return cases;
}

void PrintTo(const ScriptCase& scriptCase, std::ostream* stream) {
    *stream << scriptCase.text;
}

class MelScript : public testing::TestWithParam<ScriptCase> {};

TEST_P(MelScript, ShowsWhatItAnnounces) {
    const ScriptCase& scriptCase = GetParam();
    RecordedOutput output;
    EchoCommands commands(output);
    Interpreter interpreter(commands, output);
    RunOptions options;
    options.echoResult = !scriptCase.results.empty();

    const bool endsTooEarly = interpreter.endOf(scriptCase.text) == TextEnd::TooEarly;
    const RunResult result = interpreter.run(scriptCase.text, "case.mel", options);

    std::string printed = output.printed;
    if (!printed.empty() && printed.back() != '\n') printed += '\n';
    EXPECT_EQ(printed, scriptCase.printed);
    EXPECT_EQ(output.errors, scriptCase.errors);
    EXPECT_EQ(output.warnings, scriptCase.warnings);
    EXPECT_EQ(output.infos, scriptCase.infos);
    EXPECT_EQ(output.results, scriptCase.results);
    EXPECT_FALSE(result.ok && result.error.shown);
    EXPECT_FALSE(result.ok && endsTooEarly);
    EXPECT_FALSE(result.ok && BracketCount().isOpenIn(scriptCase.text));
}

INSTANTIATE_TEST_SUITE_P(Scripts, MelScript, testing::ValuesIn(allCases()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace host::mel::test
