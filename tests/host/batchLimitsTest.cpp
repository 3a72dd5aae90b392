// What a small stack, little memory and no further thread do to the program.
#include "host/batchFixture.h"

#if defined(__linux__)

#include <unistd.h>

namespace {

using namespace batchTest;

class Limits : public Batch {
  protected:
    /// Runs a script in a shell that has been given limits first ("ulimit -s 1024").
    Outcome runLimited(const std::string& limits, const std::string& words, const std::string& script,
                       const std::string& shell = "bash") const {
        const std::string program = quoted(DELVEN_BINARY_DIR "/delvenbatch") + ' ' + words + ' ' +
                                    quoted(written("limited.mel", script)) + " >" + quoted(path("out")) +
                                    " 2>" + quoted(path("err"));
        written("run.sh", limits + "\nexec " + program + "\n");
        const int status = std::system(("timeout 60 " + shell + ' ' + quoted(path("run.sh"))).c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readTextFile(path("out")).text,
                readTextFile(path("err")).text};
    }
};

// --- depth

constexpr const char* kChain =
    "createNode transform -n t0; setAttr t0.tx 1;\n"
    "int $i; for ($i = 1; $i < 4000; $i++) {\n"
    "  createNode transform -p (\"t\" + ($i - 1)) -n (\"t\" + $i); setAttr (\"t\" + $i + \".tx\") 1;\n"
    "}\n"
    "polyCube -n box -ch 0; parent -r box t3999;\n";

TEST_F(Limits, HierarchiesMayBeDeeperThanTheStack) {
    const std::string obj = path("deep.obj");
    const Outcome outcome =
        runLimited("ulimit -s 1024", "-noAutoloadPlugins -script",
                   std::string(kChain) +
                       "float $t[] = `xform -q -ws -t box`; print ($t[0] + \"\\n\");\n"
                       "setAttr t0.tx 2; $t = `xform -q -ws -t box`; print ($t[0] + \"\\n\");\n"
                       "float $m[] = `getAttr box.parentInverseMatrix`; print ($m[12] + \"\\n\");\n"
                       "float $b[] = `xform -q -ws -bb t0`; print ($b[3] + \"\\n\");\n"
                       "file -f -type \"OBJexport\" -ea \"" +
                       obj +
                       "\";\n"
                       "print (size(`ls -dag t0`) + \" \" + size(`listRelatives -ad t0`) + \"\\n\");\n"
                       "select -hierarchy t0; print (size(`ls -sl`) + \"\\n\");\n"
                       "print (size(`duplicate t0`) + \"\\n\");\n"
                       "$t = `xform -q -ws -t t4000|t1|t2`; print ($t[0] + \"\\n\");\n"
                       "delete t0; undo; print (size(`ls -dag t0`) + \"\\n\");\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.messages, "");
    EXPECT_EQ(outcome.output, "4000\n4001\n-4001\n4001.5\n4002 4001\n4002\n4001\n4\n4002\n");
    EXPECT_NE(readTextFile(obj).text.find("v 4000.5 "), std::string::npos);
}

TEST_F(Limits, SkeletonsMayBeDeeperThanTheStack) {
    const Outcome outcome =
        runLimited("ulimit -s 1024", "-noAutoloadPlugins -script",
                   "createNode joint -n j0; int $i;\n"
                   "for ($i = 1; $i < 4000; $i++) createNode joint -p (\"j\" + ($i - 1)) -n (\"j\" + $i);\n"
                   "polyCube -n box; skinCluster -n skin j0 box; setAttr j0.ty 3;\n"
                   "print (size(`skinCluster -q -inf skin`) + \"\\n\");\n"
                   "float $p[] = `pointPosition box.vtx[0]`; print ($p[1] + \"\\n\");\n");
    EXPECT_EQ(outcome.messages, "");
    EXPECT_EQ(outcome.output, "4000\n2.5\n");
}

TEST_F(Limits, ChainsOfConnectionsMayBeLongerThanTheStack) {
    const Outcome outcome = runLimited(
        "ulimit -s 1024", "-noAutoloadPlugins -script",
        "polyCube -n s0 -ch 0; rename sShape0 s0Shape; int $i;\n"
        "for ($i = 1; $i < 4000; $i++) {\n"
        "  createNode mesh -n (\"s\" + $i + \"Shape\");\n"
        "  connectAttr (\"s\" + ($i - 1) + \"Shape.outMesh\") (\"s\" + $i + \"Shape.inMesh\");\n"
        "}\n"
        "print (size(`ls \"s3999Shape.vtx[*]\" -fl`) + \"\\n\");\n"
        "move -r 0 1 0 s0.vtx[0]; float $p[] = `pointPosition s3999Shape.vtx[0]`; print ($p[1] + \"\\n\");\n"
        "delete s2000Shape; undo; $p = `pointPosition s3999Shape.vtx[0]`; print ($p[1] + \"\\n\");\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.messages, "");
    EXPECT_EQ(outcome.output, "8\n0.5\n0.5\n");
}

/// A procedure that calls itself inside other things without end.
struct Recursion {
    std::string name;
    std::string result;  // type
    std::string before;
    std::string open;
    std::string close;
    int times;

    friend void PrintTo(const Recursion& recursion, std::ostream* stream) { *stream << recursion.name; }
};

class Recursions : public Limits, public testing::WithParamInterface<Recursion> {};

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int k = 0; k < times; ++k)
        all += text;
    return all;
}

TEST_P(Recursions, EndWithAnErrorBeforeTheSmallestStackDoes) {
    const Recursion& recursion = GetParam();
    const std::string script = "global proc " + recursion.result + " f(int $n) { " + recursion.before +
                               repeated(recursion.open, recursion.times) + "f($n + 1)" +
                               repeated(recursion.close, recursion.times) + "; }\nf(0);\n";
    // A fifth is left for compilers that take more of it.
    const Outcome outcome = runLimited("ulimit -s 820", "-noAutoloadPlugins -script", script);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.messages.find("Too many nested calls."), std::string::npos) << outcome.messages;
}

