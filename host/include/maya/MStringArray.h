#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of texts.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. `get` fills a C array, which the caller must make long enough.
class OPENMAYA_EXPORT MStringArray {
  public:
    using Iterator = MArrayIteratorTemplate<MStringArray, MString>;
    using ConstIterator = MArrayConstIteratorTemplate<MStringArray, MString>;

    MStringArray() = default;
    MStringArray(const MString source[], unsigned int count) : storage_(source, count) {}
    MStringArray(unsigned int initialSize, const MString& initialValue)
        : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    MString operator[](unsigned int index) const { return storage_.at(index); }
    MString& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MString& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MString& element) { return storage_.append(element); }
    MStatus insert(const MString& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(MString array[]) const { return storage_.get(array); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    Iterator begin() { return Iterator(*this, 0); }
    Iterator end() { return Iterator(*this, length()); }
    ConstIterator begin() const { return cbegin(); }
    ConstIterator end() const { return cend(); }
    ConstIterator cbegin() const { return ConstIterator(*this, 0); }
    ConstIterator cend() const { return ConstIterator(*this, length()); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MStringArray& array);

  private:
    host::api::ArrayStorage<MString> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
