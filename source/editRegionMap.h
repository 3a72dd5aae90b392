#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <cstddef>
#include <string_view>

#include "regionNode.h"

/// dv_editRegionMap: moves weights between the base weights of a blend shape, where the user paints one
/// region at a time, and the region map of the region data node that is connected from it; keeps the map
/// normalised, shows it, and writes and reads it as a file.
///
/// One call does one thing: the first in the order of Mode that is asked for. The result is 1, or 0 after an
/// error and where nothing was asked for. The command stands on the undo queue, but undo leaves everything as
/// it is, on purpose: scripts of the kit store and restore the map themselves. Redo does it once more.
class editRegionMap : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_editRegionMap";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    enum class Mode { kImport, kExport, kAdd, kAppend, kEdit, kClear, kRestore, kColor, kNone };

    static Mode readMode(const MArgDatabase& arguments);
    void readFlags(const MArgDatabase& arguments);
    bool checkFlags(MString& error) const;
    bool usesRegion() const;

    MStatus run(RegionNode& node);
    MStatus add(RegionNode& node);
    MStatus append(RegionNode& node, const MObject& mesh);
    MStatus edit(const RegionNode& node);
    MStatus restore(RegionNode& node);
    MStatus color(const RegionNode& node, const MObject& mesh);
    MStatus exportMap(const RegionNode& node);
    MStatus importMap(RegionNode& node, unsigned int vertexCount);
    MStatus importRegion(RegionNode& node, std::string_view text, unsigned int vertexCount);

    MStatus done();
    MStatus written(const MStatus& status);
    MStatus refuse(const MString& text, const MStatus& status = MS::kSuccess);

    std::size_t region() const { return static_cast<std::size_t>(index_); }

    Mode mode_ = Mode::kNone;
    MString fileName_;
    bool hasIndex_ = false;
    int index_ = 0;
    bool distributes_ = true;
    int restored_ = 0;
    int style_ = 0;
    bool needsMesh_ = false;

    bool isChecked_ = false;  // all checks have passed: there is something to redo
    MObjectHandle node_;
    MObjectHandle mesh_;
};
