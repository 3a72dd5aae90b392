#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MObjectArray.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A deformer: its input and output shapes, and its envelope.
class OPENMAYA_EXPORT MFnGeometryFilter : public MFnDependencyNode {
  public:
    MFnGeometryFilter();
    MFnGeometryFilter(MObject& object, MStatus* status = nullptr);
    ~MFnGeometryFilter() override;
    MFn::Type type() const override;

    /// The shapes at the start (input) or the end (output) of the deformer's chain, by index.
    MStatus getInputGeometry(MObjectArray& objects) const;
    MStatus getOutputGeometry(MObjectArray& objects) const;
    MObject inputShapeAtIndex(unsigned int index, MStatus* status = nullptr) const;
    MObject outputShapeAtIndex(unsigned int index, MStatus* status = nullptr) const;
    unsigned int indexForOutputShape(const MObject& shape, MStatus* status = nullptr) const;
    unsigned int numOutputConnections(MStatus* status = nullptr) const;
    MStatus getPathAtIndex(unsigned int index, MDagPath& path) const;
    float envelope(MStatus* status = nullptr) const;
    MStatus setEnvelope(float envelope);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
