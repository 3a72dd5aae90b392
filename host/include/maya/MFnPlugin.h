#pragma once

#include <maya/MApiVersion.h>
#include <maya/MFnBase.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

/// The two functions that a plug-in defines: called after it was loaded and before it is unloaded. When
/// loading fails the plug-in is unloaded at once.
PLUGIN_EXPORT MStatus initializePlugin(MObject object);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);

OPENMAYA_MAJOR_NAMESPACE_OPEN

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

/// What a plug-in tells the host about itself, and what it brings.
///
/// Exactly one source file of a plug-in includes this without defining MNoVersionString. MNoPluginEntry,
/// which the other files define too, leaves out a library entry of Windows; there is none here.
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
    /// The folder that the plug-in was loaded from.
    MString loadPath(MStatus* status = nullptr) const;

    /// Fails when the name is taken.
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    /// Fails when this plug-in has no such command.
    MStatus deregisterCommand(const MString& commandName);

    /// A command that makes tools: the creator gives a MPxContextCommand. Fails when the name is taken.
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction);
    /// The tools that the command made go with it; the select tool takes the place of a current one. Fails
    /// when this plug-in has no such command.
    MStatus deregisterContextCommand(const MString& commandName);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
