#pragma once

#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A number that identifies a node type or data type in files.
class OPENMAYA_EXPORT MTypeId {
  public:
    MTypeId() = default;
    MTypeId(unsigned int id) : id_(id) {}
    /// `prefix` is the upper 24 bits of the number, `id` the lower 8.
    MTypeId(unsigned int prefix, unsigned int id) : id_((prefix << 8U) | (id & 0xffU)) {}

    unsigned int id() const { return id_; }
    bool operator==(const MTypeId& other) const { return id_ == other.id_; }
    bool operator!=(const MTypeId& other) const { return id_ != other.id_; }

  private:
    unsigned int id_ = 0;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
