#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

#include "host/commandsFixture.h"
#include "mel/pluginService.h"

namespace commandstest {
namespace {

using mel::CommandContext;
using mel::CommandResult;
using mel::ParsedArguments;
using mel::Value;

/// A plug-in's command made of two functions.
class FakeCommand final : public mel::PluginCommand {
  public:
    using Action = std::function<CommandResult()>;

    /// @param undo  called with "undo" or "redo"; empty for a command that cannot be undone
    FakeCommand(Action action, std::function<void(const std::string&)> undo)
        : action_(std::move(action)), undo_(std::move(undo)) {}

    mel::PluginCallResult call(std::vector<Value>&&) override {
        CommandResult result = action_();
        return {std::move(result), undo_ ? std::make_unique<Entry>(undo_) : nullptr};
    }

  private:
    class Entry final : public graph::UndoEntry {
      public:
        explicit Entry(std::function<void(const std::string&)> step) : step_(std::move(step)) {}
        bool undo(graph::Graph&) override { return step_("undo"), true; }
        bool redo(graph::Graph&) override { return step_("redo"), true; }

      private:
        std::function<void(const std::string&)> step_;
    };

    Action action_;
    std::function<void(const std::string&)> undo_;
};

class RegistryTest : public testing::Test {
  protected:
    void addPlugin(const std::string& name, FakeCommand::Action action, bool undoable = true) {
        std::function<void(const std::string&)> undo;
        if (undoable)
            undo = [this, name](const std::string& step) {
                steps.push_back(name + ' ' + step);
                recorderDuringStep = host.graph.recorder() != nullptr;
                host.registry.executeText("setAttr a.tz 1", {true, false});
            };
        host.registry.addPlugin(name, "fake", std::make_shared<FakeCommand>(std::move(action), undo));
    }
    double value(const std::string& plug) { return std::stod(host.ok("getAttr " + plug)); }

