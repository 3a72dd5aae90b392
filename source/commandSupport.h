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

/// What every command of the module shares: the declaration of its flags, the help text, the protocol of a
/// call, the checks of its objects and the form of its errors.

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

/// One command: where its syntax and its help text come from, and how it behaves. The flag -h/-help is added
/// to both; its row comes first.
struct CommandInfo {
    const char* name;  // as registered
    const char* description;
    std::vector<FlagInfo> flags;  // in the order of their help rows
    const char* usage;            // the example call
    const char* returnValue;      // the result as the help text names it
    bool isUndoable = false;
    ErrorResult errorResult = ErrorResult::kNothing;
    /// Whether the command acts on nodes: named ones, else the current selection.
    bool takesObjects = true;
};

/// Syntax of a command; an empty one, after an error, where the memory does not suffice.
MSyntax makeSyntax(const CommandInfo& command);

/// The text that -help answers with.
MString helpText(const CommandInfo& command);

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

/// A command of the module: the protocol that all of them follow.
///
/// A call answers -help, or reads and checks its arguments and then edits the scene. A redo edits again, an
/// undo restores; both do nothing after a call that answered -help or ended with an error, and may come for
/// those, too: the host queues every undoable command whose call succeeded. No exception leaves any of them:
/// it becomes an error, after what restore() takes back was restored.
class ModuleCommand : public MPxCommand {
  public:
    MStatus doIt(const MArgList& arguments) final;
    MStatus redoIt() final;
    MStatus undoIt() final;
    bool isUndoable() const final;

  protected:
    explicit ModuleCommand(const CommandInfo& info) : info_(info) {}

    /// Reads the flags and objects and keeps what edit() needs, as handles where undo and redo need it too.
    virtual CallOutcome read(const MArgDatabase& arguments) = 0;
    /// Does the work of a call and sets its result. Saves before each change what restore() needs.
    virtual CallOutcome edit() = 0;
    /// Does again what edit() did and restore() took back.
    virtual CallOutcome redo() { return edit(); }
    /// Takes back what the last edit() or redo() has changed, also after an error in the middle of it;
    /// nothing where it changed nothing.
    virtual CallOutcome restore() { return CallOutcome(); }

    /// A failure where the arguments do not fit the syntax: then no flag seems to be set.
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

/// What a command is registered with. The class has a static function info() with its CommandInfo.
template <typename Command>
class CommandOf : public ModuleCommand {
  public:
    static void* creator() { return madeOrNull<Command>(Command::info().name); }
    static MSyntax newSyntax() { return makeSyntax(Command::info()); }

  protected:
    CommandOf() : ModuleCommand(Command::info()) {}
};

/// The node that a command works on: the first of its objects, further ones are ignored.
/// @param missing  the error when there is none
/// @param other    the error when it is not of the type
/// @param node     set when done
/// @return failed, also when the objects cannot be read
CallOutcome readNode(const MArgDatabase& arguments, MFn::Type type, const char* missing, const char* other,
                     MObject& node);

/// The same for a blend-shape node.
CallOutcome readBlendShape(const MArgDatabase& arguments, MObject& node);

/// The error of a redo whose blend-shape node was deleted by hand.
constexpr const char* kBlendShapeGone = "The blend shape node is not in the scene any more.";

/// The mesh shape that a flag names.
/// @param undefined  the error for an empty name
/// @param mesh       set when the name is that of a mesh shape (that of a transform is not)
/// @return done or refused
CallOutcome readMeshShape(const MString& name, const char* undefined, MObject& mesh);
