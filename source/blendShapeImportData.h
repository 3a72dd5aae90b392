#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>
#include <unordered_set>

#include "commandSupport.h"
#include "targetDataFile.h"
#include "targetDeltas.h"

/// dv_blendShapeImportData: lists what a file of dv_blendShapeExportData holds, or writes its
/// deltas into a blend shape.
///
/// A target that is not there yet gets the name in the file as its alias, reduced to what is legal
/// and numbered when taken, and the weight 0. One that is there keeps its alias and its weight; its
/// items of the same index are overwritten, its other items stay. An item that cannot be written is
/// reported and the others are imported. The result of a listing is a string array, also when
/// deltas are imported at the same time; of an import alone 1, or 0 when something could not be
/// written. Not undoable.
class blendShapeImportData : public CommandOf<blendShapeImportData> {
  public:
    static constexpr const char* kName = "dv_blendShapeImportData";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    void importItem(TargetEditor& targets, const TargetItem& item);
    void addWeight(const TargetItem& item);
    std::string freeAlias(const TargetItem& item) const;

    bool listsDeltas_ = false;
    bool importsDeltas_ = false;
    bool remaps_ = false;
    MString fileName_;
    TargetRemap remap_;
    MObject blendShape_;

    std::unordered_set<int> existing_;  // target indices of the node
    bool hasFailed_ = false;            // an item could not be written
};
