#pragma once

#include <hostPrivate/access.h>
#include <maya/MArgParser.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of the script commands that make a plug-in's tools.
///
/// `command [flags] [name]` makes an object of this class, and that makes a tool, which gets the name; both
/// live until the tool is removed. Flags that were appended are handed to doEditFlags() when the tool is made
/// and with -edit, and to doQueryFlags() with -query.
class OPENMAYAUI_EXPORT MPxContextCommand {
  public:
    MPxContextCommand();
    virtual ~MPxContextCommand();

    virtual MStatus doEditFlags();
    virtual MStatus doQueryFlags();
    /// The new tool, which the host then owns.
    virtual MPxContext* makeObj();
    /// Adds flags to syntax().
    virtual MStatus appendSyntax();

    /// The result of the running query.
    MStatus setResult(bool result);
    MStatus setResult(int result);
    MStatus setResult(double result);
    MStatus setResult(const MString& result);

  protected:
    /// The syntax that this command has: what is added to it here, the command takes.
    MSyntax syntax(MStatus* status = nullptr) const;
    /// The arguments of the running call.
    MArgParser parser(MStatus* status = nullptr) const;

  private:
    friend struct host::api::ToolAccess;

    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
