#pragma once

#include <maya/MFnData.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Data that is a list of components. The entries keep their order and are not merged with each other.
class OPENMAYA_EXPORT MFnComponentListData : public MFnData {
  public:
    MFnComponentListData();
    MFnComponentListData(MObject& object, MStatus* status = nullptr);
    MFnComponentListData(const MObject& object, MStatus* status = nullptr);
    ~MFnComponentListData() override;
    MFn::Type type() const override;

    unsigned int length(MStatus* status = nullptr) const;
    bool has(const MObject& component, MStatus* status = nullptr) const;
    /// A copy of the entry; a null object if the index is out of range.
    MObject operator[](unsigned int index) const;
    MStatus add(MObject& component);
    MStatus remove(const MObject& component);
    MStatus remove(unsigned int index);
    MStatus clear();

    MObject create(MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
