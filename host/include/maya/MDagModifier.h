#pragma once

#include <maya/MDGModifier.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// An MDGModifier with further changes for the DAG.
class OPENMAYA_EXPORT MDagModifier : public MDGModifier {
  public:
    MDagModifier();
    ~MDagModifier() override;

    using MDGModifier::createNode;
    /// A transform is made below `parent`, or at the top. A shape needs a transform as its parent.
    MObject createNode(const MString& type, const MObject& parent = MObject::kNullObj,
                       MStatus* status = nullptr);
    /// Keeps the local transformation. The parent of a shape must be a transform. A null parent means the
    /// world.
    MStatus reparentNode(const MObject& node, const MObject& newParent = MObject::kNullObj);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
