#pragma once

#include <maya/MObject.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Tells whether the thing that an MObject refers to is still in the scene.
class OPENMAYA_EXPORT MObjectHandle {
  public:
    MObjectHandle();
    MObjectHandle(const MObject& object);
    MObjectHandle(const MObjectHandle& other);
    ~MObjectHandle();

    /// The object, or a null object once it is no longer valid.
    MObject object() const;
    const MObject& objectRef() const;
    unsigned int hashCode() const;
    static unsigned int objectHashCode(const MObject& object);

    /// Whether the object is in the scene: false after it was deleted, true again after this was undone.
    bool isValid() const;
    /// Whether the object still exists in memory, in the scene or on the undo queue.
    bool isAlive() const;

    MObjectHandle& operator=(const MObject& object);
    MObjectHandle& operator=(const MObjectHandle& other);
    bool operator==(const MObjectHandle& other) const;
    bool operator==(const MObject& object) const;
    bool operator!=(const MObjectHandle& other) const;
    bool operator!=(const MObject& object) const;

  private:
    MObject object_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
