#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A blendShape node: its base shapes, targets and weights.
class OPENMAYA_EXPORT MFnBlendShapeDeformer : public MFnDependencyNode {
  public:
    enum Origin { kLocalOrigin, kWorldOrigin };
    enum HistoryLocation { kFrontOfChain, kNormal, kPost, kOther };

    MFnBlendShapeDeformer();
    MFnBlendShapeDeformer(MObject& object, MStatus* status = nullptr);
    ~MFnBlendShapeDeformer() override;
    MFn::Type type() const override;

    /// Adds a new deformer to a shape, or to the only shape of a transform.
    MObject create(MObject baseObject, Origin originSpecifier = kLocalOrigin, MStatus* status = nullptr);
    Origin origin(MStatus* status = nullptr) const;
    MStatus setOrigin(Origin space);

    /// The deformed shapes, never their transforms.
    MStatus getBaseObjects(MObjectArray& objects) const;
    unsigned int numWeights(MStatus* status = nullptr) const;
    /// Existing weight indices, ascending.
    MStatus weightIndexList(MIntArray& indexList) const;
    float weight(unsigned int index, MStatus* status = nullptr) const;
    MStatus setWeight(unsigned int index, float weight);

    /// Connects a target that has its full effect at `fullWeight`. Several targets on one weight index are
    /// in-betweens.
    MStatus addTarget(const MObject& baseObject, int weightIndex, const MObject& newTarget,
                      double fullWeight);
    MStatus getTargets(MObject baseObject, int weightIndex, MObjectArray& targets) const;
    /// Item indices (5000 + 1000 * weight) of one target, ascending.
    MStatus targetItemIndexList(unsigned int targetIndex, MObject baseObject, MIntArray& inbetween) const;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
