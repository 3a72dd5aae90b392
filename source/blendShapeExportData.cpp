#include "blendShapeExportData.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>

#include <utility>

#include "common.h"
#include "files/dataFile.h"
#include "files/jsonText.h"
#include "targets/targetEditor.h"

namespace {

/// An item that has deltas.
struct Item {
    int index;
    TargetDeltas deltas;
};

/// The items of a target that have deltas. Shows a warning for each of the others.
std::vector<Item> readItems(TargetEditor& targets, int target) {
    const MIntArray indices = getTargetItemIndices(targets.blendShape(), target);
    std::vector<Item> items;
    items.reserve(indices.length());
    for (unsigned int k = 0; k < indices.length(); ++k) {
        TargetDeltas deltas = targets.read(target, indices[k]);
        if (deltas.vertices.length() > 0 && deltas.points.length() >= deltas.vertices.length()) {
            items.push_back({indices[k], std::move(deltas)});
        } else {
            MGlobal::displayWarning(MString("Skipped position ") + indices[k] + " of index " + target +
                                    " because of missing target data.");
        }
    }
    return items;
}

void writeItem(const Item& item, JsonWriter& writer) {
    writer.openObject(item.index);
    const unsigned int count = item.deltas.vertices.length();
    for (unsigned int k = 0; k < count; ++k) {
        const MPoint& delta = item.deltas.points[k];
        writer.writeIndexPoint(item.deltas.vertices[k], {delta.x, delta.y, delta.z});
    }
    writer.closeObject();
}

}  // namespace

const CommandInfo& blendShapeExportData::info() {
    static const CommandInfo description{
        kName,
        "Export blend shape targets to a json file.",
        {{"-cn", "-channelName", MSyntax::kString, "channel name (multi use)", true},
         {"-d", "-delta", MSyntax::kNoArg, "export deltas"},
         {"-fn", "-fileName", MSyntax::kString, "file name for export"},
         {"-i", "-index", MSyntax::kLong, "target index (multi use)", true}},
        "dv_blendShapeExportData -d -fn <string> -i <int> -cn <string>",
        "int",
        false,
        ErrorResult::kZero};
    return description;
}

CallOutcome blendShapeExportData::read(const MArgDatabase& arguments) {
    channelNames_ = readFlagUses<MString>(arguments, "-cn");
    readFlag(arguments, "-fn", fileName_);
    targets_ = readFlagUses<int>(arguments, "-i");
    CallOutcome outcome = readBlendShape(arguments, blendShape_);
    if (!outcome.isDone()) return outcome;
    if (!arguments.isFlagSet("-d")) return CallOutcome::refused("No operation mode defined.");
    if (fileName_.length() == 0) return CallOutcome::refused("Missing export file path.");
    if (channelNames_.empty()) return CallOutcome::refused("Missing channel names.");
    if (targets_.empty()) return CallOutcome::refused("Missing index list.");
    return outcome;
}

CallOutcome blendShapeExportData::edit() {
    OutputFile file;
    if (!file.open(fileName_.asUTF8())) return CallOutcome::refused("Unable to open file for writing.");
    TargetEditor targets(blendShape_);
    JsonWriter writer;
    writer.openObject();
    bool hasItems = false;
    for (std::size_t k = 0; k < targets_.size(); ++k) {
        hasItems = writeTarget(targets, k, writer) || hasItems;
        // The file does not change until there is something to export.
        if (!hasItems) continue;
        file.write(writer.text());
        writer.clear();
    }
    if (!hasItems) return CallOutcome::refused("No items to export");
    writer.closeObject();
    file.write(writer.text());
    if (!file.close()) return CallOutcome::refused("Unable to open file for writing.");
    setResult(1);
    return CallOutcome();
}

/// Writes the object of a target, unless the target has no items.
/// @return whether any item was written
bool blendShapeExportData::writeTarget(TargetEditor& targets, std::size_t position,
                                       JsonWriter& writer) const {
    const int target = targets_[position];
    if (getTargetItemIndices(blendShape_, target).length() == 0) {
        MGlobal::displayWarning(MString("Skipped index ") + target + " because of missing data.");
        return false;
    }
    const MString name = position < channelNames_.size() ? channelNames_[position] : MString();
    writer.openObject(target);
    writer.writeStringMember("name", name.asUTF8());
    writer.openObject("data");
    const std::vector<Item> items = readItems(targets, target);
    for (const Item& item : items)
        writeItem(item, writer);
    writer.closeObject();
    writer.closeObject();
    return !items.empty();
}
