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

/// An item of a target that has deltas.
struct Item {
    int index;
    TargetDeltas deltas;
};

/// The items of a target that have deltas, with a warning for each of the others.
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

void writeItem(const Item& item, bool isLast, JsonWriter& writer) {
    writer.openObject(3, item.index);
    const unsigned int count = item.deltas.vertices.length();
    for (unsigned int k = 0; k < count; ++k) {
        const MPoint& delta = item.deltas.points[k];
        writer.writeIndexPoint(4, item.deltas.vertices[k], {delta.x, delta.y, delta.z}, k + 1 == count);
    }
    writer.closeObject(3, isLast);
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
    const std::size_t last = lastWithItems();
    TargetEditor targets(blendShape_);
    JsonWriter writer;
    writer.write("{\n");
    bool hasItems = false;
    for (std::size_t k = 0; k < targets_.size(); ++k) {
        hasItems = writeTarget(targets, k, k == last, writer) || hasItems;
        // Until there is something to export, the file stays as it was.
        if (!hasItems) continue;
        file.write(writer.text());
        writer.clear();
    }
    if (!hasItems) return CallOutcome::refused("No items to export");
    file.write("}");
    if (!file.close()) return CallOutcome::refused("Unable to open file for writing.");
    setResult(1);
    return CallOutcome();
}

/// Place in the list of the last target that is going to be written: no comma comes after it.
std::size_t blendShapeExportData::lastWithItems() const {
    std::size_t position = targets_.size() - 1;
    while (position > 0 && getTargetItemIndices(blendShape_, targets_[position]).length() == 0)
        --position;
    return position;
}

/// Writes the object of a target that has items.
/// @return whether any of them was written
bool blendShapeExportData::writeTarget(TargetEditor& targets, std::size_t position, bool isLast,
                                       JsonWriter& writer) const {
    const int target = targets_[position];
    if (getTargetItemIndices(blendShape_, target).length() == 0) {
        MGlobal::displayWarning(MString("Skipped index ") + target + " because of missing data.");
        return false;
    }
    const MString name = position < channelNames_.size() ? channelNames_[position] : MString();
    writer.openObject(1, target);
    writer.writeStringMember(2, "name", name.asUTF8());
    writer.openObject(2, "data");
    const std::vector<Item> items = readItems(targets, target);
    for (std::size_t k = 0; k < items.size(); ++k)
        writeItem(items[k], k + 1 == items.size(), writer);
    writer.closeObject(2, true);
    writer.closeObject(1, isLast);
    return !items.empty();
}
