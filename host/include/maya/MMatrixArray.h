#pragma once

#include <hostPrivate/arrayStorage.h>
#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Array of matrices.
///
/// `operator[]` does not check its index. `set`, `insert` and `remove` fail with kInvalidParameter if it is
/// out of range. New elements without a value are unset.
class OPENMAYA_EXPORT MMatrixArray {
  public:
    MMatrixArray() = default;
    MMatrixArray(unsigned int initialSize) : storage_(initialSize) {}

    unsigned int length() const { return storage_.length(); }
    const MMatrix& operator[](unsigned int index) const { return storage_.at(index); }
    MMatrix& operator[](unsigned int index) { return storage_.at(index); }

    MStatus set(const MMatrix& element, unsigned int index) { return storage_.set(element, index); }
    MStatus setLength(unsigned int length) { return storage_.setLength(length); }
    MStatus append(const MMatrix& element) { return storage_.append(element); }
    MStatus insert(const MMatrix& element, unsigned int index) { return storage_.insert(element, index); }
    MStatus remove(unsigned int index) { return storage_.remove(index); }
    MStatus copy(const MMatrixArray& source) { return storage_.copy(source.storage_); }
    MStatus clear() { return storage_.clear(); }

    /// The least number of elements for which memory is reserved when the array grows.
    void setSizeIncrement(unsigned int newIncrement) { storage_.setSizeIncrement(newIncrement); }
    unsigned int sizeIncrement() const { return storage_.sizeIncrement(); }

    friend OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, const MMatrixArray& array);

  private:
    host::api::ArrayStorage<MMatrix> storage_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
