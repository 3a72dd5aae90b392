#pragma once

#include <hostPrivate/access.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A shape of the mouse cursor: one of those that the host brings.
class OPENMAYAUI_EXPORT MCursor {
  public:
    MCursor(const MCursor& other);
    ~MCursor();
    MCursor& operator=(const MCursor& other);
    bool operator==(const MCursor& other) const;
    bool operator!=(const MCursor& other) const;

    static MCursor defaultCursor;
    static MCursor crossHairCursor;
    static MCursor doubleCrossHairCursor;
    static MCursor editCursor;
    static MCursor pencilCursor;
    static MCursor handCursor;

  private:
    friend struct host::api::Access;

    explicit MCursor(const char* name);

    const char* name_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
