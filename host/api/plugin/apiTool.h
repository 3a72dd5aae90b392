#pragma once

#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <memory>
#include <string>
#include <utility>

#include "mel/tools.h"

namespace host::api {

/// A plug-in's tool, with the command object that made it.
class ApiTool final : public mel::Tool {
  public:
    /// @param owner    the plug-in's name
    /// @param library  keeps the plug-in's code in memory as long as the tool exists
    ApiTool(std::string owner, std::shared_ptr<void> library, std::unique_ptr<MPxContextCommand> command,
            std::unique_ptr<MPxContext> context)
        : owner_(std::move(owner)),
          library_(std::move(library)),
          command_(std::move(command)),
          context_(std::move(context)) {}

    std::string className() const override;
    std::string title() const override;
    std::string help() const override;
    std::string cursor() const override;
    void enter() override;
    void leave() override;
    bool takesMouse() const override { return true; }
    bool handle(const mel::MouseEvent& source) override;

    MPxContextCommand& command() { return *command_; }

  private:
    // The order destroys the tool before the command, and both before the code that they run.
    std::string owner_;
    std::shared_ptr<void> library_;
    std::unique_ptr<MPxContextCommand> command_;
    std::unique_ptr<MPxContext> context_;
};

}  // namespace host::api
