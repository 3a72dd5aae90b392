#pragma once

#include <maya/MFnComponent.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A component whose elements are numbers. They are kept ascending, each once, in whatever order they are
/// added.
class OPENMAYA_EXPORT MFnSingleIndexedComponent : public MFnComponent {
  public:
    MFnSingleIndexedComponent();
    MFnSingleIndexedComponent(MObject& object, MStatus* status = nullptr);
    MFnSingleIndexedComponent(const MObject& object, MStatus* status = nullptr);
    ~MFnSingleIndexedComponent() override;
    MFn::Type type() const override;

    /// @param componentType  kMeshVertComponent, kMeshEdgeComponent or kMeshPolygonComponent
    MObject create(MFn::Type componentType, MStatus* status = nullptr);
    /// Adding many elements one by one costs O(elements) each. addElements sorts only once.
    MStatus addElement(int element);
    MStatus addElements(MIntArray& elements);
    int element(int index, MStatus* status = nullptr) const;
    MStatus getElements(MIntArray& elements) const;
    /// From now on the component is the elements 0 .. numElements-1.
    MStatus setCompleteData(int numElements);
    MStatus getCompleteData(int& numElements) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
