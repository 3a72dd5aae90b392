#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MDagPath.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of DAG paths.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range.
class OPENMAYA_EXPORT MDagPathArray {
  public:
    MDagPathArray() = default;
    MDagPathArray(unsigned int initialSize, const MDagPath& initialValue)
        : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MDagPath& operator[](unsigned int index) const { return storage_.at(index); }
    MDagPath& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MDagPath& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MDagPath& element) { return storage_.append(element); }
    MStatus insert(const MDagPath& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MDagPathArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

  private:
    host::api::ArrayStorage<MDagPath> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
