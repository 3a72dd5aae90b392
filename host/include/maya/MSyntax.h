#pragma once

#include <hostPrivate/access.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// The flags, arguments and objects of a command.
class OPENMAYA_EXPORT MSyntax {
  public:
    enum MArgType {
        kInvalidArgType = 0,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };
    enum MObjectFormat { kInvalidObjectFormat = 0, kNone, kStringObjects, kSelectionList, kLastObjectFormat };

    MSyntax();
    MSyntax(const MSyntax& other);
    ~MSyntax();
    MSyntax& operator=(const MSyntax& other);

    /// Fails unless the short name has 1 to 3 letters, the long one at least 4, and neither is taken.
    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg,
                    MArgType argType2 = kNoArg, MArgType argType3 = kNoArg, MArgType argType4 = kNoArg,
                    MArgType argType5 = kNoArg, MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flagName);
    MStatus addArg(MArgType argType);
    /// A command takes either arguments (addArg) or objects.
    MStatus setObjectType(MObjectFormat format, unsigned int minimumObjects = 0);
    MStatus setObjectType(MObjectFormat format, unsigned int minimumObjects, unsigned int maximumObjects);
    void setMinObjects(unsigned int minimumObjects);
    void setMaxObjects(unsigned int maximumObjects);
    unsigned int minObjects() const;
    unsigned int maxObjects() const;
    void useSelectionAsDefault(bool enable);
    void enableEdit(bool supportsEdit = true);
    void enableQuery(bool supportsQuery = true);
    bool canEdit() const;
    bool canQuery() const;

  private:
    friend struct host::api::SyntaxAccess;

    struct Table;
    explicit MSyntax(std::shared_ptr<Table> table);

    std::shared_ptr<Table> table_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
