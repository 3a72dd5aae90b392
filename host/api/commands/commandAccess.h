#pragma once

#include <maya/MCommandResult.h>
#include <maya/MPxCommand.h>

#include <memory>

#include "mel/value.h"

namespace host::api {

/// What a command gets before it runs, and the result of a script command.
struct CommandAccess {
    /// Gives a new command object the syntax that was made at registration.
    static void setSyntax(MPxCommand& command, std::shared_ptr<const MSyntax> syntax);
    static void setContent(MCommandResult& result, mel::Value value);
};

}  // namespace host::api
