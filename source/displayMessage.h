#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

/// dv_displayMessage: shows a text as an information, a warning or an error; the error makes the command
/// fail, so that it stops a script. No result; not undoable.
///
/// With several flags the text of the error goes before that of the warning and of the information, but it
/// is shown as an information first, then as an error, then as a warning.
class displayMessage : public MPxCommand {
  public:
    static constexpr const char* kName = "dv_displayMessage";

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& arguments) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

  private:
    bool isInfo_ = false;
    bool isError_ = false;
    bool isWarning_ = false;
    MString text_;
};
