#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MArrayIteratorTemplate.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of points.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset. `get` fills an array of C arrays, which the caller
/// must make long enough.
class OPENMAYA_EXPORT MPointArray {
  public:
    using Iterator = MArrayIteratorTemplate<MPointArray, MPoint>;
    using ConstIterator = MArrayConstIteratorTemplate<MPointArray, MPoint>;

    MPointArray() = default;
    MPointArray(const MPoint source[], unsigned int count) : storage_(source, count) {}
    MPointArray(const double source[][4], unsigned int count)
        : storage_(host::api::ArrayStorage<MPoint>::fromRows(source, count)) {}
    MPointArray(const float source[][4], unsigned int count)
        : storage_(host::api::ArrayStorage<MPoint>::fromRows(source, count)) {}
    MPointArray(unsigned int initialSize) : storage_(initialSize) {}
    MPointArray(unsigned int initialSize, const MPoint& initialValue) : storage_(initialSize, initialValue) {}

    unsigned int length() const { return storage_.length(); }
    const MPoint& operator[](unsigned int index) const { return storage_.at(index); }
    MPoint& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MPoint& element, unsigned int index) { return storage_.set(element, index); }
    MStatus set(unsigned int index, double x, double y, double z, double w = 1) {
        return storage_.set(MPoint(x, y, z, w), index);
    }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MPoint& element) { return storage_.append(element); }
    MStatus append(double x, double y, double z, double w = 1) { return storage_.append(MPoint(x, y, z, w)); }
    MStatus insert(const MPoint& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MPointArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }
    MStatus get(double array[][4]) const { return storage_.getRows(array); }
    MStatus get(float array[][4]) const { return storage_.getRows(array); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    Iterator begin() { return Iterator(*this, 0); }
    Iterator end() { return Iterator(*this, length()); }
    ConstIterator begin() const { return cbegin(); }
    ConstIterator end() const { return cend(); }
    ConstIterator cbegin() const { return ConstIterator(*this, 0); }
    ConstIterator cend() const { return ConstIterator(*this, length()); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MPointArray& array);

  private:
    host::api::ArrayStorage<MPoint> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
