#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of single precision numbers.
///
/// `operator[]` does not check its index; set, insert and remove fail with kInvalidParameter for one that is
/// outside. `get` fills a C array that the caller has made long enough.
class OPENMAYA_EXPORT MFloatArray {
  public:
    MFloatArray() = default;
    MFloatArray(const float source[], unsigned int count) : storage_(source, count) {}
    MFloatArray(unsigned int initialSize, float initialValue = 0.0f) : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    float operator[](unsigned int index) const { return storage_.at(index); }
    float& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(float element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(float element) { return storage_.append(element); }
    MStatus insert(float element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MFloatArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(float array[]) const { return storage_.get(array); }

    /// Least number of elements that room is made for when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    auto begin() { return storage_.begin(); }
    auto end() { return storage_.end(); }
    auto begin() const { return storage_.begin(); }
    auto end() const { return storage_.end(); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatArray& array);

  private:
    host::api::ArrayStorage<float> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
