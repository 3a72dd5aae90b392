#pragma once

#include <hostPrivate/access.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A shape of the mouse cursor: one of those built into the host.
class OPENMAYAUI_EXPORT MCursor {
  public:
    MCursor(const MCursor& other);
    ~MCursor();
    MCursor& operator=(const MCursor& other);
    bool operator==(const MCursor& other) const;
    bool operator!=(const MCursor& other) const;

    static const MCursor defaultCursor;
    static const MCursor crossHairCursor;
    static const MCursor doubleCrossHairCursor;
    static const MCursor editCursor;
    static const MCursor pencilCursor;
    static const MCursor handCursor;

  private:
    friend struct host::api::ToolAccess;

    explicit MCursor(const char* name);

    const char* name_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
