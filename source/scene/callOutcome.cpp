#include "scene/callOutcome.h"

#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>

CallOutcome CallOutcome::refused(const MString& error, ErrorSink sink) {
    CallOutcome outcome = failed(error, MS::kFailure, sink);
    outcome.status_ = MS::kSuccess;
    return outcome;
}

CallOutcome CallOutcome::failed(const MString& error, const MStatus& status, ErrorSink sink) {
    CallOutcome outcome;
    outcome.isDone_ = false;
    outcome.error_ = error;
    outcome.sink_ = sink;
    outcome.status_ = status;
    return outcome;
}

CallOutcome CallOutcome::asRefused() const {
    CallOutcome outcome = *this;
    outcome.status_ = MS::kSuccess;
    return outcome;
}

CallOutcome CallOutcome::withResult(ErrorResult result) const {
    CallOutcome outcome = *this;
    outcome.hasOwnResult_ = true;
    outcome.result_ = result;
    return outcome;
}

MStatus CallOutcome::report(ErrorResult usual) const {
    if (isDone_) return MS::kSuccess;
    if (error_.length() > 0) {
        if (sink_ == ErrorSink::kGlobal) {
            MGlobal::displayError(error_);
        } else {
            MPxCommand::displayError(error_);
        }
    }
    const ErrorResult result = hasOwnResult_ ? result_ : usual;
    if (result == ErrorResult::kEmptyString) MPxCommand::setResult(MString());
    if (result == ErrorResult::kZero) MPxCommand::setResult(0);
    if (result == ErrorResult::kMinusOne) MPxCommand::setResult(-1);
    return status_;
}