INSTANTIATE_TEST_SUITE_P(
    Batch, Recursions,
    testing::Values(Recursion{"brackets", "int", "return ", "(1 + ", ")", 60},
                    Recursion{"functions", "float", "return ", "abs(-", ")", 20},
                    Recursion{"manyArguments", "string", "return ", "substitute(\"a\", (\"b\" + ",
                              "), \"c\")", 20},
                    Recursion{"elements", "int", "int $a[] = {1}; return ", "$a[", "]", 30},
                    Recursion{"vectors", "vector", "return ", "<<1, 2, mag(", ")>>", 20},
                    Recursion{"commands", "string[]", "return ", "`ls (", ")`", 20},
                    Recursion{"assignments", "int", "int $x; return ", "($x = 1 ? ", " : 2)", 30},
                    Recursion{"blocks", "", "", "if (1) { ", ";}", 20},
                    Recursion{"texts", "string", "return ", "eval(", ")", 4}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_F(Limits, AFileThatSourcesItselfEndsWithAnError) {
    const Outcome outcome = runLimited("ulimit -s 820", "-noAutoloadPlugins -script",
                                       "source \"" + path("limited.mel") + "\";\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.messages.find("Too many nested calls."), std::string::npos) << outcome.messages;
}

// --- memory

TEST_F(Limits, AnAllocationThatFailsEndsAStatementAndKeepsTheScene) {
    const Outcome outcome =
        runLimited("ulimit -v 200000", "-noAutoloadPlugins -prompt <",
                   "polyCube -n kept -ch 0;\n"
                   "{ string $s = \"0123456789\"; int $i; for ($i = 0; $i < 24; $i++) $s = $s + $s; }\n"
                   "polyPlane -n big -sx 2500 -sy 2500 -ch 0; print `xform -q -ws -t big.vtx[5]`;\n"
                   "print (`objExists kept` + \" on\\n\");\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "// Result: kept //\n1 on\n");
    EXPECT_EQ(outcome.messages,
              "// Error: line 2.65: Out of memory. //\n// Error: line 3.1: Out of memory. //\n");
}

TEST_F(Limits, MemoryThatFillsUpSlowlyEndsTheStatementOnly) {
    for (int kilobytes = 92000; kilobytes <= 112000; kilobytes += 4000) {
        const Outcome outcome = runLimited(
            "ulimit -v " + std::to_string(kilobytes), "-noAutoloadPlugins -prompt <",
            "polyCube -n kept -ch 0;\n"
            "string $x[]; int $i; for ($i = 0; $i < 2000000; $i++) $x[$i] = \"abcdefghijklmnopqrst\";\n"
            "clear $x;\n"
            "print (`objExists kept` + \" on\\n\");\n");
        EXPECT_EQ(outcome.status, 1) << kilobytes;
        EXPECT_NE(outcome.output.find("1 on\n"), std::string::npos) << kilobytes << ": " << outcome.messages;
    }
}

TEST_F(Limits, ALineThatDoesNotFitInMemoryIsAnError) {
    const Outcome outcome =
        runLimited("ulimit -v 100000", "-noAutoloadPlugins -prompt <",
                   "string $s = \"" + std::string(60 << 20, 'x') + "\";\nprint \"never\\n\";\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.messages.find("Out of memory."), std::string::npos) << outcome.messages;
}

// --- scenes

TEST_F(Limits, ScenesMayBeDeeperThanTheStack) {
    constexpr int kDepth = 100000;
    std::string text = "createNode transform -n \"a0\";\n\tsetAttr \".tx\" 1;\n";
    for (int k = 1; k < kDepth; ++k)
        text.append("createNode transform -n \"a")
            .append(std::to_string(k))
            .append("\" -p \"a")
            .append(std::to_string(k - 1))
            .append("\";\n");
    const std::string scene = written("deep.ma", text);
    const Outcome outcome =
        runLimited("ulimit -s 1024", "-noAutoloadPlugins -file " + quoted(scene) + " -script",
                   "float $m[] = `getAttr a99999.worldMatrix`; print ($m[12] + \"\\n\");\n"
                   "setAttr a99999.ty 2; file -save; file -import -namespace in \"" +
                       scene +
                       "\";\n"
                       "print (size(`ls -type transform`) + \"\\n\"); file -new -force;\n");
    EXPECT_EQ(outcome.messages, "");
    EXPECT_EQ(outcome.output, "1\n200004\n");
    const std::string edit = "\tsetAttr \".t\" -type \"double3\" 0 2 0 ;\n";
    EXPECT_EQ(readTextFile(scene).text, text + edit);
}

TEST_F(Limits, WhatASceneSaysOfItsSizesTakesNoMemory) {
    const std::string text =
        "createNode mesh -n \"m\";\n"
        "\tsetAttr -s 4000000000 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\n\tsetAttr -s 4000000000 \".ed\";\n"
        "\tsetAttr -s 4000000000 \".pt\";\n\tsetAttr \".pt[0:2147483647]\" 1 2 3;\n"
        "\tsetAttr \".fc[0]\" -type \"polyFaces\" f 2147483647 0 1 2;\n"
        "createNode blendShape -n \"b\";\n\tsetAttr -s 4000000000 \".w\";\n"
        "\tsetAttr -s 2 \".w[2147483646:2147483647]\" 0 1;\n\tsetAttr \".w[0:2147483647]\" 1;\n"
        "\tsetAttr \".it[2147483647].itg[2147483647].iti[6000].ipt\" -type \"pointArray\" 2147483647 1;\n"
        "\tsetAttr \".it[0].itg[0].iti[6000].ict\" -type \"componentList\" 1 \"vtx[0:2147483647]\";\n"
        "createNode skinCluster -n \"s\";\n\tsetAttr -s 4000000000 \".wl\";\n"
        "\tsetAttr \".wl[0:2147483647].w\" 1 0 1;\n\tsetAttr \".wl[0].w\" 2147483647 0 1;\n"
        "\tsetAttr \".wl[2147483647].w[2147483647]\" 1;\n"
        "createNode unknownType -n \"u\";\n\tsetAttr -s 4000000000 \".a[0:2147483647].b\" 1;\n"
        "\taddAttr -sn \"c\" -ln \"c\" -at \"compound\" -nc 2147483647;\n"
        "\tsetAttr \".d\" -type \"stringArray\" 4000000000 \"a\";\n"
        "\tsetAttr \".e\" -type \"doubleArray\" 4000000000 1;\n";
    const std::string scene = written("hints.ma", text);
    const Outcome outcome = runLimited(
        "ulimit -v 100000", "-noAutoloadPlugins -file " + quoted(scene) + " -script",
        "string $all = `headlessDump`; catchQuiet(`getAttr b.w`); catchQuiet(`polyEvaluate -v m`);\n"
        "createNode network -n n; delete n; file -save; print (`objExists u` + \"\\n\");\n");
    EXPECT_EQ(outcome.status, 0) << outcome.messages;
    EXPECT_EQ(outcome.output, "1\n");
    EXPECT_EQ(readTextFile(scene).text, text);
}

TEST_F(Limits, ALineOfASceneMayBeLong) {
    const std::string text = "createNode network -n \"n\";\n\tsetAttr \".a\" -type \"string\" \"" +
                             std::string(50 << 20, 'x') + "\"; setAttr \".b\" 1;\n";
    const std::string scene = written("long.ma", text);
    const std::string words = "-noAutoloadPlugins -file " + quoted(scene) + " -script";
    // Twice the file and what the program needs by itself.
    Outcome outcome = runLimited("ulimit -v 160000", words, "setAttr n.b 2; file -save;\n");
    EXPECT_EQ(outcome.messages, "");
    EXPECT_TRUE(readTextFile(scene).text == text.substr(0, text.size() - 3) + "2;\n");
    written("long.ma", text + "x;");
    outcome = runLimited("ulimit -v 160000", words, "print 1;\n");
    EXPECT_NE(outcome.messages.find("long.ma, line 3, column 1: 'x' is not"), std::string::npos)
        << outcome.messages;
    written("long.ma", text.substr(0, text.size() - 20));
    outcome = runLimited("ulimit -v 160000", words, "print 1;\n");
    EXPECT_NE(outcome.messages.find("long.ma, line 2, column 30: The string"), std::string::npos)
        << outcome.messages;
}

// --- threads

constexpr const char* kSymmetry =
    "polyPlane -n face -sx 250 -sy 250 -ch 0;\n"
    "print (`dv_polySymmetry -axis \"x\" face` + \"\\n\");\n"
    "dv_polyMapVertexOrder -axis \"x\" face;\n"
    "print (size(`getAttr faceShape.dvVertexOrderMap`) + \"\\n\");\n";

TEST_F(Limits, OneThreadDoesWhatTheSystemGivesNoOtherFor) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can become a user who may start no thread";
    std::filesystem::permissions(path(""), std::filesystem::perms::all);
    for (const char* file : {"out", "err", "limited.mel"}) {
        written(file, {});
        std::filesystem::permissions(path(file), std::filesystem::perms::all);
    }
    const Outcome outcome = runLimited("ulimit -u 1", "-script", kSymmetry,
                                       "setpriv --reuid=65534 --regid=65534 --clear-groups bash");
    EXPECT_EQ(outcome.status, 0) << outcome.messages;
    EXPECT_EQ(outcome.output, "1\n63001\n");
}

TEST_F(Limits, LittleMemoryEndsARunWithAnErrorOrLeavesItWhole) {
    for (int kilobytes = 85000; kilobytes <= 205000; kilobytes += 15000) {
        const Outcome outcome = runLimited("ulimit -v " + std::to_string(kilobytes), "-script", kSymmetry);
        const bool isWhole = outcome.status == 0 && outcome.output == "1\n63001\n";
        const bool isRefused = outcome.status == 1 && outcome.messages.find("memory") != std::string::npos;
        EXPECT_TRUE(isWhole || isRefused) << kilobytes << ": " << outcome.status << ' ' << outcome.messages;
    }
}

}  // namespace

#endif
