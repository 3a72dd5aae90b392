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

const CommandRows kRows{"dv_displayMessage", messageCalls(), {"-h", "-help -e broken", "-w careful -h"}};

}  // namespace
