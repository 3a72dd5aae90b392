#pragma once

#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <string>

#include "mel/tools.h"

namespace host::api {

/// The host's side of a tool and of the command that makes it: what they are given, and what they tell.
struct ToolAccess {
    static MEvent event(const mel::MouseEvent& source);
    static MHWRender::MUIDrawManager& drawManager();
    static MHWRender::MFrameContext& frameContext();

    // What a tool has told about itself, and the name of the command that made it.
    static std::string title(const MPxContext& context);
    static std::string help(const MPxContext& context);
    static std::string cursor(const MPxContext& context);
    static void setCommandName(MPxContext& context, std::string name);

    /// Gives the command object of a tool the arguments of a call. It reads them in doEditFlags() and
    /// doQueryFlags().
    static void setArguments(MPxContextCommand& command, const MArgList& arguments);
    static MSyntax& syntax(MPxContextCommand& command);
};

}  // namespace host::api
