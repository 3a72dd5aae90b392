#pragma once

#include <maya/MFnComponent.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A component whose elements are numbers. They are kept ascending and once each, in whatever order they are
/// added.
class OPENMAYA_EXPORT MFnSingleIndexedComponent : public MFnComponent {
  public:
    MFnSingleIndexedComponent();
    MFnSingleIndexedComponent(MObject& object, MStatus* status = nullptr);
    MFnSingleIndexedComponent(const MObject& object, MStatus* status = nullptr);
    ~MFnSingleIndexedComponent() override;
    MFn::Type type() const override;

    /// @param componentType kMeshVertComponent, kMeshEdgeComponent or kMeshPolygonComponent
    MObject create(MFn::Type componentType, MStatus* status = nullptr);
    /// Adding many elements one by one costs O(elements) each; addElements sorts once.
    MStatus addElement(int element);
    MStatus addElements(MIntArray& elements);
    int element(int index, MStatus* status = nullptr) const;
    MStatus getElements(MIntArray& elements) const;
    /// Stands for the elements 0 .. numElements-1 from now on.
    MStatus setCompleteData(int numElements);
    MStatus getCompleteData(int& numElements) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
