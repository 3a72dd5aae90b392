#include "mel/interpreter.h"

#include <gtest/gtest.h>

#include "mel/scriptHost.h"

namespace host::mel::test {
namespace {

struct Session {
    explicit Session(InterpreterOptions options = {})
        : commands(output), interpreter(commands, output, options) {}

    RecordedOutput output;
    EchoCommands commands;
    Interpreter interpreter;
};

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST(Interpreter, KeepsGlobalVariablesAndGlobalProceduresBetweenRuns) {
    Session session;
    session.interpreter.run(
        "int $a = 1; string $list[]; global proc string hello(string $n) { return \"hi \" + $n; }");
    session.interpreter.run("$a += 1; $list[size($list)] = hello(\"x\"); int $a; string $list[];");
    ASSERT_NE(session.interpreter.globalVariable("$a"), nullptr);
    EXPECT_EQ(session.interpreter.globalVariable("a")->toInt(), 2);
    EXPECT_EQ(session.interpreter.globalVariable("list")->toString(), "hi x");
    EXPECT_EQ(session.interpreter.globalVariable("other"), nullptr);
    session.interpreter.run("string $a;");
    EXPECT_EQ(session.output.errors.back(),
              "1.8: Invalid redeclaration of variable \"$a\" as a different type.");
}

TEST(Interpreter, ShowsLocalProceduresToTheSameFileOnly) {
    Session session;
    session.interpreter.run("proc int local() { return 1; } global proc int open() { return local() + 1; }",
                            "a.mel");
    EXPECT_TRUE(session.interpreter.hasProcedure("open"));
    EXPECT_FALSE(session.interpreter.hasProcedure("local"));
    EXPECT_EQ(session.interpreter.procedureSource("open"), "a.mel");
    EXPECT_EQ(session.interpreter.run("local() + open();", "a.mel").value.toInt(), 3);
    EXPECT_EQ(session.interpreter.run("open();", "b.mel").value.toInt(), 2);
    const RunResult result = session.interpreter.run("local();", "b.mel");
    EXPECT_EQ(result.error.message, "Cannot find procedure \"local\".");
}

TEST(Interpreter, NamesTheFileInWhichAnErrorArose) {
    Session session;
    session.interpreter.run("global proc broken() {\n  fail deep;\n}", "library.mel");
    const RunResult result = session.interpreter.run("\nbroken;", "main.mel");
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.error.shown);
    EXPECT_EQ(result.error.position.file, "library.mel");
    EXPECT_EQ(session.output.errors, std::vector<std::string>{"2.3 in broken: deep"});
    EXPECT_EQ(session.output.errorFiles, std::vector<std::string>{"library.mel"});

    session.interpreter.run("eval \"fail inside\"", "main.mel");
    session.interpreter.run("sourceText \"fail other\"", "main.mel");
    EXPECT_EQ(session.output.errorFiles, (std::vector<std::string>{"library.mel", "main.mel", "other.mel"}));
}

TEST(Interpreter, SurvivesTheRedefinitionOfARunningProcedure) {
    Session session;
    const RunResult result = session.interpreter.run(
        "global proc int f() { eval(\"global proc int f() { return 2; }\"); return 1; }\n"
        "int $first = f(); $first * 10 + f();");
    EXPECT_EQ(result.value.toInt(), 12);
}

TEST(Interpreter, CallsByName) {
    Session session;
    session.interpreter.run("global proc string both(string $a, int $b[]) { return $a + size($b); }");
    const CommandResult result =
        session.interpreter.callCommand("both", {Value(4), Value(std::vector<int>{1, 2})});
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.value.toString(), "42");
    EXPECT_EQ(session.interpreter.callCommand("both", {Value(4)}).error,
              "Wrong number of arguments on call to both.");
    EXPECT_EQ(session.interpreter.callCommand("eval", {Value("1")}).error,
              "eval is part of the language and cannot be called by name.");
    EXPECT_TRUE(session.output.errors.empty());
}

TEST(Interpreter, SetsGlobalVariablesWithTheTypeTheyHave) {
    Session session;
    EXPECT_TRUE(session.interpreter.setGlobalVariable("$gMain", "form"));
    EXPECT_TRUE(session.interpreter.setGlobalVariable("gMain", 5));
    EXPECT_FALSE(session.interpreter.setGlobalVariable("gMain", std::vector<int>{1}));
    session.interpreter.run("proc p() { global string $gMain; print ($gMain + 1); } p;");
    EXPECT_EQ(session.output.printed, "51");
}

TEST(Interpreter, DoesNothingAfterItWasStopped) {
    Session session;
    const RunResult result =
        session.interpreter.run("proc p() { quit; print inside; } catch(p()); print outside;");
    EXPECT_TRUE(result.ok);
    EXPECT_TRUE(session.interpreter.isStopped());
    EXPECT_TRUE(session.interpreter.run("print later;").ok);
    EXPECT_EQ(session.output.printed, "");
    EXPECT_TRUE(session.output.errors.empty());
}

TEST(Interpreter, CountsLinesAndColumnsWhateverEndsALine) {
    Session session;
    session.interpreter.run("print 1;\r\n\r\n\tfail windows;\r\n");
    session.interpreter.run("// text with \xC3\xA4\n\n\nfail unix");
    EXPECT_EQ(session.output.errors, (std::vector<std::string>{"3.2: windows", "4.1: unix"}));
}

