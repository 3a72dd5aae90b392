#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <array>
#include <cstddef>
#include <string>

#include "regions/regionWeights.h"

/// The weights of a region data node, fetched to be worked on.
class RegionMap {
  public:
    /// @param weights  one array per region; all are filled up with 0 to the length of the longest
    explicit RegionMap(std::array<MDoubleArray, kRegionCount>&& weights);
    RegionMap(const RegionMap&) = delete;
    RegionMap& operator=(const RegionMap&) = delete;

    /// Valid as long as this object.
    const RegionArrays& arrays() const { return arrays_; }
    const MDoubleArray& region(std::size_t region) const { return weights_[region]; }

  private:
    std::array<MDoubleArray, kRegionCount> weights_;
    RegionArrays arrays_;
};

/// A region data node: any node that carries
///   DELVENRegion                                     connected from the blend shape that it belongs to
///   regionWeights0 ... regionWeights5                double arrays, a weight per vertex
///   regionWeightsBuffer0 ... regionWeightsBuffer5    stored copies of them
///   regionLock                                       integer multi; not 0 for a locked region
///   regions                                          string, the settings of the regions
/// For the time of one call: it keeps the node without asking whether it is still there.
class RegionNode {
  public:
    /// @param error  why the node is of no use
    bool find(const MObject& node, MString& error);

    const MObject& blendShape() const { return blendShape_; }
    const RegionLocks& locks() const { return locks_; }

    RegionMap readMap() const;
    /// Writes nothing where one of the arrays is locked or connected; ends with the first that fails
    /// otherwise.
    MStatus writeMap(const RegionMap& map);
    /// Whether all regions can be written: locks and connections are looked at, nothing changes.
    MStatus checkWeights() const;

    MDoubleArray readRegion(std::size_t region) const;
    MStatus writeRegion(std::size_t region, const MDoubleArray& weights);

    /// Copies the weights to the buffers.
    /// @param error  set on failure, unless the host has shown its own
    MStatus store(MString& error);
    /// Copies the buffers to the weights and empties them.
    /// @param error  set on failure, unless the host has shown its own: also where all buffers are empty
    MStatus restore(MString& error);

    /// In UTF-8. @param error  set when the node has no settings
    bool readSettings(std::string& settings, MString& error) const;
    /// Whatever text, none of which runs as script. Control characters are left out.
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
