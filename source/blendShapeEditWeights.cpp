#include "blendShapeEditWeights.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "files/dataFile.h"
#include "scene/aliveObject.h"
#include "scene/plugAccess.h"
#include "symmetry/symmetryPlane.h"

namespace {

constexpr const char* kReadError = "Unable to open file for reading";
constexpr const char* kWriteError = "Unable to open file for writing";

/// The vertices of the first selected object, on any mesh. Empty if something else is selected.
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

const CommandInfo& blendShapeEditWeights::info() {
    static const CommandInfo description{
        kName,
        "Edit blend shape weights.",
        // Deliberate: docs/compatibility.md.
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
        "int/intArray/floatArray (depending on the mode)",
        true,
        ErrorResult::kZero};
    return description;
}

/// In the order of precedence, for a call that asks for several.
const std::vector<blendShapeEditWeights::Mode>& blendShapeEditWeights::modes() {
    using Self = blendShapeEditWeights;
    // flag, run, isQuery, needsMesh, needsWeights, isUndone
    static const std::vector<Mode> all{
        {"-gi", &Self::getIndices, true, false, false, false},
        {"-gw", &Self::getWeights, true, false, false, false},
        {"-sw", &Self::setWeights, false, false, false, true},
        {"-iv", &Self::invert, false, false, true, true},
        {"-m", &Self::mirror, false, true, true, true},
        {"-flp", &Self::flip, false, false, true, false},
        {"-t", &Self::trim, false, true, true, true},
        {"-f", &Self::freeze, false, false, true, true},
        {"-fl", &Self::flush, false, true, false, true},
        {"-del", &Self::deleteWeights, false, false, false, true},
        {"-ex", &Self::exportWeights, false, false, false, true},
        {"-im", &Self::importWeights, false, false, false, true},
        {"-aw", &Self::addWeights, false, true, false, false},
        {"-sub", &Self::subtractWeights, false, true, false, false},
    };
    return all;
}

CallOutcome blendShapeEditWeights::read(const MArgDatabase& arguments) {
    readFlags(arguments);
    MObject blendShape;
    CallOutcome outcome = readBlendShape(arguments, blendShape);
    if (outcome.isDone()) outcome = readObjects(arguments, blendShape);
    blendShape_ = blendShape;
    return outcome;
}

void blendShapeEditWeights::readFlags(const MArgDatabase& arguments) {
    for (const Mode& mode : modes()) {
        if (mode_ == nullptr && arguments.isFlagSet(mode.flag)) mode_ = &mode;
    }
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
    // In single precision, like the option variables of the kit's scripts.
    search_.tolerance = static_cast<float>(search_.tolerance);
    for (const double value : readFlagUses<double>(arguments, "-w"))
        given_.values.append(value);
    for (const int vertex : readFlagUses<int>(arguments, "-wi"))
        given_.vertices.append(vertex);
}

CallOutcome blendShapeEditWeights::readObjects(const MArgDatabase& arguments, const MObject& blendShape) {
    MString originalName;
    MString orderName;
    MString skinName;
    int influence = 0;
    readFlag(arguments, "-om", originalName);
    MString meshName = originalName;
    if (isSkin_) {
        meshName.clear();
        readFlag(arguments, "-sm", meshName);
    }
    readFlag(arguments, "-ob", orderName);
    // Deliberate: -originalMesh also if the skin mesh replaces it in this call.
    if (orderName.length() == 0) orderName = originalName;
    readFlag(arguments, "-sc", skinName);
    readFlag(arguments, "-ii", influence);
    const bool needsMesh = std::any_of(modes().begin(), modes().end(), [&](const Mode& mode) {
        return mode.needsMesh && arguments.isFlagSet(mode.flag);
    });
    if (meshName.length() == 0 && needsMesh) return CallOutcome::refused(kMeshError);
    MString error;
    if (!readMeshes(meshName, orderName, error)) return CallOutcome::refused(error);
    CallOutcome outcome = checkTarget(blendShape);
    if (!outcome.isDone()) return outcome;
    if (mode_ != nullptr && mode_->run == &blendShapeEditWeights::setWeights && !areWeightsComplete(error)) {
        return CallOutcome::refused(error);
    }
    if (isSkin_ && !skin_.find(skinName, search_.mesh, influence, error)) return CallOutcome::refused(error);
    if (mode_ != nullptr && mode_->run == &blendShapeEditWeights::flush)
        selectedVertices_ = selectedVertices();
    paint_ = std::make_unique<PaintDisplay>(blendShape, search_.mesh);
    return outcome;
}

bool blendShapeEditWeights::readMeshes(const MString& meshName, const MString& orderName, MString& error) {
    MeshObject further;
    if (!readSearchMeshes(meshName, orderName, "", search_, further, error)) return false;
    if (!isAxisText(search_.axis)) {
        error = kAxisError;
        return false;
    }
    axisIndex_ = static_cast<unsigned int>(axisIndex(search_.axis));
    hasMesh_ = search_.mesh.isAlive();
    return true;
}

/// Checks that the target exists, because an edit must not create it. A query may name a target that does not
/// exist: it has no weights.
CallOutcome blendShapeEditWeights::checkTarget(const MObject& blendShape) const {
    if (target_ == kBaseWeights || (isQuery() && target_ >= 0)) return CallOutcome();
    return TargetEditor(blendShape).checkTarget(target_);
}

bool blendShapeEditWeights::areWeightsComplete(MString& error) const {
    if (given_.vertices.length() > given_.values.length()) {
        error = "Each weight index needs a weight.";
        return false;
    }
    for (unsigned int k = 0; k < given_.vertices.length(); ++k) {
        if (given_.vertices[k] >= 0) continue;
        error = "A weight index must not be negative.";
        return false;
    }
    return true;
}

CallOutcome blendShapeEditWeights::edit() {
    const MObject blendShape = aliveObject(blendShape_);
    if (hasMesh_ && !isQuery()) {
        MString error;
        if (!readMeshPoints(search_.mesh, positions_, error)) return CallOutcome::refused(error);
    }
    if (mode_ == nullptr) return CallOutcome();
    isUndone_ = mode_->isUndone;
    stored_ = readWeights(getWeightsPlug(blendShape, target_));
    if (mode_->needsWeights && stored_.isEmpty()) {
        setResult(0);
        return CallOutcome();
    }
    CallOutcome outcome = (this->*mode_->run)();
    positions_.clear();
    return outcome;
}

CallOutcome blendShapeEditWeights::redo() {
    if (change_ == Change::kNothing) return CallOutcome();
    const MObject blendShape = aliveObject(blendShape_);
    if (blendShape.isNull()) return CallOutcome::failed(kBlendShapeGone);
    CallOutcome outcome = checkTarget(blendShape);
    if (!outcome.isDone()) return outcome;
    stored_ = readWeights(getWeightsPlug(blendShape, target_));
    return write();
}

CallOutcome blendShapeEditWeights::getIndices() {
    setResult(stored_.vertices);
    return CallOutcome();
}

CallOutcome blendShapeEditWeights::getWeights() {
    setResult(stored_.values);
    return CallOutcome();
}

CallOutcome blendShapeEditWeights::setWeights() {
    if (!given_.isEmpty()) return apply(Change::kWeights, storable(given_));
    setResult(1);
    return CallOutcome();
}

/// Makes a change for the first time. redo() makes it again.
/// @param weights  what the change writes; not used for kFrozen
CallOutcome blendShapeEditWeights::apply(Change change, const WeightList& weights) {
    change_ = change;
    written_ = weights;
    CallOutcome outcome = write();
    if (outcome.isDone()) setResult(1);
    return outcome;
}

/// Makes the change, in edit() and in redo().
CallOutcome blendShapeEditWeights::write() {
    const MObject blendShape = aliveObject(blendShape_);
    hasChanged_ = isUndone_;
    switch (change_) {
        case Change::kWeights:
            setWeightValues(blendShape, target_, written_.vertices, written_.values);
            return CallOutcome();
        case Change::kSelectedWeights:
            setElements(getWeightsPlug(blendShape, target_), written_.vertices, written_.values);
            return CallOutcome();
        case Change::kFrozen: {
            TargetEditor targets(blendShape);
            return writeFrozen(targets);
        }
        case Change::kPaint: {
            MString error;
            return paint_->show(written_, error) ? CallOutcome() : CallOutcome::refused(error);
        }
        case Change::kSkin: {
            if (!search_.mesh.isAlive()) return CallOutcome::failed(kMeshError);
            const auto vertexCount = static_cast<unsigned int>(MFnMesh(search_.mesh.path()).numVertices());
            const MStatus status = skin_.write(vertexCount, written_);
            return status ? CallOutcome() : CallOutcome::failed("Error setting skin weights.", status);
        }
        default:
            return CallOutcome();
    }
}

/// The given weights as they are stored: without those near 1, except in the base weights; empty if they add
/// up to exactly their number.
WeightList blendShapeEditWeights::storable(const WeightList& weights) const {
    WeightList stored;
    double sum = 0.0;
    for (unsigned int k = 0; k < weights.vertices.length(); ++k) {
        const double value = weights.values[k];
        sum += value;
        if (target_ == kBaseWeights) {
            stored.append(weights.vertices[k], value);
        } else {
            stored.appendUnlessOne(weights.vertices[k], value);
        }
    }
    const bool areAllOne = sum == static_cast<double>(weights.vertices.length());
    return areAllOne ? WeightList() : stored;
}

/// Every vertex of the mesh gets 1 minus its weight. Without a mesh the list becomes empty.
CallOutcome blendShapeEditWeights::invert() {
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
    return apply(Change::kWeights, weights);
}

CallOutcome blendShapeEditWeights::mirror() {
    return findMirrored(false);
}

CallOutcome blendShapeEditWeights::flip() {
    return findMirrored(true);
}

CallOutcome blendShapeEditWeights::findMirrored(bool flips) {
    MirrorPartners search(search_);
    MIntArray partners;
    MString error;
    if (!search.prepare(error) || !search.find(stored_.vertices, partners, error))
        return CallOutcome::refused(error);
    WeightList weights;
    unsigned int skippedCount = 0;
    for (unsigned int k = 0; k < partners.length(); ++k) {
        if (static_cast<unsigned int>(partners[k]) < positions_.length()) {
            passOn(stored_.vertices[k], partners[k], stored_.values[k], flips, weights);
        } else {
            ++skippedCount;
        }
    }
    if (search_.isOrderBased) showSkippedComponents(skippedCount);
    return apply(Change::kWeights, weights);
}

/// Appends what mirroring or flipping makes of one weight. The partner must be on the mesh.
void blendShapeEditWeights::passOn(int vertex, int partner, double weight, bool flips,
                                   WeightList& weights) const {
    if (flips) {
        weights.appendUnlessOne(partner, weight);
        return;
    }
    // A vertex on the plane counts as on the positive side.
    const bool isPartnerPositive = coordinate(partner) >= 0.0F;
    const bool isVertexPositive =
        static_cast<unsigned int>(vertex) < positions_.length() && coordinate(vertex) >= 0.0F;
    if (isPartnerPositive != isPositive_) weights.appendUnlessOne(partner, weight);
    if (isVertexPositive == isPositive_) weights.appendUnlessOne(vertex, weight);
}

/// Keeps the weights of one side. On the plane, weights of 0.5 or more become 0.5, smaller ones 1; weights
/// near 1 stay 1.
CallOutcome blendShapeEditWeights::trim() {
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
    return apply(Change::kWeights, weights);
}

bool blendShapeEditWeights::isOnPlane(int vertex) const {
    return ::isOnPlane(MPoint(positions_[static_cast<unsigned int>(vertex)]), axisIndex_, search_.tolerance);
}

/// Multiplies the weights into the deltas of all items of the target, so that the shape stays the same
/// without weights. Base weights, and weights of a target without items, are just removed.
CallOutcome blendShapeEditWeights::freeze() {
    TargetEditor targets(aliveObject(blendShape_));
    const MIntArray items =
        target_ == kBaseWeights ? MIntArray() : getTargetItemIndices(targets.blendShape(), target_);
    frozen_.clear();
    for (unsigned int k = 0; k < items.length(); ++k) {
        TargetDeltas deltas = targets.read(target_, items[k]);
        // An empty item gets a zero delta, whatever its weight.
        if (deltas.vertices.length() == 0) deltas.vertices.append(0);
        if (deltas.points.length() == 0) deltas.points.append(MPoint::origin);
        scale(deltas);
        frozen_.push_back({items[k], deltas});
    }
    change_ = Change::kFrozen;
    CallOutcome outcome = write();
    if (outcome.isDone()) setResult(1);
    return outcome;
}

/// Writes the frozen deltas of all items and removes the weights. After an error, all items get their old
/// deltas back.
CallOutcome blendShapeEditWeights::writeFrozen(TargetEditor& targets) {
    std::vector<TargetDeltas> before;
    before.reserve(frozen_.size());
    savedItem_.forget();
    if (hasTargetItem(targets.blendShape(), target_, item_)) savedItem_.save(targets, target_, item_);
    CallOutcome outcome;
    for (const FrozenItem& frozen : frozen_) {
        before.push_back(targets.read(target_, frozen.item));
        outcome = targets.initialiseEmpty(target_, frozen.item, before.back());
        if (outcome.isDone()) outcome = targets.write(target_, frozen.item, frozen.deltas);
        if (!outcome.isDone()) break;
    }
    if (outcome.isDone() && !clearElements(getWeightsPlug(targets.blendShape(), target_))) {
        outcome =
            CallOutcome::refused("The weights cannot be removed, and so are not frozen. Unlock them first.");
    }
    if (outcome.isDone()) return outcome;
    // The weights stay, so no item may have them multiplied into its deltas.
    for (std::size_t k = 0; k < before.size(); ++k)
        targets.write(target_, frozen_[k].item, before[k]);
    hasChanged_ = false;
    return outcome;
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

/// Sets the selected vertices to the value, or all vertices if none are selected. In the latter case, the
/// value 1 and values of -1 or less clear the list.
CallOutcome blendShapeEditWeights::flush() {
    WeightList weights;
    for (unsigned int k = 0; k < selectedVertices_.length(); ++k)
        weights.append(selectedVertices_[k], flushValue_);
    if (!weights.isEmpty()) return apply(Change::kSelectedWeights, weights);
    if (flushValue_ > -1.0 && flushValue_ != 1.0) {
        for (unsigned int vertex = 0; vertex < positions_.length(); ++vertex)
            weights.append(static_cast<int>(vertex), flushValue_);
    }
    return apply(Change::kWeights, weights);
}

CallOutcome blendShapeEditWeights::deleteWeights() {
    return apply(Change::kWeights, WeightList());
}

CallOutcome blendShapeEditWeights::exportWeights() {
    if (isSkin_) return exportToSkin();
    const WeightList weights = isPaint_ ? paint_->read() : stored_;
    if (weights.isEmpty()) return CallOutcome::refused("No weights to export");
    OutputFile file;
    if (!file.open(fileName_.asUTF8())) return CallOutcome::refused(kWriteError);
    file.write(weightFileText(weights, fileFormOf(fileName_.asUTF8())));
    if (!file.close()) return CallOutcome::refused(kWriteError);
    setResult(1);
    return CallOutcome();
}

bool blendShapeEditWeights::readFile(WeightList& weights) const {
    FileContent file;
    if (!file.read(fileName_.asUTF8())) return false;
    weights = parseWeightFile(file.text(), fileFormOf(fileName_.asUTF8()));
    return true;
}

CallOutcome blendShapeEditWeights::importWeights() {
    if (isSkin_) return importFromSkin();
    WeightList weights;
    if (!readFile(weights)) return CallOutcome::refused(kReadError);
    if (weights.isEmpty()) {
        setResult(0);
        return CallOutcome();
    }
    if (isPaint_) return apply(Change::kPaint, weights);
    isUndone_ = false;
    return apply(Change::kWeights, storable(weights));
}

CallOutcome blendShapeEditWeights::addWeights() {
    return combine(1.0);
}

CallOutcome blendShapeEditWeights::subtractWeights() {
    return combine(-1.0);
}

/// Adds the weights of a file to the stored weights, or subtracts them, for the vertices in the file.
CallOutcome blendShapeEditWeights::combine(double sign) {
    WeightList change;
    if (!readFile(change)) return CallOutcome::refused(kReadError);
    const unsigned int vertexCount = positions_.length();
    const std::vector<double> current = stored_.dense(vertexCount);
    WeightList weights;
    std::vector<double> combined = current;
    for (unsigned int k = 0; k < change.vertices.length(); ++k) {
        const auto vertex = static_cast<unsigned int>(change.vertices[k]);
        if (vertex >= vertexCount) continue;
        const double value = current[vertex] + sign * change.values[k];
        const double rounded = round5(value);
        combined[vertex] = rounded < 0.0 ? 0.0 : (rounded > 1.0 ? 1.0 : value);
    }
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex)
        weights.append(static_cast<int>(vertex), combined[vertex]);
    return apply(Change::kWeights, storable(weights));
}

CallOutcome blendShapeEditWeights::exportToSkin() {
    WeightList weights;
    for (unsigned int k = 0; k < stored_.vertices.length(); ++k) {
        if (static_cast<unsigned int>(stored_.vertices[k]) >= positions_.length()) continue;
        weights.append(stored_.vertices[k], stored_.values[k]);
    }
    if (!weights.isEmpty()) return apply(Change::kSkin, weights);
    setResult(0);
    return CallOutcome();
}

CallOutcome blendShapeEditWeights::importFromSkin() {
    WeightList weights;
    const MStatus status = skin_.read(positions_.length(), weights);
    if (!status) return CallOutcome::failed("Error getting skin weights.", status);
    return apply(Change::kWeights, storable(weights));
}

CallOutcome blendShapeEditWeights::restore() {
    if (!hasChanged_) return CallOutcome();
    hasChanged_ = false;
    if (change_ == Change::kSkin) {
        const MStatus status = skin_.restore();
        return status ? CallOutcome() : CallOutcome::failed("", status);
    }
    if (change_ == Change::kPaint) paint_->restore();
    if (change_ == Change::kPaint) return CallOutcome();
    const MObject blendShape = aliveObject(blendShape_);
    // The user may have deleted the node by hand.
    if (blendShape.isNull()) return CallOutcome();
    setWeightValues(blendShape, target_, stored_.vertices, stored_.values);
    return change_ == Change::kFrozen ? savedItem_.restore() : CallOutcome();
}
