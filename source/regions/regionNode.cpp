#include "regions/regionNode.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <utility>

#include "scene/plugAccess.h"

namespace {

constexpr const char* kWeights = "regionWeights";
constexpr const char* kBuffer = "regionWeightsBuffer";

MString arrayName(const char* attribute, std::size_t region) {
    return MString(attribute) + static_cast<int>(region);
}

MStatus writeArray(const MObject& node, const MString& attribute, const MDoubleArray& values) {
    MPlug plug = MFnDependencyNode(node).findPlug(attribute, false);
    MObject data = MFnDoubleArrayData().create(values);
    return plug.setValue(data);
}

/// Whether all six arrays can be written. A map is written as a whole or not at all.
/// @param isByValue  the arrays get values, which a connected array does not accept; otherwise they are
///                   connected anew, which it accepts
bool areFree(const MObject& node, const char* arrays, bool isByValue) {
    const MFnDependencyNode attributes(node);
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        const MPlug plug = attributes.findPlug(arrayName(arrays, region), false);
        if (plug.isLocked() || (isByValue && plug.isDestination())) return false;
    }
    return true;
}

MDoubleArray readArray(const MObject& node, const MString& attribute) {
    MObject data;
    MFnDependencyNode(node).findPlug(attribute, false).getValue(data);
    MDoubleArray values;
    // No data means that the attribute was never set.
    MStatus status;
    const MFnDoubleArrayData array(data, &status);
    if (status) array.copyTo(values);
    return values;
}

/// The text to put between the quotes of a script string whose value is `text`.
std::string escaped(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        const bool isControl = (c >= '\0' && c < ' ' && c != '\t') || c == '\x7F';
        if (isControl) continue;
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

}  // namespace

RegionMap::RegionMap(std::array<MDoubleArray, kRegionCount>&& weights) : weights_(std::move(weights)) {
    unsigned int longest = 0;
    for (const MDoubleArray& array : weights_)
        longest = std::max(longest, array.length());
    arrays_.vertexCount = longest;
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        MDoubleArray& array = weights_[region];
        const unsigned int length = array.length();
        array.setLength(longest);
        for (unsigned int k = length; k < longest; ++k)
            array[k] = 0.0;
        arrays_.regions[region] = longest > 0 ? &array[0] : nullptr;
    }
}

bool RegionNode::find(const MObject& node, MString& error) {
    node_ = node;
    const MFnDependencyNode dependencyNode(node);
    name_ = dependencyNode.name();
    MStatus status;
    const MPlug plug = dependencyNode.findPlug("DELVENRegion", false, &status);
    blendShape_ = status ? plug.source().node() : MObject(MObject::kNullObj);
    if (!blendShape_.hasFn(MFn::kBlendShape)) {
        error = "The region data node is not connected to a blend shape node.";
        return false;
    }
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        if (!hasAttribute(arrayName(kWeights, region), error)) return false;
    }
    readLocks();
    return true;
}

bool RegionNode::hasAttribute(const MString& attribute, MString& error) const {
    if (MFnDependencyNode(node_).hasAttribute(attribute)) return true;
    error = name_ + " has no attribute " + attribute + ".";
    return false;
}

/// If the node lacks the attribute, no region is locked.
void RegionNode::readLocks() {
    locks_.fill(false);
    MStatus status;
    const MPlug plug = MFnDependencyNode(node_).findPlug("regionLock", false, &status);
    for (std::size_t region = 0; status && region < kRegionCount; ++region) {
        const MPlug lock = plug.elementByLogicalIndex(static_cast<unsigned int>(region));
        locks_[region] = isPlugPresent(lock) && lock.asInt() != 0;
    }
}

RegionMap RegionNode::readMap() const {
    std::array<MDoubleArray, kRegionCount> weights;
    for (std::size_t region = 0; region < kRegionCount; ++region)
        weights[region] = readRegion(region);
    return RegionMap(std::move(weights));
}

MStatus RegionNode::checkWeights() const {
    return areFree(node_, kWeights, true) ? MS::kSuccess : MS::kFailure;
}

MStatus RegionNode::writeMap(const RegionMap& map) {
    MStatus status = checkWeights();
    for (std::size_t region = 0; status && region < kRegionCount; ++region)
        status = writeRegion(region, map.region(region));
    return status;
}

MDoubleArray RegionNode::readRegion(std::size_t region) const {
    return readArray(node_, arrayName(kWeights, region));
}

MStatus RegionNode::writeRegion(std::size_t region, const MDoubleArray& weights) {
    return writeArray(node_, arrayName(kWeights, region), weights);
}

bool RegionNode::hasBuffers(MString& error) const {
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        if (!hasAttribute(arrayName(kBuffer, region), error)) return false;
    }
    return true;
}

/// Copies arrays by connecting and disconnecting them: the destination keeps the value.
MStatus RegionNode::copyArrays(const char* from, const char* to) {
    MStatus status = areFree(node_, to, false) ? MS::kSuccess : MS::kFailure;
    const MFnDependencyNode node(node_);
    for (std::size_t region = 0; status && region < kRegionCount; ++region) {
        const MString source = arrayName(from, region);
        const MString destination = arrayName(to, region);
        const MString plugs = name_ + "." + source + " " + name_ + "." + destination;
        // Connecting plugs that are connected already fails.
        const bool isConnected = node.findPlug(destination, false).source() == node.findPlug(source, false);
        if (!isConnected) status = MGlobal::executeCommand("connectAttr -f " + plugs, false, false);
        if (status) status = MGlobal::executeCommand("disconnectAttr " + plugs, false, false);
    }
    return status;
}

bool RegionNode::areBuffersEmpty() const {
    for (std::size_t region = 0; region < kRegionCount; ++region) {
        if (readArray(node_, arrayName(kBuffer, region)).length() > 0) return false;
    }
    return true;
}

MStatus RegionNode::store(MString& error) {
    if (!hasBuffers(error)) return MS::kFailure;
    return copyArrays(kWeights, kBuffer);
}

MStatus RegionNode::restore(MString& error) {
    if (!hasBuffers(error)) return MS::kFailure;
    if (areBuffersEmpty()) {
        error = name_ + " has no stored regions to restore. Store them first, with -restore 0.";
        return MS::kFailure;
    }
    // The buffers get empty values afterwards, so they must accept values.
    MStatus status = areFree(node_, kBuffer, true) ? copyArrays(kBuffer, kWeights) : MS::kFailure;
    for (std::size_t region = 0; status && region < kRegionCount; ++region)
        status = writeArray(node_, arrayName(kBuffer, region), MDoubleArray());
    return status;
}

bool RegionNode::readSettings(std::string& settings, MString& error) const {
    if (!hasAttribute("regions", error)) return false;
    // Settings that were never set give no result, so the text is empty.
    MString result;
    MGlobal::executeCommand("getAttr " + name_ + ".regions", result, false, false);
    settings = result.asUTF8();
    return true;
}

bool RegionNode::writeSettings(const std::string& settings, MString& error) {
    if (!hasAttribute("regions", error)) return false;
    MString text;
    text.setUTF8(escaped(settings).c_str());
    const MString command = "setAttr " + name_ + ".regions -type \"string\" \"" + text + "\"";
    if (MGlobal::executeCommand(command, false, false)) return true;
    error = "Error setting the settings of the regions.";
    return false;
}
