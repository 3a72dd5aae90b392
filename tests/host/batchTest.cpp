// The program as its users see it: options, streams, exit status.
#include "host/batchFixture.h"

namespace {

using namespace batchTest;

TEST_F(Batch, RunsItsActionsInTheOrderGiven) {
    const std::string mesh = written("tri.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const std::string script = written("count.mel", "print (size(`ls -type \"mesh\"`) + \"\\n\");\n");
    const Outcome outcome =
        run({script, "-file", mesh, "-script", script, "-command", "polyCube; print \"made\\n\"", script});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "0\n1\nmade\n2\n");
    EXPECT_EQ(outcome.messages, "");
}

TEST_F(Batch, KeepsVariablesAndProceduresFromActionToAction) {
    const std::string script = written("define.mel", "global proc int twice(int $x) { return 2 * $x; }\n");
    const Outcome outcome = run({"-command", "int $a = 4;", script, "-prompt"}, "twice($a);\n");
    EXPECT_EQ(outcome.output, "// Result: 8 //\n");
}

TEST_F(Batch, SeparatesPrintedTextFromMessages) {
    const Outcome outcome =
        run({"-command", "print \"one\\n\"; warning \"two\"; undoInfo -q -state; print \"three\""});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "one\nthree");
    EXPECT_EQ(outcome.messages, "// Warning: line 1.16: two //\n");
}

TEST_F(Batch, ShowsTheResultOfASingleCall) {
    for (const auto& [text, output] : std::vector<std::pair<std::string, std::string>>{
             {"ls -type time", "// Result: time1 //\n"},
             {"size(`ls -type time`);", "// Result: 1 //\n"},
             {"print \"a\"", "a"},
             {"ls -type time; ls -type time", ""},
             {"string $found[] = `ls -type time`", ""},
             {"quit", ""},
         }) {
        EXPECT_EQ(run({"-command", text}).output, output) << text;
    }
    EXPECT_EQ(run({written("call.mel", "ls -type time;\n")}).output, "");
}

TEST_F(Batch, StopsAtAScriptErrorAndNamesItsPlace) {
    const std::string script =
        written("wrong.mel", "print \"before\\n\";\nint $a = 1;\n  select \"gone\";\nprint \"no\";\n");
    const Outcome outcome = run({script, "-command", "print \"never\""});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "before\n");
    EXPECT_EQ(outcome.messages, "// Error: file: " + script + " line 3.3: No object matches name: gone //\n");
}

TEST_F(Batch, CopiesWhatIsShownToFilesWhileTheyAreOpen) {
    const Outcome outcome =
        run({"-command",
             "print \"before\\n\"; int $a = `cmdFileOutput -open \"" + path("a") +
                 "\"`; warning \"one\"; int $b = `cmdFileOutput -open \"" + path("b") +
                 "\"`; print \"two\\n\"; cmdFileOutput -close $a; catch(`select gone`); cmdFileOutput "
                 "-closeAll; print \"after\\n\";"});
    EXPECT_EQ(outcome.output, "before\ntwo\nafter\n");
    const std::string warning = outcome.messages.substr(0, outcome.messages.find('\n') + 1);
    const std::string error = outcome.messages.substr(warning.size());
    EXPECT_EQ(readTextFile(path("a")).text, warning + "two\n");
    EXPECT_EQ(readTextFile(path("b")).text, "two\n" + error);
    EXPECT_NE(error.find("No object matches name: gone"), std::string::npos);
}

TEST_F(Batch, CannotCopyToAFolderOrCloseACopyTwice) {
    EXPECT_EQ(run({"-command", "print(`cmdFileOutput -open \"" + path("") + "\"`)"}).output, "-1");
    const Outcome outcome = run({"-command", "int $a = `cmdFileOutput -open \"" + path("a") +
                                                 "\"`; cmdFileOutput -close $a; cmdFileOutput -close $a;"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.messages.find("There is no open file 1, or it could not be written."),
              std::string::npos);
}

TEST_F(Batch, SaysWhereAPluginsCommandWasCalled) {
    const std::string script = written("calls.mel",
                                       "proc inner() {\n  dv_getBlendShapeIndices;\n}\n"
                                       "global proc outer() { inner(); }\n"
                                       "select -clear;\ncatch(`dv_getBlendShapeIndices`);\n"
                                       "dv_displayMessage -w \"so\";\nouter;\n");
    const std::string error = "No blend shape node provided. //\n";
    EXPECT_EQ(runWithPlugin({script}).messages,
              "// Error: file: " + script + " line 6.8: " + error + "// Warning: file: " + script +
                  " line 7.1: so //\n" + "// Error: file: " + script + " line 2.3 in inner, outer: " + error);
}

TEST_F(Batch, RunsNothingOfAScriptWithASyntaxError) {
    const std::string script = written("wrong.mel", "print \"before\\n\";\nif (1 { }\n");
    const Outcome outcome = run({script});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.messages.rfind("// Error: file: " + script + " line 2.", 0), 0u) << outcome.messages;
}