    Host host;
    std::vector<std::string> steps;
    bool recorderDuringStep = false;
};

TEST_F(RegistryTest, AFailingCommandLeavesNothingBehind) {
    host.registry.add("breakOff", mel::Syntax(), [](CommandContext& context, const ParsedArguments&) {
        const graph::NodeRef node =
            context.graph.createNode(*context.graph.types().find("transform"), "half");
        context.graph.setNumber(node->plug("translate").child(0), 4);
        return CommandResult::failure("broke off");
    });
    const std::string before = host.dump();
    EXPECT_EQ(host.fails("breakOff"), "broke off");
    EXPECT_EQ(dumpDifference(before, host.dump()), "");
    EXPECT_EQ(host.undoSize(), 0U);
    EXPECT_EQ(host.shown.errors, std::vector<std::string>{"broke off"});
}

TEST_F(RegistryTest, OnlyCommandsThatChangeSomethingMakeUndoEntries) {
    host.ok("createNode transform -n a; ls; getAttr a.tx; setAttr a.tx 1; objExists a;");
    EXPECT_EQ(host.undoSize(), 2U);
}

TEST_F(RegistryTest, NamesAreGivenOnce) {
    const auto nothing = [](CommandContext&, const ParsedArguments&) { return CommandResult::success(); };
    EXPECT_FALSE(host.registry.add("ls", mel::Syntax(), nothing));
    addPlugin("tool", [] { return CommandResult::success(7); });
    EXPECT_EQ(host.ok("tool"), "7");
    EXPECT_EQ(host.ok("whatIs tool"), "Plug-in Command");
    for (const char* taken : {"tool", "ls", "size"})
        EXPECT_FALSE(
            host.registry.addPlugin(taken, "other", std::make_shared<FakeCommand>(nullptr, nullptr)));
    EXPECT_FALSE(host.registry.removePlugin("tool", "other"));
    EXPECT_FALSE(host.registry.removePlugin("ls", ""));
    EXPECT_TRUE(host.registry.removePlugin("tool", "fake"));
    EXPECT_EQ(host.fails("tool"), "Cannot find procedure \"tool\".");
}

TEST_F(RegistryTest, APluginsChangesAreItsOwnToUndo) {
    host.ok("createNode transform -n a");
    bool hadRecorder = true;
    addPlugin("push", [&] {
        hadRecorder = host.graph.recorder() != nullptr;
        EXPECT_TRUE(host.registry.executeText("setAttr a.tx 5").ok);
        return CommandResult::success();
    });
    host.ok("push");
    EXPECT_FALSE(hadRecorder);
    EXPECT_EQ(host.undoSize(), 2U);
    host.ok("undo");
    EXPECT_EQ(steps, std::vector<std::string>{"push undo"});
    EXPECT_FALSE(recorderDuringStep);
    EXPECT_EQ(value("a.tx"), 5);
    EXPECT_EQ(host.undoSize(), 1U) << "what runs while undoing makes no entries";
    host.ok("redo; undo; undo");
    EXPECT_EQ(steps, (std::vector<std::string>{"push undo", "push redo", "push undo"}));
    EXPECT_EQ(host.ok("ls -as"), "persp top front side");
}

TEST_F(RegistryTest, NestedCommandsThatKeepUndoBelongToThePluginsEntry) {
    host.ok("createNode transform -n a");
    addPlugin("push", [&] {
        host.registry.executeText("setAttr a.tx 5; setAttr a.ty 6", {true, false});
        return CommandResult::success();
    });
    host.ok("push");
    ASSERT_EQ(host.undoSize(), 2U);
    host.ok("undo");
    EXPECT_EQ(value("a.tx"), 0);
    EXPECT_EQ(value("a.ty"), 0);
    EXPECT_EQ(steps, std::vector<std::string>{"push undo"});
    host.ok("redo");
    EXPECT_EQ(value("a.ty"), 6);
}

TEST_F(RegistryTest, NothingInsideACallWithoutUndoIsKept) {
    host.ok("createNode transform -n a");
    addPlugin("inner", [&] {
        host.registry.executeText("setAttr a.tx 5", {true, false});
        return CommandResult::success();
    });
    addPlugin(
        "outer",
        [&] {
            host.registry.executeText("inner");
            return CommandResult::success();
        },
        false);
    host.ok("outer");
    EXPECT_EQ(host.undoSize(), 1U);
    EXPECT_EQ(value("a.tx"), 5);
}

TEST_F(RegistryTest, AFailingPluginCommandLeavesNoEntry) {
    addPlugin("broken", [&] {
        host.registry.executeText("createNode transform -n left", {true, false});
        return CommandResult::failureShown();
    });
    host.fails("broken");
    EXPECT_TRUE(host.shown.errors.empty());
    EXPECT_EQ(host.undoSize(), 0U);
    EXPECT_EQ(host.ok("ls -as"), "persp top front side left");
}

TEST_F(RegistryTest, AnInterruptWaitsForAPluginCommandAndForItsUndo) {
    std::atomic<bool> flag{false};
    host.registry.interpreter().setInterruptFlag(flag);
    const auto work = [&](const std::string& text) {
        flag = true;
        EXPECT_TRUE(
            host.registry.executeText("int $i; for ($i = 0; $i < 3; $i++) setAttr a.tx ($i + 1); " + text)
                .ok);
    };
    host.registry.addPlugin(
        "slow", "owner",
        std::make_shared<FakeCommand>(
            [&] {
                work("setAttr a.ty 1");
                return CommandResult::success();
            },
            [&](const std::string& step) { work(step == "undo" ? "setAttr a.ty 0" : "setAttr a.ty 1"); }));
    host.ok("createNode transform -n a");
    EXPECT_EQ(host.fails("slow; setAttr a.tz 1"), "Interrupted.");
    EXPECT_EQ(host.ok("getAttr a.t"), "3 1 0") << "all of the command, nothing behind it";
    EXPECT_EQ(host.fails("undo; setAttr a.tz 1"), "Interrupted.");
    EXPECT_EQ(host.ok("getAttr a.t"), "3 0 0");
    EXPECT_EQ(host.fails("redo; setAttr a.tz 1"), "Interrupted.");
    EXPECT_EQ(host.ok("getAttr a.t"), "3 1 0");
}

TEST_F(RegistryTest, TextRunForAPluginShowsItsErrorsAndEchoesOnDemand) {
    bool failed = false;
    addPlugin("run", [&] {
        failed = !host.registry.executeText("delete gone").ok;
        host.registry.executeText("objExists time1", {false, true});
        return CommandResult::success();
    });
    host.ok("run");
    EXPECT_TRUE(failed);
    EXPECT_EQ(host.shown.errors, std::vector<std::string>{"No object matches name: gone"});
    EXPECT_EQ(host.shown.results, std::vector<std::string>{"1"});
}

TEST_F(RegistryTest, AFailingScriptClosesTheUndoChunksThatItOpened) {
    host.ok("createNode transform -n a; undoInfo -openChunk; setAttr a.tx 1");
    host.ok("catch(`eval \"undoInfo -openChunk; delete gone\"`); undoInfo -closeChunk");
    EXPECT_TRUE(host.shown.warnings.empty()) << "the script itself did not fail";
    EXPECT_EQ(host.graph.undoQueue().openChunks(), 1);
    host.fails("undoInfo -openChunk; undoInfo -openChunk; setAttr a.ty 2; delete gone");
    EXPECT_EQ(host.shown.warnings,
              std::vector<std::string>{
                  "The script failed inside an undo chunk that it had opened. The chunk was closed."});
    EXPECT_EQ(host.graph.undoQueue().openChunks(), 1) << "that of the script before";
    host.fails("setAttr a.tz 3; delete gone");
    EXPECT_TRUE(host.shown.warnings.empty());
    host.ok("undoInfo -closeChunk; undo");
    EXPECT_EQ(value("a.tx"), 0);
    EXPECT_EQ(value("a.tz"), 0);
    EXPECT_EQ(host.undoSize(), 1U);
}

TEST_F(RegistryTest, DeferredTextRunsAfterTheScript) {
    host.ok(
        "evalDeferred -lp \"print c\"; evalDeferred \"print a; evalDeferred \\\"print b\\\"\"; print start;");
    EXPECT_EQ(host.shown.printed, "startabc");
    EXPECT_FALSE(host.run("evalDeferred \"nonsense\"; evalDeferred \"print after\";").ok);
    EXPECT_EQ(host.shown.printed, "after");
    EXPECT_EQ(host.shown.errors, std::vector<std::string>{"Cannot find procedure \"nonsense\"."});
}

TEST_F(RegistryTest, QuitStopsTheScriptAndKeepsTheStatus) {
    host.run("print before; quit -f -exitCode 3; print after;");
    EXPECT_EQ(host.shown.printed, "before");
    EXPECT_TRUE(host.registry.interpreter().isStopped());
    EXPECT_EQ(host.registry.exitStatus(), 3);
}

TEST_F(RegistryTest, SourceRunsAFileAndFailsWithIt) {
    const auto path = std::filesystem::temp_directory_path() / "delvenSourceTest.mel";
    std::ofstream(path) << "global proc string fromFile() { return \"read\"; }\nprint \"sourced\";\n";
    const std::string name = path.generic_string();
    host.ok("source \"" + name + "\";");
    EXPECT_EQ(host.shown.printed, "sourced");
    EXPECT_EQ(host.ok("fromFile"), "read");
    EXPECT_EQ(host.ok("whatIs fromFile"), "Mel procedure found in: " + name);
    host.ok("source \"" + name.substr(0, name.size() - 4) + "\";");
    std::ofstream(path) << "print \"one\";\n  delete gone;\nprint \"two\";\n";
    const mel::RunResult result = host.run("source \"" + name + "\"; print \"three\";");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(host.shown.printed, "one");
    EXPECT_EQ(result.error.position.file, name);
    EXPECT_EQ(result.error.position.line, 2);
    std::filesystem::remove(path);
}

/// A loader that only remembers names.
class FakeService final : public mel::PluginService {
  public:
    CommandResult load(const std::string& file) override {
        if (file == "bad") return CommandResult::failure("cannot load bad");
        names.push_back(file);
        return CommandResult::success(file);
    }
    CommandResult unload(const std::string& name, bool force) override {
        forced = force;
        names.erase(std::remove(names.begin(), names.end(), name), names.end());
        return CommandResult::success();
    }
    std::vector<std::string> loaded() const override { return names; }
    std::optional<mel::PluginDescription> describe(const std::string& name) const override {
        if (std::find(names.begin(), names.end(), name) == names.end()) return std::nullopt;
        return mel::PluginDescription{name, "/plugins/" + name, "us", "1.2", "20250000", {"go", "stop"}};
    }

