#include "commandSupport.h"

#include <maya/MGlobal.h>
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

/// Argument types as the help texts name them. A boolean is shown as an int: users pass 0 and 1.
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

/// The row of a flag with all its cells filled.
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

}  // namespace

MSyntax makeSyntax(const CommandInfo& command) {
    MSyntax syntax;
    syntax.addFlag(helpFlag().shortName, helpFlag().longName, helpFlag().type);
    for (const FlagInfo& flag : command.flags) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
        if (flag.isMultiUse) syntax.makeFlagMultiUse(flag.shortName);
    }
    if (command.takesObjects) {
        syntax.setObjectType(MSyntax::kSelectionList, 0);
        syntax.useSelectionAsDefault(true);
    }
    return syntax;
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

bool answerHelp(const MArgDatabase& arguments, const CommandInfo& command) {
    if (!arguments.isFlagSet(helpFlag().shortName)) return false;
    MPxCommand::setResult(helpText(command));
    return true;
}

MStatus reportError(const MString& text, ErrorResult result, ErrorSink sink, const MStatus& status) {
    if (sink == ErrorSink::kGlobal) {
        MGlobal::displayError(text);
    } else {
        MPxCommand::displayError(text);
    }
    if (result == ErrorResult::kEmptyString) MPxCommand::setResult(MString());
    if (result == ErrorResult::kZero) MPxCommand::setResult(0);
    if (result == ErrorResult::kMinusOne) MPxCommand::setResult(-1);
    return status;
}

MStatus getNode(const MArgDatabase& arguments, MFn::Type type, const char* missing, const char* other,
                ErrorResult result, MObject& node) {
    MSelectionList objects;
    const MStatus status = arguments.getObjects(objects);
    if (!status) return reportError("Error getting objects", result, ErrorSink::kGlobal, status);
    if (objects.isEmpty()) return reportError(missing, result, ErrorSink::kCommand, MS::kFailure);
    MObject first;
    objects.getDependNode(0, first);
    if (!first.hasFn(type)) return reportError(other, result, ErrorSink::kCommand, MS::kFailure);
    node = first;
    return MS::kSuccess;
}

MStatus getBlendShapeNode(const MArgDatabase& arguments, ErrorResult result, MObject& node) {
    return getNode(arguments, MFn::kBlendShape, "No blend shape node provided.",
                   "The node is not a blend shape node.", result, node);
}

bool getMeshShape(const MString& name, const char* undefined, ErrorResult result, MObject& mesh) {
    if (name.length() == 0) {
        reportError(undefined, result, ErrorSink::kGlobal, MS::kSuccess);
        return false;
    }
    // A name that matches nothing leaves the list empty and the node null.
    MSelectionList list;
    list.add(name);
    MObject node;
    list.getDependNode(0, node);
    if (node.hasFn(MFn::kMesh)) {
        mesh = node;
        return true;
    }
    MStringArray shown;
    list.getSelectionStrings(0, shown);
    const MString subject = shown.length() > 0 ? shown[0] : name;
    reportError(subject + " is not a mesh object.", result, ErrorSink::kGlobal, MS::kSuccess);
    return false;
}

MObject aliveObject(const MObjectHandle& handle) {
    return handle.isValid() ? handle.object() : MObject(MObject::kNullObj);
}
