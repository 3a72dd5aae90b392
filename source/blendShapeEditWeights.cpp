#include "blendShapeEditWeights.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "commandSupport.h"
#include "dataFile.h"
#include "symmetryPlane.h"

namespace {

const CommandInfo& info() {
    static const CommandInfo command{
        blendShapeEditWeights::kName,
        "Edit blend shape weights.",
        // The help text has always shown the first flag like this; users look for it there.
        {{"-aw", "-addWeights", MSyntax::kNoArg, "add weights from a file", false, {"-add", "-add"}},
         {"-del", "-delete", MSyntax::kNoArg, "delete all weights"},
         {"-ex", "-export", MSyntax::kNoArg, "export weights to a file"},
         {"-flp", "-flip", MSyntax::kNoArg, "flip weights across the axis"},
         {"-fl", "-flush", MSyntax::kDouble, "flush weights with value (1 clears all weights)"},
         {"-f", "-freeze", MSyntax::kNoArg, "multiply the weights into the target deltas"},
         {"-fp", "-freezePaint", MSyntax::kNoArg, "export or import the paint display"},
         {"-gi", "-getIndices", MSyntax::kNoArg, "return the stored indices"},
         {"-gw", "-getWeights", MSyntax::kNoArg, "return the stored weights"},
         {"-im", "-import", MSyntax::kNoArg, "import weights from a file"},
         {"-iv", "-invert", MSyntax::kNoArg, "invert weights"},
         {"-m", "-mirror", MSyntax::kNoArg, "mirror weights across the axis"},
         {"-sw", "-setWeights", MSyntax::kNoArg, "set the given weights"},
         {"-sc", "-skinCluster", MSyntax::kString, "name of the skin cluster"},
         {"-sub", "-subtract", MSyntax::kNoArg, "subtract weights from a file"},
         {"-t", "-trim", MSyntax::kNoArg, "trim weights at the symmetry plane"},
         {"-av", "-allValues", MSyntax::kNoArg, "keep all values (invert mode)"},
         {"-ax", "-axis", MSyntax::kString, "symmetry axis (optional, default: x)"},
         {"-dir", "-direction", MSyntax::kBoolean, "direction (optional, default: 1; positive to negative)"},
         {"-fn", "-fileName", MSyntax::kString, "weight file"},
         {"-i", "-index", MSyntax::kLong, "target index (-1 for the base weights)"},
         {"-ii", "-influenceIndex", MSyntax::kLong, "index of the skin cluster influence"},
         {"-ob", "-orderBased", MSyntax::kString, "use the vertex order from the given mesh"},
         {"-om", "-originalMesh", MSyntax::kString, "original shape node"},
         {"-sm", "-skinMesh", MSyntax::kString, "mesh with the skin cluster"},
         {"-ti", "-targetItem", MSyntax::kLong, "target item (freeze mode, default: 6000)"},
         {"-tol", "-tolerance", MSyntax::kDouble, "tolerance value (optional, default: 0.001)"},
         {"-w", "-weight", MSyntax::kDouble, "weight value (multi use)", true},
         {"-wi", "-weightIndex", MSyntax::kLong, "vertex index of the weight (multi use)", true}},
        "dv_blendShapeEditWeights -m -ax <string> -dir <int> -i <int> -om <string> -tol <float>",
        "int/intArray/floatArray (depending on the mode)"};
    return command;
}

constexpr const char* kReadError = "Unable to open file for reading";

MStatus fail(const MString& text, const MStatus& status = MS::kSuccess) {
    return reportError(text, ErrorResult::kZero, ErrorSink::kGlobal, status);
}

/// Vertices of the first selected object, of whatever mesh; empty where something else is selected.
MIntArray selectedVertices() {
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MDagPath path;
    MObject component;
    MIntArray vertices;
    if (selection.length() == 0 || !selection.getDagPath(0, path, component)) return vertices;
    if (component.hasFn(MFn::kMeshVertComponent)) MFnSingleIndexedComponent(component).getElements(vertices);
    return vertices;
}

}  // namespace

void* blendShapeEditWeights::creator() {
    return new blendShapeEditWeights();
}

MSyntax blendShapeEditWeights::newSyntax() {
    return makeSyntax(info());
}

