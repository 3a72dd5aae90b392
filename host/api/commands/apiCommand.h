#pragma once

#include <maya/MSyntax.h>

#include <memory>
#include <string>

#include "mel/pluginCommand.h"

namespace host::api {

/// A script command made from a plug-in's creator and syntax function.
class ApiCommand final : public mel::PluginCommand {
  public:
    using Creator = void* (*)();
    using SyntaxCreator = MSyntax (*)();

    /// @param owner        the plug-in's name
    /// @param library      keeps the plug-in's code in memory as long as the command, or an entry of it on
    ///                     the undo queue, exists; null for code that is never unloaded
    /// @param createSyntax null: the command then takes its words unparsed
    ApiCommand(std::string owner, std::shared_ptr<void> library, Creator create, SyntaxCreator createSyntax);

    mel::PluginCallResult call(std::vector<mel::Value>&& arguments) override;
    const mel::Syntax* syntax() const override;

  private:
    const std::string owner_;
    const std::shared_ptr<void> library_;
    const Creator create_;
    const std::shared_ptr<const MSyntax> syntax_;
};

}  // namespace host::api
