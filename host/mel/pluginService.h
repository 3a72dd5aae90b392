#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mel/commandTable.h"

namespace host::mel {

/// What is known of a loaded plug-in.
struct PluginDescription {
    std::string name;  // file name without its suffix
    std::string path;
    std::string vendor;
    std::string version;
    std::string apiVersion;
    std::vector<std::string> commands;           // script commands, in the order of their registration
    std::vector<std::string> contextCommands{};  // script commands that make tools, in the same order
};

/// Loads and unloads plug-ins, on behalf of the script commands. The results carry the host's error texts.
class PluginService {
  public:
    virtual ~PluginService() = default;
    PluginService() = default;
    PluginService(const PluginService&) = delete;
    PluginService& operator=(const PluginService&) = delete;

    /// Loads a plug-in by file name, with or without directory and suffix. Warns and succeeds when it is
    /// loaded already.
    /// @return the plug-in's name as a string
    virtual CommandResult load(const std::string& file) = 0;
    /// Unloads a plug-in by name or path. Undo entries of its commands go with it.
    /// @param force  also while something that belongs to it is in use
    virtual CommandResult unload(const std::string& name, bool force) = 0;
    /// Names in the order of loading.
    virtual std::vector<std::string> loaded() const = 0;
    /// A loaded plug-in by name, file name or path.
    virtual std::optional<PluginDescription> describe(const std::string& name) const = 0;
};

}  // namespace host::mel