    std::vector<std::string> names;
    bool forced = false;
};

TEST_F(RegistryTest, PluginCommandsAskTheLoader) {
    FakeService service;
    host.registry.setPlugins(&service);
    EXPECT_EQ(host.ok("loadPlugin one two"), "one two");
    EXPECT_EQ(host.fails("loadPlugin -quiet bad"), "cannot load bad");
    EXPECT_EQ(host.ok("pluginInfo -query -listPlugins"), "one two");
    EXPECT_EQ(host.ok("pluginInfo -q -loaded one"), "1");
    EXPECT_EQ(host.ok("pluginInfo -q -command one"), "go stop");
    EXPECT_EQ(host.ok("pluginInfo -q -version one"), "1.2");
    EXPECT_EQ(host.ok("pluginInfo -q -vendor one"), "us");
    EXPECT_EQ(host.ok("pluginInfo -q -listPluginsPath"), "/plugins/one /plugins/two");
    EXPECT_EQ(host.ok("unloadPlugin -force two"), "two");
    EXPECT_TRUE(service.forced);
    EXPECT_EQ(host.ok("pluginInfo -q -loaded two"), "0");
    EXPECT_EQ(host.fails("pluginInfo -q -path two"), "Plug-in, \"two\", is not registered.");
}

TEST_F(RegistryTest, LongComponentListsKeepOrderAndDuplicates) {
    constexpr int kCount = 100000;
    std::string command = "setAttr n.list -type componentList " + std::to_string(kCount);
    std::vector<std::string> words;
    for (int k = 0; k < kCount; ++k) {
        words.push_back("vtx[" + std::to_string((k * 7919) % 65536) + ']');
        command += ' ' + words.back();
    }
    host.ok("createNode network -n n; addAttr -ln list -dt componentList n");
    host.ok(command);
    const mel::RunResult result = host.run("getAttr n.list");
    ASSERT_NE(result.value.getIf<std::vector<std::string>>(), nullptr);
    EXPECT_EQ(*result.value.getIf<std::vector<std::string>>(), words);
}

}  // namespace
}  // namespace commandstest
