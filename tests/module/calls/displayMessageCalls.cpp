#include "commandTable.h"

namespace {

std::vector<Call> messageCalls() {
    const std::string command = "dv_displayMessage ";
    return {
        failingCall("MessageUnknownFlag", "", command + "-x", {"Invalid flag '-x'."}),
        goodCall("MessageOfNothing", "", command, {}),
        failingCall("MessageBesideAnObject", "", command + "-i a bs", {"Too many objects or values."}),
        failingCall("MessageError", "", command + "-e broken", {"broken"}),
        failingCall("MessageErrorAndWarning", "", command + "-w careful -e broken", {"broken"}),
        goodCall("MessageErrorAndInfo", "", command + "-e broken -i fine", {}),
    };
}

const CommandRows kRows{
    "dv_displayMessage",
    messageCalls(),
    {"", "Description: Print the given message.", "", "Flags: dv_displayMessage -h -help <n/a> this message",
     "-e -error <string> error message", "-i -info <string> info message",
     "-w -warning <string> warning message", "Usage: Execute the command with the following arguments:",
     "Execute: dv_displayMessage -i <string>", "Return Value: n/a"},
    {"-h", "-help -e broken", "-w careful -h"}};

}  // namespace
