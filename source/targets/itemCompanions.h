#pragma once

#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

/// What belongs to a target item besides its deltas, so that it can be moved to another item of the same
/// target: the deltas of a relative in-between, the entry in inbetweenInfoGroup (name, interpolation,
/// visibility), and the connected target mesh. Only what the item has is written to the other item.
class ItemCompanions {
  public:
    /// Reads what an item has.
    void read(const MObject& blendShape, int target, int item);
    /// Writes it to an existing item. A mesh that was deleted since is left out.
    void write(const MObject& blendShape, int target, int item) const;

    /// Removes the entry in inbetweenInfoGroup, which is not a part of the item.
    static void removeInfo(const MObject& blendShape, int target, int item);

  private:
    void readInfo(const MObject& blendShape, int target, int item);
    void writeInfo(const MObject& blendShape, int target, int item) const;

    MIntArray relativeVertices_;
    MPointArray relativePoints_;

    MObjectHandle mesh_;
    MString meshOutput_;  // name of the plug that is connected, without its node

    bool hasInfo_ = false;
    int type_ = 0;
    MString name_;
    int interpolation_ = 0;
    bool isVisible_ = true;
    MIntArray curveIndices_;
    MFloatArray curve_;  // two numbers per index
};