MStatus blendShapeEditWeights::doIt(const MArgList& arguments) {
    const MArgDatabase database(syntax(), arguments);
    if (answerHelp(database, info())) return MS::kSuccess;
    readFlags(database);
    MString originalName;
    MString orderName;
    MString skinName;
    int influence = 0;
    readFlag(database, "-om", originalName);
    MString meshName = originalName;
    if (isSkin_) {
        meshName.clear();
        readFlag(database, "-sm", meshName);
    }
    readFlag(database, "-ob", orderName);
    // Deliberate: also where the skin mesh stands in for the original mesh.
    if (orderName.length() == 0) orderName = originalName;
    readFlag(database, "-sc", skinName);
    readFlag(database, "-ii", influence);
    MObject blendShape;
    const MStatus status = getBlendShapeNode(database, ErrorResult::kZero, blendShape);
    if (!status) return status;
    if (meshName.length() == 0 && needsMesh(database)) return fail(kMeshError);
    MString error;
    if (!readObjects(blendShape, meshName, orderName, error)) return fail(error);
    if (isSkin_ && !skin_.find(skinName, search_.mesh, influence, error)) return fail(error);
    blendShape_ = blendShape;
    isChecked_ = true;
    return redoIt();
}

blendShapeEditWeights::Mode blendShapeEditWeights::readMode(const MArgDatabase& arguments) {
    static constexpr std::pair<const char*, Mode> kModes[] = {
        {"-gi", Mode::kGetIndices}, {"-gw", Mode::kGetWeights}, {"-sw", Mode::kSetWeights},
        {"-iv", Mode::kInvert},     {"-m", Mode::kMirror},      {"-flp", Mode::kFlip},
        {"-t", Mode::kTrim},        {"-f", Mode::kFreeze},      {"-fl", Mode::kFlush},
        {"-del", Mode::kDelete},    {"-ex", Mode::kExport},     {"-im", Mode::kImport},
        {"-aw", Mode::kAdd},        {"-sub", Mode::kSubtract},
    };
    for (const auto& [flag, mode] : kModes) {
        if (arguments.isFlagSet(flag)) return mode;
    }
    return Mode::kNone;
}

void blendShapeEditWeights::readFlags(const MArgDatabase& arguments) {
    mode_ = readMode(arguments);
    keepsAll_ = arguments.isFlagSet("-av");
    readFlag(arguments, "-ax", search_.axis);
    readFlag(arguments, "-dir", isPositive_);
    readFlag(arguments, "-fl", flushValue_);
    flushValue_ = static_cast<float>(flushValue_);
    readFlag(arguments, "-fn", fileName_);
    isPaint_ = arguments.isFlagSet("-fp");
    readFlag(arguments, "-i", target_);
    search_.isOrderBased = arguments.isFlagSet("-ob");
    isSkin_ = arguments.isFlagSet("-sc");
    readFlag(arguments, "-ti", item_);
    readFlag(arguments, "-tol", search_.tolerance);
    // Kept in single precision, as the kit's option variables are.
    search_.tolerance = static_cast<float>(search_.tolerance);
    for (const double value : readFlagUses<double>(arguments, "-w"))
        given_.values.append(value);
    for (const int vertex : readFlagUses<int>(arguments, "-wi"))
        given_.vertices.append(vertex);
}

/// Deliberate: the flags count, also beside another one that decides what is done.
bool blendShapeEditWeights::needsMesh(const MArgDatabase& arguments) {
    constexpr const char* kFlags[] = {"-m", "-t", "-aw", "-sub", "-fl"};
    return std::any_of(std::begin(kFlags), std::end(kFlags),
                       [&](const char* flag) { return arguments.isFlagSet(flag); });
}

bool blendShapeEditWeights::isQuery() const {
    return mode_ == Mode::kGetIndices || mode_ == Mode::kGetWeights || mode_ == Mode::kNone;
}

bool blendShapeEditWeights::readObjects(const MObject& blendShape, const MString& meshName,
                                        const MString& orderName, MString& error) {
    MeshObject further;
    if (!readSearchMeshes(meshName, orderName, "", search_, further, error)) return false;
    if (!isAxisText(search_.axis)) {
        error = kAxisError;
        return false;
    }
    axisIndex_ = static_cast<unsigned int>(axisIndex(search_.axis));
    hasMesh_ = search_.mesh.isAlive();
    if (!hasTarget(blendShape)) {
        error = MFnDependencyNode(blendShape).name() + " has no target " + target_ + ".";
        return false;
    }
    if (mode_ == Mode::kSetWeights && !areWeightsComplete(error)) return false;
    if (mode_ == Mode::kFlush) selectedVertices_ = selectedVertices();
    paint_ = std::make_unique<PaintDisplay>(blendShape, search_.mesh);
    return true;
}

