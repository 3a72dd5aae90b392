#pragma once

/// The host's access to the private members of the API's classes. Each struct is a friend of the classes that
/// name it, and is defined in the room that it belongs to. Not part of the API: a plug-in never names them.
namespace host::api {

struct ArgumentAccess;
struct CommandAccess;
struct FunctionSetAccess;
struct ModifierAccess;
struct ObjectAccess;
struct PathAccess;
struct PlugAccess;
struct SelectionAccess;
struct SyntaxAccess;
struct ToolAccess;

}  // namespace host::api
