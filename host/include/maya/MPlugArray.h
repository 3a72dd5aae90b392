#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of plugs.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range.
class OPENMAYA_EXPORT MPlugArray {
  public:
    MPlugArray() = default;
    MPlugArray(const MPlug source[], unsigned int count) : storage_(source, count) {}
    MPlugArray(unsigned int initialSize, const MPlug& initialValue) : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MPlug& operator[](unsigned int index) const { return storage_.at(index); }
    MPlug& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MPlug& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MPlug& element) { return storage_.append(element); }
    MStatus insert(const MPlug& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MPlugArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

  private:
    host::api::ArrayStorage<MPlug> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
