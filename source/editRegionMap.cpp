#include "editRegionMap.h"

#include <maya/MArgDatabase.h>
#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFn.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshVertex.h>

#include <string>
#include <utility>
#include <vector>

#include "common.h"
#include "files/dataFile.h"
#include "regions/regionColors.h"
#include "regions/regionFile.h"
#include "scene/aliveObject.h"
#include "scene/plugAccess.h"
#include "weights/weightFile.h"
#include "weights/weightList.h"

namespace {

constexpr const char* kReadError = "Unable to open file for reading";
constexpr const char* kWriteError = "Unable to open file for writing";
constexpr const char* kCountError =
    "The stored vertex count doesn't match the resolution of the currently loaded mesh";

/// A map as vertex colours of a mesh.
struct Picture {
    MColorArray colors;    // of all vertices; vertices outside the map have weights of 0
    int partialCount = 0;  // number of partly assigned vertices
    int firstPartial = 0;
};

Picture pictureOf(const RegionArrays& map, unsigned int vertexCount, const RegionLocks& shown,
                  RegionStyle style) {
    Picture picture;
    picture.colors.setLength(vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex) {
        RegionWeights weights = vertex < map.vertexCount ? map.at(vertex) : RegionWeights{};
        if (isPartial(weights)) {
            if (picture.partialCount == 0) picture.firstPartial = static_cast<int>(vertex);
            ++picture.partialCount;
        }
        for (std::size_t region = 0; region < kRegionCount; ++region)
            weights[region] = shown[region] ? weights[region] : 0.0;
        const RegionColor color = regionColor(weights, style);
        picture.colors[vertex] = MColor(color[0], color[1], color[2], 1.0F);
    }
    return picture;
}

/// The message about vertices that are partly assigned.
MString partialText(const Picture& picture) {
    const int count = picture.partialCount;
    return MString("Partial weights found: ") + count + (count == 1 ? " vertex is" : " vertices are") +
           " assigned in part only, first vtx[" + picture.firstPartial +
           "]. Paint the rest and add it to the map, or use -append with the -index of a region, or with " +
           "-index -1 to assign it by the neighbours.";
}

/// The message about a line that cannot be read.
MString lineText(const MString& fileName, int line, const char* content) {
    return MString("Line ") + line + " of " + fileName + " does not hold an index and " + content + ".";
}

}  // namespace

const CommandInfo& editRegionMap::info() {
    static const CommandInfo description{
        kName,
        "Edit the current region map.",
        {{"-atm", "-addToMap", MSyntax::kNoArg, "add the current edits to the map"},
         {"-ap", "-append", MSyntax::kNoArg, "append unassigned weights to the region"},
         {"-cl", "-clear", MSyntax::kNoArg, "clear the indexed region"},
         {"-col", "-color", MSyntax::kLong,
          "display as black and white (0), colored (1) or colorRamp (2) vertex colors"},
         {"-dw", "-distributeWeight", MSyntax::kBoolean,
          "distribute remaining weight to influencing regions"},
         {"-e", "-edit", MSyntax::kNoArg, "load the indexed region for editing"},
         {"-ex", "-export", MSyntax::kNoArg, "export weights to a file"},
         {"-fn", "-fileName", MSyntax::kString, "file name for export/import"},
         {"-im", "-import", MSyntax::kNoArg, "import weights from a file"},
         {"-i", "-index", MSyntax::kLong, "index of the current region"},
         {"-m", "-mesh", MSyntax::kString, "mesh shape (needed for clear, import and color)"},
         {"-res", "-restore", MSyntax::kLong,
          "stores the current region data (0) or restores the previous data (1)"}},
        "dv_editRegionMap",
        "int",
        true,
        ErrorResult::kZero};
    return description;
}

