#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of unsigned integers.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset. `get` fills a C array, which the caller must make
/// long enough.
class OPENMAYA_EXPORT MUintArray {
  public:
    using Iterator = MArrayIteratorTemplate<MUintArray, unsigned int>;
    using ConstIterator = MArrayConstIteratorTemplate<MUintArray, unsigned int>;

    MUintArray() = default;
    MUintArray(const unsigned int source[], unsigned int count) : storage_(source, count) {}
    MUintArray(unsigned int initialSize) : storage_(initialSize) {}
    MUintArray(unsigned int initialSize, unsigned int initialValue) : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    unsigned int operator[](unsigned int index) const { return storage_.at(index); }
    unsigned int& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(unsigned int element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(unsigned int element) { return storage_.append(element); }
    MStatus insert(unsigned int element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MUintArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(unsigned int array[]) const { return storage_.get(array); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    Iterator begin() { return Iterator(*this, 0); }
    Iterator end() { return Iterator(*this, length()); }
    ConstIterator begin() const { return cbegin(); }
    ConstIterator end() const { return cend(); }
    ConstIterator cbegin() const { return ConstIterator(*this, 0); }
    ConstIterator cend() const { return ConstIterator(*this, length()); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MUintArray& array);

  private:
    host::api::ArrayStorage<unsigned int> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
