// docs/commands.md is right about the module: its examples run and print what it says, their Python form
// makes the same calls, and the page has each command with each of its flags.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "fixtures.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kTool = "DELVENCompareDraggerToolContext";

/// A script of the page, what the page says that it prints, and the same in Python.
struct Example {
    std::string script;
    std::string printed;
    std::string python;
};

/// A row of a table of flags.
struct FlagRow {
    std::string shortName;
    std::string longName;
    std::string argument;

    bool operator==(const FlagRow& other) const {
        return shortName == other.shortName && longName == other.longName && argument == other.argument;
    }
    friend void PrintTo(const FlagRow& row, std::ostream* out) {
        *out << row.shortName << ' ' << row.longName << ' ' << row.argument;
    }
};

/// What stands below one heading of the second level.
struct Section {
    std::string title;
    std::string text;  // without the examples
    std::vector<Example> examples;
    std::vector<FlagRow> flags;

    friend void PrintTo(const Section& section, std::ostream* out) { *out << section.title; }
};

bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

/// The lines up to the end of a block of code.
std::string readBlock(std::istream& page) {
    std::string text;
    for (std::string line; std::getline(page, line) && line != "```";)
        text += line + '\n';
    return text;
}

/// Reads "| `-i` | `-index` | int | ...".
FlagRow readFlagRow(const std::string& line) {
    FlagRow row;
    std::string bar;
    std::istringstream words(line);
    words >> bar >> row.shortName >> bar >> row.longName >> bar >> row.argument;
    for (std::string* name : {&row.shortName, &row.longName})
        *name = name->substr(1, name->size() - 2);
    return row;
}

std::vector<Section> readPage() {
    std::ifstream page(std::filesystem::path(DELVEN_SOURCE_DIR) / "docs" / "commands.md");
    std::vector<Section> sections(1);
    for (std::string line; std::getline(page, line);) {
        Section& section = sections.back();
        if (startsWith(line, "## ")) {
            sections.push_back({line.substr(3), "", {}, {}});
        } else if (line == "```mel") {
            section.examples.push_back({readBlock(page), "", ""});
        } else if (line == "```python" && !section.examples.empty()) {
            section.examples.back().python = readBlock(page);
        } else if (line == "```" && !section.examples.empty()) {
            section.examples.back().printed = readBlock(page);
        } else {
            if (startsWith(line, "| `-")) section.flags.push_back(readFlagRow(line));
            section.text += line + '\n';
        }
    }
    return sections;
}

const std::vector<Section>& page() {
    static const std::vector<Section> sections = readPage();
    return sections;
}

/// The sections of commands and of the tool, in the order of the page.
std::vector<Section> commandSections() {
    std::vector<Section> sections;
    for (const Section& section : page()) {
        if (startsWith(section.title, "dv_") || section.title == kTool) sections.push_back(section);
    }
    return sections;
}

/// The script that makes the scene of the examples.
std::string setupScript() {
    for (const Section& section : page()) {
        if (section.title == "The scene of the examples") return section.examples.at(0).script;
    }
    return "error(\"The page has no scene\")";
}

/// The flags that a help text lists, with the arguments in the words of the page.
std::vector<FlagRow> flagsOfHelp(const std::string& help) {
    std::vector<FlagRow> rows;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line) && !startsWith(line, "Usage:");) {
        const std::size_t start = line.find(" -");
        if (start == std::string::npos || startsWith(line, "Description:")) continue;
        FlagRow row;
        std::istringstream words(line.substr(start));
        words >> row.shortName >> row.longName >> row.argument;
        row.argument = row.argument == "<n/a>" ? "none" : row.argument.substr(1, row.argument.size() - 2);
        rows.push_back(row);
    }
    return rows;
}

/// A call of a command of the module, the same for both languages.
struct ModuleCall {
    std::string command;
    std::map<std::string, Strings> flags;  // by their long names
    Strings nodes;

    bool operator==(const ModuleCall& other) const {
        return command == other.command && flags == other.flags && nodes == other.nodes;
    }
    friend void PrintTo(const ModuleCall& call, std::ostream* out) {
        *out << call.command << ::testing::PrintToString(call.flags) << ::testing::PrintToString(call.nodes);
    }
};

/// What a flag without argument is given.
constexpr const char* kTrue = "$True";

/// The row of a flag on the page, by either of its names; an empty one where there is none.
FlagRow flagOf(const std::string& command, const std::string& name) {
    for (const Section& section : page()) {
        for (const FlagRow& row : section.flags) {
            if (section.title == command && (row.shortName == name || row.longName == name)) return row;
        }
    }
    return {};
}

/// The parts of code between separators outside quotes and brackets, up to where the call that it begins in
/// ends.
Strings partsOf(const std::string& code, const std::string& separators) {
    Strings parts(1);
    char quote = '\0';
    int depth = 0;
    for (const char c : code) {
        if (quote == '\0') depth += (c == '(' || c == '[') - (c == ')' || c == ']');
        const bool isOutside = quote == '\0' && depth == 0;
        if (depth < 0 || (isOutside && (c == ';' || c == '`'))) break;
        if (isOutside && separators.find(c) != std::string::npos) {
            parts.emplace_back();
            continue;
        }
        if (c == '"' || c == '\'') quote = quote == '\0' ? c : (quote == c ? '\0' : quote);
        parts.back() += c;
    }
    parts.erase(std::remove(parts.begin(), parts.end(), ""), parts.end());
    return parts;
}

