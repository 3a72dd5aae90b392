#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstddef>
#include <string_view>

#include "commandSupport.h"
#include "regions/regionNode.h"

/// dv_editRegionMap: edits the region map of a region data node. It moves weights between the map and the
/// base weights of the connected blend shape, where the user paints one region at a time. It also keeps the
/// map normalised, shows it, and exports and imports it.
///
/// One call does one thing: the first in the order of Mode that the call asks for. The result is 1. It is 0
/// after an error, and if the call asks for nothing. Undo changes nothing (deliberate:
/// docs/compatibility.md). Redo does the call again, except for restoring from the buffers.
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
