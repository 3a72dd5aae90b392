#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

/// The result that a command sets after an error.
enum class ErrorResult { kNothing, kEmptyString, kZero, kMinusOne };

/// Which of the host's two error functions shows a text. The user sees no difference.
enum class ErrorSink { kGlobal, kCommand };

/// How a step of a command ended: done, or with an error of one of two kinds.
///
/// Refused: the error is shown, the command sets its result for errors, and the call succeeds, so that a
/// script goes on. Failed: the error is shown, and the call fails, which stops the script.
class CallOutcome {
  public:
    /// Done.
    CallOutcome() = default;
    static CallOutcome refused(const MString& error, ErrorSink sink = ErrorSink::kGlobal);
    /// @param error   "" if the host has shown an error, or if nothing is to be shown
    /// @param status  a failure
    static CallOutcome failed(const MString& error, const MStatus& status = MS::kFailure,
                              ErrorSink sink = ErrorSink::kGlobal);
    /// The same error as refused: the call succeeds.
    CallOutcome asRefused() const;
    /// The same outcome with another result than the command's usual one after an error.
    CallOutcome withResult(ErrorResult result) const;

    bool isDone() const { return isDone_; }
    /// Shows the error, if there is one, and sets the result for it.
    /// @param usual  the command's usual result after an error
    /// @return the status with which the call ends
    MStatus report(ErrorResult usual) const;

  private:
    bool isDone_ = true;
    MString error_;
    ErrorSink sink_ = ErrorSink::kGlobal;
    MStatus status_;
    bool hasOwnResult_ = false;
    ErrorResult result_ = ErrorResult::kNothing;
};
