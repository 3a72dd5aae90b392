#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>
#include <unordered_map>
#include <unordered_set>

#include "commandSupport.h"
#include "files/targetDataFile.h"
#include "targets/targetEditor.h"

/// dv_blendShapeImportData: lists what a file of dv_blendShapeExportData holds, or writes its
/// deltas into a blend shape.
///
/// A target that has no weight yet gets the name in the file as its alias, reduced to what is legal
/// and numbered when taken, and the weight 0. One that has keeps its alias and its weight; its
/// items of the same index are overwritten, its other items stay. An item that cannot be written is
/// reported and the others are imported; indices that are negative or too large are skipped with one
/// warning. The result of a listing is a string array, also when deltas are imported at the same time; of an
/// import alone 1, or 0 when something could not be written, or the file has nothing to import, which gives a
/// warning. Not undoable. Cost linear in the file and in the targets of the node.
class blendShapeImportData : public CommandOf<blendShapeImportData> {
  public:
    static constexpr const char* kName = "dv_blendShapeImportData";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    void readTargets();
    void importItem(TargetEditor& targets, const TargetItem& item);
    void addWeight(const TargetItem& item);
    std::string freeAlias(const TargetItem& item);
    void showWhatIsLeftOut(int refusedCount) const;

    bool listsDeltas_ = false;
    bool importsDeltas_ = false;
    bool remaps_ = false;
    MString fileName_;
    TargetRemap remap_;
    MObject blendShape_;

    std::unordered_set<int> weights_;                   // targets of the node that have one
    std::unordered_set<std::string> aliases_;           // of the node
    std::unordered_map<std::string, int> nextNumbers_;  // those before are taken, by the alias they follow
    bool hasItems_ = false;                             // the file has some to import
    bool hasFailed_ = false;                            // an item could not be written
};
