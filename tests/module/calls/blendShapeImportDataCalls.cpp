#include "commandTable.h"
#include "scratchFiles.h"

namespace {

std::vector<Call> importCalls() {
    const std::string command = "dv_blendShapeImportData ";
    const std::string file = "-fn \"" + scratchFile("importCalls.json") + "\" ";
    const std::string write =
        "dv_blendShapeExportData -d -i 0 -cn smile -i 4 -cn blink " + file +
        "bs; select -clear;"
        // One entry a vertex, as the import writes them.
        "setAttr bs.it[0].itg[4].iti[6000].ict -type componentList 3 vtx[5] vtx[6] vtx[19];";
    const std::string second =
        "setAttr bs.it[0].itg[2].iti[6000].ict -type componentList 3 vtx[3] vtx[7] vtx[12];"
        "setAttr bs.it[0].itg[2].iti[6000].ipt -type pointArray 3 0 1 0 1 0.5 0 0 1 0 0 -2 1;"
        "aliasAttr smile1 bs.w[2]; setAttr bs.w[2] 0";
    const Strings list{"0,6000", "4,5500:6000"};
    const Strings remapped{"2,6000", "4,5500:6000"};
    const auto fails = [&](const char* name, const std::string& text, const Strings& errors) {
        return Call{name, write, command + text, false, {}, errors, ""};
    };
    const auto givesZero = [&](const char* name, const std::string& text, const char* error) {
        return Call{name, write, command + text, true, 0, {error}, ""};
    };
    return {
        fails("ImportDataOfNothing", "-d " + file, {"No blend shape node provided."}),
        fails("ImportDataIntoAMesh", "-d -rm -si 1 base", {"The node is not a blend shape node."}),
        fails("ImportDataIntoNoObject", "-d ghost",
              {"No object matches name: ghost", "Error getting objects"}),
        fails("ImportDataUnknownFlag", "-d -x bs", {"Invalid flag '-x'.", "Error getting objects"}),
        givesZero("ImportDataOfUnequalLists", "-rm -si 1 -si 2 -di 3",
                  "The number of indices for source and destination needs to match."),
        givesZero("ImportDataWithoutMode", file + "bs", "No operation mode defined."),
        givesZero("ImportDataWithoutFile", "-d bs", "Missing export file path."),
        givesZero("ImportDataOfNoFile", "-d -fn \"" + scratchFile("none.json") + "\" bs",
                  "Unable to open file for reading."),
        givesZero("ImportDataOfAFolder", "-ld -fn \"" + scratchFile(".") + "\"",
                  "Unable to open file for reading."),
        {"ListData", write, command + "-ld -si 1 " + file, true, list, {}, ""},
        {"ListDataRemapped", write, command + "-ld -rm -si 0 -di 2 " + file, true, remapped, {}, ""},
        {"ImportData",
         write + "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 1 vtx[1]; setAttr bs.w[0] 0.5;",
         command + "-d " + file + "bs",
         true,
         1,
         {},
         "setAttr bs.it[0].itg[0].iti[6000].ict -type componentList 3 vtx[3] vtx[7] vtx[12];"},
        {"ImportDataRemapped",
         write + "select -noExpand bs;",
         command + "-d -rm -si 0 -di 2 " + file,
         true,
         1,
         {},
         second},
        {"ImportDataAndList",
         write,
         command + "-d -ld -rm -si 0 -di 2 " + file + "bs",
         true,
         remapped,
         {},
         second},
    };
}

const CommandRows kRows{"dv_blendShapeImportData", importCalls()};

}  // namespace
