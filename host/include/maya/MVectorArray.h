#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of vectors.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset. `get` fills an array of C arrays, which the caller
/// must make long enough.
class OPENMAYA_EXPORT MVectorArray {
  public:
    using Iterator = MArrayIteratorTemplate<MVectorArray, MVector>;
    using ConstIterator = MArrayConstIteratorTemplate<MVectorArray, MVector>;

    MVectorArray() = default;
    MVectorArray(const MVector source[], unsigned int count) : storage_(source, count) {}
    MVectorArray(const double source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MVector>::fromRows(source, count)) {}
    MVectorArray(const float source[][3], unsigned int count)
        : storage_(host::api::ArrayStorage<MVector>::fromRows(source, count)) {}
    MVectorArray(unsigned int initialSize) : storage_(initialSize) {}
    MVectorArray(unsigned int initialSize, const MVector& initialValue)
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

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MVectorArray& array);

  private:
    host::api::ArrayStorage<MVector> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
