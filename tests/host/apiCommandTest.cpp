#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apiFixture.h"

using namespace apitest;
using host::mel::RunResult;
using host::mel::Value;

namespace {

using Body = std::function<MStatus(MPxCommand&, const MArgDatabase&)>;

/// The script command `probe` of these tests: what it does is set by each test.
struct Probe {
    Body body = [](MPxCommand&, const MArgDatabase&) { return MS::kSuccess; };
    MStatus undoStatus;
    bool isUndoable = false;
    int alive = 0;
    std::vector<std::string> steps;
};

Probe* probe = nullptr;

class ProbeCommand : public MPxCommand {
  public:
    ProbeCommand() { ++probe->alive; }
    ~ProbeCommand() override { --probe->alive; }
    MStatus doIt(const MArgList& arguments) override {
        probe->steps.emplace_back("do");
        const MArgDatabase database(syntax(), arguments);
        return probe->body(*this, database);
    }
    MStatus undoIt() override {
        probe->steps.emplace_back("undo");
        MGlobal::executeCommand("setNumber arm.tx 1", false, true);
        return probe->undoStatus;
    }
    MStatus redoIt() override {
        probe->steps.emplace_back("redo");
        return MS::kSuccess;
    }
    bool isUndoable() const override { return probe->isUndoable; }

    static void* creator() { return new ProbeCommand; }
    static MSyntax newSyntax() {
        MSyntax syntax;
        syntax.addFlag("-h", "-help");
        syntax.addFlag("-i", "-index", MSyntax::kLong);
        syntax.addFlag("-n", "-name", MSyntax::kString);
        syntax.addFlag("-on", "-enable", MSyntax::kBoolean);
        syntax.addFlag("-p", "-pair", MSyntax::kDouble, MSyntax::kString);
        syntax.makeFlagMultiUse("-pair");
        syntax.setObjectType(MSyntax::kSelectionList, 0);
        syntax.useSelectionAsDefault(true);
        return syntax;
    }
};

class CommandTest : public ApiTest {
  protected:
    CommandTest() {
        probe = &state;
        addNode("transform", "arm");
        registry.addPlugin("probe", "probes",
                           std::make_shared<host::api::ApiCommand>("probes", nullptr, ProbeCommand::creator,
                                                                   ProbeCommand::newSyntax));
    }
    ~CommandTest() override { graph.undoQueue().clear(); }

    RunResult run(const std::string& text) { return registry.run(text); }

