#include "api/plugin/apiContextCommand.h"

#include <maya/MPxContext.h>
#include <maya/MStringArray.h>

#include <utility>
#include <vector>

#include "api/commands/argumentAccess.h"
#include "api/commands/syntaxAccess.h"
#include "api/handles/conversions.h"
#include "api/handles/session.h"
#include "api/plugin/apiTool.h"
#include "api/plugin/toolAccess.h"
#include "graph/names.h"

namespace host::api {

namespace {

constexpr const char* kExists = "-exists";

mel::ToolBox& tools() {
    return Session::current().commands().tools();
}

/// The result of a flag handler in the running call.
mel::CommandResult resultOf(const MStatus& status) {
    PluginCall& call = *Session::current().call();
    if (call.hasArgumentError || (!status && call.hasShownError)) return mel::CommandResult::failureShown();
    if (!status) return mel::CommandResult::failure(text(status.errorString()));
    return mel::CommandResult::success(std::move(call.result));
}

}  // namespace

ApiContextCommand::ApiContextCommand(std::string name, std::string owner, std::shared_ptr<void> library,
                                     Creator create)
    : name_(std::move(name)), owner_(std::move(owner)), library_(std::move(library)), create_(create) {
    if (const std::unique_ptr<MPxContextCommand> sample = makeCommand()) {
        syntax_ = ToolAccess::syntax(*sample);
        isValid_ = true;
    }
}

/// A command object with its syntax; null if the plug-in gives none.
std::unique_ptr<MPxContextCommand> ApiContextCommand::makeCommand() const {
    std::unique_ptr<MPxContextCommand> command(static_cast<MPxContextCommand*>(create_()));
    if (command == nullptr) return nullptr;
    MSyntax& syntax = ToolAccess::syntax(*command);
    syntax.enableEdit();
    syntax.enableQuery();
    syntax.setObjectType(MSyntax::kStringObjects, 0, 1);
    if (!syntax.addFlag("-ex", kExists) || !command->appendSyntax()) return nullptr;
    return command;
}

const mel::Syntax* ApiContextCommand::syntax() const {
    return &SyntaxAccess::table(syntax_).syntax;
}

mel::PluginCallResult ApiContextCommand::call(std::vector<mel::Value>&& arguments) {
    PluginCall call{owner_};
    const CallScope scope(call);
    MArgList words;
    ArgumentAccess::words(words) = std::move(arguments);
    MStatus status;
    const MArgParser parser(syntax_, words, &status);
    MStringArray objects;
    if (!status || !parser.getObjects(objects)) return {mel::CommandResult::failureShown(), nullptr};
    std::string tool = objects.length() > 0 ? text(objects[0]) : std::string();
    if (parser.isFlagSet(kExists))
        return {mel::CommandResult::success(tools().find(tool) != nullptr), nullptr};
    if (parser.isQuery() || parser.isEdit()) return {editOrQuery(tool, parser.isQuery(), words), nullptr};
    return {make(std::move(tool), parser, words), nullptr};
}

mel::CommandResult ApiContextCommand::make(std::string tool, const MArgParser& parser,
                                           const MArgList& words) const {
    if (tool.empty()) tool = tools().freeName(name_);
    if (!graph::isLegalName(tool))
        return mel::CommandResult::failure(name_ + ": '" + tool + "' is no legal name.");
    if (tools().find(tool) != nullptr)
        return mel::CommandResult::failure(name_ + ": Object's name '" + tool + "' is not unique.");
    std::unique_ptr<MPxContextCommand> command = makeCommand();
    std::unique_ptr<MPxContext> context(command != nullptr ? command->makeObj() : nullptr);
    if (context == nullptr) return mel::CommandResult::failure(name_ + ": The tool could not be created.");
    ToolAccess::setCommandName(*context, name_);
    if (parser.numberOfFlagsUsed() > 0) {
        ToolAccess::setArguments(*command, words);
        mel::CommandResult edited = resultOf(command->doEditFlags());
        if (!edited.ok) return edited;
    }
    tools().add(tool, name_,
                std::make_shared<ApiTool>(owner_, library_, std::move(command), std::move(context)));
    return mel::CommandResult::success(std::move(tool));
}

mel::CommandResult ApiContextCommand::editOrQuery(const std::string& tool, bool isQuery,
                                                  const MArgList& words) const {
    // All tools of this command are ApiTools.
    const auto found = std::static_pointer_cast<ApiTool>(tools().find(tool, name_));
    if (found == nullptr) return mel::CommandResult::failure(name_ + ": Object '" + tool + "' not found.");
    MPxContextCommand& command = found->command();
    ToolAccess::setArguments(command, words);
    return resultOf(isQuery ? command.doQueryFlags() : command.doEditFlags());
}

}  // namespace host::api
