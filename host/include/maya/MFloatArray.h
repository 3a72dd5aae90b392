#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of single precision numbers.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset. `get` fills a C array, which the caller must make
/// long enough.
class OPENMAYA_EXPORT MFloatArray {
  public:
    using Iterator = MArrayIteratorTemplate<MFloatArray, float>;
    using ConstIterator = MArrayConstIteratorTemplate<MFloatArray, float>;

    MFloatArray() = default;
    MFloatArray(const float source[], unsigned int count) : storage_(source, count) {}
    MFloatArray(unsigned int initialSize) : storage_(initialSize) {}
    MFloatArray(unsigned int initialSize, float initialValue) : storage_(initialSize, initialValue) {}

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

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    Iterator begin() { return Iterator(*this, 0); }
    Iterator end() { return Iterator(*this, length()); }
    ConstIterator begin() const { return cbegin(); }
    ConstIterator end() const { return cend(); }
    ConstIterator cbegin() const { return ConstIterator(*this, 0); }
    ConstIterator cend() const { return ConstIterator(*this, length()); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatArray& array);

  private:
    host::api::ArrayStorage<float> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
