#pragma once

#include <hostPrivate/access.h>
#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <memory>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Base of the script commands of a plug-in.
///
/// Each call makes a new object and runs doIt(). If that succeeds and isUndoable() is true, the object stays
/// on the undo queue, and undoIt() and redoIt() are called on it. Otherwise it is destroyed after the call.
class OPENMAYA_EXPORT MPxCommand {
  public:
    MPxCommand();
    virtual ~MPxCommand();

    virtual MStatus doIt(const MArgList& arguments);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    /// False unless overridden.
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    /// The syntax made by the function that was given at registration.
    MSyntax syntax() const;

    static void displayInfo(const MString& message);
    static void displayWarning(const MString& warning, bool showLineNumber = false);
    static void displayError(const MString& error, bool showLineNumber = false);

    /// The result of the running command. appendToResult adds elements and makes the result an array. A
    /// result of another type does not change.
    static void clearResult();
    static void setResult(unsigned int result);
    static void setResult(int result);
    static void setResult(double result);
    static void setResult(bool result);
    static void setResult(const MString& result);
    static void setResult(const char* result);
    static void setResult(const MIntArray& result);
    static void setResult(const MDoubleArray& result);
    static void setResult(const MStringArray& result);
    static void appendToResult(int result);
    static void appendToResult(double result);
    static void appendToResult(const MString& result);
    static void appendToResult(const MStringArray& result);

  private:
    friend struct host::api::CommandAccess;

    struct Call;
    // These have the same names as in Maya: a local variable with one of these names in a command would hide
    // them.
    std::unique_ptr<Call> command;
    [[maybe_unused]] void* instance = nullptr;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
