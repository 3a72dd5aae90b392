#pragma once

#include <maya/MTypes.h>

#include <iosfwd>
#include <iostream>

namespace host::api {
class StatusMaker;
}

/// Reports a failed status with its place in the source on the error stream, and continues.
#define CHECK_MSTATUS(status)                                                                            \
    do {                                                                                                 \
        const MStatus checkedStatus_ = (status);                                                         \
        if (MStatus::kSuccess != checkedStatus_) {                                                       \
            std::cerr << "\nAPI error detected in " << __FILE__ << " at line " << __LINE__ << std::endl; \
            checkedStatus_.perror("");                                                                   \
        }                                                                                                \
    } while (false)

/// Like CHECK_MSTATUS; on failure it also returns `value` from the function.
#define CHECK_MSTATUS_AND_RETURN(status, value)                                                          \
    do {                                                                                                 \
        const MStatus checkedStatus_ = (status);                                                         \
        if (MStatus::kSuccess != checkedStatus_) {                                                       \
            std::cerr << "\nAPI error detected in " << __FILE__ << " at line " << __LINE__ << std::endl; \
            checkedStatus_.perror("");                                                                   \
            return (value);                                                                              \
        }                                                                                                \
    } while (false)

/// Like CHECK_MSTATUS_AND_RETURN, with the status itself as the result. `status` is evaluated once.
#define CHECK_MSTATUS_AND_RETURN_IT(status) CHECK_MSTATUS_AND_RETURN((status), checkedStatus_)

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Outcome of a call: a code and the text that explains it. It converts to true on success.
class OPENMAYA_EXPORT MStatus {
  public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus() = default;
    MStatus(MStatusCode code) : code_(code) {}

    bool operator==(const MStatus& rhs) const { return code_ == rhs.code_; }
    bool operator==(const MStatusCode rhs) const { return code_ == rhs; }
    bool operator!=(const MStatus& rhs) const { return code_ != rhs.code_; }
    bool operator!=(const MStatusCode rhs) const { return code_ != rhs; }
    operator bool() const { return code_ == kSuccess; }

    bool error() const { return code_ != kSuccess; }
    void clear();
    MStatusCode statusCode() const { return code_; }

    /// The code's name in parentheses, a colon and the explanation: "(kInvalidParameter): Object does not
    /// exist".
    MString errorString() const;

    /// Writes the text, a colon and the error string as one line to the process's error stream.
    void perror(const char* text) const;
    void perror(const MString& text) const;

    /// Writes file, line and error string as one line to the process's error stream.
    void pAPIerror(const char* fileName, int lineNumber) const;

  private:
    friend class host::api::StatusMaker;

    MStatusCode code_ = kSuccess;
    unsigned char explanation_ = 0;
};

inline bool operator==(const MStatus::MStatusCode code, const MStatus& status) {
    return status == code;
}
inline bool operator!=(const MStatus::MStatusCode code, const MStatus& status) {
    return status != code;
}

/// Writes the error string.
OPENMAYA_EXPORT std::ostream& operator<<(std::ostream& out, MStatus& status);

typedef MStatus MS;

OPENMAYA_MAJOR_NAMESPACE_CLOSE
