#pragma once

#include <maya/MApiVersion.h>
#include <maya/MFnBase.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

/// The two functions that a plug-in defines. The host calls the first after it has loaded the plug-in, and
/// the second before it unloads it. If the first fails, the plug-in is unloaded at once.
PLUGIN_EXPORT MStatus initializePlugin(MObject object);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);

OPENMAYA_MAJOR_NAMESPACE_OPEN

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

/// What a plug-in tells the host about itself, and what it registers.
///
/// Exactly one source file of a plug-in includes this without defining MNoVersionString. The other files also
/// define MNoPluginEntry. It leaves out a library entry for Windows, which this host does not have.
class OPENMAYA_EXPORT MFnPlugin : public MFnBase {
  public:
    MFnPlugin();
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* status = nullptr);
    ~MFnPlugin() override;
    MFn::Type type() const override;

    MString vendor(MStatus* status = nullptr) const;
    MString version(MStatus* status = nullptr) const;
    MString apiVersion(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;
    /// The folder from which the plug-in was loaded.
    MString loadPath(MStatus* status = nullptr) const;

    /// Fails if the name is taken.
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    /// Fails if this plug-in has no such command.
    MStatus deregisterCommand(const MString& commandName);

    /// Registers a command that makes tools. The creator returns an MPxContextCommand. Fails if the name is
    /// taken.
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction);
    /// Removes the command and its tools. If one of them is the current tool, the select tool replaces it.
    /// Fails if this plug-in has no such command.
    MStatus deregisterContextCommand(const MString& commandName);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
