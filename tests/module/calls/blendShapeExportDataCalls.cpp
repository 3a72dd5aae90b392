#include "commandTable.h"
#include "scratchFiles.h"

namespace {

std::vector<Call> exportCalls() {
    const std::string command = "dv_blendShapeExportData ";
    const std::string file = "-fn \"" + scratchFile("exportCalls.json") + "\" ";
    const std::string all = command + "-d -i 0 -cn smile " + file;
    const auto fails = [](const char* name, const std::string& text, const Strings& errors) {
        return Call{name, "select -clear;", text, false, {}, errors, ""};
    };
    const auto givesZero = [](const char* name, const std::string& text, const char* error) {
        return Call{name, "", text, true, 0, {error}, ""};
    };
    return {
        fails("ExportDataOfNothing", all, {"No blend shape node provided."}),
        fails("ExportDataOfAMesh", all + "base", {"The node is not a blend shape node."}),
        fails("ExportDataOfNoObject", all + "ghost",
              {"No object matches name: ghost", "Error getting objects"}),
        fails("ExportDataUnknownFlag", all + "-x bs", {"Invalid flag '-x'.", "Error getting objects"}),
        givesZero("ExportDataWithoutMode", command + "-i 0 -cn a " + file + "bs",
                  "No operation mode defined."),
        givesZero("ExportDataWithoutFile", command + "-d -i 0 -cn a bs", "Missing export file path."),
        givesZero("ExportDataWithoutNames", command + "-d -i 0 " + file + "bs", "Missing channel names."),
        givesZero("ExportDataWithoutIndices", command + "-d -cn a " + file + "bs", "Missing index list."),
        givesZero("ExportDataToAFolder", command + "-d -i 0 -cn a -fn \"" + scratchFile(".") + "\" bs",
                  "Unable to open file for writing."),
        givesZero("ExportDataOfMissingTargets", command + "-d -i 7 -i -1 -cn a -cn b " + file + "bs",
                  "No items to export"),
        {"ExportData", "", all + "bs", true, 1, {}, ""},
        {"ExportDataSelection", "select -noExpand bs;", all, true, 1, {}, ""},
    };
}

const CommandRows kRows{"dv_blendShapeExportData", exportCalls()};

}  // namespace
