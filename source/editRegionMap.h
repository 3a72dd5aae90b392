#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstddef>
#include <string_view>

#include "commandSupport.h"
#include "regions/regionNode.h"

/// dv_editRegionMap: moves weights between the base weights of a blend shape, where the user paints one
/// region at a time, and the region map of the region data node that is connected from it; keeps the map
/// normalised, shows it, and writes and reads it as a file.
///
/// One call does one thing: the first in the order of Mode that is asked for. The result is 1, or 0 after an
/// error and where nothing was asked for. The command stands on the undo queue, but undo leaves everything as
/// it is, on purpose: scripts of the kit store and restore the map themselves. Redo does it once more.
class editRegionMap : public CommandOf<editRegionMap> {
  public:
    static constexpr const char* kName = "dv_editRegionMap";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;
    CallOutcome redo() override;

  private:
    enum class Mode { kImport, kExport, kAdd, kAppend, kEdit, kClear, kRestore, kColor, kNone };

    static Mode readMode(const MArgDatabase& arguments);
    void readFlags(const MArgDatabase& arguments);
    bool checkFlags(MString& error) const;
    bool usesRegion() const;

    CallOutcome run(RegionNode& node);
    CallOutcome add(RegionNode& node);
    CallOutcome append(RegionNode& node, const MObject& mesh);
    CallOutcome load(const RegionNode& node);
    CallOutcome copyBuffers(RegionNode& node);
    CallOutcome color(const RegionNode& node, const MObject& mesh);
    CallOutcome exportMap(const RegionNode& node);
    CallOutcome importMap(RegionNode& node, unsigned int vertexCount);
    CallOutcome importRegion(RegionNode& node, std::string_view text, unsigned int vertexCount);

    CallOutcome done();
    CallOutcome written(const MStatus& status);

    std::size_t region() const { return static_cast<std::size_t>(index_); }

    Mode mode_ = Mode::kNone;
    MString fileName_;
    bool hasIndex_ = false;
    int index_ = 0;
    bool distributes_ = true;
    int restored_ = 0;
    int style_ = 0;
    bool needsMesh_ = false;

    MObjectHandle node_;
    MObjectHandle mesh_;
};