CallOutcome editRegionMap::read(const MArgDatabase& arguments) {
    readFlags(arguments);
    MObject node;
    constexpr const char* kNoNode = "No region node provided.";
    CallOutcome outcome = readNode(arguments, MFn::kDependencyNode, kNoNode, kNoNode, node);
    // Deliberate: docs/compatibility.md.
    if (!outcome.isDone()) return outcome.asRefused();
    RegionNode regions;
    MString error;
    if (!regions.find(node, error)) return CallOutcome::refused(error);
    if (needsMesh_) {
        MString meshName;
        readFlag(arguments, "-m", meshName);
        MObject mesh;
        CallOutcome hasMesh = readMeshShape(meshName, "The mesh is not defined.", mesh);
        if (!hasMesh.isDone()) return hasMesh;
        mesh_ = mesh;
    }
    if (!checkFlags(error)) return CallOutcome::refused(error);
    node_ = node;
    return CallOutcome();
}

editRegionMap::Mode editRegionMap::readMode(const MArgDatabase& arguments) {
    static constexpr std::pair<const char*, Mode> kModes[] = {
        {"-im", Mode::kImport}, {"-ex", Mode::kExport}, {"-atm", Mode::kAdd},     {"-ap", Mode::kAppend},
        {"-e", Mode::kEdit},    {"-cl", Mode::kClear},  {"-res", Mode::kRestore}, {"-col", Mode::kColor},
    };
    for (const auto& [flag, mode] : kModes) {
        if (arguments.isFlagSet(flag)) return mode;
    }
    return Mode::kNone;
}

void editRegionMap::readFlags(const MArgDatabase& arguments) {
    mode_ = readMode(arguments);
    for (const char* flag : {"-cl", "-im", "-col", "-ap"})
        needsMesh_ = needsMesh_ || arguments.isFlagSet(flag);
    readFlag(arguments, "-fn", fileName_);
    hasIndex_ = arguments.isFlagSet("-i");
    readFlag(arguments, "-i", index_);
    readFlag(arguments, "-dw", distributes_);
    readFlag(arguments, "-res", restored_);
    readFlag(arguments, "-col", style_);
}

bool editRegionMap::checkFlags(MString& error) const {
    const bool isByNeighbours = mode_ == Mode::kAppend && index_ == -1;
    if (usesRegion() && !isByNeighbours && (index_ < 0 || region() >= kRegionCount)) {
        error = "The index of a region is a number from 0 to 5.";
        return false;
    }
    if (mode_ == Mode::kColor && (style_ < 0 || style_ >= kRegionStyleCount)) {
        error = "The color style is 0, 1 or 2.";
        return false;
    }
    return true;
}

/// Whether the call is about one region. Import, export and colours are about the whole map if no region is
/// given.
bool editRegionMap::usesRegion() const {
    const bool isForWhole = mode_ == Mode::kImport || mode_ == Mode::kExport || mode_ == Mode::kColor;
    return isForWhole ? hasIndex_ : mode_ != Mode::kRestore && mode_ != Mode::kNone;
}

CallOutcome editRegionMap::edit() {
    const MObject node = aliveObject(node_);
    if (node.isNull()) return CallOutcome::failed("The region data node is not in the scene any more.");
    RegionNode regions;
    MString error;
    if (!regions.find(node, error)) return CallOutcome::failed(error);
    if (needsMesh_ && aliveObject(mesh_).isNull())
        return CallOutcome::failed("The mesh is not in the scene any more.");
    return run(regions);
}

/// Undo changes nothing, so restored regions are still restored; and after a restore the buffers are empty.
CallOutcome editRegionMap::redo() {
    const bool isRestored = mode_ == Mode::kRestore && restored_ != 0;
    return isRestored ? CallOutcome() : edit();
}

