#include "api/plugin/pluginLoader.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "api/handles/objectAccess.h"
#include "platform/libraryFolder.h"

namespace host::api {

namespace {

namespace fs = std::filesystem;

using EntryPoint = MStatus (*)(MObject);

// The entry points are C++ functions: a library knows them by their decorated names.
#if defined(_MSC_VER)
constexpr const char* kInitialize =
    "?initializePlugin@@YA?AVMStatus@OpenMaya20250000@Maya@Autodesk@@VMObject@234@@Z";
constexpr const char* kUninitialize =
    "?uninitializePlugin@@YA?AVMStatus@OpenMaya20250000@Maya@Autodesk@@VMObject@234@@Z";
#else
constexpr const char* kInitialize = "_Z16initializePluginN8Autodesk4Maya16OpenMaya202500007MObjectE";
constexpr const char* kUninitialize = "_Z18uninitializePluginN8Autodesk4Maya16OpenMaya202500007MObjectE";
#endif

std::string nameOf(const std::string& file) {
    return fs::u8path(file).stem().u8string();
}

std::vector<fs::path> searchFolders() {
    std::vector<fs::path> folders{fs::path()};
    const char* list = std::getenv("MAYA_PLUG_IN_PATH");
    std::string rest = list != nullptr ? list : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(platform::searchPathSeparator()), rest.size());
        if (end > 0) folders.push_back(fs::u8path(rest.substr(0, end)));
        rest.erase(0, end + 1);
    }
    folders.push_back(fs::u8path(platform::libraryFolder()));
    return folders;
}

/// The file for a name: unchanged or with a plug-in suffix; in the current folder, on the search path or in
/// the program's folder. Empty if there is none.
fs::path findFile(const std::string& file) {
    const fs::path wanted = fs::u8path(file);
    std::vector<std::string> suffixes{""};
    suffixes.insert(suffixes.end(), platform::pluginSuffixes().begin(), platform::pluginSuffixes().end());
    for (const fs::path& folder : searchFolders()) {
        for (const std::string& suffix : suffixes) {
            const fs::path candidate = folder / (wanted.u8string() + suffix);
            std::error_code error;
            if (fs::is_regular_file(candidate, error)) return fs::absolute(candidate, error);
        }
    }
    return {};
}

EntryPoint entryPoint(const Plugin& plugin, const char* symbol) {
    return reinterpret_cast<EntryPoint>(plugin.library->symbol(symbol));
}

/// Why this library is not a plug-in; empty if it is one.
std::string lackOf(const Plugin& plugin) {
    if (entryPoint(plugin, kInitialize) == nullptr || entryPoint(plugin, kUninitialize) == nullptr)
        return "is no plug-in: initializePlugin or uninitializePlugin is missing.";
    if (plugin.library->symbol("MApiVersion") == nullptr)
        return "does not say which API it was built with: MApiVersion is not among the names that it "
               "exports. "
               "Include <maya/MFnPlugin.h> in one source file without MNoVersionString, and have the linker "
               "export MApiVersion.";
    return {};
}

bool runEntryPoint(const std::shared_ptr<Plugin>& plugin, const char* symbol) {
    PluginCall call{plugin->description.name};
    const CallScope scope(call);
    return entryPoint(*plugin, symbol)(ObjectAccess::pluginObject(plugin));
}

}  // namespace

PluginLoader::PluginLoader(Session& session) : session_(session) {
    session_.commands().setPlugins(this);
}

PluginLoader::~PluginLoader() {
    while (!plugins_.empty())
        unload(plugins_.back()->description.name, true);
    session_.commands().setPlugins(nullptr);
}

mel::CommandResult PluginLoader::load(const std::string& file) {
    if (const std::shared_ptr<Plugin> present = find(file)) {
        session_.graph().messages().warning("Plug-in, \"" + present->description.name +
                                            "\", is already loaded.");
        return mel::CommandResult::success(present->description.name);
    }
    const fs::path path = findFile(file);
    if (path.empty())
        return mel::CommandResult::failure("Plug-in, \"" + file +
                                           "\", was not found on MAYA_PLUG_IN_PATH or beside the program.");
    platform::LibraryResult opened = platform::openLibrary(path.u8string());
    if (opened.library == nullptr)
        return mel::CommandResult::failure("Unable to load plug-in \"" + path.u8string() +
                                           "\": " + opened.error);
    auto plugin = std::make_shared<Plugin>();
    plugin->library = std::move(opened.library);
    plugin->description.name = nameOf(path.u8string());
    plugin->description.path = path.generic_u8string();
    const std::string lack = lackOf(*plugin);
    if (!lack.empty()) return mel::CommandResult::failure("\"" + path.u8string() + "\" " + lack);
    if (!runEntryPoint(plugin, kInitialize)) {
        removeCommands(*plugin);
        return mel::CommandResult::failure("initializePlugin function failed (" + plugin->description.name +
                                           ")");
    }
    plugins_.push_back(plugin);
    return mel::CommandResult::success(plugin->description.name);
}

mel::CommandResult PluginLoader::unload(const std::string& name, bool force) {
    const std::shared_ptr<Plugin> plugin = find(name);
    if (plugin == nullptr) return mel::CommandResult::failure("Plug-in, \"" + name + "\", is not loaded.");
    const std::string& own = plugin->description.name;
    const PluginCall* call = session_.call();
    if (call != nullptr && call->owner == own)
        return mel::CommandResult::failure("Plug-in, \"" + own + "\", is in use and cannot be unloaded.");
    // Before uninitializePlugin: after it, no command object on the queue may call into the plug-in.
    session_.graph().undoQueue().flushOwner(own);
    if (!runEntryPoint(plugin, kUninitialize) && !force)
        return mel::CommandResult::failure("uninitializePlugin function failed (" + own + ")");
    removeCommands(*plugin);
    plugins_.erase(std::find(plugins_.begin(), plugins_.end(), plugin));
    return mel::CommandResult::success();
}

void PluginLoader::removeCommands(const Plugin& plugin) {
    for (const std::string& command : plugin.description.commands)
        session_.commands().removePlugin(command, plugin.description.name);
    for (const std::string& command : plugin.description.contextCommands) {
        session_.commands().tools().removeMadeBy(command);
        session_.commands().removePlugin(command, plugin.description.name);
    }
}

std::vector<std::string> PluginLoader::loaded() const {
    std::vector<std::string> names;
    names.reserve(plugins_.size());
    for (const auto& plugin : plugins_)
        names.push_back(plugin->description.name);
    return names;
}

std::optional<mel::PluginDescription> PluginLoader::describe(const std::string& name) const {
    const std::shared_ptr<Plugin> plugin = find(name);
    if (plugin == nullptr) return std::nullopt;
    return plugin->description;
}

std::shared_ptr<Plugin> PluginLoader::find(const std::string& name) const {
    const std::string wanted = nameOf(name);
    const auto found = std::find_if(plugins_.begin(), plugins_.end(),
                                    [&](const auto& plugin) { return plugin->description.name == wanted; });
    return found != plugins_.end() ? *found : nullptr;
}

}  // namespace host::api
