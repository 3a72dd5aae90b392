#pragma once

#include <memory>

#include "mel/commandRegistry.h"

namespace host::scene {
class SceneSession;
}

/// The host's script commands, by family. Names, flags, argument orders and results are those of Maya. A flag
/// that is not covered fails with an error that says so.
namespace host::commands {

struct ViewState;

/// Adds all commands. The node types of the registry's graph must be registered and its scene set up.
void registerCommands(mel::CommandRegistry& registry);

// One function per family.
void registerNodeCommands(mel::CommandRegistry& registry);      // createNode rename objExists
void registerDeleteCommand(mel::CommandRegistry& registry);     // delete
void registerNodeTypeCommand(mel::CommandRegistry& registry);   // nodeType
void registerDuplicateCommand(mel::CommandRegistry& registry);  // duplicate instance
void registerDumpCommand(mel::CommandRegistry& registry);       // headlessDump
void registerDagCommands(mel::CommandRegistry& registry);       // group listRelatives
void registerParentCommand(mel::CommandRegistry& registry);     // parent
void registerListCommands(mel::CommandRegistry& registry,
                          const std::shared_ptr<scene::SceneSession>& session);  // ls
void registerSelectionCommands(mel::CommandRegistry& registry);                  // select
void registerAddAttrCommands(mel::CommandRegistry& registry);                    // addAttr deleteAttr
void registerAttributeCommands(
    mel::CommandRegistry& registry);                          // aliasAttr removeMultiInstance attributeQuery
void registerSetAttrCommand(mel::CommandRegistry& registry);  // setAttr
void registerGetAttrCommand(mel::CommandRegistry& registry);  // getAttr
void registerConnectionCommands(mel::CommandRegistry& registry);  // connectAttr disconnectAttr isConnected
                                                                  // connectionInfo
void registerListConnectionsCommand(mel::CommandRegistry& registry);  // listConnections
void registerHistoryCommand(mel::CommandRegistry& registry);          // listHistory
void registerObjectCommands(mel::CommandRegistry& registry);          // objectType listAttr filterExpand
void registerPlacementCommands(mel::CommandRegistry& registry);       // exactWorldBoundingBox matchTransform
                                                                      // makeIdentity spaceLocator
void registerComponentCommands(mel::CommandRegistry& registry);       // polyListComponentConversion
void registerOptionVarCommand(mel::CommandRegistry& registry);        // optionVar
void registerUndoCommands(mel::CommandRegistry& registry);            // undo redo undoInfo flushUndo
void registerPluginCommands(mel::CommandRegistry& registry);          // loadPlugin unloadPlugin pluginInfo
void registerScriptCommands(mel::CommandRegistry& registry);  // source evalDeferred help whatIs exists quit
                                                              // about internalVar

void registerSetCommands(mel::CommandRegistry& registry);         // sets
void registerPolyQueryCommands(mel::CommandRegistry& registry);   // polySelect polyEvaluate
void registerPolyInfoCommand(mel::CommandRegistry& registry);     // polyInfo
void registerPolyCreateCommands(mel::CommandRegistry& registry);  // polyCube polySphere polyPlane polyTorus
                                                                  // polyUnite
void registerMoveCommands(mel::CommandRegistry& registry);        // move rotate scale
void registerXformCommands(mel::CommandRegistry& registry);       // xform pointPosition
void registerBlendShapeCommands(mel::CommandRegistry& registry);  // blendShape deformableShape
void registerJointCommand(mel::CommandRegistry& registry);        // joint
void registerSkinClusterCommand(mel::CommandRegistry& registry);  // skinCluster
void registerSkinPercentCommand(mel::CommandRegistry& registry);  // skinPercent
void registerCopySkinWeightsCommand(mel::CommandRegistry& registry);  // copySkinWeights
void registerColorCommands(mel::CommandRegistry& registry);           // polyColorPerVertex polyColorSet
void registerNamespaceCommands(mel::CommandRegistry& registry);       // namespace namespaceInfo
void registerTextFileCommands(mel::CommandRegistry& registry);  // getFileList filetest sysFile fopen fclose
                                                                // fprint fgetline
void registerTimeCommands(mel::CommandRegistry& registry);      // currentTime playbackOptions
void registerCameraCommands(mel::CommandRegistry& registry,
                            const std::shared_ptr<ViewState>& view);  // camera lookThru viewFit
void registerPlayblastCommands(mel::CommandRegistry& registry,
                               const std::shared_ptr<ViewState>& view);  // playblast headlessIsolate
void registerToolCommands(mel::CommandRegistry& registry);  // setToolTo currentCtx contextInfo headlessDrag
void registerFileCommand(mel::CommandRegistry& registry,
                         const std::shared_ptr<scene::SceneSession>& session);  // file
void registerSceneStatementCommands(
    mel::CommandRegistry& registry,
    const std::shared_ptr<scene::SceneSession>& session);  // fileInfo requires lockNode ...

}  // namespace host::commands