    Probe state;
};

TEST_F(CommandTest, FlagsAndTheirArgumentsArrive) {
    state.body = [](MPxCommand&, const MArgDatabase& database) {
        EXPECT_TRUE(database.isFlagSet("-i") && database.isFlagSet("-index") && database.isFlagSet("index"));
        EXPECT_FALSE(database.isFlagSet("-h"));
        int index = 0;
        EXPECT_TRUE(database.getFlagArgument("-index", 0, index));
        EXPECT_EQ(index, -3);
        MString name;
        EXPECT_TRUE(database.getFlagArgument("-n", 0, name));
        EXPECT_EQ(text(name), "smile");
        EXPECT_TRUE(database.flagArgumentBool("-on", 0));
        EXPECT_EQ(database.numberOfFlagUses("-p"), 2U);
        EXPECT_EQ(database.numberOfFlagsUsed(), 4U);
        MArgList pair;
        EXPECT_TRUE(database.getFlagArgumentList("-p", 1, pair));
        EXPECT_EQ(pair.asDouble(0), 2.5);
        EXPECT_EQ(text(pair.asString(1)), "b");
        EXPECT_EQ(database.flagArgumentDouble("-p", 2), 2.5);
        EXPECT_EQ(text(database.flagArgumentString("-p", 3)), "b");
        MStatus status;
        database.flagArgumentInt("-p", 4, &status);
        EXPECT_FALSE(status);
        database.flagArgumentInt("-h", 0, &status);
        EXPECT_FALSE(status);
        EXPECT_FALSE(database.getFlagArgument("-n", 0, index));
        database.isFlagSet("-zz", &status);
        EXPECT_FALSE(status);
        return MS::kSuccess;
    };
    EXPECT_TRUE(run("probe -i -3 -n \"smile\" -p 1 a -pair 2.5 b -on true arm").ok);
    EXPECT_EQ(state.steps.size(), 1U);
}

struct BadArguments {
    const char* line;
    const char* error;
};

class BadArgumentsTest : public CommandTest, public ::testing::WithParamInterface<BadArguments> {};

TEST_P(BadArgumentsTest, TheHostShowsItsErrorOnceAndTheStatementFails) {
    state.isUndoable = true;
    state.body = [](MPxCommand& command, const MArgDatabase& database) {
        MSelectionList objects;
        EXPECT_FALSE(database.getObjects(objects));
        MStringArray strings;
        EXPECT_FALSE(database.getObjects(strings));
        EXPECT_FALSE(database.isFlagSet("-i") || database.isFlagSet("-h"));
        int index = 0;
        EXPECT_FALSE(database.getFlagArgument("-i", 0, index));
        EXPECT_EQ(database.numberOfFlagUses("-i"), 0U);
        MArgList again;
        again.addArg(MString("-bad"));
        const MArgDatabase second(command.syntax(), again);
        MPxCommand::displayError("Error getting objects");
        return MS::kSuccess;
    };
    const RunResult result = run(GetParam().line);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(shown.errors, (std::vector<std::string>{GetParam().error, "Error getting objects"}));
    EXPECT_FALSE(graph.undoQueue().canUndo());
    EXPECT_EQ(state.alive, 0);
}

TEST_P(BadArgumentsTest, TheCommandIsNotCalledWhereTheHostParsesFirst) {
    host::graph::Variants variants;
    variants.refusesArgumentsFirst = true;
    graph.setVariants(variants);
    EXPECT_FALSE(run(GetParam().line).ok);
    EXPECT_EQ(shown.errors, std::vector<std::string>{GetParam().error});
    EXPECT_EQ(state.steps, std::vector<std::string>());
    EXPECT_TRUE(run("probe -i 1").ok);
    EXPECT_EQ(state.steps, std::vector<std::string>{"do"});
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BadArgumentsTest,
    ::testing::Values(BadArguments{"probe -i 1 -wrong", "Invalid flag '-wrong'."},
                      BadArguments{"probe -i 1 nobody", "No object matches name: nobody"},
                      BadArguments{"probe -h -i 1 arm.nothing", "No object matches name: arm.nothing"},
                      BadArguments{"probe -i one", "Flag '-i' must be passed an integer argument."},
                      BadArguments{"probe -i", "Flag '-i' must be passed an integer argument."},
                      BadArguments{"probe -i 1 -index 2", "Flag '-index' cannot be used more than once."}));

TEST_F(CommandTest, ObjectsAreThoseNamedOrTheSelection) {
    addMesh("pCube1");
    MGlobal::selectByName("arm", MGlobal::kReplaceList);
    std::vector<std::string> seen;
    state.body = [&](MPxCommand&, const MArgDatabase& database) {
        MSelectionList objects;
        EXPECT_TRUE(database.getObjects(objects));
        seen = names(objects);
        MGlobal::clearSelectionList();
        EXPECT_EQ(names(objects), seen);
        MStringArray written;
        EXPECT_TRUE(database.getObjects(written));
        return MS::kSuccess;
    };
    EXPECT_TRUE(run("probe").ok);
    EXPECT_EQ(seen, std::vector<std::string>{"arm"});
    EXPECT_TRUE(run("probe").ok);
    EXPECT_TRUE(seen.empty());
    MGlobal::selectByName("arm", MGlobal::kReplaceList);
    EXPECT_TRUE(run("probe pCube1.e[9] pCube1 pCube1.e[3]").ok);
    EXPECT_EQ(seen, (std::vector<std::string>{"pCube1.e[3]", "pCube1.e[9]", "pCube1"}));
}

TEST_F(CommandTest, ResultsOfEveryType) {
    const auto resultOf = [&](const std::function<void()>& set) {
        state.body = [&](MPxCommand&, const MArgDatabase&) {
            set();
            return MS::kSuccess;
        };
        return run("probe").value;
    };
    const int numbers[] = {3, 1};
    EXPECT_TRUE(resultOf([] {}).isNone());
    EXPECT_EQ(resultOf([] { MPxCommand::setResult(4U); }), Value(4));
    EXPECT_EQ(resultOf([] { MPxCommand::setResult(true); }), Value(1));
    EXPECT_EQ(resultOf([] { MPxCommand::setResult(0.5); }), Value(0.5));
    EXPECT_EQ(resultOf([] { MPxCommand::setResult("text"); }), Value("text"));
    EXPECT_EQ(resultOf([&] { MPxCommand::setResult(MIntArray(numbers, 2)); }), Value(std::vector<int>{3, 1}));
    EXPECT_EQ(resultOf([] { MPxCommand::setResult(MDoubleArray(1, 2.5)); }), Value(std::vector<double>{2.5}));
    EXPECT_EQ(resultOf([] { MPxCommand::setResult(MStringArray()); }), Value(std::vector<std::string>{}));
    EXPECT_EQ(resultOf([] {
                  MPxCommand::setResult(1);
                  MPxCommand::appendToResult(2);
                  MPxCommand::appendToResult("ignored");
              }),
              Value(std::vector<int>{1, 2}));
    EXPECT_EQ(resultOf([] {
                  MPxCommand::appendToResult("a");
                  MPxCommand::appendToResult(MStringArray(1, "b"));
              }),
              Value(std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(resultOf([] {
                    MPxCommand::setResult(1);
                    MPxCommand::clearResult();
                }).isNone());
}

TEST_F(CommandTest, TheResultOfAnInnerCommandIsNotTheOuterOnes) {
    int depth = 0;
    state.body = [&](MPxCommand&, const MArgDatabase&) {
        MPxCommand::setResult(++depth);
        int inner = 0;
        if (depth == 1) {
            EXPECT_TRUE(MGlobal::executeCommand("probe", inner));
            EXPECT_EQ(inner, 2);
        }
        return MS::kSuccess;
    };
    EXPECT_EQ(run("probe").value, Value(1));
}

TEST_F(CommandTest, AnUndoableCommandLivesOnTheQueue) {
    state.isUndoable = true;
    ASSERT_TRUE(run("probe").ok);
    EXPECT_EQ(state.alive, 1);
    EXPECT_TRUE(registry.undo());
    EXPECT_EQ(plug("arm.tx").asDouble(), 1.0);
    EXPECT_TRUE(registry.redo());
    EXPECT_EQ(state.steps, (std::vector<std::string>{"do", "undo", "redo"}));
    EXPECT_EQ(graph.undoQueue().size(), 1U);
    EXPECT_FALSE(graph.undoQueue().canRedo());
    graph.undoQueue().clear();
    EXPECT_EQ(state.alive, 0);
}

TEST_F(CommandTest, WhatIsNotUndoableOrFailsLeavesNothing) {
    ASSERT_TRUE(run("probe").ok);
    EXPECT_EQ(state.alive, 0);
    state.isUndoable = true;
    state.body = [](MPxCommand&, const MArgDatabase&) { return MS::kFailure; };
    EXPECT_FALSE(run("probe").ok);
    EXPECT_EQ(shown.errors, std::vector<std::string>{"(kFailure): Unexpected Internal Failure"});
    EXPECT_EQ(state.alive, 0);
    EXPECT_FALSE(graph.undoQueue().canUndo());
    shown.errors.clear();
    state.body = [](MPxCommand& command, const MArgDatabase&) {
        command.displayError("no such target");
        return MS::kFailure;
    };
    EXPECT_FALSE(run("probe; print \"next\"").ok);
    EXPECT_EQ(shown.errors, std::vector<std::string>{"no such target"});
    EXPECT_EQ(shown.printed, "");
    state.body = [](MPxCommand& command, const MArgDatabase&) {
        command.displayError("shown only");
        return MS::kSuccess;
    };
    EXPECT_TRUE(run("probe").ok);
    EXPECT_TRUE(graph.undoQueue().canUndo());
}

TEST_F(CommandTest, ApiEditsAndSilentTextRecordNothing) {
    state.body = [](MPxCommand&, const MArgDatabase&) {
        plug("arm.ty").setDouble(2.0);
        return MGlobal::executeCommand("setNumber arm.tz 3", false, false);
    };
    ASSERT_TRUE(run("probe").ok);
    EXPECT_EQ(plug("arm.tz").asDouble(), 3.0);
    EXPECT_FALSE(graph.undoQueue().canUndo());
}

TEST_F(CommandTest, RecordedTextIsUndoneWithItsCommand) {
    state.isUndoable = true;
    state.body = [](MPxCommand&, const MArgDatabase&) {
        MGlobal::executeCommand("setNumber arm.ty 5", false, true);
        return MGlobal::executeCommand("setNumber arm.tz 3", false, true);
    };
    ASSERT_TRUE(run("probe").ok);
    EXPECT_EQ(graph.undoQueue().size(), 1U);
    EXPECT_TRUE(registry.undo());
    EXPECT_EQ(plug("arm.ty").asDouble(), 0.0);
    EXPECT_EQ(plug("arm.tz").asDouble(), 0.0);
    EXPECT_TRUE(registry.redo());
    EXPECT_EQ(plug("arm.tz").asDouble(), 3.0);
}

TEST_F(CommandTest, ScriptResultsMustFitTheTypeAskedFor) {
    int whole = 0;
    double number = 0.0;
    MString string;
    MIntArray list;
    EXPECT_TRUE(MGlobal::executeCommand("size(\"abc\")", whole));
    EXPECT_EQ(whole, 3);
    EXPECT_FALSE(MGlobal::executeCommand("size(\"abc\")", string));
    EXPECT_FALSE(MGlobal::executeCommand("size(\"abc\")", list));
    EXPECT_TRUE(MGlobal::executeCommand("setNumber arm.tx 2.5", number));
    EXPECT_EQ(number, 2.5);
    EXPECT_EQ(text(MGlobal::executeCommandStringResult("substring(\"smile\", 1, 3)")), "smi");
    MCommandResult any;
    EXPECT_TRUE(MGlobal::executeCommand("size(\"abc\")", any));
    EXPECT_EQ(any.resultType(), MCommandResult::kInt);
    EXPECT_TRUE(any.getResult(whole));
    EXPECT_FALSE(any.getResult(number));
    shown.errors.clear();
    MStatus status;
    MGlobal::executeCommandStringResult("noSuchThing 1", false, false, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(shown.errors.size(), 1U);
    EXPECT_EQ(MGlobal::executeCommand("syntax ( error"), MS::kFailure);
}

TEST_F(CommandTest, DisplayedTextGoesWhereItBelongs) {
    MGlobal::displayInfo("information");
    MGlobal::displayWarning("careful");
    MPxCommand::displayInfo("more");
    EXPECT_EQ(shown.infos, (std::vector<std::string>{"information", "more"}));
    EXPECT_EQ(shown.warnings, std::vector<std::string>{"careful"});
    MGlobal::executeCommand("size(\"abc\")", true);
    EXPECT_EQ(shown.results.size(), 1U);
}

TEST_F(CommandTest, OptionVariablesConvertBetweenNumbersOnly) {
    EXPECT_TRUE(MGlobal::setOptionVarValue("tolerance", 2.75));
    bool exists = false;
    EXPECT_EQ(MGlobal::optionVarIntValue("tolerance", &exists), 2);
    EXPECT_TRUE(exists);
    EXPECT_EQ(text(MGlobal::optionVarStringValue("tolerance", &exists)), "");
    EXPECT_TRUE(MGlobal::setOptionVarValue("tolerance", MString("text")));
    EXPECT_EQ(text(MGlobal::optionVarStringValue("tolerance")), "text");
    EXPECT_EQ(MGlobal::optionVarDoubleValue("tolerance"), 0.0);
    EXPECT_TRUE(MGlobal::setOptionVarValue("count", 7));
    EXPECT_EQ(MGlobal::optionVarDoubleValue("count"), 7.0);
    MGlobal::removeOptionVar("count");
    EXPECT_FALSE(MGlobal::optionVarExists("count"));
    MGlobal::removeOptionVar("count");
    EXPECT_EQ(MGlobal::optionVarIntValue("count", &exists), 0);
    EXPECT_FALSE(exists);
}

TEST_F(CommandTest, SyntaxKeepsToTheRules) {
    MSyntax syntax;
    EXPECT_TRUE(syntax.addFlag("-ti", "-targetItem", MSyntax::kLong));
    EXPECT_FALSE(syntax.addFlag("-long", "-longName"));
    EXPECT_FALSE(syntax.addFlag("-s", "-sml"));
    EXPECT_FALSE(syntax.addFlag("-ti", "-another"));
    EXPECT_FALSE(syntax.addFlag(nullptr, "-another"));
    EXPECT_FALSE(syntax.addFlag("-b", "-badType", MSyntax::kInvalidArgType));
    EXPECT_FALSE(syntax.makeFlagMultiUse("-nothing"));
    EXPECT_TRUE(syntax.addArg(MSyntax::kLong));
    EXPECT_FALSE(syntax.setObjectType(MSyntax::kSelectionList));
    MSyntax objects(syntax);
    objects = MSyntax();
    EXPECT_TRUE(objects.setObjectType(MSyntax::kStringObjects, 1, 2));
    EXPECT_FALSE(objects.addArg(MSyntax::kLong));
    EXPECT_EQ(objects.minObjects(), 1U);
    EXPECT_EQ(objects.maxObjects(), 2U);
    objects.enableQuery();
    EXPECT_TRUE(objects.canQuery() && !objects.canEdit());
}

TEST_F(CommandTest, ObjectCountsAreCheckedAfterTheSelectionStoodIn) {
    MSyntax syntax;
    syntax.setObjectType(MSyntax::kSelectionList, 1, 1);
    syntax.useSelectionAsDefault(true);
    MStatus status;
    MArgList none;
    const MArgDatabase empty(syntax, none, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(shown.errors, std::vector<std::string>{"Not enough objects or values."});
    MGlobal::selectByName("arm", MGlobal::kReplaceList);
    const MArgDatabase selected(syntax, none, &status);
    EXPECT_TRUE(status);
    MArgList two;
    two.addArg(MString("arm"));
    two.addArg(MString("arm"));
    const MArgDatabase many(syntax, two, &status);
    EXPECT_FALSE(status);
}

TEST_F(CommandTest, PositionalArgumentsKeepTheirTypes) {
    MSyntax syntax;
    syntax.addArg(MSyntax::kDouble);
    syntax.addArg(MSyntax::kString);
    MArgList words;
    words.addArg(1.5);
    words.addArg(MString("last"));
    MStatus status;
    const MArgDatabase database(syntax, words, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(database.commandArgumentDouble(0), 1.5);
    EXPECT_EQ(text(database.commandArgumentString(1)), "last");
    int index = 0;
    EXPECT_FALSE(database.getCommandArgument(1, index));
    EXPECT_FALSE(database.getCommandArgument(2, index));
    MSelectionList objects;
    EXPECT_FALSE(database.getObjects(objects));
}

TEST_F(CommandTest, ArgumentListsConvertWordByWord) {
    MArgList words;
    words.addArg(MString("-index"));
    words.addArg(MString("12"));
    words.addArg(2.75);
    words.addArg(true);
    words.addArg(MString("off"));
    EXPECT_EQ(words.length(), 5U);
    EXPECT_EQ(words.flagIndex("i", "index"), 0U);
    EXPECT_EQ(words.flagIndex("n"), MArgList::kInvalidArgIndex);
    EXPECT_EQ(words.asInt(1), 12);
    EXPECT_EQ(words.asInt(2), 2);
    EXPECT_EQ(text(words.asString(2)), "2.75");
    EXPECT_TRUE(words.asBool(3));
    MStatus status;
    EXPECT_FALSE(words.asBool(4, &status));
    EXPECT_TRUE(status);
    words.asInt(0, &status);
    EXPECT_EQ(status, MS::kFailure);
    words.asString(5, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    const MArgList copy(words);
    words.addArg(1);
    EXPECT_EQ(copy.length(&status), 5U);
    EXPECT_TRUE(status);
}

}  // namespace
