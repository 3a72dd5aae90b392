#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

#include "commandSupport.h"

/// dv_displayMessage: shows a text as an information, a warning or an error; the error makes the command
/// fail, so that it stops a script. No result; not undoable.
///
/// With several flags the text of the error goes before that of the warning and of the information, but it
/// is shown as an information first, then as an error, then as a warning.
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
