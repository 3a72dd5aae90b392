#include "commands/commands.h"

#include "commands/viewState.h"
#include "platform/fileSync.h"
#include "scene/sceneSession.h"

namespace host::commands {

void registerCommands(mel::CommandRegistry& registry) {
    // A save must survive a crash of the system, so the new file is on the disk before it replaces the old
    // one.
    const auto session = std::make_shared<scene::SceneSession>(registry.graph(), platform::synchronise);
    registerNodeCommands(registry);
    registerDeleteCommand(registry);
    registerNodeTypeCommand(registry);
    registerDuplicateCommand(registry);
    registerDumpCommand(registry);
    registerDagCommands(registry);
    registerParentCommand(registry);
    registerListCommands(registry, session);
    registerSelectionCommands(registry);
    registerAddAttrCommands(registry);
    registerAttributeCommands(registry);
    registerSetAttrCommand(registry);
    registerGetAttrCommand(registry);
    registerConnectionCommands(registry);
    registerListConnectionsCommand(registry);
    registerHistoryCommand(registry);
    registerObjectCommands(registry);
    registerPlacementCommands(registry);
    registerComponentCommands(registry);
    registerOptionVarCommand(registry);
    registerUndoCommands(registry);
    registerPluginCommands(registry);
    registerScriptCommands(registry);
    registerSetCommands(registry);
    registerPolyQueryCommands(registry);
    registerPolyInfoCommand(registry);
    registerPolyCreateCommands(registry);
    registerMoveCommands(registry);
    registerXformCommands(registry);
    registerBlendShapeCommands(registry);
    registerJointCommand(registry);
    registerSkinClusterCommand(registry);
    registerSkinPercentCommand(registry);
    registerCopySkinWeightsCommand(registry);
    registerColorCommands(registry);
    registerNamespaceCommands(registry);
    registerTextFileCommands(registry);
    registerTimeCommands(registry);
    const auto view = std::make_shared<ViewState>();
    registerCameraCommands(registry, view);
    registerPlayblastCommands(registry, view);
    registerToolCommands(registry);
    registerFileCommand(registry, session);
    registerSceneStatementCommands(registry, session);
}

}  // namespace host::commands
