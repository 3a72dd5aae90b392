// docs/commands.md is right about the module: its examples run and print what it says, and it has each
// command with each of its flags.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "fixtures.h"
#include "scratchFiles.h"

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kTool = "DELVENCompareDraggerToolContext";

/// A script of the page, and what the page says that it prints.
struct Example {
    std::string script;
    std::string printed;
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
            section.examples.push_back({readBlock(page), ""});
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
