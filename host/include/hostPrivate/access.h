#pragma once

/// The ways from the API's classes to what they stand for in the host: each opens the classes that name it as
/// a friend, and is defined in the room that it belongs to. No part of the API: a plug-in never names them.
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
