#pragma once

#include <maya/MDGModifier.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// MDGModifier with the changes that the DAG adds.
class OPENMAYA_EXPORT MDagModifier : public MDGModifier {
  public:
    MDagModifier();
    ~MDagModifier() override;

    using MDGModifier::createNode;
    /// A transform below `parent`, or at the top; a shape needs a transform as its parent.
    MObject createNode(const MString& type, const MObject& parent = MObject::kNullObj,
                       MStatus* status = nullptr);
    /// Keeps the local transformation. A shape may only go below a transform; a null parent is the world.
    MStatus reparentNode(const MObject& node, const MObject& newParent = MObject::kNullObj);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
