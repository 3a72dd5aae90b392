#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <cstddef>
#include <vector>

/// What every command of the module shares: the declaration of its flags, the help text, the checks of its
/// objects and the form of its errors.

/// What the help row of a flag shows in place of its declaration; null where it shows what is declared.
struct HelpCells {
    const char* shortName = nullptr;
    const char* longName = nullptr;
    const char* type = nullptr;  // in angle brackets
};

/// One flag: its declaration and its row of the help text.
struct FlagInfo {
    const char* shortName;  // with its dash, one to three letters
    const char* longName;   // with its dash, lower camel case
    MSyntax::MArgType type;
    const char* help;
    bool isMultiUse = false;
    HelpCells shown = {};
};

/// One command: where its syntax and its help text come from. The flag -h/-help is added to both; its row
/// comes first.
struct CommandInfo {
    const char* name;  // as registered
    const char* description;
    std::vector<FlagInfo> flags;  // in the order of their help rows
    const char* usage;            // the example call
    const char* returnValue;      // the result as the help text names it
    /// Whether the command acts on nodes: named ones, else the current selection.
    bool takesObjects = true;
};

/// Syntax of a command, for its newSyntax function.
MSyntax makeSyntax(const CommandInfo& command);

/// The text that -help answers with.
MString helpText(const CommandInfo& command);

/// Answers -help.
/// @return whether it was asked for; the result is set then, and the command is to do nothing else
bool answerHelp(const MArgDatabase& arguments, const CommandInfo& command);

/// Reads the first argument of a flag into `value`, which keeps its content when the flag is not set.
template <typename T>
void readFlag(const MArgDatabase& arguments, const char* flag, T& value) {
    if (arguments.isFlagSet(flag)) arguments.getFlagArgument(flag, 0, value);
}

/// The arguments of all uses of a multi-use flag, in the order given.
template <typename T>
std::vector<T> readFlagUses(const MArgDatabase& arguments, const char* flag) {
    std::vector<T> values(arguments.numberOfFlagUses(flag));
    for (std::size_t use = 0; use < values.size(); ++use) {
        MArgList list;
        arguments.getFlagArgumentList(flag, static_cast<unsigned int>(use), list);
        list.get(0, values[use]);
    }
    return values;
}

/// What a command sets as its result after an error.
enum class ErrorResult { kNothing, kEmptyString, kZero, kMinusOne };

/// Which of the host's two error functions shows a text; the user sees the same.
enum class ErrorSink { kGlobal, kCommand };

/// Shows an error and sets the result that goes with it.
/// @return `status`: a failure for the checks of a command's objects, success for its later checks
MStatus reportError(const MString& text, ErrorResult result, ErrorSink sink, const MStatus& status);

/// The node that a command works on: the first of its objects, further ones are ignored.
/// @param missing  the error when there is none
/// @param other    the error when it is not of the type
/// @param node     set on success
/// @return a failure, after the error was shown, also when the objects cannot be read
MStatus getNode(const MArgDatabase& arguments, MFn::Type type, const char* missing, const char* other,
                ErrorResult result, MObject& node);

/// The same for a blend-shape node.
MStatus getBlendShapeNode(const MArgDatabase& arguments, ErrorResult result, MObject& node);

/// The error of a redo whose blend-shape node was deleted by hand.
constexpr const char* kBlendShapeGone = "The blend shape node is not in the scene any more.";

/// The mesh shape that a flag names.
/// @param undefined  the error for an empty name
/// @param mesh       set when the name stands for a mesh shape (a transform does not)
/// @return whether it does; otherwise the error has been shown and the command ends with success
bool getMeshShape(const MString& name, const char* undefined, ErrorResult result, MObject& mesh);

/// The object behind a handle that a command keeps from do to undo and redo: null when its node is not in the
/// scene any more (or never was set). A plain MObject cannot be asked that once its node is gone.
MObject aliveObject(const MObjectHandle& handle);