CallOutcome editRegionMap::run(RegionNode& node) {
    const MObject mesh = aliveObject(mesh_);
    const auto vertexCount = mesh.isNull() ? 0U : static_cast<unsigned int>(MFnMesh(mesh).numVertices());
    switch (mode_) {
        case Mode::kImport:
            return importMap(node, vertexCount);
        case Mode::kExport:
            return exportMap(node);
        case Mode::kAdd:
            return add(node);
        case Mode::kAppend:
            return append(node, mesh);
        case Mode::kEdit:
            return load(node);
        case Mode::kClear:
            return written(node.writeRegion(region(), MDoubleArray(vertexCount, 0.0)));
        case Mode::kRestore:
            return copyBuffers(node);
        case Mode::kColor:
            return color(node, mesh);
        default:
            setResult(0);
            return CallOutcome();
    }
}

CallOutcome editRegionMap::done() {
    setResult(1);
    return CallOutcome();
}

/// Ends a run that has written weights, with the status of the write.
CallOutcome editRegionMap::written(const MStatus& status) {
    return status ? done() : CallOutcome::failed("Error setting region weights.", status);
}

/// Moves the painted base weights to the map.
CallOutcome editRegionMap::add(RegionNode& node) {
    const WeightList painted = readWeights(getWeightsPlug(node.blendShape(), kBaseWeights));
    const RegionMap map = node.readMap();
    const RegionArrays& arrays = map.arrays();
    int skippedCount = 0;
    for (unsigned int k = 0; k < painted.vertices.length(); ++k) {
        const auto vertex = static_cast<std::size_t>(painted.vertices[k]);
        if (vertex >= arrays.vertexCount) {
            ++skippedCount;
            continue;
        }
        RegionWeights weights = arrays.at(vertex);
        paintRegion(weights, region(), painted.values[k], node.locks(), distributes_);
        arrays.set(vertex, weights);
    }
    if (skippedCount > 0) {
        MGlobal::displayWarning(MString("Skipped ") + skippedCount +
                                " painted vertices that the region map does not have. Use -clear on each " +
                                "region of a new map.");
    }
    return written(node.writeMap(map));
}

/// Fills vertices up to 1: with one region, or with the regions of their neighbours.
CallOutcome editRegionMap::append(RegionNode& node, const MObject& mesh) {
    const RegionMap map = node.readMap();
    if (index_ >= 0) {
        appendToRegion(map.arrays(), region(), node.locks());
        return written(node.writeMap(map));
    }
    MObject visited(mesh);
    MItMeshVertex iterator(visited);
    const auto vertexCount = static_cast<unsigned int>(iterator.count());
    MIntArray connected;
    appendByNeighbours(map.arrays(), node.locks(), [&](std::size_t vertex, std::vector<int>& neighbours) {
        neighbours.clear();
        if (vertex >= vertexCount) return;
        int previous = 0;
        iterator.setIndex(static_cast<int>(vertex), previous);
        iterator.getConnectedVertices(connected);
        for (unsigned int k = 0; k < connected.length(); ++k)
            neighbours.push_back(connected[k]);
    });
    return written(node.writeMap(map));
}

/// Copies a region to the base weights, where it can be painted.
CallOutcome editRegionMap::load(const RegionNode& node) {
    const MDoubleArray weights = node.readRegion(region());
    MIntArray vertices(weights.length());
    for (unsigned int vertex = 0; vertex < weights.length(); ++vertex)
        vertices[vertex] = static_cast<int>(vertex);
    setElements(getWeightsPlug(node.blendShape(), kBaseWeights), vertices, weights);
    return done();
}

CallOutcome editRegionMap::copyBuffers(RegionNode& node) {
    MString error;
    const MStatus status = restored_ != 0 ? node.restore(error) : node.store(error);
    if (error.length() > 0) return CallOutcome::refused(error);
    return written(status);
}

