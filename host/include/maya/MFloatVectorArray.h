#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MFloatVector.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of single precision vectors.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset. `get` fills an array of C arrays, which the caller
/// must make long enough.
class OPENMAYA_EXPORT MFloatVectorArray {
  public:
    using Iterator = MArrayIteratorTemplate<MFloatVectorArray, MFloatVector>;
    using ConstIterator = MArrayConstIteratorTemplate<MFloatVectorArray, MFloatVector>;

    MFloatVectorArray() = default;
    MFloatVectorArray(const MFloatVector source[], unsigned int count) : storage_(source, count) {}
    MFloatVectorArray(const double source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MFloatVector>::fromRows(source, count)) {}
    MFloatVectorArray(const float source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MFloatVector>::fromRows(source, count)) {}
    MFloatVectorArray(unsigned int initialSize) : storage_(initialSize) {}
    MFloatVectorArray(unsigned int initialSize, const MFloatVector& initialValue)
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
    MStatus get(double array[][3]) const { return storage_.getRows(array); }
    MStatus get(float array[][3]) const { return storage_.getRows(array); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    Iterator begin() { return Iterator(*this, 0); }
    Iterator end() { return Iterator(*this, length()); }
    ConstIterator begin() const { return cbegin(); }
    ConstIterator end() const { return cend(); }
    ConstIterator cbegin() const { return ConstIterator(*this, 0); }
    ConstIterator cend() const { return ConstIterator(*this, length()); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MFloatVectorArray& array);

  private:
    host::api::ArrayStorage<MFloatVector> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
