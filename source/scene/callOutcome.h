#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

/// What a command sets as its result after an error.
enum class ErrorResult { kNothing, kEmptyString, kZero, kMinusOne };

/// Which of the host's two error functions shows a text; the user sees the same.
enum class ErrorSink { kGlobal, kCommand };

/// How a step of a command ended: done, or with an error of one of two kinds.
///
/// Refused: the error is shown, the result tells it, and the call counts as a success, so that a script goes
/// on. Failed: the error is shown, and the call fails, which ends the script.
class CallOutcome {
  public:
    /// Done.
    CallOutcome() = default;
    static CallOutcome refused(const MString& error, ErrorSink sink = ErrorSink::kGlobal);
    /// @param error   "" where the host has shown its own, or nothing is to be shown
    /// @param status  a failure
    static CallOutcome failed(const MString& error, const MStatus& status = MS::kFailure,
                              ErrorSink sink = ErrorSink::kGlobal);
    /// The same error, for a call that goes on.
    CallOutcome asRefused() const;
    /// The same outcome, with another result than the command has after an error.
    CallOutcome withResult(ErrorResult result) const;

    bool isDone() const { return isDone_; }
    /// Shows the error, if there is one, and sets the result that goes with it.
    /// @param usual  what the command sets after an error
    /// @return the status that the call ends with
    MStatus report(ErrorResult usual) const;

  private:
    bool isDone_ = true;
    MString error_;
    ErrorSink sink_ = ErrorSink::kGlobal;
    MStatus status_;
    bool hasOwnResult_ = false;
    ErrorResult result_ = ErrorResult::kNothing;
};
