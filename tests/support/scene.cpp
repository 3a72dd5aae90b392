#include "support/scene.h"

#include <gtest/gtest.h>
#include <hostPrivate/arrayPoison.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <utility>

#include "graph/sceneDump.h"
#include "mel/commandRegistry.h"
#include "nodes/meshNode.h"
#include "nodes/sets.h"
#include "runtime/runtime.h"
#include "support/dumpDifference.h"
#include "support/variants.h"

namespace {

namespace graph = host::graph;
namespace mel = host::mel;

/// Collects what scripts print and commands report.
class Collector final : public mel::Output, public graph::MessageSink {
  public:
    void print(std::string_view text) override { outcome_.printed += text; }
    void info(std::string_view text) override { add(&Outcome::infos, text); }
    void warning(std::string_view text, const mel::SourcePosition&) override {
        add(&Outcome::warnings, text);
    }
    void error(std::string_view text, const mel::SourcePosition&) override { add(&Outcome::errors, text); }
    void result(std::string_view text) override { add(&Outcome::echoed, text); }

    void print(const std::string& text) override { outcome_.printed += text; }
    void info(const std::string& text) override { add(&Outcome::infos, text); }
    void warning(const std::string& text) override { add(&Outcome::warnings, text); }
    void error(const std::string& text) override { add(&Outcome::errors, text); }

    Outcome take() { return std::exchange(outcome_, {}); }

  private:
    void add(std::vector<std::string> Outcome::*list, std::string_view text) {
        const std::lock_guard<std::mutex> lock(mutex_);
        (outcome_.*list).emplace_back(text);
    }

    std::mutex mutex_;
    Outcome outcome_;
};

}  // namespace

struct Scene::Host {
    Host() : runtime(collector, collector, variant()) {
        if (variant().leavesArraysUnset) host::api::setArrayPoison(true);
    }

    Collector collector;
    host::runtime::Runtime runtime;
};

Scene::Scene(Plugin plugin) : host_(std::make_unique<Host>()) {
    if (plugin == Plugin::Loaded) mel("loadPlugin \"" + pluginFile() + "\"");
}

Scene::~Scene() = default;

graph::Graph& Scene::graph() {
    return host_->runtime.graph();
}

namespace {

/// Adds a text that a user would have seen to the file that $DELVEN_SHOWN_TEXTS names, if it does.
void recordText(const std::string& text) {
    static const char* const file = std::getenv("DELVEN_SHOWN_TEXTS");
    if (file == nullptr || text.empty()) return;
    static std::ofstream stream(file, std::ios::app);
    stream << text << std::endl;
}

void record(const Outcome& outcome) {
    recordText(outcome.printed);
    recordText(outcome.value.toString());
    for (const auto* texts : {&outcome.infos, &outcome.warnings, &outcome.errors}) {
        for (const std::string& text : *texts)
            recordText(text);
    }
}

}  // namespace

std::string standardErrorOf(const std::function<void()>& work) {
    ::testing::internal::CaptureStderr();
    work();
    std::string text = ::testing::internal::GetCapturedStderr();
    recordText(text);
    return text;
}

Outcome Scene::run(const std::string& text) {
    host_->collector.take();
    mel::RunResult result = host_->runtime.commands().run(text);
    Outcome outcome = host_->collector.take();
    outcome.ok = result.ok;
    outcome.value = std::move(result.value);
    record(outcome);
    return outcome;
}

Outcome Scene::during(const std::function<void()>& work) {
    host_->collector.take();
    work();
    Outcome outcome = host_->collector.take();
    record(outcome);
    return outcome;
}

mel::Value Scene::mel(const std::string& text) {
    const Outcome outcome = run(text);
    EXPECT_TRUE(outcome.ok) << text;
    EXPECT_TRUE(outcome.errors.empty()) << text << '\n' << ::testing::PrintToString(outcome.errors);
    EXPECT_TRUE(outcome.warnings.empty()) << text << '\n' << ::testing::PrintToString(outcome.warnings);
    return outcome.value;
}

std::string Scene::dump() {
    return graph::sceneDump(host_->runtime.graph());
}

std::string Scene::changes(const std::string& before) {
    return delven::test::dumpDifference(before, dump());
}

void Scene::addMesh(const std::string& name, const host::geometry::Mesh& mesh) {
    const graph::NodeRef shape = host::nodes::createMesh(host_->runtime.graph(), mesh, name, nullptr);
    host::nodes::forceElement(host_->runtime.graph(),
                              host_->runtime.graph().nodesNamed("initialShadingGroup").front(), {shape});
}

std::vector<double> Scene::points(const std::string& mesh) {
    return this->mel("xform -query -objectSpace -translation \"" + mesh + ".vtx[*]\"").toFloatArray();
}

void Scene::forgetScripts() {
    host_->runtime.commands().setProcedureLoader({});
}

void Scene::takeCommandName(const std::string& name) {
    host_->runtime.commands().add(name, mel::Syntax(), [](mel::CommandContext&, const mel::ParsedArguments&) {
        return mel::CommandResult::success();
    });
}

std::string Scene::pluginFile() {
#if defined(_WIN32)
    const char* suffix = ".mll";
#elif defined(__APPLE__)
    const char* suffix = ".bundle";
#else
    const char* suffix = ".so";
#endif
    return (std::filesystem::path(DELVEN_PLUGIN_DIR) / ("DELVENTools" + std::string(suffix)))
        .generic_string();
}
