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
/// dv_blendShapeImportData reads (targetDataFile.h shows the layout).
///
/// The deltas are those stored, relative to the base. What has none is left out with a warning, and
/// so is an item with fewer points than vertices. A target for which no channel name is given gets
/// an empty one. The result is 1 after a written file, 0 after an error; when there was nothing to
/// export, or the file could not be completed, an old one stays as it was. The scene stays as it is.
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
