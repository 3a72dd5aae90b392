#include "api/commands/apiCommand.h"

#include <maya/MArgDatabase.h>
#include <maya/MPxCommand.h>

#include <utility>
#include <vector>

#include "api/commands/argumentAccess.h"
#include "api/commands/commandAccess.h"
#include "api/commands/syntaxAccess.h"
#include "api/handles/conversions.h"
#include "api/handles/session.h"

namespace host::api {

namespace {

/// A finished call on the undo queue. The order of the members destroys the command before the code that it
/// runs.
class ApiUndoEntry final : public graph::UndoEntry {
  public:
    ApiUndoEntry(std::string owner, std::shared_ptr<void> library, std::unique_ptr<MPxCommand> command)
        : owner_(std::move(owner)), library_(std::move(library)), command_(std::move(command)) {}

    bool undo(graph::Graph&) override { return run(&MPxCommand::undoIt); }
    bool redo(graph::Graph&) override { return run(&MPxCommand::redoIt); }
    std::string owner() const override { return owner_; }

  private:
    bool run(MStatus (MPxCommand::*step)()) {
        PluginCall call{owner_};
        const CallScope scope(call);
        return (command_.get()->*step)();
    }

    std::string owner_;
    std::shared_ptr<void> library_;
    std::unique_ptr<MPxCommand> command_;
};

}  // namespace

ApiCommand::ApiCommand(std::string owner, std::shared_ptr<void> library, Creator create,
                       SyntaxCreator createSyntax)
    : owner_(std::move(owner)),
      library_(std::move(library)),
      create_(create),
      syntax_(createSyntax != nullptr ? std::make_shared<const MSyntax>(createSyntax()) : nullptr) {}

const mel::Syntax* ApiCommand::syntax() const {
    return syntax_ != nullptr ? &SyntaxAccess::table(*syntax_).syntax : nullptr;
}

mel::PluginCallResult ApiCommand::call(std::vector<mel::Value>&& arguments) {
    PluginCall call{owner_};
    const CallScope scope(call);
    std::unique_ptr<MPxCommand> command(static_cast<MPxCommand*>(create_()));
    if (command == nullptr)
        return {mel::CommandResult::failure("The command could not be created."), nullptr};
    CommandAccess::setSyntax(*command, syntax_);
    MArgList words;
    ArgumentAccess::words(words) = std::move(arguments);
    if (syntax_ != nullptr && scene().variants().refusesArgumentsFirst) {
        const MArgDatabase parsed(*syntax_, words);
        if (call.hasArgumentError) return {mel::CommandResult::failureShown(), nullptr};
    }
    const MStatus status = command->doIt(words);
    if (call.hasArgumentError || (!status && call.hasShownError))
        return {mel::CommandResult::failureShown(), nullptr};
    if (!status) return {mel::CommandResult::failure(text(status.errorString())), nullptr};
    mel::PluginCallResult outcome{mel::CommandResult::success(std::move(call.result)), nullptr};
    if (command->isUndoable())
        outcome.undo = std::make_unique<ApiUndoEntry>(owner_, library_, std::move(command));
    return outcome;
}

}  // namespace host::api