/// A value without quotes, blanks and parentheses. A variable keeps the "$" that it has in MEL, or gets it.
std::string plainValue(const std::string& value, bool isPython) {
    std::string text;
    char quote = '\0';
    char previous = ' ';
    for (const char c : value) {
        if (c == quote || (quote == '\0' && (c == '"' || c == '\''))) {
            quote = quote == '\0' ? c : '\0';
        } else if (quote != '\0' || std::string(" \n()").find(c) == std::string::npos) {
            const bool startsName = std::isalpha(static_cast<unsigned char>(c)) != 0 &&
                                    std::isalnum(static_cast<unsigned char>(previous)) == 0 &&
                                    previous != '_';
            if (isPython && quote == '\0' && startsName) text += '$';
            text += c;
        }
        previous = c;
    }
    return text;
}

ModuleCall melCall(const std::string& command, const std::string& code) {
    ModuleCall call{command, {}, {}};
    const Strings words = partsOf(code, " \n");
    for (std::size_t k = 0; k < words.size(); ++k) {
        if (words[k][0] != '-') {
            call.nodes.push_back(plainValue(words[k], false));
            continue;
        }
        const FlagRow row = flagOf(command, words[k]);
        const bool hasValue = row.argument != "none" && k + 1 < words.size();
        call.flags[row.longName].push_back(hasValue ? plainValue(words[++k], false) : kTrue);
    }
    return call;
}

ModuleCall pythonCall(const std::string& command, const std::string& code) {
    ModuleCall call{command, {}, {}};
    for (const std::string& part : partsOf(code, ",")) {
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos) {
            call.nodes.push_back(plainValue(part, true));
            continue;
        }
        const std::string name = plainValue(part.substr(0, equals), false);
        EXPECT_TRUE(name != "import" && name != "del") << name << " is a word of the language";
        const std::string value = part.substr(equals + 1);
        const bool isList = value[0] == '[';
        for (const std::string& one : isList ? partsOf(value.substr(1), ",") : Strings{value})
            call.flags[flagOf(command, '-' + name).longName].push_back(plainValue(one, true));
    }
    return call;
}

/// The calls of the module in a script, in its order.
/// @param before, behind  patterns of what stands on either side of a command
std::vector<ModuleCall> callsIn(const std::string& script, const std::string& before,
                                const std::string& behind,
                                ModuleCall (*read)(const std::string&, const std::string&)) {
    const std::regex name(before + "(dv_\\w+|" + kTool + ")" + behind);
    std::vector<ModuleCall> calls;
    for (std::sregex_iterator at(script.begin(), script.end(), name), end; at != end; ++at)
        calls.push_back(read((*at)[1], at->suffix()));
    return calls;
}

class PageSection : public ::testing::TestWithParam<Section> {};

TEST_P(PageSection, HasExamplesThatPrintWhatItSays) {
    EXPECT_FALSE(GetParam().examples.empty());
    // Examples write files into the current folder.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(scratchFile("."));
    for (const Example& example : GetParam().examples) {
        Scene scene;
        const Outcome setup = scene.run(setupScript());
        EXPECT_TRUE(setup.ok && setup.warnings.empty()) << ::testing::PrintToString(setup.errors);
        const Outcome outcome = scene.run(example.script);
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.errors, Strings());
        EXPECT_EQ(outcome.warnings, Strings());
        EXPECT_EQ(outcome.printed, example.printed) << example.script;
    }
    std::filesystem::current_path(before);
}

TEST_P(PageSection, HasItsExamplesInPythonToo) {
    for (const Example& example : GetParam().examples) {
        const std::string script = std::regex_replace(example.script, std::regex("//[^\n]*"), "");
        const std::vector<ModuleCall> calls = callsIn(script, "", "", melCall);
        EXPECT_FALSE(calls.empty());
        EXPECT_EQ(callsIn(example.python, "cmds\\.", "\\(", pythonCall), calls);
    }
}

TEST_P(PageSection, ListsTheFlagsOfTheHelpText) {
    const Section& section = GetParam();
    if (section.title == kTool) {
        EXPECT_TRUE(section.flags.empty()) << "its syntax is the host's";
        return;
    }
    Scene scene;
    const std::vector<FlagRow> shown = flagsOfHelp(scene.mel(section.title + " -h").toString());
    EXPECT_EQ(section.flags.size(), shown.size());
    for (const FlagRow& row : shown) {
        const auto listed =
            std::find_if(section.flags.begin(), section.flags.end(),
                         [&](const FlagRow& other) { return other.shortName == row.shortName; });
        if (listed != section.flags.end()) {
            EXPECT_EQ(*listed, row);
        } else {
            // Where the help text has another name for a flag, a word about it must do.
            EXPECT_NE(section.text.find('`' + row.shortName + '`'), std::string::npos) << row.shortName;
        }
    }
}

TEST_P(PageSection, ListsFlagsThatTheCommandTakes) {
    Scene scene;
    for (const FlagRow& row : GetParam().flags) {
        for (const std::string& name : {row.shortName, row.longName}) {
            const std::string flag = name + (row.argument == "none" ? "" : " 1");
            const std::string call = GetParam().title + ' ' + (row.shortName == "-h" ? name : flag + " -h");
            const Outcome outcome = scene.run(call);
            EXPECT_TRUE(outcome.ok) << call << ::testing::PrintToString(outcome.errors);
            EXPECT_TRUE(startsWith(outcome.value.toString(), "\nDescription: ")) << call;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, PageSection, ::testing::ValuesIn(commandSections()),
                         [](const auto& tested) { return tested.param.title; });

TEST(CommandsPage, HasEachCommandInTheOrderOfRegistration) {
    Scene scene;
    Strings registered = scene.mel("pluginInfo -query -command \"DELVENTools\"").toStringArray();
    registered.push_back(kTool);
    Strings titles;
    for (const Section& section : commandSections())
        titles.push_back(section.title);
    EXPECT_EQ(titles, registered);
}

}  // namespace
