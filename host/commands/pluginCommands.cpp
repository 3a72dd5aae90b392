// The commands loadPlugin, unloadPlugin and pluginInfo.

#include "commands/commandSupport.h"
#include "commands/commands.h"
#include "mel/pluginService.h"

namespace host::commands {

namespace {

const char* const kNoPlugins = "There is no plug-in loader in this program.";

CommandResult loadPlugin(CommandContext& context, const ParsedArguments& arguments) {
    mel::PluginService* plugins = context.registry.plugins();
    if (plugins == nullptr) return CommandResult::failure(kNoPlugins);
    std::vector<std::string> names;
    for (const std::string& file : arguments.objectNames()) {
        CommandResult result = plugins->load(file);
        if (!result.ok) return result;
        names.push_back(result.value.toString());
    }
    return CommandResult::success(std::move(names));
}

CommandResult unloadPlugin(CommandContext& context, const ParsedArguments& arguments) {
    mel::PluginService* plugins = context.registry.plugins();
    if (plugins == nullptr) return CommandResult::failure(kNoPlugins);
    std::vector<std::string> names;
    for (const std::string& name : arguments.objectNames()) {
        CommandResult result = plugins->unload(name, arguments.isSet("force"));
        if (!result.ok) return result;
        names.push_back(name);
    }
    return CommandResult::success(std::move(names));
}

CommandResult describe(const mel::PluginDescription& plugin, const ParsedArguments& arguments) {
    if (arguments.isSet("command")) return CommandResult::success(plugin.commands);
    if (arguments.isSet("tool")) return CommandResult::success(plugin.contextCommands);
    if (arguments.isSet("path")) return CommandResult::success(plugin.path);
    if (arguments.isSet("name")) return CommandResult::success(plugin.name);
    if (arguments.isSet("vendor")) return CommandResult::success(plugin.vendor);
    if (arguments.isSet("version")) return CommandResult::success(plugin.version);
    if (arguments.isSet("apiVersion")) return CommandResult::success(plugin.apiVersion);
    return CommandResult::failure("pluginInfo: Nothing was asked for.");
}

CommandResult pluginInfo(CommandContext& context, const ParsedArguments& arguments) {
    if (!arguments.isQuery())
        return CommandResult::failure("pluginInfo: Only the query mode is covered by this host.");
    const mel::PluginService* plugins = context.registry.plugins();
    if (plugins == nullptr) return CommandResult::failure(kNoPlugins);
    if (arguments.isSet("listPlugins")) return CommandResult::success(plugins->loaded());
    if (arguments.isSet("listPluginsPath")) {
        std::vector<std::string> paths;
        for (const std::string& name : plugins->loaded())
            paths.push_back(plugins->describe(name)->path);
        return CommandResult::success(std::move(paths));
    }
    if (arguments.objects().empty()) return CommandResult::failure("pluginInfo: A plug-in must be named.");
    const std::string name = arguments.objectNames().front();
    const auto plugin = plugins->describe(name);
    if (arguments.isSet("loaded") || arguments.isSet("registered"))
        return CommandResult::success(plugin.has_value());
    if (!plugin) return CommandResult::failure("Plug-in, \"" + name + "\", is not registered.");
    return describe(*plugin, arguments);
}

}  // namespace

void registerPluginCommands(mel::CommandRegistry& registry) {
    Syntax loading;
    loading.flag("qt", "quiet").objects(ObjectKind::Strings, 1);
    registry.add("loadPlugin", loading, loadPlugin, "a allPlugins ac addCallback n name rc removeCallback");

    Syntax unloading;
    unloading.flag("f", "force").objects(ObjectKind::Strings, 1);
    registry.add("unloadPlugin", unloading, unloadPlugin, "ac addCallback rc removeCallback");

    Syntax asking;
    asking.flag("ls", "listPlugins")
        .flag("lpp", "listPluginsPath")
        .flag("l", "loaded")
        .flag("r", "registered");
    asking.flag("c", "command").flag("t", "tool").flag("p", "path").flag("n", "name").flag("vd", "vendor");
    asking.flag("v", "version").flag("av", "apiVersion").objects(ObjectKind::Strings, 0, 1).enableQuery();
    registry.add(
        "pluginInfo", asking, pluginInfo,
        "a autoload d data dn dependNode dnc dependNodeClassification dni dependNodeId dnt dependNodeByType "
        "e edit f translator pu pluginsInUse uo unloadOk rm remove savePluginPrefs spp");
}

}  // namespace host::commands
