#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of objects.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range.
class OPENMAYA_EXPORT MObjectArray {
  public:
    MObjectArray() = default;
    MObjectArray(const MObject source[], unsigned int count) : storage_(source, count) {}
    MObjectArray(unsigned int initialSize) : storage_(initialSize, MObject()) {}
    MObjectArray(unsigned int initialSize, const MObject& initialValue)
        : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MObject& operator[](unsigned int index) const { return storage_.at(index); }
    MObject& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MObject& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MObject& element) { return storage_.append(element); }
    MStatus insert(const MObject& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MObjectArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

  private:
    host::api::ArrayStorage<MObject> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
