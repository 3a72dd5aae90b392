#include "commandSupport.h"

#include <gtest/gtest.h>
#include <maya/MArgList.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/scene.h"

namespace {

const CommandInfo kCommand{
    "dv_sample",
    "Does something.",
    {{"-w", "-weight", MSyntax::kDouble, "a weight", true},
     {"-dir", "-direction", MSyntax::kBoolean, "a side"},
     {"-n", "-count", MSyntax::kLong, "a number"},
     {"-m", "-mode", MSyntax::kLong, "a way", false, {"-w1", "-way", nullptr}},
     {"-fn", "-fileName", MSyntax::kString, "a file", false, {nullptr, nullptr, "<f>"}},
     {"-s", "-side", MSyntax::kString, "a name"}},
    "dv_sample -w <float>",
    "int",
    false,
    ErrorResult::kNothing,
    false};

TEST(CommandSupport, HelpNamesEachTypeAsUsersTypeIt) {
    const std::string text = helpText(kCommand).asChar();
    EXPECT_EQ(text,
              "\nDescription: Does something.\n\n"
              "Flags: dv_sample    -h      -help         <n/a>       this message\n"
              "                    -w      -weight       <float>     a weight\n"
              "                    -dir    -direction    <int>       a side\n"
              "                    -n      -count        <int>       a number\n"
              "                    -w1     -way          <int>       a way\n"
              "                    -fn     -fileName     <f>         a file\n"
              "                    -s      -side         <string>    a name\n"
              "Usage: Execute the command with the following arguments:\n"
              "Execute: dv_sample -w <float>\n"
              "Return Value: int");
}

TEST(CommandSupport, SyntaxFollowsTheTable) {
    Scene scene(Scene::Plugin::NotLoaded);
    scene.mel("createNode transform -name thing");
    MArgList flags;
    for (const char* word : {"-weight", "0.5", "-w", "0.25", "-dir", "off", "-mode", "4"})
        flags.addArg(MString(word));
    MStatus status;
    const MArgDatabase parsed(makeSyntax(kCommand), flags, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(parsed.numberOfFlagUses("-w"), 2U);
    bool direction = true;
    readFlag(parsed, "-dir", direction);
    EXPECT_FALSE(direction);
    int count = 7;
    readFlag(parsed, "-n", count);
    EXPECT_EQ(count, 7) << "a flag that is not set leaves the default";
    readFlag(parsed, "-m", count);
    EXPECT_EQ(count, 4) << "the declared name counts, not that of the help text";

    MArgList object;
    object.addArg(MString("thing"));
    const MArgDatabase refused(makeSyntax(kCommand), object, &status);
    EXPECT_FALSE(status) << "a command without objects";
    CommandInfo withObjects = kCommand;
    withObjects.takesObjects = true;
    const MArgDatabase accepted(makeSyntax(withObjects), object, &status);
    EXPECT_TRUE(status);
}

/// A command that runs out of memory in the middle of its edit.
class fallingCommand : public CommandOf<fallingCommand> {
  public:
    static const CommandInfo& info() { return kCommand; }

    int value = 0;

  protected:
    CallOutcome read(const MArgDatabase&) override { return CallOutcome(); }
    CallOutcome edit() override {
        value = 1;
        throw std::bad_alloc();
    }
    CallOutcome restore() override {
        value = 0;
        return CallOutcome();
    }
};

TEST(CommandSupport, AnExceptionBecomesAnErrorAndWhatWasChangedIsRestored) {
    Scene scene(Scene::Plugin::NotLoaded);
    fallingCommand sample;
    const Outcome outcome = scene.during([&] { EXPECT_FALSE(sample.doIt(MArgList())); });
    EXPECT_EQ(outcome.errors,
              std::vector<std::string>{"dv_sample: There is not enough memory. Nothing more was done."});
    EXPECT_EQ(sample.value, 0);
    EXPECT_TRUE(sample.redoIt()) << "nothing to redo";
}

TEST(CommandSupport, NoExceptionLeavesAnEntryNorItsRecovery) {
    Scene scene(Scene::Plugin::NotLoaded);
    const Outcome outcome = scene.during([] {
        EXPECT_FALSE(guardEntry(
            "The tool", [&]() -> MStatus { throw std::runtime_error("no luck"); }, [] { throw 7; }));
        const std::unique_ptr<int> made(madeOrNull<int>("The tool"));
        EXPECT_NE(made, nullptr);
    });
    EXPECT_EQ(outcome.errors, (std::vector<std::string>{"The tool stopped: no luck",
                                                        "The tool stopped by an unknown error."}));
}

}  // namespace
