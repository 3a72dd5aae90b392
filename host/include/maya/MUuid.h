#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Universally unique identifier. By default it is all zero, and so invalid.
class OPENMAYA_EXPORT MUuid {
  public:
    MUuid() = default;
    /// From sixteen bytes.
    MUuid(const unsigned char* uuid);
    /// From eight, four, four, four and twelve hexadecimal digits with dashes in between. Any other text
    /// fails and gives an invalid identifier.
    MUuid(const MString& value, MStatus* ReturnStatus = nullptr);

    bool operator==(const MUuid& other) const;
    bool operator!=(const MUuid& other) const;
    bool valid() const;
    /// The next identifier of a sequence that is the same in every run of the program.
    MStatus generate();
    void copy(const MUuid& source);
    MStatus get(unsigned char* destination) const;
    /// Upper-case hexadecimal digits with dashes.
    MString asString() const;
    operator MString() const { return asString(); }

  private:
    unsigned char bytes_[16] = {};
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
