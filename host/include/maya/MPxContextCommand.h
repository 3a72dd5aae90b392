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
/// `command [flags] [name]` makes an object of this class, which makes a tool with this name. Both exist
/// until the tool is removed. Flags that were appended are passed to doEditFlags() when the tool is made and
/// with -edit, and to doQueryFlags() with -query.
class OPENMAYAUI_EXPORT MPxContextCommand {
  public:
    MPxContextCommand();
    virtual ~MPxContextCommand();

    virtual MStatus doEditFlags();
    virtual MStatus doQueryFlags();
    /// Makes the new tool. The host then owns it.
    virtual MPxContext* makeObj();
    /// Adds flags to syntax().
    virtual MStatus appendSyntax();

    /// The result of the running query.
    MStatus setResult(bool result);
    MStatus setResult(int result);
    MStatus setResult(double result);
    MStatus setResult(const MString& result);

  protected:
    /// The syntax of this command: the command accepts what is added here.
    MSyntax syntax(MStatus* status = nullptr) const;
    /// The arguments of the running call.
    MArgParser parser(MStatus* status = nullptr) const;

  private:
    friend struct host::api::ToolAccess;

    struct State;
    std::unique_ptr<State> state_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