TEST(Interpreter, TellsWhereItIs) {
    Session session;
    EXPECT_EQ(session.interpreter.currentPosition().line, 0);
    EXPECT_FALSE(session.interpreter.isRunning());
    session.interpreter.run("global proc inner() {\n  failShown shown;\n}\ncatch(inner());\n warning last;",
                            "a.mel");
    EXPECT_EQ(session.output.errors, std::vector<std::string>{"2.3 in inner: shown"});
    EXPECT_EQ(session.output.warnings, std::vector<std::string>{"5.2: last"});
    EXPECT_EQ(session.interpreter.currentPosition().line, 0);
}

TEST(Interpreter, EchoesTheResultOfTheOutermostTextOnly) {
    Session session;
    RunOptions options;
    options.echoResult = true;
    session.interpreter.run("eval \"1\" + 2", "", options);
    session.interpreter.run("nothing", "", options);
    session.interpreter.run("fail x", "", options);
    session.interpreter.run("runText \"5\"; eval \"6\"", "", options);
    EXPECT_EQ(session.output.results, std::vector<std::string>{"6"});
}

class EndlessScript : public testing::TestWithParam<const char*> {};

TEST_P(EndlessScript, EndsAtTheStepLimitPastEveryCatch) {
    InterpreterOptions options;
    options.stepLimit = 10'000;
    Session session(options);
    const RunResult result = session.interpreter.run(GetParam());
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error.message, "The script takes too many steps.");
    EXPECT_EQ(session.output.errors.size(), 1u);
    EXPECT_TRUE(session.interpreter.run("int $fresh = 1;").ok);
}

INSTANTIATE_TEST_SUITE_P(Forms, EndlessScript,
                         testing::Values("while (1);", "for (;;) {}", "do ; while (1);",
                                         "while (1) catchQuiet(`fail x`);",
                                         "proc p() { while (1); } catch(p()); while (1);",
                                         "string $t = \"while (1);\"; while (1) eval $t;",
                                         "int $i; while (1) { switch ($i) { case 0: continue; } }"));

class DeepText : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(DeepText, IsAnErrorAndNotACrash) {
    Session session;
    const int count = 100'000;
    const RunResult result = session.interpreter.run(repeated(GetParam().first, count) + "1" +
                                                     repeated(GetParam().second, count) + ";");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error.message, "Nesting too deep.");
}

INSTANTIATE_TEST_SUITE_P(Forms, DeepText,
                         testing::Values(std::pair("(", ")"), std::pair("{", "}"), std::pair("-", ""),
                                         std::pair("!", ""), std::pair("$a[0] = ", ""),
                                         std::pair("1 ? 1 : ", ""), std::pair("size(", ")"),
                                         std::pair("if (1) ", ""), std::pair("(int)", ""),
                                         std::pair("echo (`echo ", "`)"), std::pair("<<", ">>"),
                                         std::pair("while (1) {", "}"), std::pair("if (1) ; else { ", "}")));

class WideText : public testing::TestWithParam<std::string> {};

TEST_P(WideText, HasNoLimit) {
    Session session;
    const RunResult result = session.interpreter.run(GetParam());
    EXPECT_TRUE(result.ok) << result.error.message;
    EXPECT_EQ(result.value.toInt(), 100'001);
}

INSTANTIATE_TEST_SUITE_P(Forms, WideText,
                         testing::Values("1" + repeated(" + 1", 100'000) + ";",
                                         "int $i = 1;" + repeated("$i++;", 100'000) + "$i;",
                                         "int $a[] = {0" + repeated(",0", 100'000) + "}; size($a);",
                                         "size(`strings 0" + repeated(" vtx[0]", 100'000) + "`);",
                                         "int $i; if ($i) {} " + repeated("else if ($i) {}", 100'000) +
                                             "else $i = 100001; $i;"));

TEST(Interpreter, FailsWhereAScriptNestsRunsOrCallsWithoutEnd) {
    Session session;
    for (const char* text :
         {"global string $t = \"eval $t\"; eval $t;", "global proc a() { b; } global proc b() { a; } a;",
          "global proc r() { runText \"r\"; fail x; } r;"}) {
        const RunResult result = session.interpreter.run(text);
        EXPECT_FALSE(result.ok) << text;
    }
    EXPECT_TRUE(session.interpreter.run("print fine").ok);
}

TEST(Interpreter, KeepsArraysAndTextsBelowTheSizeLimit) {
    InterpreterOptions options;
    options.sizeLimit = 1000;
    Session session(options);
    for (const char* text :
         {"int $a[]; $a[1000] = 1;", "int $b[2000];", "string $s = \"x\"; while (1) $s += $s;",
          "string $s = \"x\"; while (1) $s = $s + $s;",
          "string $c[] = {\"x\"}; while (1) $c = stringArrayCatenate($c, $c);"})
        EXPECT_FALSE(session.interpreter.run(text).ok) << text;
    EXPECT_TRUE(session.interpreter.run("int $d[]; $d[999] = 1;").ok);
}

}  // namespace
}  // namespace host::mel::test
