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

const CommandRows kRows{
    "dv_reorderRotation",
    reorderCalls(),
    {"", "Description: Converts the input rotation to match the target rotate order.", "",
     "Flags: dv_reorderRotation -h -help <n/a> this message", "-io -inOrder <int> source rotate order",
     "-oo -outOrder <int> target rotate order", "-irx -inRotationX <float> x rotation value to convert",
     "-iry -inRotationY <float> y rotation value to convert",
     "-irz -inRotationZ <float> z rotation value to convert",
     "Usage: Execute the command with the following arguments:",
     "Execute: dv_reorderRotation -inRotationX <float> -inRotationY <float> -inRotationZ <float> -inOrder "
     "<int> -outOrder <int>",
     "Return Value: float[]"}};

}  // namespace
