#pragma once

#include <string>

#include "batch/console.h"
#include "batch/options.h"
#include "runtime/runtime.h"

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
    bool hasQuit() { return runtime_.commands().interpreter().isStopped(); }
    /// The exit status that `quit` asked for.
    int quitStatus() { return runtime_.commands().exitStatus(); }

  private:
    bool succeeded(const mel::CommandResult& result);
    bool importFile(const std::string& path);
    bool runText(const std::string& text);
    bool runScript(const std::string& path);

    Console& console_;
    runtime::Runtime runtime_;
};

}  // namespace host::batch
