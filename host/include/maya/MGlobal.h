#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// Functions of the running host: messages, scripts, selection, option variables.
///
/// Messages may come from any thread. Everything else may only be called from the main thread.
class OPENMAYA_EXPORT MGlobal {
  public:
    enum MMayaState { kInteractive, kBatch, kLibraryApp, kBaseUIMode };
    enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };

    static MMayaState mayaState(MStatus* status = nullptr);
    static MString mayaVersion();
    static int apiVersion();

    static void displayInfo(const MString& message);
    static void displayWarning(const MString& warning);
    static void displayError(const MString& error);

    /// Runs script text. Without undoEnabled, nothing is recorded for undo. With it, inside a running
    /// command, the text is undone with that command. The forms with a result fail if the result has another
    /// type.
    static MStatus executeCommand(const MString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MIntArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MCommandResult& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MString executeCommandStringResult(const MString& command, bool displayEnabled = false,
                                              bool undoEnabled = false, MStatus* status = nullptr);

    static MStatus getActiveSelectionList(MSelectionList& destination,
                                          bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& source,
                                          ListAdjustment adjustment = kReplaceList);
    static MStatus selectByName(const MString& name, ListAdjustment adjustment = kAddToList);
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    static MStatus clearSelectionList();

    /// Deletes a node with its DAG children, and the deformers that lose their only geometry. Not recorded
    /// for undo.
    static MStatus deleteNode(MObject& object);

    static bool optionVarExists(const MString& name);
    /// 0 or empty if there is no such variable.
    static int optionVarIntValue(const MString& name, bool* exists = nullptr);
    static double optionVarDoubleValue(const MString& name, bool* exists = nullptr);
    static MString optionVarStringValue(const MString& name, bool* exists = nullptr);
    /// Replaces a variable of another type.
    static bool setOptionVarValue(const MString& name, int value);
    static bool setOptionVarValue(const MString& name, double value);
    static bool setOptionVarValue(const MString& name, MString value);
    static void removeOptionVar(const MString& name);

  private:
    ~MGlobal() = default;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
