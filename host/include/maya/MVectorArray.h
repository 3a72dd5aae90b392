#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of vectors.
///
/// `operator[]` does not check its index; set, insert and remove fail with kInvalidParameter for one that is
/// outside. `get` fills a C array that the caller has made long enough.
class OPENMAYA_EXPORT MVectorArray {
  public:
    MVectorArray() = default;
    MVectorArray(const MVector source[], unsigned int count) : storage_(source, count) {}
    MVectorArray(const double source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MVector>::fromRows(source, count)) {}
    MVectorArray(const float source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MVector>::fromRows(source, count)) {}
    MVectorArray(unsigned int initialSize, const MVector& initialValue = MVector())
        : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MVector& operator[](unsigned int index) const { return storage_.at(index); }
    MVector& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MVector& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MVector& element) { return storage_.append(element); }
    MStatus insert(const MVector& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MVectorArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(MVector array[]) const { return storage_.get(array); }
    MStatus get(double array[][3]) const { return storage_.getRows(array); }
    MStatus get(float array[][3]) const { return storage_.getRows(array); }

    /// Least number of elements that room is made for when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    auto begin() { return storage_.begin(); }
    auto end() { return storage_.end(); }
    auto begin() const { return storage_.begin(); }
    auto end() const { return storage_.end(); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MVectorArray& array);

  private:
    host::api::ArrayStorage<MVector> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
