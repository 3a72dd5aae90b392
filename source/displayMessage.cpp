#include "displayMessage.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>

#include "commandSupport.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{displayMessage::kName,
                                     "Print the given message.",
                                     {{"-e", "-error", MSyntax::kString, "error message"},
                                      {"-i", "-info", MSyntax::kString, "info message"},
                                      {"-w", "-warning", MSyntax::kString, "warning message"}},
                                     "dv_displayMessage -i <string>",
                                     "n/a",
                                     false};
    return command;
}

}  // namespace

void* displayMessage::creator() {
    return new displayMessage();
}

MSyntax displayMessage::newSyntax() {
    return makeSyntax(info());
}

MStatus displayMessage::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    isInfo_ = database.isFlagSet("-i");
    isWarning_ = database.isFlagSet("-w");
    isError_ = database.isFlagSet("-e");
    // The last one counts. Deliberate: not the order in which redoIt chooses the kind.
    readFlag(database, "-i", text_);
    readFlag(database, "-w", text_);
    readFlag(database, "-e", text_);
    return redoIt();
}

MStatus displayMessage::redoIt() {
    if (isInfo_) {
        MGlobal::displayInfo(text_);
    } else if (isError_) {
        MGlobal::displayError(text_);
        return MS::kFailure;
    } else if (isWarning_) {
        MGlobal::displayWarning(text_);
    }
    return MS::kSuccess;
}

MStatus displayMessage::undoIt() {
    return MS::kSuccess;
}

bool displayMessage::isUndoable() const {
    return false;
}
