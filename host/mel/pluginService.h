#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mel/commandTable.h"

namespace host::mel {

/// What is known about a loaded plug-in.
struct PluginDescription {
    std::string name;  // file name without its suffix
    std::string path;
    std::string vendor;
    std::string version;
    std::string apiVersion;
    std::vector<std::string> commands;           // script commands, in the order of their registration
    std::vector<std::string> contextCommands{};  // script commands that make tools, in the same order
};

/// Loads and unloads plug-ins for the script commands. The results contain the host's error texts.
class PluginService {
  public:
    virtual ~PluginService() = default;
    PluginService() = default;
    PluginService(const PluginService&) = delete;
    PluginService& operator=(const PluginService&) = delete;

    /// Loads a plug-in by file name, with or without directory and suffix. If it is already loaded, warns and
    /// succeeds.
    /// @return the plug-in's name as a string
    virtual CommandResult load(const std::string& file) = 0;
    /// Unloads a plug-in by name or path. A queue with undo entries of its commands is emptied.
    /// @param force  also while something that belongs to it is in use
    virtual CommandResult unload(const std::string& name, bool force) = 0;
    /// Names in the order of loading.
    virtual std::vector<std::string> loaded() const = 0;
    /// A loaded plug-in, found by name, file name or path.
    virtual std::optional<PluginDescription> describe(const std::string& name) const = 0;
};

}  // namespace host::mel
