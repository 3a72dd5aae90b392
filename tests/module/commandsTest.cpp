// Every command of the module with every way in which a call can end, and what undo and redo make of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <sstream>
#include <utility>

#include "commandTable.h"
#include "geometry/textFile.h"
#include "support/variants.h"

namespace {

std::vector<CommandTable>& tables() {
    static std::vector<CommandTable> all;
    return all;
}

}  // namespace

const std::vector<CommandTable>& commandTables() {
    return tables();
}

Call failingCall(std::string name, std::string setup, std::string text, Strings errors, std::string residue) {
    return {std::move(name),   std::move(setup),  std::move(text), false, {},
            std::move(errors), std::move(residue)};
}

Call refusedCall(std::string name, std::string setup, std::string text, std::string error,
                 std::string residue) {
    return {std::move(name),    std::move(setup),  std::move(text), true, 0,
            {std::move(error)}, std::move(residue)};
}

Call goodCall(std::string name, std::string setup, std::string text, Value result, std::string residue) {
    return {std::move(name),   std::move(setup), std::move(text), true, std::move(result), {},
            std::move(residue)};
}

std::vector<Call> refusedObjects(const std::string& name, const std::string& command) {
    return {
        failingCall(name + "OfNothing", "select -clear;", command, {"No blend shape node provided."}),
        failingCall(name + "OfAMesh", "", command + " base", {"The node is not a blend shape node."}),
        failingCall(name + "OfNoObject", "", command + " ghost",
                    {"No object matches name: ghost", "Error getting objects"}),
        failingCall(name + "UnknownFlag", "", command + " -x bs",
                    {"Invalid flag '-x'.", "Error getting objects"}),
    };
}

/// The help text of a command as helpTexts.txt has it: below a line with its name, up to the next such line.
std::string expectedHelp(const std::string& command) {
    static const std::string all =
        host::geometry::readTextFile(DELVEN_SOURCE_DIR "/tests/module/helpTexts.txt").text;
    const std::string heading = "==== " + command + '\n';
    const std::size_t found = all.find(heading);
    if (found == std::string::npos) return {};
    const std::size_t start = found + heading.size();
    const std::size_t end = std::min(all.find("\n==== ", start), all.size() - 1);
    return all.substr(start, end - start);
}

CommandRows::CommandRows(std::string command, std::vector<Call> calls, Strings helpArguments) {
    std::string help = expectedHelp(command);
    CommandTable table{std::move(command), std::move(calls), std::move(help), std::move(helpArguments)};
    const auto place =
        std::lower_bound(tables().begin(), tables().end(), table,
                         [](const auto& left, const auto& right) { return left.command < right.command; });
    tables().insert(place, std::move(table));
}

void PrintTo(const Call& call, std::ostream* out) {
    *out << call.name << ": " << call.text;
}

void PrintTo(const CommandTable& table, std::ostream* out) {
    *out << table.command;
}

namespace {

std::vector<Call> allCalls() {
    std::vector<Call> calls;
    for (const CommandTable& table : commandTables())
        calls.insert(calls.end(), table.calls.begin(), table.calls.end());
    return calls;
}

/// What a call shows. Where the host does not call a command whose arguments it could not parse, the command
/// does not say after the host that it got no objects.
Strings shownErrors(const Call& call) {
    Strings errors = call.errors;
    if (variant().refusesArgumentsFirst && errors.size() == 2 && errors.back() == "Error getting objects")
        errors.pop_back();
    return errors;
}

class EveryCall : public ::testing::TestWithParam<Call> {};

TEST_P(EveryCall, AnswersAndIsUndoneAsPromised) {
    const Call& call = GetParam();
    std::string restored;
    {
        Scene expected;
        addBlendShape(expected);
        if (!call.setup.empty()) expected.mel(call.setup);
        if (!call.residue.empty()) expected.mel(call.residue);
        restored = expected.dump();
    }
    Scene scene;
    addBlendShape(scene);
    if (!call.setup.empty()) scene.mel(call.setup);
    scene.mel("flushUndo");
    const Outcome outcome = scene.run(call.text);
    EXPECT_EQ(outcome.ok, call.ok);
    EXPECT_EQ(outcome.errors, shownErrors(call));
    EXPECT_EQ(outcome.echoed, Strings()) << "what a command runs is its own affair";
    if (call.ok) {
        EXPECT_EQ(outcome.value, call.result) << outcome.value.toString();
    }
    const std::string after = scene.dump();
    if (!call.errors.empty()) {
        EXPECT_EQ(scene.changes(restored), "") << "a call that reports an error has no mesh to show for it";
    }

    // A failed call leaves nothing to undo; one that only reported an error may be queued and must undo
    // nothing.
    scene.run("undo");
    EXPECT_EQ(scene.changes(restored), "");
    EXPECT_EQ(scene.run("redo").errors, Strings());
    EXPECT_EQ(scene.changes(after), "");
    EXPECT_EQ(scene.run("undo").errors, Strings());
    EXPECT_EQ(scene.changes(restored), "");
}

INSTANTIATE_TEST_SUITE_P(Module, EveryCall, ::testing::ValuesIn(allCalls()), [](const auto& tested) {
    const Call& call = tested.param;
    return call.text.substr(0, call.text.find(' ')) + '_' + call.name;
});

class EveryHelp : public ::testing::TestWithParam<CommandTable> {};

TEST_P(EveryHelp, IsTheOnlyThingAHelpCallDoes) {
    Scene scene;
    addBlendShape(scene);
    const std::string before = scene.dump();
    for (const std::string& arguments : GetParam().helpArguments) {
        const Outcome outcome = scene.run(GetParam().command + ' ' + arguments);
        EXPECT_TRUE(outcome.ok);
        EXPECT_TRUE(outcome.errors.empty());
        EXPECT_EQ(outcome.value.toString(), GetParam().help);
        EXPECT_EQ(scene.changes(before), "");
        EXPECT_EQ(scene.run("undo").errors, Strings());
        EXPECT_EQ(scene.run("redo").errors, Strings());
        EXPECT_EQ(scene.changes(before), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Module, EveryHelp, ::testing::ValuesIn(commandTables()),
                         [](const auto& tested) { return tested.param.command; });

/// A use of each flag in a help text, and whether it says that the flag may come again.
std::vector<std::pair<std::string, bool>> flagUses(const std::string& help) {
    std::vector<std::pair<std::string, bool>> uses;
    std::istringstream lines(help.substr(help.find("this message")));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name, longName, type;
        if (!(words >> name >> longName >> type) || name[0] != '-' || longName[0] != '-') continue;
        // The help text shows this one by another name.
        if (name == "-add") name = "-aw";
        const char* const argument = type == "<n/a>" ? " " : type == "<string>" ? " \"a\" " : " 1 ";
        uses.emplace_back(name + argument, line.find("(multi use)") != std::string::npos);
    }
    return uses;
}

TEST_P(EveryHelp, TellsWhichFlagsMayBeUsedAgain) {
    Scene scene;
    for (const auto& [use, isMultiUse] : flagUses(GetParam().help)) {
        const Strings errors = scene.run(GetParam().command + ' ' + use + use).errors;
        const std::string refused =
            "Flag '" + use.substr(0, use.find(' ')) + "' cannot be used more than once.";
        EXPECT_EQ(std::count(errors.begin(), errors.end(), refused), isMultiUse ? 0 : 1) << use;
    }
}

TEST(EveryCommand, HasCallsInItsTable) {
    for (const CommandTable& table : commandTables())
        EXPECT_FALSE(table.calls.empty()) << table.command;
}

}  // namespace
