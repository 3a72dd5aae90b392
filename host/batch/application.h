#pragma once

#include <string>

#include "api/handles/session.h"
#include "api/plugin/pluginLoader.h"
#include "batch/console.h"
#include "batch/options.h"
#include "graph/graph.h"
#include "mel/commandRegistry.h"

namespace host::batch {

/// The running host: a scene, the commands, the plug-in loader, and what the program's options do with them.
class Application {
  public:
    /// An empty scene. The console must outlive it.
    explicit Application(Console& console);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Loads DELVENTools from the program's folder. Warns if it does not exist.
    /// @return false if it exists and cannot be loaded
    bool loadOwnPlugin();

    /// Runs one action and shows its errors.
    /// @return false if it failed
    bool run(const Action& action);

    /// Whether a script has called `quit`: nothing more may be run.
    bool hasQuit() { return registry_.interpreter().isStopped(); }
    /// The exit status that `quit` asked for.
    int quitStatus() const { return registry_.exitStatus(); }

  private:
    bool succeeded(const mel::CommandResult& result);
    bool importFile(const std::string& path);
    bool runText(const std::string& text);
    bool runScript(const std::string& path);

    // The order of these members matters: later ones use earlier ones.
    Console& console_;
    graph::Graph graph_;
    mel::CommandRegistry registry_;
    api::Session session_;
    api::PluginLoader loader_;
};

}  // namespace host::batch