/// Shows the map, or one region of it, as vertex colours, even if some vertices are partly assigned.
CallOutcome editRegionMap::color(const RegionNode& node, const MObject& mesh) {
    const RegionMap map = node.readMap();
    RegionLocks shown;
    shown.fill(!hasIndex_);
    if (hasIndex_) shown[region()] = true;
    MFnMesh function(mesh);
    const auto vertexCount = static_cast<unsigned int>(function.numVertices());
    Picture picture = pictureOf(map.arrays(), vertexCount, shown, static_cast<RegionStyle>(style_));
    MIntArray vertices(vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex)
        vertices[vertex] = static_cast<int>(vertex);
    const MStatus status = function.setVertexColors(picture.colors, vertices);
    if (!status) return CallOutcome::failed("Error setting vertex colors.", status);
    function.setDisplayColors(true);
    // Done in spite of the error: the map is shown, and redo has to show it again.
    if (picture.partialCount == 0) return done();
    report(CallOutcome::refused(partialText(picture)));
    return CallOutcome();
}

CallOutcome editRegionMap::exportMap(const RegionNode& node) {
    const FileForm form = fileFormOf(fileName_.asUTF8());
    std::string settings;
    MString error;
    if (!hasIndex_ && !node.readSettings(settings, error)) return CallOutcome::refused(error);
    OutputFile file;
    if (!file.open(fileName_.asUTF8())) return CallOutcome::refused(kWriteError);
    if (hasIndex_) {
        const MDoubleArray weights = node.readRegion(region());
        WeightFileWriter writer(form);
        for (unsigned int vertex = 0; vertex < weights.length(); ++vertex)
            writer.add(static_cast<int>(vertex), weights[vertex]);
        file.write(writer.finish());
    } else {
        const RegionMap map = node.readMap();
        RegionArrays arrays = map.arrays();
        // The length of the first array is the vertex count of the map.
        arrays.vertexCount = node.readRegion(0).length();
        writeRegionFile(settings, arrays, form, [&](std::string_view text) { file.write(text); });
    }
    return file.close() ? done() : CallOutcome::refused(kWriteError);
}

CallOutcome editRegionMap::importMap(RegionNode& node, unsigned int vertexCount) {
    FileContent file;
    if (!file.read(fileName_.asUTF8())) return CallOutcome::refused(kReadError);
    if (hasIndex_) return importRegion(node, file.text(), vertexCount);
    const RegionFile content = parseRegionFile(file.text(), fileFormOf(fileName_.asUTF8()), vertexCount);
    if (content.malformedLine > 0)
        return CallOutcome::refused(lineText(fileName_, content.malformedLine, "six weights"));
    if (content.vertexCount() != vertexCount) return CallOutcome::refused(kCountError);
    MString error;
    MStatus status = node.checkWeights();
    if (status && !node.writeSettings(content.settings, error)) return CallOutcome::refused(error);
    for (std::size_t k = 0; status && k < kRegionCount; ++k)
        status = node.writeRegion(k, MDoubleArray(content.weights[k].data(), vertexCount));
    return written(status);
}

/// Reads a file with one region. The file must have exactly one weight for each vertex.
CallOutcome editRegionMap::importRegion(RegionNode& node, std::string_view text, unsigned int vertexCount) {
    const FileForm form = fileFormOf(fileName_.asUTF8());
    if (parseRegionFile(text, form).vertexCount() > 0)
        return CallOutcome::refused("The file holds a whole region map. Import it without -index.");
    MDoubleArray weights(vertexCount, 0.0);
    std::vector<bool> isRead(vertexCount, false);
    unsigned int readCount = 0;
    bool isFitting = true;
    const int malformedLine = readWeightFile(text, form, [&](int vertex, double value) {
        const auto index = static_cast<unsigned int>(vertex);
        isFitting = isFitting && index < vertexCount && !isRead[index];
        if (!isFitting) return;
        isRead[index] = true;
        weights[index] = value;
        ++readCount;
    });
    if (malformedLine > 0) return CallOutcome::refused(lineText(fileName_, malformedLine, "a weight"));
    if (!isFitting || readCount != vertexCount) return CallOutcome::refused(kCountError);
    return written(node.writeRegion(region(), weights));
}
