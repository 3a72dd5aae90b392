#define MNoVersionString
#define MNoPluginEntry
#include <maya/MFnPlugin.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "api/commands/apiCommand.h"
#include "api/handles/answers.h"
#include "api/handles/conversions.h"
#include "api/handles/objectAccess.h"
#include "api/handles/session.h"
#include "api/plugin/apiContextCommand.h"
#include "api/plugin/pluginLoader.h"
#include "graph/names.h"

using host::api::answer;
using host::api::ApiCommand;
using host::api::ApiContextCommand;
using host::api::missingObject;
using host::api::ObjectAccess;
using host::api::Plugin;
using host::api::report;
using host::api::Session;
using host::api::string;
using host::api::text;

namespace {

/// One text of a plug-in's description.
template <typename Getter>
MString describe(const MObject& object, MStatus* status, Getter getter) {
    return answer(status, ObjectAccess::plugin<Plugin>(object),
                  [&](const Plugin& plugin) { return string(getter(plugin.description)); });
}

void forget(std::vector<std::string>& names, const std::string& name) {
    names.erase(std::remove(names.begin(), names.end(), name), names.end());
}

}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN

MFnPlugin::MFnPlugin() = default;
MFnPlugin::~MFnPlugin() = default;

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* status) {
    report(status, MFnBase::setObject(object));
    Plugin* plugin = ObjectAccess::plugin<Plugin>(object_);
    if (plugin == nullptr) return;
    plugin->description.vendor = vendor != nullptr ? vendor : "";
    plugin->description.version = version != nullptr ? version : "";
    const std::string required = requiredApiVersion != nullptr ? requiredApiVersion : "";
    plugin->description.apiVersion = required == "Any" ? std::to_string(MAYA_API_VERSION) : required;
}

MFn::Type MFnPlugin::type() const {
    return MFn::kPlugin;
}

MString MFnPlugin::vendor(MStatus* status) const {
    return describe(object_, status, [](const auto& description) { return description.vendor; });
}

MString MFnPlugin::version(MStatus* status) const {
    return describe(object_, status, [](const auto& description) { return description.version; });
}

MString MFnPlugin::apiVersion(MStatus* status) const {
    return describe(object_, status, [](const auto& description) { return description.apiVersion; });
}

MString MFnPlugin::name(MStatus* status) const {
    return describe(object_, status, [](const auto& description) { return description.name; });
}

MString MFnPlugin::loadPath(MStatus* status) const {
    return describe(object_, status, [](const auto& description) {
        const std::size_t slash = description.path.rfind('/');
        return slash != std::string::npos ? description.path.substr(0, slash) : std::string();
    });
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   MCreateSyntaxFunction createSyntaxFunction) {
    Plugin* plugin = ObjectAccess::plugin<Plugin>(object_);
    if (plugin == nullptr) return missingObject();
    const std::string name = text(commandName);
    if (creatorFunction == nullptr || !host::graph::isLegalName(name)) return MStatus::kInvalidParameter;
    auto command = std::make_shared<ApiCommand>(plugin->description.name, plugin->library, creatorFunction,
                                                createSyntaxFunction);
    if (!Session::current().commands().addPlugin(name, plugin->description.name, std::move(command)))
        return MStatus::kFailure;
    plugin->description.commands.push_back(name);
    return MStatus::kSuccess;
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName) {
    Plugin* plugin = ObjectAccess::plugin<Plugin>(object_);
    if (plugin == nullptr) return missingObject();
    const std::string name = text(commandName);
    if (!Session::current().commands().removePlugin(name, plugin->description.name))
        return MStatus::kInvalidParameter;
    forget(plugin->description.commands, name);
    return MStatus::kSuccess;
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction) {
    Plugin* plugin = ObjectAccess::plugin<Plugin>(object_);
    if (plugin == nullptr) return missingObject();
    const std::string name = text(commandName);
    if (creatorFunction == nullptr || !host::graph::isLegalName(name)) return MStatus::kInvalidParameter;
    auto command =
        std::make_shared<ApiContextCommand>(name, plugin->description.name, plugin->library, creatorFunction);
    if (!command->isValid() ||
        !Session::current().commands().addPlugin(name, plugin->description.name, std::move(command)))
        return MStatus::kFailure;
    plugin->description.contextCommands.push_back(name);
    return MStatus::kSuccess;
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName) {
    Plugin* plugin = ObjectAccess::plugin<Plugin>(object_);
    if (plugin == nullptr) return missingObject();
    const std::string name = text(commandName);
    std::vector<std::string>& names = plugin->description.contextCommands;
    if (std::find(names.begin(), names.end(), name) == names.end()) return MStatus::kInvalidParameter;
    Session::current().commands().tools().removeMadeBy(name);
    Session::current().commands().removePlugin(name, plugin->description.name);
    forget(names, name);
    return MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
