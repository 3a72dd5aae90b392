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

/// dv_blendShapeImportData: lists what a file of dv_blendShapeExportData holds, or writes its deltas into a
/// blend shape.
///
/// A target without a weight gets the weight 0, and an alias: its name in the file, reduced to legal
/// characters, with a number if that alias is taken. A target with a weight keeps its alias and its weight.
/// Items in the file overwrite existing items of the same index; other items stay. If an item cannot be
/// written, an error is shown and the other items are imported. Negative or too large indices are skipped
/// with one warning.
///
/// The result of a listing is a string array, even if the call also imports. The result of an import alone is
/// 1. It is 0 if an item could not be written, or if the file has nothing to import, which gives a warning.
/// Not undoable. Cost is linear in the size of the file and in the targets of the node.
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

    std::unordered_set<int> weights_;                   // targets of the node that have a weight
    std::unordered_set<std::string> aliases_;           // all aliases of the node
    std::unordered_map<std::string, int> nextNumbers_;  // per alias without number: lower numbers are taken
    bool hasItems_ = false;                             // the file has items to import
    bool hasFailed_ = false;                            // an item could not be written
};
