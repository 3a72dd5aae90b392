#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/commands.h"
#include "graph/names.h"
#include "graph/sceneDump.h"
#include "mel/commandRegistry.h"
#include "nodes/defaultCameras.h"
#include "nodes/meshNode.h"
#include "nodes/registerTypes.h"
#include "nodes/sets.h"
#include "support/dumpDifference.h"
#include "support/meshZoo.h"

namespace commandstest {

using namespace host;
using delven::test::dumpDifference;

/// Keeps what scripts and commands show, without positions.
class Shown final : public mel::Output, public graph::MessageSink {
  public:
    void print(std::string_view text) override { printed += text; }
    void info(std::string_view text) override { infos.emplace_back(text); }
    void warning(std::string_view text, const mel::SourcePosition&) override { warnings.emplace_back(text); }
    void error(std::string_view text, const mel::SourcePosition&) override { errors.emplace_back(text); }
    void result(std::string_view text) override { results.emplace_back(text); }

    void print(const std::string& text) override { printed += text; }
    void info(const std::string& text) override { infos.push_back(text); }
    void warning(const std::string& text) override { warnings.push_back(text); }
    void error(const std::string& text) override { errors.push_back(text); }

    void clear() {
        printed.clear();
        for (auto* list : {&infos, &warnings, &errors, &results})
            list->clear();
    }

    std::string printed;
    std::vector<std::string> infos;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;
    std::vector<std::string> results;
};

/// An empty scene with all script commands and no plug-in loader.
class Host {
  public:
    Host() : registry(graph, shown) {
        graph.setMessages(shown);
        nodes::registerTypes(graph.types());
        nodes::setUpScene(graph);
        nodes::addDefaultCameras(graph);
        commands::registerCommands(registry);
    }

    mel::RunResult run(const std::string& text) {
        shown.clear();
        return registry.run(text);
    }
    /// Runs what is expected to succeed; the result as text.
    std::string ok(const std::string& text) {
        const mel::RunResult result = run(text);
        EXPECT_TRUE(result.ok) << text << ": " << result.error.message;
        return result.value.toString();
    }
    /// Runs what is expected to fail; the error.
    std::string fails(const std::string& text) {
        const mel::RunResult result = run(text);
        EXPECT_FALSE(result.ok) << text;
        return result.error.message;
    }
    void addCube(const std::string& name) {
        const graph::NodeRef shape = nodes::createMesh(graph, zoo::cube(), name, nullptr);
        nodes::addToSet(graph, graph.nodesNamed("initialShadingGroup").front(), {shape, {}, {}});
    }
    /// Everything stored, after every mesh was evaluated: evaluating stores the deltas of live targets.
    std::string dump() {
        for (const graph::NodeRef& shape : graph.nodesOfType("mesh"))
            nodes::meshOf(graph, shape);
        return graph::sceneDump(graph);
    }
    std::size_t undoSize() { return graph.undoQueue().size(); }

    Shown shown;
    graph::Graph graph;
    mel::CommandRegistry registry;
};

}  // namespace commandstest