/// Whether there are weights to work on. A target that is not there has none to be asked for, but
/// must not come into being by an edit: undo would leave it behind.
bool blendShapeEditWeights::hasTarget(const MObject& blendShape) const {
    if (target_ == kBaseWeights) return true;
    if (isQuery()) return target_ >= 0;
    const MIntArray targets = getTargetIndices(blendShape);
    return std::binary_search(targets.begin(), targets.end(), target_);
}

bool blendShapeEditWeights::areWeightsComplete(MString& error) const {
    if (given_.vertices.length() > given_.values.length()) {
        error = "Each weight index needs a weight.";
        return false;
    }
    if (std::all_of(given_.vertices.begin(), given_.vertices.end(), [](int vertex) { return vertex >= 0; }))
        return true;
    error = "A weight index must not be negative.";
    return false;
}

MStatus blendShapeEditWeights::redoIt() {
    undo_ = Undo::kNothing;
    // A call that answered -help or failed a check may still be queued.
    if (!isChecked_) return MS::kSuccess;
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) return fail(kBlendShapeGone, MS::kFailure);
    const MStatus status = run(blendShape);
    // What undo leaves as it is must not be done twice: flipping once more would turn it back.
    if (undo_ == Undo::kNothing) isChecked_ = false;
    return status;
}

MStatus blendShapeEditWeights::run(const MObject& blendShape) {
    positions_.clear();
    if (hasMesh_ && !isQuery()) {
        MString error;
        if (!search_.mesh.isAlive()) return fail(kMeshError, MS::kFailure);
        if (!readMeshPoints(search_.mesh, positions_, error)) return fail(error);
    }
    stored_ = readWeights(getWeightsPlug(blendShape, target_));
    switch (mode_) {
        case Mode::kGetIndices:
            setResult(stored_.vertices);
            return MS::kSuccess;
        case Mode::kGetWeights:
            setResult(stored_.values);
            return MS::kSuccess;
        case Mode::kSetWeights:
            if (!given_.isEmpty()) setWeights(given_, Undo::kWeights);
            return done(1);
        case Mode::kFlush:
            return flush();
        case Mode::kDelete:
            replaceWeights(WeightList(), Undo::kWeights);
            return done(1);
        case Mode::kExport:
            return isSkin_ ? exportToSkin() : exportWeights();
        case Mode::kImport:
            return isSkin_ ? importFromSkin() : importWeights();
        case Mode::kAdd:
        case Mode::kSubtract:
            return combine();
        case Mode::kNone:
            return MS::kSuccess;
        default:
            return stored_.isEmpty() ? done(0) : editStored(blendShape);
    }
}

/// The edits that only stored weights are of interest to.
MStatus blendShapeEditWeights::editStored(const MObject& blendShape) {
    switch (mode_) {
        case Mode::kInvert:
            replaceWeights(inverted(), Undo::kWeights);
            return done(1);
        case Mode::kTrim:
            replaceWeights(trimmed(), Undo::kWeights);
            return done(1);
        case Mode::kFreeze:
            return freeze(blendShape);
        default:
            return mirror();
    }
}

MStatus blendShapeEditWeights::done(int result) {
    setResult(result);
    return MS::kSuccess;
}

/// Stores a list in place of the one that was read.
void blendShapeEditWeights::replaceWeights(const WeightList& weights, Undo undo) {
    undo_ = undo;
    setWeightValues(aliveObject(blendShape_), target_, weights.vertices, weights.values);
}

/// Stores weights from outside: without those near 1, except in the base weights, and nothing at
/// all where each is exactly 1.
void blendShapeEditWeights::setWeights(const WeightList& weights, Undo undo) {
    WeightList written;
    double sum = 0.0;
    for (unsigned int k = 0; k < weights.vertices.length(); ++k) {
        const double value = weights.values[k];
        sum += value;
        if (target_ == kBaseWeights) {
            written.append(weights.vertices[k], value);
        } else {
            written.appendUnlessOne(weights.vertices[k], value);
        }
    }
    const bool areAllOne = sum == static_cast<double>(weights.vertices.length());
    replaceWeights(areAllOne ? WeightList() : written, undo);
}

/// Every vertex of the mesh gets 1 minus its weight; without a mesh nothing is left.
WeightList blendShapeEditWeights::inverted() const {
    WeightList weights;
    const std::vector<double> dense = stored_.dense(positions_.length());
    for (unsigned int vertex = 0; vertex < positions_.length(); ++vertex) {
        const double value = 1.0 - dense[vertex];
        if (keepsAll_) {
            weights.append(static_cast<int>(vertex), value);
        } else {
            weights.appendUnlessOne(static_cast<int>(vertex), value);
        }
    }
    return weights;
}

