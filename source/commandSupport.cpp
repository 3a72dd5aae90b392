#include "commandSupport.h"

#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

const FlagInfo& helpFlag() {
    static const FlagInfo flag{"-h", "-help", MSyntax::kNoArg, "this message"};
    return flag;
}

/// Argument types in the help texts. A boolean is shown as an int, because users pass 0 and 1.
const char* helpType(MSyntax::MArgType type) {
    switch (type) {
        case MSyntax::kNoArg:
            return "<n/a>";
        case MSyntax::kDouble:
            return "<float>";
        case MSyntax::kString:
            return "<string>";
        default:
            return "<int>";
    }
}

const char* cell(const char* shown, const char* declared) {
    return shown != nullptr ? shown : declared;
}

/// The help row of a flag, with all its cells.
HelpCells helpCells(const FlagInfo& flag) {
    return {cell(flag.shown.shortName, flag.shortName), cell(flag.shown.longName, flag.longName),
            cell(flag.shown.type, helpType(flag.type))};
}

/// Blanks between two columns of the help text.
constexpr std::size_t kColumnGap = 4;

void appendColumn(std::string& line, const char* text, std::size_t width) {
    line += text;
    line.append(width + kColumnGap - std::strlen(text), ' ');
}

void declareFlags(const CommandInfo& command, MSyntax& syntax) {
    syntax.addFlag(helpFlag().shortName, helpFlag().longName, helpFlag().type);
    for (const FlagInfo& flag : command.flags) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
        if (flag.isMultiUse) syntax.makeFlagMultiUse(flag.shortName);
    }
    if (command.takesObjects) {
        syntax.setObjectType(MSyntax::kSelectionList, 0);
        syntax.useSelectionAsDefault(true);
    }
}

}  // namespace

MSyntax makeSyntax(const CommandInfo& command) {
    MSyntax syntax;
    const MStatus status = guardEntry(command.name, [&] {
        declareFlags(command, syntax);
        return MStatus(MS::kSuccess);
    });
    return status ? syntax : MSyntax();
}

MString helpText(const CommandInfo& command) {
    std::vector<FlagInfo> rows{helpFlag()};
    rows.insert(rows.end(), command.flags.begin(), command.flags.end());
    std::size_t shortWidth = 0;
    std::size_t longWidth = 0;
    std::size_t typeWidth = 0;
    for (const FlagInfo& row : rows) {
        const HelpCells cells = helpCells(row);
        shortWidth = std::max(shortWidth, std::strlen(cells.shortName));
        longWidth = std::max(longWidth, std::strlen(cells.longName));
        typeWidth = std::max(typeWidth, std::strlen(cells.type));
    }
    std::string text = std::string("\nDescription: ") + command.description + "\n\n";
    std::string line = std::string("Flags: ") + command.name + std::string(kColumnGap, ' ');
    const std::size_t indent = line.size();
    for (const FlagInfo& row : rows) {
        const HelpCells cells = helpCells(row);
        line.resize(indent, ' ');
        appendColumn(line, cells.shortName, shortWidth);
        appendColumn(line, cells.longName, longWidth);
        appendColumn(line, cells.type, typeWidth);
        text += line + row.help + '\n';
        line.clear();
    }
    text += "Usage: Execute the command with the following arguments:\n";
    text += std::string("Execute: ") + command.usage + '\n';
    text += std::string("Return Value: ") + command.returnValue;
    return text.c_str();
}

MStatus ModuleCommand::doIt(const MArgList& arguments) {
    return guarded([&] {
        const MArgDatabase database(syntax(), arguments, &argumentStatus_);
        if (database.isFlagSet(helpFlag().shortName)) {
            setResult(helpText(info_));
            return CallOutcome();
        }
        CallOutcome outcome = read(database);
        hasRead_ = outcome.isDone();
        if (hasRead_) outcome = edit();
        hasEdited_ = hasRead_ && outcome.isDone();
        return outcome;
    });
}

MStatus ModuleCommand::redoIt() {
    if (!hasEdited_) return MS::kSuccess;
    return guarded([this] { return redo(); });
}

MStatus ModuleCommand::undoIt() {
    if (!hasRead_) return MS::kSuccess;
    return guarded([this] { return restore(); });
}

/// Nothing of the user's data is lost after an exception: restore() reverts the changes.
MStatus ModuleCommand::guarded(const std::function<CallOutcome()>& step) {
    return guardEntry(
        info_.name, [&] { return report(step()); }, [this] { report(restore()); });
}

bool ModuleCommand::isUndoable() const {
    return info_.isUndoable;
}

CallOutcome readNode(const MArgDatabase& arguments, MFn::Type type, const char* missing, const char* other,
                     MObject& node) {
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return CallOutcome::failed("Error getting objects", status);
    if (objects.isEmpty()) return CallOutcome::failed(missing, MS::kFailure, ErrorSink::kCommand);
    MObject first;
    objects.getDependNode(0, first);
    if (!first.hasFn(type)) return CallOutcome::failed(other, MS::kFailure, ErrorSink::kCommand);
    node = first;
    return CallOutcome();
}

CallOutcome readBlendShape(const MArgDatabase& arguments, MObject& node) {
    return readNode(arguments, MFn::kBlendShape, "No blend shape node provided.",
                    "The node is not a blend shape node.", node);
}

CallOutcome readMeshShape(const MString& name, const char* undefined, MObject& mesh) {
    if (name.length() == 0) return CallOutcome::refused(undefined);
    // A name that matches nothing leaves the list empty and the node null.
    MSelectionList list;
    list.add(name);
    MObject node;
    // A name that matches several objects counts as none.
    if (list.length() == 1) list.getDependNode(0, node);
    if (node.hasFn(MFn::kMesh)) {
        mesh = node;
        return CallOutcome();
    }
    MStringArray shown;
    if (list.length() == 1) list.getSelectionStrings(0, shown);
    const MString subject = shown.length() > 0 ? shown[0] : name;
    return CallOutcome::refused(subject + " is not a mesh object.");
}
