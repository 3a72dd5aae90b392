#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "geometry/mesh.h"
#include "graph/graph.h"
#include "mel/value.h"

/// What one piece of script did.
struct Outcome {
    bool ok = false;
    host::mel::Value value;
    std::string printed;
    std::vector<std::string> infos;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;  // of commands and of the script itself, without position
    std::vector<std::string> echoed;  // results of script that a command composes, where it has them shown
};

/// What some work writes to the standard error stream.
std::string standardErrorOf(const std::function<void()>& work);

/// A fresh host with an empty scene, and the module loaded in it unless it is told not to. One at a time.
class Scene {
  public:
    enum class Plugin { Loaded, NotLoaded };

    explicit Scene(Plugin plugin = Plugin::Loaded);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    host::graph::Graph& graph();
    /// Runs script text and says everything it did.
    Outcome run(const std::string& text);
    /// What some work of a test itself shows.
    Outcome during(const std::function<void()>& work);
    /// Runs script text that is expected to succeed without an error or warning (a test failure otherwise).
    host::mel::Value mel(const std::string& text);
    /// Everything in the scene as text: equal texts, equal scenes.
    std::string dump();
    /// What is different from an earlier dump, a line each, "" when nothing is.
    std::string changes(const std::string& before);
    /// Makes a mesh object <name> with the shape <name>Shape in the initial shading group.
    void addMesh(const std::string& name, const host::geometry::Mesh& mesh);
    /// Object-space points of a mesh, x y z in turn.
    std::vector<double> points(const std::string& mesh);

    /// Makes a command of this name exist, so that a plug-in cannot register it.
    void takeCommandName(const std::string& name);

    /// Hides the script files of the kit.
    void forgetScripts();

    /// The module's file beside the test program.
    static std::string pluginFile();

  private:
    struct Host;
    std::unique_ptr<Host> host_;
};
