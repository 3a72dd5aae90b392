#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstddef>
#include <vector>

#include "commandSupport.h"
#include "targets/targetEditor.h"

class JsonWriter;

/// dv_blendShapeExportData: writes the deltas of targets, in-betweens included, to a file that
/// dv_blendShapeImportData reads. targetDataFile.h shows the layout.
///
/// Deltas are written as stored, relative to the base. A target without items is left out with a warning; so
/// is an item without deltas, or with fewer points than vertices. A target without a channel name gets an
/// empty name.
///
/// The result is 1 after the file was written, 0 after an error. An old file stays unchanged if there is
/// nothing to export, or if the new file cannot be completed (dataFile.h names the exceptions). The scene
/// does not change.
class blendShapeExportData : public CommandOf<blendShapeExportData> {
  public:
    static constexpr const char* kName = "dv_blendShapeExportData";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    bool writeTarget(TargetEditor& targets, std::size_t position, JsonWriter& writer) const;

    MString fileName_;
    std::vector<MString> channelNames_;
    std::vector<int> targets_;
    MObject blendShape_;
};
