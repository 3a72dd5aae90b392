#include <utility>

#include "commandTable.h"

namespace {

std::vector<Call> symmetryCalls() {
    const auto fails = [](const char* name, const char* setup, const std::string& arguments, Strings errors) {
        return Call{name, setup, "dv_polySymmetry " + arguments, false, {}, std::move(errors), ""};
    };
    const auto gives = [](const char* name, const char* setup, const std::string& arguments, int result,
                          const std::string& residue) {
        return Call{name, setup, "dv_polySymmetry " + arguments, true, result, {}, residue};
    };
    // Vertices 4 and 0 mirror each other.
    return {
        fails("SymmetryOfNothing", "select -clear", "", {"No mesh provided."}),
        fails("SymmetryOfNoObject", "", "ghost", {"No object matches name: ghost", "Error getting objects"}),
        fails("SymmetryUnknownFlag", "", "-x base", {"Invalid flag '-x'.", "Error getting objects"}),
        fails("SymmetryOfABlendShape", "", "bs", {"bs is not a mesh object."}),
        fails("SymmetryOfAnEmptyGroup", "group -empty -name g", "g", {"g has no shape node."}),
        fails("SymmetryWithABlendShape", "", "base bs", {"bs is not a mesh object."}),
        fails("SymmetryAxis", "", "-ax w base", {"The axis string is not correcty defined. Use x, y, or z."}),
        fails("SymmetryWithoutGeometry", "createNode mesh -name hollow", "hollow", {"hollow has no points."}),
        fails("SymmetryMapNotFitting", "addAttr -ln dvVertexOrderMap -h 1 -dt Int32Array baseShape",
              "-atm base", {"Unable to extend the order mapping because the vertex count has changed."}),
        fails("SymmetryFromNoMap", "", "-aom base base", {"Vertex order map attribute is not available."}),
        fails("SymmetryFromNoObject", "", "-aom ghost base",
              {"The -applyOrderMap flag names ghost, which matches no node, or several."}),
        gives("Symmetry", "", "base", 1, ""),
        gives("SymmetryMissing", "move -relative -objectSpace 0 0.5 0 base.vtx[4]", "base", 0,
              "select base.vtx[0] base.vtx[4]"),
        gives("SymmetryIntoAMap", "", "-atm base", 1, "dv_polySymmetry -atm base"),
        gives("SymmetryFromAMap",
              "move -relative -objectSpace 0 0.5 0 base.vtx[4]; dv_polyMapVertexOrder base", "-aom base base",
              1, ""),
    };
}

const CommandRows kRows{"dv_polySymmetry", symmetryCalls()};

}  // namespace