TEST_F(Batch, GoesOnAfterACaughtError) {
    const Outcome outcome =
        run({"-command", "catch(`select gone`); catchQuiet(`select lost`); print \"on\""});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "on");
    EXPECT_NE(outcome.messages.find("gone"), std::string::npos);
    EXPECT_EQ(outcome.messages.find("lost"), std::string::npos);
}

TEST_F(Batch, NamesFileAndLineOfAMalformedMesh) {
    const std::string mesh = written("bad.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\nf 1 2 7\n");
    const Outcome outcome = run({"-file", mesh, "-command", "print \"never\""});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.messages,
              "// Error: " + mesh + ", line 5: face refers to vertex 7, but only 3 are defined //\n");
}

TEST_F(Batch, FailsOnFilesThatCannotBeReadOrWritten) {
    const std::string missing = path("missing");
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"-file", missing + ".obj"},
                                               {"-script", missing},
                                               {missing + ".mel"},
                                               {"-plugin", missing},
                                               {"-log", missing + "/log", "-command", "print 1"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 1) << words.front();
        EXPECT_EQ(outcome.output, "") << words.front();
        EXPECT_EQ(outcome.messages.rfind("// Error: ", 0), 0u) << outcome.messages;
        EXPECT_NE(outcome.messages.find("missing"), std::string::npos) << outcome.messages;
    }
}

TEST_F(Batch, EndsWithStatusTwoOnBadUsage) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"-unknown"}, {"mesh.obj"}, {".mel"}, {"-script"}, {""}}) {
        const Outcome outcome = runWithPlugin(words);
        EXPECT_EQ(outcome.status, 2) << words.front();
        EXPECT_EQ(outcome.output, "") << words.front();
        EXPECT_NE(outcome.messages.find("-help"), std::string::npos) << outcome.messages;
    }
    EXPECT_EQ(runWithPlugin({"-command", "print \"never\"", "-bad"}).output, "");
}

TEST_F(Batch, ExplainsItself) {
    const Outcome help = run({"-help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"-file", "-script", "-command", "-prompt", "-plugin", "-noAutoloadPlugins",
                               "-log", "-help", "-version"})
        EXPECT_NE(help.output.find(std::string("  ") + option + ' '), std::string::npos) << option;
    for (const char* word : {"-h", "--help"})
        EXPECT_EQ(run({word}).output, help.output) << word;
    for (const char* word : {"-version", "--version"}) {
        const Outcome version = run({word});
        EXPECT_EQ(version.status, 0);
        EXPECT_EQ(version.output, "delvenbatch " DELVEN_VERSION "\n");
    }
}

TEST_F(Batch, PromptSaysHowToLeave) {
    const Outcome outcome = prompt("exit;\nexit();\nprint \"on\\n\";");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "on\n");
    EXPECT_NE(outcome.messages.find("// Type quit; to leave."), std::string::npos) << outcome.messages;
    EXPECT_EQ(prompt("global proc exit() { print \"mine\\n\"; }\nexit;\n").output, "mine\n");
}

