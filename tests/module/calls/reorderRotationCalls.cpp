#include "commandTable.h"

namespace {

std::vector<Call> reorderCalls() {
    const std::string command = "dv_reorderRotation ";
    const std::vector<double> zero{0, 0, 0};
    return {
        {"ReorderUnknownFlag", "", command + "-x 1", false, {}, {"Invalid flag '-x'."}, ""},
        {"ReorderNothing", "", command, true, zero, {}, ""},
        {"ReorderBesideAnObject", "", command + "bs", true, zero, {}, ""},
    };
}

const CommandRows kRows{"dv_reorderRotation", reorderCalls()};

}  // namespace
