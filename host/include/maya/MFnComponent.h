#pragma once

#include <maya/MFnBase.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A set of elements of one kind: vertices, edges or faces.
class OPENMAYA_EXPORT MFnComponent : public MFnBase {
  public:
    MFnComponent();
    MFnComponent(MObject& object, MStatus* status = nullptr);
    MFnComponent(const MObject& object, MStatus* status = nullptr);
    ~MFnComponent() override;
    MFn::Type type() const override;

    int elementCount(MStatus* status = nullptr) const;
    MFn::Type componentType(MStatus* status = nullptr) const;
    bool isEmpty(MStatus* status = nullptr) const;
    bool isEqual(MObject& other, MStatus* status = nullptr) const;
    bool isComplete(MStatus* status = nullptr) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
