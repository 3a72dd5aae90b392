#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The local transformation of a transform or joint.
class OPENMAYA_EXPORT MFnTransform : public MFnDagNode {
  public:
    MFnTransform();
    MFnTransform(MObject& object, MStatus* status = nullptr);
    MFnTransform(const MObject& object, MStatus* status = nullptr);
    MFnTransform(const MDagPath& object, MStatus* status = nullptr);
    ~MFnTransform() override;
    MFn::Type type() const override;

    MObject create(MObject parent = MObject::kNullObj, MStatus* status = nullptr);

    MTransformationMatrix transformation(MStatus* status = nullptr) const;
    MStatus set(const MTransformationMatrix& transformation);
    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setTranslation(const MVector& translation, MSpace::Space space);
    MStatus getRotation(MEulerRotation& rotation) const;
    MStatus setRotation(const MEulerRotation& rotation);
    MStatus getScale(double scale[3]) const;
    MStatus setScale(const double scale[3]);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
