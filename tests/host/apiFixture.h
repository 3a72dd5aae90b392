#pragma once

#include <gtest/gtest.h>
#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <string>
#include <string_view>
#include <vector>

#include "api/commands/apiCommand.h"
#include "api/handles/session.h"
#include "geometry/primitives.h"
#include "graph/graph.h"
#include "graph/names.h"
#include "mel/commandRegistry.h"
#include "nodes/meshNode.h"
#include "nodes/registerTypes.h"

namespace apitest {

/// Keeps what commands and scripts show.
class Shown final : public host::graph::MessageSink, public host::mel::Output {
  public:
    void print(const std::string& text) override { printed += text; }
    void info(const std::string& text) override { infos.push_back(text); }
    void warning(const std::string& text) override { warnings.push_back(text); }
    void error(const std::string& text) override { errors.push_back(text); }

    void print(std::string_view text) override { printed += text; }
    void info(std::string_view text) override { infos.emplace_back(text); }
    void warning(std::string_view text, const host::mel::SourcePosition&) override {
        warnings.emplace_back(text);
    }
    void error(std::string_view text, const host::mel::SourcePosition&) override {
        errors.emplace_back(text);
    }
    void result(std::string_view text) override { results.emplace_back(text); }

    std::string printed;
    std::vector<std::string> infos;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;
    std::vector<std::string> results;
};

/// The default scene with the API at work in it. The script command `setNumber plug value` sets a number and
/// can be undone.
class ApiTest : public ::testing::Test {
  protected:
    ApiTest() : prepared_(prepare(graph)), registry(graph, shown), session(registry) {
        using host::mel::ArgumentType;
        host::mel::Syntax syntax;
        syntax.addArgument(ArgumentType::String);
        syntax.addArgument(ArgumentType::Double);
        registry.add("setNumber", syntax, [](auto& context, const auto& arguments) {
            const auto match = host::graph::findPlug(context.graph, arguments.arguments()[0].toString());
            if (!match.ok) return host::mel::CommandResult::failure("no such plug");
            context.graph.setNumber(match.plug, arguments.arguments()[1].toFloat());
            return host::mel::CommandResult::success(arguments.arguments()[1]);
        });
    }

    /// A mesh object at the top of the scene. @return the shape
    MObject addMesh(const std::string& name, const host::geometry::Mesh& mesh = host::geometry::makeCube()) {
        host::nodes::createMesh(graph, mesh, name, nullptr);
        return object(host::nodes::shapeNameFor(name));
    }
    MObject addNode(const char* type, const char* name) {
        graph.createNode(*graph.types().find(type), name);
        return object(name);
    }
    static MObject object(const std::string& name) {
        MSelectionList list;
        MObject found;
        if (list.add(MString(name.c_str()))) list.getDependNode(0, found);
        return found;
    }
    static MDagPath path(const std::string& name) {
        MSelectionList list;
        MDagPath found;
        if (list.add(MString(name.c_str()))) list.getDagPath(0, found);
        return found;
    }
    static MPlug plug(const std::string& name) {
        MSelectionList list;
        MPlug found;
        if (list.add(MString(name.c_str()))) list.getPlug(0, found);
        return found;
    }

    host::graph::Graph graph;
    Shown shown;
    bool prepared_;
    host::mel::CommandRegistry registry;
    host::api::Session session;

  private:
    bool prepare(host::graph::Graph& scene) {
        host::nodes::registerTypes(scene.types());
        host::nodes::setUpScene(scene);
        scene.setMessages(shown);
        return true;
    }
};

inline std::string text(const MString& string) {
    return string.asChar();
}

inline std::vector<std::string> texts(const MStringArray& strings) {
    std::vector<std::string> result;
    for (unsigned int k = 0; k < strings.length(); ++k)
        result.emplace_back(strings[k].asChar());
    return result;
}

inline std::vector<int> ints(const MIntArray& array) {
    std::vector<int> result(array.length());
    if (!result.empty()) array.get(result.data());
    return result;
}

/// The names of a list's items.
inline std::vector<std::string> names(const MSelectionList& list) {
    MStringArray strings;
    list.getSelectionStrings(strings);
    return texts(strings);
}

}  // namespace apitest
