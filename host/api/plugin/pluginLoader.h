#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "api/handles/session.h"
#include "mel/pluginService.h"
#include "platform/library.h"

namespace host::api {

/// A plug-in that is loaded, or being loaded: what a MFnPlugin works on.
struct Plugin {
    mel::PluginDescription description{};
    std::shared_ptr<platform::Library> library{};
};

/// Loads plug-ins into the running session; the registry's plug-in service while it lives.
///
/// A plug-in's entry points run without a recorder: what they change in the scene is on no undo queue. A
/// plug-in whose initializePlugin fails leaves no command behind. The loader unloads what is still loaded
/// when it goes, so it goes before the session and the registry.
class PluginLoader final : public mel::PluginService {
  public:
    explicit PluginLoader(Session& session);
    ~PluginLoader() override;

    mel::CommandResult load(const std::string& file) override;
    mel::CommandResult unload(const std::string& name, bool force) override;
    std::vector<std::string> loaded() const override;
    std::optional<mel::PluginDescription> describe(const std::string& name) const override;

  private:
    std::shared_ptr<Plugin> find(const std::string& name) const;
    void removeCommands(const Plugin& plugin);

    Session& session_;
    std::vector<std::shared_ptr<Plugin>> plugins_;
};

}  // namespace host::api
