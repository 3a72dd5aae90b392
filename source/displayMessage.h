#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"

/// dv_displayMessage: shows a text as an information, a warning or an error. An error makes the command fail,
/// which stops a script. No result; not undoable.
///
/// If a call has several flags, the text is that of the first of -error, -warning, -info. The kind is the
/// first of information, error, warning (deliberate: docs/compatibility.md).
class displayMessage : public CommandOf<displayMessage> {
  public:
    static constexpr const char* kName = "dv_displayMessage";
    static const CommandInfo& info();

  protected:
    CallOutcome read(const MArgDatabase& arguments) override;
    CallOutcome edit() override;

  private:
    bool isInfo_ = false;
    bool isError_ = false;
    bool isWarning_ = false;
    MString text_;
};