MStatus blendShapeEditWeights::mirror() {
    MIntArray partners;
    MString error;
    if (!findPartners(search_, stored_.vertices, partners, error)) return fail(error);
    WeightList weights;
    unsigned int skippedCount = 0;
    for (unsigned int k = 0; k < partners.length(); ++k) {
        if (static_cast<unsigned int>(partners[k]) < positions_.length()) {
            passOn(stored_.vertices[k], partners[k], stored_.values[k], weights);
        } else {
            ++skippedCount;
        }
    }
    if (search_.isOrderBased) showSkippedComponents(skippedCount);
    replaceWeights(weights, mode_ == Mode::kMirror ? Undo::kWeights : Undo::kNothing);
    return done(1);
}

/// Appends what becomes of the weight of a vertex with a partner on the mesh.
void blendShapeEditWeights::passOn(int vertex, int partner, double weight, WeightList& weights) const {
    if (mode_ == Mode::kFlip) {
        weights.appendUnlessOne(partner, weight);
        return;
    }
    // A vertex on the plane counts as one of the positive side.
    const bool isPartnerPositive = coordinate(partner) >= 0.0F;
    const bool isVertexPositive =
        static_cast<unsigned int>(vertex) < positions_.length() && coordinate(vertex) >= 0.0F;
    if (isPartnerPositive != isPositive_) weights.appendUnlessOne(partner, weight);
    if (isVertexPositive == isPositive_) weights.appendUnlessOne(vertex, weight);
}

/// Keeps the weights of one side. Those on the plane become one half, or 1 where they are less.
WeightList blendShapeEditWeights::trimmed() const {
    WeightList weights;
    for (unsigned int k = 0; k < stored_.vertices.length(); ++k) {
        const int vertex = stored_.vertices[k];
        const double weight = stored_.values[k];
        if (static_cast<unsigned int>(vertex) >= positions_.length()) continue;
        const float side = coordinate(vertex);
        if (isOnPlane(vertex) && !isNearOne(weight)) {
            if (round5(weight) >= 0.5) weights.append(vertex, 0.5);
        } else if (isPositive_ ? side < 0.0F : side > 0.0F) {
            weights.appendUnlessOne(vertex, weight);
        }
    }
    return weights;
}

bool blendShapeEditWeights::isOnPlane(int vertex) const {
    return ::isOnPlane(MPoint(positions_[static_cast<unsigned int>(vertex)]), axisIndex_, search_.tolerance);
}

/// Multiplies the weights into the deltas of all items of the target, so that the shape stays
/// without them.
MStatus blendShapeEditWeights::freeze(const MObject& blendShape) {
    const MIntArray items = getTargetItemIndices(blendShape, target_);
    // Base weights, or weights of a target without shapes: nothing that they could go into.
    if (items.length() == 0) return done(0);
    hasItem_ = false;
    undo_ = Undo::kFrozen;
    std::vector<TargetDeltas> before;
    before.reserve(items.length());
    for (unsigned int k = 0; k < items.length(); ++k) {
        before.push_back(readDeltas(blendShape, target_, items[k]));
        const MStatus status = freezeItem(blendShape, items[k], before[k]);
        if (status) continue;
        // The weights stay, so that no item must have them in its deltas.
        for (unsigned int frozen = 0; frozen < k; ++frozen)
            writeDeltas(blendShape, target_, items[frozen], before[frozen], ErrorResult::kZero);
        return status;
    }
    clearElements(getWeightsPlug(blendShape, target_));
    return done(1);
}

MStatus blendShapeEditWeights::freezeItem(const MObject& blendShape, int item, const TargetDeltas& before) {
    if (item == item_) {
        deltas_ = before;
        hasItem_ = true;
    }
    TargetDeltas deltas = before;
    const MStatus status = completeEmptyDeltas(blendShape, target_, item, deltas, ErrorResult::kZero);
    if (!status) return status;
    scale(deltas);
    return writeDeltas(blendShape, target_, item, deltas, ErrorResult::kZero);
}

void blendShapeEditWeights::scale(TargetDeltas& deltas) const {
    WeightLookup weightOf(stored_);
    const unsigned int count = std::min(deltas.vertices.length(), deltas.points.length());
    for (unsigned int k = 0; k < count; ++k) {
        const double weight = weightOf(deltas.vertices[k]);
        const MPoint& delta = deltas.points[k];
        deltas.points[k] = MPoint(delta.x * weight, delta.y * weight, delta.z * weight);
    }
}

