#include "displayMessage.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>

const CommandInfo& displayMessage::info() {
    static const CommandInfo description{kName,
                                         "Print the given message.",
                                         {{"-e", "-error", MSyntax::kString, "error message"},
                                          {"-i", "-info", MSyntax::kString, "info message"},
                                          {"-w", "-warning", MSyntax::kString, "warning message"}},
                                         "dv_displayMessage -i <string>",
                                         "n/a",
                                         false,
                                         ErrorResult::kNothing,
                                         false};
    return description;
}

CallOutcome displayMessage::read(const MArgDatabase& arguments) {
    isInfo_ = arguments.isFlagSet("-i");
    isWarning_ = arguments.isFlagSet("-w");
    isError_ = arguments.isFlagSet("-e");
    // The last flag that is set counts. Deliberate: docs/compatibility.md.
    readFlag(arguments, "-i", text_);
    readFlag(arguments, "-w", text_);
    readFlag(arguments, "-e", text_);
    return CallOutcome();
}

CallOutcome displayMessage::edit() {
    if (isInfo_) {
        MGlobal::displayInfo(text_);
    } else if (isError_) {
        return CallOutcome::failed(text_);
    } else if (isWarning_) {
        MGlobal::displayWarning(text_);
    }
    return CallOutcome();
}
