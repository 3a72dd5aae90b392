#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "scene/callOutcome.h"
#include "scene/guardEntry.h"

/// What all commands of the module share: declaring flags, the help text, the steps of a call, checking
/// objects, and the form of errors.

/// What the help row of a flag shows instead of its declaration. Null shows the declaration.
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

/// One command: the source of its syntax and its help text, and how it behaves. The flag -h/-help is added to
/// both; its row comes first.
struct CommandInfo {
    const char* name;  // as registered
    const char* description;
    std::vector<FlagInfo> flags;  // in the order of their help rows
    const char* usage;            // the example call
    const char* returnValue;      // the result as the help text names it
    bool isUndoable = false;
    ErrorResult errorResult = ErrorResult::kNothing;
    /// Whether the command acts on nodes: those named in the call, otherwise the current selection.
    bool takesObjects = true;
};

/// The syntax of a command. It is empty, after an error, if there is not enough memory.
MSyntax makeSyntax(const CommandInfo& command);

/// The text that -help returns.
MString helpText(const CommandInfo& command);

/// Reads the first argument of a flag into `value`. `value` does not change if the flag is not set.
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

/// A command of the module: the steps that all commands follow.
///
/// A call with -help returns the help text. Any other call reads and checks its arguments, then edits the
/// scene. Redo edits again, undo restores. The host queues every undoable command whose call succeeded, so
/// both can be called after -help and after an error. After -help or an error in read(), both do nothing.
/// After an error in edit(), redo does nothing, and undo restores what edit() had changed. No exception
/// leaves any of them: an error is shown, and restore() runs.
class ModuleCommand : public MPxCommand {
  public:
    MStatus doIt(const MArgList& arguments) final;
    MStatus redoIt() final;
    MStatus undoIt() final;
    bool isUndoable() const final;

  protected:
    explicit ModuleCommand(const CommandInfo& info) : info_(info) {}

    /// Reads the flags and objects, and keeps what edit() needs. What undo and redo need is kept as handles.
    virtual CallOutcome read(const MArgDatabase& arguments) = 0;
    /// Does the work of a call and sets its result. Before each change it saves what restore() needs.
    virtual CallOutcome edit() = 0;
    /// Does again what edit() did and restore() reverted.
    virtual CallOutcome redo() { return edit(); }
    /// Reverts what the last edit() or redo() changed, also if an error stopped it after a part of its
    /// changes. Does nothing if nothing was changed.
    virtual CallOutcome restore() { return CallOutcome(); }

    /// A failure if the arguments do not match the syntax. Then no flag seems to be set.
    const MStatus& argumentStatus() const { return argumentStatus_; }

    /// Shows an error that does not end the call.
    MStatus report(const CallOutcome& outcome) const { return outcome.report(info_.errorResult); }

  private:
    MStatus guarded(const std::function<CallOutcome()>& step);

    const CommandInfo& info_;
    MStatus argumentStatus_;
    bool hasRead_ = false;    // there may be something to undo
    bool hasEdited_ = false;  // there is something to redo
};

/// The functions that register a command. The class has a static function info() that returns its
/// CommandInfo.
template <typename Command>
class CommandOf : public ModuleCommand {
  public:
    static void* creator() { return madeOrNull<Command>(Command::info().name); }
    static MSyntax newSyntax() { return makeSyntax(Command::info()); }

  protected:
    CommandOf() : ModuleCommand(Command::info()) {}
};

/// The node that a command works on: the first of its objects. Further objects are ignored.
/// @param missing  the error if there are no objects
/// @param other    the error if the node has another type
/// @param node     set on success
/// @return failed on an error, also if the objects cannot be read
CallOutcome readNode(const MArgDatabase& arguments, MFn::Type type, const char* missing, const char* other,
                     MObject& node);

/// The same for a blend shape node.
CallOutcome readBlendShape(const MArgDatabase& arguments, MObject& node);

/// The error of a redo after the user deleted the blend shape node.
constexpr const char* kBlendShapeGone = "The blend shape node is not in the scene any more.";

/// The mesh shape that a flag names.
/// @param undefined  the error for an empty name
/// @param mesh       set if exactly one object has the name and is a mesh shape; a transform is not accepted
/// @return done or refused
CallOutcome readMeshShape(const MString& name, const char* undefined, MObject& mesh);