/// Sets the selected vertices to the value, or all. The values 1 and -1 clear the list instead.
MStatus blendShapeEditWeights::flush() {
    WeightList weights;
    const bool isForSelection = selectedVertices_.length() > 0;
    for (unsigned int k = 0; k < selectedVertices_.length(); ++k)
        weights.append(selectedVertices_[k], flushValue_);
    if (isForSelection) {
        undo_ = Undo::kWeights;
        setElements(getWeightsPlug(aliveObject(blendShape_), target_), weights.vertices, weights.values);
        return done(1);
    }
    if (flushValue_ > -1.0 && flushValue_ != 1.0) {
        for (unsigned int vertex = 0; vertex < positions_.length(); ++vertex)
            weights.append(static_cast<int>(vertex), flushValue_);
    }
    replaceWeights(weights, Undo::kWeights);
    return done(1);
}

MStatus blendShapeEditWeights::exportWeights() {
    const WeightList weights = isPaint_ ? paint_->read() : stored_;
    if (weights.isEmpty()) return fail("No weights to export");
    constexpr const char* kWriteError = "Unable to open file for writing";
    OutputFile file;
    if (!file.open(fileName_.asUTF8())) return fail(kWriteError);
    file.write(weightFileText(weights, isJsonFile(fileName_.asUTF8())));
    return file.close() ? done(1) : fail(kWriteError);
}

bool blendShapeEditWeights::readFile(WeightList& weights) const {
    FileContent file;
    if (!file.read(fileName_.asUTF8())) return false;
    weights = parseWeightFile(file.text(), isJsonFile(fileName_.asUTF8()));
    return true;
}

MStatus blendShapeEditWeights::importWeights() {
    WeightList weights;
    if (!readFile(weights)) return fail(kReadError);
    if (weights.isEmpty()) return done(0);
    if (isPaint_) {
        MString error;
        if (!paint_->show(weights, error)) return fail(error);
        undo_ = Undo::kPaint;
    } else {
        setWeights(weights, Undo::kNothing);
    }
    return done(1);
}

/// Adds the weights of a file to the stored ones, or takes them away, vertex by vertex of the file.
MStatus blendShapeEditWeights::combine() {
    WeightList change;
    if (!readFile(change)) return fail(kReadError);
    const unsigned int vertexCount = positions_.length();
    const std::vector<double> current = stored_.dense(vertexCount);
    WeightList weights;
    std::vector<double> combined = current;
    for (unsigned int k = 0; k < change.vertices.length(); ++k) {
        const auto vertex = static_cast<unsigned int>(change.vertices[k]);
        if (vertex >= vertexCount) continue;
        const double value =
            mode_ == Mode::kAdd ? current[vertex] + change.values[k] : current[vertex] - change.values[k];
        const double rounded = round5(value);
        combined[vertex] = rounded < 0.0 ? 0.0 : (rounded > 1.0 ? 1.0 : value);
    }
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex)
        weights.append(static_cast<int>(vertex), combined[vertex]);
    setWeights(weights, Undo::kNothing);
    return done(1);
}

MStatus blendShapeEditWeights::exportToSkin() {
    WeightList weights;
    for (unsigned int k = 0; k < stored_.vertices.length(); ++k) {
        if (static_cast<unsigned int>(stored_.vertices[k]) >= positions_.length()) continue;
        weights.append(stored_.vertices[k], stored_.values[k]);
    }
    if (weights.isEmpty()) return done(0);
    undo_ = Undo::kSkin;
    const MStatus status = skin_.write(positions_.length(), weights);
    return status ? done(1) : fail("Error setting skin weights.", status);
}

MStatus blendShapeEditWeights::importFromSkin() {
    WeightList weights;
    const MStatus status = skin_.read(positions_.length(), weights);
    if (!status) return fail("Error getting skin weights.", status);
    setWeights(weights, Undo::kWeights);
    return done(1);
}

MStatus blendShapeEditWeights::undoIt() {
    const Undo undo = undo_;
    undo_ = Undo::kNothing;
    if (undo == Undo::kSkin) return skin_.restore();
    if (undo == Undo::kPaint) paint_->restore();
    if (undo != Undo::kWeights && undo != Undo::kFrozen) return MS::kSuccess;
    const MObject blendShape = aliveObject(blendShape_);
    // The user may have deleted the node by hand.
    if (blendShape.isNull()) return MS::kSuccess;
    setWeightValues(blendShape, target_, stored_.vertices, stored_.values);
    if (undo != Undo::kFrozen || !hasItem_) return MS::kSuccess;
    return writeDeltas(blendShape, target_, item_, deltas_, ErrorResult::kNothing);
}

bool blendShapeEditWeights::isUndoable() const {
    return true;
}
