#pragma once

#include <string>

#include "commands/commandSupport.h"

/// Mesh files of the command `file`.
namespace host::commands {

/// Every object of the file becomes a mesh of its own. Groups are dropped: they only divide its faces.
CommandResult importObj(CommandContext& context, const ParsedArguments& arguments, const std::string& path);

/// Writes the visible meshes of the scene, or those at and below the selection, in world space.
CommandResult exportObj(CommandContext& context, const ParsedArguments& arguments, const std::string& path);

}  // namespace host::commands
