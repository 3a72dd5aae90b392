#pragma once

#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MPxContextCommand.h>
#include <maya/MSyntax.h>

#include <memory>
#include <string>

#include "mel/pluginCommand.h"
#include "mel/tools.h"

namespace host::api {

/// A script command that makes tools with a plug-in's creator, and edits and queries these tools:
///
///   command [flags] [name]           makes a tool; its name is the result
///   command -edit flags name
///   command -query flag name
///   command -exists name             1 or 0
///
/// All flags except -exists are the plug-in's own.
class ApiContextCommand final : public mel::PluginCommand {
  public:
    using Creator = void* (*)();

    /// @param name     of the command
    /// @param owner    the plug-in's name
    /// @param library  keeps the plug-in's code in memory as long as the command or one of its tools exists
    ApiContextCommand(std::string name, std::string owner, std::shared_ptr<void> library, Creator create);

    /// False if the plug-in's own flags cannot be added.
    bool isValid() const { return isValid_; }

    mel::PluginCallResult call(std::vector<mel::Value>&& arguments) override;
    const mel::Syntax* syntax() const override;

  private:
    std::unique_ptr<MPxContextCommand> makeCommand() const;
    mel::CommandResult make(std::string tool, const MArgParser& parser, const MArgList& words) const;
    mel::CommandResult editOrQuery(const std::string& tool, bool isQuery, const MArgList& words) const;

    const std::string name_;
    const std::string owner_;
    const std::shared_ptr<void> library_;
    const Creator create_;
    MSyntax syntax_;
    bool isValid_ = false;
};

}  // namespace host::api
