#pragma once

#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>

/// What belongs to a target item beside its deltas, fetched to be given to another item of the same target:
/// the deltas of a relative in-between, the entry in inbetweenInfoGroup (name, interpolation, visibility) and
/// the connected target mesh. What an item does not have is not made for the other one either.
class ItemCompanions {
  public:
    /// Fetches what an item has.
    void read(const MObject& blendShape, int target, int item);
    /// Gives it to an item that exists. A mesh that was deleted since is left out.
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
    MFloatArray curve_;  // two numbers for each index
};