TEST_F(Batch, EndsWithTheStatusThatQuitIsTold) {
    EXPECT_EQ(run({"-command", "quit -exitCode 5; print \"never\"", "-command", "print \"never\""}).status,
              5);
    const Outcome outcome = prompt("print \"a\\n\";\nquit;\nprint \"never\\n\";\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "a\n");
}

TEST_F(Batch, CopiesAllOutputToTheLogInItsOrder) {
    const std::string log = written("log", "old\n");
    const Outcome outcome =
        run({"-command", "print \"one\\n\"; warning \"two\"; print \"three\\n\"", "-log", log, "-prompt"},
            "1 + 1;\nerror \"no\";\n");
    EXPECT_EQ(readTextFile(log).text,
              "one\n// Warning: line 1.16: two //\nthree\n// Result: 2 //\n// Error: line 2.1: no //\n");
    EXPECT_EQ(outcome.output, "one\nthree\n// Result: 2 //\n");
}

#if defined(__linux__)

TEST_F(Batch, FailsWhenItsOutputCannotBeWritten) {
    const std::string lost = "// Error: Standard output could not be written. //\n";
    for (const char* nowhere : {" >&-", " >/dev/full"}) {
        Outcome outcome = run(
            {"-command", "print \"a\\n\"; polyCube; file -f -type OBJexport -ea \"" + path("a.obj") + "\""},
            {}, nowhere);
        EXPECT_EQ(outcome.status, 1) << nowhere;
        EXPECT_EQ(outcome.messages, lost) << nowhere;
        EXPECT_EQ(readTextFile(path("a.obj")).text.substr(0, 2), "o ")
            << "what comes after it is done all the same";
        outcome = run({"-command", "quit -exitCode 5; ", "-command", "print 1"}, "", nowhere);
        EXPECT_EQ(outcome.status, 5) << nowhere;
        EXPECT_EQ(run({"-command", "int $nothing = 1"}, "", nowhere).status, 0) << nowhere;
        EXPECT_EQ(run({"-help"}, "", nowhere).status, 1) << nowhere;
        EXPECT_EQ(run({"-version"}, "", nowhere).status, 1) << nowhere;
    }
}

TEST_F(Batch, FailsWhenItsLogCannotBeWritten) {
    const Outcome outcome = run({"-log", "/dev/full", "-command", "print \"a\\n\""});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "a\n");
    EXPECT_EQ(outcome.messages, "// Error: The log file /dev/full could not be written. //\n");
}

TEST_F(Batch, WritesNothingIntoFilesInPlaceOfAClosedStream) {
    const std::string log = path("log");
    run({"-log", log, "-command", "print \"a\\n\"; error \"b\""}, "", " >&- 2>&-");
    EXPECT_EQ(readTextFile(log).text, "a\n// Error: line 1.14: b //\n");
}

TEST_F(Batch, KeepsAFileThatAWriteBeyondTheAllowedSizeWouldReplace) {
    const std::string file = written("kept.obj", "# kept\n");
    const std::string script =
        written("big.mel", "polyPlane -sx 100 -sy 100; file -f -type \"OBJexport\" -ea \"" + file + "\";");
    const std::string command = "ulimit -f 8; " + quoted(DELVEN_BINARY_DIR "/delvenbatch") +
                                " -noAutoloadPlugins -script " + quoted(script) + " 2>" + quoted(path("err"));
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(readTextFile(file).text, "# kept\n");
    const std::string messages = readTextFile(path("err")).text;
    EXPECT_NE(messages.find("cannot write '" + file + "'"), std::string::npos) << messages;
}

#endif

TEST_F(Batch, LoadsTheModuleBesideItUnlessToldNotTo) {
    const std::vector<std::string> words{"-command",
                                         "print (stringArrayToString(`pluginInfo -q -listPlugins`, \" \"))"};
    EXPECT_EQ(runWithPlugin(words).output, "DELVENTools");
    EXPECT_EQ(run(words).output, "");
}

// --- prompt

