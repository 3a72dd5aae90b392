#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "api/handles/session.h"
#include "mel/pluginService.h"
#include "platform/library.h"

namespace host::api {

/// A plug-in that is loaded, or being loaded. MFnPlugin works on it.
struct Plugin {
    mel::PluginDescription description{};
    std::shared_ptr<platform::Library> library{};
};

/// Loads plug-ins into the running session. While it exists, it is the registry's plug-in service.
///
/// A plug-in's entry points run without a recorder: their changes to the scene are not on the undo queue. If
/// initializePlugin fails, no command of the plug-in remains. When the loader is destroyed it unloads all
/// remaining plug-ins, so it must be destroyed before the session and the registry.
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
