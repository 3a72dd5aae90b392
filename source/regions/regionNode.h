#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <array>
#include <cstddef>
#include <string>

#include "regions/regionWeights.h"

/// The weights of a region data node, copied for an edit.
class RegionMap {
  public:
    /// @param weights  one array per region; shorter arrays are filled with 0 to the length of the longest
    explicit RegionMap(std::array<MDoubleArray, kRegionCount>&& weights);
    RegionMap(const RegionMap&) = delete;
    RegionMap& operator=(const RegionMap&) = delete;

    /// Valid as long as this object exists.
    const RegionArrays& arrays() const { return arrays_; }
    const MDoubleArray& region(std::size_t region) const { return weights_[region]; }

  private:
    std::array<MDoubleArray, kRegionCount> weights_;
    RegionArrays arrays_;
};

/// A region data node: any node with these attributes:
///     DELVENRegion                                     connected from the blend shape that it belongs to
///     regionWeights0 ... regionWeights5                double arrays, one weight per vertex
///     regionWeightsBuffer0 ... regionWeightsBuffer5    stored copies of them
///     regionLock                                       integer multi; a value other than 0 locks the region
///     regions                                          string, the settings of the regions
/// Use an object for one call only: it does not check whether the node still exists.
class RegionNode {
  public:
    /// @param error  why the node cannot be used
    bool find(const MObject& node, MString& error);

    const MObject& blendShape() const { return blendShape_; }
    const RegionLocks& locks() const { return locks_; }

    RegionMap readMap() const;
    /// Writes nothing if one of the arrays is locked or connected. Stops at the first array that fails for
    /// another reason.
    MStatus writeMap(const RegionMap& map);
    /// A failure if one of the arrays is locked or connected. Changes nothing.
    MStatus checkWeights() const;

    MDoubleArray readRegion(std::size_t region) const;
    MStatus writeRegion(std::size_t region, const MDoubleArray& weights);

    /// Copies the weights to the buffers.
    /// @param error  set on failure, unless the host has shown an error
    MStatus store(MString& error);
    /// Copies the buffers to the weights and empties the buffers. Fails if all buffers are empty.
    /// @param error  set on failure, unless the host has shown an error
    MStatus restore(MString& error);

    /// The settings, in UTF-8.
    /// @param error  set if the node has no attribute for settings
    bool readSettings(std::string& settings, MString& error) const;
    /// Any text is safe: no part of it runs as script. Control characters other than tabs are left out.
    bool writeSettings(const std::string& settings, MString& error);

  private:
    bool hasAttribute(const MString& attribute, MString& error) const;
    bool hasBuffers(MString& error) const;
    bool areBuffersEmpty() const;
    void readLocks();
    MStatus copyArrays(const char* from, const char* to);

    MObject node_;
    MString name_;
    MObject blendShape_;
    RegionLocks locks_{};
};