TEST_F(Batch, ReadsStandardInputWhenNothingElseIsAsked) {
    const Outcome outcome = run({}, "int $a = 20;\n$a + 1;\nprint \"text\\n\";\npolyCube -ch 0;\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "// Result: 20 //\n// Result: 21 //\ntext\n// Result: pCube1 //\n");
    EXPECT_EQ(outcome.messages, "");
}

TEST_F(Batch, GoesOnAtThePromptAfterAnErrorAndReportsItInTheEnd) {
    const Outcome outcome = prompt("select gone;\nprint \"on\\n\";\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "on\n");
    EXPECT_EQ(outcome.messages, "// Error: line 1.1: No object matches name: gone //\n");
}

struct EntryCase {
    std::string name;
    std::string input;
    std::string output;

    friend void PrintTo(const EntryCase& entryCase, std::ostream* stream) { *stream << entryCase.input; }
};

class PromptEntry : public Batch, public testing::WithParamInterface<EntryCase> {};

TEST_P(PromptEntry, IsReadUntilItIsWhole) {
    const Outcome outcome = prompt(GetParam().input);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, GetParam().output);
    EXPECT_EQ(outcome.messages, "");
}

INSTANTIATE_TEST_SUITE_P(
    Batch, PromptEntry,
    testing::Values(
        EntryCase{"braces", "if (1) {\nprint \"a\\n\";\n}\n", "a\n"},
        EntryCase{"braceOnTheNextLine", "global proc int f(int $x)\n{\nreturn $x + 1;\n}\nf(1);\n",
                  "// Result: 2 //\n"},
        EntryCase{"bodyOnTheNextLine", "for ($i = 0; $i < 2; $i++)\nprint ($i + \"\\n\");\n", "0\n1\n"},
        EntryCase{"elseBehindTheBrace", "if (0) {\n} else\nprint \"b\\n\";\n", "b\n"},
        EntryCase{"elseOnTheNextLine", "if (0)\nprint \"a\\n\";\nelse\nprint \"b\\n\";\n3;\n",
                  "b\n// Result: 3 //\n"},
        EntryCase{"elseBelowTheBrace", "if (0) {\n}\nelse if (1)\n{\nprint \"c\\n\";\n}\n4;\n",
                  "c\n// Result: 4 //\n"},
        EntryCase{"brackets", "int $a[] = {1,\n2,\n3};\nsize($a);\n",
                  "// Result: 1 2 3 //\n// Result: 3 //\n"},
        EntryCase{"backQuote", "size(`ls -type\n\"time\"`);\n", "// Result: 1 //\n"},
        EntryCase{"bracesInStrings", "print \"{(\\\"[\\n\";\n", "{(\"[\n"},
        EntryCase{"bracesInComments", "print 1; // {\n1 + 1; /* ( */\n", "1// Result: 2 //\n"},
        EntryCase{"openComment", "/* a {\n b */ 2 + 2;\n", "// Result: 4 //\n"},
        EntryCase{"severalOnALine", "int $b = 1; if ($b) print \"c\\n\"; 5;\n", "c\n// Result: 5 //\n"},
        EntryCase{"windowsLineEnds", "1 + 2;\r\nprint \"d\\n\";\r\n", "// Result: 3 //\nd\n"},
        EntryCase{"noLineEndAtTheEnd", "7;", "// Result: 7 //\n"}, EntryCase{"nothing", "", ""},
        EntryCase{"blankLines", "\n\n8;\n\n", "// Result: 8 //\n"}),
    [](const auto& parameter) { return parameter.param.name; });

class SameText : public Batch, public testing::WithParamInterface<EntryCase> {};

TEST_P(SameText, GivesTheSameOnStandardInputAsCommandAndAsScript) {
    const std::string& text = GetParam().input;
    for (const Outcome& outcome : {prompt(text), run({"-command", text}), run({written("text.mel", text)})}) {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, GetParam().output);
        EXPECT_EQ(outcome.messages, "");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Batch, SameText,
    testing::Values(
        EntryCase{"operatorAtTheLineEnd", "{ int $x = 3 +\n4; print $x; }\nprint (1 +\n2);\n", "73"},
        EntryCase{"wordsOnTheNextLine", "print\n\"a\"\n;print \"b\"\n", "ab"},
        EntryCase{"flagOnTheNextLine", "createNode network -n\n\"n\"\n-skipSelect;print (size(`ls n`));\n",
                  "1"},
        EntryCase{"continuedString", "print \"a\\\nb\";\n", "ab"},
        EntryCase{"backQuote", "print (size(`ls\n-type \"time\"\n`));\n", "1"},
        EntryCase{"elseBelowBlankLinesAndComments",
                  "if (0)\nprint 1;\n\n// so\n/* or\nso */\nelse print 2;\nprint 3;\n", "23"},
        EntryCase{"whileBelowTheBody", "int $i;\ndo\n{\n$i++;\n}\nwhile\n($i < 3)\n;print $i;\n", "3"},
        EntryCase{"bracketInABareWordAndAString", "print (\"}\" +\n\"{\");\n", "}{"}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_F(Batch, TakesAWholeBlockForOneWrongPiece) {
    const Outcome outcome = prompt("global proc f() {\nint x;\nprint \"no\";\n}\nprint \"on\";\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "on");
    EXPECT_EQ(outcome.messages,
              "// Error: line 2.5: Syntax error: found 'x' where a variable was expected. //\n");
}

TEST_F(Batch, EndsAPieceAtTheLineOfAStringThatIsNotClosed) {
    const Outcome outcome = prompt("print \"open;\nprint \"on\";\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "on");
    EXPECT_EQ(outcome.messages, "// Error: line 1.7: Unterminated string. //\n");
}

TEST_F(Batch, CountsTheLinesOfItsInput) {
    const Outcome outcome = prompt("print 1;\n\n\nif (1)\n{\n  select gone;\n}\nselect away;\n");
    EXPECT_EQ(outcome.messages,
              "// Error: line 6.3: No object matches name: gone //\n"
              "// Error: line 8.1: No object matches name: away //\n");
}

TEST_F(Batch, SaysThatAnEntryWasLeftOpenWhenTheInputEnds) {
    const std::string text = "if (1) {\nprint \"a\\n\";\n";
    for (const Outcome& outcome : {prompt(text), run({"-command", text})}) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.messages,
                  "// Error: line 3.1: Syntax error: the text ends where '}' was expected. //\n");
    }
}

}  // namespace
