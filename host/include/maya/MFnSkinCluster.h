#pragma once

#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MIntArray.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A skinCluster node: its influences and the weights of vertices.
///
/// An influence is counted by its position in influenceObjects(), unless a function says otherwise. The index
/// in the node's `matrix` multi is the same only as long as no influence was ever removed. Weights of several
/// influences are stored vertex by vertex.
class OPENMAYA_EXPORT MFnSkinCluster : public MFnGeometryFilter {
  public:
    MFnSkinCluster();
    MFnSkinCluster(MObject& object, MStatus* status = nullptr);
    ~MFnSkinCluster() override;
    MFn::Type type() const override;

    /// @return the number of influences
    unsigned int influenceObjects(MDagPathArray& paths, MStatus* status = nullptr) const;
    /// Index of an influence's element in the node's `matrix` multi.
    unsigned int indexForInfluenceObject(const MDagPath& path, MStatus* status = nullptr) const;
    /// Vertices whose weight of this influence is not 0, and these weights.
    MStatus getPointsAffectedByInfluence(const MDagPath& path, MSelectionList& result, MDoubleArray& weights);

    /// Weights of all influences.
    MStatus getWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights,
                       unsigned int& influenceCount) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, unsigned int influenceIndex,
                       MDoubleArray& weights) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, MIntArray& influenceIndices,
                       MDoubleArray& weights) const;

    /// Writes weights, also those of locked influences. With `normalize`, unless the node's normalizeWeights
    /// is off, the weights of each vertex then add up to 1. If all influences are given, each weight is
    /// divided by the sum, and a sum of 0 stays. Otherwise the influences that are neither given nor locked
    /// share the rest.
    /// @param oldValues  filled with the weights of all influences before the call
    MStatus setWeights(const MDagPath& path, const MObject& components, unsigned int influenceIndex,
                       double value, bool normalize = true, MDoubleArray* oldValues = nullptr);
    MStatus setWeights(const MDagPath& path, const MObject& components, MIntArray& influenceIndices,
                       MDoubleArray& values, bool normalize = true, MDoubleArray* oldValues = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
