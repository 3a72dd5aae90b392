#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MFloatVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of single precision vectors.
///
/// `operator[]` does not check its index; set, insert and remove fail with kInvalidParameter for one that is
/// outside. `get` fills a C array that the caller has made long enough.
class OPENMAYA_EXPORT MFloatVectorArray {
  public:
    MFloatVectorArray() = default;
    MFloatVectorArray(const MFloatVector source[], unsigned int count) : storage_(source, count) {}
    MFloatVectorArray(const double source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MFloatVector>::fromRows(source, count)) {}
    MFloatVectorArray(const float source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MFloatVector>::fromRows(source, count)) {}
    MFloatVectorArray(unsigned int initialSize, const MFloatVector& initialValue = MFloatVector())
        : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MFloatVector& operator[](unsigned int index) const { return storage_.at(index); }
    MFloatVector& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MFloatVector& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MFloatVector& element) { return storage_.append(element); }
    MStatus insert(const MFloatVector& element, unsigned int index) {
        return storage_.insert(element, index);
    }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MFloatVectorArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(MFloatVector array[]) const { return storage_.get(array); }
    MStatus get(double array[][3]) const { return storage_.getRows(array); }
    MStatus get(float array[][3]) const { return storage_.getRows(array); }

    /// Least number of elements that room is made for when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    auto begin() { return storage_.begin(); }
    auto end() { return storage_.end(); }
    auto begin() const { return storage_.begin(); }
    auto end() const { return storage_.end(); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatVectorArray& array);

  private:
    host::api::ArrayStorage<MFloatVector> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
